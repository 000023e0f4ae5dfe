#include "core/runtimeerror.h"
#include "protocol/pages/bands.h"
#include "protocol/pages/clsbander.h"
#include "tests/support/testregistry.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <memory>
#include <vector>

namespace {

// Handles the events as a window does, with a usable height of 10 on every page.
class Pages : public QObject
{
public:
    explicit Pages(clsBander &bander) : m_bander(bander)
    {
        connect(&bander, &clsBanderEvents::NewPage, this, [this] {
            countsAtNewPage.push_back(m_bander.PageCount);
            usedAtNewPage.push_back(m_bander.UsedHeight);
            drawings.push_back(std::make_unique<Drawing>());
            drawings.back()->setInsertionPoint({1.0, 12.0});
            m_bander.Target = drawings.back().get();
            m_bander.PageHeight = 14.0;
            m_bander.TopMargin = 2.0;
            m_bander.BottomMargin = 2.0;
        });
        connect(&bander, &clsBanderEvents::CompletePage, this,
                [this] { countsAtComplete.push_back(m_bander.PageCount); });
        connect(&bander, &clsBanderEvents::PageStarted, this, [this] {
            countsAtStarted.push_back(m_bander.PageCount);
            emptyAtStarted.push_back(m_bander.PageEmpty);
        });
    }

    std::vector<std::unique_ptr<Drawing>> drawings;
    std::vector<std::int32_t> countsAtNewPage;
    std::vector<std::int32_t> countsAtComplete;
    std::vector<std::int32_t> countsAtStarted;
    std::vector<bool> emptyAtStarted;
    std::vector<double> usedAtNewPage;

private:
    clsBander &m_bander;
};

Drawing lineBand(double height)
{
    Drawing band = spacerBand(height);
    band.add(PlacedLine{{0.5, -height}, {1.5, -height}, 0.1});
    return band;
}

} // namespace

class TstBander : public QObject
{
    Q_OBJECT

private slots:
    void aNewComposerIsZeroEmptyAndFalse()
    {
        const clsBander bander;
        QCOMPARE(bander.Target, nullptr);
        QCOMPARE(bander.PageHeight, 0.0);
        QCOMPARE(bander.TopMargin, 0.0);
        QCOMPARE(bander.BottomMargin, 0.0);
        QCOMPARE(bander.PageCount, 0);
        QCOMPARE(bander.PageEmpty, false);
        QCOMPARE(bander.UsedHeight, 0.0);
    }

    void theFirstBandStandsOnPageOneEvenIfItIsTallerThanThePage()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(25.0));
        QCOMPARE(bander.PageCount, 1);
        QCOMPARE(pages.drawings.size(), std::size_t{1});
        QCOMPARE(pages.drawings[0]->primitives().size(), std::size_t{1});
        QCOMPARE(bander.UsedHeight, 25.0);
    }

    void aBandThatExactlyFillsTheRestStaysOnThePage()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(4.0));
        bander.DrawBand(lineBand(6.0));
        QCOMPARE(bander.PageCount, 1);
        QCOMPARE(bander.UsedHeight, 10.0);
        bander.DrawBand(lineBand(0.001));
        QCOMPARE(bander.PageCount, 2);
        QCOMPARE(bander.UsedHeight, 0.001);
    }

    void completePageIsRaisedOncePerLaterPageAndNotForTheFirst()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        QVERIFY(pages.countsAtComplete.empty());
        for (int i = 0; i < 3; ++i)
            bander.DrawBand(lineBand(9.0));
        QCOMPARE(pages.countsAtComplete, (std::vector<std::int32_t>{1, 2}));
    }

    void theCountHasNotGrownWhenThePageIsAskedForAndHasWhenItIsStarted()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.NewPage();
        QCOMPARE(pages.countsAtNewPage, (std::vector<std::int32_t>{0, 1}));
        QCOMPARE(pages.countsAtStarted, (std::vector<std::int32_t>{1, 2}));
        QCOMPARE(pages.emptyAtStarted, (std::vector<bool>{true, true}));
    }

    void newPageLeavesTheUsedHeightAlone()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(3.0));
        bander.NewPage();
        QCOMPARE(bander.UsedHeight, 3.0);
    }

    void theUsedHeightIsResetAfterThePageHasBegun()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(8.0));
        bander.DrawBand(lineBand(7.0));
        QCOMPARE(pages.usedAtNewPage, (std::vector<double>{0.0, 8.0}));
        QCOMPARE(bander.UsedHeight, 7.0);
    }

    void anEmptyBandNeverBreaksThePageAndClearsPageEmpty()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(Drawing());
        QCOMPARE(bander.PageEmpty, false);
        bander.DrawBand(lineBand(10.0));
        bander.DrawBand(Drawing());
        QCOMPARE(bander.PageCount, 1);
    }

    void anEmptyBandBreaksAPageThatIsOverfull()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(11.0));
        bander.DrawBand(Drawing());
        QCOMPARE(bander.PageCount, 2);
    }

    void bandsStandBelowEachOtherAndKeepTheirHorizontalPlace()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        bander.DrawBand(lineBand(2.0));
        bander.DrawBand(lineBand(3.0));
        const auto &primitives = pages.drawings[0]->primitives();
        const auto &first = std::get<PlacedLine>(primitives[0]);
        const auto &second = std::get<PlacedLine>(primitives[1]);
        QCOMPARE(first.from, QPointF(1.5, 10.0));
        QCOMPARE(second.from, QPointF(1.5, 7.0));
        QCOMPARE(second.to, QPointF(2.5, 7.0));
        QCOMPARE(pages.drawings[0]->insertionPoint(), QPointF(1.0, 7.0));
    }

    void theHeightIsTheBandsOwnExtentWhereverItLies()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.NewPage();
        Drawing band;
        band.add(PlacedLine{{0.0, 5.0}, {0.0, 7.5}, 0.1});
        bander.DrawBand(band);
        QCOMPARE(bander.UsedHeight, 2.5);
    }

    void morePagesThanCanBeCountedRaiseOverflow()
    {
        clsBander bander;
        const Pages pages(bander);
        bander.PageCount = std::numeric_limits<std::int32_t>::max();
        try {
            bander.NewPage();
            QFAIL("no error");
        } catch (const RunTimeError &error) {
            QCOMPARE(error.number(), 6);
        }
    }

    void drawingWithoutAPageRaisesAnError()
    {
        clsBander bander;
        QVERIFY_THROWS_EXCEPTION(RunTimeError, bander.DrawBand(lineBand(1.0)));
    }
};

REGISTER_TEST(TstBander)
#include "tst_bander.moc"
