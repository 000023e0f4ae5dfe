#include "core/auswertung.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/pageformat.h"
#include "protocol/pages/resultblocks.h"
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QRectF>
#include <QTest>

#include <algorithm>

namespace {

std::int32_t errorOf(Kalibrierung &document, MerkmalEnum dependent, MerkmalEnum independent)
{
    try {
        diagramData(document, dependent, independent);
    } catch (const RunTimeError &error) {
        return error.number();
    }
    return 0;
}

template <typename Kind>
std::vector<Kind> all(const Drawing &drawing)
{
    std::vector<Kind> result;
    for (const Primitive &primitive : drawing.primitives()) {
        if (const auto *found = std::get_if<Kind>(&primitive))
            result.push_back(*found);
    }
    return result;
}

// The indirect values lie left of an axis with a single step, from 0 to \a unit, for the most part.
std::vector<documents::Field> farLeft(double unit)
{
    std::vector<documents::Field> fields;
    for (int z = 1; z <= 8; ++z) {
        documents::Field field;
        for (int p = 0; p < 4; ++p)
            field.emplace_back(unit * (-0.80 + 0.13 * z + 0.01 * p),
                               unit * (-1.00 + 0.15 * z + 0.002 * p));
        fields.push_back(field);
    }
    return fields;
}

} // namespace

class TstDiagram : public QObject
{
    Q_OBJECT

    const TextMeasure m_measure;

private slots:
    void theFirstOfThePairIsTheVerticalOne()
    {
        const auto document = documents::good();
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        QCOMPARE(data.horizontal.title, u"M [MN/m²]"_qs);
        QCOMPARE(data.vertical.title, u"D [%]"_qs);
        QCOMPARE(data.points.size(), std::size_t{12});
        QCOMPARE(data.points.front(), QPointF(28.4, 94.8));
        QCOMPARE(data.points.back(), QPointF(46.4, 98.5));
    }

    void axisTitlesAlwaysCarryBrackets()
    {
        const auto document = documents::withoutUnit();
        QCOMPARE(diagramData(*document, mIndirekt, mZ).horizontal.title, u"Z [-]"_qs);
        document->Kovariable().setEinheit({});
        QCOMPARE(diagramData(*document, mIndirekt, mZ).horizontal.title, u"Z []"_qs);
    }

    void labelsHaveTheCharacteristicsDecimalPlaces()
    {
        const auto document = documents::good();
        document->IndirektesPrüfmerkmal().setNachkommastellen(1);
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        QCOMPARE(data.horizontal.labels.front(), u"20,0"_qs);
        QCOMPARE(data.vertical.labels.front(), u"94,00"_qs);
        QCOMPARE(diagramData(*document, mDirekt, mZ).horizontal.labels.front(), u"1"_qs);
    }

