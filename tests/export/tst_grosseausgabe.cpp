// One hundred thousand points: complete.

#include "export/tabellenausgabe.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

class TestGrosseAusgabe : public QObject
{
    Q_OBJECT

private slots:
    void everyPointHasItsRow()
    {
        if (!GeleseneMappe::moeglich())
            QSKIP("python3-openpyxl is not installed");
        constexpr int fields = 100;
        constexpr int points = 1000;
        Kalibrierung document(QLocale(QLocale::German));
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
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(document, target, QDateTime::fromSecsSinceEpoch(0)));
        const QJsonObject book = GeleseneMappe::liesKurz(target);
        const QJsonObject values = book[u"Messwerte"_qs].toObject();
        QCOMPARE(values[u"rows"_qs].toInt(), fields * points + 1);
        const QJsonArray last = values[u"last"_qs].toArray();
        QCOMPARE(last[0].toInt(), fields);
        QCOMPARE(last[2].toString(), u"Prüfpunkt 1000"_qs);
        QCOMPARE(last[4].toDouble(), 90 + (fields * 7 + points * 13) % 101 / 10.0);
        QCOMPARE(last[5].toDouble(), 30 + (fields * 5 + points * 3) % 97 / 10.0);
        QCOMPARE(book[u"Auswertung"_qs][u"rows"_qs].toInt(), 39);
    }
};

REGISTER_TEST(TestGrosseAusgabe)
#include "tst_grosseausgabe.moc"
