#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/rowsetreader.h"

#include <QDir>
#include <QTest>

namespace {

// What every file of the folder of shapes holds.
Rows shapedRows()
{
    return {{u"KalibrierungWendral"_qs, u"V1"_qs},
            {u"Kovariable Name"_qs, u"Anzahl der Übergänge"_qs},
            {u"Bemerkung"_qs, u"erste Zeile\tFortsetzung\r\n"
                              "\"zweite\" & <dritte> 'Zeile'\nEnde €𝄞"_qs},
            {u"Leer"_qs, QString()}};
}

QByteArray foreignFile(const char *name)
{
    return bytesAt(QStringLiteral(PROJECT_DIR "/../shared/data/rowset/") +
                   QString::fromLatin1(name));
}

} // namespace

class RowsetReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void every_shape_gives_the_same_rows_data();
    void every_shape_gives_the_same_rows();
    void foreign_file_is_read_exactly_data();
    void foreign_file_is_read_exactly();
    void foreign_set_with_several_row_types_is_refused();
    void row_without_first_column_is_kept_as_empty();
    void table_without_rows_is_empty();
    void later_row_of_the_same_key_comes_later();
    void value_is_overlaid_only_where_the_update_names_it();
    void deep_and_wide_content_that_nobody_asked_for_is_skipped();
    void rows_stay_valid_when_the_rowset_moves();
    void shared_bytes_are_not_changed_by_parsing();
    void very_long_value_comes_back_whole();
};

void RowsetReaderTest::every_shape_gives_the_same_rows_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(TEST_DATA_DIR "/rowset-shapes"));
    const QStringList names = folder.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    QVERIFY(names.size() > 40);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void RowsetReaderTest::every_shape_gives_the_same_rows()
{
    QFETCH(QString, path);
    const QByteArray file = bytesAt(path);
    QVERIFY(!file.isEmpty());
    QCOMPARE(rowsOf(file), shapedRows());
}

