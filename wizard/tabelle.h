#pragma once

#include "grid/gridenvironment.h"
#include "wizard/eingaben.h"

#include <QWidget>

#include <span>

class clsEditGrid;
class GridControl;
class QKeyEvent;
class QLineEdit;

/// How a table is called.
struct TabellenNamen
{
    QString grid;           ///< object name of the grid
    QString editor;         ///< object name of its text box
    QString accessibleName; ///< German, unique in the window
};

/// A table of a page: a grid with its editor and controller, and block copy and paste with a
/// spreadsheet. Its rows are the page's business: no key adds, removes or inserts any.
class Tabelle : public QWidget
{
    Q_OBJECT

public:
    Tabelle(const TabellenNamen &names, const GridEnvironment &environment,
            QWidget *parent = nullptr);
    ~Tabelle() override;

    GridControl &grid() const { return *m_grid; }
    clsEditGrid &controller() const { return *m_controller; }

    /// Writes the headers and shares the width by \a weights; the first \a fixedCols columns are
    /// labels.
    void setColumns(const QStringList &headers, int fixedCols, std::span<const double> weights);
    /// Makes a cell current and brings it into view.
    void showCell(int row, int col);
    /// Keeps the text of an open editor.
    void finishEditing();

    /// Adds the text of an open editor to a page's entries, where it differs from its cell's.
    void addOpenEditor(Eingaben &entries) const;
    /// Opens the editor again that stands in \a entries, with its text.
    void reopenEditor(const Eingaben &entries);
    /// Writes the cells of this table that stand in \a entries, without an event.
    void restoreCells(const Eingaben &entries);

signals:
    /// A typed or pasted text is about to be written into a cell.
    void AfterCellEdit(int Row, int Col, QString &NewText, bool &Cancel);
    /// Cells have been edited, pasted or cleared.
    void changed();
    /// \a LeftOut pasted cells had no place in the table.
    void pastedTooMuch(int LeftOut);

private:
    void clipboardKey(QKeyEvent *event);
    bool hasCell(int row, int col) const;

    GridControl *m_grid;
    clsEditGrid *m_controller;
    QLineEdit *m_editor; ///< belongs to the grid
};
