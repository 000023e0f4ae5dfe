#include "export/zellentext.h"

namespace {

bool isHex(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// Whether an escape of the form _xHHHH_ stands at \a start.
bool looksEscaped(QStringView text, qsizetype start)
{
    if (text.size() - start < 7 || text[start] != u'_' || text[start + 1] != u'x' ||
        text[start + 6] != u'_')
        return false;
    for (qsizetype i = start + 2; i < start + 6; ++i) {
        if (!isHex(text[i]))
            return false;
    }
    return true;
}

// Line feed and tab stand in XML as they are; a carriage return would become a line feed.
bool needsEscape(QChar c)
{
    return (c < u' ' && c != u'\n' && c != u'\t') || c == u'\uFFFE' || c == u'\uFFFF';
}

QString shortened(const QString &text)
{
    return text.size() > maximumZellentext ? text.left(maximumZellentext - 1) + u'…' : text;
}

} // namespace

QByteArray zellentext(const QString &text)
{
    const QString kept = shortened(text);
    QString result;
    result.reserve(kept.size());
    for (qsizetype i = 0; i < kept.size(); ++i) {
        const QChar c = kept[i];
        if (needsEscape(c))
            result += u"_x%1_"_qs.arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else if (c == u'_' && looksEscaped(kept, i))
            result += u"_x005F_"_qs;
        else
            result += c;
    }
    return result.toUtf8(); // half a surrogate pair becomes a question mark
}
