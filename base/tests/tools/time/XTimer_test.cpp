// XTimer_test.cpp: the timer's listener list under a running event loop.
#include "orv/XTimer.h"

#include "support/Test.h"

using orv::test::pumpEventsUntil;

TEST(XTimer, TimeoutFiresEveryListener) {
    orv::XTimer timer;
    int first = 0, second = 0;
    timer.listener.addListener([&first] { ++first; });
    timer.listener.addListener([&second] { ++second; });
    timer.start(5);
    EXPECT_TRUE(pumpEventsUntil([&] { return first >= 2 && second >= 2; }));
    timer.stop();
}

TEST(XTimerOneTimeShot, WaitsForStartThenFiresOnce) {
    int calls = 0;
    orv::XTimerOneTimeShot shot(5, [&calls] { ++calls; });
    EXPECT_FALSE(shot.timer().isActive());
    QCoreApplication::processEvents(QEventLoop::AllEvents, 30);
    EXPECT_EQ(calls, 0);
    shot.timer().start();
    EXPECT_TRUE(pumpEventsUntil([&] { return calls > 0; }));
    EXPECT_FALSE(shot.timer().isActive());
    QCoreApplication::processEvents(QEventLoop::AllEvents, 30);
    EXPECT_EQ(calls, 1);
}
