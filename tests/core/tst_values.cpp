#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/baskalibrierungwendral.h"
#include "core/values.h"

#include <QFile>

#include <functional>
#include <limits>
#include <map>

using namespace coretest;

namespace {

// Backslash escapes as in C.
QString unescaped(const QString &text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\') {
            result += text[i];
            continue;
        }
        const QChar kind = text[++i];
        if (kind == u'u') {
            result += QChar(text.mid(i + 1, 4).toUShort(nullptr, 16));
            i += 4;
        } else {
            result += kind == u't' ? u'\t' : kind == u'r' ? u'\r' : u'\n';
        }
    }
    return result;
}

double inputNumber(const QString &text)
{
    bool good = false;
    const double result = QLocale::c().toDouble(text, &good);
    if (!good)
        qFatal("a number in the test data can't be read");
    return result;
}

QString exact(double value)
{
    return QString::number(value, 'g', 17);
}

// The result column of a number: all its digits, or the error.
QString expectedNumber(const QString &text)
{
    return text.startsWith(u"error") ? text : exact(inputNumber(text));
}

QString errorOr(const std::function<QString()> &result)
{
    try {
        return result();
    } catch (const RunTimeError &error) {
        return QStringLiteral("error %1").arg(error.number());
    }
}

} // namespace

class TestValues : public QObject
{
    Q_OBJECT

private slots:
    void everyWorkedCase_data();
    void everyWorkedCase();
    void workedCasesAreComplete();
    void everyKindAsText();
    void everyKindAsNumber();
    void everyKindAsWholeNumber();
    void everyKindAsTruthValue();
    void numbersThatAreNoneHaveNoText();
    void booleansInOtherLocales();
    void leadingNumberNeverFails_data();
    void leadingNumberNeverFails();
    void wholeNumbersRoundHalvesToEven();
};

