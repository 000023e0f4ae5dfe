// The built program, started as a user starts it.

#include "core/kalibrierung.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <functional>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

struct Ergebnis
{
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

Ergebnis starte(const QStringList &arguments, const QStringList &environment)
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"LC_ALL", "LC_NUMERIC", "LANG", "DISPLAY", "WAYLAND_DISPLAY"})
        variables.remove(QString::fromLatin1(name));
    for (const QString &variable : environment)
        variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(variables);
    process.start(QStringLiteral(PROGRAM), arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QString example()
{
    return QStringLiteral(PROJECT_DIR) + u"/examples/verdichtungsgrad.xml"_qs;
}

QString otherExample()
{
    return QStringLiteral(PROJECT_DIR) + u"/examples/verformungsmodul.xml"_qs;
}

#ifdef __SANITIZE_ADDRESS__
constexpr bool hasAddressSanitizer = true;
#else
constexpr bool hasAddressSanitizer = false;
#endif

// The text of a PDF as a reader of another maker finds it; a word of its own where there is none.
QString pdfText(const QString &file)
{
    QProcess reader;
    reader.start(u"pdftotext"_qs, {u"-layout"_qs, file, u"-"_qs});
    if (!reader.waitForFinished(60000) || reader.exitCode() != 0)
        return u"(unreadable) "_qs + file;
    return QString::fromUtf8(reader.readAllStandardOutput());
}

} // namespace

class TestProgramm : public QObject
{
    Q_OBJECT

private slots:
    void withoutALocaleNumbersAreGerman_data()
    {
        QTest::addColumn<QStringList>("environment");
        QTest::newRow("none") << QStringList();
        QTest::newRow("C") << QStringList(u"LC_ALL=C"_qs);
        QTest::newRow("POSIX") << QStringList(u"LANG=POSIX"_qs);
        QTest::newRow("German") << QStringList(u"LANG=de_DE.UTF-8"_qs);
    }

    void withoutALocaleNumbersAreGerman()
    {
        QFETCH(QStringList, environment);
        const Ergebnis result = starte({example()}, environment);
        QCOMPARE(result.code, 0);
        QVERIFY(result.output.contains("88,88"));
        QVERIFY(result.output.contains("Urteil: gut"));
        QVERIFY(result.errors.isEmpty());
    }

    void anEnglishReaderDoesNotTakeGermanValuesForNumbers()
    {
        const Ergebnis result =
            starte({u"--format"_qs, u"json"_qs, example()}, {u"LANG=en_US.UTF-8"_qs});
        QCOMPARE(result.code, 0);
        const QJsonObject json = QJsonDocument::fromJson(result.output).object();
        QVERIFY(json[u"mittelwert"_qs][u"direkt"_qs].isNull());
        QCOMPARE(json[u"fehler"_qs][u"mittelwert.direkt"_qs][u"nummer"_qs].toInt(), 13);
    }

    void theNamedLocaleGoesBeforeTheUsers()
    {
        const Ergebnis result =
            starte({u"--gebietsschema"_qs, u"de_DE"_qs, example()}, {u"LANG=en_US.UTF-8"_qs});
        QVERIFY(result.output.contains("88,88"));
    }

#ifdef Q_OS_UNIX
    // The report of so many points takes more memory than there is; the next file does not.
    void aReportWithoutMemoryFailsAlone()
    {
        if (hasAddressSanitizer)
            QSKIP("the address sanitizer takes more memory than is left here");
        QFile source(example());
        QVERIFY(source.open(QIODevice::ReadOnly));
        QByteArray text = source.readAll();
        const QByteArray count = u"Variable='Prüffeld Prüfpunktanzahl 1' Wert='"_qs.toUtf8();
        QCOMPARE(text.count(count + '4'), 1);
        text.replace(count + '4', count + "900000");
        QTemporaryDir folder;
        QFile large(folder.filePath(u"viele.xml"_qs));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.write(text) == text.size());
        large.close();
        QProcess process;
        process.start(u"/bin/sh"_qs, {u"-c"_qs, u"ulimit -v 300000; exec \"$@\""_qs, u"sh"_qs,
                                      QStringLiteral(PROGRAM), u"--parallel"_qs, u"1"_qs,
                                      large.fileName(), example()});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(
            QString::fromUtf8(process.readAllStandardError()),
            u"kalibrierung-auswertung: %1: Nicht genügend Speicher (7)\n"_qs.arg(large.fileName()));
        QVERIFY(process.readAllStandardOutput().contains("Urteil: gut"));
    }
