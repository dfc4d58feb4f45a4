// XAtomic_test.cpp: value semantics and the operations that report the old value.
#include "orv/XAtomic.h"

#include <gtest/gtest.h>

using orv::XAtomic;

TEST(XAtomic, CopiesTakeTheValueAndStayIndependent) {
    XAtomic<int> a(5);
    XAtomic<int> b(a);
    a = 6;
    EXPECT_EQ(b.load(), 5);
    b = a;
    a.store(7);
    EXPECT_EQ(int(b), 6);
    EXPECT_FALSE(XAtomic<bool>());
}

TEST(XAtomic, ReadModifyWriteGivesWhatWasThere) {
    XAtomic<int> a(1);
    EXPECT_EQ(a.exchange(2), 1);
    int expected = 5;
    EXPECT_FALSE(a.compareExchange(expected, 9));
    EXPECT_EQ(expected, 2); // updated to the current value
    EXPECT_TRUE(a.compareExchange(expected, 9));
    EXPECT_EQ(a.fetchAdd(3), 9);
    EXPECT_EQ(a.fetchSub(2), 12);
    EXPECT_EQ(a.load(), 10);
}
