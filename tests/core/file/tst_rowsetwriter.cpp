#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/rowsetwriter.h"
#include "core/xmlpruefung.h"

#include <QTest>

namespace {

QByteArray written(const Rows &rows)
{
    RowsetWriter writer(u"Variable"_qs, u"Wert"_qs, rows.size());
    for (const auto &[key, value] : rows)
        writer.append(key, value);
    return writer.finish();
}

QString character(char32_t c)
{
    if (c < 0x10000)
        return QString(QChar(c)); // fromUcs4() takes U+FEFF for a mark and drops it
    return QString::fromUcs4(&c, 1);
}

} // namespace

class RowsetWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void file_has_the_published_shape();
    void reserved_characters_and_white_space_are_escaped();
    void characters_beyond_ascii_stand_for_themselves();
    void every_character_comes_back_through_both_parsers();
    void texts_that_look_like_markup_come_back();
    void long_texts_come_back_whatever_they_grow_to_data();
    void long_texts_come_back_whatever_they_grow_to();
    void character_that_no_file_can_hold_is_refused_data();
    void character_that_no_file_can_hold_is_refused();
    void refusal_shows_the_key_short_and_printable();
};

void RowsetWriterTest::file_has_the_published_shape()
{
    const QByteArray expected =
        tableHead() + u"<rs:data>\r\n"
                      "\t<z:row Variable='KalibrierungWendral' Wert='V1'/>\r\n"
                      "\t<z:row Variable='Kovariable Name' Wert='Anzahl der Übergänge'/>\r\n"
                      "\t<z:row Variable='' Wert=''/>\r\n"
                      "</rs:data>\r\n"
                      "</xml>"_qs.toUtf8();
    QCOMPARE(written({{u"KalibrierungWendral"_qs, u"V1"_qs},
                      {u"Kovariable Name"_qs, u"Anzahl der Übergänge"_qs},
                      {QString(), QString()}}),
             expected);
    QCOMPARE(written({}), tableHead() + "<rs:data>\r\n</rs:data>\r\n</xml>");
}

void RowsetWriterTest::reserved_characters_and_white_space_are_escaped()
{
    QCOMPARE(written({{u"a&b<c>d'e\"f"_qs, u"\t\r\n &amp; "_qs}}),
             tableOf("\t<z:row Variable='a&#x26;b&#x3c;c&#x3e;d&#x27;e&#x22;f' "
                     "Wert='&#x9;&#xD;&#xA; &#x26;amp; '/>\r\n"));
}

void RowsetWriterTest::characters_beyond_ascii_stand_for_themselves()
{
    const QString text =
        u"ÄöüßẞŁ€한글𝄞\u007f\u0080\u07ff\u0800\ud7ff\ue000\ufffd\U00010000\U0010ffff"_qs;
    QCOMPARE(written({{text, text}}), tableOf("\t<z:row Variable='" + text.toUtf8() + "' Wert='" +
                                              text.toUtf8() + "'/>\r\n"));
}

void RowsetWriterTest::every_character_comes_back_through_both_parsers()
{
    Rows rows;
    QString block;
    const auto add = [&](char32_t c) {
        if (isXmlCharacter(c))
            block += character(c);
        if (block.size() < 200)
            return;
        rows.emplace_back(block, block);
        block.clear();
    };
    for (char32_t c = 0; c < 0x10000; ++c)
        add(c);
    for (char32_t c = 0x10000; c <= 0x10ffff; c += c % 0x10000 < 0xfff0 ? 251 : 1)
        add(c);
    rows.emplace_back(block, block);
    // 2^16 code points without the control characters, the surrogates and the last two
    qsizetype basic = 0;
    for (const auto &[key, value] : rows) {
        for (const QChar c : key)
            basic += c.isSurrogate() ? 0 : 1;
    }
    QCOMPARE(basic, 0x10000 - 29 - 0x800 - 2);

    const QByteArray file = written(rows);
    QVERIFY(rowsOf(file) == rows);
    QVERIFY(rowsOfOtherParser(file) == rows);
}

