#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/xmlpruefung.h"

#include <QTest>

namespace {

// The bytes of a literal that may hold zeros.
template <std::size_t Size>
QByteArray bytes(const char (&literal)[Size])
{
    return QByteArray(literal, Size - 1);
}

// The reason for which the bytes are refused, empty where they are read.
QString refusal(const QByteArray &file)
{
    const auto error = errorOf([&] { rowsOf(file); });
    if (!error)
        return {};
    return error->number() == 321 ? error->description()
                                  : u"another error: "_qs + error->description();
}

QByteArray smallFile()
{
    return "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882' "
           "xmlns:rs='urn:schemas-microsoft-com:rowset' xmlns:z='#RowsetSchema'>"
           "<s:Schema><s:ElementType name='row'><s:AttributeType name='Variable'/>"
           "<s:AttributeType name='Wert'/></s:ElementType></s:Schema>"
           "<rs:data><!-- ä --><z:row Variable='k' Wert='&#228;ö&amp;'></z:row><![CDATA[x]]>"
           "<?p i?></rs:data></xml>";
}

} // namespace

class RowsetRefusalTest : public QObject
{
    Q_OBJECT

private slots:
    void file_cut_off_anywhere_is_refused();
    void lost_or_doubled_byte_of_markup_never_passes_as_other_rows();
    void bytes_of_no_such_file_are_refused_data();
    void bytes_of_no_such_file_are_refused();
    void value_that_no_xml_can_hold_is_refused_data();
    void value_that_no_xml_can_hold_is_refused();
    void characters_at_the_limits_are_read_data();
    void characters_at_the_limits_are_read();
    void reason_names_the_line();
    void reason_stays_short_and_printable();
    void hostile_file_takes_no_more_than_linear_time_data();
    void hostile_file_takes_no_more_than_linear_time();
    void more_markup_than_a_calibration_can_have_is_refused();
};

void RowsetRefusalTest::file_cut_off_anywhere_is_refused()
{
    const QByteArray file = smallFile();
    QCOMPARE(rowsOf(file), (Rows{{u"k"_qs, u"äö&"_qs}}));
    for (qsizetype length = 0; length < file.size(); ++length) {
        if (refusal(file.left(length)).startsWith(u"Ungültiges Dateiformat: "_qs))
            continue;
        QFAIL(qPrintable(u"read when cut after %1 bytes"_qs.arg(length)));
    }
    const QByteArray wide =
        QByteArray("\xff\xfe") +
        QByteArray(reinterpret_cast<const char *>(QString::fromUtf8(file).utf16()),
                   QString::fromUtf8(file).size() * 2);
    QCOMPARE(rowsOf(wide), (Rows{{u"k"_qs, u"äö&"_qs}}));
    for (qsizetype length = 0; length < wide.size(); ++length)
        QVERIFY2(!refusal(wide.left(length)).isEmpty(), qPrintable(QString::number(length)));
}

// Damage inside names and values can't be told from other names and values. Damage of any other
// byte must not give a row that the file did not hold.
void RowsetRefusalTest::lost_or_doubled_byte_of_markup_never_passes_as_other_rows()
{
    const QByteArray file = smallFile();
    for (qsizetype i = 0; i < file.size(); ++i) {
        if (!QByteArray("<>'=").contains(file[i]))
            continue;
        for (const qsizetype length : {0, 2}) {
            QByteArray damaged = file;
            damaged.replace(i, 1, QByteArray(length, file[i]));
            Rows rows;
            if (errorNumber([&] { rows = rowsOf(damaged); }) == 321)
                continue;
            for (const auto &[key, value] : rows)
                QVERIFY2(key == u"k"_qs && value.startsWith(u'ä'), damaged.constData());
        }
    }
}

