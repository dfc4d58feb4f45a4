// StringFormat_test.cpp: the exact texts of the number, size and duration formatters.
#include "orv/StringFormat.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv;

namespace {
qint64 const minI64 = std::numeric_limits<qint64>::min();
qint64 const maxI64 = std::numeric_limits<qint64>::max();
quint64 const maxU64 = std::numeric_limits<quint64>::max();
} // namespace

TEST(StringFormat, Format1000GroupsByThreeCountingTheSign) {
    struct Row {
        qint64 value;
        char const *text;
    } const rows[] = {{0, "0"},
                      {999, "999"},
                      {1000, "1.000"},
                      {1234567, "1.234.567"},
                      {-1, "-1"},
                      {-1234, "-1.234"},
                      {-123, "-.123"},
                      {-123456, "-.123.456"},
                      {maxI64, "9.223.372.036.854.775.807"},
                      {minI64, "-9.223.372.036.854.775.808"}};
    for (Row const &r : rows)
        EXPECT_EQ(format1000(r.value), QLatin1String(r.text)) << r.value;
}

TEST(StringFormat, FormatBytesPicksUnitByThousands) {
    struct Row {
        double bytes;
        char const *text;
    } const rows[] = {
        {0, "0.00 KB"},      {500, "0.50 KB"},   {1e6, "1000.00 KB"},        {1.5e6, "1.50 MB"},
        {1e9, "1000.00 MB"}, {2.5e9, "2.50 GB"}, {1.234e15, "1234000.00 GB"}};
    for (Row const &r : rows)
        EXPECT_EQ(formatBytes(r.bytes), QLatin1String(r.text)) << r.bytes;
}

TEST(StringFormat, FormatBytesMiBPicksUnitByPowersOf1024) {
    double const mib = 1048576.0;
    EXPECT_EQ(formatBytesMiB(1024), QLatin1String("1.00 KiB"));
    EXPECT_EQ(formatBytesMiB(mib), QLatin1String("1024.00 KiB"));
    EXPECT_EQ(formatBytesMiB(1.5 * mib), QLatin1String("1.50 MiB"));
    EXPECT_EQ(formatBytesMiB(3 * 1024 * mib), QLatin1String("3.00 GiB"));
}

TEST(StringFormat, DurationsAreSecondsCommaMillisecondsPointMicroseconds) {
    EXPECT_EQ(formatMicrosecond_as_Sec(1234567), QLatin1String("1,234.567"));
    EXPECT_EQ(formatMicrosecond_as_Sec(0), QLatin1String("0,000.000"));
    EXPECT_EQ(formatMicrosecond_as_Sec(5), QLatin1String("0,000.005"));
    EXPECT_EQ(formatMicrosecond_as_Sec(maxU64), QLatin1String("18446744073709,551.615"));
    EXPECT_EQ(formatMillisecond_as_Sec(1500), QLatin1String("1,500.000"));
}

TEST(StringFormat, FormatPercentWritesIntegerCommaFractionDigits) {
    EXPECT_EQ(formatPercent(12.5, 2), QLatin1String("12,50"));
    EXPECT_EQ(formatPercent(5.0625, 6), QLatin1String("05,062500"));
    EXPECT_EQ(formatPercent(5.0625, 9), QLatin1String("05,062500")); // reduced to 6
    EXPECT_EQ(formatPercent(0.5, 0), QLatin1String("00,"));
    EXPECT_EQ(formatPercent(-1.5, 1), QLatin1String("-1,5"));
}

TEST(StringFormat, FormatFillZeroFollowsPrintfOnAll64Bits) {
    EXPECT_EQ(formatFillZero(5, 42), QLatin1String("00042"));
    EXPECT_EQ(formatFillZero(5, -42), QLatin1String("-0042"));
    EXPECT_EQ(formatFillZero(0, 7), QLatin1String("7"));
    EXPECT_EQ(formatFillZero(2, 12345), QLatin1String("12345"));
    EXPECT_EQ(formatFillZero(22, maxI64), QLatin1String("0009223372036854775807"));
    EXPECT_EQ(formatFillZero(3, minI64), QLatin1String("-9223372036854775808"));
}

TEST(StringFormat, FormatFloatSignsNonNegativeValues) {
    EXPECT_EQ(formatFloat(1.5f), QLatin1String("+1.50"));
    EXPECT_EQ(formatFloat(-1.5f), QLatin1String("-1.50"));
    EXPECT_EQ(formatFloat(0.0f), QLatin1String("+0.00"));
    EXPECT_EQ(formatFloat(-0.001f), QLatin1String("-0.00"));
}

