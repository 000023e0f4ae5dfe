// A calibration as a spreadsheet, against the library writing the same cells and charts without any
// thought, check or care for the target, in the same run.

#include "core/kalibrierung.h"
#include "export/tabellenausgabe.h"

#include <benchmark/benchmark.h>
#include <minizip/unzip.h>
#include <xlsxwriter.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

const QDateTime created = QDateTime::fromSecsSinceEpoch(0);

struct Zelle
{
    lxw_row_t row = 0;
    lxw_col_t column = 0;
    std::string formula;
    std::string text;
    double number = 0.0;
    bool isText = false;
};

std::string part(const QString &path, const std::string &name)
{
    unzFile file = unzOpen64(path.toUtf8().constData());
    std::string text;
    if (unzLocateFile(file, name.c_str(), 1) == UNZ_OK && unzOpenCurrentFile(file) == UNZ_OK) {
        std::array<char, 65536> piece;
        for (int size = 0; (size = unzReadCurrentFile(file, piece.data(), piece.size())) > 0;)
            text.append(piece.data(), static_cast<std::size_t>(size));
        unzCloseCurrentFile(file);
    }
    unzClose(file);
    return text;
}

std::vector<Zelle> cellsOf(const QString &path, int sheet)
{
    const std::string xml = part(path, "xl/worksheets/sheet" + std::to_string(sheet) + ".xml");
    pugi::xml_document document;
    document.load_buffer(xml.data(), xml.size());
    std::vector<Zelle> cells;
    for (const pugi::xml_node row : document.child("worksheet").child("sheetData")) {
        for (const pugi::xml_node c : row) {
            Zelle cell;
            cell.row = lxw_name_to_row(c.attribute("r").value());
            cell.column = lxw_name_to_col(c.attribute("r").value());
            const std::string kind = c.attribute("t").value();
            cell.isText = !kind.empty();
            if (c.child("f"))
                cell.formula = std::string("=") + c.child_value("f");
            cell.text = kind == "inlineStr" ? c.child("is").child_value("t") : c.child_value("v");
            if (!cell.isText)
                cell.number = c.child("v").text().as_double();
            cells.push_back(cell);
        }
    }
    return cells;
}

void write(lxw_worksheet *sheet, const Zelle &cell, lxw_format *format)
{
    if (!cell.formula.empty() && cell.isText)
        worksheet_write_formula_str(sheet, cell.row, cell.column, cell.formula.c_str(), format,
                                    cell.text.c_str());
    else if (!cell.formula.empty())
        worksheet_write_formula_num(sheet, cell.row, cell.column, cell.formula.c_str(), format,
                                    cell.number);
    else if (cell.isText)
        worksheet_write_string(sheet, cell.row, cell.column, cell.text.c_str(), format);
    else
        worksheet_write_number(sheet, cell.row, cell.column, cell.number, format);
}

void writeBlindly(const QString &path, const std::vector<std::vector<Zelle>> &sheets)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    lxw_workbook *book = workbook_new_opt(path.toUtf8().constData(), &options);
    lxw_format *format = workbook_add_format(book);
    format_set_num_format(format, "#,##0.00");
    int number = 0;
    for (const char *name : {"Messwerte", "Auswertung", "Kalibriergeraden", "Protokolldaten"}) {
        lxw_worksheet *sheet = workbook_add_worksheet(book, name);
        for (const Zelle &cell : sheets[static_cast<std::size_t>(number)])
            write(sheet, cell, format);
        if (++number != 3)
            continue;
        for (const lxw_row_t row : {16U, 44U, 72U}) {
            lxw_chart *chart = workbook_add_chart(book, LXW_CHART_SCATTER);
            chart_add_series(chart, "=Messwerte!$E$2:$E$17", "=Messwerte!$F$2:$F$17");
            chart_add_series(chart, "=Kalibriergeraden!$B$10:$B$11",
                             "=Kalibriergeraden!$C$10:$C$11");
            worksheet_insert_chart(sheet, row, 0, chart);
        }
    }
    workbook_close(book);
}

template <typename Work>
double seconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) * 1e-9;
}

void syncFile(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadWrite))
        fsync(file.handle());
}

// The work alone, in a folder that is memory where there is one; and with the wait for the disk,
// which both sides must wait for then.
void compare(benchmark::State &state, Kalibrierung &document, int rounds)
{
    const QString memory = QStringLiteral("/dev/shm");
    const QTemporaryDir fast((QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
                             QStringLiteral("/bench-XXXXXX"));
    const QTemporaryDir disk;
    const QString path = fast.filePath(QStringLiteral("a.xlsx"));
    const QString diskPath = disk.filePath(QStringLiteral("a.xlsx"));
    schreibeTabelle(document, path, created);
    std::vector<std::vector<Zelle>> sheets;
    for (int sheet = 1; sheet <= 4; ++sheet)
        sheets.push_back(cellsOf(path, sheet));
    for (auto _ : state) {
        constexpr double never = std::numeric_limits<double>::max();
        double ours = never;
        double blind = never;
        double oursOnDisk = never;
        double blindOnDisk = never;
        for (int round = 0; round < rounds; ++round) {
            ours = std::min(ours, seconds([&] { schreibeTabelle(document, path, created); }));
            blind = std::min(blind, seconds([&] { writeBlindly(path, sheets); }));
            oursOnDisk = std::min(oursOnDisk,
                                  seconds([&] { schreibeTabelle(document, diskPath, created); }));
            blindOnDisk = std::min(blindOnDisk, seconds([&] {
                                       writeBlindly(diskPath, sheets);
                                       syncFile(diskPath);
                                   }));
        }
        state.SetIterationTime(ours);
        state.counters["ratio"] = ours / blind;
        state.counters["ratio_synced"] = oursOnDisk / blindOnDisk;
        state.counters["ms_synced"] = oursOnDisk * 1e3;
    }
}

void ordinaryCalibration(benchmark::State &state)
{
    Kalibrierung document(QLocale(QLocale::German));
    document.LoadFile(QStringLiteral(EXAMPLE));
    compare(state, document, 50);
}

void hundredThousandPoints(benchmark::State &state)
{
    Kalibrierung document(QLocale(QLocale::German));
    constexpr int fields = 100;
    constexpr int points = 1000;
    document.setPrüffelderAnzahl(fields);
    for (int field = 1; field <= fields; ++field) {
        document.setPrüffeldPrüfpunkte(field, points);
        for (int point = 1; point <= points; ++point) {
            document.setMesswert(pmDirekt, field, point,
                                 90 + (field * 7 + point * 13) % 101 / 10.0);
            document.setMesswert(pmIndirekt, field, point,
                                 30 + (field * 5 + point * 3) % 97 / 10.0);
        }
    }
    compare(state, document, 2);
}

BENCHMARK(ordinaryCalibration)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(hundredThousandPoints)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(2)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
