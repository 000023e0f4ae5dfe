// What the grid costs, each figure as a ratio within one run: many rows against few, this grid
// against Qt's ready-made table of items, an overwriting paste against setting the same texts.
#include "bench/core/compare.h"

#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"
#include "grid/gridmodel.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>

#include <clocale>
#include <memory>

namespace {

constexpr int cols = 4;
constexpr int few = 100;
constexpr int many = 100'000;
constexpr double milliseconds = 1e3;

using Lines = QList<QStringList>;

QStringList lineOf(int row)
{
    QStringList line;
    for (int col = 0; col < cols; ++col)
        line.append(QString::number(row) + u',' + QString::number(col));
    return line;
}

/// The texts of that many rows, made beforehand, so that making them is no part of a measurement.
Lines linesOf(int rows)
{
    Lines lines;
    for (int row = 0; row < rows; ++row)
        lines.append(lineOf(row));
    return lines;
}

/// To the first picture of a window that is large enough for some twenty rows.
void showOnce(QWidget &widget)
{
    widget.resize(800, 600);
    widget.show();
    QCoreApplication::processEvents();
}

std::unique_ptr<QWidget> emptyGrid(GridControl *&grid)
{
    auto made = std::make_unique<GridControl>();
    made->setCols(cols);
    made->setRows(1);
    grid = made.get();
    return made;
}

/// As the wizard fills its tables: the texts are made when a row is first seen.
std::unique_ptr<QWidget> sourced(int rows)
{
    GridControl *grid = nullptr;
    std::unique_ptr<QWidget> widget = emptyGrid(grid);
    grid->setSourcedRows(1 + rows, lineOf);
    showOnce(*grid);
    return widget;
}

/// Whole rows handed over at once.
std::unique_ptr<QWidget> inBulk(const Lines &lines)
{
    GridControl *grid = nullptr;
    std::unique_ptr<QWidget> widget = emptyGrid(grid);
    grid->insertRows(1, lines);
    showOnce(*grid);
    return widget;
}

std::unique_ptr<QWidget> cellByCell(const Lines &lines)
{
    GridControl *grid = nullptr;
    std::unique_ptr<QWidget> widget = emptyGrid(grid);
    grid->setRedraw(false);
    grid->setRows(1 + int(lines.size()));
    for (int row = 0; row < int(lines.size()); ++row) {
        for (int col = 0; col < cols; ++col)
            grid->setTextMatrix(1 + row, col, lines.at(row).at(col));
    }
    grid->setRedraw(true);
    showOnce(*grid);
    return widget;
}

/// What a user of Qt's table has to do for the same: one item for every cell.
std::unique_ptr<QWidget> tableOfItems(const Lines &lines)
{
    auto table = std::make_unique<QTableWidget>(int(lines.size()), cols);
    table->setUpdatesEnabled(false);
    for (int row = 0; row < int(lines.size()); ++row) {
        for (int col = 0; col < cols; ++col)
            table->setItem(row, col, new QTableWidgetItem(lines.at(row).at(col)));
    }
    table->setUpdatesEnabled(true);
    showOnce(*table);
    return table;
}

/// Times two ways to a first picture in turn, from an empty window on; taking the windows down
/// again is not timed. Reports \a first / \a second as "ratio", of the medians of processor time.
template <typename First, typename Second>
void race(benchmark::State &state, First first, Second second)
{
    std::vector<Duration> firsts;
    std::vector<Duration> seconds;
    for ([[maybe_unused]] auto step : state) {
        std::unique_ptr<QWidget> widget;
        firsts.push_back(durationOf([&] { widget = first(); }));
        widget.reset();
        seconds.push_back(durationOf([&] { widget = second(); }));
        widget.reset();
        state.SetIterationTime(firsts.back().wall);
    }
    const double one = median(firsts, &Duration::processor);
    const double other = median(seconds, &Duration::processor);
    state.counters["ratio"] = one / other;
    state.counters["ratio_by_clock"] =
        median(firsts, &Duration::wall) / median(seconds, &Duration::wall);
    state.counters["cpu_ms"] = one * milliseconds;
    state.counters["yardstick_ms"] = other * milliseconds;
}

// Many rows against few, as the wizard fills its tables.
void manyRowsSourced(benchmark::State &state)
{
    race(
        state, [] { return sourced(many); }, [] { return sourced(few); });
    state.counters["reach_at_most"] = 1.5;
}

void manyRowsInBulk(benchmark::State &state)
{
    const Lines lines = linesOf(many);
    const Lines fewLines = linesOf(few);
    race(
        state, [&] { return inBulk(lines); }, [&] { return inBulk(fewLines); });
    state.counters["reach_at_most"] = 1.5;
}

// How many times as long the table of items takes for the same rows.
void tableOfItemsAgainstSourced(benchmark::State &state)
{
    const Lines lines = linesOf(many);
    race(
        state, [&] { return tableOfItems(lines); }, [] { return sourced(many); });
    state.counters["reach_at_least"] = 10;
}

void tableOfItemsAgainstBulk(benchmark::State &state)
{
    const Lines lines = linesOf(many);
    race(
        state, [&] { return tableOfItems(lines); }, [&] { return inBulk(lines); });
    state.counters["reach_at_least"] = 10;
}

// Every text set on its own, for comparison; nothing is promised for it.
void tableOfItemsAgainstCellByCell(benchmark::State &state)
{
    const Lines lines = linesOf(many);
    race(
        state, [&] { return tableOfItems(lines); }, [&] { return cellByCell(lines); });
}

/// Pages from the first row to the last and returns the number of pictures painted.
int scrollThrough(QTableView &table)
{
    QScrollBar *bar = table.verticalScrollBar();
    int frames = 0;
    for (int value = 0;; value += bar->pageStep()) {
        bar->setValue(value);
        table.viewport()->repaint();
        ++frames;
        if (value >= bar->maximum())
            return frames;
    }
}

// Page by page through all rows, none of them seen before. The ratio is that of one picture to the
// 16.7 ms between two pictures on the screen; beside it what the table of items takes for a page.
void scrollThroughAllRows(benchmark::State &state)
{
    constexpr double between = 1.0 / 60;
    const Lines lines = linesOf(many);
    Duration mine;
    Duration theirs;
    int frames = 0;
    int theirFrames = 0;
    for ([[maybe_unused]] auto step : state) {
        const std::unique_ptr<QWidget> grid = sourced(many);
        QTableView *table = static_cast<GridControl *>(grid.get())->table();
        mine = durationOf([&] { frames = scrollThrough(*table); });
        const std::unique_ptr<QWidget> items = tableOfItems(lines);
        auto *itemTable = static_cast<QTableWidget *>(items.get());
        itemTable->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        theirs = durationOf([&] { theirFrames = scrollThrough(*itemTable); });
        state.SetIterationTime(mine.wall);
    }
    state.counters["ratio"] = mine.processor / frames / between;
    state.counters["reach_at_most"] = 1;
    state.counters["frames"] = frames;
    state.counters["ms_a_frame"] = mine.processor / frames * milliseconds;
    state.counters["items_ms_a_frame"] = theirs.processor / theirFrames * milliseconds;
}

constexpr int pasteRows = 10'000;
constexpr int pasteCols = 2;

struct PaintCounter : QObject
{
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

QString clipboardOf(const Lines &lines, int firstCol)
{
    QString text;
    for (const QStringList &line : lines)
        text += line.at(firstCol) + u'\t' + line.at(firstCol + 1) + u"\r\n"_qs;
    return text;
}

// Pasting 10,000 x 2 cells against setting the same texts in the model, each with its repaint.
void pasteOver(benchmark::State &state)
{
    const Lines lines = linesOf(pasteRows);
    const std::unique_ptr<QWidget> widget = inBulk(lines);
    auto &grid = static_cast<GridControl &>(*widget);
    // In turn, so that every cell gets another text each time.
    const QStringList clipboards{clipboardOf(lines, 0), clipboardOf(lines, 2)};
    int round = 0;
    GridEnvironment environment = GridEnvironment::system();
    environment.clipboardText = [&] { return clipboards.at(round % 2); };
    clsEditGrid edit(environment);
    edit.setMSFlexGrid(&grid);
    PaintCounter paints;
    int pasted = 0;
    compare(
        state,
        [&] {
            ++round;
            grid.setCell(1, 0);
            QCoreApplication::processEvents();
            grid.table()->viewport()->installEventFilter(&paints);
            return 0;
        },
        [&](int) {
            edit.ClipboardPasteOver();
            QCoreApplication::processEvents();
            grid.table()->viewport()->removeEventFilter(&paints);
            ++pasted;
        },
        [&] {
            ++round;
            grid.setRedraw(false);
            for (int row = 0; row < pasteRows; ++row) {
                for (int col = 0; col < pasteCols; ++col)
                    grid.model()->setText(1 + row, col, lines.at(row).at(col + 2 * (round % 2)));
            }
            grid.setRedraw(true);
            QCoreApplication::processEvents();
        });
    state.counters["reach_at_most"] = 3;
    state.counters["repaints_a_paste"] = double(paints.count) / pasted;
}

BENCHMARK(manyRowsSourced)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);
BENCHMARK(manyRowsInBulk)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);
BENCHMARK(tableOfItemsAgainstSourced)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(tableOfItemsAgainstBulk)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(tableOfItemsAgainstCellByCell)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(scrollThroughAllRows)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(pasteOver)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

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
