// XEventListener_test.cpp: keys, firing order, changes while firing and firing from workers.
#include "orv/XEventListener.h"

#include "support/Test.h"

#include <atomic>
#include <thread>
#include <vector>

using orv::XEventListener;

TEST(XEventListener, FiresEnabledListenersInKeyOrderUnderKeysFromOneNeverReused) {
    XEventListener<void(QString)> event;
    QString trace;
    for (char const *name : {"a", "b", "c", "d"})
        event.addListener([&trace, name](QString s) { trace += name + s; });
    EXPECT_TRUE(event.removeListener(2));
    EXPECT_FALSE(event.removeListener(2));
    EXPECT_FALSE(event.removeListener(999));
    EXPECT_EQ(event.size(), 3u);
    event.fireEvent(QString("1"));
    EXPECT_EQ(trace, "a1c1d1");
    EXPECT_TRUE(event.isEnabled());
    event.enable(false);
    event.fireEvent(QString("2"));
    event.enable(true);
    event.fireEvent(QString("3"));
    EXPECT_EQ(trace, "a1c1d1a3c3d3");
    EXPECT_TRUE(event.removeListener(4));
    EXPECT_EQ(event.addListener([](QString) {}), 5u);
    event.clear();
    EXPECT_EQ(event.size(), 0u);
    EXPECT_EQ(event.addListener([](QString) {}), 6u);
}

TEST(XEventListener, ListenerMayAddOrRemoveItselfOrALaterOneWhileFiring) {
    XEventListener<void()> event;
    QString trace;
    unsigned int selfKey = 0, lastKey = 0;
    event.addListener([&] { trace += 'a'; });
    selfKey = event.addListener([&] {
        trace += 'b';
        event.removeListener(selfKey);
        event.removeListener(lastKey);
    });
    event.addListener([&] { trace += 'c'; });
    lastKey = event.addListener([&] { trace += 'd'; });
    event.fireEvent();
    EXPECT_EQ(trace, "abc");
    event.fireEvent();
    EXPECT_EQ(trace, "abcac");

    XEventListener<void()> growing;
    int adderCalls = 0, addedCalls = 0;
    growing.addListener([&] {
        if (++adderCalls == 1)
            growing.addListener([&] { ++addedCalls; });
    });
    growing.fireEvent();
    growing.fireEvent();
    EXPECT_EQ(adderCalls, 2);
    EXPECT_GE(addedCalls, 1);
    EXPECT_EQ(growing.size(), 2u);
}

TEST(XEventListener, TakingListenersMovesThemWithTheirKeys) {
    XEventListener<std::function<void(int)>> from; // a std::function serves as the signature
    XEventListener<std::function<void(int)>> to;
    int sum = 0;
    from.addListener([&](int v) { sum += v; });
    from.addListener([&](int v) { sum += 10 * v; });
    to.takeListenersFrom(from);
    to.takeListenersFrom(to);
    EXPECT_EQ(from.size(), 0u);
    EXPECT_EQ(to.size(), 2u);
    from.fireEvent(1);
    to.fireEvent(1);
    EXPECT_EQ(sum, 11);
    EXPECT_EQ(to.addListener([](int) {}), 3u);
}

TEST(XEventListener, WorkersFireWhileOtherWorkersAddAndRemove) {
    XEventListener<void(int)> event;
    std::atomic<int> permanentCalls{0};
    event.addListener([&](int v) { permanentCalls += v; });
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                event.fireEvent(1);
        });
    threads.emplace_back([&] {
        for (int i = 0; i < 500; ++i)
            event.removeListener(event.addListener([](int) {}));
        event.addListener([](int) {});
    });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(permanentCalls.load(), 1500);
    EXPECT_EQ(event.size(), 2u);
    EXPECT_EQ(event.addListener([](int) {}), 503u);
}
