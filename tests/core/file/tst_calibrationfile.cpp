#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"
#include "core/kalibrierungsdatei.h"
#include "core/xmlpruefung.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);
const QLocale english(QLocale::English, QLocale::UnitedStates);
const std::pair<QString, QString> header{u"KalibrierungWendral"_qs, u"V1"_qs};

// The rows that saving this document must give: the header row and the entries as texts.
Rows expectedRows(const Kalibrierung &document)
{
    Rows rows{header};
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        rows.emplace_back(key, document.values().text(value));
    });
    return rows;
}

// Any text of XML characters, line breaks and reserved characters more often than chance has it.
QString anyText(QRandomGenerator &random, int longest)
{
    const QString often = u"&<>'\"\t\r\n ä€𝄞;"_qs;
    QString text;
    for (int length = random.bounded(longest + 1); length > 0; --length) {
        if (random.bounded(3) == 0) {
            text += often[random.bounded(11)];
            continue;
        }
        const char32_t c =
            random.bounded(2) == 0 ? 0x20 + random.bounded(0x60u) : random.bounded(0x110000u);
        if (isXmlCharacter(c))
            text += QString::fromUcs4(&c, 1);
    }
    return text;
}

} // namespace

class CalibrationFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void saved_file_holds_header_and_every_entry_in_order();
    void saved_file_is_the_golden_one_byte_for_byte();
    void values_are_saved_as_texts_of_the_locale_data();
    void values_are_saved_as_texts_of_the_locale();
    void saving_touches_neither_store_nor_flag();
    void saving_replaces_an_existing_file_of_any_length();
    void loading_replaces_all_entries();
    void every_loaded_value_is_text();
    void loading_raises_only_the_reset_signals();
    void loaded_flag_is_what_the_file_holds_until_it_is_cleared();
    void header_row_alone_gives_the_defaults();
    void file_without_header_row_loads();
    void version_text_is_not_compared();
    void row_with_empty_key_is_skipped_and_empty_value_is_empty_text();
    void later_row_of_a_key_wins_and_keeps_the_place();
    void unknown_keys_are_kept_and_saved_again();
    void second_save_adds_one_header_row_and_no_further_save_another();
    void cycle_survives_any_number_of_turns_data();
    void cycle_survives_any_number_of_turns();
    void generated_documents_come_back_data();
    void generated_documents_come_back();
    void counts_below_three_come_from_files();
    void other_locale_reads_other_numbers_and_never_better_ones();
    void example_loads_and_evaluates_data();
    void example_loads_and_evaluates();
    void failing_load_changes_nothing();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void CalibrationFileTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void CalibrationFileTest::saved_file_holds_header_and_every_entry_in_order()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.DataStoreLet(u"AssistentActivePage"_qs, 3);
    document.SaveFile(path("a.xml"));
    const Rows rows = rowsOf(bytesAt(path("a.xml")));
    QCOMPARE(rows, expectedRows(document));
    QCOMPARE(rows.size(), document.DataStore().size() + 1);
    QCOMPARE(rows[0], header);
    QCOMPARE(rows[1].first, u"Direktes Prüfmerkmal Nachkommastellen"_qs);
    QCOMPARE(rows[2], std::pair(u"IsDirty"_qs, u"Wahr"_qs));
    QCOMPARE(rows[rows.size() - 2], std::pair(u"Messwert direktes Prüfmerkmal 1.1"_qs, u"97,5"_qs));
    QCOMPARE(rows.back(), std::pair(u"AssistentActivePage"_qs, u"3"_qs));
    QCOMPARE(rowsOfOtherParser(bytesAt(path("a.xml"))), rows);
}