#endif

    void helpAndVersionAreGerman()
    {
        const Ergebnis help = starte({u"--help"_qs}, {});
        QCOMPARE(help.code, 0);
        QVERIFY(help.output.startsWith("Aufruf: kalibrierung-auswertung"));
        const Ergebnis version = starte({u"--version"_qs}, {});
        QCOMPARE(version.code, 0);
        QVERIFY(version.output.startsWith("Kalibrierung nach Wendral"));
    }

    void exitCodes()
    {
        QCOMPARE(starte({}, {}).code, 2);
        QCOMPARE(starte({u"--quatsch"_qs, example()}, {}).code, 2);
        QCOMPARE(starte({u"/gibt/es/nicht.xml"_qs}, {}).code, 1);
        QCOMPARE(starte({example()}, {}).code, 0);
    }

    void aFullOutputDeviceIsAFailure()
    {
        if (!QFile::exists(u"/dev/full"_qs))
            QSKIP("no device that is always full");
        QProcess process;
        process.setStandardOutputFile(u"/dev/full"_qs);
        process.start(QStringLiteral(PROGRAM), {example()});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().contains("Ausgabe"));
    }

#ifdef Q_OS_UNIX
    void aReaderThatHasGoneIsAFailureAndEverythingIsWritten_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("spreadsheets") << u"--tabelle"_qs << u".xlsx"_qs;
        QTest::newRow("protocols") << u"--protokoll"_qs << u".pdf"_qs;
    }

    void aReaderThatHasGoneIsAFailureAndEverythingIsWritten()
    {
        QFETCH(QString, option);
        QFETCH(QString, suffix);
        QTemporaryDir folder;
        QStringList files;
        for (int i = 0; i < 6; ++i) {
            files += folder.filePath(u"%1.xml"_qs.arg(i));
            QVERIFY(QFile::copy(example(), files.last()));
        }
        const QDir target(folder.filePath(u"ziel"_qs));
        std::array<int, 2> ends{};
        QVERIFY(::pipe(ends.data()) == 0);
        ::close(ends[0]);
        QProcess process;
        process.setChildProcessModifier([end = ends[1]] { ::dup2(end, STDOUT_FILENO); });
        process.start(QStringLiteral(PROGRAM), QStringList{option, target.path()} + files);
        const bool finished = process.waitForFinished(60000);
        ::close(ends[1]);
        QVERIFY(finished);
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(
            QString::fromUtf8(process.readAllStandardError()),
            u"kalibrierung-auswertung: Die Ausgabe konnte nicht vollständig geschrieben werden.\n"_qs);
        const auto written =
            target.entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        QStringList expected;
        for (int i = 0; i < 6; ++i)
            expected += QString::number(i) + suffix;
        QCOMPARE(written, expected);
    }
