// NumberParser_test.cpp: FloatParser and IntegerParser against strtod/strtoll, and bad input.
#include "orv/NumberParser.h"

#include "support/Test.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using namespace orv;

namespace {

double const inf = std::numeric_limits<double>::infinity();

// Decimal texts as people and files write them: optional sign and blanks, up to 19
// significant digits with a point anywhere, optional exponent. Writes into text[64].
void randomFloatText(std::mt19937 &gen, char *text) {
    std::uniform_int_distribution<int> digitCount(1, 19), digit(0, 9), coin(0, 3),
        exponent(-290, 290);
    char *p = text;
    if (coin(gen) == 0)
        *p++ = ' ';
    if (int const pick = coin(gen); pick == 1 || pick == 2)
        *p++ = pick == 1 ? '-' : '+';
    int const n = digitCount(gen);
    int const point = std::uniform_int_distribution<int>(0, n)(gen);
    for (int i = 0; i < n; ++i) {
        if (i == point)
            *p++ = '.';
        *p++ = static_cast<char>('0' + digit(gen));
    }
    if (coin(gen) != 0)
        p += std::snprintf(p, 8, "%c%d", coin(gen) == 0 ? 'E' : 'e', exponent(gen));
    if (coin(gen) == 0)
        *p++ = '\t';
    *p = 0;
}

} // namespace

TEST(FloatParser, StofTable) {
    EXPECT_EQ(FloatParser::NaN, 2.2250738585072014e-308); // bits 0x0010000000000000
    EXPECT_TRUE(std::isnan(FloatParser::NOT_A_NUMBER));
    double const nan = FloatParser::NaN;
    // clang-format off
    std::pair<char const *, double> const rows[] = {
        {" -1.5e2 ", -150.0}, {"12", 12.0}, {"+3.25", 3.25}, {".5", 0.5}, {"5.", 5.0},
        {"\t7\t", 7.0},
        {"0", 0.0}, {"1E3", 1000.0}, {"00000000000000000000000000012.5", 12.5},
        {"123456789012345678901234567890", 1.2345678901234568e29},
        {"1e400", 1e308}, {"1e-400", 1e-308}, // exponent digits are capped at 308
        {"10e308", inf}, {"-10e308", -inf},
        // not a number
        {"", nan}, {"   ", nan}, {"-", nan}, {"+", nan}, {".", nan}, {"-.e5", nan}, {"e5", nan},
        {"1e", nan}, {"1e+", nan}, {"12x", nan}, {"1,5", nan}, {"1 2", nan}, {"1\n", nan},
        {"--1", nan}, {"nan", nan}, {"inf", nan}};
    // clang-format on
    for (auto [text, value] : rows)
        EXPECT_EQ(FloatParser::stof(text), value) << '"' << text << '"';
    EXPECT_TRUE(std::signbit(FloatParser::stof("-0")));
}

TEST(FloatParser, AsciiToFloatIsBoundedAndTakesComma) {
    char const text[] = "3.25xyz";
    EXPECT_EQ(FloatParser::asciiToFloat(text, text + 4), 3.25);
    EXPECT_EQ(FloatParser::asciiToFloat(text), FloatParser::NaN);
    EXPECT_EQ(FloatParser::asciiToFloat("1,5"), 1.5);
    EXPECT_EQ(FloatParser::asciiToFloat(" -2,5e1 "), -25.0);
    EXPECT_EQ(FloatParser::asciiToFloat(text + 4, text), FloatParser::NaN); // end before start
    char const shortText[] = "42\0garbage";
    EXPECT_EQ(FloatParser::asciiToFloat(shortText, shortText + sizeof shortText - 1), 42.0);
    FloatParser::DEBUG_PARSE = true;
    EXPECT_EQ(FloatParser::asciiToFloat("-1.5e1"), -15.0);
    FloatParser::DEBUG_PARSE = false;
}

TEST(FloatParser, LegacyFormAgreesClosely) {
    for (char const *text : {"1.5", "-123.456e-7", "9.87654321e200", "0.1"})
        EXPECT_NEAR(FloatParser::stof_legacy(text) / FloatParser::stof(text), 1.0, 1e-14) << text;
    EXPECT_EQ(FloatParser::stof_legacy("12x"), FloatParser::NaN);
}

TEST(FloatParser, AgreesWithStrtodOnAMillionInputs) {
    std::mt19937 gen(20240131);
    double worst = 0.0;
    std::string worstText;
    char text[64];
    for (int i = 0; i < 1000000; ++i) {
        randomFloatText(gen, text);
        double const expected = std::strtod(text, nullptr);
        double const got = FloatParser::stof(text);
        double const rel =
            expected == 0.0 ? std::fabs(got) : std::fabs(got - expected) / std::fabs(expected);
        if (rel > worst) {
            worst = rel;
            worstText = text;
        }
    }
    // Two units in the last place of a double.
    EXPECT_LE(worst, 4.5e-16) << worstText;
}

TEST(FloatParser, ExactForShortMantissasAndSmallExponents) {
    std::mt19937 gen(7);
    std::uniform_int_distribution<long long> mantissa(-9007199254740991LL, 9007199254740991LL);
    std::uniform_int_distribution<int> exponent(-22, 22);
    char text[64];
    for (int i = 0; i < 100000; ++i) {
        std::snprintf(text, sizeof text, "%llde%d", mantissa(gen), exponent(gen));
        ASSERT_EQ(FloatParser::stof(text), std::strtod(text, nullptr)) << text;
    }
}

TEST(IntegerParser, StoiTable) {
    EXPECT_EQ(IntegerParser::NaN, std::numeric_limits<qint64>::min());
    qint64 const nan = IntegerParser::NaN, max = std::numeric_limits<qint64>::max();
    // clang-format off
    std::pair<char const *, qint64> const rows[] = {
        {"12 ", 12}, {" -42", -42}, {"+7", 7}, {"\t0\t", 0}, {"007", 7},
        {"9223372036854775807", max}, {"-9223372036854775807", -max},
        {"18446744073709551617", 1}, // no overflow check: wraps modulo 2^64
        {"12x", nan}, {"", nan}, {" ", nan}, {"-", nan}, {"+", nan}, {"1 2", nan}, {"1.5", nan},
        {"--1", nan}, {"0x10", nan}};
    // clang-format on
    for (auto [text, value] : rows)
        EXPECT_EQ(IntegerParser::stoi(text), value) << '"' << text << '"';
}

TEST(IntegerParser, AgreesWithStrtollOnAMillionInputs) {
    std::mt19937_64 gen(20240131);
    std::uniform_int_distribution<int> shift(0, 63), coin(0, 3);
    char text[40];
    for (int i = 0; i < 1000000; ++i) {
        long long const value = static_cast<long long>(gen() >> shift(gen)) * (coin(gen) ? 1 : -1);
        std::snprintf(text, sizeof text, coin(gen) ? "%lld" : " %+lld\t", value);
        ASSERT_EQ(IntegerParser::stoi(text), std::strtoll(text, nullptr, 10)) << text;
    }
}
