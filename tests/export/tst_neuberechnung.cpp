// Another spreadsheet program recalculates the files and must come to the values that are stored.

#include "export/tabellenausgabe.h"
#include "tests/export/beispiele.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <cmath>

namespace {

QString dateiname(const char *example)
{
    return QString::fromLatin1(example).replace(u' ', u'_').replace(u',', u'_') + u".xlsx"_qs;
}

// A profile in which every loaded file is recalculated, in German.
bool schreibeProfil(const QString &folder)
{
    if (!QDir().mkpath(folder + u"/user"_qs))
        return false;
    QFile file(folder + u"/user/registrymodifications.xcu"_qs);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const auto item = [](const char *path, const char *name, const char *value) {
        return QByteArray("<item oor:path=\"/org.openoffice.") + path + "\"><prop oor:name=\"" +
               name + "\" oor:op=\"fuse\"><value>" + value + "</value></prop></item>\n";
    };
    file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\" "
               "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
               "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n" +
               item("Office.Calc/Formula/Load", "OOXMLRecalcMode", "0") +
               item("Setup/L10N", "ooSetupSystemLocale", "de-DE") + "</oor:items>\n");
    return true;
}

// To twelve digits. Differences that should be 0 leave rounding noise of no meaning in either
// program; the examples' values are of the size of 1 and more.
bool isClose(double recalculated, double stored)
{
    constexpr double noise = 1e-13;
    return std::abs(recalculated - stored) <= 1e-12 * std::abs(stored) ||
           (std::abs(recalculated) < noise && std::abs(stored) < noise);
}

} // namespace

class TestNeuberechnung : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
        if (office.isEmpty() || !GeleseneMappe::moeglich())
            QSKIP("LibreOffice Calc or python3-openpyxl is not installed");
        QVERIFY(m_folder.isValid());
        QVERIFY(QDir(m_folder.path()).mkpath(u"neu"_qs));
        QStringList files;
        for (const Beispiel &example : beispiele()) {
            files += m_folder.filePath(dateiname(example.name));
            QVERIFY(schreibeTabelle(*dokument(example), files.last(),
                                    QDateTime::fromSecsSinceEpoch(0)));
        }
        files += m_folder.filePath(u"falsch.xlsx"_qs);
        bool good = false;
        starteProgramm(u"/usr/bin/python3"_qs,
                       {QStringLiteral(SCRIPTS "/faelsche_wert.py"), files.first(), files.last()},
                       &good);
        QVERIFY(good);
        const QString profile = m_folder.filePath(u"profil"_qs);
        QVERIFY(schreibeProfil(profile));
        starteProgramm(
            office,
            QStringList{u"-env:UserInstallation="_qs + QUrl::fromLocalFile(profile).toString(),
                        u"--headless"_qs, u"--convert-to"_qs, u"xlsx"_qs, u"--outdir"_qs,
                        m_folder.filePath(u"neu"_qs)} +
                files,
            &good, 300000);
        QVERIFY(good);
        m_ready = true;
    }

    void aFalseStoredValueIsCorrected()
    {
        if (!m_ready)
            QSKIP("nothing was recalculated");
        const auto wrong = GeleseneMappe::lies(m_folder.filePath(u"falsch.xlsx"_qs));
        const auto right = GeleseneMappe::lies(m_folder.filePath(u"neu/falsch.xlsx"_qs));
        QCOMPARE(wrong.zelle(u"Auswertung"_qs, u"B3"_qs).wert.toDouble(), 123456.0);
        const double mean = dokument(beispiele().front())->StatistikMittelwert(mDirekt);
        QVERIFY(isClose(right.zelle(u"Auswertung"_qs, u"B3"_qs).wert.toDouble(), mean));
    }

    void recalculatedCellsHoldTheStoredValues_data()
    {
        QTest::addColumn<QString>("file");
        for (const Beispiel &example : beispiele())
            QTest::newRow(example.name) << dateiname(example.name);
    }

    void recalculatedCellsHoldTheStoredValues()
    {
        if (!m_ready)
            QSKIP("nothing was recalculated");
        QFETCH(QString, file);
        const auto stored = GeleseneMappe::lies(m_folder.filePath(file));
        const auto recalculated = GeleseneMappe::lies(m_folder.filePath(u"neu/"_qs + file));
        int compared = 0;
        for (const QString &sheet : stored.blaetter()) {
            for (const QString &address : stored.zellen(sheet)) {
                const GeleseneZelle ours = stored.zelle(sheet, address);
                if (ours.formel.isEmpty())
                    continue;
                const GeleseneZelle theirs = recalculated.zelle(sheet, address);
                const QString where = sheet + u'!' + address + u": stored "_qs +
                                      ours.wert.toVariant().toString() + u", recalculated "_qs +
                                      theirs.wert.toVariant().toString() + u' ' + ours.formel;
                if (ours.wert.isDouble())
                    QVERIFY2(theirs.wert.isDouble() &&
                                 isClose(theirs.wert.toDouble(), ours.wert.toDouble()),
                             qPrintable(where));
                else if (ours.leer())
                    QVERIFY2(theirs.leer(), qPrintable(where));
                else
                    QVERIFY2(theirs.wert == ours.wert, qPrintable(where));
                ++compared;
            }
        }
        QVERIFY(compared > 30);
    }

private:
    QTemporaryDir m_folder;
    bool m_ready = false;
};

REGISTER_TEST(TestNeuberechnung)
#include "tst_neuberechnung.moc"