#endif

    void manyThreadsGiveTheBytesOfOne_data()
    {
        QTest::addColumn<QString>("format");
        QTest::newRow("text") << u"text"_qs;
        QTest::newRow("json") << u"json"_qs;
        QTest::newRow("csv") << u"csv"_qs;
    }

    void manyThreadsGiveTheBytesOfOne()
    {
        QFETCH(QString, format);
        QTemporaryDir folder;
        QFile source(example());
        QVERIFY(source.open(QIODevice::ReadOnly));
        const QByteArray original = source.readAll();
        QStringList files;
        for (int i = 0; i < 200; ++i) {
            files += folder.filePath(u"%1.xml"_qs.arg(i));
            if (i % 50 == 7)
                continue; // one that is missing now and then
            // Each with another value.
            const QByteArray key = u"'Messwert direktes Prüfmerkmal 1.1' Wert='"_qs.toUtf8();
            QByteArray contents = original;
            contents.insert(contents.indexOf(key) + key.size(), QByteArray::number(i + 1));
            QFile file(files.last());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
        }
        const auto run = [&](const QString &threads) {
            return starte(QStringList{u"--format"_qs, format, u"--parallel"_qs, threads} + files,
                          {});
        };
        const Ergebnis one = run(u"1"_qs);
        QCOMPARE(one.code, 1);
        QCOMPARE(one.errors.count('\n'), 4);
        for (const QString &threads : {u"2"_qs, u"8"_qs}) {
            const Ergebnis many = run(threads);
            QCOMPARE(many.code, 1);
            QCOMPARE(many.output, one.output);
            QCOMPARE(many.errors, one.errors);
        }
        qsizetype last = -1;
        for (const QString &file : files) {
            const qsizetype at = format == u"text" && one.errors.contains(file.toUtf8())
                                     ? last + 1
                                     : one.output.indexOf(file.toUtf8());
            QVERIFY(at > last);
            last = at;
        }
    }

    void spreadsheetsOfManyThreadsAreThoseOfOne()
    {
        QTemporaryDir folder;
        QStringList files;
        for (int i = 0; i < 20; ++i) {
            files += folder.filePath(u"%1.xml"_qs.arg(i));
            QVERIFY(QFile::copy(example(), files.last()));
        }
        for (const QString &threads : {u"1"_qs, u"4"_qs})
            QCOMPARE(starte(QStringList{u"--parallel"_qs, threads, u"--tabelle"_qs,
                                        folder.filePath(threads)} +
                                files,
                            {u"LC_ALL=de_DE.UTF-8"_qs})
                         .code,
                     0);
        for (int i = 0; i < 20; ++i) {
            const QString name = u"/%1.xlsx"_qs.arg(i);
            const qint64 size = QFileInfo(folder.filePath(u"1"_qs) + name).size();
            QVERIFY(size > 5000);
            // The date in the properties may differ by a second.
            QVERIFY(std::abs(QFileInfo(folder.filePath(u"4"_qs) + name).size() - size) < 10);
        }
    }

    void protocolsNeedNoDisplay()
    {
        QTemporaryDir folder;
        const QString target = folder.filePath(u"Protokoll.pdf"_qs);
        const Ergebnis result = starte({u"--protokoll"_qs, target, example()}, {});
        QCOMPARE(result.code, 0);
        QVERIFY(result.errors.isEmpty());
        QVERIFY(result.output.contains("Urteil: gut"));
        const QString text = pdfText(target);
        QVERIFY(text.contains(u"Protokoll zur Anlage des Kalibrierfeldes"_qs));
        QVERIFY(text.contains(u"88,88"_qs));
        const QString short_ = folder.filePath(u"kurz.pdf"_qs);
        QCOMPARE(starte({u"--typ=1"_qs, u"--protokoll"_qs, short_, example()}, {}).code, 0);
        QVERIFY(!pdfText(short_).contains(u"Protokoll zur Anlage des Kalibrierfeldes"_qs));
        QVERIFY(pdfText(short_).contains(u"88,88"_qs));
    }

    void protocolsOfManyThreadsAreThoseOfOne()
    {
        QTemporaryDir folder;
        QStringList files;
        for (int i = 0; i < 24; ++i) {
            files += folder.filePath(u"%1.xml"_qs.arg(i));
            QVERIFY(QFile::copy(i % 2 ? otherExample() : example(), files.last()));
        }
        const QString target = folder.filePath(u"pdf"_qs);
        QCOMPARE(starte(QStringList{u"--parallel"_qs, u"8"_qs, u"--protokoll"_qs, target} + files,
                        {u"LC_ALL=de_DE.UTF-8"_qs})
                     .code,
                 0);
        const QString even = pdfText(target + u"/0.pdf"_qs);
        const QString odd = pdfText(target + u"/1.pdf"_qs);
        QVERIFY(even.contains(u"88,88"_qs) && !odd.contains(u"88,88"_qs));
        for (int i = 2; i < files.size(); ++i)
            QCOMPARE(pdfText(target + u"/%1.pdf"_qs.arg(i)), i % 2 ? odd : even);
    }

    void aProtocolThatCannotBeWrittenFailsButTheReportComes()
    {
        const QString target = u"/gibt/es/nicht/a.pdf"_qs;
        const Ergebnis result = starte({u"--protokoll"_qs, target, example()}, {});
        QCOMPARE(result.code, 1);
        QVERIFY(result.output.contains("Urteil: gut"));
        QVERIFY(QString::fromUtf8(result.errors)
                    .startsWith(u"kalibrierung-auswertung: "_qs + target + u": "_qs));
    }

    void aProtocolThatCannotBeCompletedIsNotWritten_data()
    {
        QTest::addColumn<std::function<void(Kalibrierung &)>>("change");
        QTest::addColumn<int>("number");
        using Change = std::function<void(Kalibrierung &)>;
        const auto all = [](PrüfmerkmalEnum which, double value) {
            return Change([which, value](Kalibrierung &document) {
                for (int field = 1; field <= document.PrüffelderAnzahl(); ++field) {
                    for (int point = 1; point <= document.PrüffeldPrüfpunkte(field); ++point)
                        document.setMesswert(which, field, point, value);
                }
            });
        };
        QTest::newRow("equal values") << all(pmDirekt, 95.0) << 5;
        QTest::newRow("zeros") << all(pmIndirekt, 0.0) << 5;
        QTest::newRow("no points") << Change([](Kalibrierung &document) {
            for (int field = 1; field <= document.PrüffelderAnzahl(); ++field)
                document.DataStore().set(u"Prüffeld Prüfpunktanzahl %1"_qs.arg(field),
                                         std::int32_t{0});
        }) << 5;
        QTest::newRow("equal values of the covariable") << Change([](Kalibrierung &document) {
            for (int field = 1; field <= document.PrüffelderAnzahl(); ++field)
                document.setPrüffeldWert(field, 4.0);
        }) << 13;
    }

    void aProtocolThatCannotBeCompletedIsNotWritten()
    {
        QFETCH(std::function<void(Kalibrierung &)>, change);
        QFETCH(int, number);
        QTemporaryDir folder;
        Kalibrierung document{QLocale(QLocale::German, QLocale::Germany)};
        document.LoadFile(example());
        change(document);
        const QString file = folder.filePath(u"a.xml"_qs);
        document.SaveFile(file);
        const QString target = folder.filePath(u"a.pdf"_qs);
        const Ergebnis result = starte({u"--protokoll"_qs, target, file}, {});
        QCOMPARE(result.code, 1);
        const QString errors = QString::fromUtf8(result.errors);
        QVERIFY2(errors.startsWith(u"kalibrierung-auswertung: "_qs + target + u": "_qs) &&
                     errors.endsWith(u" (%1)\n"_qs.arg(number)),
                 qPrintable(errors));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(u"a.xml"_qs));
    }

    void withoutProtocolsNoGraphicsLibraryIsLoaded()
    {
        QFile program(QStringLiteral(PROGRAM));
        QVERIFY(program.open(QIODevice::ReadOnly));
        const QByteArray bytes = program.readAll();
        QVERIFY(bytes.contains("libQt6Core"));
        QVERIFY(!bytes.contains("libQt6Gui"));
    }

    void aMissingProtocolProgramIsNamed()
    {
        QTemporaryDir folder;
        const QString alone = folder.filePath(u"allein"_qs);
        QVERIFY(QFile::copy(QStringLiteral(PROGRAM), alone));
        QProcess process;
        process.start(alone, {u"--protokoll"_qs, folder.filePath(u"a.pdf"_qs), example()});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().contains("kalibrierung-protokoll"));
    }

    void umlautsAndBlanksInFileNames()
    {
        QTemporaryDir folder;
        const QString name = folder.filePath(u"Maß der Übergänge ².xml"_qs);
        QVERIFY(QFile::copy(example(), name));
        const Ergebnis result = starte({name}, {u"LC_ALL=C"_qs});
        QCOMPARE(result.code, 0);
        QVERIFY(QString::fromUtf8(result.output).startsWith(name));
    }
};

Q_DECLARE_METATYPE(std::function<void(Kalibrierung &)>)
REGISTER_TEST(TestProgramm)
#include "tst_programm.moc"
