#pragma once

#include "core/merkmal.h"
#include "wizard/assistentseite.h"
#include "wizard/zellenstand.h"

#include <cstdint>
#include <optional>
#include <vector>

class QLabel;
class Tabelle;

/// Page 3: the measured values of both characteristics at every test point.
class SeiteMesswerte : public AssistentSeite
{
    Q_OBJECT

public:
    explicit SeiteMesswerte(const Seitenkontext &context, QWidget *parent = nullptr);

    bool takeOver(Anlass anlass) override;
    void fill() override;
    void finishEditing() override;
    Eingaben entries() const override;
    void restoreEntries(const Eingaben &entries) override;
    QWidget *firstControl() const override;

    /// Brings a measured value that was typed into a cell into its characteristic's form.
    void formatEdited(int row, int col, QString &newText) const;

signals:
    /// A text is about to be written into the table.
    void valueEdited(int Row, int Col, QString &NewText, bool &Cancel);

private:
    enum Column { FieldColumn, PointColumn, DirectColumn, IndirectColumn };
    /// A row's place in the document, counted from 1.
    struct Place
    {
        std::int32_t field;
        std::int32_t point;
    };

    void setColumns();
    void readFieldSizes();
    std::int32_t mostPoints() const;
    void cellEdited(int row, int col, QString &newText, bool &cancel);
    static PrüfmerkmalEnum kindOf(int col) { return col == DirectColumn ? pmDirekt : pmIndirekt; }
    static int columnOf(PrüfmerkmalEnum kind)
    {
        return kind == pmDirekt ? DirectColumn : IndirectColumn;
    }
    Place place(int row) const;
    QStringList rowTexts(int row);
    std::optional<double> storedNumber(const Place &where, PrüfmerkmalEnum kind) const;
    bool takeCellOver(int row, PrüfmerkmalEnum kind, Anlass anlass);
    bool storedValueIsGood(const Place &where, PrüfmerkmalEnum kind) const;
    bool refuseCell(int row, PrüfmerkmalEnum kind);

    Tabelle *m_table;
    Zellenstand m_cells;
    QLabel *m_notice;
    std::vector<std::int32_t> m_firstRows; ///< of every field, and one behind the last
};
