#pragma once

#include "protocol/pages/drawing.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

#include <span>
#include <vector>

/// Text broken into lines, in a style that may have been made smaller.
struct FittedText
{
    std::vector<QString> lines;
    TextStyle style;
};

/// \a text in at most \a mostLines lines of \a widthCm; \a style gets smaller until that holds.
FittedText fittedText(const TextMeasure &measure, const QString &text, TextStyle style,
                      double widthCm, int mostLines);

/// Where texts stand in a column.
enum class Alignment {
    Left,
    Centre,
    Number, ///< what stands before the first blank ends at the column's number edge
    Decimal ///< what stands before the decimal separator ends there
};

/// A column of a table; lengths in centimetres from the content's left edge.
struct Column
{
    double left = 0.0;
    double width = 0.0;
    Alignment alignment = Alignment::Left;
    double numberEdge = 0.0; ///< from the column's left end

    /// Left end of texts; at the content's edge they stand flush with the headings.
    double textLeft() const;
    double textWidth() const;
    bool holdsNumbers() const
    {
        return alignment == Alignment::Number || alignment == Alignment::Decimal;
    }
};

/// Blank room beside a cell's text.
inline constexpr double cellPaddingCm = 0.1;
/// Blank room above and below a row's texts.
inline constexpr double rowPaddingCm = 0.05;

/// Rules of tables: strong ones enclose header and body, fine ones guide the eye along the rows.
inline constexpr double strongRuleCm = 0.03;
inline constexpr double fineRuleCm = 0.012;

/// One cell's lines, ready to be drawn.
struct Cell
{
    Column column;
    FittedText text;

    double height(const TextMeasure &measure) const;
};

/// A cell of any number of lines. A number is never broken, it gets smaller instead; its unit,
/// which follows a blank, only for as long as it can be read, then it takes lines of its own.
Cell cellOf(const TextMeasure &measure, const Column &column, const QString &text,
            const TextStyle &style);
/// A cell that breaks between words only; a word wider than the column makes the text smaller.
Cell unbrokenWordsCell(const TextMeasure &measure, const Column &column, const QString &text,
                       const TextStyle &style);
/// A cell of at most \a mostLines lines, with smaller text where it takes that.
Cell fittedCell(const TextMeasure &measure, const Column &column, const QString &text,
                const TextStyle &style, int mostLines);

/// Adds the cell's texts to \a drawing, the first line below \a top. \a decimalPoint is the
/// separator that Alignment::Decimal looks for.
void drawCell(Drawing &drawing, const TextMeasure &measure, const Cell &cell, double top,
              QChar decimalPoint = u',');

/// A header row: the cells stand on the same last baseline, between two strong rules.
Drawing headerRow(const TextMeasure &measure, std::span<const Cell> cells);

/// Adds a rule across \a left to \a right.
void drawRule(Drawing &drawing, double left, double right, double y, double width);
