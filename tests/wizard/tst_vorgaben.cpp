#include "core/values.h"
#include "tests/support/testregistry.h"
#include "wizard/einstellungen.h"
#include "wizard/vorgaben.h"
#include "wizard/zahlen.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

/// The small free pieces: ready-made characteristics, number boxes, settings.
class TestVorgaben : public QObject
{
    Q_OBJECT

private slots:
    void sameNameIsKeptOnce();
    void completionNeedsExactlyOneText_data();
    void completionNeedsExactlyOneText();
    void placesAreRead_data();
    void placesAreRead();
    void countIsTheLeadingNumber_data();
    void countIsTheLeadingNumber();
    void arrowsClampTheirResult();
    void settingsKeepTheirSectionsAndKeys();
    void newestFileMovesToTheTopWithoutADouble();
    void tenthFileDropsOff();
};

namespace {

Vorgabentabelle table()
{
    Vorgabentabelle presets;
    presets.add({u"Verdichtungsgrad"_qs, u"%"_qs, u"DPr"_qs});
    presets.add({u"Verformungsmodul"_qs, u"MN/m²"_qs, u"EV2"_qs});
    presets.add({u"Verdichtungsgrad"_qs, u"kg"_qs, u"X"_qs});
    presets.add({u"Dynamischer Verformungsmodul"_qs, u"MN/m²"_qs, u"EVD"_qs});
    return presets;
}

Values german()
{
    return Values(QLocale(QLocale::German, QLocale::Germany));
}

} // namespace

void TestVorgaben::sameNameIsKeptOnce()
{
    const Vorgabentabelle presets = table();
    QCOMPARE(presets.entries().size(), std::size_t{3});
    QCOMPARE(presets.entries().front().einheit, u"%"_qs);
}

void TestVorgaben::completionNeedsExactlyOneText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("found");
    QTest::newRow("name") << u"Verformungsmodul"_qs << u""_qs << u""_qs << u"Verformungsmodul"_qs;
    QTest::newRow("symbol") << u""_qs << u""_qs << u"EVD"_qs << u"Dynamischer Verformungsmodul"_qs;
    QTest::newRow("unit takes the first")
        << u""_qs << u"MN/m²"_qs << u""_qs << u"Verformungsmodul"_qs;
    QTest::newRow("case differs") << u""_qs << u""_qs << u"evd"_qs << u""_qs;
    QTest::newRow("blank behind") << u"Verformungsmodul "_qs << u""_qs << u""_qs << u""_qs;
    QTest::newRow("two filled") << u"Verformungsmodul"_qs << u"%"_qs << u""_qs << u""_qs;
    QTest::newRow("three filled") << u"a"_qs << u"%"_qs << u"DPr"_qs << u""_qs;
    QTest::newRow("none filled") << u""_qs << u""_qs << u""_qs << u""_qs;
    QTest::newRow("a blank is a text") << u" "_qs << u"%"_qs << u""_qs << u""_qs;
    QTest::newRow("replaced entry is not in the table") << u""_qs << u"kg"_qs << u""_qs << u""_qs;
}

void TestVorgaben::completionNeedsExactlyOneText()
{
    QFETCH(QString, name);
    QFETCH(QString, unit);
    QFETCH(QString, symbol);
    QFETCH(QString, found);
    const auto entry = table().completion({name, unit, symbol});
    QCOMPARE(entry ? entry->name : QString(), found);
}

void TestVorgaben::placesAreRead_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("numeric");
    QTest::addColumn<int>("places");
    const QLocale de(QLocale::German, QLocale::Germany);
    const QLocale en(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("3") << de << u"3"_qs << true << 3;
    QTest::newRow("comma, half to even") << de << u"1,5"_qs << true << 2;
    QTest::newRow("point") << de << u"2.7"_qs << true << 3;
    QTest::newRow("English point") << en << u"2.7"_qs << true << 3;
    QTest::newRow("English comma") << en << u"1,5"_qs << false << 0;
    QTest::newRow("negative") << de << u"-1"_qs << true << -1;
    QTest::newRow("word") << de << u"abc"_qs << false << 0;
    QTest::newRow("empty") << de << u""_qs << false << 0;
    QTest::newRow("nan") << de << u"nan"_qs << false << 0;
    QTest::newRow("two separators") << de << u"1,234.5"_qs << false << 0;
}

