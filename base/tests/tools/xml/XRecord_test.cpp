// XRecord_test.cpp: every attribute type through its written form and back, what
// unreadable text and absent keys give, key order, and filling from text.
#include "orv/XRecord.h"

#include "orv/XMem.h"

#include "support/Test.h"

#include <QtCore/QByteArray>

#include <tuple>
#include <type_traits>
#include <utility>

using orv::Res;
using orv::XRecord;

namespace {

QString stored(XRecord const &r, char const *key) { return r.getString(QString::fromLatin1(key)); }

XRecord withValue(QString const &value) {
    XRecord r;
    r.setString(QStringLiteral("k"), value);
    return r;
}

// Stores value with set, expects its one written form, and reads it back with get.
template <typename T, typename V, typename D>
void roundTrip(void (XRecord::*set)(QString const &, V),
               T (XRecord::*get)(QString const &, D) const,
               typename std::decay<T>::type const &value, char const *text) {
    SCOPED_TRACE(text);
    XRecord r;
    (r.*set)(QStringLiteral("k"), value);
    EXPECT_EQ(stored(r, "k"), QString::fromLatin1(text));
    EXPECT_EQ((r.*get)(QStringLiteral("k"), T()), value);
}

} // namespace

TEST(XRecord, WritesEachTypeInItsOneFormAndReadsItBack) {
    roundTrip(&XRecord::setBool, &XRecord::getBool, true, "true");
    roundTrip(&XRecord::setShort, &XRecord::getShort, -7, "-7");
    roundTrip(&XRecord::setInt, &XRecord::getInt, -123456, "-123456");
    roundTrip(&XRecord::setUInt, &XRecord::getUInt, 4000000000u, "4000000000");
    roundTrip(&XRecord::setLong, &XRecord::getLong, -9000000000LL, "-9000000000");
    roundTrip(&XRecord::setULong, &XRecord::getULong, 18000000000000000000ULL,
              "18000000000000000000");
    roundTrip(&XRecord::setDouble, &XRecord::getDouble, 0.1, "0.100000");
    roundTrip(&XRecord::setFloat, &XRecord::getFloat, 1.5f, "1.500000");
    roundTrip(&XRecord::setQPoint, &XRecord::getQPoint, QPoint(1, -2), "1,-2");
    roundTrip(&XRecord::setQPointF, &XRecord::getQPointF, QPointF(1.5, 2), "1.5,2");
    roundTrip(&XRecord::setQSize, &XRecord::getQSize, QSize(640, 480), "640,480");
    roundTrip(&XRecord::setQSizeF, &XRecord::getQSizeF, QSizeF(0.25, 1e7), "0.25,1e+07");
    roundTrip(&XRecord::setRes, &XRecord::getRes, Res(1920, 1080), "1920,1080");
    roundTrip(&XRecord::setQRect, &XRecord::getQRect, QRect(1, 2, 3, 4), "1,2,3,4");
    roundTrip(&XRecord::setQRectF, &XRecord::getQRectF, QRectF(0.5, 1, 2.25, 3), "0.5,1,2.25,3");
    roundTrip(&XRecord::setQMargins, &XRecord::getQMargins, QMargins(1, 2, 3, 4), "1,2,3,4");
}

TEST(XRecord, AbsentKeysGiveTheDefault) {
    XRecord const r;
    EXPECT_EQ(r.getString("x", "d"), QStringLiteral("d"));
    EXPECT_TRUE(r.getBool("x", true));
    EXPECT_EQ(r.getInt("x", 7), 7);
    EXPECT_EQ(r.getUInt("x", 8u), 8u);
    EXPECT_EQ(r.getULong("x", 9u), 9u);
    EXPECT_DOUBLE_EQ(r.getDouble("x", 7.5), 7.5);
    EXPECT_EQ(r.getQSize("x"), QSize(-1, -1));
    EXPECT_TRUE(r.getQRect("x").isNull());
    EXPECT_EQ(r.getRes("x"), Res());
    EXPECT_TRUE(r.getQByteArray("x").isEmpty());
    EXPECT_TRUE(r.getArrayString("x").empty());
}

