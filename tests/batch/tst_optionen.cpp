#include "batch/optionen.h"
#include "tests/support/testregistry.h"

#include <QTest>

namespace {

Optionen lies(const QString &words)
{
    return leseOptionen(words.split(u' ', Qt::SkipEmptyParts), QLocale(QLocale::German),
                        QDateTime::fromSecsSinceEpoch(0));
}

} // namespace

class TestOptionen : public QObject
{
    Q_OBJECT

private slots:
    void textInTheUsersLocaleIsTheDefault()
    {
        const Optionen options = lies(u"a.xml b.xml"_qs);
        QVERIFY(options.fehler.isEmpty());
        QCOMPARE(options.format, Optionen::Format::Text);
        QCOMPARE(options.locale, QLocale(QLocale::German));
        QCOMPARE(options.dateien, QStringList({u"a.xml"_qs, u"b.xml"_qs}));
    }

    void valuesComeWithEqualsOrAsTheNextWord()
    {
        for (const QString &words :
             {u"--format json --gebietsschema en_US --speichern z.xml a.xml"_qs,
              u"a.xml --format=json --gebietsschema=en_US --speichern=z.xml"_qs}) {
            const Optionen options = lies(words);
            QVERIFY2(options.fehler.isEmpty(), qPrintable(options.fehler));
            QCOMPARE(options.format, Optionen::Format::Json);
            QCOMPARE(options.locale.name(), u"en_US"_qs);
            QCOMPARE(options.speichern, u"z.xml"_qs);
            QCOMPARE(options.dateien, QStringList(u"a.xml"_qs));
        }
    }

    void spreadsheetAndThreadsAreRead()
    {
        const Optionen options = lies(u"--tabelle ziel --parallel=3 --format csv a.xml b.xml"_qs);
        QVERIFY2(options.fehler.isEmpty(), qPrintable(options.fehler));
        QCOMPARE(options.tabelle, u"ziel"_qs);
        QCOMPARE(options.parallel, 3U);
        QCOMPARE(options.format, Optionen::Format::Csv);
        QCOMPARE(options.zeitpunkt, QDateTime::fromSecsSinceEpoch(0));
        QCOMPARE(lies(u"a.xml"_qs).parallel, 0U);
        QVERIFY(lies(u"--tabelle ziel.xlsx a.xml"_qs).fehler.isEmpty());
    }

    void protocolAndItsTypeAreRead()
    {
        const Optionen options = lies(u"--protokoll=ziel.pdf --typ 1 a.xml"_qs);
        QVERIFY2(options.fehler.isEmpty(), qPrintable(options.fehler));
        QCOMPARE(options.protokoll, u"ziel.pdf"_qs);
        QCOMPARE(options.typ, 1);
        QCOMPARE(lies(u"--protokoll ziel a.xml b.xml"_qs).typ, 0);
        QVERIFY(lies(u"--typ 0 --protokoll ziel a.xml b.xml"_qs).fehler.isEmpty());
    }

    void afterTwoDashesEveryWordIsAFile()
    {
        QCOMPARE(lies(u"-- --format json"_qs).dateien, QStringList({u"--format"_qs, u"json"_qs}));
    }

    void wrongUsageIsNamedInGerman_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("message");
        const auto row = [](const QString &words, const QString &message) {
            QTest::newRow(qPrintable(words)) << words << message;
        };
        row(u""_qs, u"Es ist keine Datei angegeben."_qs);
        row(u"--format json"_qs, u"Es ist keine Datei angegeben."_qs);
        row(u"--format"_qs, u"Die Option „--format“ braucht einen Wert."_qs);
        row(u"--format html a.xml"_qs,
            u"„html“ ist kein Format; möglich sind „text“, „json“ und „csv“."_qs);
        row(u"--tabelle= a.xml"_qs, u"Die Option „--tabelle“ braucht einen Dateinamen."_qs);
        row(u"--tabelle z.xlsx a.xml b.xml"_qs,
            u"Mit mehreren Dateien braucht „--tabelle“ einen Ordner, in den sie kommen."_qs);
        row(u"--protokoll z.PDF a.xml b.xml"_qs,
            u"Mit mehreren Dateien braucht „--protokoll“ einen Ordner, in den sie kommen."_qs);
        row(u"--protokoll= a.xml"_qs, u"Die Option „--protokoll“ braucht einen Dateinamen."_qs);
        row(u"--typ 1 a.xml"_qs, u"„--typ“ gilt nur zusammen mit „--protokoll“."_qs);
        for (const QString &wrong : {u"2"_qs, u"-1"_qs, u"01"_qs, u""_qs})
            row(u"--protokoll z.pdf a.xml --typ="_qs + wrong,
                u"„%1“ ist kein Protokolltyp; möglich sind „0“ und „1“."_qs.arg(wrong));
        for (const QString &wrong : {u"0"_qs, u"-1"_qs, u"257"_qs, u"zwei"_qs, u"1.5"_qs, u""_qs})
            row(u"--parallel="_qs + wrong + u" a.xml"_qs,
                u"Die Option „--parallel“ braucht eine Zahl von 1 bis 256."_qs);
        row(u"--gebietsschema quatsch a.xml"_qs,
            u"Das Gebietsschema „quatsch“ ist nicht bekannt."_qs);
        row(u"--laut a.xml"_qs, u"Die Option „--laut“ gibt es nicht."_qs);
        row(u"-x a.xml"_qs, u"Die Option „-x“ gibt es nicht."_qs);
        row(u"--help=ja"_qs, u"Die Option „--help“ hat keinen Wert."_qs);
        row(u"--speichern= a.xml"_qs, u"Die Option „--speichern“ braucht einen Dateinamen."_qs);
        row(u"--speichern z.xml a.xml b.xml"_qs,
            u"Mit „--speichern“ ist nur eine Datei möglich."_qs);
    }

    void wrongUsageIsNamedInGerman()
    {
        QFETCH(QString, words);
        QTEST(lies(words).fehler, "message");
    }

    void helpNeedsNoFileAndNamesEveryOption()
    {
        QVERIFY(lies(u"--help"_qs).hilfe);
        QVERIFY(lies(u"--help"_qs).fehler.isEmpty());
        QVERIFY(lies(u"--version"_qs).version);
        for (const QString &option :
             {u"--format"_qs, u"--gebietsschema"_qs, u"--speichern"_qs, u"--tabelle"_qs,
              u"--parallel"_qs, u"csv"_qs, u"--help"_qs, u"--version"_qs})
            QVERIFY2(hilfetext().contains(option), qPrintable(option));
    }
};

REGISTER_TEST(TestOptionen)
#include "tst_optionen.moc"
