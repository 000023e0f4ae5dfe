#include "tests/grid/editgridfixture.h"

#include "grid/gridmodel.h"

#include <QTableView>

EditGridFixture::EditGridFixture(int rows, int cols, int fixedCols)
{
    auto *layout = new QVBoxLayout(window.get());
    layout->addWidget(before);
    layout->addWidget(grid);
    layout->addWidget(behind);
    window->resize(500, 400);

    grid->setRows(rows);
    grid->setCols(cols);
    grid->setFixedCols(fixedCols);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            grid->setTextMatrix(row, col, u"r%1c%2"_qs.arg(row).arg(col));
    }
    grid->setCell(1, fixedCols);
    modelTester = std::make_unique<QAbstractItemModelTester>(
        grid->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);

    GridEnvironment environment = GridEnvironment::system(QLocale(QLocale::German));
    environment.clipboardText = [this] { return clipboard; };
    environment.setClipboardText = [this](const QString &text) { clipboard = text; };
    environment.secondsSinceMidnight = [this] { return timeOfDay; };
    edit = std::make_unique<clsEditGrid>(environment);
    edit->setMSFlexGrid(grid);
    edit->setInputObject(editor);

    const auto at = [](const char *event, int row, int col) {
        return u"%1 %2,%3"_qs.arg(QLatin1String(event)).arg(row).arg(col);
    };
    const auto in = [](const char *event, int row) {
        return u"%1 %2"_qs.arg(QLatin1String(event)).arg(row);
    };
    const clsEditGrid *eg = edit.get();
    QObject *context = edit.get();
    QObject::connect(eg, &clsEditGrid::BeforeCellEdit, context,
                     [=, this](int row, int col, QString &text) {
                         events.append(at("BeforeCellEdit", row, col) + u' ' + text);
                     });
    QObject::connect(eg, &clsEditGrid::AfterCellEdit, context,
                     [=, this](int row, int col, QString &text) {
                         events.append(at("AfterCellEdit", row, col) + u' ' + text);
                     });
    QObject::connect(eg, &clsEditGrid::CancelCellEdit, context, [=, this](int row, int col) {
        events.append(at("CancelCellEdit", row, col));
    });
    QObject::connect(eg, &clsEditGrid::ProcessReady, context,
                     [=, this] { events.append(u"ProcessReady"_qs); });
    QObject::connect(eg, &clsEditGrid::BeforeRowAdd, context,
                     [=, this](int row) { events.append(in("BeforeRowAdd", row)); });
    QObject::connect(eg, &clsEditGrid::RowAdd, context,
                     [=, this](int row) { events.append(in("RowAdd", row)); });
    QObject::connect(eg, &clsEditGrid::BeforeRowRemove, context,
                     [=, this](int row) { events.append(in("BeforeRowRemove", row)); });
    QObject::connect(eg, &clsEditGrid::RowRemove, context,
                     [=, this](int row) { events.append(in("RowRemove", row)); });
    QObject::connect(eg, &clsEditGrid::CellClear, context,
                     [=, this](int row, int col) { events.append(at("CellClear", row, col)); });
    QObject::connect(
        eg, &clsEditGrid::CellsPasted, context, [=, this](int pasted, int vetoed, int leftOut) {
            events.append(u"CellsPasted %1,%2,%3"_qs.arg(pasted).arg(vetoed).arg(leftOut));
        });
}

EditGridFixture::~EditGridFixture()
{
    modelTester.reset();
}

void EditGridFixture::show()
{
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    grid->setFocus();
    QVERIFY(grid->table()->hasFocus());
}

QStringList EditGridFixture::rowTexts(int row) const
{
    QStringList texts;
    for (int col = grid->fixedCols(); col < grid->cols(); ++col)
        texts.append(grid->textMatrix(row, col));
    return texts;
}

QStringList EditGridFixture::colTexts(int col) const
{
    QStringList texts;
    for (int row = grid->fixedRows(); row < grid->rows(); ++row)
        texts.append(grid->textMatrix(row, col));
    return texts;
}

void EditGridFixture::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void EditGridFixture::type(const QString &text)
{
    // One key after the other: the first one can move the focus into the editor.
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, c,
                            Qt::NoModifier);
}

QPoint EditGridFixture::cellCentre(int row, int col) const
{
    return grid->table()->visualRect(grid->model()->cell(row, col)).center();
}