void CalibrationFileTest::saved_file_is_the_golden_one_byte_for_byte()
{
    Kalibrierung document(german);
    document.DataStore().clear();
    document.DataStoreLet(u"Kovariable Name"_qs, u"Anzahl der \"Übergänge\""_qs);
    document.DataStore().set(u"Zeilen"_qs, u"eins\r\nzwei\tdrei"_qs);
    document.DataStore().set(u"leer"_qs, Empty{});
    document.SaveFile(path("a.xml"));
    const QByteArray expected =
        u"<rs:data>\r\n"
        "\t<z:row Variable='KalibrierungWendral' Wert='V1'/>\r\n"
        "\t<z:row Variable='Kovariable Name' "
        "Wert='Anzahl der &#x22;Übergänge&#x22;'/>\r\n"
        "\t<z:row Variable='IsDirty' Wert='Wahr'/>\r\n"
        "\t<z:row Variable='Zeilen' Wert='eins&#xD;&#xA;zwei&#x9;drei'/>\r\n"
        "\t<z:row Variable='leer' Wert=''/>\r\n"
        "</rs:data>\r\n"
        "</xml>"_qs.toUtf8();
    QCOMPARE(bytesAt(path("a.xml")), tableHead() + expected);
}

void CalibrationFileTest::values_are_saved_as_texts_of_the_locale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<Variant>("value");
    QTest::addColumn<QString>("text");
    const auto add = [](const char *name, const Variant &value, const QString &de,
                        const QString &en) {
        QTest::addRow("%s, German", name) << german << value << de;
        QTest::addRow("%s, English", name) << english << value << en;
    };
    add("whole number", std::int32_t{-1234567}, u"-1234567"_qs, u"-1234567"_qs);
    add("double", 12.5, u"12,5"_qs, u"12.5"_qs);
    add("no grouping", 1234567.25, u"1234567,25"_qs, u"1234567.25"_qs);
    add("15 digits", 1.0 / 3.0, u"0,333333333333333"_qs, u"0.333333333333333"_qs);
    add("true", true, u"Wahr"_qs, u"True"_qs);
    add("false", false, u"Falsch"_qs, u"False"_qs);
    add("empty", Empty{}, QString(), QString());
    add("text", u"1.5, x"_qs, u"1.5, x"_qs, u"1.5, x"_qs);
}

void CalibrationFileTest::values_are_saved_as_texts_of_the_locale()
{
    QFETCH(QLocale, locale);
    QFETCH(Variant, value);
    QFETCH(QString, text);
    Kalibrierung document(locale);
    document.DataStore().set(u"Eintrag"_qs, value);
    document.SaveFile(path("a.xml"));
    QCOMPARE(rowsOf(bytesAt(path("a.xml"))).back(), std::pair(u"Eintrag"_qs, text));

    Kalibrierung reloaded(locale);
    reloaded.LoadFile(path("a.xml"));
    QCOMPARE(*reloaded.DataStore().find(u"Eintrag"_qs), Variant(text));
    if (std::holds_alternative<bool>(value))
        QCOMPARE(reloaded.values().boolean(*reloaded.DataStore().find(u"Eintrag"_qs)),
                 std::get<bool>(value));
}

void CalibrationFileTest::saving_touches_neither_store_nor_flag()
{
    Kalibrierung document(german);
    document.DataStoreLet(u"x"_qs, 1.5);
    const StoreEntries before = entriesOf(document.DataStore());
    const QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    document.SaveFile(path("a.xml"));
    QVERIFY(entriesOf(document.DataStore()) == before);
    QVERIFY(document.IsDirty());
    QCOMPARE(changed.count(), 0);
}

void CalibrationFileTest::saving_replaces_an_existing_file_of_any_length()
{
    Kalibrierung document(german);
    document.SaveFile(path("a.xml"));
    const QByteArray small = bytesAt(path("a.xml"));
    for (const QByteArray &old : {QByteArray(), QByteArray("x"), QByteArray(100'000, 'x')}) {
        QVERIFY(putBytes(path("a.xml"), old));
        document.SaveFile(path("a.xml"));
        QCOMPARE(bytesAt(path("a.xml")), small);
    }
    QCOMPARE(
        QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"a.xml"_qs});
}

void CalibrationFileTest::loading_replaces_all_entries()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.Kovariable().setName(u"anders"_qs);
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='Anzahl Pr\xc3\xbc"
                                            "ffelder' Wert='7'/>")));
    document.LoadFile(path("a.xml"));
    QCOMPARE(document.PrüffelderAnzahl(), 7);
    QVERIFY(std::holds_alternative<Null>(document.Messwert(pmDirekt, 1, 1)));
    QCOMPARE(document.Kovariable().Name(), u"Anzahl der Übergänge"_qs);
}

