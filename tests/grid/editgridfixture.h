#pragma once

#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <memory>

namespace QTest {
template <>
inline char *toString(const GridCursor &c)
{
    return qstrdup(
        qPrintable(u"%1,%2 to %3,%4"_qs.arg(c.row).arg(c.col).arg(c.rowSel).arg(c.colSel)));
}
} // namespace QTest

/// A window with a control before, an editable grid of one header row, and a control behind. Its
/// clipboard and clock are its own, and every event of the grid is written down.
struct EditGridFixture
{
    /// Cells hold "r" row "c" column. \a rows and \a cols count the fixed ones.
    explicit EditGridFixture(int rows = 5, int cols = 4, int fixedCols = 0);
    ~EditGridFixture();

    /// Shows the window and gives the grid the focus.
    void show();
    /// The events so far, and starts anew.
    QStringList takeEvents() { return std::exchange(events, QStringList()); }
    /// The texts of a row that are not fixed.
    QStringList rowTexts(int row) const;
    /// The texts of a column below the header.
    QStringList colTexts(int col) const;
    /// A key for whatever has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    QPoint cellCentre(int row, int col) const;

    QString clipboard;
    double timeOfDay = 43200;
    QStringList events;

    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    QPushButton *before = new QPushButton(window.get());
    GridControl *grid = new GridControl(window.get());
    QPushButton *behind = new QPushButton(window.get());
    QLineEdit *editor = new QLineEdit(window.get());
    std::unique_ptr<clsEditGrid> edit;
    std::unique_ptr<QAbstractItemModelTester> modelTester;
};
