#include "export/formeln.h"

namespace formeln {

namespace {

QString columnName(int column)
{
    QString name;
    for (int rest = column; rest >= 0; rest = rest / 26 - 1)
        name.prepend(QChar(u'A' + rest % 26));
    return name;
}

QString absolute(int row, int column)
{
    return u'$' + columnName(column) + u'$' + QString::number(row + 1);
}

} // namespace

QString zelle(const QString &sheet, int row, int column)
{
    return sheet + u'!' + absolute(row, column);
}

QString spaltenbereich(const QString &sheet, int column, int firstRow, int lastRow)
{
    return zelle(sheet, firstRow, column) + u':' + absolute(lastRow, column);
}

QString text(const QString &text)
{
    return u'"' + QString(text).replace(u'"', u"\"\""_qs) + u'"';
}

QString genaueSumme(const QString &terms, const QString &step)
{
    // TRUNC, not INT: what remains of a term of either sign is exact then.
    return u"SUM(SUMPRODUCT(TRUNC(%1/%2))*%2,SUMPRODUCT(%1-TRUNC(%1/%2)*%2))"_qs.arg(terms, step);
}

QString allesZahlen(const QStringList &cells)
{
    return u"COUNT(%1)=%2"_qs.arg(cells.join(u',')).arg(cells.size());
}

QString geschuetzt(const QStringList &cells, const QString &expression)
{
    return u"IF(%1,IFERROR(%2,\"\"),\"\")"_qs.arg(allesZahlen(cells), expression);
}

} // namespace formeln
