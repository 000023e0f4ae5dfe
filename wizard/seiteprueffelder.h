#pragma once

#include "wizard/assistentseite.h"
#include "wizard/punktnamen.h"
#include "wizard/zellenstand.h"

#include <cstdint>

class QLabel;
class Tabelle;

/// Page 2: name, number of points and covariable value of every test field; names of the points.
class SeitePrueffelder : public AssistentSeite
{
    Q_OBJECT

public:
    explicit SeitePrueffelder(const Seitenkontext &context, QWidget *parent = nullptr);

    bool takeOver(Anlass anlass) override;
    void fill() override;
    void finishEditing() override;
    Eingaben entries() const override;
    void restoreEntries(const Eingaben &entries) override;
    QWidget *firstControl() const override;

    /// Brings a covariable value that was typed into row \a row of the fields' table into its form.
    void formatEdited(int row, int col, QString &newText) const;

signals:
    /// A text is about to be written into the fields' table.
    void fieldEdited(int Row, int Col, QString &NewText, bool &Cancel);

private:
    enum FieldColumn { NameColumn, PointsColumn, ValueColumn };

    QWidget *labelled(const QString &caption, Tabelle *table);
    void fillFields(std::int32_t count);
    QStringList fieldRow(int row);
    void showPoints();
    void cellEdited(int row, int col, QString &newText, bool &cancel);
    int mostPoints() const;

    /// What is wrong with a cell of a row, or nothing.
    struct Fault
    {
        QString text;
        int col = NameColumn;
    };
    bool takeFieldsOver(Anlass anlass);
    Fault fault(int row, Anlass anlass) const;
    void storeRow(int row, const Fault &refused);

    Tabelle *m_fields;
    Tabelle *m_points;
    Zellenstand m_cells; ///< of the fields
    Punktnamen m_pointNames;
    QLabel *m_notice;
    int m_fieldCount = 0; ///< rows that are shown
    bool m_showPointsPending = false;
};
