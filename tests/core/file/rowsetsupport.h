#pragma once

#include "core/runtimeerror.h"
#include "core/variant.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

class KeyedStore;

using Rows = std::vector<std::pair<QString, QString>>;
using StoreEntries = std::vector<std::pair<QString, Variant>>;

/// The rows that the reader finds in \a file.
Rows rowsOf(const QByteArray &file, const char *firstColumn = "Variable",
            const char *secondColumn = "Wert");

/// The rows that Qt's XML reader finds in \a file under row elements, and nothing else: a second
/// opinion on what the program writes. Empty where that reader sees an error.
Rows rowsOfOtherParser(const QByteArray &file);

/// A file with \a rows, as XML, directly under its data block.
QByteArray tableOf(const QByteArray &rows);
/// A file with one row whose value is \a value, as XML.
QByteArray tableWithValue(const QByteArray &value);

/// Everything up to the data block, as the program writes it.
QByteArray tableHead();

StoreEntries entriesOf(const KeyedStore &store);

/// The error that \a work raises, if any.
template <typename Work>
std::optional<RunTimeError> errorOf(Work work)
{
    try {
        work();
    } catch (const RunTimeError &error) {
        return error;
    }
    return std::nullopt;
}

/// The number of the error that \a work raises, 0 where it raises none.
template <typename Work>
int errorNumber(Work work)
{
    const std::optional<RunTimeError> error = errorOf(work);
    return error ? error->number() : 0;
}

/// The bytes of the file at \a path, null where it can't be read.
QByteArray bytesAt(const QString &path);
/// Makes or replaces the file at \a path. \returns whether that worked.
bool putBytes(const QString &path, const QByteArray &bytes);
