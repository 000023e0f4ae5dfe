#include "core/runtimeerror.h"
#include "protocol/pages/axisscale.h"
#include "tests/support/testregistry.h"

#include <QTest>

#include <limits>
#include <vector>

namespace {

std::int32_t errorOf(const std::vector<double> &values)
{
    try {
        axisOf(values);
    } catch (const RunTimeError &error) {
        return error.number();
    }
    return 0;
}

} // namespace

class TstAxisScale : public QObject
{
    Q_OBJECT

private slots:
    // The expected columns were computed in exact decimals by another program.
    void minimumIsTruncatedAndMaximumRoundedUpToSteps_data()
    {
        QTest::addColumn<double>("smallest");
        QTest::addColumn<double>("largest");
        QTest::addColumn<double>("step");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::newRow("positive") << 12.3 << 17.9 << 1.0 << 12.0 << 18.0;
        QTest::newRow("mixed") << -3.7 << 2.1 << 1.0 << -3.0 << 3.0;
        QTest::newRow("negative") << -17.93 << -12.34 << 1.0 << -18.0 << -12.0;
        QTest::newRow("small negative") << -0.85 << -0.33 << 0.1 << -0.8 << -0.3;
        QTest::newRow("mostly positive") << -0.04 << 0.9 << 0.1 << 0.0 << 1.0;
        QTest::newRow("tiny") << 1.3e-09 << 7.7e-09 << 1e-09 << 1e-09 << 8e-09;
        QTest::newRow("tiny range") << 2.31e-09 << 2.39e-09 << 1e-11 << 2.3e-09 << 2.4e-09;
        QTest::newRow("huge") << 1200000000.0 << 8700000000.0 << 1000000000.0 << 1000000000.0
                              << 9000000000.0;
        QTest::newRow("huge negative")
            << -8700000000.0 << -1200000000.0 << 1000000000.0 << -8000000000.0 << -1000000000.0;
        QTest::newRow("offset 1e6, range 1e-3")
            << 1000000.00023 << 1000000.00118 << 0.0001 << 1000000.0002 << 1000000.0012;
        QTest::newRow("offset -1e6, range 1e-3")
            << -1000000.00118 << -1000000.00023 << 0.0001 << -1000000.0011 << -1000000.0002;
        QTest::newRow("just above a power of ten") << 0.0 << 10.01 << 10.0 << 0.0 << 20.0;
        QTest::newRow("just below a power of ten") << 0.0 << 9.99 << 1.0 << 0.0 << 11.0;
        QTest::newRow("from zero") << 0.0 << 0.5 << 0.1 << 0.0 << 0.6;
        QTest::newRow("one step wide") << -1.85 << -0.79 << 1.0 << -1.0 << 0.0;
        QTest::newRow("percent") << 94.3 << 101.37 << 1.0 << 94.0 << 102.0;
        QTest::newRow("passes") << 2.0 << 8.0 << 1.0 << 1.0 << 9.0;
    }
    void minimumIsTruncatedAndMaximumRoundedUpToSteps()
    {
        QFETCH(double, smallest);
        QFETCH(double, largest);
        QFETCH(double, step);
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        const std::vector<double> values{(smallest + largest) / 2, largest, smallest};
        const Axis axis = axisOf(values);
        const double tolerance = step * 1e-5;
        QVERIFY(std::abs(axis.step - step) <= tolerance);
        QVERIFY(std::abs(axis.minimum - minimum) <= tolerance);
        QVERIFY(std::abs(axis.maximum - maximum) <= tolerance);
        QCOMPARE(axis.dataMinimum, smallest);
        QCOMPARE(axis.dataMaximum, largest);
    }

    void aNegativeMinimumCanLieAboveTheSmallestValue()
    {
        const Axis axis = axisOf(std::vector<double>{-3.7, 2.1});
        QCOMPARE(axis.minimum, -3.0);
        QVERIFY(axis.minimum > axis.dataMinimum);
    }

    void extraValuesWidenTheAxis()
    {
        const std::vector<double> values{12.3, 17.9};
        const std::vector<double> ends{11.1, 18.4};
        const Axis axis = axisOf(values, ends);
        QCOMPARE(axis.dataMinimum, 11.1);
        QCOMPARE(axis.dataMaximum, 18.4);
        QCOMPARE(axis.minimum, 11.0);
        QCOMPARE(axis.maximum, 19.0);
    }

    void everyStepHasATickFromTheMinimumToTheMaximum()
    {
        const std::vector<double> ticks = ticksOf(axisOf(std::vector<double>{12.3, 17.9}));
        QCOMPARE(ticks, (std::vector<double>{12, 13, 14, 15, 16, 17, 18}));
    }

    void ticksOfSmallStepsDoNotDrift()
    {
        const std::vector<double> ticks = ticksOf(axisOf(std::vector<double>{0.13, 0.77}));
        QCOMPARE(ticks.size(), std::size_t{8});
        QCOMPARE(ticks.front(), 0.1);
        QVERIFY(std::abs(ticks.back() - 0.8) < 1e-15);
    }

    void noAxisHasANegativeZero()
    {
        const Axis axis = axisOf(std::vector<double>{-1.85, -0.79});
        QVERIFY(!std::signbit(axis.maximum));
        QVERIFY(!std::signbit(axisOf(std::vector<double>{-0.04, 0.9}).minimum));
    }

    void equalValuesHaveNoAxis() { QCOMPARE(errorOf({5.0, 5.0, 5.0}), 5); }
    void aSinglePointHasNoAxis() { QCOMPARE(errorOf({5.0}), 5); }
    void noValuesHaveNoAxis() { QCOMPARE(errorOf({}), 5); }
    void aRangeBeyondDoublesOverflows()
    {
        const double most = std::numeric_limits<double>::max();
        QCOMPARE(errorOf({-most, most}), 6);
    }
};

REGISTER_TEST(TstAxisScale)
#include "tst_axisscale.moc"
