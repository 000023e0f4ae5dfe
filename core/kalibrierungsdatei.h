#pragma once

#include "core/keyedstore.h"
#include "core/rowsetreader.h"

#include <QString>

class Values;

/// The calibration file: the document's whole store as rows of key and text, behind one header row.
class Kalibrierungsdatei
{
public:
    /// Reads and checks the whole file. Raises 7, 53, 57, 70, 75, 76, or 321 for what is no such
    /// file.
    static Kalibrierungsdatei read(const QString &path);

    /// Puts every row with a key into \a store, in order; later rows replace earlier ones.
    /// Raises 7, with the rows so far in the store.
    void storeRows(KeyedStore &store) const;

    /// Writes \a store to \a path; the file there is the old one or, in the end, the whole new one.
    static void write(const QString &path, const KeyedStore &store, const Values &values);

    /// The bytes that write() puts into the file. Raises 7, 94 for a Null, 321 for a text that
    /// XML can't hold, naming its key.
    static QByteArray bytesOf(const KeyedStore &store, const Values &values);

    /// A larger file is no calibration and is refused before it is read: 512 MiB.
    static constexpr qint64 maximumSize = qint64{512} * 1024 * 1024;

private:
    explicit Kalibrierungsdatei(Rowset rowset) : m_rowset(std::move(rowset)) {}

    Rowset m_rowset;
};
