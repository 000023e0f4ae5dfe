#include "batch/texttabelle.h"

#include <algorithm>

namespace {

// A cell must not make every row of its table as long as itself.
constexpr qsizetype widestCell = 80;

QString shortened(const QString &cell)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (cell.size() <= widestCell && std::none_of(cell.begin(), cell.end(), isControl))
        return cell;
    const bool cutsPair = cell.size() > widestCell && cell[widestCell].isLowSurrogate();
    QString result = cell.left(cutsPair ? widestCell - 1 : widestCell);
    std::replace_if(result.begin(), result.end(), isControl, u' ');
    return cell.size() > widestCell ? result + u'…' : result;
}

} // namespace

void TextTabelle::add(const QStringList &cells)
{
    Q_ASSERT(cells.size() == m_alignments.size());
    QStringList row;
    for (const QString &cell : cells)
        row += shortened(cell);
    m_rows.push_back(row);
}

QString TextTabelle::text() const
{
    std::vector<qsizetype> widths(static_cast<std::size_t>(m_alignments.size()), 0);
    for (const QStringList &row : m_rows) {
        for (std::size_t column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], row[static_cast<qsizetype>(column)].size());
    }
    QString result;
    for (const QStringList &row : m_rows) {
        QString line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const auto i = static_cast<qsizetype>(column);
            line += u"  "_qs;
            line += m_alignments[i] == u'r' ? row[i].rightJustified(widths[column])
                                            : row[i].leftJustified(widths[column]);
        }
        while (line.endsWith(u' '))
            line.chop(1);
        result += line + u'\n';
    }
    return result;
}
