#include "export/formeln.h"
#include "export/summenschritt.h"
#include "tests/support/testregistry.h"

#include <QTest>

#include <cmath>

class TestFormeln : public QObject
{
    Q_OBJECT

private slots:
    void cellsAreAbsolute()
    {
        QCOMPARE(formeln::zelle(u"A"_qs, 0, 0), u"A!$A$1"_qs);
        QCOMPARE(formeln::zelle(u"A"_qs, 2, 25), u"A!$Z$3"_qs);
        QCOMPARE(formeln::zelle(u"A"_qs, 99, 26), u"A!$AA$100"_qs);
        QCOMPARE(formeln::zelle(u"A"_qs, 0, 701), u"A!$ZZ$1"_qs);
        QCOMPARE(formeln::spaltenbereich(u"Messwerte"_qs, 4, 1, 12), u"Messwerte!$E$2:$E$13"_qs);
    }

    void quotesInTextsAreDoubled() { QCOMPARE(formeln::text(u"a\"b"_qs), u"\"a\"\"b\""_qs); }

    void guardsAskForNumbers()
    {
        QCOMPARE(formeln::geschuetzt({u"A1"_qs, u"B1"_qs}, u"A1/B1"_qs),
                 u"IF(COUNT(A1,B1)=2,IFERROR(A1/B1,\"\"),\"\")"_qs);
    }

    void sumsAreFormedInTwoParts()
    {
        QCOMPARE(formeln::genaueSumme(u"a"_qs, u"s"_qs),
                 u"SUM(SUMPRODUCT(TRUNC(a/s))*s,SUMPRODUCT(a-TRUNC(a/s)*s))"_qs);
    }

    void stepsArePowersOfTwoBelowTheLargestTerm()
    {
        QCOMPARE(schritt({96.0}), std::exp2(6 - 26));
        QCOMPARE(schritt({3.0, 3.0}), std::exp2(3 - 26));
        QCOMPARE(schritt({0.0}), 1.0);
        QCOMPARE(schritt({1e200, 1e200}), 1.0);
        QCOMPARE(schritt({1e-200, 1e-200}), std::exp2(-1000));
        QCOMPARE(schrittformel({u"x"_qs, u"y"_qs}),
                 u"IFERROR(2^MAX(INT(LOG(x,2)+LOG(y,2))-26,-1000),1)"_qs);
        QCOMPARE(abstand({{1.0, 5.0, 2.0}, false, {}}, 2.0), 3.0);
        QCOMPARE(abstand({}, 2.0), 0.0);
    }
};

REGISTER_TEST(TestFormeln)
#include "tst_formeln.moc"
