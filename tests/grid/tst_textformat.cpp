#include "tests/support/testregistry.h"

#include "grid/textformat.h"

#include <QLocale>
#include <QTest>

/// Typed texts in number and date formats.
class TestTextFormat : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
};

void TestTextFormat::formats_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *name, const QString &text, const QString &format,
                        const QString &result) { QTest::newRow(name) << text << format << result; };
    const QString two = u"#,##0.00"_qs;
    row("places are filled", u"1,5"_qs, two, u"1,50"_qs);
    row("grouped", u"1234567"_qs, two, u"1.234.567,00"_qs);
    row("grouping is read", u"1.234,5"_qs, two, u"1.234,50"_qs);
    row("half goes up", u"0,125"_qs, two, u"0,13"_qs);
    row("half goes away from zero", u"-0,125"_qs, two, u"-0,13"_qs);
    row("no detour over binary numbers", u"1,005"_qs, two, u"1,01"_qs);
    row("carries", u"999,995"_qs, two, u"1.000,00"_qs);
    row("no minus before zero", u"-0,001"_qs, two, u"0,00"_qs);
    row("more digits than a double has", u"12345678901234567,891"_qs, u"0.00"_qs,
        u"12345678901234567,89"_qs);
    row("no decimals", u"2,5"_qs, u"#,##0"_qs, u"3"_qs);
    row("optional decimals", u"1,50"_qs, u"0.0##"_qs, u"1,5"_qs);
    row("optional decimals, all used", u"1,23456"_qs, u"0.0##"_qs, u"1,235"_qs);
    row("leading zeros", u"7"_qs, u"000"_qs, u"007"_qs);
    row("no whole digit asked for", u"0,5"_qs, u"#.0"_qs, u",5"_qs);
    row("per cent", u"0,125"_qs, u"0.0%"_qs, u"12,5%"_qs);
    row("per cent of a whole number", u"2"_qs, u"0%"_qs, u"200%"_qs);
    row("text around", u"3"_qs, u"\"ca. \"0\" m\""_qs, u"ca. 3 m"_qs);
    row("a section for negative numbers", u"-3"_qs, u"0;\"minus \"0"_qs, u"minus 3"_qs);
    row("a section for zero", u"0,0"_qs, u"0;-0;\"null \"0"_qs, u"null 0"_qs);
    row("a typographic minus", u"\u22123"_qs, u"0.0"_qs, u"-3,0"_qs);
    row("a point is no decimal comma", u"1.5"_qs, two, u"1.5"_qs);
    row("misplaced grouping", u"12.34"_qs, two, u"12.34"_qs);
    row("grouped zero", u"0.123"_qs, two, u"0.123"_qs);
    row("no number", u"abc"_qs, two, u"abc"_qs);
    row("empty", QString(), two, QString());
    row("a comma alone", u","_qs, two, u","_qs);
    row("blanks around", u" 5 "_qs, two, u"5,00"_qs);
    row("date", u"7.3.2024"_qs, u"dd.mm.yyyy"_qs, u"07.03.2024"_qs);
    row("date, short year", u"07.03.24"_qs, u"yyyy-mm-dd"_qs, u"2024-03-07"_qs);
    row("time", u"09:05"_qs, u"h:nn"_qs, u"9:05"_qs);
    row("no date", u"31.02.2024"_qs, u"dd.mm.yyyy"_qs, u"31.02.2024"_qs);
    row("a number is no date", u"12"_qs, u"dd.mm.yyyy"_qs, u"12"_qs);
}

void TestTextFormat::formats()
{
    QFETCH(const QString, text);
    QFETCH(const QString, format);
    QFETCH(const QString, result);
    QCOMPARE(formattedText(text, format, QLocale(QLocale::German, QLocale::Germany)), result);
}

REGISTER_TEST(TestTextFormat)
#include "tst_textformat.moc"