void RowsetRefusalTest::bytes_of_no_such_file_are_refused_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray good = tableWithValue("v");
    const auto with = [&](const char *from, const char *to) {
        QByteArray changed = good;
        changed.replace(from, to);
        return changed;
    };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("<");
    QTest::newRow("blanks only") << QByteArray(" \r\n\t");
    QTest::newRow("mark only") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("UTF-16 mark only") << QByteArray("\xff\xfe");
    QTest::newRow("plain text") << QByteArray("Messwerte 1;2;3");
    QTest::newRow("binary") << bytes("\x7f"
                                     "ELF\x02\x01\x01\0\0\0\0\0\x03\0>\0\x01\0");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("compressed") << QByteArray::fromHex("504b0304140000000800");
    QTest::newRow("UTF-32") << bytes("\xff\xfe\0\0<\0\0\0x\0\0\0m\0\0\0l\0\0\0");
    QTest::newRow("UTF-16 of an odd number of bytes") << bytes("\xff\xfe<\0x\0m");
    const auto wide = [](const QString &text) {
        return QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
    };
    const QString table = QString::fromUtf8(good);
    QVERIFY(refusal(wide(table)).isEmpty());
    for (const char16_t lone : {u'\xd800', u'\xdbff', u'\xdc00', u'\xdfff'}) {
        QTest::addRow("UTF-16 with U+%x alone", lone)
            << wide(QString(table).replace(u"'v'"_qs, u"'"_qs + QChar(lone) + u"v'"_qs));
    }
    QTest::newRow("UTF-16 with U+FFFF")
        << wide(QString(table).replace(u"'v'"_qs, u"'"_qs + QChar(0xffff) + u"v'"_qs));
    QTest::newRow("two marks") << "\xef\xbb\xbf\xef\xbb\xbf" + good;
    QTest::newRow("mark inside") << "<?p?>\xef\xbb\xbf" + good;

    QTest::newRow("wrong root") << with("xml", "kalibrierung");
    QTest::newRow("root in capitals") << with("xml ", "XML ").replace("</xml>", "</XML>");
    QTest::newRow("page of the web") << QByteArray("<html><body>Fehler 404</body></html>");
    QTest::newRow("no schema") << good.left(good.indexOf("<s:Schema")) +
                                      good.mid(good.indexOf("<rs:data>"));
    QTest::newRow("no columns") << with("AttributeType", "attributType");
    QTest::newRow("only the first column") << with("name='Wert'", "name='Wert2'");
    QTest::newRow("only the second column") << with("name='Variable'", "name='variable'");
    QTest::newRow("a column twice") << with("name='Wert'", "name='Wert' rs:name='Variable'");
    QTest::newRow("a column twice, under an alias")
        << with("<s:extends", "<s:AttributeType name='c3' rs:name='Wert'/><s:extends");
    QTest::newRow("row type without a name") << with("ElementType name='row'", "ElementType");
    QTest::newRow("two row types") << with("</s:Schema>", "<s:ElementType name='r2'/></s:Schema>");
    QTest::newRow("row type within a row type")
        << with("<s:extends", "<s:ElementType name='r2'/><s:extends");
    QTest::newRow("no data block") << with("rs:data", "rs:daten");
    QTest::newRow("data block of another namespace")
        << with("urn:schemas-microsoft-com:rowset", "urn:anders");
    QTest::newRow("schema of another namespace") << with("uuid:BDC6E3F0", "uuid:00000000");
    QTest::newRow("unbound prefix of an element") << with("rs:data", "r:data");
    QTest::newRow("unbound prefix of an attribute") << with(" Wert=", " p:x='' Wert=");
    QTest::newRow("prefix unbound again") << with("<rs:data>", "<rs:data xmlns:z=''>");
    QTest::newRow("rows within rows")
        << tableOf("<z:row Variable='a' Wert='b'><z:row Variable='c' Wert='d'/></z:row>");

    const QByteArray doctype = "<!DOCTYPE xml [<!ENTITY a 'x'>]>";
    QTest::newRow("document type") << doctype + good;
    QTest::newRow("document type without entities") << "<!DOCTYPE xml>" + good;
    QTest::newRow("document type behind the declaration")
        << "<?xml version='1.0'?>\n" + doctype + good;
    QTest::newRow("document type inside") << with("<rs:data>", "<rs:data><!DOCTYPE xml>");
    QTest::newRow("document type from outside")
        << "<!DOCTYPE xml SYSTEM 'file:///etc/passwd'>" + good;
    QByteArray bomb = "<!DOCTYPE xml [<!ENTITY a0 'x'>";
    for (int i = 1; i < 60; ++i) {
        const QByteArray inner = "&a" + QByteArray::number(i - 1) + ";";
        bomb += "<!ENTITY a" + QByteArray::number(i) + " '" + inner.repeated(10) + "'>";
    }
    QTest::newRow("entity bomb") << bomb + "]>" + tableWithValue("&a59;");
    QTest::newRow("entity declaration inside") << with("<rs:data>", "<rs:data><!ENTITY a 'x'>");
    QTest::newRow("entity from outside")
        << "<!DOCTYPE xml [<!ENTITY a SYSTEM 'file:///etc/passwd'>]>" + tableWithValue("&a;");

    QTest::newRow("text before the root") << "x" + good;
    QTest::newRow("text after the root") << good + "x";
    QTest::newRow("reference after the root") << good + "&#32;";
    QTest::newRow("characters after the root") << good + "<![CDATA[x]]>";
    QTest::newRow("zero after the root") << good + QByteArray(1, '\0');
    QTest::newRow("two roots") << good + "<xml/>";
    QTest::newRow("the same file twice") << good + good;
    QTest::newRow("end tag after the root") << good + "</xml>";
    QTest::newRow("only an end tag") << QByteArray("</xml>");
    QTest::newRow("end tag of another element") << with("</rs:data>", "</rs:daten>");
    QTest::newRow("end tags exchanged") << with("</rs:data>\r\n</xml>", "</xml></rs:data>");
    QTest::newRow("end tag with attributes") << with("</rs:data>", "</rs:data a='b'>");
    QTest::newRow("tag without a name") << with("<rs:data>", "<><rs:data>");
    QTest::newRow("blank before the name") << with("<rs:data>", "< rs:data>");
    QTest::newRow("open comment") << good + "<!-- ";
    QTest::newRow("open instruction") << good + "<?p ";
    QTest::newRow("open characters") << with("<rs:data>", "<rs:data><![CDATA[");
    QTest::newRow("other encoding declared")
        << "<?xml version='1.0' encoding='ISO-8859-1'?>" + good;

    QTest::newRow("attribute twice") << with(" Wert='v'", " Wert='v' Wert='w'");
    QTest::newRow("attribute twice among many")
        << with(" Wert='v'", " a='' b='' c='' d='' e='' f='' g='' h='' Wert='v' i='' Wert='w'");
    QTest::newRow("attribute twice in the schema")
        << with("rs:number='1'", "rs:number='1' rs:number='2'");
    QTest::newRow("attribute without a value") << with("Wert='v'", "Wert");
    QTest::newRow("attribute without quotes") << with("Wert='v'", "Wert=v");
    QTest::newRow("attribute without a name") << with("Wert='v'", "='v'");
    QTest::newRow("attribute with the other quote") << with("Wert='v'", "Wert='v\"");
    QTest::newRow("attributes without a blank") << with(" Wert=", "Wert=");
    QTest::newRow("attribute name with a digit first") << with(" Wert=", " 1Wert=");
    QTest::newRow("slash without a bracket") << with("'v'/>", "'v'/ >");
    QTest::newRow("instruction without a name") << with("<rs:data>", "<rs:data><? ?>");
}