void CalibrationFileTest::every_loaded_value_is_text()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.SaveFile(path("a.xml"));
    Kalibrierung reloaded(german);
    reloaded.LoadFile(path("a.xml"));
    for (const auto &[key, value] : entriesOf(reloaded.DataStore()))
        QVERIFY2(std::holds_alternative<QString>(value), qPrintable(key));
    // The typed getters convert.
    QCOMPARE(reloaded.Messwert(pmDirekt, 1, 1), Variant(u"97,5"_qs));
    QCOMPARE(reloaded.PrüffelderAnzahl(), 3);
    QCOMPARE(reloaded.NachkommastellenAnstieg(), 4);
    QCOMPARE(reloaded.MinBestimmtheitsmaßIndirektDirekt(), 0.65);
    QCOMPARE(reloaded.ZwischenergebnisseRunden(), false);
}

void CalibrationFileTest::loading_raises_only_the_reset_signals()
{
    for (const char *flag : {"Wahr", "Falsch", "", "vielleicht"}) {
        QVERIFY(putBytes(path("a.xml"),
                         tableOf(QByteArray("<z:row Variable='IsDirty' Wert='") + flag + "'/>")));
        Kalibrierung document(german);
        document.setIsDirty(true);
        const QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
        document.LoadFile(path("a.xml"));
        QCOMPARE(changed.count(), 2);
    }
}

void CalibrationFileTest::loaded_flag_is_what_the_file_holds_until_it_is_cleared()
{
    Kalibrierung document(german);
    document.DataStoreLet(u"x"_qs, 1);
    document.SaveFile(path("a.xml"));
    document.setIsDirty(false);

    Kalibrierung reloaded(german);
    reloaded.LoadFile(path("a.xml"));
    QCOMPARE(*reloaded.DataStore().find(u"IsDirty"_qs), Variant(u"Wahr"_qs));
    QVERIFY(reloaded.IsDirty());
    const QSignalSpy changed(&reloaded, &Kalibrierung::IsDirtyChanged);
    reloaded.setIsDirty(false);
    QVERIFY(!reloaded.IsDirty());
    QCOMPARE(changed.count(), 1);
}

void CalibrationFileTest::header_row_alone_gives_the_defaults()
{
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='KalibrierungWendral' Wert='V1'/>")));
    Kalibrierung document(german);
    StoreEntries expected = entriesOf(document.DataStore());
    expected.emplace_back(header.first, header.second);
    document.setMesswert(pmDirekt, 1, 1, 1.0);
    document.LoadFile(path("a.xml"));
    QVERIFY(entriesOf(document.DataStore()) == expected);
    QVERIFY(!document.IsDirty());
}

void CalibrationFileTest::file_without_header_row_loads()
{
    QVERIFY(putBytes(path("a.xml"), tableWithValue("v")));
    Kalibrierung document(german);
    document.LoadFile(path("a.xml"));
    QCOMPARE(*document.DataStore().find(u"k"_qs), Variant(u"v"_qs));
    QVERIFY(!document.DataStore().exists(header.first));

    QVERIFY(putBytes(path("a.xml"), tableOf("")));
    document.LoadFile(path("a.xml"));
    QVERIFY(entriesOf(document.DataStore()) == entriesOf(Kalibrierung(german).DataStore()));
}