void RowsetReaderTest::foreign_file_is_read_exactly_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<Rows>("expected");

    QTest::newRow("rows in an insert group") << QByteArray("01_unconnected_strings_ascii.xml")
                                             << QByteArray("NAME") << QByteArray("NOTE")
                                             << Rows{{u"alpha"_qs, u"plain ascii"_qs},
                                                     {u"reserved"_qs, u"Joe's Garage & <xml>"_qs},
                                                     {u"empty"_qs, QString()}};
    QTest::newRow("columns the other way round")
        << QByteArray("01_unconnected_strings_ascii.xml") << QByteArray("NOTE") << QByteArray("ID")
        << Rows{{u"plain ascii"_qs, u"1"_qs},
                {u"Joe's Garage & <xml>"_qs, u"2"_qs},
                {QString(), u"3"_qs}};
    QTest::newRow("explicit nulls")
        << QByteArray("02_unconnected_nulls.xml") << QByteArray("ID") << QByteArray("MAYBE_TEXT")
        << Rows{{u"1"_qs, QString()}, {u"2"_qs, QString()}};
    QTest::newRow("explicit nulls in both columns")
        << QByteArray("02_unconnected_nulls.xml") << QByteArray("MAYBE_TEXT")
        << QByteArray("MAYBE_INT") << Rows{{QString(), QString()}, {QString(), u"0"_qs}};
    QTest::newRow("update, insert and delete") << QByteArray("08_bstr_update_insert_delete.xml")
                                               << QByteArray("ID") << QByteArray("VALUE_FIELD")
                                               << Rows{{u"1"_qs, u"한글"_qs},
                                                       {u"3"_qs, u"Joe's <xml> & data"_qs},
                                                       {u"4"_qs, u"tail-value"_qs}};
    QTest::newRow("nulls in such groups")
        << QByteArray("10_bstr_forcenull.xml") << QByteArray("ID") << QByteArray("VALUE_FIELD")
        << Rows{{u"1"_qs, QString()}, {u"3"_qs, QString()}, {u"4"_qs, QString()}};
    QTest::newRow("columns under aliases")
        << QByteArray("14_rs_name_aliases.xml") << QByteArray("Field Space Text")
        << QByteArray("1LeadingInteger")
        << Rows{{u"alpha-updated"_qs, u"11"_qs}, {u"gamma"_qs, u"30"_qs}, {u"delta"_qs, u"40"_qs}};
    QTest::newRow("aliases beyond ASCII")
        << QByteArray("14_rs_name_aliases.xml") << QByteArray("Name-With-Dash")
        << u"한글 필드"_qs.toUtf8()
        << Rows{{u"dash-one-updated"_qs, u"한글_4_값"_qs},
                {u"dash-three"_qs, u"한글_3_값"_qs},
                {u"dash-four"_qs, u"한글_5_값"_qs}};

    const auto narrow = [](int row, int phase) {
        return u"row=%1|phase=%2|\"dq\"|'sq'|<&>|tab\tcr\rlf\nend"_qs.arg(row).arg(phase);
    };
    const auto longText = [&](int row, int phase) {
        QString text;
        for (int part = 1; part <= 18; ++part)
            text += narrow(row, phase) + u"|wide=한글_값_€|part=%1\r\n"_qs.arg(part);
        return text;
    };
    QTest::newRow("raw tabs and line ends") << QByteArray("17_text_raw_tab_cr_lf_and_quotes.xml")
                                            << QByteArray("TXT_VAR") << QByteArray("TXT_LONG")
                                            << Rows{{narrow(1, 1), longText(1, 1)},
                                                    {QString(), QString()},
                                                    {narrow(4, 2), longText(4, 2)}};
    QTest::newRow("raw tabs and line ends beside another column")
        << QByteArray("17_text_raw_tab_cr_lf_and_quotes.xml") << QByteArray("ID")
        << QByteArray("TXT_WIDE")
        << Rows{{u"1"_qs, narrow(1, 1) + u"|wide=한글_값_€"_qs},
                {u"3"_qs, QString()},
                {u"4"_qs, narrow(4, 2) + u"|wide=한글_값_€"_qs}};
    QTest::newRow("UTF-16 with a mark")
        << QByteArray("26_stream_utf16le_bom.xml") << QByteArray("TXT") << QByteArray("LONG_TXT")
        << Rows{{u"€ updated"_qs, u"updated|한글|"_qs.repeated(18)},
                {u"inserted"_qs, u"한글 inserted"_qs}};
    QTest::newRow("UTF-16, a column that the update leaves alone")
        << QByteArray("26_stream_utf16le_bom.xml") << QByteArray("ID") << QByteArray("TXT")
        << Rows{{u"1"_qs, u"€ updated"_qs}, {u"3"_qs, u"inserted"_qs}};
}

void RowsetReaderTest::foreign_file_is_read_exactly()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(Rows, expected);
    const QByteArray file = foreignFile(name);
    if (file.isEmpty())
        QSKIP("the folder of foreign files is not beside the project");
    QCOMPARE(rowsOf(file, first, second), expected);
}

void RowsetReaderTest::foreign_set_with_several_row_types_is_refused()
{
    const QByteArray file = foreignFile("33_sqlserver_hierarchical.xml");
    if (file.isEmpty())
        QSKIP("the folder of foreign files is not beside the project");
    const auto error = errorOf([&] { rowsOf(file, "OrderId", "CustomerId"); });
    QVERIFY(error);
    QCOMPARE(error->number(), 321);
    QVERIFY(error->description().contains(u"Satzarten"_qs));
}

void RowsetReaderTest::row_without_first_column_is_kept_as_empty()
{
    QCOMPARE(rowsOf(tableOf("<z:row Wert='a'/><z:row Variable='' Wert='b'/><z:row/>")),
             (Rows{{QString(), u"a"_qs}, {QString(), u"b"_qs}, {QString(), QString()}}));
}

void RowsetReaderTest::table_without_rows_is_empty()
{
    QCOMPARE(rowsOf(tableOf("")), Rows());
    QCOMPARE(rowsOf(tableHead() + "<rs:data/></xml>"), Rows());
    QCOMPARE(rowsOf(tableHead() + "<rs:data><rs:insert></rs:insert></rs:data></xml>"), Rows());
}