void RowsetRefusalTest::bytes_of_no_such_file_are_refused()
{
    QFETCH(QByteArray, file);
    const QString reason = refusal(file);
    QVERIFY2(reason.startsWith(u"Ungültiges Dateiformat: "_qs), qPrintable(reason));
}

void RowsetRefusalTest::value_that_no_xml_can_hold_is_refused_data()
{
    QTest::addColumn<QByteArray>("value");
    const auto add = [](const char *name, const QByteArray &value) {
        QTest::newRow(name) << value;
    };
    for (int c = 0; c < 0x20; ++c) {
        if (c == '\t' || c == '\r' || c == '\n')
            continue;
        QTest::addRow("control character %d", c) << QByteArray(1, static_cast<char>(c));
        QTest::addRow("reference to control character %d", c) << "&#" + QByteArray::number(c) + ";";
    }
    add("overlong slash, two bytes", "\xc0\xaf");
    add("overlong delete, two bytes", "\xc1\xbf");
    add("overlong slash, three bytes", "\xe0\x80\xaf");
    add("largest overlong of three bytes", "\xe0\x9f\xbf");
    add("overlong slash, four bytes", "\xf0\x80\x80\xaf");
    add("largest overlong of four bytes", "\xf0\x8f\xbf\xbf");
    add("overlong zero", "\xc0\x80");
    add("five bytes", "\xf8\x88\x80\x80\x80");
    add("six bytes", "\xfc\x84\x80\x80\x80\x80");
    add("first high surrogate", "\xed\xa0\x80");
    add("last low surrogate", "\xed\xbf\xbf");
    add("pair of surrogates", "\xed\xa0\xb4\xed\xb4\x9e");
    add("above the last code point", "\xf4\x90\x80\x80");
    add("far above the last code point", "\xf7\xbf\xbf\xbf");
    add("U+FFFE", "\xef\xbf\xbe");
    add("U+FFFF", "\xef\xbf\xbf");
    add("continuation alone", "\x80");
    add("lead alone", "\xc3");
    add("lead before a letter", "\xe2\x82"
                                "a");
    add("byte FE", "\xfe");
    add("Latin-1", "Pr\xfc"
                   "fung");
    add("reference to a high surrogate", "&#xD834;");
    add("reference to a pair of surrogates", "&#xD834;&#xDD1E;");
    add("reference to the last low surrogate", "&#57343;");
    add("reference to U+FFFE", "&#xFFFE;");
    add("reference to U+FFFF", "&#65535;");
    add("reference above the last code point", "&#x110000;");
    add("reference beyond 32 bits", "&#x100000041;");
    add("reference beyond 64 bits", "&#99999999999999999999999999;");
    add("reference without digits", "&#;");
    add("hexadecimal reference without digits", "&#x;");
    add("reference with a capital X", "&#X41;");
    add("reference with a sign", "&#+65;");
    add("reference with a minus", "&#-65;");
    add("reference with a blank", "&# 65;");
    add("decimal reference with letters", "&#6a;");
    add("reference without semicolon", "&#65 ");
    add("bare ampersand", "a & b");
    add("ampersand at the end", "a &");
    add("unknown entity", "&auml;");
    add("entity in capitals", "&AMP;");
    add("entity without a name", "&;");
    add("less-than", "a < b");
    add("tag inside", "<b/>");
}

