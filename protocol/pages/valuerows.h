#pragma once

#include "protocol/pages/blockflow.h"
#include "protocol/pages/cells.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

#include <array>

class Kalibrierung;

/// The table of measured values below the heading \a heading. Raises 6 where there are more points
/// than are evaluated, 13 or 6 where a count can't be read. \a document and \a measure are borrowed
/// by the block's rows.
Block messwerteBlock(Kalibrierung &document, const TextMeasure &measure, const QString &heading);

/// One row per test point of each field. A field's header cell stands beside its first rows, and
/// again where a page begins within the field.
class ValueRows : public RowSource
{
public:
    ValueRows(Kalibrierung &document, const TextMeasure &measure, std::array<Column, 4> columns);

    /// Rows are fields, parts are points, both counted from 0.
    bool atEnd(const RowPosition &position) const override;
    RowGroup group(const RowPosition &position, bool first, double mostHeight) override;

private:
    std::int32_t pointsOf(std::int32_t field) const;
    const Cell &fieldCell(std::int32_t field);
    /// \returns the row's height.
    double drawRow(Drawing &drawing, std::int32_t field, std::int32_t point, double top);

    Kalibrierung &m_document;
    const TextMeasure &m_measure;
    std::array<Column, 4> m_columns;
    std::int32_t m_fields;
    std::int32_t m_fieldCellOf = 0; ///< counted from 1, 0 for none
    Cell m_fieldCell;
};
