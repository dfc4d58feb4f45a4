// ArrayTools_test.cpp: the stuffed frame and its digest form, bad frames, removal from a
// buffer, the checksum byte and the dump texts.
#include "orv/ArrayTools.h"

#include "orv/MD5.h"

#include "support/Test.h"

#include <tuple>

using orv::ArrayTools;

namespace {

QByteArray bytes(std::initializer_list<int> values) {
    QByteArray out;
    for (int v : values)
        out.append(static_cast<char>(v));
    return out;
}

} // namespace

TEST(ArrayTools, FramesStuffZerosAwayAndComeBack) {
    QByteArray const run254(254, 'A');
    QByteArray const run255(255, 'A');
    std::tuple<char const *, QByteArray, QByteArray> const rows[] = {
        // clang-format off
        {"empty", QByteArray(), bytes({0, 1, 0})}, {"one zero", bytes({0}), bytes({0, 1, 1, 0})},
        {"trailing zero", bytes({0x41, 0}), bytes({0, 2, 0x41, 1, 0})},
        {"zeros between", bytes({0x11, 0, 0, 0x22}), bytes({0, 2, 0x11, 1, 2, 0x22, 0})},
        {"254 non-zero", run254, bytes({0, 0xFF}) + run254 + bytes({1, 0})},
        {"255 non-zero", run255, bytes({0, 0xFF}) + run254 + bytes({2, 0x41, 0})},
    }; // clang-format on
    for (auto const &[name, payload, expected] : rows) {
        QByteArray const framed = ArrayTools::frameQByteArray(payload);
        EXPECT_EQ(framed, expected) << name;
        EXPECT_EQ(ArrayTools::unFrameQByteArray(framed), payload) << name;
    }
}

TEST(ArrayTools, LongPayloadsOfEveryByteValueRoundTrip) {
    QByteArray payload;
    for (int i = 0; i < 100000; ++i)
        payload.append(static_cast<char>(i % 7 == 0 ? 0 : (i * 31) % 256));
    EXPECT_EQ(ArrayTools::unFrameQByteArray(ArrayTools::frameQByteArray(payload)), payload);
    QByteArray got = "kept:";
    EXPECT_TRUE(ArrayTools::unFrameQByteArray_MD5(ArrayTools::frameQByteArray_MD5(payload), got));
    EXPECT_EQ(got, "kept:" + payload); // appended, not replaced
}

TEST(ArrayTools, UnFrameDropsEveryZeroAndNeverReadsPastTheBytes) {
    std::tuple<char const *, QByteArray, QByteArray> const rows[] = {
        {"empty", QByteArray(), QByteArray()},
        {"two frames fuse: every zero goes",
         ArrayTools::frameQByteArray("ab") + ArrayTools::frameQByteArray("cd"),
         QByteArray("ab\0cd", 5)},
        {"only delimiters", bytes({0, 0, 0}), QByteArray()},
        {"code past the end", bytes({0, 0x10, 0x41, 0x42}), "AB"},
        {"lone 255", bytes({0xFF}), QByteArray()},
        {"cut after a code", bytes({0x03, 0x41, 0x42, 0x05}), QByteArray("AB\0", 3)},
    };
    for (auto const &[name, framed, expected] : rows)
        EXPECT_EQ(ArrayTools::unFrameQByteArray(framed), expected) << name;
    // 1 MiB of full groups, the last one cut: 254 of every 255 bytes come out.
    QByteArray const oversized(1 << 20, '\xff');
    EXPECT_EQ(ArrayTools::unFrameQByteArray(oversized), QByteArray(4112 * 254 + 15, '\xff'));
}

TEST(ArrayTools, DigestFramesRefuseDamagedOrShortInput) {
    QByteArray const framed = ArrayTools::frameQByteArray_MD5("payload");
    EXPECT_EQ(ArrayTools::unFrameQByteArray(framed),
              "payload" + orv::MD5::md5FromQByteArray("payload"));
    QByteArray flipped = framed;
    flipped[2] = static_cast<char>(flipped[2] ^ 0x04); // one bit of the payload
    QByteArray const empty = ArrayTools::frameQByteArray_MD5(QByteArray());
    std::pair<char const *, QByteArray> const rows[] = {
        // clang-format off
        {"bit flipped", flipped}, {"truncated", framed.left(framed.size() - 5)},
        {"empty payload", empty}, {"empty input", QByteArray()},
        {"32 bytes only", ArrayTools::frameQByteArray(QByteArray(32, 'x'))},
        {"foreign digest", ArrayTools::frameQByteArray("x" + orv::MD5::md5FromQByteArray("y"))},
    }; // clang-format on
    for (auto const &[name, framed] : rows) {
        QByteArray out = "untouched";
        EXPECT_FALSE(ArrayTools::unFrameQByteArray_MD5(framed, out)) << name;
        EXPECT_EQ(out, "untouched") << name;
    }
}

