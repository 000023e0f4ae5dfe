#include "grid/tabtext.h"

#include <optional>

namespace tabtext {
namespace {

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
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

QString withoutControls(QStringView text)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text) {
        if (!isControl(c))
            kept += c;
    }
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
    if (text.at(at) != u'"')
        return std::nullopt;
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
        if (c == u'\t')
            cell.text += u' ';
        else if (!isControl(c))
            cell.text += c;
    }
    return std::nullopt;
}

Cell plainCell(const QString &text, qsizetype at)
{
    qsizetype end = at;
    while (end < text.size() && text.at(end) != u'\t' && !isLineBreak(text.at(end)))
        ++end;
    return {withoutControls(QStringView(text).sliced(at, end - at)), end};
}

} // namespace

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
        if (c == u'\t' || !isControl(c))
            line += c;
        ++at;
    }
    if (size > 0)
        all.append(line);
    return all;
}

QList<QStringList> cells(const QString &text)
{
    QList<QStringList> rows;
    qsizetype at = 0;
    while (at < text.size()) {
        QStringList row;
        for (bool more = true; more;) {
            const std::optional<Cell> quoted =
                at < text.size() ? quotedCell(text, at) : std::nullopt;
            const Cell cell = quoted ? *quoted : plainCell(text, at);
            row.append(cell.text);
            at = cell.end;
            more = at < text.size() && text.at(at) == u'\t';
            at += more ? 1 : 0;
        }
        rows.append(row);
        if (at < text.size())
            at = behindLineBreak(text, at);
    }
    return rows;
}

} // namespace tabtext