TEST(XRecord, UnreadableNumbersGiveDefaultsButDoubleGivesZero) {
    XRecord const r = withValue("abc");
    EXPECT_EQ(r.getInt("k", 7), 7);
    EXPECT_EQ(r.getShort("k", 6), 6);
    EXPECT_EQ(r.getLong("k", 5), 5);
    EXPECT_EQ(r.getULong("k", 4u), 4u);
    EXPECT_EQ(r.getDouble("k", 7.0), 0.0);
    EXPECT_EQ(r.getFloat("k", 7.0f), 0.0f);
    EXPECT_EQ(withValue("").getString("k", "d"), QString(""));
    // Cut to their width through the wider getter.
    EXPECT_EQ(withValue("70000").getShort("k", 0), static_cast<short>(70000));
    EXPECT_EQ(withValue("-1").getUInt("k", 0), 4294967295u);
}

TEST(XRecord, ReadsBoolFromLowerCasedText) {
    std::pair<char const *, bool> const rows[] = {
        {"true", true}, {"ON", true},     {"True", true}, {"1", true},    {"7", true}, {"0", false},
        {"-1", false},  {"false", false}, {"off", false}, {"yes", false}, {"", false}};
    for (auto const &[text, expected] : rows)
        EXPECT_EQ(withValue(text).getBool("k", !expected), expected) << text;
}

TEST(XRecord, GeometryNeedsItsCountOfTokens) {
    EXPECT_EQ(withValue("1, 2").getQPoint("k"), QPoint(1, 2));
    EXPECT_EQ(withValue("1;2").getQPoint("k", QPoint(9, 9)), QPoint(9, 9));
    EXPECT_EQ(withValue("1,2,3").getQRect("k", QRect(5, 5, 5, 5)), QRect(5, 5, 5, 5));
    EXPECT_EQ(withValue("1,,2").getQSize("k"), QSize(1, 2));
    EXPECT_EQ(withValue("x,2").getQPoint("k"), QPoint(0, 2));
    EXPECT_EQ(withValue("1,2,3,4,5").getQMargins("k"), QMargins());
}

TEST(XRecord, ArrayFloatFillsUpAndTruncatesWithWarnings) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    float out[3] = {9, 9, 9};
    EXPECT_TRUE(withValue("1,2").getArrayFloat("k", out, 3));
    EXPECT_EQ(std::vector<float>(out, out + 3), (std::vector<float>{1, 2, 0}));
    EXPECT_TRUE(log.waitForText("XRecord::getArrayFloat, too less tokens, expected 3 but we "
                                "have 2, fill up with '0'"));
    EXPECT_TRUE(withValue("1\t2, 3 4").getArrayFloat("k", out, 3));
    EXPECT_EQ(std::vector<float>(out, out + 3), (std::vector<float>{1, 2, 3}));
    EXPECT_TRUE(log.waitForText(
        "XRecord::getArrayFloat, too many tokens, expected 3 but we have 4, truncate...."));
    EXPECT_FALSE(withValue("1").getArrayFloat("k", nullptr, 1));
    EXPECT_FALSE(XRecord().getArrayFloat("k", out, 3));

    XRecord r;
    float const in[3] = {1.5f, -2, 0.25f};
    r.setArrayFloat("a", in, 3);
    EXPECT_EQ(stored(r, "a"), QStringLiteral("1.5,-2,0.25"));
    r.setArrayFloat("e", in, 0);
    EXPECT_EQ(stored(r, "e"), QString(""));
    r.setArrayFloat("n", nullptr, 2);
    EXPECT_FALSE(r.hasKey("n"));
    EXPECT_TRUE(log.waitForText("XRecord::setArrayFloat, ar == nullptr"));
}

TEST(XRecord, KeepsListsBytesBlocksAndBase64TextsInOneAttribute) {
    XRecord r;
    r.setQByteArray("q", QByteArray("\x01\xff", 2));
    EXPECT_EQ(stored(r, "q"), QString::fromLatin1(QByteArray("1, 255").toBase64()));
    EXPECT_EQ(r.getQByteArray("q"), QByteArray("\x01\xff", 2));

    std::vector<QString> const texts{"a", "", QStringLiteral("\u00e9t\u00e9")};
    r.set_string_array("sa", texts);
    EXPECT_EQ(r.get_string_array("sa"), texts);
    r.set_mem("m", orv::XMem(QByteArray("\0x\0", 3)));
    EXPECT_EQ(QByteArray(r.get_mem("m").mem(), 3), QByteArray("\0x\0", 3));
    EXPECT_TRUE(withValue("").get_mem("k").isEmpty());

    r.setBase64String("t64", QStringLiteral("h\u00e9"));
    EXPECT_EQ(r.getBase64String("t64", "d"), QStringLiteral("h\u00e9"));
    r.setString64("plain", orv::String64(QStringLiteral("x y")));
    EXPECT_EQ(stored(r, "plain"), QStringLiteral("x y"));

    EXPECT_EQ(withValue(" a, b\tc ").getArrayString("k"), (std::vector<QString>{"a", "b", "c"}));
    EXPECT_TRUE(withValue("a,b").hasArray("k"));
    EXPECT_FALSE(withValue("a b").hasArray("k"));
    orv::String64 s64;
    s64 = QStringLiteral("h\u00e9llo");
    EXPECT_EQ(s64.encoded(), QStringLiteral("aMOpbGxv"));
    EXPECT_EQ(s64.toString(), QStringLiteral("h\u00e9llo"));
}

