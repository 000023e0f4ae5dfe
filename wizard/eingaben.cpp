#include "wizard/eingaben.h"

#include <QStringList>

QString eingaben::cell(const QString &table, int row, int col)
{
    return table + u' ' + QString::number(row) + u' ' + QString::number(col);
}

void eingaben::forEachCell(const Eingaben &entries, const QString &table,
                           const std::function<void(int row, int col, const QString &text)> &visit)
{
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        const QStringList parts = entry.key().split(u' ');
        if (parts.size() != 3 || parts.at(0) != table)
            continue;
        bool rowGood = false;
        bool colGood = false;
        const int row = parts.at(1).toInt(&rowGood);
        const int col = parts.at(2).toInt(&colGood);
        if (rowGood && colGood)
            visit(row, col, entry.value());
    }
}
