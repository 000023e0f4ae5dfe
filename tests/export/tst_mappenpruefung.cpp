#include "core/runtimeerror.h"
#include "export/mappenpruefung.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

// Packs the parts, given as name, text, name, text ..., with another program.
bool packe(const QString &path, const QStringList &parts)
{
    bool good = false;
    starteProgramm(u"/usr/bin/python3"_qs,
                   QStringList{u"-c"_qs,
                               u"import sys,zipfile\n"
                               u"z=zipfile.ZipFile(sys.argv[1],'w',zipfile.ZIP_DEFLATED)\n"
                               u"for n,t in zip(sys.argv[2::2],sys.argv[3::2]): z.writestr(n,t)\n"
                               u"z.close()"_qs,
                               path} +
                       parts,
                   &good);
    return good;
}

int pruefe(const QString &path, int rows)
{
    try {
        return pruefeMappe(path, {{u"s.xml"_qs, rows}}, [](auto, auto) { return true; }) ? 0 : -1;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

const QString anfang = u"<?xml version=\"1.0\"?>\n<worksheet xmlns=\"x\">"_qs;

} // namespace

class TestMappenpruefung : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QFile::exists(u"/usr/bin/python3"_qs))
            QSKIP("python3 is not installed");
    }

    void whatIsMissingIsFound_data()
    {
        QTest::addColumn<QStringList>("parts");
        QTest::addColumn<int>("code");
        const QString rows = u"<row r=\"1\"></row><row r=\"2\"></row>"_qs;
        const QString end = u"</worksheet>"_qs;
        QTest::newRow("complete") << QStringList{u"s.xml"_qs, anfang + rows + end} << 0;
        QTest::newRow("a line break at the end")
            << QStringList{u"s.xml"_qs, anfang + rows + end + u'\n'} << 0;
        QTest::newRow("an empty root") << QStringList{u"s.xml"_qs, anfang + rows + end, u"b.xml"_qs,
                                                      u"<?xml version=\"1.0\"?>\n<cp/>"_qs}
                                       << 0;
        QTest::newRow("a row too few")
            << QStringList{u"s.xml"_qs, anfang + u"<row r=\"1\"></row>"_qs + end} << 61;
        const QString half = u"<row r=\"1\"></row><row r=\"2\"><c r=\"A2\">"_qs;
        QTest::newRow("cut within a row's value, with an end behind it")
            << QStringList{u"s.xml"_qs, anfang + half + u"<v>1"_qs + end} << 61;
        QTest::newRow("cut behind a cell of it")
            << QStringList{u"s.xml"_qs, anfang + half + u"<v>1</v></c>"_qs + end} << 61;
        QTest::newRow("cut within a tag of it")
            << QStringList{u"s.xml"_qs, anfang + half + u"<v"_qs + end} << 61;
        QTest::newRow("an end too many")
            << QStringList{u"s.xml"_qs, anfang + rows + end + end} << 61;
        QTest::newRow("cut within") << QStringList{u"s.xml"_qs, anfang + rows + u"<co"_qs} << 61;
        QTest::newRow("cut after an element") << QStringList{u"s.xml"_qs, anfang + rows} << 61;
        QTest::newRow("empty part")
            << QStringList{u"s.xml"_qs, anfang + rows + end, u"b.xml"_qs, u""_qs} << 61;
        QTest::newRow("another part cut")
            << QStringList{u"s.xml"_qs, anfang + rows + end, u"b.xml"_qs, u"<b><c></c>"_qs} << 61;
        QTest::newRow("no sheet") << QStringList{u"b.xml"_qs, u"<b></b>"_qs} << 61;
    }

    void whatIsMissingIsFound()
    {
        QFETCH(QStringList, parts);
        QFETCH(int, code);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(packe(path, parts));
        QCOMPARE(pruefe(path, 2), code);
    }

    void rowsAreCountedAcrossPieces()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        constexpr int rows = 100'000;
        bool good = false;
        starteProgramm(
            u"/usr/bin/python3"_qs,
            {u"-c"_qs,
             u"import sys,zipfile\n"
             u"zipfile.ZipFile(sys.argv[1],'w').writestr('s.xml',"
             u"'<w>'+''.join('<row r=\"%d\"/>'%i for i in range(%1))+'</w>')"_qs.arg(rows),
             path},
            &good);
        QVERIFY(good);
        QCOMPARE(pruefe(path, rows), 0);
        QCOMPARE(pruefe(path, rows + 1), 61);
    }

    void progressGrowsWithWhatIsRead()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        const QString text = anfang + u"<a/>"_qs.repeated(20'000) + u"</worksheet>"_qs;
        QVERIFY(packe(path, {u"a.xml"_qs, text, u"b.xml"_qs, text, u"s.xml"_qs, text}));
        std::vector<std::uint64_t> seen;
        const auto note = [&](std::uint64_t read, std::uint64_t total) {
            seen.push_back(read);
            return total == 3 * static_cast<std::uint64_t>(text.size());
        };
        QVERIFY(pruefeMappe(path, {{u"s.xml"_qs, 0}}, note));
        QVERIFY(seen.size() >= 3);
        QVERIFY(std::is_sorted(seen.begin(), seen.end()));
        QCOMPARE(seen.back(), 3 * static_cast<std::uint64_t>(text.size()));
        QVERIFY(!pruefeMappe(path, {{u"s.xml"_qs, 0}}, [](auto read, auto total) {
            return read < total; // at the very end
        }));
    }

    void damagedBytesAreFound()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(packe(path, {u"s.xml"_qs, anfang + QString(5000, u'x') + u"</worksheet>"_qs}));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.seek(60);
        const QByteArray one = file.read(1);
        file.seek(60);
        file.write(QByteArray(1, static_cast<char>(one[0] ^ 0x55)));
        file.close();
        QVERIFY(pruefe(path, 0) > 0);
        QVERIFY(file.resize(file.size() / 2));
        QVERIFY(pruefe(path, 0) > 0);
        QVERIFY(file.resize(0));
        QVERIFY(pruefe(path, 0) > 0);
    }
};

REGISTER_TEST(TestMappenpruefung)
#include "tst_mappenpruefung.moc"
