// XAtomic_test.cpp: what XAtomic adds to std::atomic, value semantics.
#include "orv/XAtomic.h"

#include "support/Test.h"

using orv::XAtomic;

TEST(XAtomic, CopiesTakeTheValueAndStayIndependent) {
    XAtomic<int> a(5);
    XAtomic<int> b(a);
    a = 6;
    EXPECT_EQ(b.load(), 5);
    b = a;
    a.store(7);
    EXPECT_EQ(int(b), 6);
    EXPECT_EQ(a.exchange(8), 7);
    EXPECT_FALSE(XAtomic<bool>());
}
