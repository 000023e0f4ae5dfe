#include "batch/tabellenziele.h"
#include "tests/support/testregistry.h"

#include <QTemporaryDir>
#include <QTest>

class TestTabellenziele : public QObject
{
    Q_OBJECT

private slots:
    void oneFileGoesWhereItIsSaid()
    {
        const Tabellenziele targets = tabellenziele({u"a.xml"_qs}, u"ziel.xlsx"_qs);
        QVERIFY(targets.ordner.isEmpty());
        QCOMPARE(targets.dateien, QStringList(u"ziel.xlsx"_qs));
    }

    void oneFileGoesIntoAFolder()
    {
        QTemporaryDir folder;
        QCOMPARE(tabellenziele({u"x/a.xml"_qs}, folder.path()).dateien,
                 QStringList(folder.filePath(u"a.xlsx"_qs)));
        QCOMPARE(tabellenziele({u"x/a.xml"_qs}, u"neu/"_qs).dateien, QStringList(u"neu/a.xlsx"_qs));
    }

    void namesFollowTheFilesAndClashesGetANumber()
    {
        const Tabellenziele targets =
            tabellenziele({u"x/a.xml"_qs, u"y/a.xml"_qs, u"A.XML"_qs, u"a (2).xml"_qs,
                           u"Maß.2003.xml"_qs, u"MASS.2003.xml"_qs, u".xml"_qs, u"ohne"_qs},
                          u"ziel"_qs);
        QCOMPARE(targets.ordner, u"ziel"_qs);
        QCOMPARE(targets.dateien,
                 QStringList({u"ziel/a.xlsx"_qs, u"ziel/a (2).xlsx"_qs, u"ziel/A (3).xlsx"_qs,
                              u"ziel/a (2) (2).xlsx"_qs, u"ziel/Maß.2003.xlsx"_qs,
                              u"ziel/MASS.2003.xlsx"_qs, u"ziel/Kalibrierung.xlsx"_qs,
                              u"ziel/ohne.xlsx"_qs}));
    }
};

REGISTER_TEST(TestTabellenziele)
#include "tst_tabellenziele.moc"
