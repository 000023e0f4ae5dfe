// Reading and writing a calibration file of 100,000 points, against Qt's own XML classes.

#include "bench/core/compare.h"
#include "bench/core/sampledocument.h"

#include "core/kalibrierungsdatei.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdlib>
#include <utility>
#include <vector>

namespace {

constexpr int points = 100'000;
constexpr int iterations = 15;

QByteArray sampleFile()
{
    const std::unique_ptr<Kalibrierung> document = sampleDocument(points);
    return Kalibrierungsdatei::bytesOf(document->DataStore(), document->values());
}

void walk(const QByteArray &file)
{
    QXmlStreamReader reader(file);
    qsizetype elements = 0;
    while (!reader.atEnd())
        elements += reader.readNext() == QXmlStreamReader::StartElement ? 1 : 0;
    if (reader.hasError() || elements < 2 * points)
        std::abort();
    benchmark::DoNotOptimize(elements);
}

using Rows = std::vector<std::pair<QString, QString>>;

// The rows of a document as the texts that its file holds.
Rows rowsOf(const Kalibrierung &document)
{
    Rows rows;
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        rows.emplace_back(key, document.values().text(value));
    });
    return rows;
}

void writeRows(const Rows &rows)
{
    QByteArray file;
    QXmlStreamWriter writer(&file);
    writer.writeStartElement(QStringLiteral("xml"));
    for (const auto &[key, value] : rows) {
        writer.writeEmptyElement(QStringLiteral("row"));
        writer.writeAttribute(QStringLiteral("Variable"), key);
        writer.writeAttribute(QStringLiteral("Wert"), value);
    }
    writer.writeEndElement();
    benchmark::DoNotOptimize(file.data());
}

void parsing(benchmark::State &state)
{
    const QByteArray file = sampleFile();
    compare(
        state, [&] { return QByteArray(file.constData(), file.size()); },
        [](QByteArray &bytes) {
            const Rowset rowset = Rowset::parse(std::move(bytes), "Variable", "Wert");
            benchmark::DoNotOptimize(rowset.rows().data());
        },
        [&] { walk(file); });
}

void loading(benchmark::State &state)
{
    const QByteArray file = sampleFile();
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    sampleDocument(points)->SaveFile(path);
    Kalibrierung document(benchLocale);
    compare(
        state,
        [&] {
            document.Reset();
            return 0;
        },
        [&](int) { document.LoadFile(path); }, [&] { walk(file); });
}

// A document as it was loaded, whose values are texts, to the disk and safely so.
void saving(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    sampleDocument(points)->SaveFile(path);
    Kalibrierung document(benchLocale);
    document.LoadFile(path);
    const Rows rows = rowsOf(document);
    compare(
        state, [] { return 0; }, [&](int) { document.SaveFile(path); }, [&] { writeRows(rows); });
}

// A document that was entered, whose values are numbers, to the disk.
void savingNumbers(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    const std::unique_ptr<Kalibrierung> document = sampleDocument(points);
    const Rows rows = rowsOf(*document);
    compare(
        state, [] { return 0; }, [&](int) { document->SaveFile(path); }, [&] { writeRows(rows); });
}

BENCHMARK(parsing)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(loading)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(saving)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(savingNumbers)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);

} // namespace
