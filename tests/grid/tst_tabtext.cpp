#include "tests/support/testregistry.h"

#include "grid/tabtext.h"

#include <QTest>

/// Tab-separated text as other programs write it.
class TestTabText : public QObject
{
    Q_OBJECT

private slots:
    void readsSpreadsheetCells_data();
    void readsSpreadsheetCells();
    void readsPlainLines_data();
    void readsPlainLines();
    void typedTextsAreOneLineWithTwoBlanksBetweenValues_data();
    void typedTextsAreOneLineWithTwoBlanksBetweenValues();
};

void TestTabText::readsSpreadsheetCells_data()
{
    using Cells = QList<QStringList>;
    QTest::addColumn<QString>("text");
    QTest::addColumn<Cells>("cells");
    const QString none;
    QTest::newRow("nothing") << none << Cells();
    QTest::newRow("one cell") << u"a"_qs << Cells({{u"a"_qs}});
    QTest::newRow("one line break is one empty cell") << u"\r\n"_qs << Cells({{none}});
    QTest::newRow("only the last line break is dropped")
        << u"a\r\n\r\n\r\n"_qs << Cells({{u"a"_qs}, {none}, {none}});
    QTest::newRow("a tab at the end is an empty cell") << u"a\t"_qs << Cells({{u"a"_qs, none}});
    QTest::newRow("a tab at the end of a line")
        << u"a\t\nb"_qs << Cells({{u"a"_qs, none}, {u"b"_qs}});
    QTest::newRow("CR alone") << u"a\rb"_qs << Cells({{u"a"_qs}, {u"b"_qs}});
    QTest::newRow("quoted") << u"\"a\"\tb"_qs << Cells({{u"a"_qs, u"b"_qs}});
    QTest::newRow("quoted, empty") << u"\"\"\tb"_qs << Cells({{none, u"b"_qs}});
    QTest::newRow("quoted CR LF becomes one line feed")
        << u"\"a\r\nb\"\r\nc"_qs << Cells({{u"a\nb"_qs}, {u"c"_qs}});
    QTest::newRow("quoted line break at the very end") << u"\"a\n\""_qs << Cells({{u"a\n"_qs}});
    QTest::newRow("quoted tab becomes two blanks")
        << u"\"1\t2\"\t3"_qs << Cells({{u"1  2"_qs, u"3"_qs}});
    QTest::newRow("marks inside") << u"a\"b\"c"_qs << Cells({{u"a\"b\"c"_qs}});
    QTest::newRow("an unclosed mark")
        << u"\"a\tb\nc"_qs << Cells({{u"\"a"_qs, u"b"_qs}, {u"c"_qs}});
    QTest::newRow("closed in the middle") << u"\"a\"b\tc"_qs << Cells({{u"\"a\"b"_qs, u"c"_qs}});
    QTest::newRow("a mark alone") << u"\""_qs << Cells({{u"\""_qs}});
    QTest::newRow("three marks") << u"\"\"\""_qs << Cells({{u"\"\"\""_qs}});
    QTest::newRow("control characters")
        << u"\u0001a\u007fb\u009f\t\"c\u0002d\""_qs << Cells({{u"ab"_qs, u"cd"_qs}});
    QTest::newRow("what separates words separates values")
        << u"45\v120\t\"45\f120\"\t45\u0085120"_qs
        << Cells({{u"45  120"_qs, u"45  120"_qs, u"45  120"_qs}});
    QTest::newRow("other letters stay")
        << u"ä\u00a0€\U0001F600"_qs << Cells({{u"ä\u00a0€\U0001F600"_qs}});
}

void TestTabText::readsSpreadsheetCells()
{
    QFETCH(const QString, text);
    QFETCH(const QList<QStringList>, cells);
    QList<QStringList> read;
    for (tabtext::CellReader reader(text); reader.nextRow();) {
        read.append(QStringList());
        while (const std::optional<QString> cell = reader.nextCell())
            read.last().append(*cell);
    }
    QCOMPARE(read, cells);
}

void TestTabText::readsPlainLines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("nothing") << QString() << QStringList();
    QTest::newRow("line breaks only") << u"\n\r\n"_qs << QStringList();
    QTest::newRow("every kind") << u"a\r\nb\nc\rd"_qs
                                << QStringList({u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs});
    QTest::newRow("LF CR is two") << u"a\n\rb"_qs << QStringList({u"a"_qs, QString(), u"b"_qs});
    QTest::newRow("tabs and quotes stay") << u"\"a\tb\"\n"_qs << QStringList({u"\"a\tb\""_qs});
    QTest::newRow("other controls go") << u"a\u0007b\n"_qs << QStringList({u"ab"_qs});
    QTest::newRow("an empty first line") << u"\r\na"_qs << QStringList({QString(), u"a"_qs});
}

void TestTabText::readsPlainLines()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, lines);
    QCOMPARE(tabtext::lines(text), lines);
}

void TestTabText::typedTextsAreOneLineWithTwoBlanksBetweenValues_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("typed");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("two cells") << u"45\t120\r\n"_qs << u"45  120"_qs;
    QTest::newRow("two lines") << u"45\r120"_qs << u"45\n120"_qs;
    QTest::newRow("vertical tab") << u"45\v120"_qs << u"45  120"_qs;
    QTest::newRow("separating nothing") << u"\tFeld A\v\r\n\t"_qs << u"Feld A"_qs;
    QTest::newRow("other controls go") << u"4\u00075"_qs << u"45"_qs;
    QTest::newRow("an empty first line") << u"\r\na"_qs << u"\na"_qs;
}

void TestTabText::typedTextsAreOneLineWithTwoBlanksBetweenValues()
{
    QFETCH(const QString, text);
    QFETCH(const QString, typed);
    QCOMPARE(tabtext::typed(text), typed);
}

REGISTER_TEST(TestTabText)
#include "tst_tabtext.moc"
