// What stands in the file, as another program reads it.

#include "export/tabellenausgabe.h"
#include "tests/export/beispiele.h"
#include "tests/export/ergebniszellen.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"
#include "export/arbeitsmappe.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace {

// Equal in all 15 digits that a spreadsheet keeps for certain.
bool isSame(double read, double value)
{
    return std::abs(read - value) <= 5e-16 * std::abs(value);
}

} // namespace

class TestTabelle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!GeleseneMappe::moeglich())
            QSKIP("python3-openpyxl is not installed");
        for (const Beispiel &example : beispiele())
            m_books.emplace(example.name, mappe(*dokument(example)));
    }

    void everyResultIsAFormulaWithItsValueStored_data() { jedesBeispiel(); }
    void everyResultIsAFormulaWithItsValueStored()
    {
        QFETCH(QByteArray, example);
        const GeleseneMappe &book = m_books.at(example.toStdString());
        const auto document = dokument(example.constData());
        for (const auto &[sheet, results] : ergebniszellen(*document)) {
            for (const Ergebniswert &result : results) {
                const QString where = sheet + u'!' + result.zelle;
                const GeleseneZelle cell = book.zelle(sheet, result.zelle);
                const std::optional<double> value = wertOderNichts(result.wert);
                if (!value) {
                    QVERIFY2(cell.leer(), qPrintable(where));
                    continue;
                }
                QVERIFY2(cell.formel.startsWith(u'='), qPrintable(where));
                QCOMPARE(cell.art, u"n"_qs);
                QVERIFY2(isSame(cell.wert.toDouble(), *value), qPrintable(where));
            }
        }
    }

    void valueOfTheProgramStandsBesideTheFormula_data() { jedesBeispiel(); }
    void valueOfTheProgramStandsBesideTheFormula()
    {
        QFETCH(QByteArray, example);
        const GeleseneMappe &book = m_books.at(example.toStdString());
        const auto beside = [](const QString &sheet, const QString &cell) {
            const QChar column = sheet == u"Auswertung" || cell[0] == u'B' ? u'D' : u'E';
            return column + cell.sliced(1);
        };
        const auto document = dokument(example.constData());
        for (const auto &[sheet, results] : ergebniszellen(*document)) {
            for (const Ergebniswert &result : results) {
                const GeleseneZelle constant = book.zelle(sheet, beside(sheet, result.zelle));
                QVERIFY(constant.formel.isEmpty());
                QCOMPARE(constant.wert.isDouble(), wertOderNichts(result.wert).has_value());
                if (constant.wert.isDouble())
                    QCOMPARE(constant.wert, book.zelle(sheet, result.zelle).wert);
            }
        }
    }

    void noCellShowsAnErrorAndNumberColumnsHoldNoText_data() { jedesBeispiel(); }
    void noCellShowsAnErrorAndNumberColumnsHoldNoText()
    {
        QFETCH(QByteArray, example);
        const GeleseneMappe &book = m_books.at(example.toStdString());
        QCOMPARE(book.blaetter(), QStringList({u"Auswertung"_qs, u"Kalibriergeraden"_qs,
                                               u"Messwerte"_qs, u"Protokolldaten"_qs}));
        const QHash<QString, QString> numbers{{u"Messwerte"_qs, u"ADEF"_qs},
                                              {u"Auswertung"_qs, u"BDGHIJ"_qs},
                                              {u"Kalibriergeraden"_qs, u"BCDEIJKLMNOP"_qs}};
        for (const QString &sheet : book.blaetter()) {
            for (const QString &address : book.zellen(sheet)) {
                const GeleseneZelle cell = book.zelle(sheet, address);
                QVERIFY2(cell.art != u"e", qPrintable(sheet + address));
                const QString row = address.sliced(1);
                const bool heading = row == u"1" || (sheet == u"Kalibriergeraden" && row == u"9");
                if (numbers.value(sheet).contains(address[0]) && !heading)
                    QVERIFY2(cell.leer() || cell.art == u"n", qPrintable(sheet + address));
            }
        }
    }

    void aResultThatCannotBeComputedSaysWhy_data()
    {
        QTest::addColumn<QByteArray>("example");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("note");
        const auto row = [](const char *name, const char *example, const char *cell,
                            const QString &note) {
            QTest::newRow(name) << QByteArray(example) << QString::fromLatin1(cell) << note;
        };
        const QString direct =
            u"Ein Messwert des direkten Prüfmerkmals fehlt oder ist keine Zahl"_qs;
        const QString divided = u"Nicht berechenbar: Division durch Null"_qs;
        const QString overflow = u"Nicht berechenbar: Überlauf"_qs;
        row("mean of a gap", "one value missing", "E3", direct);
        row("what follows from it", "one value missing", "E23", direct);
        row("slope that follows from it", "one value missing", "E28", direct);
        row("what does not", "one value missing", "E9", {});
        row("covariable", "a covariable that is no number", "E10",
            u"Ein Wert der Kovariable fehlt oder ist keine Zahl"_qs);
        row("no variance", "no variance", "E23", divided);
        row("no covariance", "no covariance with the covariable", "E28", divided);
        row("line through it", "no covariance with the covariable", "E29", divided);
        row("one point", "one point, rounded", "E8", divided);
        row("too large to round", "rounding overflows", "E3", overflow);
        row("too large to square", "squares too large", "E8", overflow);
        row("too many places", "rounding to 400 places", "E3", divided);
        row("option", "options that can't be read", "E3",
            u"Eine Berechnungsoption ist nicht lesbar: Typen unverträglich"_qs);
        row("what follows from the option", "options that can't be read", "E15",
            u"Eine Berechnungsoption ist nicht lesbar: Typen unverträglich"_qs);
    }
    void aResultThatCannotBeComputedSaysWhy()
    {
        QFETCH(QByteArray, example);
        QFETCH(QString, cell);
        const GeleseneMappe &book = m_books.at(example.toStdString());
        QTEST(book.zelle(u"Auswertung"_qs, cell).wert.toString(), "note");
    }

    void roundingGoesToTheEvenNumber_data()
    {
        QTest::addColumn<QByteArray>("example");
        QTest::addColumn<double>("mean");
        QTest::newRow("2.45") << QByteArray("mean 2.45 to one place") << 24 * 0.1;
        QTest::newRow("2.35") << QByteArray("mean 2.35 to one place") << 24 * 0.1;
        QTest::newRow("0.125") << QByteArray("mean 0.125 to two places") << 12 * 0.01;
        QTest::newRow("-2.5") << QByteArray("mean -2.5 to no place") << -2.0;
        QTest::newRow("1250") << QByteArray("mean 1250 to tens") << 1200.0;
        QTest::newRow("0.35") << QByteArray("mean 0.35, by 0.1 a little less than 3.5") << 3 * 0.1;
        QTest::newRow("1.245") << QByteArray("mean 1.245, by 0.01 a little more than 124.5")
                               << 125 * 0.01;
    }
    void roundingGoesToTheEvenNumber()
    {
        QFETCH(QByteArray, example);
        QFETCH(double, mean);
        const GeleseneZelle cell =
            m_books.at(example.toStdString()).zelle(u"Auswertung"_qs, u"B3"_qs);
        QVERIFY(isSame(cell.wert.toDouble(), mean));
    }

    void verdictIsAFormulaAndThatOfTheProgram_data()
    {
        QTest::addColumn<QByteArray>("example");
        QTest::addColumn<QString>("verdict");
        QTest::newRow("good") << QByteArray("file, good") << u"gut"_qs;
        QTest::newRow("critical") << QByteArray("file, critical, rounded") << u"kritisch"_qs;
        QTest::newRow("at the limit") << QByteArray("minimum reached") << u"gut"_qs;
        QTest::newRow("five bits") << QByteArray("minimum missed by five last bits") << u"gut"_qs;
        QTest::newRow("nine bits")
            << QByteArray("minimum missed by nine last bits") << u"kritisch"_qs;
        QTest::newRow("tiny minimum") << QByteArray("R2 by the minimum too large") << u"gut"_qs;
        QTest::newRow("huge minimum")
            << QByteArray("R2 by the minimum too small") << u"kritisch"_qs;
        QTest::newRow("not computed") << QByteArray("nothing entered") << u"kritisch"_qs;
    }
    void verdictIsAFormulaAndThatOfTheProgram()
    {
        QFETCH(QByteArray, example);
        QFETCH(QString, verdict);
        const GeleseneMappe &book = m_books.at(example.toStdString());
        const GeleseneZelle rating = book.zelle(u"Auswertung"_qs, u"C23"_qs);
        QVERIFY(!rating.formel.isEmpty());
        QCOMPARE(rating.wert.toString(), verdict);
        const GeleseneZelle sentence = book.zelle(u"Auswertung"_qs, u"A39"_qs);
        QVERIFY(!sentence.formel.isEmpty());
        QCOMPARE(sentence.wert.toString().contains(u"liegt über"_qs), verdict == u"gut");
        QCOMPARE(sentence.wert.toString().count(u'\n'), 1);
    }

    void oneRowForEveryPointWithTheValuesOfTheDocument()
    {
        const GeleseneMappe &book = m_books.at("ordinary");
        const auto document = dokument("ordinary");
        int row = 1;
        for (int field = 1; field <= document->PrüffelderAnzahl(); ++field) {
            for (int point = 1; point <= document->PrüffeldPrüfpunkte(field); ++point) {
                ++row;
                const auto cell = [&](char column) {
                    return book.zelle(u"Messwerte"_qs, QLatin1Char(column) + QString::number(row));
                };
                QCOMPARE(cell('A').wert.toInt(), field);
                QCOMPARE(cell('B').wert.toString(), document->PrüffeldName(field));
                QCOMPARE(cell('C').wert.toString(), document->PrüfpunktName(point));
                QCOMPARE(cell('D').wert.toDouble(), document->PrüffeldWert(field));
                const Values &values = document->values();
                QCOMPARE(cell('E').wert.toDouble(),
                         values.number(document->Messwert(pmDirekt, field, point)));
                QCOMPARE(cell('F').wert.toDouble(),
                         values.number(document->Messwert(pmIndirekt, field, point)));
                QCOMPARE(cell('E').zahlenformat, u"#,##0.00"_qs);
            }
        }
        QVERIFY(book.zelle(u"Messwerte"_qs, u'A' + QString::number(row + 1)).leer());
        QCOMPARE(book.zelle(u"Messwerte"_qs, u"E1"_qs).wert.toString(),
                 u"direktes Prüfmerkmal:\nVerdichtungsgrad DPr [%]"_qs);
    }

    void aValueThatIsNoneLeavesItsCellEmptyAndIsNamed()
    {
        const GeleseneMappe &book =
            m_books.at("a value that is no number, one too large, one empty");
        QVERIFY(book.zelle(u"Messwerte"_qs, u"F3"_qs).leer());
        QCOMPARE(book.zelle(u"Messwerte"_qs, u"G3"_qs).wert.toString(),
                 u"indirektes Prüfmerkmal: „=1+1“: Typen unverträglich"_qs);
        QCOMPARE(book.zelle(u"Messwerte"_qs, u"G4"_qs).wert.toString(),
                 u"direktes Prüfmerkmal: leer; indirektes Prüfmerkmal: „1E999“: Überlauf"_qs);
        QCOMPARE(m_books.at("one value missing").zelle(u"Messwerte"_qs, u"G7"_qs).wert.toString(),
                 u"direktes Prüfmerkmal: fehlt"_qs);
    }

    void resultsHaveTheDecimalPlacesOfTheDocument()
    {
        const GeleseneMappe &book = m_books.at("file, good");
        QCOMPARE(book.zelle(u"Auswertung"_qs, u"B3"_qs).zahlenformat, u"#,##0.0"_qs);
        QCOMPARE(book.zelle(u"Auswertung"_qs, u"B8"_qs).zahlenformat, u"#,##0.00"_qs);
        QCOMPARE(book.zelle(u"Auswertung"_qs, u"D28"_qs).zahlenformat, u"#,##0.0000"_qs);
        QCOMPARE(book.zelle(u"Kalibriergeraden"_qs, u"B2"_qs).zahlenformat, u"#,##0.0000"_qs);
    }

    void captionsFollowThePlausibilityPage()
    {
        const GeleseneMappe &book = m_books.at("file, good");
        const auto caption = [&](int row) {
            return book.zelle(u"Auswertung"_qs, u'A' + QString::number(row)).wert.toString();
        };
        QCOMPARE(caption(2), u"Mittelwerte"_qs);
        QCOMPARE(caption(3), u"Mittelwert direktes Prüfmerkmal: Verdichtungsgrad DPr"_qs);
        QCOMPARE(caption(5), u"Mittelwert Anzahl der Übergänge Z"_qs);
        QCOMPARE(caption(12), u"Standardabweichung"_qs);
        QCOMPARE(caption(19), u"Kovarianz direktes Prüfmerkmal und Anzahl der Übergänge Z"_qs);
        QCOMPARE(caption(27), u"Kalibriergeraden"_qs);
        QCOMPARE(caption(33),
                 u"indirektes Prüfmerkmal und Anzahl der Übergänge Z: Achsenabschnitt"_qs);
    }

    void oddNamesStayTexts()
    {
        const GeleseneMappe &book = m_books.at("odd names");
        const auto text = [&](const char *cell) {
            const GeleseneZelle found = book.zelle(u"Messwerte"_qs, QString::fromLatin1(cell));
            return found.formel.isEmpty() && found.art == u"s" ? found.wert.toString() : QString();
        };
        QCOMPARE(text("B2"), u"=HYPERLINK(\"x\")"_qs);
        QCOMPARE(text("B5"), u"'-2+3"_qs);
        QCOMPARE(text("B9").size(), 32767);
        QCOMPARE(text("E1"), u"direktes Prüfmerkmal:\n=1+1 DPr [%]"_qs);
        // The reader leaves the format's escapes as they are.
        QCOMPARE(text("C2"), u" _x0002__x005F_x000D_ \U0001F600 "_qs);
        QVERIFY(text("D1").contains(u"+\"'<&>[]:*?/\\ _x005F_x0041_ _x0001__x000b_\n\t²"_qs));
    }

    void longTextsOfManyLinesAreCompleteInTheProtocolData()
    {
        const auto document = dokument("ordinary");
        const QString key = u"Protokoll Verdichtung Kalibrierfeld Bemerkungen"_qs;
        const QString line = u"Eine Zeile mit rund dreißig Zeichen \U0001F600\u0001_x0041_"_qs;
        document->DataStoreLet(key, (line + u"\r\n"_qs).repeated(1100));
        document->DirektesPrüfmerkmal().setName(QString(199, u'D') + u"\U0001F600"_qs);
        const GeleseneMappe book = mappe(*document);
        const int first = book.zeileMit(u"Protokolldaten"_qs, u'A', key);
        QVERIFY(first > 0);
        QString whole;
        for (int row = first; row < first + 3; ++row)
            whole += book.zelle(u"Protokolldaten"_qs, u'B' + QString::number(row)).wert.toString();
        QString expected = line + u'\n';
        expected.replace(u"_x0041_"_qs, u"_x005F_x0041_"_qs).replace(u"\u0001"_qs, u"_x0001_"_qs);
        QCOMPARE(whole, expected.repeated(1100));
    }

    void aRefusalOfTheLibraryIsToldInGerman()
    {
        QTemporaryDir folder;
        Arbeitsmappe book(folder.filePath(u"a.xlsx"_qs), QDateTime::fromSecsSinceEpoch(0));
        Blatt sheet(book, u"A"_qs);
        try {
            sheet.text(2'000'000, 0, u"x"_qs); // no such row
            QFAIL("not refused");
        } catch (const RunTimeError &error) {
            QCOMPARE(error.number(), 5);
            const QString german = RunTimeError::textOf(ErrorNumber::InvalidProcedureCall) +
                                   u": ein Inhalt passt nicht in die Tabelle (Kennzahl "_qs;
            QVERIFY2(error.description().startsWith(german), qPrintable(error.description()));
            QVERIFY(error.description().size() <= german.size() + 3);
        }
    }

    void everyNumberFitsItsColumn_data() { jedesBeispiel(); }
    void everyNumberFitsItsColumn()
    {
        QFETCH(QByteArray, example);
        const auto document = dokument(example.constData());
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(*document, path, QDateTime()));
        const GeleseneMappe &book = m_books.at(example.toStdString());
        const QStringList sheets{u"Messwerte"_qs, u"Auswertung"_qs, u"Kalibriergeraden"_qs};
        for (qsizetype sheet = 0; sheet < sheets.size(); ++sheet) {
            const QByteArray xml = teil(path, u"xl/worksheets/sheet%1.xml"_qs.arg(sheet + 1));
            for (const QString &address : book.zellen(sheets[sheet])) {
                const GeleseneZelle cell = book.zelle(sheets[sheet], address);
                if (!cell.wert.isDouble() || !cell.zahlenformat.startsWith(u"#,##0"_qs) ||
                    std::abs(cell.wert.toDouble()) >= 1e50) // no column is wide enough
                    continue;
                const auto decimals = static_cast<std::int32_t>(cell.zahlenformat.count(u'0') - 1);
                const qsizetype shown =
                    document->values().display(cell.wert.toDouble(), decimals).size();
                QVERIFY2(spaltenbreite(xml, address[0]) >= double(shown),
                         qPrintable(sheets[sheet] + u'!' + address));
            }
        }
    }

    void aNoteIsAFormulaThatEndsWithTheGap()
    {
        const GeleseneMappe &book =
            m_books.at("a value that is no number, one too large, one empty");
        QCOMPARE(book.zelle(u"Messwerte"_qs, u"G4"_qs).formel,
                 u"=MID(IF(COUNT(Messwerte!$E$4)=1,\"\",\"; direktes Prüfmerkmal: leer\")&"
                 u"IF(COUNT(Messwerte!$F$4)=1,\"\",\"; indirektes Prüfmerkmal: „1E999“: "
                 u"Überlauf\"),3,999)"_qs);
    }

    void anyTextInANoteStaysAsItIs()
    {
        const auto document = dokument("ordinary");
        document->DataStore().set(document->MesswertKey(pmDirekt, 1, 1), u"5 %1 %2\r\n\"a\""_qs);
        const GeleseneZelle note = mappe(*document).zelle(u"Messwerte"_qs, u"G2"_qs);
        QCOMPARE(note.wert.toString(),
                 u"direktes Prüfmerkmal: „5 %1 %2 \"a\"“: Typen unverträglich"_qs);
        QCOMPARE(note.formel, u"=MID(IF(COUNT(Messwerte!$E$2)=1,\"\",\"; direktes Prüfmerkmal: "
                              u"„5 %1 %2 \"\"a\"\"“: Typen unverträglich\"),3,999)"_qs);
    }

    void aLongTextInANoteIsShortened()
    {
        const auto document = dokument("ordinary");
        document->DataStore().set(document->MesswertKey(pmDirekt, 1, 1),
                                  QString(u"\"\u0001\r\n"_qs + QString(400, u'ß')));
        const GeleseneZelle note = mappe(*document).zelle(u"Messwerte"_qs, u"G2"_qs);
        QCOMPARE(note.wert.toString(), u"direktes Prüfmerkmal: „\"  "_qs + QString(97, u'ß') +
                                           u"…“: Typen unverträglich"_qs);
        QVERIFY(note.formel.contains(u"„\"\"  ßß"_qs));
        QVERIFY(note.formel.size() < 255);
    }

    void protocolDataAreCompleteAndInOrder()
    {
        const GeleseneMappe &book = m_books.at("odd names");
        const auto document = dokument("odd names");
        QStringList keys;
        for (const QString &key : document->DataStore().keys()) {
            if (key.startsWith(u"Protokoll Verdichtung "_qs))
                keys += key;
        }
        QCOMPARE(keys.size(), 25);
        for (qsizetype i = 0; i < keys.size(); ++i) {
            const auto cell = [&](QChar column) {
                return book.zelle(u"Protokolldaten"_qs, column + QString::number(i + 2));
            };
            QCOMPARE(cell(u'A').wert.toString(), keys[i]);
            if (i < 24)
                QCOMPARE(cell(u'B').wert.toString(),
                         document->values().text(document->DataStore().item(keys[i])));
        }
        QString whole;
        for (int row = 26; row <= 28; ++row)
            whole += book.zelle(u"Protokolldaten"_qs, u'B' + QString::number(row)).wert.toString();
        QCOMPARE(whole.size(), 70003);
        QVERIFY(whole.startsWith(u"=A1x"_qs));
        QCOMPARE(book.zelle(u"Protokolldaten"_qs, u"A28"_qs).wert.toString(),
                 u"Protokoll Verdichtung Kalibrierfeld Bemerkungen (Fortsetzung)"_qs);
    }

    void theDocumentStaysAsItIs()
    {
        QTemporaryDir folder;
        const auto document = dokument("ordinary, rounded");
        document->setIsDirty(false);
        const auto contents = [&] {
            QStringList result;
            document->DataStore().forEach([&](const QString &key, const Variant &value) {
                result += key + u'=' + document->values().text(value);
            });
            return result;
        };
        const QStringList before = contents();
        QVERIFY(schreibeTabelle(*document, folder.filePath(u"a.xlsx"_qs), QDateTime()));
        QCOMPARE(contents(), before);
        QCOMPARE(document->IsDirty(), false);
    }

    void theSameDocumentGivesTheSameBytes()
    {
        QTemporaryDir folder;
        const auto bytes = [&] {
            const QString path = folder.filePath(u"a.xlsx"_qs);
            schreibeTabelle(*dokument("ordinary"), path, QDateTime::fromSecsSinceEpoch(86400));
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray first = bytes();
        QVERIFY(first.size() > 5000);
        QCOMPARE(bytes(), first);
    }

    void sheetsAreSetUpForScreenAndPaper()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(*dokument("odd names"), path, QDateTime()));
        for (int sheet = 1; sheet <= 4; ++sheet) {
            const QByteArray xml = teil(path, u"xl/worksheets/sheet%1.xml"_qs.arg(sheet));
            QVERIFY(xml.contains("paperSize=\"9\""));
            QVERIFY(xml.contains("state=\"frozen\""));
            QVERIFY(xml.contains("<cols>"));
            QVERIFY(xml.contains("fitToHeight=\"0\""));
        }
        QVERIFY(teil(path, u"xl/workbook.xml"_qs).contains("_xlnm.Print_Titles"));
        const std::array<const char *, 3> points{"$E$2:$E$11", "$E$2:$E$11", "$F$2:$F$11"};
        for (std::size_t chart = 0; chart < points.size(); ++chart) {
            const QByteArray xml = teil(path, u"xl/charts/chart%1.xml"_qs.arg(chart + 1));
            QVERIFY(xml.contains("<c:scatterChart>"));
            QCOMPARE(xml.count("<c:ser>"), 2);
            QVERIFY(xml.contains(QByteArray("<c:f>Messwerte!") + points[chart]));
            const QByteArray first = QByteArray::number(10 + 2 * int(chart));
            const QByteArray last = QByteArray::number(11 + 2 * int(chart));
            QVERIFY(xml.contains("<c:f>Kalibriergeraden!$C$" + first + ":$C$" + last));
        }
        // A name that looks like a formula is the axis' title, not the address of one.
        QVERIFY(teil(path, u"xl/charts/chart1.xml"_qs).contains("<a:t> =1+1 DPr [%]</a:t>"));
    }