void RowsetRefusalTest::value_that_no_xml_can_hold_is_refused()
{
    QFETCH(QByteArray, value);
    const QString expected = u"Ungültiges Dateiformat: Zeile 17: "_qs;
    // In a value that is used, in one that is not, and in text between the elements.
    const QByteArray rows[] = {"\t<z:row Variable='k' Wert='" + value + "'/>",
                               "\t<z:row Variable='" + value + "' Wert='x'/>",
                               "\t<z:row Variable='k' Wert='x' fremd=\"" + value + "\"/>"};
    for (const QByteArray &row : rows) {
        const QString reason = refusal(tableOf(row));
        QVERIFY2(reason.startsWith(expected), qPrintable(reason));
    }
    if (!value.contains('<'))
        QVERIFY(refusal(tableOf("\t" + value)).startsWith(expected));
}

void RowsetRefusalTest::characters_at_the_limits_are_read_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first of two bytes") << QByteArray("\xc2\x80") << u"\u0080"_qs;
    QTest::newRow("last of two bytes") << QByteArray("\xdf\xbf") << u"\u07ff"_qs;
    QTest::newRow("first of three bytes") << QByteArray("\xe0\xa0\x80") << u"\u0800"_qs;
    QTest::newRow("before the surrogates") << QByteArray("\xed\x9f\xbf") << u"\ud7ff"_qs;
    QTest::newRow("behind the surrogates") << QByteArray("\xee\x80\x80") << u"\ue000"_qs;
    QTest::newRow("U+FFFD") << QByteArray("\xef\xbf\xbd") << u"\ufffd"_qs;
    QTest::newRow("byte order mark in a value") << QByteArray("a\xef\xbb\xbf") << u"a\ufeff"_qs;
    QTest::newRow("noncharacter that XML allows") << QByteArray("\xef\xb7\x90") << u"\ufdd0"_qs;
    QTest::newRow("first of four bytes") << QByteArray("\xf0\x90\x80\x80") << u"\U00010000"_qs;
    QTest::newRow("last code point") << QByteArray("\xf4\x8f\xbf\xbf") << u"\U0010ffff"_qs;
    QTest::newRow("references") << QByteArray("&#9;&#xa;&#x0D;&#32;&#x10FFFF;&#xFFFD;&#0000065;")
                                << u"\t\n\r \U0010ffff\ufffdA"_qs;
    QTest::newRow("delete and C1") << QByteArray("\x7f\xc2\x85") << u"\u007f\u0085"_qs;
    QTest::newRow("double escape") << QByteArray("&amp;lt;&#38;#65;") << u"&lt;&#65;"_qs;
    QTest::newRow("two brackets and greater-than") << QByteArray("]]>") << u"]]>"_qs;
}

