// One hundred thousand points: complete, with progress, and to be cancelled.

#include "export/tabellenausgabe.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

#include <set>
#include <utility>

namespace {

constexpr int fields = 100;
constexpr int points = 1000;
const QDateTime created = QDateTime::fromSecsSinceEpoch(0);

} // namespace

class TestGrosseAusgabe : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_document.setPrüffelderAnzahl(fields);
        for (int field = 1; field <= fields; ++field) {
            m_document.setPrüffeldPrüfpunkte(field, points);
            for (int point = 1; point <= points; ++point) {
                m_document.setMesswert(pmDirekt, field, point,
                                       90 + (field * 7 + point * 13) % 101 / 10.0);
                m_document.setMesswert(pmIndirekt, field, point,
                                       30 + (field * 5 + point * 3) % 97 / 10.0);
            }
        }
    }

    void everyPointHasItsRowAndProgressIsTold()
    {
        if (!GeleseneMappe::moeglich())
            QSKIP("python3-openpyxl is not installed");
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        std::set<int> told;
        int last = 0;
        QVERIFY(schreibeTabelle(m_document, target, created, [&](int percent) {
            told.insert(percent);
            return percent >= std::exchange(last, percent); // false would cancel
        }));
        QCOMPARE(last, 100);
        const auto between = [&told](int low, int high) {
            return std::distance(told.lower_bound(low), told.upper_bound(high));
        };
        QVERIFY(between(0, 60) >= 50);
        QVERIFY(between(90, 99) >= 9); // while it is checked
        zeilenStimmen(target);
    }

    void itCanBeCancelledAtAnyTime_data()
    {
        QTest::addColumn<int>("percent");
        QTest::newRow("at once") << 0;
        QTest::newRow("among the rows") << 30;
        QTest::newRow("while it is packed") << 60;
        QTest::newRow("while it is checked") << 95;
    }

    void itCanBeCancelledAtAnyTime()
    {
        QFETCH(int, percent);
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(!schreibeTabelle(m_document, target, created,
                                 [percent](int now) { return now < percent; }));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

private:
    static void zeilenStimmen(const QString &target)
    {
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

    Kalibrierung m_document{QLocale(QLocale::German)};
};

REGISTER_TEST(TestGrosseAusgabe)
#include "tst_grosseausgabe.moc"
