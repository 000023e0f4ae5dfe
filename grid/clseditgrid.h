#pragma once

#include "grid/celleditor.h"
#include "grid/cellrange.h"
#include "grid/gridenvironment.h"
#include "grid/gridkeys.h"
#include "grid/rowtracker.h"

#include <QColor>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVariant>

#include <cstdint>
#include <memory>
#include <optional>

class GridControl;
class QInputMethodEvent;
class QKeyEvent;
class QPaintDevice;

/// Turns a display-only grid into an editable table: lays an editor over the current cell, takes
/// the typed text back and reports every step. Owns no widget.
///
/// Rows and columns count the fixed ones. Events with reference arguments need direct connections.
/// A handler may do anything, even delete the grid, the editor or this object.
///
/// An edit also ends when the editor loses the focus to another control of its window, but not when
/// a menu, a list or another window opens. Who reads the grid for a command (save, next page) calls
/// EndEdit(false) first.
class clsEditGrid : public QObject
{
    Q_OBJECT

public:
    /// With the desktop's clipboard, the system's clock, and number and date formats of the locale.
    explicit clsEditGrid(QObject *parent = nullptr);
    explicit clsEditGrid(GridEnvironment environment, QObject *parent = nullptr);
    /// Ends an open edit without any event.
    ~clsEditGrid() override;

    /// Scrolls the row into view; the current cell stays.
    void EnsureVisibleRow(int row);

    /// The text of one cell.
    QString GridText(int row, int col) const;
    void setGridText(int row, int col, const QString &text);
    /// The texts of all cells, the columns of a row parted by \a ColTerminator, every row ended by
    /// \a RowTerminator.
    QString GridText(bool IncludeFixedCells = false,
                     const QString &ColTerminator = QStringLiteral("\t"),
                     const QString &RowTerminator = QStringLiteral("\r\n")) const;
    /// Replaces the grid's rows by the lines of \a Text; at least one row that is not fixed stays.
    /// With \a HoldCols the number of columns stays and what goes beyond is dropped, without it
    /// columns are added. Raises no event.
    void setGridText(const QString &Text, bool HoldCols, bool IncludeFixedCells = false,
                     const QString &ColTerminator = QStringLiteral("\t"),
                     const QString &RowTerminator = QStringLiteral("\r\n"));

    void Refresh();

    /// Puts a block of cells onto the clipboard: the selection, widened to whole rows by
    /// ClipboardDoWholeLine; a given bound takes the place of its own.
    void ClipboardCopy(std::optional<int> StartCol = {}, std::optional<int> StartRow = {},
                       std::optional<int> EndCol = {}, std::optional<int> EndRow = {});
    /// Copies, then removes the rows (ClipboardDoWholeLine) or clears the selection.
    void ClipboardCut(std::optional<int> StartCol = {}, std::optional<int> StartRow = {},
                      std::optional<int> EndCol = {}, std::optional<int> EndRow = {});
    /// Inserts the clipboard's lines as new rows above the selection. Raises no event.
    void ClipboardPaste();
    /// Writes the clipboard's cells over the grid's, from the selection's top left cell on, each as
    /// if typed: BeforeCellEdit and AfterCellEdit, and ProcessReady once. Vetoed cells keep their
    /// text, cells beyond the last row or column are left out; CellsPasted tells how many. Reads
    /// what spreadsheets write: quoted cells may hold line breaks and tabs.
    void ClipboardPasteOver();
    void ItemDataMatrixClear();
    /// Draws the grid onto \a Printer. With \a AssingToOnePage it is shrunk to one page where it is
    /// larger. Without, a device with pages gets the grid at its full width and as many pages as
    /// its rows need, any other the grid stretched to its size. False when nothing could be drawn.
    bool PrintToPrinter(QPaintDevice *Printer, bool AssingToOnePage, bool PrintGridLines) const;
    /// Inserts \a Count empty rows at index \a BeforeRow, each with its own veto.
    void RowsAdd(int BeforeRow, int Count);
    /// Removes rows, each with its own veto. The last row that is not fixed always stays.
    void RowsDel(int StartRow, int EndRow);
    /// Empties the selected cells; fixed cells keep their text.
    void SelClear();
    void SelRowsDel();