void RowsetRefusalTest::characters_at_the_limits_are_read()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, expected);
    QCOMPARE(rowsOf(tableWithValue(value)), (Rows{{u"k"_qs, expected}}));
}

void RowsetRefusalTest::reason_names_the_line()
{
    QCOMPARE(refusal("<xml>\n\n<a b='&c;'/></xml>"),
             u"Ungültiges Dateiformat: Zeile 3: unbekannte Zeichenreferenz"_qs);
    QCOMPARE(refusal("<xml>\r\n<!DOCTYPE a>"),
             u"Ungültiges Dateiformat: Zeile 2: Dokumenttyp-Deklarationen sind nicht erlaubt"_qs);
    QCOMPARE(refusal("<xml>\n<a>\n"),
             u"Ungültiges Dateiformat: Zeile 3: die Datei endet zu früh"_qs);
}

void RowsetRefusalTest::reason_stays_short_and_printable()
{
    const QByteArray name = QByteArray("p\xc2\x85").repeated(1'000'000);
    const QString reason = refusal("<xml><" + name + ":e/></xml>");
    QVERIFY2(reason.startsWith(u"Ungültiges Dateiformat: "_qs), qPrintable(reason));
    QVERIFY(reason.size() < 200);
    QVERIFY(refusal("<?xml version='1.0' encoding='" + name + "'?>" + tableWithValue("v")).size() <
            200);
}

void RowsetRefusalTest::hostile_file_takes_no_more_than_linear_time_data()
{
    QTest::addColumn<QByteArray>("file");
    const auto numbered = [](const char *before, int count, const char *behind) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += before + QByteArray::number(i) + behind;
        return text;
    };
    constexpr int many = 200'000;
    const QByteArray rows = QByteArray("<z:row Variable='k' Wert='v'/>").repeated(many);
    QTest::newRow("prefixes on the root")
        << tableOf(rows).replace("<xml ", "<xml " + numbered("xmlns:p", many, "='u' "));
    QTest::newRow("prefixes on the data block") << tableOf(rows).replace(
        "<rs:data>", "<rs:data " + numbered("xmlns:p", many, "='u' ") + ">");
    QTest::newRow("a prefix on every row")
        << tableOf(numbered("<z:row xmlns:p", many, "='u' Variable='k' Wert='v'/>"));
    QTest::newRow("many attributes")
        << tableOf("<e " + numbered("a", 3 * many, "='u' ") + "/>" + rows);
    QTest::newRow("many groups") << tableOf(QByteArray("<rs:insert/><rs:update/>").repeated(many));
    QTest::newRow("many references") << tableWithValue(QByteArray("&#x26;&amp;").repeated(many));
    QTest::newRow("a long list of nulls") << tableOf(
        "<z:row Variable='k' rs:forcenull='" + QByteArray("Wer ").repeated(many) + "'/>" + rows);
    QTest::newRow("many updates in one group")
        << tableOf("<rs:update><rs:original>" + rows + "</rs:original>" + rows + "</rs:update>");
    QTest::newRow("ampersands") << tableWithValue(QByteArray("&").repeated(20 * many));
    QTest::newRow("brackets") << QByteArray("<").repeated(20 * many);
    QTest::newRow("open comments") << "<xml>" + QByteArray("<!--").repeated(10 * many);
    QTest::newRow("open characters") << "<xml>" + QByteArray("<![CDATA[").repeated(10 * many);
    QTest::newRow("open tags") << QByteArray("<a b='c' ").repeated(5 * many);
    QTest::newRow("lines before a fault") << "<xml>" + QByteArray("\n").repeated(50 * many) + "&";
}

void RowsetRefusalTest::hostile_file_takes_no_more_than_linear_time()
{
    QFETCH(QByteArray, file);
    // With a quadratic step, files of this size take longer than a test may.
    errorNumber([&] { rowsOf(file); });
}

void RowsetRefusalTest::more_markup_than_a_calibration_can_have_is_refused()
{
    const QByteArray elements =
        "<xml>" + QByteArray("<a/>").repeated(static_cast<qsizetype>(maximumMarkup)) + "</xml>";
    QVERIFY(refusal(elements).contains(u"mehr Elemente"_qs));
}

REGISTER_TEST(RowsetRefusalTest)
#include "tst_rowsetrefusal.moc"