void CalibrationFileTest::version_text_is_not_compared()
{
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='k' Wert='v'/>"
                                            "<z:row Variable='KalibrierungWendral' Wert='V99'/>")));
    Kalibrierung document(german);
    document.LoadFile(path("a.xml"));
    QCOMPARE(*document.DataStore().find(header.first), Variant(u"V99"_qs));
    document.SaveFile(path("a.xml"));
    const Rows rows = rowsOf(bytesAt(path("a.xml")));
    QCOMPARE(rows[0], header);
    QCOMPARE(rows.back(), std::pair(header.first, u"V99"_qs));
}

void CalibrationFileTest::row_with_empty_key_is_skipped_and_empty_value_is_empty_text()
{
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='' Wert='x'/><z:row Wert='y'/>"
                                            "<z:row Variable='leer' Wert=''/>"
                                            "<z:row Variable='ohne'/>"
                                            "<z:row Variable='null' rs:forcenull='Wert'/>"
                                            "<z:row Variable=' ' Wert='Blank'/>")));
    Kalibrierung document(german);
    const std::size_t defaults = document.DataStore().size();
    document.LoadFile(path("a.xml"));
    QCOMPARE(document.DataStore().size(), defaults + 4);
    for (const QString &key : {u"leer"_qs, u"ohne"_qs, u"null"_qs})
        QCOMPARE(*document.DataStore().find(key), Variant(QString()));
    QCOMPARE(*document.DataStore().find(u" "_qs), Variant(u"Blank"_qs));
    QVERIFY(!document.DataStore().exists(QString()));
}

void CalibrationFileTest::later_row_of_a_key_wins_and_keeps_the_place()
{
    QVERIFY(putBytes(path("a.xml"),
                     tableOf("<z:row Variable='a' Wert='1'/><z:row Variable='b' Wert='2'/>"
                             "<z:row Variable='a' Wert='3'/><z:row Variable='A' Wert='4'/>")));
    Kalibrierung document(german);
    const std::size_t defaults = document.DataStore().size();
    document.LoadFile(path("a.xml"));
    StoreEntries entries = entriesOf(document.DataStore());
    entries.erase(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(defaults));
    QVERIFY(entries == (StoreEntries{{u"a"_qs, u"3"_qs}, {u"b"_qs, u"2"_qs}, {u"A"_qs, u"4"_qs}}));
}

void CalibrationFileTest::unknown_keys_are_kept_and_saved_again()
{
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='von morgen' Wert='&#xA;x'/>")));
    Kalibrierung document(german);
    document.LoadFile(path("a.xml"));
    document.SaveFile(path("b.xml"));
    QCOMPARE(rowsOf(bytesAt(path("b.xml"))).back(), std::pair(u"von morgen"_qs, u"\nx"_qs));
}

void CalibrationFileTest::second_save_adds_one_header_row_and_no_further_save_another()
{
    Kalibrierung document(german);
    document.setMesswert(pmIndirekt, 2, 3, 41.25);
    document.setIsDirty(false);
    document.SaveFile(path("1.xml"));
    const Rows first = rowsOf(bytesAt(path("1.xml")));
    QCOMPARE(std::count(first.begin(), first.end(), header), 1);

    Kalibrierung reloaded(german);
    reloaded.LoadFile(path("1.xml"));
    reloaded.SaveFile(path("2.xml"));
    Rows second = rowsOf(bytesAt(path("2.xml")));
    QCOMPARE(std::count(second.begin(), second.end(), header), 2);
    QCOMPARE(second[0], header);
    const QByteArray bytes = bytesAt(path("2.xml"));
    second.erase(std::find(second.begin() + 1, second.end(), header));
    QCOMPARE(second, first);

    for (int turn = 0; turn < 5; ++turn) {
        reloaded.LoadFile(path("2.xml"));
        reloaded.SaveFile(path("2.xml"));
        QCOMPARE(bytesAt(path("2.xml")), bytes);
    }
}