    /// The editor in use, or null.
    QWidget *InputObject() const;
    /// Takes a QLineEdit or a QComboBox as the editor; any other widget, or null, leaves the object
    /// without one. Borrowed, but hidden and moved into the grid's frame as a child, where it is
    /// laid over the cell; the grid would delete it with itself.
    void setInputObject(QWidget *control);
    GridControl *MSFlexGrid() const { return m_grid; }
    /// Borrowed.
    void setMSFlexGrid(GridControl *grid);
    bool Active() const { return m_active; }
    /// Switching it off commits an open edit.
    void setActive(bool IsActive);

    /// Opens the editor over the current cell as Enter on the grid does.
    void BeginEdit();
    /// Ends an open edit: commits the editor's text, or discards it when \a Cancel.
    void EndEdit(bool Cancel);
    /// Whether an editor is open over a cell.
    bool isEditing() const { return m_editing; }

    /// A value attached to a cell's numbers; it is not shown and does not move with rows. Invalid
    /// where there is none.
    QVariant ItemDataMatrix(int row, int col) const;
    void setItemDataMatrix(int row, int col, const QVariant &value);

    /// Background and text colour of the current cell and of the editor while it is shown, as
    /// 0xRRGGBB; -1 leaves the palette's.
    void FocusColorsSet(std::int32_t BackColor, std::int32_t ForeColor);

    /// After a commit by key the current cell moves to the next one. Default true.
    bool GridAutoFocus() const { return m_autoFocus; }
    void setGridAutoFocus(bool on) { m_autoFocus = on; }
    /// First column that this move visits; -1 is the first one that is not fixed.
    int GridAutoFocus_ColStart() const { return m_autoFocusColStart; }
    void setGridAutoFocus_ColStart(int col) { m_autoFocusColStart = col; }
    /// Last column that this move visits; -1 is the grid's last one.
    int GridAutoFocus_ColEnd() const { return m_autoFocusColEnd; }
    void setGridAutoFocus_ColEnd(int col) { m_autoFocusColEnd = col; }
    /// A commit in the last row appends an empty one. Default false.
    bool GridAutoRowAdd() const { return m_autoRowAdd; }
    void setGridAutoRowAdd(bool on) { m_autoRowAdd = on; }
    /// A commit goes into every selected cell. Default false.
    bool GridMultibleEdit() const { return m_multipleEdit; }
    void setGridMultibleEdit(bool on) { m_multipleEdit = on; }
    /// Ctrl+C, Ctrl+X and Ctrl+V on the grid do nothing here and are left to the owner.
    bool GridIgnoreClipboardKeys() const { return m_ignoreClipboardKeys; }
    void setGridIgnoreClipboardKeys(bool on) { m_ignoreClipboardKeys = on; }
    /// Ctrl+Insert and Ctrl+Delete on the grid do nothing.
    bool GridIgnoreAddDelKeys() const { return m_ignoreAddDelKeys; }
    void setGridIgnoreAddDelKeys(bool on) { m_ignoreAddDelKeys = on; }
    /// Number or date format that a committed text passes through; empty for none.
    QString FormatString() const { return m_formatString; }
    void setFormatString(const QString &format) { m_formatString = format; }
    /// Copy, cut and paste work on whole rows. Default true.
    bool ClipboardDoWholeLine() const { return m_wholeLine; }
    void setClipboardDoWholeLine(bool on) { m_wholeLine = on; }
    /// The current cell gets the focus colours. Default true.
    bool HandleFocusColors() const { return m_handleFocusColors; }
    void setHandleFocusColors(bool on);

signals:
    /// Before committed text is written into a cell. \a Cancel keeps the old text; a changed
    /// \a NewText is what is written.
    void AfterCellEdit(int Row, int Col, QString &NewText, bool &Cancel);
    /// An edit was discarded; the grid's current cell.
    void CancelCellEdit(int Row, int Col);
    /// Before the editor opens with \a Text, which may be changed.
    void BeforeCellEdit(int Row, int Col, QString &Text, bool &Cancel);
    /// The very end of every commit or discard.
    void ProcessReady();
    void BeforeRowAdd(int Row, bool &Cancel);
    void RowAdd(int Row);
    void BeforeRowRemove(int Row, bool &Cancel);
    void RowRemove(int Row);
    void CellClear(int Row, int Col);
    /// The end of ClipboardPasteOver: cells written, vetoed, and without a place in the grid.
    void CellsPasted(int Pasted, int Vetoed, int LeftOut);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Where the edit began, captured then, and when.
    struct OpenEdit
    {
        RowTracker row;
        RowTracker rows; ///< of the selection
        int col;
        int firstCol; ///< of the selection
        int lastCol;
        std::optional<double> stamp; ///< seconds since midnight; none once the edit has ended
    };
    struct OverPaste;
    /// Taken before foreign code runs, which may delete or detach anything: true as long as the
    /// controller is still there and attached to the same grid.
    class Attachment
    {
    public:
        explicit Attachment(const clsEditGrid &edit);
        explicit operator bool() const;

