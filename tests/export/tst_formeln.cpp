#include "export/formeln.h"
#include "tests/support/testregistry.h"

#include <QTest>

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
};

REGISTER_TEST(TestFormeln)
#include "tst_formeln.moc"