void RowsetReaderTest::later_row_of_the_same_key_comes_later()
{
    QCOMPARE(rowsOf(tableOf("<z:row Variable='k' Wert='1'/><rs:insert><z:row Variable='k' "
                            "Wert='2'/></rs:insert><z:row Variable='k' Wert='3'/>")),
             (Rows{{u"k"_qs, u"1"_qs}, {u"k"_qs, u"2"_qs}, {u"k"_qs, u"3"_qs}}));
}

void RowsetReaderTest::value_is_overlaid_only_where_the_update_names_it()
{
    const auto updated = [](const QByteArray &change) {
        return rowsOf(tableOf("<rs:update><rs:original><z:row Variable='k' Wert='alt'/>"
                              "</rs:original>" +
                              change + "</rs:update>"));
    };
    QCOMPARE(updated("<z:row Wert='neu'/>"), (Rows{{u"k"_qs, u"neu"_qs}}));
    QCOMPARE(updated("<z:row Wert=''/>"), (Rows{{u"k"_qs, QString()}}));
    QCOMPARE(updated("<z:row rs:forcenull='x Wert\ty'/>"), (Rows{{u"k"_qs, QString()}}));
    QCOMPARE(updated("<z:row rs:forcenull='xWert Werty'/>"), (Rows{{u"k"_qs, u"alt"_qs}}));
    QCOMPARE(updated("<z:row Variable='K'/>"), (Rows{{u"K"_qs, u"alt"_qs}}));
    QCOMPARE(updated("<z:row/>"), (Rows{{u"k"_qs, u"alt"_qs}}));
    // An old row without a changed one beside it is still an entry.
    QCOMPARE(updated(""), (Rows{{u"k"_qs, u"alt"_qs}}));
    QCOMPARE(updated("<z:row Wert='1'/><z:row Variable='l' Wert='2'/>"),
             (Rows{{u"k"_qs, u"1"_qs}, {u"l"_qs, u"2"_qs}}));
}

void RowsetReaderTest::deep_and_wide_content_that_nobody_asked_for_is_skipped()
{
    constexpr int levels = 300'000;
    const QByteArray deep =
        QByteArray("<e>").repeated(levels) + QByteArray("</e>").repeated(levels);
    QByteArray wide = "<e";
    for (int i = 0; i < 40'000; ++i)
        wide += " a" + QByteArray::number(i) + "='x'";
    wide += "/>";
    const Rows expected{{u"k"_qs, u"1"_qs}};
    QCOMPARE(rowsOf(tableOf(deep + wide + "<z:row Variable='k' Wert='1'/>" + deep)), expected);
    QCOMPARE(rowsOf(tableOf("<z:row Variable='k' Wert='1'" + wide.sliced(2))), expected);
}

void RowsetReaderTest::rows_stay_valid_when_the_rowset_moves()
{
    Rowset first = Rowset::parse(tableWithValue("ein Wert, der in keinen kurzen Puffer passt"),
                                 "Variable", "Wert");
    const Rowset copy = first;
    const Rowset moved = std::move(first);
    QCOMPARE(moved.rows().at(0).second,
             std::string_view("ein Wert, der in keinen kurzen Puffer passt"));
    QCOMPARE(copy.rows().at(0).second, moved.rows().at(0).second);
}

void RowsetReaderTest::shared_bytes_are_not_changed_by_parsing()
{
    const QByteArray file = tableWithValue("&#x26;&#x3c;a\r\n");
    const QByteArray copy(file.constData(), file.size());
    rowsOf(file);
    QCOMPARE(file, copy);
}

void RowsetReaderTest::very_long_value_comes_back_whole()
{
    const QByteArray value = QByteArray("0123456789 ä\r\n").repeated(1'000'000);
    const Rows rows = rowsOf(tableWithValue(value));
    QCOMPARE(rows.size(), std::size_t{1});
    QVERIFY(rows[0].second == QString::fromUtf8(value));
}

REGISTER_TEST(RowsetReaderTest)
#include "tst_rowsetreader.moc"