TEST(StringFormat, CountDigitsIgnoresSign) {
    EXPECT_EQ(countDigits(qint64(0)), 1u);
    EXPECT_EQ(countDigits(qint64(9)), 1u);
    EXPECT_EQ(countDigits(qint64(-10)), 2u);
    EXPECT_EQ(countDigits(minI64), 19u);
    EXPECT_EQ(countDigits(maxU64), 20u);
}

TEST(StringFormat, BitsAndHexTexts) {
    EXPECT_EQ(bitsToString(static_cast<unsigned char>(5), false), QLatin1String("00000101"));
    EXPECT_EQ(bitsToString(static_cast<unsigned short>(0x8001), true),
              QLatin1String("10000000 00000001"));
    EXPECT_EQ(bitsToString(1u, true), QLatin1String("00000000 00000000 00000000 00000001"));
    EXPECT_EQ(formatHex(255, 4), QLatin1String("00FF"));
    EXPECT_EQ(formatHex(maxU64, 0), QLatin1String("FFFFFFFFFFFFFFFF"));
    EXPECT_EQ(format_toString_arguments(QString("running"), QString(), QString("error")),
              QLatin1String("running, error"));
}

TEST(StringFormat, GetStringNumberRewritesTrailingNumber) {
    EXPECT_EQ(get_string_number("img7", 3), QLatin1String("img007"));
    EXPECT_EQ(get_string_number("img0012", 2), QLatin1String("img12"));
    EXPECT_EQ(get_string_number("img12", 6), QLatin1String("img000012"));
    EXPECT_EQ(get_string_number("abc", 3), QLatin1String("abc"));
    EXPECT_EQ(get_string_number("x05", 7), QLatin1String("x5"));
}

TEST(StringFormat, GetBytesNumberReadsUnitsIn32Bits) {
    struct Row {
        char const *text;
        quint32 bytes;
    } const rows[] = {
        {"1000", 1000},
        {"1.9", 1},
        {"1e3", 1000},
        {"1,5 kb", 1500},
        {"3 MB", 3000000},
        {"2gb", 2000000000},
        {"5 gb", 705032704},                        // 5e9 modulo 2^32
        {"1 tb", static_cast<quint32>(-727379968)}, // the overflowed factor
        {"1 pb", static_cast<quint32>(-1530494976)},
        {"-5", static_cast<quint32>(-5)},
        {"1e30", 0}, // beyond 64 bits
        {"2 xb", 0}, // unknown symbol
        {"", 0},
        {"kb", 0},
        {"1.2.3 kb", 0},
        {"1234567890123456789012345678901", 0}, // longer than 30
    };
    for (Row const &r : rows)
        EXPECT_EQ(get_bytes_number(QLatin1String(r.text)), r.bytes) << r.text;
}

TEST(StringFormat, CreateNextNumberStringIncrementsTrailingNumber) {
    struct Row {
        char const *in, *out;
    } const rows[] = {{"", "0"},
                      {"ab", "ab0"},
                      {"a9", "a10"},
                      {"a09", "a10"},
                      {"a00", "a1"},
                      {"7", "8"},
                      {"x99999999999999999999999", "x100000000000000000000000"}};
    for (Row const &r : rows)
        EXPECT_EQ(createNextNumberString(QLatin1String(r.in)), QLatin1String(r.out)) << r.in;
}

TEST(StringFormat, SpacesAndPaddingAreCutAtOneMillion) {
    EXPECT_EQ(createSpace(3), QLatin1String("   "));
    EXPECT_EQ(createSpace(0), QString(""));
    EXPECT_EQ(createSpace(2000000).size(), 1000000);
    EXPECT_EQ(fillUpTo("ab", 4), QLatin1String("ab  "));
    EXPECT_EQ(fillUpTo("abcdef", 3), QLatin1String("abcdef"));
    EXPECT_EQ(fillUpTo("ab", 3000000).size(), 1000000);
}

TEST(StringFormat, PrfFormatsAndSurvivesNullFormat) {
    EXPECT_EQ(prf("%d-%s", 5, "x"), QLatin1String("5-x"));
    char const *noFormat = nullptr;
    EXPECT_EQ(prf(noFormat), QLatin1String("<<<prf,nullpointer>>>"));
}