    void theLineIsThatOfTheShownTextsAndEndsWithTheData()
    {
        const auto document = documents::good();
        document->setNachkommastellenAnstieg(1);
        document->setNachkommastellenAchsenabschnitt(0);
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const Values &values = document->values();
        const auto shown = [&](const QString &text) { return values.number(QStringView(text)); };
        const double b = shown(document->StatistikKalibriergeradeAnstiegString(mDirekt, mIndirekt));
        const double a =
            shown(document->StatistikKalibriergeradeAchsenabschnittString(mDirekt, mIndirekt));
        QVERIFY(b != document->StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt));
        QCOMPARE(data.lineStart, QPointF(26.9, b * 26.9 + a));
        QCOMPARE(data.lineEnd, QPointF(47.2, b * 47.2 + a));
    }

    void theVerticalAxisHoldsTheWholeLine()
    {
        // Rounded to whole numbers the line leaves the data's range by far.
        const auto document = documents::good();
        document->setNachkommastellenAnstieg(0);
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const Axis &axis = data.vertical.axis;
        for (const double y : {data.lineStart.y(), data.lineEnd.y()})
            QVERIFY(y >= axis.minimum && y <= axis.maximum);
        QVERIFY(axis.dataMinimum < 94.0);
    }

    void errorsOfTheDataAreRaised()
    {
        const auto document = documents::good();
        document->removeMesswert(pmDirekt, 1, 1);
        QCOMPARE(errorOf(*document, mDirekt, mIndirekt), 94);
        document->DataStore().set(document->MesswertKey(pmDirekt, 1, 1), u"unlesbar"_qs);
        QCOMPARE(errorOf(*document, mDirekt, mIndirekt), 13);
        QCOMPARE(errorOf(*document, mIndirekt, mZ), 0);
        document->DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"1000001"_qs);
        QCOMPARE(errorOf(*document, mIndirekt, mZ), 6);
    }

    void equalValuesAndASinglePointHaveNoDiagram()
    {
        const auto document = documents::good();
        for (std::int32_t field = 1; field <= 3; ++field) {
            for (std::int32_t point = 1; point <= 4; ++point)
                document->setMesswert(pmIndirekt, field, point, 7.0);
        }
        QCOMPARE(errorOf(*document, mDirekt, mIndirekt), 5);
        const auto single = documents::good();
        single->DataStore().set(u"Anzahl Prüffelder"_qs, u"1"_qs);
        single->DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"1"_qs);
        QCOMPARE(errorOf(*single, mDirekt, mIndirekt), 5);
    }

    void aSlopeThatIsNoNumberRaisesAConversionError()
    {
        const auto document = documents::good();
        for (std::int32_t field = 1; field <= 3; ++field)
            document->setPrüffeldWert(field, 4.0);
        QCOMPARE(document->StatistikKalibriergeradeAnstiegString(mDirekt, mIndirekt),
                 u"(Fehler)"_qs);
        QCOMPARE(errorOf(*document, mDirekt, mIndirekt), 13);
    }

    void theFrameIsTenBySevenWithOneTickAndLabelPerStep()
    {
        const auto document = documents::good();
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const Drawing drawing = diagramDrawing(data, m_measure);
        double left = 100.0;
        double right = 0.0;
        double lower = 0.0;
        double upper = -100.0;
        for (const PlacedLine &line : all<PlacedLine>(drawing)) {
            if (line.width != 0.01)
                continue; // grid lines reach across the frame
            left = std::min(left, line.from.x());
            right = std::max(right, line.to.x());
            lower = std::min(lower, line.from.y());
            upper = std::max(upper, line.to.y());
        }
        QCOMPARE(right - left, 10.0);
        QCOMPARE(upper - lower, 7.0);
        QCOMPARE(left, (contentWidthCm - 10.0) / 2);
        const QStringList texts = Composed::textsOf(drawing);
        QCOMPARE(texts.size(), static_cast<qsizetype>(data.horizontal.labels.size() +
                                                      data.vertical.labels.size() + 2));
    }

    void valuesLieWhereTheTicksSayTheyLie()
    {
        const auto document = documents::good();
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const Drawing drawing = diagramDrawing(data, m_measure);
        const std::vector<PlacedPoint> points = all<PlacedPoint>(drawing);
        QCOMPARE(points.size(), std::size_t{12});
        const Axis &x = data.horizontal.axis;
        const Axis &y = data.vertical.axis;
        const double left = (contentWidthCm - 10.0) / 2;
        const double bottom = -7.35;
        for (std::size_t i = 0; i < points.size(); ++i) {
            QCOMPARE(points[i].at.x(),
                     left + 10.0 * (data.points[i].x() - x.minimum) / (x.maximum - x.minimum));
            QCOMPARE(points[i].at.y(),
                     bottom + 7.0 * (data.points[i].y() - y.minimum) / (y.maximum - y.minimum));
        }
    }

    void pointsBelowATruncatedMinimumAreKeptAndTheBandHasRoomForThem()
    {
        const auto document = documents::of({{{-1.85, -1.85}, {-1.8, -1.7}, {-1.6, -1.75}},
                                             {{-1.4, -1.3}, {-1.3, -1.45}, {-1.2, -1.1}},
                                             {{-1.0, -0.95}, {-0.9, -0.8}, {-0.79, -0.85}}});
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        QCOMPARE(data.horizontal.axis.minimum, -1.0);
        const Drawing drawing = diagramDrawing(data, m_measure);
        QCOMPARE(all<PlacedPoint>(drawing).size(), std::size_t{9});
        for (const PlacedPoint &point : all<PlacedPoint>(drawing)) {
            QVERIFY(point.at.y() - point.diameter / 2 >= drawing.extents().lower);
            QVERIFY(point.at.x() > -1.5); // on the sheet, whose margin is 2.1
        }
        QVERIFY(drawing.extents().height() > 9.0);
    }

    void noMarkerLiesOnAText_data()
    {
        QTest::addColumn<std::vector<documents::Field>>("fields");
        // Below the axis, just where the labels stood that nearer points had pushed away.
        QTest::newRow("behind pushed labels")
            << std::vector<documents::Field>{{{-3.5, 36.0}, {-3.67, 40.0}, {-3.3, 38.0}},
                                             {{-2.2, 44.0}, {-1.9, 45.0}, {-1.8, 47.0}},
                                             {{-1.0, 51.0}, {-0.42, 55.0}, {-0.8, 53.0}}};
        std::vector<documents::Field> far = farLeft(100.0);
        QTest::newRow("far left") << far;
        for (documents::Field &field : far) {
            for (auto &[direct, indirect] : field)
                std::swap(direct, indirect);
        }
        QTest::newRow("far below") << far;
        QTest::newRow("left and below")
            << std::vector<documents::Field>{{{-1.85, -1.85}, {-1.8, -1.7}, {-1.6, -1.75}},
                                             {{-1.4, -1.3}, {-1.3, -1.45}, {-1.2, -1.1}},
                                             {{-1.0, -0.95}, {-0.9, -0.8}, {-0.79, -0.85}}};
    }
    void noMarkerLiesOnAText()
    {
        QFETCH(std::vector<documents::Field>, fields);
        const auto document = documents::of(fields);
        for (const MerkmalPair &pair : protocolPairs) {
            const Drawing drawing =
                diagramDrawing(diagramData(*document, pair.first, pair.second), m_measure);
            for (const FoundText &text : found(drawing)) {
                const double digits = 0.66 * text.style.pixelSize / layoutPixelsPerCentimetre;
                const QRectF box =
                    text.upward ? QRectF(text.at.x() - digits, text.at.y(), digits, text.width)
                                : QRectF(text.at.x(), text.at.y(), text.width, digits);
                for (const PlacedPoint &point : all<PlacedPoint>(drawing)) {
                    const double r = point.diameter / 2;
                    QVERIFY2(!box.adjusted(-r, -r, r, r).contains(point.at), qPrintable(text.text));
                }
            }
        }
    }

    void theTitleAtTheLeftStandsBesideTheLine()
    {
        const auto document = documents::of(farLeft(100.0));
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const Drawing drawing = diagramDrawing(data, m_measure);
        const std::vector<FoundText> texts = found(drawing);
        const auto title = std::find_if(texts.begin(), texts.end(), [&](const FoundText &text) {
            return text.text == data.vertical.title;
        });
        const std::vector<PlacedLine> lines = all<PlacedLine>(drawing);
        const auto line = std::find_if(lines.begin(), lines.end(),
                                       [](const PlacedLine &l) { return l.width == 0.03; });
        QVERIFY(title != texts.end() && line != lines.end());
        const double digits = 0.66 * title->style.pixelSize / layoutPixelsPerCentimetre;
        const QRectF box(title->at.x() - digits, title->at.y(), digits, title->width);
        for (int i = 0; i <= 1000; ++i)
            QVERIFY(!box.contains(line->from + (line->to - line->from) * i / 1000));
        QVERIFY(box.left() >= 0.0);
    }

    void theLastLabelStaysOnTheSheet_data()
    {
        QTest::addColumn<double>("unit");
        QTest::addColumn<int>("places");
        QTest::addColumn<bool>("turned");
        QTest::newRow("short") << 1.0 << 0 << false;
        QTest::newRow("near the edge") << 1e9 << 2 << true;
        QTest::newRow("beyond the edge") << 1e12 << 4 << true;
    }
    void theLastLabelStaysOnTheSheet()
    {
        QFETCH(double, unit);
        QFETCH(int, places);
        QFETCH(bool, turned);
        const auto document = documents::of(farLeft(unit));
        document->IndirektesPrüfmerkmal().setNachkommastellen(places);
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        QCOMPARE(data.horizontal.labels.size(), std::size_t{2});
        const Drawing drawing = diagramDrawing(data, m_measure);
        for (const FoundText &text : found(drawing)) {
            if (text.text == data.horizontal.labels.back())
                QCOMPARE(text.upward, turned);
        }
        const double sheet = PageFormat().pageWidth() - PageFormat().leftMargin();
        QVERIFY(drawing.extents().right <= sheet - 0.75);
    }

    void longLabelsGetSmallerOrTurnInsteadOfTouching_data()
    {
        QTest::addColumn<int>("places");
        QTest::addColumn<bool>("turned");
        QTest::newRow("short") << 0 << false;
        QTest::newRow("smaller") << 5 << false;
        QTest::newRow("turned") << 8 << true;
        QTest::newRow("turned and smaller") << 30 << true;
    }
    void longLabelsGetSmallerOrTurnInsteadOfTouching()
    {
        QFETCH(int, places);
        QFETCH(bool, turned);
        const auto document = documents::of({{{94.0, 20.3}, {94.5, 21.0}, {95.1, 22.2}},
                                             {{96.0, 23.3}, {96.2, 24.1}, {97.1, 24.0}},
                                             {{98.0, 25.9}, {98.5, 26.7}, {99.0, 26.4}}});
        document->IndirektesPrüfmerkmal().setNachkommastellen(places);
        const DiagramData data = diagramData(*document, mDirekt, mIndirekt);
        const std::vector<FoundText> texts = found(diagramDrawing(data, m_measure));
        std::vector<FoundText> labels;
        for (const FoundText &text : texts) {
            if (data.horizontal.labels.end() !=
                std::find(data.horizontal.labels.begin(), data.horizontal.labels.end(), text.text))
                labels.push_back(text);
        }
        QCOMPARE(labels.size(), std::size_t{8});
        QCOMPARE(labels.front().style.pixelSize < 200, places == 5 || places == 30);
        std::sort(labels.begin(), labels.end(),
                  [](const FoundText &a, const FoundText &b) { return a.at.x() < b.at.x(); });
        for (std::size_t i = 0; i < labels.size(); ++i) {
            QCOMPARE(labels[i].upward, turned);
            if (i > 0 && !turned)
                QVERIFY(labels[i].at.x() > labels[i - 1].at.x() + labels[i - 1].width);
            if (i > 0 && turned)
                QVERIFY(labels[i].at.x() - labels[i - 1].at.x() >=
                        m_measure.lineHeight(labels[i].style));
        }
    }
};

REGISTER_TEST(TstDiagram)
#include "tst_diagram.moc"