void CalibrationFileTest::cycle_survives_any_number_of_turns_data()
{
    QTest::addColumn<QString>("example");
    QTest::newRow("verdichtungsgrad")
        << QStringLiteral(PROJECT_DIR "/examples/verdichtungsgrad.xml");
    QTest::newRow("verformungsmodul")
        << QStringLiteral(PROJECT_DIR "/examples/verformungsmodul.xml");
}

void CalibrationFileTest::cycle_survives_any_number_of_turns()
{
    QFETCH(QString, example);
    Rows rows = rowsOf(bytesAt(example));
    QVERIFY(rows.size() > 50);
    Kalibrierung document(german);
    document.LoadFile(example);
    document.SaveFile(path("a.xml"));
    Rows saved = rowsOf(bytesAt(path("a.xml")));
    rows.push_back(header);
    std::sort(rows.begin(), rows.end());
    std::sort(saved.begin(), saved.end());
    QCOMPARE(saved, rows);

    const QByteArray bytes = bytesAt(path("a.xml"));
    document.LoadFile(path("a.xml"));
    document.SaveFile(path("b.xml"));
    QCOMPARE(bytesAt(path("b.xml")), bytes);
}

void CalibrationFileTest::generated_documents_come_back_data()
{
    QTest::addColumn<int>("fields");
    for (const int fields : {1, 2, 3, 4, 7, 50, 499, 500})
        QTest::addRow("%d fields", fields) << fields;
}

void CalibrationFileTest::generated_documents_come_back()
{
    QFETCH(int, fields);
    QRandomGenerator random(static_cast<quint32>(fields)); // the same documents in every run
    Kalibrierung document(german);
    KeyedStore &store = document.DataStore();
    store.set(u"Anzahl Prüffelder"_qs, fields);
    for (int field = 1; field <= fields; ++field) {
        const int points = random.bounded(1, 9);
        store.set(u"Prüffeld Prüfpunktanzahl %1"_qs.arg(field), points);
        document.setPrüffeldWert(field, random.generateDouble() * 100.0);
        for (int point = 1; point <= points; ++point) {
            document.setMesswert(pmDirekt, field, point, random.generateDouble() * 1e6);
            if (random.bounded(5) > 0) // some values are missing
                document.setMesswert(pmIndirekt, field, point,
                                     std::ldexp(1.0, random.bounded(-99, 99)));
        }
        document.setPrüffeldName(field, anyText(random, 30));
        document.DataStoreLet(u"Protokoll Verdichtung "_qs + anyText(random, 20),
                              anyText(random, 2000));
    }
    store.set(u"\ufeffMarke"_qs, u"\ufeff\ufeff"_qs);
    store.set(u"Bemerkung"_qs, u"erste Zeile\r\nzweite\tZeile\n\n"_qs + anyText(random, 5000));

    document.SaveFile(path("1.xml"));
    const Rows rows = expectedRows(document);
    QVERIFY(rowsOf(bytesAt(path("1.xml"))) == rows);
    QVERIFY(rowsOfOtherParser(bytesAt(path("1.xml"))) == rows);

    Kalibrierung reloaded(german);
    reloaded.LoadFile(path("1.xml"));
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        const Variant *found = reloaded.DataStore().find(key);
        QVERIFY2(found && *found == Variant(document.values().text(value)), qPrintable(key));
    });
    QCOMPARE(reloaded.DataStore().size(), store.size() + 1);
    QCOMPARE(reloaded.PrüffelderAnzahl(), fields);
    reloaded.SaveFile(path("2.xml"));
    Rows second = rowsOf(bytesAt(path("2.xml")));
    second.erase(std::find(second.begin() + 1, second.end(), header));
    QVERIFY(second == rows);
}

