#include "core/runtimeerror.h"
#include "export/arbeitsmappe.h"
#include "export/mappenpruefung.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include <QDateTime>
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

int pruefe(const QString &path, int rows, std::int64_t textbytes = 0)
{
    try {
        return pruefeMappe(path, {{u"s.xml"_qs, {rows, textbytes}}},
                           [](auto, auto) { return true; })
                   ? 0
                   : -1;
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

    void whatIsMissingWithinATextIsFound_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<int>("missing");
        QTest::newRow("nothing")
            << u"<c><is><t>aß&lt;b</t></is></c><c><f>1&amp;2</f><v>12</v></c>"_qs << 0;
        QTest::newRow("a text with blanks")
            << u"<c><is><t xml:space=\"preserve\"> ß&lt;b</t></is></c><c><f>1&amp;2</f></c>"_qs
            << 0;
        QTest::newRow("what is no text")
            << u"<c><is><t>aß&lt;b</t></is></c><v>9</v><f>1&amp;2</f><tp>x</tp><fx>y</fx><t/>"_qs
            << 0;
        QTest::newRow("one character of a text")
            << u"<c><is><t>aß&lt;</t></is></c><c><f>1&amp;2</f></c>"_qs << 1;
        QTest::newRow("half of a character")
            << u"<c><is><t>a?&lt;b</t></is></c><c><f>1&amp;2</f></c>"_qs << 1;
        QTest::newRow("a piece of a formula")
            << u"<c><is><t>aß&lt;b</t></is></c><c><f>1</f></c>"_qs << 2;
        QTest::newRow("from one cell into the next") << u"<c><is><t>aß</t></is></c>"_qs << 5;
    }

    void whatIsMissingWithinATextIsFound()
    {
        QFETCH(QString, row);
        QFETCH(int, missing);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(packe(path, {u"s.xml"_qs, anfang + u"<row>"_qs + row + u"</row></worksheet>"_qs}));
        constexpr int whole = 8;
        QCOMPARE(pruefe(path, 1, whole), missing == 0 ? 0 : 61);
        QCOMPARE(pruefe(path, 1, whole - missing), 0);
    }

    void textsOfAnyKindAreGood_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << u"Verdichtung"_qs;
        QTest::newRow("umlauts") << u"Maß ²°€ Übergänge"_qs;
        QTest::newRow("marks of XML") << u"<&>\"'&amp;&#10;]]>"_qs;
        QTest::newRow("a formula") << u"=1+1"_qs;
        QTest::newRow("blanks around") << u"  a  "_qs;
        QTest::newRow("a blank") << u" "_qs;
        QTest::newRow("tabs and line ends") << u"\ta\nb\r\nc\rd\n"_qs;
        QTest::newRow("unusual blanks") << u"\u00a0a\u2028b\u0085c\u00a0"_qs;
        QTest::newRow("looks like an escape") << u"_x0001_ _x005F_"_qs;
        QTest::newRow("above the base plane") << u"\U0001F600"_qs;
        QTest::newRow("half of a pair") << QString(QChar(0xd83d));
        QTest::newRow("no character") << u"\uffff\ufffe\ufeff"_qs;
        QString controls;
        for (char16_t c = 0; c < 0xa0; ++c)
            controls += QChar(c);
        QTest::newRow("control characters") << controls;
        QTest::newRow("as long as can be") << QString(32767, u'x');
        QTest::newRow("too long") << QString(40000, u'ß');
        QTest::newRow("long and all marks") << QString(32767, u'&');
        QTest::newRow("long and all line ends") << QString(32767, u'\n');
        QTest::newRow("long and all control characters") << QString(32767, u'\u0001');
    }

    void textsOfAnyKindAreGood()
    {
        QFETCH(QString, text);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        Arbeitsmappe book(path, QDateTime::currentDateTimeUtc());
        Blatt sheet(book, u"Blatt"_qs);
        sheet.text(0, 0, text);
        sheet.text(0, 1, text, {.fett = true});
        sheet.formel(1, 0, u"A1&\"<ß>\""_qs, text);
        sheet.formel(1, 1, u"1+1"_qs, 2.0);
        sheet.verbinde(2, 0, 2, {.umbruch = true});
        sheet.text(2, 0, text, {.umbruch = true});
        const Blattumfang expected = sheet.umfang();
        book.close();
        const auto good = [&](const Blattumfang &umfang) {
            try {
                return pruefeMappe(path, {{u"xl/worksheets/sheet1.xml"_qs, umfang}},
                                   [](auto, auto) { return true; });
            } catch (const RunTimeError &) {
                return false;
            }
        };
        QVERIFY(good(expected));
        QVERIFY(!good({expected.zeilen, expected.textbytes + 1}));
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
        QVERIFY(pruefeMappe(path, {{u"s.xml"_qs, {0, 0}}}, note));
        QVERIFY(seen.size() >= 3);
        QVERIFY(std::is_sorted(seen.begin(), seen.end()));
        QCOMPARE(seen.back(), 3 * static_cast<std::uint64_t>(text.size()));
        QVERIFY(!pruefeMappe(path, {{u"s.xml"_qs, {0, 0}}}, [](auto read, auto total) {
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
