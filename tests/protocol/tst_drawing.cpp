#include "protocol/pages/bands.h"
#include "protocol/pages/cells.h"
#include "protocol/pages/drawing.h"
#include "protocol/pages/page.h"
#include "protocol/pages/painting.h"
#include "protocol/pages/textmeasure.h"
#include "tests/protocol/composed.h"
#include "tests/support/testregistry.h"

#include <QImage>
#include <QPainter>
#include <QTest>

class TstDrawing : public QObject
{
    Q_OBJECT

    TextMeasure m_measure;
    const TextStyle m_body = styleOfPoints(12);

    int darkPixels(const QImage &image, const QRect &area) const
    {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                count += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
        }
        return count;
    }

private slots:
    void anEmptyDrawingHasNoExtents() { QCOMPARE(Drawing().extents(), Extents{}); }

    void extentsHoldTextsLinesAndPoints()
    {
        Drawing drawing;
        drawing.add(PlacedText{u"x"_qs, {1.0, 2.0}, m_body, 3.0, false}, 0.4, 0.1);
        QCOMPARE(drawing.extents(), (Extents{1.0, 4.0, 1.9, 2.4}));
        drawing.add(PlacedLine{{0.0, 5.0}, {2.0, 1.0}, 0.5});
        QCOMPARE(drawing.extents(), (Extents{0.0, 4.0, 1.0, 5.0}));
        drawing.add(PlacedPoint{{8.0, 0.0}, 1.0});
        QCOMPARE(drawing.extents(), (Extents{0.0, 8.5, -0.5, 5.0}));
    }

    void anUpwardTextExtendsUpwards()
    {
        Drawing drawing;
        drawing.add(PlacedText{u"x"_qs, {1.0, 2.0}, m_body, 3.0, true}, 0.4, 0.1);
        QCOMPARE(drawing.extents(), (Extents{0.6, 1.1, 2.0, 5.0}));
    }

    void insertingMovesEverythingToTheInsertionPoint()
    {
        Drawing band = spacerBand(1.0);
        band.add(PlacedLine{{0.0, -1.0}, {2.0, -1.0}, 0.1});
        Drawing page;
        page.setInsertionPoint({2.0, 20.0});
        page.insert(band);
        page.insert(Drawing());
        QCOMPARE(std::get<PlacedLine>(page.primitives().at(0)).to, QPointF(4.0, 19.0));
        QCOMPARE(page.extents(), (Extents{2.0, 4.0, 19.0, 20.0}));
    }

    void protocolStylesAreThoseOfTheTable_data()
    {
        QTest::addColumn<bool>("heading");
        QTest::addColumn<int>("level");
        QTest::addColumn<int>("points");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<bool>("underlined");
        QTest::newRow("title") << true << 0 << 16 << true << true;
        QTest::newRow("section") << true << 1 << 14 << true << false;
        QTest::newRow("sub-section") << true << 2 << 14 << true << false;
        QTest::newRow("emphasised") << false << 1 << 12 << true << false;
        QTest::newRow("body") << false << 0 << 12 << false << false;
    }
    void protocolStylesAreThoseOfTheTable()
    {
        QFETCH(bool, heading);
        QFETCH(int, level);
        QFETCH(int, points);
        QFETCH(bool, bold);
        QFETCH(bool, underlined);
        QCOMPARE(*protocolStyle(heading, level), styleOfPoints(points, bold, underlined));
        QCOMPARE(protocolFont(*protocolStyle(heading, level)).families().first(),
                 u"Times New Roman"_qs);
    }

    void otherCombinationsLeaveTheTextUnset()
    {
        QVERIFY(!protocolStyle(true, 3));
        QVERIFY(!protocolStyle(false, 2));
        QVERIFY(!protocolStyle(false, -1));
        QVERIFY(textBand(m_measure, u"Text"_qs, false, 2).primitives().empty());
    }

    void aTitlesFirstLineKeepsItsBlankBeforeTheLineBreak()
    {
        const Drawing band = textBand(m_measure, u"Titel \r\nzweite Zeile"_qs, true, 0);
        QCOMPARE(Composed::textsOf(band), (QStringList{u"Titel "_qs, u"zweite Zeile"_qs}));
    }

    void aSpacerTakesItsHeightAndDrawsNothing()
    {
        const Drawing band = spacerBand(0.25);
        QCOMPARE(band.extents().height(), 0.25);
        QVERIFY(band.primitives().empty());
    }

    void everyKindOfLineBreakBreaks()
    {
        QCOMPARE(m_measure.lines(u"a\r\nb\rc\nd\u2028e"_qs, m_body, 10.0),
                 (std::vector<QString>{u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs, u"e"_qs}));
    }

    void aParagraphOfAnyLengthIsBrokenAndLosesNoWord_data()
    {
        QTest::addColumn<int>("words");
        for (const int words : {5'000, 60'000, 90'000, 118'000, 160'000})
            QTest::addRow("%d words", words) << words;
    }
    void aParagraphOfAnyLengthIsBrokenAndLosesNoWord()
    {
        QFETCH(int, words);
        const QString text = u"Wort "_qs.repeated(words).trimmed();
        QVERIFY(m_measure.width(text, m_body) > words * 0.5);
        qsizetype found = 0;
        for (const QString &line : m_measure.lines(text, m_body, 6.0)) {
            found += line.count(u"Wort"_qs);
            QVERIFY(line.size() < 60);
        }
        QCOMPARE(found, words);
        QVERIFY(m_measure.shrunk(text, m_body, 6.0).pixelSize < m_body.pixelSize);
    }

    void theWidthOfALongTextIsThatOfItsParts()
    {
        const QString text = u'x' + QString::fromUcs4(U"\U0001D4D0").repeated(8'001);
        constexpr qsizetype cut = 9'999; // a piece would end within the character there
        double expected = 0.0;
        for (const QString &part : {text.left(cut), text.mid(cut, 2), text.mid(cut + 2)})
            expected += m_measure.width(part, m_body);
        QVERIFY(std::abs(m_measure.width(text, m_body) - expected) < 0.01);
    }

    void blankLinesAndControlCharactersSurvive()
    {
        QCOMPARE(m_measure.lines(u"a\n\nb\tc"_qs, m_body, 10.0),
                 (std::vector<QString>{u"a"_qs, QString(), u"b c"_qs}));
        QCOMPARE(m_measure.lines(QString(), m_body, 10.0), std::vector<QString>{QString()});
    }

    void longTextsBreakBetweenWordsAndLoseNothing()
    {
        const QString text = u"eins zwei drei vier fünf sechs sieben acht neun zehn"_qs;
        const std::vector<QString> lines = m_measure.lines(text, m_body, 3.0);
        QVERIFY(lines.size() > 2);
        QStringList joined;
        for (const QString &line : lines) {
            QVERIFY(m_measure.width(line, m_body) <= 3.0);
            joined.append(line);
        }
        QCOMPARE(joined.join(u' '), text);
    }

    void aWordWiderThanTheCellBreaksInside()
    {
        const QString word(200, u'w');
        QString joined;
        for (const QString &line : m_measure.lines(word, m_body, 3.0)) {
            QVERIFY(m_measure.width(line, m_body) <= 3.0);
            joined += line;
        }
        QCOMPARE(joined, word);
    }

    void numbersEndAtTheColumnsEdgeWhateverFollows()
    {
        const Column column{5.0, 6.0, Alignment::Number, 3.0};
        for (const QString &text : {u"1,5 %"_qs, u"-1.234,5"_qs, u"(Fehler)"_qs}) {
            Drawing drawing;
            drawCell(drawing, m_measure, cellOf(m_measure, column, text, m_body), 0.0);
            const auto &placed = std::get<PlacedText>(drawing.primitives().at(0));
            const QString number = text.section(u' ', 0, 0);
            QCOMPARE(placed.at.x() + m_measure.width(number, m_body), 8.0);
        }
    }

    void decimalsStandBelowEachOther()
    {
        const Column column{5.0, 6.0, Alignment::Decimal, 3.0};
        for (const QString &text : {u"-427,42 [%]"_qs, u"4,8090"_qs}) {
            Drawing drawing;
            drawCell(drawing, m_measure, cellOf(m_measure, column, text, m_body), 0.0);
            const auto &placed = std::get<PlacedText>(drawing.primitives().at(0));
            const QString whole = text.section(u',', 0, 0);
            QCOMPARE(placed.at.x() + m_measure.width(whole, m_body), 8.0);
        }
    }

    void aNumberTooWideForItsPlaceStaysInItsCell()
    {
        const Column column{5.0, 6.0, Alignment::Number, 3.0};
        const QString text(22, u'7');
        Drawing drawing;
        drawCell(drawing, m_measure, cellOf(m_measure, column, text, m_body), 0.0);
        QVERIFY(drawing.extents().left >= 5.0);
        QVERIFY(drawing.extents().right <= 11.0);
    }

    void pagesCarryTheirNumberCentredAtTheFoot()
    {
        const Page page = makePage(7, {}, m_measure);
        QCOMPARE(page.name, u"DrawDest 7"_qs);
        const auto &text = std::get<PlacedText>(page.drawing.primitives().at(0));
        QCOMPARE(text.text, u"- 7 -"_qs);
        QCOMPARE(text.at.x() + text.width / 2, 10.5);
        QVERIFY(text.at.y() < pageMarginCm);
        QCOMPARE(page.drawing.insertionPoint(), QPointF(2.1, 27.7));
    }

    void debugPagesCarryTheirNameAndExtents()
    {
        const QStringList texts = Composed::textsOf(makePage(2, {}, m_measure, true).drawing);
        QVERIFY(texts.contains(u"Seite 2"_qs));
        QVERIFY(texts.contains(u"DrawDest 2"_qs));
        QVERIFY(texts.contains(u"Zeichenfläche: 0, 0 bis 210, 297 mm"_qs));
    }

    void narrowSheetsScaleAndWideOnesCentre()
    {
        const PageFormat narrow{14.8, 21.0};
        QCOMPARE(narrow.pageWidth(), 21.0);
        QCOMPARE(narrow.leftMargin(), 2.1);
        QVERIFY(narrow.pageHeight() > 29.7);
        const PageFormat wide{29.7, 21.0};
        QCOMPARE(wide.scale(), 1.0);
        QCOMPARE(wide.leftMargin(), 6.45);
    }

    void paintingPutsPrimitivesWhereTheyStand()
    {
        Page page;
        page.drawing.add(PlacedLine{{5.0, 19.7}, {15.0, 19.7}, 0.2});
        page.drawing.add(PlacedPoint{{10.0, 9.7}, 1.0});
        QImage image(210, 297, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        paintPage(painter, page, 10.0);
        painter.end();
        QVERIFY(darkPixels(image, {50, 98, 100, 4}) >= 190);
        QCOMPARE(darkPixels(image, {0, 0, 210, 97}), 0);
        QVERIFY(darkPixels(image, {94, 194, 12, 12}) > 60);
    }

    void whatIsVisibleIsPaintedTheSameWithAndWithoutTheRest()
    {
        auto document = QScopedPointer<Kalibrierung>(new Kalibrierung(QLocale::German));
        const Composed protocol = composed(*document);
        const auto painted = [&](const QRectF &visible) {
            QImage image(420, 594, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.setClipRect(QRect(100, 150, 120, 90));
            paintPage(painter, *protocol.pages.at(0), 20.0, visible);
            return image;
        };
        QCOMPARE(painted(QRectF(100, 150, 120, 90)), painted({}));
        QVERIFY(darkPixels(painted({}), {100, 150, 120, 90}) > 50);
    }
};

REGISTER_TEST(TstDrawing)
#include "tst_drawing.moc"
