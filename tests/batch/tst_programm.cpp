// The built program, started as a user starts it.

#include "tests/support/testregistry.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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

REGISTER_TEST(TestProgramm)
#include "tst_programm.moc"
