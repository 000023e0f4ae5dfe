#include "grid/tabtext.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tabtext {
namespace {

bool isControl(QChar c)
{
    return c < u' ' || (c >= u'\u007f' && c < u'\u00a0');
}

// Two values on both sides of it must not become one.
bool isSeparator(QChar c)
{
    return c == u'\t' || c == u'\v' || c == u'\f' || c == u'\u0085';
}

// What stays of a character that is no line break.
void append(QString &text, QChar c)
{
    if (isSeparator(c))
        text += u"  "_qs;
    else if (!isControl(c))
        text += c;
}

bool isLineBreak(QChar c)
{
    return c == u'\r' || c == u'\n';
}

/// The place behind the line break at \a at.
qsizetype behindLineBreak(const QString &text, qsizetype at)
{
    const bool two = text.at(at) == u'\r' && at + 1 < text.size() && text.at(at + 1) == u'\n';
    return at + (two ? 2 : 1);
}

// Without what separates nothing.
QStringView trimmed(QStringView text)
{
    const auto isBetween = [](QChar c) { return isSeparator(c) || isLineBreak(c); };
    while (!text.isEmpty() && isSeparator(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBetween(text.back()))
        text.chop(1);
    return text;
}

QString withoutControls(QStringView text)
{
    text = trimmed(text);
    if (std::none_of(text.begin(), text.end(), isControl))
        return text.toString();
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text)
        append(kept, c);
    return kept;
}

struct Cell
{
    QString text;
    qsizetype end;
};

/// The quoted cell that begins at \a at, or none where the quotation is not closed at the cell's
/// end.
std::optional<Cell> quotedCell(const QString &text, qsizetype at)
{
    Cell cell{QString(), at + 1};
    while (cell.end < text.size()) {
        const QChar c = text.at(cell.end);
        if (isLineBreak(c)) {
            cell.text += u'\n';
            cell.end = behindLineBreak(text, cell.end);
            continue;
        }
        ++cell.end;
        if (c == u'"' && (cell.end == text.size() || text.at(cell.end) == u'\t' ||
                          isLineBreak(text.at(cell.end))))
            return cell;
        if (c == u'"' && text.at(cell.end) != u'"')
            return std::nullopt;
        cell.end += c == u'"' ? 1 : 0;
        append(cell.text, c);
    }
    return std::nullopt;
}

Cell plainCell(const QString &text, qsizetype at)
{
    const auto from = text.cbegin() + at;
    const auto end =
        std::find_if(from, text.cend(), [](QChar c) { return c == u'\t' || isLineBreak(c); });
    return {withoutControls(QStringView(from, end)), end - text.cbegin()};
}

} // namespace

QString typed(const QString &text)
{
    return lines(trimmed(text).toString()).join(u'\n').replace(u'\t', u"  "_qs);
}

QStringList lines(const QString &text)
{
    qsizetype size = text.size();
    while (size > 0 && isLineBreak(text.at(size - 1)))
        --size;
    QStringList all;
    QString line;
    for (qsizetype at = 0; at < size;) {
        const QChar c = text.at(at);
        if (isLineBreak(c)) {
            all.append(std::exchange(line, QString()));
            at = behindLineBreak(text, at);
            continue;
        }
        if (c == u'\t')
            line += c;
        else
            append(line, c);
        ++at;
    }
    if (size > 0)
        all.append(line);
    return all;
}

bool CellReader::nextRow()
{
    if (m_inRow && m_at < m_text.size())
        m_at = behindLineBreak(m_text, m_at);
    m_inRow = m_at < m_text.size();
    m_moreCells = m_inRow;
    return m_inRow;
}

std::optional<QString> CellReader::nextCell()
{
    if (!m_moreCells)
        return std::nullopt;
    const bool marked = m_at < m_text.size() && m_text.at(m_at) == u'"';
    std::optional<Cell> cell = marked ? quotedCell(m_text, m_at) : std::nullopt;
    if (!cell)
        cell = plainCell(m_text, m_at);
    m_at = cell->end;
    m_moreCells = m_at < m_text.size() && m_text.at(m_at) == u'\t';
    m_at += m_moreCells ? 1 : 0;
    return std::move(cell->text);
}

} // namespace tabtext
