#pragma once

#include <QMap>
#include <QString>

#include <functional>

/// What is typed on a page and is not in the document: texts as they stand there, by the object
/// name of their box, or by cell() where they stand in a table.
using Eingaben = QMap<QString, QString>;

namespace eingaben {

/// The name of a cell of \a table.
QString cell(const QString &table, int row, int col);

/// Calls \a visit(row, col, text) for the cells of \a table among \a entries; a name that is none
/// is passed over.
void forEachCell(const Eingaben &entries, const QString &table,
                 const std::function<void(int row, int col, const QString &text)> &visit);

} // namespace eingaben