    private:
        QPointer<const clsEditGrid> m_edit;
        QPointer<GridControl> m_grid;
    };
    /// What ends an edit decides where the current cell and the focus go.
    enum class Leaving { Commit, FocusLoss, TabForward, TabBackward };

    void beginEdit(const GridOpening &opening);
    void commitInPlace();
    bool canBeginEdit() const;
    bool mayOpen(QString &text);
    void showEditor(const QString &text, const GridOpening &opening);
    void placeEditor();
    void endEdit(bool cancel, Leaving leaving);
    void commit(OpenEdit &edit, Leaving leaving);
    void discard();
    void closeEditor(bool focusToGrid);
    void abandonEdit();
    void writeCommitted(OpenEdit &edit, const QString &text);
    void commitCell(RowTracker &rows, int col, const QString &text);
    void appendRow();
    void moveOn(Leaving leaving);
    void moveToNextCell();
    void showFocusColors();
    void attachEditor(QWidget *widget);
    void releaseEditor();

    void gridKeyPressed(QKeyEvent *event);
    bool rowOrClearKey(const QKeyEvent &event);
    bool clipboardKey(const QKeyEvent &event);
    void gridTextComposed(QInputMethodEvent *event);
    void editorComposes(QObject *field, QInputMethodEvent &event);
    bool editorKeyPressed(const QKeyEvent &event);
    void editorLeft(const QEvent &event);
    CellRange copiedRange(std::optional<int> startCol, std::optional<int> startRow,
                          std::optional<int> endCol, std::optional<int> endRow) const;
    bool removeOffered(RowTracker &rows);
    bool pasteLine(OverPaste &paste, bool fits);
    bool pasteCell(RowTracker &rows, int col, const QString &text);
    void clear(const CellRange &range);

    GridEnvironment m_environment;
    QPointer<GridControl> m_grid;
    CellEditor m_editor;
    QHash<QString, QVariant> m_itemData; ///< under "k", row, "_", column
    QString m_formatString;
    std::optional<QColor> m_focusBack;
    std::optional<QColor> m_focusText;
    int m_autoFocusColStart = -1;
    int m_autoFocusColEnd = -1;
    bool m_active = true;
    bool m_autoFocus = true;
    bool m_autoRowAdd = false;
    bool m_multipleEdit = false;
    bool m_ignoreClipboardKeys = false;
    bool m_ignoreAddDelKeys = false;
    bool m_wholeLine = true;
    bool m_handleFocusColors = true;

    std::unique_ptr<OpenEdit> m_edit;
    bool m_editing = false;
    bool m_busy = false; ///< inside the events of an edit, where no other can begin
};
