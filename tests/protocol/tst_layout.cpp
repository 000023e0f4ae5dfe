// What an inspector would object to: texts on texts, beside the sheet, headings left alone.
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QRectF>
#include <QTest>

#include <functional>

namespace {

using Make = std::function<std::unique_ptr<Kalibrierung>()>;

std::unique_ptr<Kalibrierung> hugeNumbers()
{
    return documents::of({{{1e70, -1e15}, {2e70, 2e15}, {2.5e70, 1e15}},
                          {{3e70, 3e15}, {4e70, 4e15}, {4.5e70, 4.2e15}},
                          {{5e70, 5e15}, {6e70, 6e15}, {6.5e70, 6.2e15}}});
}

std::unique_ptr<Kalibrierung> manyDecimals()
{
    auto document = documents::good();
    document->DirektesPrüfmerkmal().setNachkommastellen(30);
    document->IndirektesPrüfmerkmal().setNachkommastellen(9);
    document->setNachkommastellenAnstieg(30);
    document->setNachkommastellenAchsenabschnitt(30);
    document->setNachkommastellenVarianzen(30);
    return document;
}

std::unique_ptr<Kalibrierung> endlessNames()
{
    auto document = documents::good();
    const QString words = u"Wort "_qs.repeated(1000);
    document->DirektesPrüfmerkmal().setName(words);
    document->DirektesPrüfmerkmal().setFormelzeichen(QString(800, u'D'));
    document->DirektesPrüfmerkmal().setEinheit(QString(300, u'%'));
    document->Kovariable().setFormelzeichen(QString(400, u'Z'));
    document->setPrüffeldName(1, words);
    document->setPrüfpunktName(1, words);
    document->DataStoreLet(u"Protokoll Verdichtung Unterlage Bemerkungen"_qs, words);
    return document;
}

// Points far outside of the axes: a minimum truncated towards zero.
std::unique_ptr<Kalibrierung> outsideOfTheAxes()
{
    return documents::of({{{-1.85, -1.85}, {-1.8, -1.7}, {-1.6, -1.75}},
                          {{-1.4, -1.3}, {-1.3, -1.45}, {-1.2, -1.1}},
                          {{-1.0, -0.95}, {-0.9, -0.8}, {-0.79, -0.85}}});
}

} // namespace

class TstLayout : public QObject
{
    Q_OBJECT

    const TextMeasure m_measure;

    QRectF boxOf(const FoundText &text) const
    {
        // Letters rarely reach the font's full height: texts may come that close.
        const double up = 0.75 * m_measure.ascent(text.style);
        const double down = 0.5 * m_measure.descent(text.style);
        if (text.upward)
            return {text.at.x() - up, text.at.y(), up + down, text.width};
        return {text.at.x(), text.at.y() - down, text.width, up + down};
    }

    void addDocuments()
    {
        QTest::addColumn<Make>("make");
        QTest::newRow("good") << Make(documents::good);
        QTest::newRow("critical") << Make(documents::critical);
        QTest::newRow("negative slope") << Make(documents::negativeSlope);
        QTest::newRow("long texts") << Make(documents::longTexts);
        QTest::newRow("12 x 20") << Make([] { return documents::grid(12, 20); });
        QTest::newRow("huge numbers") << Make(hugeNumbers);
        QTest::newRow("many decimals") << Make(manyDecimals);
        QTest::newRow("endless names") << Make(endlessNames);
        QTest::newRow("outside of the axes") << Make(outsideOfTheAxes);
    }

private slots:
    void noTextStandsOnAnother_data() { addDocuments(); }
    void noTextStandsOnAnother()
    {
        QFETCH(Make, make);
        const auto document = make();
        const Composed protocol = composed(*document);
        QVERIFY(!protocol.error);
        for (const auto &page : protocol.pages) {
            const std::vector<FoundText> texts = found(page->drawing);
            for (std::size_t i = 0; i < texts.size(); ++i) {
                for (std::size_t j = i + 1; j < texts.size(); ++j) {
                    const bool touch = boxOf(texts[i]).intersects(boxOf(texts[j]));
                    if (touch)
                        qWarning() << page->number << texts[i].text << texts[j].text;
                    QVERIFY(!touch);
                }
            }
        }
    }

