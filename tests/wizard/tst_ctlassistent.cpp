#include "tests/support/testregistry.h"
#include "wizard/ctlassistent.h"

#include <QFrame>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class TestCtlAssistent : public QObject
{
    Q_OBJECT

private slots:
    void stepRaisesLeaveChangeEnterInThisOrder();
    void clicksAreSteps();
    void closeButtonRaisesCancelOnly();
    void vetoOnLeavingStopsEverything();
    void vetoOnChangingStopsBeforeEntering();
    void bothEventsOfAStepShareOneFlag();
    void buttonsAreDisabledWhileThePageIsEntered();
    void silentHandlerRestoresTheOldStates();
    void handlersStatesAreApplied();
    void marginIsTenPixelsInTwips();
    void marginLaysOutAtOnce();
    void buttonsStandInOneRowFromRightToLeft();
    void heightIsKept();
    void captionsAreTheGivenOnes();
};

namespace {

struct Frame : ctlAssistent
{
    Frame()
    {
        resize(600, 60);
        connect(this, &ctlAssistent::LeavePage, this, [this](int direction, bool &cancel) {
            events.append(
                u"leave %1 %2"_qs.arg(QString::number(direction), QString::number(cancel)));
            cancel = vetoLeave;
        });
        connect(this, &ctlAssistent::ChangePage, this, [this](int direction, bool &cancel) {
            events.append(
                u"change %1 %2"_qs.arg(QString::number(direction), QString::number(cancel)));
            cancel = cancel || vetoChange;
        });
        connect(this, &ctlAssistent::EnterPage, this, [this](bool &next, bool &previous, bool &) {
            events.append(u"enter %1 %2"_qs.arg(QString::number(next), QString::number(previous)));
            enabledWhileEntering = NextEnabled() || PreviousEnabled() || CancelEnabled();
        });
        connect(this, &ctlAssistent::Cancel, this, [this] { events.append(u"cancel"_qs); });
    }
    QPushButton *button(const QString &name) const { return findChild<QPushButton *>(name); }

    QStringList events;
    bool vetoLeave = false;
    bool vetoChange = false;
    bool enabledWhileEntering = false;
};

} // namespace

void TestCtlAssistent::stepRaisesLeaveChangeEnterInThisOrder()
{
    for (const int direction : {1, -1, 0}) {
        Frame frame;
        frame.GoToPage(direction);
        const QString number = QString::number(direction);
        QCOMPARE(frame.events, QStringList({u"leave "_qs + number + u" 0"_qs,
                                            u"change "_qs + number + u" 0"_qs, u"enter 1 1"_qs}));
    }
}

void TestCtlAssistent::clicksAreSteps()
{
    Frame frame;
    frame.button(u"cmdNext"_qs)->click();
    frame.button(u"cmdPrevious"_qs)->click();
    QCOMPARE(frame.events.value(0), u"leave 1 0"_qs);
    QCOMPARE(frame.events.value(3), u"leave -1 0"_qs);
}

void TestCtlAssistent::closeButtonRaisesCancelOnly()
{
    Frame frame;
    frame.button(u"cmdCancel"_qs)->click();
    QCOMPARE(frame.events, QStringList{u"cancel"_qs});
}

void TestCtlAssistent::vetoOnLeavingStopsEverything()
{
    Frame frame;
    frame.setPreviousEnabled(false);
    frame.vetoLeave = true;
    frame.GoToPage(1);
    QCOMPARE(frame.events, QStringList{u"leave 1 0"_qs});
    QVERIFY(frame.NextEnabled());
    QVERIFY(!frame.PreviousEnabled());
    QVERIFY(frame.CancelEnabled());
}

void TestCtlAssistent::vetoOnChangingStopsBeforeEntering()
{
    Frame frame;
    frame.setNextEnabled(false);
    frame.vetoChange = true;
    frame.GoToPage(-1);
    QCOMPARE(frame.events.size(), 2);
    QVERIFY(!frame.NextEnabled());
    QVERIFY(frame.PreviousEnabled());
    QVERIFY(frame.CancelEnabled());
}

void TestCtlAssistent::bothEventsOfAStepShareOneFlag()
{
    ctlAssistent frame;
    const bool *leaveFlag = nullptr;
    const bool *changeFlag = nullptr;
    connect(&frame, &ctlAssistent::LeavePage, this,
            [&](int, bool &cancel) { leaveFlag = &cancel; });
    connect(&frame, &ctlAssistent::ChangePage, this,
            [&](int, bool &cancel) { changeFlag = &cancel; });
    frame.GoToPage(1);
    QVERIFY(leaveFlag);
    QCOMPARE(leaveFlag, changeFlag);
}

