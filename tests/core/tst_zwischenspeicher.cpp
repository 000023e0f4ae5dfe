// Results are kept until the store changes: after every kind of change they must be those of a
// document that never computed anything before.

#include "tests/core/ergebnisse.h"
#include "tests/support/testregistry.h"

#include <QTemporaryDir>

using namespace coretest;

namespace {

using Random = std::mt19937;

int between(Random &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

class Bearbeiter
{
public:
    Bearbeiter(Kalibrierung &document, unsigned seed) : m_document(document), m_random(seed) {}

    // One change of any kind; some change nothing, some can't be made.
    void change()
    {
        Kalibrierung &d = m_document;
        const std::int32_t field = between(m_random, 1, 4);
        const std::int32_t point = between(m_random, 1, 4);
        const PrüfmerkmalEnum merkmal = between(m_random, 0, 1) ? pmIndirekt : pmDirekt;
        switch (between(m_random, 0, 19)) {
        case 0:
            d.setPrüffelderAnzahl(between(m_random, 3, 4));
            break;
        case 1:
            d.setPrüffeldPrüfpunkte(field, between(m_random, 3, 4));
            break;
        case 2:
            d.setPrüffeldWert(field, between(m_random, 1, 12));
            break;
        case 3:
            d.removeMesswert(merkmal, field, point);
            break;
        case 4:
            d.setZwischenergebnisseRunden(between(m_random, 0, 1) == 1);
            break;
        case 5:
            d.setNachkommastellenMittelwerte(between(m_random, 0, 3));
            break;
        case 6:
            d.setNachkommastellenVarianzen(between(m_random, 0, 3));
            break;
        case 7:
            d.setNachkommastellenKovarianzen(between(m_random, 0, 3));
            break;
        case 8:
            d.setNachkommastellenAnstieg(between(m_random, 0, 3));
            break;
        case 9:
            d.DataStore().set(d.MesswertKey(merkmal, field, point), u"7,25"_qs);
            break;
        case 10:
            d.DataStore().set(d.MesswertKey(merkmal, field, point), u"no number"_qs);
            break;
        case 11:
            d.DataStore().remove(u"Nachkommastellen Kovarianzen");
            d.DataStore().remove(u"Anzahl Prüffelder");
            break;
        case 12:
            changeAll();
            break;
        default: // mostly typing
            d.setMesswert(merkmal, field, point, between(m_random, 0, 1000) / 10.0);
        }
    }

    bool evaluateNow() { return between(m_random, 0, 2) > 0; }

private:
    void changeAll()
    {
        Kalibrierung &d = m_document;
        const QString path = m_folder.filePath(u"a.xml"_qs);
        switch (between(m_random, 0, 4)) {
        case 0:
            d.Reset();
            break;
        case 1:
            d.DataStore().clear();
            break;
        case 2:
            m_blob = d.ContentString();
            break;
        case 3:
            if (!m_blob.isEmpty())
                d.setContentString(m_blob);
            break;
        default:
            d.SaveFile(path);
            d.setMesswert(pmDirekt, 1, 1, 1.0);
            alleErgebnisse(d);
            d.LoadFile(path);
        }
        for (std::int32_t field = 1; field <= 4; ++field) {
            for (std::int32_t point = 1; point <= 4; ++point) {
                d.setMesswert(pmDirekt, field, point, field + point * 0.5);
                d.setMesswert(pmIndirekt, field, point, field * field + point);
            }
        }
    }

    Kalibrierung &m_document;
    Random m_random;
    QTemporaryDir m_folder;
    QByteArray m_blob;
};

} // namespace

class TestZwischenspeicher : public QObject
{
    Q_OBJECT

private slots:
    void resultsFollowEveryChange_data();
    void resultsFollowEveryChange();
    void orderOfAskingIsIrrelevant();
    void repeatedAskingGivesTheSameBits();
    void failuresGoAwayWithTheirCause();
};

void TestZwischenspeicher::resultsFollowEveryChange_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestZwischenspeicher::resultsFollowEveryChange()
{
    QFETCH(const unsigned, seed);
    Kalibrierung document(german);
    fill(document, {{1, {1, 2, 3, 3}, {2, 5, 5, 6}},
                    {2, {4, 5, 6, 6}, {8, 10, 13, 12}},
                    {4, {7, 8, 9, 9}, {14, 15, 18, 20}}});
    Bearbeiter editor(document, seed);
    int good = 0;
    for (int step = 0; step < 250; ++step) {
        editor.change();
        if (!editor.evaluateNow())
            continue;
        Kalibrierung fresh(german);
        fresh.DataStore().clear();
        document.DataStore().forEach(
            [&](const QString &key, const Variant &value) { fresh.DataStore().set(key, value); });
        const std::vector<Ergebnis> actual = alleErgebnisse(document);
        const std::vector<Ergebnis> expected = alleErgebnisse(fresh);
        for (std::size_t at = 0; at < actual.size(); ++at) {
            QCOMPARE(actual[at].error, expected[at].error);
            QVERIFY_SAME_BITS(actual[at].value, expected[at].value);
        }
        QVERIFY(document.DataStore().keys() == fresh.DataStore().keys());
        good += actual[0].error == 0 ? 1 : 0;
    }
    QVERIFY(good > 20); // else nothing was computed
}

void TestZwischenspeicher::orderOfAskingIsIrrelevant()
{
    const std::vector<Field> fields{{1, {1, 2, 3}, {2, 5, 5}}, {2, {4, 5, 6}, {8, 10, 13}}};
    Kalibrierung forward(german);
    fill(forward, fields);
    forward.setZwischenergebnisseRunden(true);
    const double mean = forward.StatistikMittelwert(mDirekt);
    const double slope = forward.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt);
    Kalibrierung backward(german);
    fill(backward, fields);
    backward.setZwischenergebnisseRunden(true);
    QVERIFY_SAME_BITS(backward.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), slope);
    QVERIFY_SAME_BITS(backward.StatistikMittelwert(mDirekt), mean);
}

