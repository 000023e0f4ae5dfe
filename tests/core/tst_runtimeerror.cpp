#include "tests/core/support.h"
#include "tests/support/testregistry.h"

class TestRunTimeError : public QObject
{
    Q_OBJECT

private slots:
    void everyNumberHasItsText_data();
    void everyNumberHasItsText();
    void detailFollowsTheText();
    void reportIsContextLineBreakDescriptionAndNumber();
};

void TestRunTimeError::everyNumberHasItsText_data()
{
    QTest::addColumn<std::int32_t>("number");
    QTest::addColumn<QString>("text");
    const std::pair<std::int32_t, const char16_t *> rows[] = {
        {5, u"Ungültiger Prozeduraufruf oder ungültiges Argument"},
        {6, u"Überlauf"},
        {7, u"Nicht genügend Speicher"},
        {11, u"Division durch Null"},
        {13, u"Typen unverträglich"},
        {53, u"Datei nicht gefunden"},
        {57, u"E/A-Fehler beim Datenträgerzugriff"},
        {61, u"Datenträger voll"},
        {70, u"Zugriff verweigert"},
        {75, u"Fehler beim Zugriff auf Pfad/Datei"},
        {76, u"Pfad nicht gefunden"},
        {94, u"Unzulässige Verwendung von Null"},
        {321, u"Ungültiges Dateiformat"},
        {380, u"Ungültiger Eigenschaftswert"},
    };
    for (const auto &[number, text] : rows)
        QTest::addRow("%d", number) << number << QString::fromUtf16(text);
}

void TestRunTimeError::everyNumberHasItsText()
{
    QFETCH(const std::int32_t, number);
    QFETCH(const QString, text);
    const RunTimeError error(static_cast<ErrorNumber>(number));
    QCOMPARE(error.number(), number);
    QCOMPARE(error.description(), text);
    QCOMPARE(QString::fromUtf8(error.what()), text);
    QCOMPARE(RunTimeError::textOf(error.errorNumber()), text);
}

void TestRunTimeError::detailFollowsTheText()
{
    const RunTimeError error(ErrorNumber::InvalidFileFormat, u"Zeile 3"_qs);
    QCOMPARE(error.description(), u"Ungültiges Dateiformat: Zeile 3"_qs);
    QCOMPARE(error.number(), 321);
}

void TestRunTimeError::reportIsContextLineBreakDescriptionAndNumber()
{
    QCOMPARE(errorReport(u"Folgender Fehler ist aufgetreten:"_qs,
                         RunTimeError(ErrorNumber::InvalidPropertyValue)),
             u"Folgender Fehler ist aufgetreten:\r\nUngültiger Eigenschaftswert (380)"_qs);
    QCOMPARE(errorReport(u"A:"_qs, RunTimeError(ErrorNumber::Overflow, u"%1 %2"_qs)),
             u"A:\r\nÜberlauf: %1 %2 (6)"_qs);
    // A component's negative number keeps its sign.
    QCOMPARE(errorReport(u"A:"_qs, std::numeric_limits<std::int32_t>::min(), u"B"_qs),
             u"A:\r\nB (-2147483648)"_qs);
}

REGISTER_TEST(TestRunTimeError)
#include "tst_runtimeerror.moc"
