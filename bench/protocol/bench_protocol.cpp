// What a protocol costs, as ratios to something measured in the same run:
//   pdfToBlindWriter   composing and saving against a PDF writer that draws the same things blindly
//   firstPage          time to the first painted page with 400 pages against 4
//   composeLinear      time per point with 100,000 points against 12,500
//   sizePerPage        KiB of PDF a page
// Run with QT_QPA_PLATFORM=offscreen.
#include "core/kalibrierung.h"
#include "protocol/pages/protocolpdf.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/pagepicture.h"
#include "protocol/windows/protocolservices.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <algorithm>
#include <clocale>
#include <map>
#include <memory>
#include <vector>

namespace {

struct Quiet : ProtocolServices
{
    void message(QWidget *, Icon, const QString &, const QString &) override {}
    bool isPrinterInstalled() override { return true; }
    bool choosePrinter(QPrinter &, QAbstractPrintDialog::PrintDialogOptions, QWidget *) override
    {
        return false;
    }
    bool setUpPrinter(QPrinter &, QWidget *) override { return false; }
    QString choosePdfTarget(const QString &, QWidget *) override { return {}; }
};

struct Kept : PageSink
{
    std::vector<std::shared_ptr<Page>> pages;
    void pageCompleted(const std::shared_ptr<Page> &page) override { pages.push_back(page); }
};

// Made-up values that repeat nowhere.
std::unique_ptr<Kalibrierung> document(std::int32_t fields, std::int32_t points)
{
    auto result = std::make_unique<Kalibrierung>(QLocale(QLocale::German));
    result->DirektesPrüfmerkmal().setName(u"Verdichtungsgrad"_qs);
    result->DirektesPrüfmerkmal().setFormelzeichen(u"D"_qs);
    result->DirektesPrüfmerkmal().setEinheit(u"%"_qs);
    result->IndirektesPrüfmerkmal().setName(u"Messwert"_qs);
    result->IndirektesPrüfmerkmal().setFormelzeichen(u"M"_qs);
    result->IndirektesPrüfmerkmal().setEinheit(u"MN/m²"_qs);
    result->setPrüffelderAnzahl(fields);
    for (std::int32_t field = 1; field <= fields; ++field) {
        result->setPrüffeldPrüfpunkte(field, points);
        for (std::int32_t point = 1; point <= points; ++point) {
            const double wave = ((field * 7 + point * 13) % 11 - 5) * 0.1;
            result->setMesswert(pmDirekt, field, point, 90.0 + field * 0.01 + wave);
            result->setMesswert(pmIndirekt, field, point, 20.0 + field * 0.05 + wave * 3.0);
        }
    }
    return result;
}

std::vector<std::shared_ptr<Page>> composed(Kalibrierung &from)
{
    Kept kept;
    ProtocolRun run(from, {}, kept);
    while (run.step()) {
    }
    return kept.pages;
}

// The yardstick: no measuring, no breaking, no checks of the file.
void writeBlindly(const std::vector<std::shared_ptr<Page>> &pages, const QString &target)
{
    QPdfWriter writer(target);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({});
    writer.setResolution(1440);
    QPainter painter(&writer);
    QFont font(QStringLiteral("Times New Roman"));
    const double scale = 1440 / 2.54;
    const auto at = [&](const QPointF &point) {
        return QPointF(point.x() * scale, (29.7 - point.y()) * scale);
    };
    bool first = true;
    for (const auto &page : pages) {
        if (!first)
            writer.newPage();
        first = false;
        for (const Primitive &primitive : page->drawing.primitives()) {
            if (const auto *text = std::get_if<PlacedText>(&primitive)) {
                font.setPixelSize(text->style.pixelSize);
                font.setBold(text->style.bold);
                painter.setFont(font);
                painter.drawText(at(text->at), text->text);
            } else if (const auto *line = std::get_if<PlacedLine>(&primitive)) {
                painter.drawLine(at(line->from), at(line->to));
            } else if (const auto *point = std::get_if<PlacedPoint>(&primitive)) {
                painter.drawPoint(at(point->at));
            }
        }
    }
}

template <typename Work>
double seconds(Work work)
{
    QElapsedTimer time;
    time.start();
    work();
    return static_cast<double>(time.nsecsElapsed()) / 1e9;
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

void pdfToBlindWriter(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto ordinary = document(4, 4);
    const auto pages = composed(*ordinary);
    std::vector<double> ours;
    std::vector<double> blind;
    for (auto step : state) {
        (void)step;
        blind.push_back(
            seconds([&] { writeBlindly(pages, folder.filePath(QStringLiteral("b.pdf"))); }));
        ours.push_back(seconds([&] {
            writeProtocolPdf(*ordinary, ProtocolType::WithCalibrationField,
                             folder.filePath(QStringLiteral("p.pdf")));
        }));
    }
    state.counters["ratio"] = median(ours) / median(blind);
    state.counters["ms"] = median(ours) * 1e3;
}
BENCHMARK(pdfToBlindWriter)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// Notes when a page is painted.
class PaintWatch : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<PagePicture *>(object)) {
            object->removeEventFilter(this);
            QCoreApplication::sendEvent(object, event);
            painted = true;
            return true;
        }
        if (event->type() == QEvent::ChildAdded)
            static_cast<QChildEvent *>(event)->child()->installEventFilter(this);
        return false;
    }
};

double timeToFirstPage(Kalibrierung &from)
{
    Quiet services;
    frmProtocollPreview window(services);
    window.setKalibrierung(from);
    PaintWatch watch;
    window.findChild<QWidget *>(QStringLiteral("picWorkspace"))->installEventFilter(&watch);
    return seconds([&] {
        window.show();
        while (!watch.painted)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    });
}

void firstPage(benchmark::State &state)
{
    const auto few = document(4, 4);
    const auto many = document(900, 20);
    std::vector<double> four;
    std::vector<double> hundreds;
    for (auto step : state) {
        (void)step;
        four.push_back(timeToFirstPage(*few));
        hundreds.push_back(timeToFirstPage(*many));
    }
    state.counters["pages"] = static_cast<double>(composed(*many).size());
    state.counters["ratio"] = median(hundreds) / median(four);
    state.counters["ms"] = median(hundreds) * 1e3;
}
BENCHMARK(firstPage)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void composeLinear(benchmark::State &state)
{
    constexpr std::int32_t points = 20;
    const auto less = document(625, points);
    const auto more = document(5000, points);
    std::vector<double> shorter;
    std::vector<double> longer;
    for (auto step : state) {
        (void)step;
        shorter.push_back(seconds([&] { composed(*less); }));
        longer.push_back(seconds([&] { composed(*more); }));
    }
    state.counters["ratio per point"] = median(longer) / 8 / median(shorter);
    state.counters["s"] = median(longer);
}
BENCHMARK(composeLinear)->Unit(benchmark::kMillisecond)->Iterations(3);

void sizePerPage(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("p.pdf"));
    const auto from = document(static_cast<std::int32_t>(state.range(0)), 20);
    for (auto step : state) {
        (void)step;
        writeProtocolPdf(*from, ProtocolType::WithCalibrationField, target);
    }
    const auto pages = static_cast<double>(composed(*from).size());
    state.counters["KiB a page"] = static_cast<double>(QFileInfo(target).size()) / 1024 / pages;
    state.counters["pages"] = pages;
}
BENCHMARK(sizePerPage)->Unit(benchmark::kMillisecond)->Arg(4)->Arg(100)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
