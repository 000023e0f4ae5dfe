#include "batch/auswertungslauf.h"
#include "core/kalibrierung.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Ergebnis
{
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

Ergebnis laufe(Optionen options, const Protokollschreiber &writeProtocol = {})
{
    if (options.locale.language() == QLocale::C)
        options.locale = QLocale(QLocale::German, QLocale::Germany);
    Ergebnis result;
    result.code = auswertungslauf(
        options,
        [&](const QByteArray &bytes) {
            result.output += bytes;
            return true;
        },
        [&](const QByteArray &bytes) {
            result.errors += bytes;
            return true;
        },
        writeProtocol);
    return result;
}

QString exampleFile(const QString &name)
{
    return QStringLiteral(PROJECT_DIR) + u"/examples/"_qs + name;
}

Optionen options(const QStringList &files, Optionen::Format format = Optionen::Format::Json)
{
    Optionen result;
    result.dateien = files;
    result.format = format;
    return result;
}

} // namespace

class TestAuswertungslauf : public QObject
{
    Q_OBJECT

private slots:
    void filesAreReportedInTheOrderGiven()
    {
        const QString good = exampleFile(u"verdichtungsgrad.xml"_qs);
        const QString critical = exampleFile(u"verformungsmodul.xml"_qs);
        const Ergebnis result = laufe(options({critical, good, critical}));
        QCOMPARE(result.code, 0);
        QVERIFY(result.errors.isEmpty());
        const QList<QByteArray> lines = result.output.trimmed().split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].contains("\"kritisch\""));
        QVERIFY(lines[1].contains("\"gut\""));
        QCOMPARE(lines[2], lines[0]);
    }

    void unreadableFilesAreNamedAndTheOthersGoOn()
    {
        const QString good = exampleFile(u"verdichtungsgrad.xml"_qs);
        const QString missing = exampleFile(u"fehlt.xml"_qs);
        const Ergebnis result = laufe(options({missing, good}));
        QCOMPARE(result.code, 1);
        QCOMPARE(QString::fromUtf8(result.errors),
                 u"kalibrierung-auswertung: "_qs + missing + u": Datei nicht gefunden (53)\n"_qs);
        const QList<QByteArray> lines = result.output.trimmed().split('\n');
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].endsWith(
            "\"fehler\":{\"datei\":{\"nummer\":53,\"text\":\"Datei nicht gefunden\"}}}"));
        QVERIFY(lines[1].contains("\"gut\""));
    }

    void strangeNamesGiveOneTrueLine()
    {
        const Ergebnis result = laufe(options({u"gibt%2es\nnicht%3.xml"_qs}));
        QCOMPARE(
            QString::fromUtf8(result.errors),
            u"kalibrierung-auswertung: gibt%2es\ufffdnicht%3.xml: Datei nicht gefunden (53)\n"_qs);
    }

    void textOfAFailedFileStandsOnlyOnStandardError()
    {
        const Ergebnis result =
            laufe(options({exampleFile(u"fehlt.xml"_qs)}, Optionen::Format::Text));
        QCOMPARE(result.code, 1);
        QVERIFY(result.output.isEmpty());
        QCOMPARE(result.errors.count('\n'), 1);
    }

    void savingWritesTheLoadedFileAgain()
    {
        QTemporaryDir folder;
        Optionen save = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        save.speichern = folder.filePath(u"ziel.xml"_qs);
        QCOMPARE(laufe(save).code, 0);
        const QLocale german(QLocale::German, QLocale::Germany);
        Kalibrierung before(german);
        before.LoadFile(save.dateien.first());
        before.setIsDirty(false);
        Kalibrierung after(german);
        after.LoadFile(save.speichern);
        QCOMPARE(after.DataStore().keys(), before.DataStore().keys());
        for (const QString &key : before.DataStore().keys())
            QCOMPARE(after.values().text(after.DataStore().item(key)),
                     before.values().text(before.DataStore().item(key)));
        QCOMPARE(after.values().text(after.DataStore().item(u"AssistentActivePage"_qs)), u"4"_qs);
        QCOMPARE(after.IsDirty(), false);
    }

    void theEvaluationAddsNothingToTheSavedFile()
    {
        QTemporaryDir folder;
        const QLocale german(QLocale::German, QLocale::Germany);
        Kalibrierung fresh(german); // has no names of its characteristics yet
        fresh.SaveFile(folder.filePath(u"neu.xml"_qs));
        QVERIFY(!fresh.DataStore().exists(u"Direktes Prüfmerkmal Name"));
        Optionen save = options({folder.filePath(u"neu.xml"_qs)});
        save.speichern = folder.filePath(u"ziel.xml"_qs);
        QCOMPARE(laufe(save).code, 0);
        Kalibrierung saved(german);
        saved.LoadFile(save.speichern);
        QVERIFY(!saved.DataStore().exists(u"Direktes Prüfmerkmal Name"));
    }

    void aTargetThatCannotBeWrittenFailsButTheReportComes()
    {
        QTemporaryDir folder;
        Optionen save = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        save.speichern = folder.filePath(u"fehlt/ziel.xml"_qs);
        const Ergebnis result = laufe(save);
        QCOMPARE(result.code, 1);
        QVERIFY(result.errors.contains("(76)"));
        QVERIFY(result.output.contains("\"gut\""));
    }

    void everyFileBecomesASpreadsheetBesideItsReport()
    {
        QTemporaryDir folder;
        const QString good = exampleFile(u"verdichtungsgrad.xml"_qs);
        Optionen run = options({good, exampleFile(u"fehlt.xml"_qs), good});
        run.tabelle = folder.filePath(u"neu/tabellen"_qs);
        run.parallel = 2;
        const Ergebnis result = laufe(run);
        QCOMPARE(result.code, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QCOMPARE(result.output.count('\n'), 3);
        QCOMPARE(QDir(run.tabelle).entryList(QDir::Files, QDir::Name),
                 QStringList({u"verdichtungsgrad (2).xlsx"_qs, u"verdichtungsgrad.xlsx"_qs}));
    }

    void aSpreadsheetThatCannotBeWrittenFailsButTheReportComes()
    {
        QTemporaryDir folder;
        Optionen run = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        run.tabelle = folder.filePath(u"fehlt/a.xlsx"_qs);
        const Ergebnis result = laufe(run);
        QCOMPARE(result.code, 1);
        QCOMPARE(QString::fromUtf8(result.errors), u"kalibrierung-auswertung: "_qs + run.tabelle +
                                                       u": Pfad nicht gefunden (76)\n"_qs);
        QVERIFY(result.output.contains("\"gut\""));
    }

    void aCalibrationIsNeverOverwrittenByItsSpreadsheet()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"a.xml"_qs);
        QVERIFY(QFile::copy(exampleFile(u"verdichtungsgrad.xml"_qs), file));
        const qint64 size = QFileInfo(file).size();
        Optionen run = options({file});
        run.tabelle = folder.filePath(u"./a.xml"_qs);
        const Ergebnis result = laufe(run);
        QCOMPARE(result.code, 2);
        QVERIFY(result.errors.contains("ist eine der angegebenen Dateien."));
        QVERIFY(result.output.isEmpty());
        QCOMPARE(QFileInfo(file).size(), size);
    }

    void everyFileBecomesAProtocolOfTheTypeAskedFor()
    {
        QTemporaryDir folder;
        Optionen run = options(
            {exampleFile(u"verdichtungsgrad.xml"_qs), exampleFile(u"verformungsmodul.xml"_qs)});
        run.protokoll = folder.filePath(u"protokolle"_qs);
        run.typ = 1;
        run.parallel = 1;
        QStringList written;
        const auto write = [&](Kalibrierung &document, int type, const QString &target) {
            written += u"%1 %2 %3"_qs.arg(QFileInfo(target).fileName(), QString::number(type),
                                          document.DirektesPrüfmerkmal().Einheit());
            if (target.endsWith(u"verformungsmodul.pdf"))
                throw RunTimeError(ErrorNumber::DiskFull);
        };
        const Ergebnis result = laufe(run, write);
        QCOMPARE(result.code, 1);
        QCOMPARE(written,
                 QStringList({u"verdichtungsgrad.pdf 1 %"_qs, u"verformungsmodul.pdf 1 MN/m²"_qs}));
        QCOMPARE(result.output.count('\n'), 2);
        QVERIFY(QString::fromUtf8(result.errors)
                    .endsWith(u"verformungsmodul.pdf: Datenträger voll (61)\n"_qs));
        QVERIFY(QFileInfo(run.protokoll).isDir());
    }

    void twoOutputsNeverShareATarget()
    {
        QTemporaryDir folder;
        Optionen run = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        run.tabelle = folder.filePath(u"ziel"_qs);
        run.protokoll = folder.filePath(u"./x/../ziel"_qs);
        const Ergebnis result = laufe(run, [](Kalibrierung &, int, const QString &) {});
        QCOMPARE(result.code, 2);
        QVERIFY(QString::fromUtf8(result.errors).contains(u"ist Ziel von zwei Ausgaben"_qs));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void aCalibrationIsNeverOverwrittenByItsProtocol()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"a.xml"_qs);
        QVERIFY(QFile::copy(exampleFile(u"verdichtungsgrad.xml"_qs), file));
        Optionen run = options({file});
        run.protokoll = folder.filePath(u"./a.xml"_qs);
        bool called = false;
        QCOMPARE(laufe(run, [&](Kalibrierung &, int, const QString &) { called = true; }).code, 2);
        QVERIFY(!called);
    }

    void spreadsheetDoesNotChangeTheReport()
    {
        QTemporaryDir folder;
        Optionen run = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        const QByteArray alone = laufe(run).output;
        run.tabelle = folder.filePath(u"a.xlsx"_qs);
        QCOMPARE(laufe(run).output, alone);
    }

    void csvHasItsHeadingOnce()
    {
        const QString good = exampleFile(u"verdichtungsgrad.xml"_qs);
        const Ergebnis result =
            laufe(options({exampleFile(u"fehlt.xml"_qs), good, good}, Optionen::Format::Csv));
        QCOMPARE(result.code, 1);
        QVERIFY(result.output.startsWith("datei;gruppe;"));
        QCOMPARE(result.output.count("datei;gruppe;"), 1);
        QCOMPARE(result.output.count('\n'), 1 + 1 + 2 * 29);
    }

    void nothingOfOneFileReachesTheNext()
    {
        QTemporaryDir folder;
        const QString empty = folder.filePath(u"leer.xml"_qs);
        Kalibrierung(QLocale(QLocale::German)).SaveFile(empty);
        const QByteArray alone = laufe(options({empty})).output;
        const QByteArray behind =
            laufe(options({exampleFile(u"verdichtungsgrad.xml"_qs), empty})).output;
        QVERIFY(behind.endsWith(alone));
    }

    void outputThatCannotBeWrittenIsAFailure()
    {
        QByteArray errors;
        Optionen run = options({exampleFile(u"verdichtungsgrad.xml"_qs)});
        run.locale = QLocale(QLocale::German);
        const int code = auswertungslauf(
            run, [](const QByteArray &) { return false; },
            [&](const QByteArray &bytes) {
                errors += bytes;
                return true;
            });
        QCOMPARE(code, 1);
        QVERIFY(!errors.isEmpty());
    }

    void wrongUsageIsTwo()
    {
        Optionen wrong;
        wrong.fehler = u"So nicht."_qs;
        const Ergebnis result = laufe(wrong);
        QCOMPARE(result.code, 2);
        QVERIFY(result.output.isEmpty());
        QVERIFY(result.errors.contains("So nicht."));
    }
};

REGISTER_TEST(TestAuswertungslauf)
#include "tst_auswertungslauf.moc"