void TestVorgaben::placesAreRead()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QFETCH(int, places);
    const Values values(locale);
    QCOMPARE(isNumberOrPointNumber(text, values), numeric);
    const auto read = readPlaces(text, values);
    QCOMPARE(read.has_value(), numeric);
    QCOMPARE(read.value_or(0), places);
    QVERIFY(!readPlaces(u"1e12"_qs, values)); // numeric, but not storable
}

void TestVorgaben::countIsTheLeadingNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::newRow("3,5") << u"3,5"_qs << 3;
    QTest::newRow("3.5 goes to even") << u"3.5"_qs << 4;
    QTest::newRow("abc") << u"abc"_qs << 0;
    QTest::newRow("12 Felder") << u"12 Felder"_qs << 12;
    QTest::newRow("beyond 32 bits") << u"1e400"_qs << 2147483647;
    QTest::newRow("far below") << u"-1e400"_qs << -2147483647 - 1;
}

void TestVorgaben::countIsTheLeadingNumber()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QCOMPARE(readCount(text), count);
}

void TestVorgaben::arrowsClampTheirResult()
{
    const Values values = german();
    const auto count = countStep(values);
    QCOMPARE(count(u"3"_qs, 1), u"4"_qs);
    QCOMPARE(count(u"3"_qs, -1), u"3"_qs);
    QCOMPARE(count(u"abc"_qs, 1), u"3"_qs);
    QCOMPARE(count(u"3,5"_qs, 1), u"4"_qs);
    QCOMPARE(count(u"9999"_qs, 1), u"9999"_qs);
    QCOMPARE(count(u"20000"_qs, -1), u"9999"_qs);
    const auto places = placesStep(values);
    QCOMPARE(places(u"0"_qs, -1), u"0"_qs);
    QCOMPARE(places(u"2"_qs, 1), u"3"_qs);
    QCOMPARE(places(u"30"_qs, 1), u"30"_qs);
    QCOMPARE(places(u"2147483647"_qs, 1), u"30"_qs);
    QCOMPARE(places(u"-2147483648"_qs, -1), u"0"_qs);
    QCOMPARE(places(u"abc"_qs, 1), u"1"_qs);
}

void TestVorgaben::settingsKeepTheirSectionsAndKeys()
{
    const QTemporaryDir folder;
    QSettings store(folder.filePath(u"s.ini"_qs), QSettings::IniFormat);
    Einstellungen settings(store);
    QVERIFY(!settings.dontShowPage0());
    QVERIFY(settings.windowGeometry().isEmpty());
    QCOMPARE(settings.recentFiles(), QStringList(9, u""_qs));
    settings.setDontShowPage0(true);
    settings.setRecentFiles({u"/a"_qs, u"/b"_qs});
    store.sync();
    const QSettings again(folder.filePath(u"s.ini"_qs), QSettings::IniFormat);
    QCOMPARE(again.value(u"Main/DontShowPage0"_qs).toInt(), 1);
    QCOMPARE(again.value(u"RecentFiles/File1"_qs).toString(), u"/a"_qs);
    QCOMPARE(again.value(u"RecentFiles/File2"_qs).toString(), u"/b"_qs);
    QVERIFY(again.contains(u"RecentFiles/File9"_qs));
    QCOMPARE(again.value(u"RecentFiles/File9"_qs).toString(), u""_qs);
}

void TestVorgaben::newestFileMovesToTheTopWithoutADouble()
{
    const QStringList paths{u"a"_qs, u"b"_qs, u"c"_qs, u""_qs};
    QCOMPARE(withMostRecent(paths, u"c"_qs), QStringList({u"c"_qs, u"a"_qs, u"b"_qs, u""_qs}));
    QCOMPARE(withMostRecent(paths, u"a"_qs), paths);
    QCOMPARE(withMostRecent(paths, u"d"_qs), QStringList({u"d"_qs, u"a"_qs, u"b"_qs, u"c"_qs}));
}

void TestVorgaben::tenthFileDropsOff()
{
    QStringList paths;
    for (int i = 1; i <= 9; ++i)
        paths.append(QString::number(i));
    const QStringList with = withMostRecent(paths, u"new"_qs);
    QCOMPARE(with.size(), 9);
    QCOMPARE(with.first(), u"new"_qs);
    QCOMPARE(with.last(), u"8"_qs);
}

REGISTER_TEST(TestVorgaben)
#include "tst_vorgaben.moc"
