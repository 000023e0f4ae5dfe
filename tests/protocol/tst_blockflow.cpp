#include "protocol/pages/bands.h"
#include "protocol/pages/blockflow.h"
#include "protocol/pages/textrows.h"
#include "tests/protocol/composed.h"
#include "tests/support/testregistry.h"

#include <QTest>

#include <memory>
#include <vector>

namespace {

// Rows of height 1 that say their number, "first" where they come below a header.
class CountedRows : public RowSource
{
public:
    explicit CountedRows(std::int32_t count, double height = 1.0) : m_count(count), m_height(height)
    {
    }

    bool atEnd(const RowPosition &position) const override { return position.row >= m_count; }
    RowGroup group(const RowPosition &position, bool first, double) override
    {
        RowGroup group;
        const QString text = QString::number(position.row + 1) + (first ? u" first"_qs : QString());
        group.drawing.add(PlacedText{text, {0.0, -0.5}, {}, 1.0, false}, 0.1, 0.1);
        group.drawing.reserve(m_height);
        group.next = {position.row + 1, 0};
        return group;
    }

private:
    std::int32_t m_count;
    double m_height;
};

Drawing named(const QString &name, double height)
{
    Drawing drawing = spacerBand(height);
    if (height > 0)
        drawing.add(PlacedText{name, {0.0, -0.5 * height}, {}, 1.0, false}, 0.0, 0.0);
    return drawing;
}

// Pages with room for ten.
struct Pages : QObject
{
    clsBander bander;
    std::vector<std::unique_ptr<Drawing>> drawings;

    Pages()
    {
        connect(&bander, &clsBanderEvents::NewPage, this, [this] {
            drawings.push_back(std::make_unique<Drawing>());
            bander.Target = drawings.back().get();
            bander.PageHeight = 14.0;
            bander.TopMargin = 2.0;
            bander.BottomMargin = 2.0;
        });
        bander.NewPage();
    }

    void compose(std::int32_t rows, double lead = 1.0, double header = 1.0, double tail = 0.0,
                 double rowHeight = 1.0)
    {
        Block block{named(u"lead"_qs, lead), named(u"header"_qs, header),
                    std::make_unique<CountedRows>(rows, rowHeight), named(u"tail"_qs, tail)};
        BlockFlow flow(bander, std::move(block));
        while (flow.step()) {
        }
    }

    QStringList texts(std::size_t page) const { return Composed::textsOf(*drawings.at(page)); }
};

} // namespace

class TstBlockFlow : public QObject
{
    Q_OBJECT

private slots:
    void aTableThatFitsAnEmptyPageStaysOneBandAndMovesAsAWhole()
    {
        Pages pages;
        pages.bander.DrawBand(spacerBand(4.0));
        pages.compose(8);
        QCOMPARE(pages.drawings.size(), std::size_t{2});
        QVERIFY(pages.texts(0).isEmpty());
        QCOMPARE(pages.texts(1).size(), 10);
        QCOMPARE(pages.bander.UsedHeight, 10.0);
    }

    void aTallerTableIsCutBetweenRowsAndRepeatsItsHeader()
    {
        Pages pages;
        pages.compose(20);
        QCOMPARE(pages.drawings.size(), std::size_t{3});
        QCOMPARE(pages.texts(0).mid(0, 3), (QStringList{u"lead"_qs, u"header"_qs, u"1 first"_qs}));
        QCOMPARE(pages.texts(1).mid(0, 3), (QStringList{u"header"_qs, u"9 first"_qs, u"10"_qs}));
        QCOMPARE(pages.texts(2), (QStringList{u"header"_qs, u"18 first"_qs, u"19"_qs, u"20"_qs}));
    }

    void noRowIsLostOrDoubled_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<double>("used");
        for (const int rows : {1, 2, 3, 7, 8, 9, 10, 11, 17, 18, 19, 400}) {
            for (const double used : {0.0, 0.5, 5.0, 5.5, 6.0, 9.0, 10.0})
                QTest::addRow("%d rows below %g", rows, used) << rows << used;
        }
    }
    void noRowIsLostOrDoubled()
    {
        QFETCH(int, rows);
        QFETCH(double, used);
        Pages pages;
        if (used > 0.0)
            pages.bander.DrawBand(spacerBand(used));
        pages.compose(rows);
        int next = 1;
        for (std::size_t page = 0; page < pages.drawings.size(); ++page) {
            QVERIFY(pages.drawings[page]->extents().height() <= 10.0);
            for (const QString &text : pages.texts(page)) {
                if (text != u"lead"_qs && text != u"header"_qs) {
                    QCOMPARE(text.section(u' ', 0, 0).toInt(), next);
                    ++next;
                }
            }
        }
        QCOMPARE(next, rows + 1);
    }

    void theFirstPieceFillsTheRestOfThePageFromThreeRowsOn()
    {
        Pages pages;
        pages.bander.DrawBand(spacerBand(5.0));
        pages.compose(20);
        QCOMPARE(pages.texts(0).last(), u"3"_qs);
    }

    void withLessRoomTheTableBeginsANewPage()
    {
        Pages pages;
        pages.bander.DrawBand(spacerBand(5.5));
        pages.compose(20);
        QVERIFY(pages.texts(0).isEmpty());
        QCOMPARE(pages.texts(1).first(), u"lead"_qs);
    }

    void theTailStandsInTheSameBandWhereThereIsRoom()
    {
        Pages pages;
        pages.compose(4, 1.0, 1.0, 4.0);
        QCOMPARE(pages.drawings.size(), std::size_t{1});
        QCOMPARE(pages.texts(0).last(), u"tail"_qs);
    }

    void aTailWithoutRoomFollowsAsABandOfItsOwn()
    {
        Pages pages;
        pages.compose(5, 1.0, 1.0, 4.0);
        QCOMPARE(pages.drawings.size(), std::size_t{2});
        QCOMPARE(pages.texts(0).last(), u"5"_qs);
        QCOMPARE(pages.texts(1), QStringList{u"tail"_qs});
    }

    void rowsTallerThanAPageStillEnd()
    {
        Pages pages;
        pages.compose(3, 1.0, 1.0, 0.0, 30.0);
        QCOMPARE(pages.drawings.size(), std::size_t{3});
    }

    void aRowOfManyLinesIsCutBetweenLines()
    {
        const TextMeasure measure;
        QStringList lines;
        for (int i = 1; i <= 100; ++i)
            lines.append(u"Zeile %1"_qs.arg(i));
        Pages pages;
        Block block;
        block.rows = std::make_unique<TextRows>(
            measure,
            std::vector<Column>{{0.0, 5.0, Alignment::Left, 0.0}, {5.0, 5.0, Alignment::Left, 0.0}},
            2, [&](std::int32_t row) {
                return RowTexts{{u"Bemerkungen:"_qs, row == 0 ? lines.join(u'\n') : u"Ende"_qs}};
            });
        BlockFlow flow(pages.bander, std::move(block));
        while (flow.step()) {
        }
        QStringList all;
        for (std::size_t page = 0; page < pages.drawings.size(); ++page) {
            all += pages.texts(page);
            QVERIFY(pages.drawings[page]->extents().height() <= 10.0 + 1e-9);
        }
        QVERIFY(pages.drawings.size() > 4);
        QCOMPARE(all, QStringList{u"Bemerkungen:"_qs} + lines +
                          QStringList({u"Bemerkungen:"_qs, u"Ende"_qs}));
    }
};

REGISTER_TEST(TstBlockFlow)
#include "tst_blockflow.moc"
