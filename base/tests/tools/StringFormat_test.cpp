// StringFormat_test.cpp: the exact texts of the number, size and duration formatters.
#include "orv/StringFormat.h"

#include "support/Test.h"

#include <limits>

using namespace orv;

namespace {
qint64 const minI64 = std::numeric_limits<qint64>::min();
qint64 const maxI64 = std::numeric_limits<qint64>::max();
quint64 const maxU64 = std::numeric_limits<quint64>::max();

// Each row: a formatter's result next to the text it must be.
using Texts = std::initializer_list<std::pair<QString, char const *>>;
void expectTexts(Texts rows) {
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, QString::fromUtf8(expected));
}
} // namespace

TEST(StringFormat, Format1000GroupsByThreeCountingTheSign) {
    // clang-format off
    expectTexts({{format1000(0), "0"}, {format1000(999), "999"}, {format1000(1000), "1.000"},
                 {format1000(1234567), "1.234.567"}, {format1000(-1), "-1"},
                 {format1000(-1234), "-1.234"}, {format1000(-123), "-.123"},
                 {format1000(-123456), "-.123.456"},
                 {format1000(maxI64), "9.223.372.036.854.775.807"},
                 {format1000(minI64), "-9.223.372.036.854.775.808"}});
    // clang-format on
    // countDigits ignores the sign.
    EXPECT_EQ(countDigits(qint64(0)), 1u);
    EXPECT_EQ(countDigits(qint64(9)), 1u);
    EXPECT_EQ(countDigits(qint64(-10)), 2u);
    EXPECT_EQ(countDigits(minI64), 19u);
    EXPECT_EQ(countDigits(maxU64), 20u);
}

TEST(StringFormat, FormatBytesPicksUnitByThousandsOrPowersOf1024) {
    double const mib = 1048576.0;
    // clang-format off
    expectTexts({{formatBytes(0), "0.00 KB"}, {formatBytes(500), "0.50 KB"},
                 {formatBytes(1e6), "1000.00 KB"}, {formatBytes(1.5e6), "1.50 MB"},
                 {formatBytes(1e9), "1000.00 MB"}, {formatBytes(2.5e9), "2.50 GB"},
                 {formatBytes(1.234e15), "1234000.00 GB"}, {formatBytesMiB(1024), "1.00 KiB"},
                 {formatBytesMiB(mib), "1024.00 KiB"}, {formatBytesMiB(1.5 * mib), "1.50 MiB"},
                 {formatBytesMiB(3 * 1024 * mib), "3.00 GiB"}});
    // clang-format on
}

TEST(StringFormat, NumberTextsFollowTheirFixedForms) {
    // clang-format off
    expectTexts({
        // durations: seconds comma milliseconds point microseconds
        {formatMicrosecond_as_Sec(1234567), "1,234.567"},
        {formatMicrosecond_as_Sec(0), "0,000.000"}, {formatMicrosecond_as_Sec(5), "0,000.005"},
        {formatMicrosecond_as_Sec(maxU64), "18446744073709,551.615"},
        {formatMillisecond_as_Sec(1500), "1,500.000"},
        // percent: integer comma fraction digits, at most six
        {formatPercent(12.5, 2), "12,50"}, {formatPercent(5.0625, 6), "05,062500"},
        {formatPercent(5.0625, 9), "05,062500"}, {formatPercent(0.5, 0), "00,"},
        {formatPercent(-1.5, 1), "-1,5"},
        // zero fill as printf does it, on all 64 bits
        {formatFillZero(5, 42), "00042"}, {formatFillZero(5, -42), "-0042"},
        {formatFillZero(0, 7), "7"}, {formatFillZero(2, 12345), "12345"},
        {formatFillZero(22, maxI64), "0009223372036854775807"},
        {formatFillZero(3, minI64), "-9223372036854775808"},
        // floats signed even when not negative
        {formatFloat(1.5f), "+1.50"}, {formatFloat(-1.5f), "-1.50"}, {formatFloat(0.0f), "+0.00"},
        {formatFloat(-0.001f), "-0.00"},
        // bits and hex
        {bitsToString(static_cast<unsigned char>(5), false), "00000101"},
        {bitsToString(static_cast<unsigned short>(0x8001), true), "10000000 00000001"},
        {bitsToString(1u, true), "00000000 00000000 00000000 00000001"},
        {formatHex(255, 4), "00FF"}, {formatHex(maxU64, 0), "FFFFFFFFFFFFFFFF"},
        {format_toString_arguments(QString("running"), QString(), QString("error")),
         "running, error"}, {prf("%d-%s", 5, "x"), "5-x"},
        {prf(static_cast<char const *>(nullptr)), "<<<prf,nullpointer>>>"},
    });
    // clang-format on
}

TEST(StringFormat, TrailingNumbersAreRewrittenAndIncremented) {
    // clang-format off
    expectTexts({{get_string_number("img7", 3), "img007"}, {get_string_number("img0012", 2), "img12"},
                 {get_string_number("img12", 6), "img000012"}, {get_string_number("abc", 3), "abc"},
                 {get_string_number("x05", 7), "x5"}, {createNextNumberString(""), "0"},
                 {createNextNumberString("ab"), "ab0"}, {createNextNumberString("a9"), "a10"},
                 {createNextNumberString("a09"), "a10"}, {createNextNumberString("a00"), "a1"},
                 {createNextNumberString("7"), "8"},
                 {createNextNumberString("x99999999999999999999999"), "x100000000000000000000000"}});
    // clang-format on
}

TEST(StringFormat, GetBytesNumberReadsUnitsIn32Bits) {
    struct Row {
        char const *text;
        quint32 bytes;
    } const rows[] = {
        // clang-format off
        {"1000", 1000}, {"1.9", 1}, {"1e3", 1000}, {"1,5 kb", 1500}, {"3 MB", 3000000},
        {"2gb", 2000000000}, {"5 gb", 705032704},                        // 5e9 modulo 2^32
        {"1 tb", static_cast<quint32>(-727379968)}, // the overflowed factor
        {"1 pb", static_cast<quint32>(-1530494976)}, {"-5", static_cast<quint32>(-5)},
        {"1e30", 0}, // beyond 64 bits
        {"2 xb", 0}, // unknown symbol
        {"", 0}, {"kb", 0}, {"1.2.3 kb", 0},
        {"1234567890123456789012345678901", 0}, // longer than 30
    }; // clang-format on
    for (Row const &r : rows)
        EXPECT_EQ(get_bytes_number(QLatin1String(r.text)), r.bytes) << r.text;
}

TEST(StringFormat, SpacesAndPaddingAreCutAtOneMillion) {
    // clang-format off
    expectTexts({{createSpace(3), "   "}, {createSpace(0), ""}, {fillUpTo("ab", 4), "ab  "},
                 {fillUpTo("abcdef", 3), "abcdef"}});
    // clang-format on
    EXPECT_EQ(createSpace(2000000).size(), 1000000);
    EXPECT_EQ(fillUpTo("ab", 3000000).size(), 1000000);
}
