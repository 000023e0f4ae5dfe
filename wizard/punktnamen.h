#pragma once

#include "wizard/eingaben.h"

#include <QHash>

class Kalibrierung;
class Tabelle;

/// The names of the test points in their table: as many as are listed, and what was typed for those
/// that are not listed at the moment.
class Punktnamen
{
public:
    /// Both outlive this object.
    Punktnamen(Kalibrierung &document, Tabelle &table) : m_document(document), m_table(table) {}

    /// Starts anew, with no point listed.
    void fill();
    /// Lists the points 1 to \a count.
    void list(int count);
    /// Stores every changed name, listed or not. A point without a name has its number.
    void takeOver();

    /// The changed names among the entries of the page.
    void addEntries(Eingaben &entries) const;
    void restoreEntries(const Eingaben &entries);

private:
    QStringList row(int point);
    void store(int point, const QString &name);

    Kalibrierung &m_document;
    Tabelle &m_table;
    QHash<int, QString> m_filled; ///< what filling wrote, by point; of listed ones that were needed
    QHash<int, QString> m_hidden; ///< typed names of points that are not shown now
};