TEST(ArrayTools, QByteArrayStuffingWritesOverTheTargetFromItsStart) {
    QByteArray dst(10, '#');
    EXPECT_EQ(ArrayTools::stuffToQByteArray(bytes({0x41, 0}), dst), 3u);
    EXPECT_EQ(dst, bytes({2, 0x41, 1}) + QByteArray(7, '#')); // never shrinks
    QByteArray back;
    EXPECT_EQ(ArrayTools::unStuffQData(bytes({2, 0x41, 1}), back), 2u);
    EXPECT_EQ(back, bytes({0x41, 0}));
    unsigned char raw[4] = {};
    unsigned char const input[] = {0x07, 0x00};
    EXPECT_EQ(ArrayTools::stuffData(input, 2, raw), 3u);
    EXPECT_EQ(ArrayTools::stuffData(input, 0, raw), 1u);
    EXPECT_EQ(raw[0], 1);
}

TEST(ArrayTools, ChecksumCountAndAlphabetHelpers) {
    QByteArray ar = bytes({1, 2});
    ArrayTools::addChecksumByte(ar);
    EXPECT_EQ(ar, bytes({1, 2, 0xFD}));
    QByteArray empty;
    ArrayTools::addChecksumByte(empty);
    EXPECT_EQ(empty, bytes({0}));
    EXPECT_EQ(ArrayTools::countCharsOf("a.b.c", '.'), 2u);
    EXPECT_EQ(ArrayTools::createQByteArrayABC(28), "ABCDEFGHIJKLMNOPQRSTUVWXYZAB");
}

TEST(ArrayTools, RandomArraysHoldTheRangeAndAClosingZero) {
    QByteArray filled("old content");
    ArrayTools::randomfillQByteArray(filled, 500, '0', '9');
    QByteArray const made = ArrayTools::randQByteArray(500, '0', '9');
    for (QByteArray const &ar : {filled, made}) {
        ASSERT_EQ(ar.size(), 500);
        EXPECT_EQ(ar.back(), '\0');
        for (char c : ar.chopped(1))
            ASSERT_TRUE(c >= '0' && c <= '9') << int(c);
    }
    EXPECT_NE(filled, made); // the shared generator moves on
}

TEST(ArrayTools, RemoveTakesTheRangeOrOnlyOneByteWhenItRunsPastTheEnd) {
    std::tuple<unsigned int, unsigned int, QByteArray, QByteArray, bool> const rows[] = {
        {0, 2, "ab", "cde", true},   {3, 2, "de", "abc", true},
        {3, 4, "d", "abcde", false}, {5, 1, "", "abcde", false},
        {0, 0, "", "abcde", false},  {1, 0xFFFFFFFFu, "b", "abcde", false},
    };
    for (auto const &[pos, len, result, left, canRemove] : rows) {
        SCOPED_TRACE(testing::Message() << pos << "," << len);
        QByteArray ar = "abcde";
        EXPECT_EQ(ArrayTools::canRemove(ar, pos, len), canRemove);
        EXPECT_EQ(ArrayTools::arRemove(ar, pos, len), result);
        EXPECT_EQ(ar, left);
    }
    QByteArray ar = "abc";
    EXPECT_TRUE(ArrayTools::canRemoveFromBegin(ar, 3));
    EXPECT_EQ(ArrayTools::arRemoveFromBegin(ar, 1), "a");
    EXPECT_EQ(ArrayTools::arRemoveAll(ar), "bc");
    EXPECT_TRUE(ar.isEmpty());
}

TEST(ArrayTools, DumpTextsFollowTheHeadTailAndGroupRules) {
    QByteArray const ar = bytes({0x41, 0x1F, 0xE9, 0x00, 0x7A, 0x30});
    QString const md5 =
        orv::MD5::md5FromBuffer(reinterpret_cast<unsigned char const *>(ar.constData()), 6);
    // head, tail, asc, hex, md5, limit, group, text
    std::tuple<quint64, quint64, bool, bool, bool, quint64, unsigned int, QString> const rows[] = {
        {10, 10, true, true, false, 0, 0,
         QStringLiteral("[6] = {A.\u00e9.z0} HEX{41 1F E9 00 7A 30} ")},
        {1, 2, true, true, false, 0, 0, QStringLiteral("[6] = {A .. z0} HEX{41  .. 7A 30} ")},
        {10, 10, false, true, false, 0, 2, QStringLiteral("[6] = HEX{41 1F|E9 00|7A 30} ")},
        {10, 10, false, true, false, 3, 0, QStringLiteral("[3] = HEX{41 1F E9} ")},
        {1, 1, false, false, true, 3, 0, QStringLiteral("[3] = MD5{") + md5 + "} "},
    };
    for (auto const &[head, tail, asc, hex, md5, limit, group, text] : rows)
        EXPECT_EQ(ArrayTools::qByteArrayToString(ar, head, tail, asc, hex, md5, limit, group,
                                                 QStringLiteral("|")),
                  text);
    EXPECT_EQ(ArrayTools::qByteArrayToString(QByteArray(1234, 'x'), 0, 0, false, false, false, 0, 0,
                                             QString()),
              QStringLiteral("[1.234] = "));
    EXPECT_EQ(ArrayTools::qByteArray_to_hex_string(ar, 1, 1, 0), QStringLiteral("41  .. 30"));
    EXPECT_EQ(ArrayTools::qByteArray_to_hex_string(ar, 1, 1, 4), QStringLiteral("41  .. 00"));
}
