#include "core/userlocale.h"
#include "tests/support/testregistry.h"

#include <QHash>
#include <QTest>

class TestUserLocale : public QObject
{
    Q_OBJECT

private slots:
    void environmentDecides_data()
    {
        QTest::addColumn<QByteArray>("all");
        QTest::addColumn<QByteArray>("numeric");
        QTest::addColumn<QByteArray>("lang");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *all, const char *numeric,
                            const char *lang, const char *expected) {
            QTest::newRow(name) << QByteArray(all) << QByteArray(numeric) << QByteArray(lang)
                                << QString::fromLatin1(expected);
        };
        row("nothing is named", "", "", "", "de_DE");
        row("C", "", "", "C", "de_DE");
        row("POSIX", "POSIX", "", "en_US.UTF-8", "de_DE");
        row("C with encoding", "", "", "C.UTF-8", "de_DE");
        row("nonsense", "", "", "quatsch", "de_DE");
        row("LANG", "", "", "en_US.UTF-8", "en_US");
        row("LC_NUMERIC goes before LANG", "", "de_CH.UTF-8", "en_US.UTF-8", "de_CH");
        row("LC_ALL goes before all", "fr_FR", "de_CH", "en_US", "fr_FR");
        row("modifier", "", "", "de_DE.UTF-8@euro", "de_DE");
        row("modifier without encoding", "", "", "de_AT@euro", "de_AT");
    }

    void environmentDecides()
    {
        QFETCH(QByteArray, all);
        QFETCH(QByteArray, numeric);
        QFETCH(QByteArray, lang);
        const QHash<QByteArray, QByteArray> values{
            {"LC_ALL", all}, {"LC_NUMERIC", numeric}, {"LANG", lang}};
        const QLocale locale = userLocale([&](const char *name) { return values.value(name); });
        QTEST(locale.name(), "expected");
    }
};

REGISTER_TEST(TestUserLocale)
#include "tst_userlocale.moc"
