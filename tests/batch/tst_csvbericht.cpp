#include "batch/csvbericht.h"
#include "batch/ergebnisse.h"
#include "core/kalibrierung.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QTest>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

// Fields of the lines, quotes taken off.
QList<QStringList> felder(const QByteArray &csv)
{
    QList<QStringList> lines;
    QStringList line;
    QString field;
    bool quoted = false;
    const QString text = QString::fromUtf8(csv);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted && c == u'"' && i + 1 < text.size() && text[i + 1] == u'"') {
            field += c;
            ++i;
        } else if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && (c == u';' || c == u'\n')) {
            line += std::exchange(field, {});
            if (c == u'\n')
                lines += std::exchange(line, {});
        } else {
            field += c;
        }
    }
    return lines;
}

} // namespace

class TestCsvBericht : public QObject
{
    Q_OBJECT

private slots:
    void oneLineForEachResultInTheOrderOfTheReports()
    {
        Kalibrierung document(german);
        document.LoadFile(QStringLiteral(PROJECT_DIR) + u"/examples/verdichtungsgrad.xml"_qs);
        const QList<QStringList> lines = felder(csvBericht(u"a.xml"_qs, document));
        QCOMPARE(lines.size(), 29);
        qsizetype row = 0;
        for (const Ergebnisgruppe &group : ergebnisse(document)) {
            for (const Ergebnis &result : group.ergebnisse) {
                const QStringList &line = lines[row++];
                QCOMPARE(line.size(), 7);
                QCOMPARE(line[0], u"a.xml"_qs);
                QCOMPARE(line[1], group.schluessel);
                QCOMPARE(line[2], result.schluessel);
                QVERIFY(line[3].toDouble() == *result.wert);
                QCOMPARE(line[4], result.anzeige);
                QVERIFY(line[5].isEmpty() && line[6].isEmpty());
            }
        }
        QCOMPARE(lines[27], QStringList({u"a.xml"_qs,
                                         u"urteil"_qs,
                                         u"minimum"_qs,
                                         u"0.65000000000000002"_qs,
                                         u"0,65"_qs,
                                         {},
                                         {}}));
        QCOMPARE(
            lines[28],
            QStringList({u"a.xml"_qs, u"urteil"_qs, u"urteil"_qs, u"1"_qs, u"gut"_qs, {}, {}}));
        QCOMPARE(QString::fromUtf8(csvKopf()).trimmed().split(u';').size(), lines[0].size());
    }

    void aResultThatCannotBeComputedHasNoValueButAReason()
    {
        Kalibrierung document(german);
        const QList<QStringList> lines = felder(csvBericht(u"a.xml"_qs, document));
        QCOMPARE(lines[0], QStringList({u"a.xml"_qs,
                                        u"mittelwert"_qs,
                                        u"direkt"_qs,
                                        {},
                                        u"-"_qs,
                                        u"94"_qs,
                                        u"Unzulässige Verwendung von Null"_qs}));
        QCOMPARE(lines[28][4], u"kritisch"_qs);
        QCOMPARE(lines[28][3], u"0"_qs);
    }

    void aMinimumThatIsNoneIsNamed()
    {
        Kalibrierung document(german);
        document.DataStore().set(
            u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, u"?"_qs);
        const QStringList line = felder(csvBericht(u"a.xml"_qs, document))[27];
        QCOMPARE(line.mid(2),
                 QStringList({u"minimum"_qs, {}, u"-"_qs, u"13"_qs, u"Typen unverträglich"_qs}));
    }

    void namesAreQuotedWhereTheyMust_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("field");
        QTest::newRow("plain") << u"a b.xml"_qs << QByteArray("a b.xml");
        QTest::newRow("semicolon") << u"a;b.xml"_qs << QByteArray("\"a;b.xml\"");
        QTest::newRow("quote") << u"a\"b.xml"_qs << QByteArray("\"a\"\"b.xml\"");
        QTest::newRow("line break") << u"a\nb.xml"_qs << QByteArray("\"a\nb.xml\"");
        QTest::newRow("blank at the end") << u"a "_qs << QByteArray("\"a \"");
        QTest::newRow("formula") << u"=1+1.xml"_qs << QByteArray("./=1+1.xml");
        QTest::newRow("plus") << u"+a.xml"_qs << QByteArray("./+a.xml");
        QTest::newRow("minus") << u"-a.xml"_qs << QByteArray("./-a.xml");
        QTest::newRow("at") << u"@a.xml"_qs << QByteArray("./@a.xml");
        QTest::newRow("tab") << u"\ta.xml"_qs << QByteArray("./\ta.xml");
        QTest::newRow("line feed") << u"\na.xml"_qs << QByteArray("\"./\na.xml\"");
        QTest::newRow("carriage return") << u"\ra.xml"_qs << QByteArray("\"./\ra.xml\"");
        QTest::newRow("another control character")
            << u"\u0001=1.xml"_qs << QByteArray("./\001=1.xml");
        QTest::newRow("delete") << u"\u007f=1.xml"_qs << QByteArray("./\177=1.xml");
        QTest::newRow("a control character above")
            << u"\u0085=1.xml"_qs << u"./\u0085=1.xml"_qs.toUtf8();
        QTest::newRow("formula in quotes") << u"=1;2.xml"_qs << QByteArray("\"./=1;2.xml\"");
        QTest::newRow("formula in a folder") << u"a/=1.xml"_qs << QByteArray("a/=1.xml");
        QTest::newRow("empty") << QString() << QByteArray();
        QTest::newRow("umlaut") << u"Maß.xml"_qs << u"Maß.xml"_qs.toUtf8();
    }

    void namesAreQuotedWhereTheyMust()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, field);
        QCOMPARE(csvFehler(name, RunTimeError(ErrorNumber::FileNotFound)),
                 field + ";datei;;;;53;Datei nicht gefunden\n");
        const QString read = felder(csvFehler(name, RunTimeError(ErrorNumber::FileNotFound)))[0][0];
        QCOMPARE(QDir::cleanPath(read), QDir::cleanPath(name)); // the same file in any case
        Kalibrierung document(german);
        QVERIFY(csvBericht(name, document).startsWith(field + ";mittelwert;"));
    }
};

REGISTER_TEST(TestCsvBericht)
#include "tst_csvbericht.moc"