void TestZwischenspeicher::repeatedAskingGivesTheSameBits()
{
    Kalibrierung document(german);
    fill(document, {{1, {1, 2, 3.1}, {2, 5, 5}}, {2, {4, 5, 6}, {8, 10, 13.7}}});
    // Missing options are added by the first asking, in the middle of the computation.
    document.DataStore().remove(u"Nachkommastellen Mittelwerte");
    document.DataStore().remove(u"Zwischenergebnisse runden");
    const std::vector<Ergebnis> first = alleErgebnisse(document);
    const std::vector<Ergebnis> second = alleErgebnisse(document);
    for (std::size_t at = 0; at < first.size(); ++at) {
        QCOMPARE(first[at].error, second[at].error);
        QVERIFY_SAME_BITS(first[at].value, second[at].value);
    }
}

void TestZwischenspeicher::failuresGoAwayWithTheirCause()
{
    Kalibrierung document(german);
    fill(document, {{1, {1, 2, 3}, {2, 5, 5}}});
    document.removeMesswert(pmDirekt, 1, 2);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 94);
    document.setMesswert(pmDirekt, 1, 2, 8.0);
    QCOMPARE(document.StatistikMittelwert(mDirekt), 4.0);
    document.DataStore().set(u"Anzahl Prüffelder"_qs, u"x"_qs);
    QCOMPARE(errorOf([&] { document.StatistikMittelwert(mDirekt); }), 13);
    document.DataStore().set(u"Anzahl Prüffelder"_qs, u"1"_qs);
    QCOMPARE(document.StatistikMittelwert(mDirekt), 4.0);
}

REGISTER_TEST(TestZwischenspeicher)
#include "tst_zwischenspeicher.moc"
