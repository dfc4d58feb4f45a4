// XStringRef_test.cpp: the checked view's bounds and texts.
#include "orv/XStringRef.h"

#include "support/Test.h"

using namespace orv;

TEST(XStringRef, ZeroLengthReachesToTheEndAndOutOfRangeIsInvalidOrNullChar) {
    QString const s = "abc";
    XStringRef const r(s, 1, 0);
    EXPECT_EQ(r.size(), 2u);
    EXPECT_EQ(r.posEnd(), 2u);
    EXPECT_EQ(r.toString(), QLatin1String("bc"));
    EXPECT_EQ(r[1], QLatin1Char('c'));
    EXPECT_EQ(r.toStringInfo(),
              QLatin1String("pos:1, size:2, <<<bc>>> original <<<abc>>>, size:3"));
    XStringRef const past(s, 2, 5);
    EXPECT_FALSE(past.isValid());
    EXPECT_EQ(past.toString(), QString());
    XStringRef const head(s, 0, 2);
    EXPECT_TRUE(static_cast<bool>(head));
    EXPECT_TRUE(head.charAt(2).isNull());
    EXPECT_FALSE(XStringRef::createInvalidStringRef().isValid());
    XStringRef whole(s);
    EXPECT_EQ(whole.size(), 3u);
    whole.setInvalid();
    EXPECT_FALSE(whole);
}
