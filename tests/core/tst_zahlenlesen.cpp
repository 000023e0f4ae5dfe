// Reading numbers: what is accepted, what is refused, and texts that come back as the same number.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/values.h"

#include <QRegularExpression>

#include <charconv>

using namespace coretest;

class TestZahlenLesen : public QObject
{
    Q_OBJECT

private slots:
    void textsComeBackAsTheSameNumber_data();
    void textsComeBackAsTheSameNumber();
    void acceptsExactlyTheGrammar();
    void refusesWhatQLocaleAloneAccepts_data();
    void refusesWhatQLocaleAloneAccepts();
    void everyVariantOfTheGroupingCharacterCounts_data();
    void everyVariantOfTheGroupingCharacterCounts();
    void valuesNearTheEndsOfTheRange();
    void veryLongTextsEndAtOnce();
};

void TestZahlenLesen::textsComeBackAsTheSameNumber_data()
{
    QTest::addColumn<QLocale>("locale");
    for (const char *name : {"de_DE", "en_US", "de_CH", "fr_FR", "sv_SE"})
        QTest::newRow(name) << QLocale(QLatin1String(name));
}

// The text of a random double, read and written again, is the same text; the number read is the one
// nearest to the 15 digits, and a number with at most 15 digits comes back bit for bit.
void TestZahlenLesen::textsComeBackAsTheSameNumber()
{
    QFETCH(const QLocale, locale);
    const Values values(locale);
    std::mt19937_64 random(20030);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> power(-290, 290);
    std::uniform_int_distribution<int> ordinary(-6, 9);
    for (int i = 0; i < 20'000; ++i) {
        const double value =
            mantissa(random) * std::pow(10.0, i % 2 ? power(random) : ordinary(random));
        char buffer[64];
        const auto end =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 14)
                .ptr;
        double nearest = 0.0;
        std::from_chars(buffer, end, nearest);

        const QString text = values.text(value);
        QVERIFY2(!text.contains(locale.groupSeparator()), qPrintable(text));
        QVERIFY2(values.isNumeric(text), qPrintable(text));
        const double back = values.number(text);
        QVERIFY_SAME_BITS(back, nearest);
        QCOMPARE(values.text(back), text);
    }
}

// Random texts of the characters that matter, against the grammar written as a pattern.
void TestZahlenLesen::acceptsExactlyTheGrammar()
{
    const Values values(german);
    const QRegularExpression grammar(
        u"^[ \\t\\n\\x{a0}]*[-+\\x{2212}]?(?=,?[0-9])([1-9][0-9]{0,2}(\\.[0-9]{3})+|[0-9]*)"
        u"(,[0-9]*)?([eE][-+\\x{2212}]?[0-9]+)?[ \\t\\n\\x{a0}]*$"_qs,
        QRegularExpression::DontCaptureOption);
    const QString alphabet = u"0011234599....,,,-+\u2212eE \u00a0'x\t"_qs;
    std::mt19937 random(4711);
    std::uniform_int_distribution<qsizetype> length(0, 11);
    std::uniform_int_distribution<qsizetype> letter(0, alphabet.size() - 1);
    int accepted = 0;
    for (int i = 0; i < 300'000; ++i) {
        QString text;
        for (qsizetype left = length(random); left > 0; --left)
            text += alphabet[letter(random)];
        const Values::Reading reading = values.read(text);
        const bool matches = grammar.match(text).hasMatch();
        QVERIFY2((reading.status != Values::Reading::Status::NotANumber) == matches,
                 qPrintable(text));
        if (!matches || reading.status == Values::Reading::Status::OutOfRange)
            continue;
        ++accepted;
        QString plain = text.trimmed();
        plain.remove(u'.').replace(u',', u'.').replace(u'\u2212', u'-');
        bool good = false;
        const double expected = QLocale::c().toDouble(plain, &good);
        if (good) // where it can't, the number is too small for a double
            QVERIFY2(reading.value == expected, qPrintable(text));
        else
            QCOMPARE(reading.value, 0.0);
    }
    QVERIFY(accepted > 10'000);
}

void TestZahlenLesen::refusesWhatQLocaleAloneAccepts_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"0.123", "012.345", "00.123", "-0.500", "nan", "NaN", "inf", "Inf",
                             "-inf", "+inf", "infinity", "INF"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestZahlenLesen::refusesWhatQLocaleAloneAccepts()
{
    QFETCH(const QString, text);
    for (const char *name : {"de_DE", "en_US", "de_CH", "fr_FR", "sv_SE"}) {
        const QLocale locale{QLatin1String(name)};
        const Values values(locale);
        QString localised = text;
        localised.replace(u'.', locale.groupSeparator());
        QVERIFY(!values.isNumeric(localised));
        QCOMPARE(errorOf([&] { values.number(localised); }), 13);
    }
}

void TestZahlenLesen::everyVariantOfTheGroupingCharacterCounts_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    const auto row = [](const char *locale, const char16_t *text, bool accepted) {
        const QString typed = QString::fromUtf16(text);
        const QByteArray shown = typed.toUtf8().replace('\n', "\\n").replace('\t', "\\t");
        QTest::addRow("%s %s", locale, shown.constData())
            << QString::fromLatin1(locale) << typed << accepted;
    };
    for (const char16_t *text :
         {u"1'234'567.5", u"1\u2019234\u2019567.5", u"1\u02bc234'567.5", u"1234567.5"})
        row("de_CH", text, true);
    for (const char16_t *text : {u"1 234 567.5", u"1,234,567.5", u"1.234.567,5", u"1''234'567.5"})
        row("de_CH", text, false);
    for (const char *locale : {"fr_FR", "sv_SE"}) {
        for (const char16_t *text :
             {u"1 234 567,5", u"1\u00a0234\u00a0567,5", u"1\u202f234\u202f567,5",
              u"1\u2009234\u00a0567,5", u"1\u2007234 567,5", u"1234567,5"})
            row(locale, text, true);
        for (const char16_t *text : {u"1\t234\t567,5", u"1\n234\n567,5", u"1  234 567,5",
                                     u"1'234'567,5", u"1.234.567,5", u"1 23 567,5"})
            row(locale, text, false);
    }
    for (const char16_t *text : {u"1 234 567,5", u"1'234'567,5", u"1\u202f234\u202f567,5"})
        row("de_DE", text, false);
}

