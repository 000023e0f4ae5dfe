#include "batch/ausgabeziele.h"
#include "tests/support/testregistry.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class TestAusgabeziele : public QObject
{
    Q_OBJECT

private slots:
    void oneFileGoesWhereItIsSaid()
    {
        const Ausgabeziele targets = ausgabeziele({u"a.xml"_qs}, u"ziel.xlsx"_qs, u".xlsx"_qs);
        QVERIFY(targets.ordner.isEmpty());
        QCOMPARE(targets.dateien, QStringList(u"ziel.xlsx"_qs));
    }

    void oneFileGoesIntoAFolder()
    {
        QTemporaryDir folder;
        QCOMPARE(ausgabeziele({u"x/a.xml"_qs}, folder.path(), u".pdf"_qs).dateien,
                 QStringList(folder.filePath(u"a.pdf"_qs)));
        QCOMPARE(ausgabeziele({u"x/a.xml"_qs}, u"neu/"_qs, u".xlsx"_qs).dateien,
                 QStringList(u"neu/a.xlsx"_qs));
    }

    void namesFollowTheFilesAndClashesGetANumber()
    {
        const Ausgabeziele targets =
            ausgabeziele({u"x/a.xml"_qs, u"y/a.xml"_qs, u"A.XML"_qs, u"a (2).xml"_qs,
                          u"Maß.2003.xml"_qs, u"MASS.2003.xml"_qs, u".xml"_qs, u"ohne"_qs},
                         u"ziel"_qs, u".xlsx"_qs);
        QCOMPARE(targets.ordner, u"ziel"_qs);
        QCOMPARE(targets.dateien,
                 QStringList({u"ziel/a.xlsx"_qs, u"ziel/a (2).xlsx"_qs, u"ziel/A (3).xlsx"_qs,
                              u"ziel/a (2) (2).xlsx"_qs, u"ziel/Maß.2003.xlsx"_qs,
                              u"ziel/MASS.2003.xlsx"_qs, u"ziel/Kalibrierung.xlsx"_qs,
                              u"ziel/ohne.xlsx"_qs}));
    }

    void signsOfPlaceholdersInNamesAreKept()
    {
        QCOMPARE(
            ausgabeziele({u"x/5%2 %1.xml"_qs, u"y/5%2 %1.xml"_qs}, u"z"_qs, u".pdf"_qs).dateien,
            QStringList({u"z/5%2 %1.pdf"_qs, u"z/5%2 %1 (2).pdf"_qs}));
    }

    // Counting from 2 again for every file would take longer than a test may.
    void manyEqualNamesTakeNoTime()
    {
        constexpr int count = 200'000;
        const Ausgabeziele targets =
            ausgabeziele(QStringList(count, u"a.xml"_qs), u"ziel"_qs, u".xlsx"_qs);
        QCOMPARE(targets.dateien.last(), u"ziel/a (%1).xlsx"_qs.arg(count));
        QCOMPARE(QSet<QString>(targets.dateien.begin(), targets.dateien.end()).size(), count);
    }
};

REGISTER_TEST(TestAusgabeziele)
#include "tst_ausgabeziele.moc"