void CalibrationFileTest::counts_below_three_come_from_files()
{
    QVERIFY(putBytes(
        path("a.xml"),
        tableOf(u"<z:row Variable='Anzahl Prüffelder' Wert='1'/>"
                "<z:row Variable='Prüffeld Prüfpunktanzahl 1' Wert='2'/>"
                "<z:row Variable='Messwert direktes Prüfmerkmal 1.1' Wert='1,5'/>"
                "<z:row Variable='Messwert direktes Prüfmerkmal 1.2' Wert='2,5'/>"_qs.toUtf8())));
    Kalibrierung document(german);
    document.LoadFile(path("a.xml"));
    QCOMPARE(document.PrüfpunkteTotal(), 2);
    QCOMPARE(document.StatistikMittelwert(mDirekt), 2.0);
    QCOMPARE(document.StatistikVarianz(mDirekt), 0.5);
}

void CalibrationFileTest::other_locale_reads_other_numbers_and_never_better_ones()
{
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    document.setMesswert(pmDirekt, 1, 2, 1.234);
    document.SaveFile(path("a.xml"));
    Kalibrierung foreign(english);
    foreign.LoadFile(path("a.xml"));
    QCOMPARE(foreign.Messwert(pmDirekt, 1, 1), Variant(u"97,5"_qs));
    QCOMPARE(errorNumber([&] { foreign.values().number(foreign.Messwert(pmDirekt, 1, 1)); }), 13);
    QCOMPARE(foreign.values().number(foreign.Messwert(pmDirekt, 1, 2)), 1234.0);
    QCOMPARE(errorNumber([&] { foreign.StatistikMittelwert(mDirekt); }), 13);
}

void CalibrationFileTest::example_loads_and_evaluates_data()
{
    cycle_survives_any_number_of_turns_data();
}

void CalibrationFileTest::example_loads_and_evaluates()
{
    QFETCH(QString, example);
    Kalibrierung document(german);
    document.LoadFile(example);
    document.setZwischenergebnisseRunden(false);
    // The means, counted from the rows as another parser reads them.
    double sums[] = {0.0, 0.0};
    int counts[] = {0, 0};
    for (const auto &[key, value] : rowsOfOtherParser(bytesAt(example))) {
        if (!key.startsWith(u"Messwert "_qs))
            continue;
        const int i = key.startsWith(u"Messwert direktes"_qs) ? 0 : 1;
        sums[i] += QString(value).replace(u',', u'.').toDouble();
        ++counts[i];
    }
    QVERIFY(counts[0] >= 9);
    QCOMPARE(counts[0], counts[1]);
    QCOMPARE(document.PrüfpunkteTotal(), counts[0]);
    QCOMPARE(document.StatistikMittelwert(mDirekt), sums[0] / counts[0]);
    QCOMPARE(document.StatistikMittelwert(mIndirekt), sums[1] / counts[1]);
    for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), {mDirekt, mZ}, {mIndirekt, mZ}}) {
        const double r2 = document.StatistikBestimmtheitsmaß(x, y);
        QVERIFY(r2 > 0.0 && r2 <= 1.0);
        QVERIFY(document.StatistikKalibriergeradeAnstiegString(x, y) != u"(Fehler)"_qs);
        QVERIFY(document.StatistikKalibriergeradeAchsenabschnittString(x, y) != u"(Fehler)"_qs);
    }
}

void CalibrationFileTest::failing_load_changes_nothing()
{
    QVERIFY(putBytes(path("a.xml"), tableOf("<z:row Variable='Kovariable Name' Wert='x'/>"
                                            "<z:row Variable='k' Wert='&unbekannt;'/>")));
    Kalibrierung document(german);
    document.setMesswert(pmDirekt, 1, 1, 97.5);
    const StoreEntries before = entriesOf(document.DataStore());
    const QSignalSpy changed(&document, &Kalibrierung::IsDirtyChanged);
    QCOMPARE(errorNumber([&] { document.LoadFile(path("a.xml")); }), 321);
    QVERIFY(entriesOf(document.DataStore()) == before);
    QVERIFY(document.IsDirty());
    QCOMPARE(changed.count(), 0);
}

REGISTER_TEST(CalibrationFileTest)
#include "tst_calibrationfile.moc"