void TestZahlenLesen::everyVariantOfTheGroupingCharacterCounts()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    const Values values{QLocale(locale)};
    QCOMPARE(values.isNumeric(text), accepted);
    if (accepted)
        QCOMPARE(values.number(text), 1234567.5);
    else
        QCOMPARE(errorOf([&] { values.number(text); }), 13);
}

void TestZahlenLesen::valuesNearTheEndsOfTheRange()
{
    const Values values(english);
    QVERIFY_SAME_BITS(values.number(u"1.7976931348623157e308"), std::numeric_limits<double>::max());
    QCOMPARE(errorOf([&] { values.number(u"1.7976931348623159e308"); }), 6);
    QCOMPARE(errorOf([&] { values.number(u"-2e308"); }), 6);
    QCOMPARE(errorOf([&] { values.number(u"1e99999999999999999999"); }), 6);
    QCOMPARE(errorOf([&] { values.number(u"0.0001e313"); }), 6);
    QVERIFY_SAME_BITS(values.number(u"4.94e-324"), std::numeric_limits<double>::denorm_min());
    QVERIFY_SAME_BITS(values.number(u"2.2250738585072014e-308"),
                      std::numeric_limits<double>::min());
    QVERIFY_SAME_BITS(values.number(u"-2e-324"), 0.0);
    QVERIFY_SAME_BITS(values.number(u"1e-99999999999999999999"), 0.0);
    QVERIFY_SAME_BITS(values.number(u"0e99999999999999999999"), 0.0);
    QVERIFY_SAME_BITS(values.number(u"-0"), 0.0);
    QVERIFY_SAME_BITS(values.number(u"1e000000000000000000000000000005"), 1e5);
}

void TestZahlenLesen::veryLongTextsEndAtOnce()
{
    const Values values(german);
    QCOMPARE(errorOf([&] { values.number(QString(1'000'000, u'7')); }), 6);
    QCOMPARE(values.number(u"0,"_qs + QString(1'000'000, u'0') + u'7'), 0.0);
    QCOMPARE(values.number(QString(1'000'000, u'0') + u'7'), 7.0);
    QCOMPARE(values.number(u"1,"_qs + QString(1'000'000, u'0') + u"e2"_qs), 100.0);
    QCOMPARE(values.number(QString(400, u'9') + u"e-400"_qs), 1.0);
    QCOMPARE(errorOf([&] { values.number(QString(1'000'000, u' ')); }), 13);
}

REGISTER_TEST(TestZahlenLesen)
#include "tst_zahlenlesen.moc"