private:
    static void jedesBeispiel()
    {
        QTest::addColumn<QByteArray>("example");
        for (const Beispiel &example : beispiele())
            QTest::newRow(example.name) << QByteArray(example.name);
    }

    static GeleseneMappe mappe(Kalibrierung &document)
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xlsx"_qs);
        if (!schreibeTabelle(document, path, QDateTime::fromSecsSinceEpoch(0)))
            qFatal("not written");
        return GeleseneMappe::lies(path);
    }

    static QByteArray teil(const QString &path, const QString &name)
    {
        bool good = false;
        return starteProgramm(
            u"/usr/bin/python3"_qs,
            {u"-c"_qs,
             u"import sys,zipfile;sys.stdout.buffer.write(zipfile.ZipFile(sys.argv[1]).read(sys.argv[2]))"_qs,
             path, name},
            &good);
    }

    // In characters, as the sheet's \a xml has it.
    static double spaltenbreite(const QByteArray &xml, QChar column)
    {
        const int number = column.unicode() - u'A' + 1;
        static const QRegularExpression entry(
            u"<col min=\"(\\d+)\" max=\"(\\d+)\" width=\"([0-9.]+)\""_qs);
        for (auto found = entry.globalMatch(QString::fromUtf8(xml)); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            if (match.captured(1).toInt() <= number && number <= match.captured(2).toInt())
                return match.captured(3).toDouble();
        }
        return 0;
    }

    std::map<std::string, GeleseneMappe> m_books;
};

REGISTER_TEST(TestTabelle)
#include "tst_tabelle.moc"
