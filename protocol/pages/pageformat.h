#pragma once

/// Width of everything that is laid out: the widest table and the texts.
inline constexpr double contentWidthCm = 16.8;
/// Upper and lower margin of every page.
inline constexpr double pageMarginCm = 2.0;

/// The sheet that pages are made for, and how the drawing lies on it. Lengths in centimetres.
struct PageFormat
{
    double sheetWidth = 21.0;
    double sheetHeight = 29.7;

    /// Centimetres of the sheet per centimetre of the drawing: 1, less on sheets narrower than A4
    /// or lower than A4 lying on its side, so that nothing runs off.
    double scale() const;
    double pageWidth() const { return sheetWidth / scale(); }
    double pageHeight() const { return sheetHeight / scale(); }
    /// Left end of the content, which is centred.
    double leftMargin() const { return (pageWidth() - contentWidthCm) / 2; }

    bool operator==(const PageFormat &) const = default;
};