void TestCtlAssistent::buttonsAreDisabledWhileThePageIsEntered()
{
    Frame frame;
    frame.GoToPage(1);
    QVERIFY(!frame.enabledWhileEntering);
    QVERIFY(frame.NextEnabled());
}

void TestCtlAssistent::silentHandlerRestoresTheOldStates()
{
    for (int states = 0; states < 8; ++states) {
        Frame frame;
        frame.setNextEnabled(states & 1);
        frame.setPreviousEnabled(states & 2);
        frame.setCancelEnabled(states & 4);
        frame.GoToPage(0);
        QCOMPARE(frame.NextEnabled(), (states & 1) != 0);
        QCOMPARE(frame.PreviousEnabled(), (states & 2) != 0);
        QCOMPARE(frame.CancelEnabled(), (states & 4) != 0);
    }
}

void TestCtlAssistent::handlersStatesAreApplied()
{
    ctlAssistent frame;
    connect(&frame, &ctlAssistent::EnterPage, this, [](bool &next, bool &previous, bool &close) {
        next = false;
        previous = true;
        close = false;
    });
    frame.setPreviousEnabled(false);
    frame.GoToPage(1);
    QVERIFY(!frame.NextEnabled());
    QVERIFY(frame.PreviousEnabled());
    QVERIFY(!frame.CancelEnabled());
}

void TestCtlAssistent::marginIsTenPixelsInTwips()
{
    const ctlAssistent frame;
    const float twipsPerPixel = 1440.0F / static_cast<float>(frame.logicalDpiX());
    QCOMPARE(frame.Margin(), 10.0F * twipsPerPixel);
}

void TestCtlAssistent::marginLaysOutAtOnce()
{
    Frame frame;
    const int twipsPerPixel = 1440 / frame.logicalDpiX();
    const int before = frame.button(u"cmdNext"_qs)->x();
    const int gap =
        frame.button(u"cmdCancel"_qs)->x() - frame.button(u"cmdNext"_qs)->geometry().right() - 1;
    QCOMPARE(gap, 10);
    frame.setMargin(static_cast<float>(25 * twipsPerPixel));
    QCOMPARE(frame.Margin(), static_cast<float>(25 * twipsPerPixel));
    QVERIFY(frame.button(u"cmdNext"_qs)->x() < before);
    QCOMPARE(frame.button(u"cmdCancel"_qs)->x() - frame.button(u"cmdNext"_qs)->geometry().right() -
                 1,
             25);
}

void TestCtlAssistent::buttonsStandInOneRowFromRightToLeft()
{
    Frame frame;
    frame.resize(900, frame.height());
    frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&frame));
    const QRect previous = frame.button(u"cmdPrevious"_qs)->geometry();
    const QRect next = frame.button(u"cmdNext"_qs)->geometry();
    const QRect cancel = frame.button(u"cmdCancel"_qs)->geometry();
    QVERIFY(previous.right() < next.left());
    QVERIFY(next.right() < cancel.left());
    QVERIFY(cancel.right() < frame.width());
    QCOMPARE(previous.top(), next.top());
    QCOMPARE(next.top(), cancel.top());
    const auto *line = frame.findChild<QFrame *>(u"linTop"_qs);
    QCOMPARE(line->x(), frame.width() - line->geometry().right() - 1);
    QVERIFY(line->geometry().bottom() < next.top());
}

void TestCtlAssistent::heightIsKept()
{
    Frame frame;
    frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&frame));
    const int height = frame.height();
    frame.resize(700, 400);
    QCoreApplication::processEvents();
    QCOMPARE(frame.height(), height);
    QVERIFY(frame.button(u"cmdNext"_qs)->geometry().bottom() < height);
}

void TestCtlAssistent::captionsAreTheGivenOnes()
{
    const Frame frame;
    QCOMPARE(frame.button(u"cmdPrevious"_qs)->text(), u"< &zurück"_qs);
    QCOMPARE(frame.button(u"cmdNext"_qs)->text(), u"&weiter >"_qs);
    QCOMPARE(frame.button(u"cmdCancel"_qs)->text(), u"&Schließen"_qs);
}

REGISTER_TEST(TestCtlAssistent)
#include "tst_ctlassistent.moc"