    void nothingLeavesTheSheet_data() { addDocuments(); }
    void nothingLeavesTheSheet()
    {
        QFETCH(Make, make);
        const auto document = make();
        for (const PageFormat &format :
             {PageFormat{}, PageFormat{14.8, 21.0}, PageFormat{21.0, 14.8}, PageFormat{29.7, 21.0},
              PageFormat{21.59, 27.94}, PageFormat{10.5, 7.4}}) {
            const Composed protocol =
                composed(*document, ProtocolType::WithCalibrationField, format);
            QVERIFY(!protocol.error);
            for (const auto &page : protocol.pages) {
                const Extents &extents = page->drawing.extents();
                QVERIFY(extents.left >= 0.5);
                QVERIFY(extents.right <= format.pageWidth() - 0.5);
                QVERIFY(extents.upper <= format.pageHeight() - pageMarginCm + 1e-9);
                for (const Primitive &primitive : page->drawing.primitives()) {
                    const auto *text = std::get_if<PlacedText>(&primitive);
                    if (!text || text->text == u"- %1 -"_qs.arg(page->number))
                        continue;
                    QVERIFY(text->at.y() >= pageMarginCm);
                }
                QVERIFY(page->drawing.primitives().size() > 1); // more than the page's number
            }
        }
    }

    void everySheetShowsTheSameTexts()
    {
        const auto document = documents::longTexts();
        const auto words = [&](const PageFormat &format) {
            QStringList all = composed(*document, ProtocolType::ResultsOnly, format).texts();
            all.removeIf([](const QString &text) {
                return text.startsWith(u"- "_qs) || text.contains(u"Prüffeld"_qs) ||
                       text.contains(u"Kovariable Z"_qs);
            });
            all.sort();
            all.removeDuplicates();
            return all;
        };
        QCOMPARE(words({14.8, 21.0}), words({}));
        QCOMPARE(words({21.0, 14.8}), words({}));
        QCOMPARE(words({29.7, 21.0}), words({}));
    }

    void noHeadingStandsAloneAtTheFootOfAPage()
    {
        for (std::int32_t fields = 3; fields <= 30; ++fields) {
            const auto document = documents::grid(fields, 3 + fields % 4);
            for (const ProtocolType type :
                 {ProtocolType::WithCalibrationField, ProtocolType::ResultsOnly}) {
                const Composed protocol = composed(*document, type);
                for (const auto &page : protocol.pages) {
                    std::vector<FoundText> texts = found(page->drawing);
                    texts.pop_back(); // the page number
                    QVERIFY(!texts.empty());
                    QVERIFY2(!texts.back().style.bold, qPrintable(texts.back().text));
                }
            }
        }
    }

    void noPageHoldsTheTitleAloneOrNothing()
    {
        for (std::int32_t fields = 3; fields <= 60; ++fields) {
            const auto document = documents::grid(fields, 3);
            for (const auto &page : composed(*document, ProtocolType::ResultsOnly).pages)
                QVERIFY(page->drawing.primitives().size() > 5);
        }
    }

    void longRemarksLeaveNeitherTitleNorHeadingAlone()
    {
        for (int lines = 20; lines <= 60; ++lines) {
            const auto document = documents::good();
            document->DataStoreLet(u"Protokoll Verdichtung Unterlage Bemerkungen"_qs,
                                   QStringList(lines, u"Zeile"_qs).join(u'\n'));
            const Composed protocol = composed(*document, ProtocolType::WithCalibrationField);
            QCOMPARE(protocol.texts().count(u"Zeile"_qs), lines);
            for (const auto &page : protocol.pages) {
                std::vector<FoundText> texts = found(page->drawing);
                texts.pop_back(); // the page number
                QVERIFY(texts.size() > 3);
                QVERIFY2(!texts.back().style.bold, qPrintable(texts.back().text));
            }
        }
    }

    void pointsOutsideOfTheAxesAreDrawnAndHaveRoom()
    {
        const auto document = outsideOfTheAxes();
        const Composed protocol = composed(*document, ProtocolType::ResultsOnly);
        std::size_t points = 0;
        for (const auto &page : protocol.pages) {
            for (const Primitive &primitive : page->drawing.primitives())
                points += std::holds_alternative<PlacedPoint>(primitive) ? 1 : 0;
        }
        QCOMPARE(points, std::size_t{27});
    }
};

REGISTER_TEST(TstLayout)
#include "tst_layout.moc"
