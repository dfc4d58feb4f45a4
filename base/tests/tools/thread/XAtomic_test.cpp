// XAtomic_test.cpp: value semantics, conversions and the read-modify-write operations.
#include "orv/XAtomic.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using orv::XAtomic;

TEST(XAtomic, CopiesTakeTheValueAndStayIndependent) {
    XAtomic<int> a(5);
    XAtomic<int> b(a);
    a = 6;
    EXPECT_EQ(b.load(), 5);
    b = a;
    a.store(7);
    EXPECT_EQ(b.load(), 6);
    std::vector<XAtomic<unsigned int>> many(3, XAtomic<unsigned int>(9u));
    many.push_back(many[0]);
    EXPECT_EQ(many.back().load(), 9u);
}

TEST(XAtomic, DefaultsToZeroAndConvertsToItsType) {
    XAtomic<bool> flag;
    EXPECT_FALSE(flag);
    flag = true;
    EXPECT_TRUE(flag);
    XAtomic<unsigned long long> big;
    EXPECT_EQ(big.load(), 0u);
    big = 0xFFFFFFFFFFFFFFFFULL;
    unsigned long long const plain = big;
    EXPECT_EQ(plain, 0xFFFFFFFFFFFFFFFFULL);
}

TEST(XAtomic, ReadModifyWriteReportsWhatWasThereAndWrapsUnsigned) {
    XAtomic<int> a(1);
    EXPECT_EQ(a.exchange(2), 1);
    int expected = 5;
    EXPECT_FALSE(a.compareExchange(expected, 9));
    EXPECT_EQ(expected, 2); // updated to the current value
    EXPECT_TRUE(a.compareExchange(expected, 9));
    EXPECT_EQ(a.load(), 9);
    XAtomic<unsigned int> u(0u);
    EXPECT_EQ(u.fetchSub(1), 0u);
    EXPECT_EQ(u.load(), 0xFFFFFFFFu);
    EXPECT_EQ(u.fetchAdd(2), 0xFFFFFFFFu);
    EXPECT_EQ(u.load(), 1u);
}

TEST(XAtomic, ConcurrentIncrementsAreAllCounted) {
    XAtomic<int> counter;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&counter] {
            for (int i = 0; i < 10000; ++i)
                counter.fetchAdd(1);
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(counter.load(), 40000);
}
