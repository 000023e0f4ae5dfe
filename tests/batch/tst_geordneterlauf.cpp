#include "batch/geordneterlauf.h"
#include "tests/support/testregistry.h"

#include <QTest>

#include <atomic>
#include <chrono>
#include <stdexcept>

using Lauf = GeordneterLauf<std::size_t>;

class TestGeordneterLauf : public QObject
{
    Q_OBJECT

private slots:
    void resultsComeInOrder_data()
    {
        QTest::addColumn<unsigned>("threads");
        QTest::addColumn<int>("count");
        QTest::newRow("none") << 4U << 0;
        QTest::newRow("none on one thread") << 1U << 0;
        QTest::newRow("one piece") << 4U << 1;
        QTest::newRow("one thread") << 1U << 50;
        QTest::newRow("more threads than pieces") << 16U << 3;
        QTest::newRow("more pieces than places") << 3U << 500;
    }

    void resultsComeInOrder()
    {
        QFETCH(unsigned, threads);
        QFETCH(int, count);
        std::vector<std::size_t> taken;
        Lauf::laufe(
            static_cast<std::size_t>(count), threads,
            [] {
                return [](std::size_t number) {
                    // The first of every ten takes longest.
                    if (number % 10 == 0)
                        std::this_thread::sleep_for(std::chrono::milliseconds(2));
                    return number;
                };
            },
            [&](std::size_t number) { taken.push_back(number); });
        QCOMPARE(taken.size(), static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < taken.size(); ++i)
            QCOMPARE(taken[i], i);
    }

    void nobodyRunsFarAheadOfTheFirst()
    {
        constexpr unsigned threads = 4;
        std::atomic<std::size_t> begun = 0;
        std::size_t begunBeforeFirst = 0;
        Lauf::laufe(
            200, threads,
            [&] {
                return [&](std::size_t number) {
                    ++begun;
                    if (number == 0) {
                        while (begun <= threads) // the others do not wait for it
                            std::this_thread::sleep_for(std::chrono::milliseconds(1));
                        std::this_thread::sleep_for(std::chrono::milliseconds(100));
                        begunBeforeFirst = begun;
                    }
                    return number;
                };
            },
            [](std::size_t) {});
        QVERIFY(begunBeforeFirst <= 4 * threads);
    }

    void everyThreadHasAWorkerOfItsOwnAndOneTakesAtATime()
    {
        std::atomic<int> workers = 0;
        std::atomic<int> takers = 0;
        bool together = false;
        Lauf::laufe(
            40, 3,
            [&] {
                ++workers;
                return [&workers, owner = std::this_thread::get_id()](std::size_t number) {
                    if (owner != std::this_thread::get_id())
                        throw std::logic_error("another thread's worker");
                    while (number == 0 && workers < 2)
                        std::this_thread::sleep_for(std::chrono::milliseconds(1));
                    return number;
                };
            },
            [&](std::size_t) {
                together = together || ++takers > 1;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                --takers;
            });
        QVERIFY(workers <= 3);
        QVERIFY(!together);
    }

    void whatTakingThrowsEndsTheRun()
    {
        std::size_t taken = 0;
        const auto run = [&] {
            Lauf::laufe(
                100, 4, [] { return [](std::size_t number) { return number; }; },
                [&](std::size_t) {
                    if (++taken == 5)
                        throw std::runtime_error("five");
                });
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, run());
        QCOMPARE(taken, std::size_t{5});
    }

    void whatAWorkerThrowsArrivesInItsPlace_data()
    {
        QTest::addColumn<unsigned>("threads");
        QTest::newRow("one thread") << 1U;
        QTest::newRow("four threads") << 4U;
    }

    void whatAWorkerThrowsArrivesInItsPlace()
    {
        QFETCH(unsigned, threads);
        std::size_t taken = 0;
        const auto run = [&] {
            Lauf::laufe(
                100, threads,
                [] {
                    return [](std::size_t number) {
                        if (number == 7)
                            throw std::runtime_error("seven");
                        return number;
                    };
                },
                [&](std::size_t) { ++taken; });
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, run());
        QCOMPARE(taken, std::size_t{7});
    }
};

REGISTER_TEST(TestGeordneterLauf)
#include "tst_geordneterlauf.moc"