TEST(XRecord, KeepsKeysInOrderAndPrintsInIt) {
    XRecord r;
    r.setString("b", "2");
    r.setString("a", "1");
    r.setString("c", "x y");
    r.setString("", "nothing");
    EXPECT_EQ(r.keys(), (std::vector<QString>{"a", "b", "c"}));
    EXPECT_EQ(r.firstKey(), QStringLiteral("a"));
    EXPECT_EQ(r.toStringAttributes(), QStringLiteral("a: '1', b: '2', c: 'x y'"));
    EXPECT_EQ(r.toStringEnv(), QStringLiteral("a=1 b=2 c=x y"));
    EXPECT_EQ(r.toStringCmd(), QStringLiteral("--a 1 --b 2 --c x y"));
    EXPECT_EQ(r.toString(), QStringLiteral(", attributes:3, {a: '1', b: '2', c: 'x y'}"));
    EXPECT_EQ(XRecord().toStringEnv(), QString(""));
    r.fromString("d=4", true, false); // adds to what is there
    EXPECT_EQ(r.toStringEnv(), QStringLiteral("a=1 b=2 c=x y d=4"));
}

TEST(XRecord, EmptyNameCountsAsNoNameAndIsNotCopied) {
    XRecord r;
    r.setName("");
    r.setString("x", "1");
    EXPECT_FALSE(r.hasName());
    EXPECT_FALSE(r.isName(""));
    XRecord copy;
    copy.setString("old", "gone");
    r.copyAttributesTo(&copy);
    EXPECT_EQ(copy.keys(), std::vector<QString>{"x"});
    EXPECT_EQ(r.getSetString("new", "v"), QStringLiteral("v"));
    EXPECT_TRUE(r.isString("new", "v"));
    EXPECT_EQ(r.getSetString("new", "w"), QStringLiteral("v"));
}

TEST(XRecord, ReadsTextUpToTheFirstMalformedPartAndFillsFromTheEnvironment) {
    // text, key=value pairs, by lines, toStringEnv afterwards
    std::tuple<char const *, bool, bool, char const *> const rows[] = {
        // clang-format off
        {"a=1; b = \"x y\"", true, false, "a=1 b=x y"},
        {"a=1\nb=2\r\nc=3", true, true, "a=1 b=2 c=3"},
        {"a=\"1\" b=\"2\" e=\"\"", false, false, "a=1 b=2 e="},
        {"a=1; b==2; c=3", true, false, "a=1"}, {"a=1; x\"y\"z; c=3", true, false, "a=1 c=3"},
        {"a=1; b c = \"2\"; c=3", true, false, "a=1"}, {"a=\"1\" b=2", false, false, "a=1"},
        {"a=\"1\" b=\"2", false, false, "a=1"}, {"a=\"1\" ", false, false, "a=1"},
        {"", false, false, ""},
    }; // clang-format on
    for (auto const &[text, pairs, lines, expected] : rows) {
        XRecord r;
        r.fromString(text, pairs, lines);
        EXPECT_EQ(r.toStringEnv(), QString::fromLatin1(expected)) << text;
    }
    qputenv("ORV_XRECORD_TEST", "v=1");
    XRecord env;
    env.fromEnvironment();
    qunsetenv("ORV_XRECORD_TEST");
    EXPECT_EQ(stored(env, "ORV_XRECORD_TEST"), QStringLiteral("v=1"));
}

TEST(XRecord, ShowsContentsWithBase64KeysDecoded) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    XRecord r;
    r.setString("a", "1");
    r.setBase64String("t64", QStringLiteral("x y"));
    r.showContents(2, orv::INFO, nullptr);
    EXPECT_TRUE(log.waitForText("<XRecord> {a: '1', t64: 'x y'}"));
    r.showContents(0, orv::INFO, [](QString const &k, QString const &v) { return k + "=" + v; });
    EXPECT_TRUE(log.waitForText("<XRecord> {a=1, t64: 'x y'}"));
}
