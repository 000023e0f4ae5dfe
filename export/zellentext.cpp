#include "export/zellentext.h"

#include <algorithm>

namespace {

constexpr qsizetype escapeLength = 7; ///< of "_x0001_"

bool isHex(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// Whether an escape of the form _xHHHH_ stands at \a start.
bool looksEscaped(QStringView text, qsizetype start)
{
    if (text.size() - start < escapeLength || text[start] != u'_' || text[start + 1] != u'x' ||
        text[start + 6] != u'_')
        return false;
    for (qsizetype i = start + 2; i < start + 6; ++i) {
        if (!isHex(text[i]))
            return false;
    }
    return true;
}

// Line feed and tab stand in XML as they are.
bool needsEscape(QChar c)
{
    return (c < u' ' && c != u'\n' && c != u'\t') || c == u'\uFFFE' || c == u'\uFFFF';
}

QString mitZeilenvorschub(const QString &text)
{
    if (!text.contains(u'\r'))
        return text;
    QString result = text;
    return result.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n');
}

bool isWithinPair(QStringView text, qsizetype position)
{
    return position > 0 && position < text.size() && text[position].isLowSurrogate() &&
           text[position - 1].isHighSurrogate();
}

// The end of the longest piece from \a start on whose written form is no longer than \a room, whole
// surrogate pairs only.
qsizetype stueckende(QStringView text, qsizetype start, qsizetype room)
{
    qsizetype end = start;
    for (qsizetype written = 0; end < text.size(); ++end) {
        written += needsEscape(text[end])    ? escapeLength
                   : looksEscaped(text, end) ? escapeLength
                                             : 1;
        if (written > room)
            break;
    }
    return isWithinPair(text, end) ? end - 1 : end;
}

// One piece whose written form fits.
QByteArray maskiert(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (needsEscape(c))
            result += u"_x%1_"_qs.arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else if (looksEscaped(text, i))
            result += u"_x005F_"_qs;
        else
            result += c;
    }
    return result.toUtf8(); // half a surrogate pair becomes a question mark
}

} // namespace

QByteArray zellentext(const QString &text)
{
    const QString lines = mitZeilenvorschub(text);
    if (stueckende(lines, 0, maximumZellentext) == lines.size())
        return maskiert(lines);
    const qsizetype end = stueckende(lines, 0, maximumZellentext - 1);
    return maskiert(QStringView(lines).first(end)) + u"…"_qs.toUtf8();
}

QStringList zellenstuecke(const QString &text)
{
    const QString lines = mitZeilenvorschub(text);
    QStringList pieces;
    qsizetype start = 0;
    do {
        const qsizetype end = stueckende(lines, start, maximumZellentext);
        pieces += lines.sliced(start, end - start);
        start = end;
    } while (start < lines.size());
    return pieces;
}

QString diagrammtext(const QString &text, qsizetype longest)
{
    QString title = mitZeilenvorschub(text);
    std::replace_if(
        title.begin(), title.end(),
        [](QChar c) { return c == u'\n' || c == u'\t' || needsEscape(c); }, QChar(u' '));
    if (title.size() > longest)
        title.truncate(isWithinPair(title, longest) ? longest - 1 : longest);
    return title;
}
