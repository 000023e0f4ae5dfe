// Reading and writing a calibration file of 100,000 points, against Qt's own XML classes.

#include "bench/core/compare.h"
#include "bench/core/sampledocument.h"

#include "core/kalibrierungsdatei.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdlib>

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

// The rows that walk() only passes, written by Qt.
void writeRows(const Kalibrierung &document)
{
    QByteArray file;
    QXmlStreamWriter writer(&file);
    writer.writeStartElement(QStringLiteral("xml"));
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        writer.writeEmptyElement(QStringLiteral("row"));
        writer.writeAttribute(QStringLiteral("Variable"), key);
        writer.writeAttribute(QStringLiteral("Wert"), document.values().text(value));
    });
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

void saving(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    const std::unique_ptr<Kalibrierung> document = sampleDocument(points);
    compare(
        state, [] { return 0; }, [&](int) { document->SaveFile(path); },
        [&] { writeRows(*document); });
}

void savingToMemory(benchmark::State &state)
{
    const std::unique_ptr<Kalibrierung> document = sampleDocument(points);
    compare(
        state, [] { return 0; },
        [&](int) {
            benchmark::DoNotOptimize(
                Kalibrierungsdatei::bytesOf(document->DataStore(), document->values()).data());
        },
        [&] { writeRows(*document); });
}

BENCHMARK(parsing)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(loading)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(saving)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);
BENCHMARK(savingToMemory)->UseManualTime()->Iterations(iterations)->Unit(benchmark::kMillisecond);

} // namespace
