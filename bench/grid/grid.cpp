// What the grid costs, as figures to compare within one run: many rows against few, this grid
// against the ready-made table of items, an overwriting paste against setting the same texts.
#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"
#include "grid/gridmodel.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>

#include <benchmark/benchmark.h>

#include <clocale>

namespace {

constexpr int cols = 4;

QString cellText(int row, int col)
{
    return QString::number(row) + u',' + QString::number(col);
}

/// The texts of many rows, made once, so that making them is no part of what is measured.
const QList<QStringList> &texts(int rows)
{
    static QList<QStringList> all;
    for (int row = int(all.size()); row < rows; ++row) {
        QStringList line;
        for (int col = 0; col < cols; ++col)
            line.append(cellText(row, col));
        all.append(line);
    }
    return all;
}

void fill(GridControl &grid, int rows)
{
    const QList<QStringList> &lines = texts(rows);
    grid.setRedraw(false);
    grid.setCols(cols);
    grid.setRows(1 + rows);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            grid.setTextMatrix(1 + row, col, lines.at(row).at(col));
    }
    grid.setRedraw(true);
}

void showOnce(QWidget &widget)
{
    widget.resize(800, 600);
    widget.show();
    QCoreApplication::processEvents();
}

/// From a filled grid to its first picture.
void showFilled(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = std::make_unique<GridControl>();
        fill(*grid, int(state.range(0)));
        state.ResumeTiming();
        showOnce(*grid);
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(showFilled)->Arg(100)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From nothing to the first picture of a grid whose rows are still empty.
void openEmpty(benchmark::State &state)
{
    for (auto _ : state) {
        GridControl grid;
        grid.setCols(cols);
        grid.setRows(1 + int(state.range(0)));
        showOnce(grid);
    }
}
BENCHMARK(openEmpty)->Arg(100)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From nothing to the first picture, all texts set one by one.
void openAndFill(benchmark::State &state)
{
    texts(int(state.range(0)));
    for (auto _ : state) {
        GridControl grid;
        fill(grid, int(state.range(0)));
        showOnce(grid);
    }
}
BENCHMARK(openAndFill)->Arg(100)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same with the texts handed over as whole rows.
void openWithRows(benchmark::State &state)
{
    const QList<QStringList> lines = texts(int(state.range(0))).first(state.range(0));
    for (auto _ : state) {
        GridControl grid;
        grid.setCols(cols);
        grid.setRows(1);
        grid.insertRows(1, lines);
        showOnce(grid);
    }
}
BENCHMARK(openWithRows)->Arg(100)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same with Qt's table of items.
void openAndFillTableWidget(benchmark::State &state)
{
    const int rows = int(state.range(0));
    const QList<QStringList> &lines = texts(rows);
    for (auto _ : state) {
        QTableWidget table(rows, cols);
        table.setUpdatesEnabled(false);
        for (int row = 0; row < rows; ++row) {
            for (int col = 0; col < cols; ++col)
                table.setItem(row, col, new QTableWidgetItem(lines.at(row).at(col)));
        }
        table.setUpdatesEnabled(true);
        showOnce(table);
    }
}
BENCHMARK(openAndFillTableWidget)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// One frame of scrolling through all rows, a page and a bit each.
void scrollFrame(benchmark::State &state)
{
    GridControl grid;
    fill(grid, 100'000);
    showOnce(grid);
    QScrollBar *bar = grid.table()->verticalScrollBar();
    int value = 0;
    for (auto _ : state) {
        value = (value + 37) % bar->maximum();
        bar->setValue(value);
        grid.table()->viewport()->repaint();
    }
}
BENCHMARK(scrollFrame)->Unit(benchmark::kMillisecond)->UseRealTime();

constexpr int pasteRows = 10'000;
constexpr int pasteCols = 2;

/// The yardstick of the paste: the same texts, set in the model.
void setTexts(benchmark::State &state)
{
    GridControl grid;
    fill(grid, pasteRows);
    showOnce(grid);
    const QList<QStringList> &lines = texts(pasteRows);
    int round = 0;
    for (auto _ : state) {
        ++round;
        grid.setRedraw(false);
        for (int row = 0; row < pasteRows; ++row) {
            for (int col = 0; col < pasteCols; ++col)
                grid.model()->setText(1 + row, col, lines.at(row).at((col + round) % cols));
        }
        grid.setRedraw(true);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(setTexts)->Unit(benchmark::kMillisecond)->UseRealTime();

void pasteOver(benchmark::State &state)
{
    GridControl grid;
    fill(grid, pasteRows);
    showOnce(grid);
    QStringList clipboards;
    for (int round = 0; round < 2; ++round) {
        QString text;
        for (const QStringList &line : texts(pasteRows).first(pasteRows))
            text += line.at(round) + u'\t' + line.at(round + 1) + u"\r\n"_qs;
        clipboards.append(text);
    }
    GridEnvironment environment = GridEnvironment::system();
    int round = 0;
    environment.clipboardText = [&] { return clipboards.at(++round % 2); };
    clsEditGrid edit(environment);
    edit.setMSFlexGrid(&grid);
    for (auto _ : state) {
        grid.setCell(1, 0);
        edit.ClipboardPasteOver();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(pasteOver)->Unit(benchmark::kMillisecond)->UseRealTime();

/// All rows but one removed by the row command, each with its events.
void removeRows(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        GridControl grid;
        fill(grid, pasteRows);
        showOnce(grid);
        clsEditGrid edit;
        edit.setMSFlexGrid(&grid);
        state.ResumeTiming();
        edit.RowsDel(1, pasteRows);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(removeRows)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
