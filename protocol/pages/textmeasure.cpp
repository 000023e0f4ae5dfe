#include "protocol/pages/textmeasure.h"

#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr int pixelsPerPoint = 20; // 1440 dpi / 72 points an inch

// A layout breaks lines at separators of its own; what else has no width would show as a box.
QString printable(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text;
}

QString withoutTrailingBlanks(const QString &text)
{
    qsizetype length = text.size();
    while (length > 0 && text.at(length - 1) == u' ')
        --length;
    return text.left(length);
}

} // namespace

TextStyle styleOfPoints(int points, bool bold, bool underlined)
{
    return {points * pixelsPerPoint, bold, underlined};
}

std::optional<TextStyle> protocolStyle(bool heading, int level)
{
    if (heading && level == 0)
        return styleOfPoints(16, true, true);
    if (heading && (level == 1 || level == 2))
        return styleOfPoints(14, true);
    if (!heading && level == 1)
        return styleOfPoints(12, true);
    if (!heading && level == 0)
        return styleOfPoints(12);
    return {};
}

QFont protocolFont(const TextStyle &style)
{
    QFont font;
    font.setFamilies({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif")});
    font.setStyleHint(QFont::Serif);
    font.setPixelSize(style.pixelSize);
    font.setBold(style.bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

const QFontMetricsF &TextMeasure::metrics(const TextStyle &style) const
{
    const Key key{style.pixelSize, style.bold};
    auto found = m_metrics.find(key);
    if (found == m_metrics.end())
        found = m_metrics.emplace(key, QFontMetricsF(protocolFont(style))).first;
    return found->second;
}

double TextMeasure::width(const QString &text, const TextStyle &style) const
{
    // A width of more than 2^25 pixels overflows within the font metrics and comes out negative.
    constexpr qsizetype longestPiece = 10'000;
    const QFontMetricsF &font = metrics(style);
    double pixels = 0.0;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = std::min(start + longestPiece, text.size());
        if (end < text.size() && text.at(end).isLowSurrogate())
            ++end;
        pixels += font.horizontalAdvance(text.sliced(start, end - start));
        start = end;
    }
    return pixels / layoutPixelsPerCentimetre;
}

double TextMeasure::ascent(const TextStyle &style) const
{
    return metrics(style).ascent() / layoutPixelsPerCentimetre;
}

double TextMeasure::descent(const TextStyle &style) const
{
    return metrics(style).descent() / layoutPixelsPerCentimetre;
}

double TextMeasure::lineHeight(const TextStyle &style) const
{
    return metrics(style).lineSpacing() / layoutPixelsPerCentimetre;
}

std::vector<QString> TextMeasure::lines(const QString &text, const TextStyle &style,
                                        double widthCm) const
{
    std::vector<QString> result;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const QChar c = i < text.size() ? text.at(i) : QChar(u'\n');
        const bool atBreak =
            c == u'\r' || c == u'\n' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        if (!atBreak)
            continue;
        breakLine(printable(text.mid(start, i - start)), style, widthCm, result);
        if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n')
            ++i;
        start = i + 1;
    }
    return result;
}

void TextMeasure::breakLine(const QString &text, const TextStyle &style, double widthCm,
                            std::vector<QString> &result) const
{
    if (width(text, style) <= widthCm) {
        result.push_back(text);
        return;
    }
    QTextLayout layout(text, protocolFont(style));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(widthCm * layoutPixelsPerCentimetre);
        result.push_back(withoutTrailingBlanks(text.mid(line.textStart(), line.textLength())));
    }
    layout.endLayout();
}

TextStyle TextMeasure::shrunk(const QString &text, TextStyle style, double widthCm) const
{
    const double needed = width(text, style);
    if (needed > widthCm)
        style.pixelSize = std::max(1, static_cast<int>(style.pixelSize * widthCm / needed));
    return style;
}

PlacedText TextMeasure::placed(const QString &text, const QPointF &at, const TextStyle &style) const
{
    const QString shown = printable(text);
    return {shown, at, style, width(shown, style), false};
}

void TextMeasure::add(Drawing &drawing, PlacedText text) const
{
    const double up = ascent(text.style);
    const double down = descent(text.style);
    drawing.add(std::move(text), up, down);
}