void TestValues::everyWorkedCase_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("result");
    QFile file(QStringLiteral(TEST_DATA_DIR "/values.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    int number = 0;
    for (const QByteArray &bytes : file.readAll().split('\n')) {
        ++number;
        if (bytes.isEmpty() || bytes.startsWith('#'))
            continue;
        const QStringList parts = QString::fromUtf8(bytes).split(u';');
        QCOMPARE(parts.size(), 4);
        QTest::addRow("line %d: %s", number, bytes.constData())
            << parts[0] << QLocale(parts[1] == u"any" ? QStringLiteral("de_DE") : parts[1])
            << unescaped(parts[2]) << parts[3];
    }
}

void TestValues::everyWorkedCase()
{
    QFETCH(const QString, function);
    QFETCH(const QLocale, locale);
    QFETCH(const QString, input);
    QFETCH(const QString, result);
    const Values values(locale);
    const QString name = function.section(u' ', 0, 0);
    const int argument = function.section(u' ', 1, 1).toInt();
    const std::map<QString, std::function<QString()>> functions{
        {u"number_to_text"_qs, [&] { return values.text(inputNumber(input)); }},
        {u"boolean_to_text"_qs, [&] { return values.text(input == u"true"); }},
        {u"text_to_number"_qs, [&] { return exact(values.number(input)); }},
        {u"number_to_whole"_qs, [&] { return exact(toWhole(inputNumber(input))); }},
        {u"leading_number"_qs, [&] { return exact(leadingNumber(input)); }},
        {u"text_to_boolean"_qs, [&] { return values.boolean(input) ? u"true"_qs : u"false"_qs; }},
        {u"display_format"_qs, [&] { return values.display(inputNumber(input), argument); }},
        {u"round_decimal"_qs,
         [&] { return exact(basKalibrierungWendral::RoundDecimal(inputNumber(input), argument)); }},
        {u"int"_qs, [&] { return exact(roundDown(inputNumber(input))); }},
        {u"fix"_qs, [&] { return exact(truncate(inputNumber(input))); }},
    };
    QVERIFY2(functions.contains(name), qPrintable(name));
    const bool isText = name.endsWith(u"_to_text") || name == u"display_format" ||
                        name == u"text_to_boolean" || result.startsWith(u"error");
    QCOMPARE(errorOr(functions.at(name)), isText ? result : expectedNumber(result));
}

void TestValues::workedCasesAreComplete()
{
    QFile file(QStringLiteral(TEST_DATA_DIR "/values.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count('\n') - 1, 163); // a cut file must not pass
}

void TestValues::everyKindAsText()
{
    const Values values(german);
    QCOMPARE(values.text(Variant(Empty{})), QString());
    QCOMPARE(errorOf([&] { values.text(Variant(Null{})); }), 94);
    QCOMPARE(values.text(Variant(std::int32_t{-1234567})), u"-1234567"_qs);
    QCOMPARE(values.text(Variant(std::numeric_limits<std::int32_t>::min())), u"-2147483648"_qs);
    QCOMPARE(values.text(Variant(1234567.5)), u"1234567,5"_qs);
    QCOMPARE(values.text(Variant(true)), u"Wahr"_qs);
    QCOMPARE(values.text(Variant(u" as it\tstands "_qs)), u" as it\tstands "_qs);
}

void TestValues::everyKindAsNumber()
{
    const Values values(german);
    QCOMPARE(values.number(Variant(Empty{})), 0.0);
    QCOMPARE(errorOf([&] { values.number(Variant(Null{})); }), 94);
    QCOMPARE(values.number(Variant(std::int32_t{-7})), -7.0);
    QVERIFY_SAME_BITS(values.number(Variant(0.1)), 0.1);
    QCOMPARE(values.number(Variant(true)), -1.0);
    QCOMPARE(values.number(Variant(false)), 0.0);
    QCOMPARE(values.number(Variant(u"12,5"_qs)), 12.5);
    QCOMPARE(errorOf([&] { values.number(Variant(u"12.5"_qs)); }), 13);
    QCOMPARE(errorOf([&] { values.number(Variant(QString())); }), 13);
    QCOMPARE(errorOf([&] { values.number(Variant(u"-1e309"_qs)); }), 6);
}

void TestValues::everyKindAsWholeNumber()
{
    const Values values(german);
    QCOMPARE(values.whole(Variant(Empty{})), 0);
    QCOMPARE(errorOf([&] { values.whole(Variant(Null{})); }), 94);
    QCOMPARE(values.whole(Variant(std::numeric_limits<std::int32_t>::max())), 2147483647);
    QCOMPARE(values.whole(Variant(2.5)), 2);
    QCOMPARE(values.whole(Variant(true)), -1);
    QCOMPARE(values.whole(Variant(u"3,5"_qs)), 4);
    QCOMPARE(values.whole(Variant(u" 1.234 "_qs)), 1234);
    QCOMPARE(errorOf([&] { values.whole(Variant(u"3.5"_qs)); }), 13);
    QCOMPARE(errorOf([&] { values.whole(Variant(u"99999999999"_qs)); }), 6);
    QCOMPARE(errorOf([&] { values.whole(Variant(-2147483649.0)); }), 6);
}

void TestValues::everyKindAsTruthValue()
{
    const Values values(german);
    QVERIFY(!values.boolean(Variant(Empty{})));
    QCOMPARE(errorOf([&] { values.boolean(Variant(Null{})); }), 94);
    QVERIFY(values.boolean(Variant(std::int32_t{-1})));
    QVERIFY(!values.boolean(Variant(std::int32_t{0})));
    QVERIFY(values.boolean(Variant(0.1)));
    QVERIFY(values.boolean(Variant(true)));
    QVERIFY(values.boolean(Variant(u" wAHR\n"_qs)));
    QVERIFY(!values.boolean(Variant(u"FALSE"_qs)));
    QVERIFY(values.boolean(Variant(u"0,5"_qs)));
    QCOMPARE(errorOf([&] { values.boolean(Variant(u"ja"_qs)); }), 13);
    QCOMPARE(errorOf([&] { values.boolean(Variant(u"1e400"_qs)); }), 6);
    // The words of the other languages read the same everywhere.
    QVERIFY(Values(english).boolean(Variant(u"Wahr"_qs)));
    QVERIFY(!Values(english).boolean(Variant(u"falsch"_qs)));
}

void TestValues::numbersThatAreNoneHaveNoText()
{
    const Values values(german);
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        QCOMPARE(errorOf([&] { values.text(value); }), 6);
        QCOMPARE(errorOf([&] { values.display(value, 2); }), 6);
        QCOMPARE(errorOf([&] { toWhole(value); }), 6);
    }
}

void TestValues::booleansInOtherLocales()
{
    for (const char *name : {"de_DE", "de_AT", "de_CH", "de_LI"})
        QCOMPARE(Values(QLocale(QLatin1String(name))).text(true), u"Wahr"_qs);
    for (const char *name : {"en_US", "fr_FR", "sv_SE", "C"})
        QCOMPARE(Values(QLocale(QLatin1String(name))).text(false), u"False"_qs);
}

void TestValues::leadingNumberNeverFails_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    const double largest = std::numeric_limits<double>::max();
    const std::pair<const char16_t *, double> rows[] = {
        {u"1e400", largest},  {u"-1e400", -largest},
        {u"1e-400", 0.0},     {u"1e99999999999999999999", largest},
        {u"-", 0.0},          {u"+", 0.0},
        {u"+7", 7.0},         {u"--7", 0.0},
        {u".", 0.0},          {u"-.5", -0.5},
        {u"5.", 5.0},         {u"1e", 1.0},
        {u"1e+", 1.0},        {u"1E-2x", 0.01},
        {u"1 000", 1.0},      {u"- 5", 0.0},
        {u"\t\u00a0 4", 4.0}, {u"\u22125", 0.0},
        {u"-0", 0.0},         {u"nan", 0.0},
        {u"inf", 0.0},        {u"0x10", 0.0},
        {u"1,234.5", 1.0},    {u"1.234.5", 1.234},
        {u"\u0661\u0662", 0}, {u"00012", 12.0},
    };
    for (const auto &[text, number] : rows)
        QTest::newRow(QString::fromUtf16(text).toUtf8().constData())
            << QString::fromUtf16(text) << number;
    QTest::newRow("5000 digits") << QString(5000, u'9') << largest;
    QTest::newRow("5000 zeros behind the point")
        << u"0."_qs + QString(5000, u'0') + u"1e5001"_qs << 1.0;
}

void TestValues::leadingNumberNeverFails()
{
    QFETCH(const QString, text);
    QFETCH(const double, number);
    QVERIFY_SAME_BITS(leadingNumber(text), number);
}

void TestValues::wholeNumbersRoundHalvesToEven()
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> any(-1'000'000'000, 1'000'000'000);
    for (int i = 0; i < 10'000; ++i) {
        const std::int32_t whole = any(random);
        const std::int32_t even = whole % 2 == 0 ? whole : whole + 1;
        QCOMPARE(toWhole(whole + 0.5), even);
        QCOMPARE(toWhole(whole + 0.4999), whole);
        QCOMPARE(toWhole(whole + 0.5001), whole + 1);
        QCOMPARE(roundDown(whole + 0.5), static_cast<double>(whole));
        QCOMPARE(truncate(whole + 0.5), static_cast<double>(whole < 0 ? whole + 1 : whole));
    }
    QVERIFY_SAME_BITS(truncate(-0.5), 0.0);
    QVERIFY_SAME_BITS(roundDown(-0.0), 0.0);
}

REGISTER_TEST(TestValues)
#include "tst_values.moc"
