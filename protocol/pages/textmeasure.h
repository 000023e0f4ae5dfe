#pragma once

#include "protocol/pages/drawing.h"

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include <map>
#include <optional>
#include <utility>
#include <vector>

/// Texts are laid out at this resolution wherever they are painted later, so that lines and pages
/// break at the same places at every zoom, on paper and in a PDF.
inline constexpr double layoutDotsPerInch = 1440.0;
inline constexpr double centimetresPerInch = 2.54;
inline constexpr double layoutPixelsPerCentimetre = layoutDotsPerInch / centimetresPerInch;

/// The style of \a points points.
TextStyle styleOfPoints(int points, bool bold = false, bool underlined = false);

/// The protocol's styles: headings of level 0 (title), 1 and 2, body text of level 1 (emphasised)
/// and 0. Nothing for any other combination.
std::optional<TextStyle> protocolStyle(bool heading, int level);

/// "Times New Roman", or the font with the same metrics where that isn't installed, with the
/// style's size in pixels. Not underlined: painting draws the line itself, because Qt's touches the
/// letters.
QFont protocolFont(const TextStyle &style);

/// Measures and breaks texts; all lengths in centimetres.
///
/// Keeps the metrics of the styles it has met. Needs the application object of a graphics program,
/// with whatever platform.
class TextMeasure
{
public:
    double width(const QString &text, const TextStyle &style) const;
    double ascent(const TextStyle &style) const;
    double descent(const TextStyle &style) const;
    /// Distance of two baselines.
    double lineHeight(const TextStyle &style) const;

    /// \a text in lines of at most \a widthCm, broken at line breaks, then between words, then
    /// within a word that is wider. Control characters become blanks. At least one line.
    std::vector<QString> lines(const QString &text, const TextStyle &style, double widthCm) const;

    /// \a style, made smaller until \a text is at most \a widthCm wide.
    TextStyle shrunk(const QString &text, TextStyle style, double widthCm) const;

    /// A text whose left end of the baseline lies at \a at, with its width.
    PlacedText placed(const QString &text, const QPointF &at, const TextStyle &style) const;
    /// Adds \a text to \a drawing.
    void add(Drawing &drawing, PlacedText text) const;

private:
    using Key = std::pair<int, bool>; ///< size in pixels, whether bold
    const QFontMetricsF &metrics(const TextStyle &style) const;
    void breakLine(const QString &text, const TextStyle &style, double widthCm,
                   std::vector<QString> &result) const;

    mutable std::map<Key, QFontMetricsF> m_metrics;
};