void RowsetWriterTest::texts_that_look_like_markup_come_back()
{
    const Rows rows{{u"&amp;"_qs, u"&#x26;#38;"_qs},
                    {u"'/><z:row Variable='x' Wert='"_qs, u"\"/></rs:data></xml>"_qs},
                    {u"<!-- a -->"_qs, u"]]><![CDATA["_qs},
                    {u"<!DOCTYPE xml>"_qs, u"<?xml version='1.0'?>"_qs},
                    {u" führend"_qs, u"folgend "_qs},
                    {u"  "_qs, u"\t"_qs},
                    {u"a\r\nb\rc\nd"_qs, u"\r\n\r\n"_qs},
                    {u"\ufeff"_qs, u"\ufeff\ufeffMarke"_qs},
                    {u"%1 %2"_qs, u"%L1 \\n"_qs}};
    const QByteArray file = written(rows);
    QCOMPARE(rowsOf(file), rows);
    QCOMPARE(rowsOfOtherParser(file), rows);
}

void RowsetWriterTest::long_texts_come_back_whatever_they_grow_to_data()
{
    QTest::addColumn<QString>("character");
    QTest::newRow("escape") << u"\""_qs;
    QTest::newRow("letter") << u"x"_qs;
    QTest::newRow("two bytes") << u"ä"_qs;
    QTest::newRow("three bytes") << u"€"_qs;
    QTest::newRow("surrogates") << u"𝄞"_qs;
    QTest::newRow("surrogates at odd places") << u"x𝄞"_qs;
}

void RowsetWriterTest::long_texts_come_back_whatever_they_grow_to()
{
    QFETCH(QString, character);
    for (const qsizetype length : {1, 100, 4095, 4096, 4097, 8191, 8192, 8193, 50'000}) {
        const QString text = character.repeated(length);
        const Rows rows{{text, text}, {u"k"_qs + text, u"v"_qs + text}};
        QVERIFY(rowsOf(written(rows)) == rows);
    }
}

void RowsetWriterTest::character_that_no_file_can_hold_is_refused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("code");
    for (char16_t c = 0; c < 0x20; ++c) {
        if (c != u'\t' && c != u'\r' && c != u'\n')
            QTest::addRow("control character %d", c)
                << QString(QChar(c))
                << u"U+00"_qs + QString::number(c, 16).toUpper().rightJustified(2, u'0');
    }
    QTest::newRow("high surrogate alone") << QString(QChar(0xd834)) << u"U+D834"_qs;
    QTest::newRow("low surrogate alone") << QString(QChar(0xdd1e)) << u"U+DD1E"_qs;
    QTest::newRow("surrogates exchanged") << QString(QChar(0xdd1e)) + QChar(0xd834) << u"U+DD1E"_qs;
    QTest::newRow("high surrogate twice")
        << QString(QChar(0xd834)) + QChar(0xd834) + QChar(0xdd1e) << u"U+D834"_qs;
    QTest::newRow("U+FFFE") << QString(QChar(0xfffe)) << u"U+FFFE"_qs;
    QTest::newRow("U+FFFF") << QString(QChar(0xffff)) << u"U+FFFF"_qs;
}

void RowsetWriterTest::character_that_no_file_can_hold_is_refused()
{
    QFETCH(QString, text);
    QFETCH(QString, code);
    for (const QString &value : {text, u"Text "_qs + text, text + u" Text"_qs}) {
        const auto inValue = errorOf([&] { written({{u"Bemerkung %2"_qs, value}}); });
        QVERIFY(inValue);
        QCOMPARE(inValue->number(), 321);
        QCOMPARE(inValue->description(),
                 u"Ungültiges Dateiformat: der Eintrag „Bemerkung %2“ enthält das Zeichen "_qs +
                     code + u", das die Datei nicht aufnehmen kann"_qs);
        const auto inKey = errorOf([&] { written({{value, QString()}}); });
        QVERIFY(inKey);
        QCOMPARE(inKey->number(), 321);
        QVERIFY(inKey->description().contains(code));
        QVERIFY(!inKey->description().contains(text));
    }
}

void RowsetWriterTest::refusal_shows_the_key_short_and_printable()
{
    const auto error = errorOf([] {
        written({{u"Zeile\n"_qs + u"x"_qs.repeated(100'000), u"\x01"_qs}});
    });
    QVERIFY(error);
    QVERIFY(error->description().contains(u"„Zeile\ufffdxxx"_qs));
    QVERIFY(error->description().size() < 200);
}

REGISTER_TEST(RowsetWriterTest)
#include "tst_rowsetwriter.moc"
