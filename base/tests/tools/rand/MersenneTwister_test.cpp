// MersenneTwister_test.cpp: the generator against the reference outputs and the
// standard library's engine, the derivation of every draw, the text draws with their
// length limit, and the ranges of the rand() family.
#include "orv/MersenneTwister.h"

#include "support/Test.h"

#include <cstring>
#include <random>

using namespace orv;

namespace {

// Two generators on the same default seed: one draws through the call under test,
// the other gives the raw 31-bit values the call must be derived from.
struct Pair {
    MersenneTwister tested{false, 64};
    MersenneTwister raw{false, 64};
    int r() { return raw.nextInt(); }
};

} // namespace

TEST(MersenneTwister, DefaultSeedGivesTheReferenceOutputOfItsKey) {
    MersenneTwister random(false, 16);
    for (quint32 expected : {1067595299U, 955945823U, 477289528U, 4107218783U, 4228976476U})
        EXPECT_EQ(random.genrand_int32(), expected);
}

TEST(MersenneTwister, SingleSeedMatchesTheStandardEngine) {
    MersenneTwister random(false, 16);
    random.init_genrand(5489);
    std::mt19937 standard(5489);
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(random.genrand_int32(), standard()) << "draw " << i;
    random.init_genrand(5489);
    for (int i = 1; i < 10000; ++i)
        random.genrand_int32();
    EXPECT_EQ(random.genrand_int32(), 4123659995U); // the standard's check value
}

TEST(MersenneTwister, SeedsAreReproducibleAndRandomizeMovesAway) {
    MersenneTwister a(false, 16), b(false, 16), randomized(true, 16);
    bool differs = false;
    for (int i = 0; i < 8; ++i) {
        quint32 const value = a.genrand_int32();
        EXPECT_EQ(value, b.genrand_int32());
        differs = differs || value != randomized.genrand_int32();
    }
    EXPECT_TRUE(differs);
}

TEST(MersenneTwister, EveryDrawIsDerivedFromTheThirtyOneBitValueInOrder) {
    Pair p;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        EXPECT_EQ(p.tested.nextInt(), p.r());
        EXPECT_EQ(p.tested.nextInt(7), p.r() % 7);
        EXPECT_EQ(p.tested.nextIntRange(-3, 3), -3 + p.r() % 7);
        EXPECT_EQ(p.tested.nextIntRange(5, 5), 5 + 0 * p.r());
        EXPECT_EQ(p.tested.nextUINTRange(10, 12), 10U + static_cast<unsigned>(p.r()) % 3);
        EXPECT_EQ(p.tested.nextBool(), p.r() % 11 > 5);
        EXPECT_EQ(p.tested.nextAsciiLetter(true), 'A' + p.r() % 26);
        int const lowerOrUpper = p.r() % 11;
        EXPECT_EQ(p.tested.nextAsciiLetter(false), (lowerOrUpper < 6 ? 'a' : 'A') + p.r() % 26);
        EXPECT_EQ(p.tested.next_greek_char(), QChar(p.r() % 57 + 913));
        EXPECT_EQ(p.tested.next_chin_char(true), QChar(p.r() % 784 + 20224));
        EXPECT_EQ(p.tested.next_chin_char(false), QChar(p.r() % 39936 + 1024));
        EXPECT_EQ(p.tested.next_unicode_char(QChar('a'), QChar('e')), QChar('a' + p.r() % 5));
        EXPECT_EQ(p.tested.next_word_delimiter(" ,;"), QString(" ,;").at(p.r() % 3));
        double const sign = p.r() % 11 < 6 ? -1.0 : 1.0;
        EXPECT_DOUBLE_EQ(p.tested.nextDoublePlusMinus(), sign * p.raw.genrand_real1());
        EXPECT_DOUBLE_EQ(p.tested.nextDoubleRange(2.0, 4.0), 2.0 + 2.0 * p.raw.genrand_real1());
    }
}

TEST(MersenneTwister, RealDrawsStayInTheirIntervals) {
    MersenneTwister random(false, 16);
    for (int i = 0; i < 100000; ++i) {
        double const closed = random.genrand_real1(), halfOpen = random.genrand_real2();
        double const open = random.genrand_real3(), fine = random.genrand_res53();
        ASSERT_TRUE(closed >= 0.0 && closed <= 1.0) << closed;
        ASSERT_TRUE(halfOpen >= 0.0 && halfOpen < 1.0) << halfOpen;
        ASSERT_TRUE(open > 0.0 && open < 1.0) << open;
        ASSERT_TRUE(fine >= 0.0 && fine < 1.0) << fine;
    }
}

TEST(MersenneTwister, RandStringIsCapitalsAndIsCutAtTheBufferWithAWarning) {
    Pair p;
    QByteArray expected;
    for (int i = 0; i < 10; ++i)
        expected.append(static_cast<char>('A' + p.r() % 26));
    EXPECT_EQ(QByteArray(p.tested.randString(10)), expected);

    test::CapturingAppender &log = test::startCapturingLogger();
    MersenneTwister random(false, 8);
    EXPECT_EQ(std::strlen(random.randString(7)), 7u); // the limit itself is cut too, to itself
    EXPECT_EQ(std::strlen(random.randString(1000)), 7u);
    EXPECT_TRUE(log.waitForText("MersenneTwister::randString, len > MAX_RAND_STRING, cut to:7"));
    EXPECT_EQ(std::strlen(random.randLine(1000, 3, true, '.')), 7u);
}

// The default seed's lines: a blank at every multiple of a word length drawn from 1 to 4
// (so blanks may follow each other), letters between, the end character last.
TEST(MersenneTwister, RandLineBlanksAtMultiplesOfTheWordLengthAndEndsInTheEndCharacter) {
    MersenneTwister upper(false, 64), mixed(false, 64), random(false, 16);
    EXPECT_STREQ(upper.randLine(60, 4, true, '.'),
                 "NU S T M FSY O R I O OTT   Q U RD    BU    T PSZ LGU J T   .");
    EXPECT_STREQ(mixed.randLine(60, 4, false, '.'),
                 "US H  sZ  fV ot  q eD    UU  FsR UJT sl mD mS  w   K G C y .");
    EXPECT_STREQ(random.randLine(1, 4, false, '!'), "!");
    EXPECT_STREQ(random.randLine(0, 4, false, '!'), "");
}

TEST(MersenneTwister, FillsWithBytesOfTheRangeAndAClosingZero) {
    MersenneTwister random(false, 16);
    char one = 'x';
    random.fillCharArray(&one, 1, 0, 255);
    EXPECT_EQ(one, '\0');
    QByteArray const bytes = random.randQByteArray(1000, 'a', 'c');
    ASSERT_EQ(bytes.size(), 1000);
    EXPECT_EQ(bytes.back(), '\0');
    EXPECT_EQ(bytes.count('a') + bytes.count('b') + bytes.count('c'), 999);
    QByteArray all = random.randQByteArray(20000, 0, 255);
    EXPECT_GT(all.count('\xff'), 0); // the whole byte range, 255 included
}

TEST(GRand, ValuesStayInTheirRanges) {
    gRandIni();
    char buffer[4096];
    gRandBuffer(buffer, sizeof buffer);
    EXPECT_EQ(std::memchr(buffer, 0xFF, sizeof buffer), nullptr);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(gRand(5, 6), 5);
        int const below = gRand(10);
        EXPECT_TRUE(below >= 0 && below < 10) << below;
        int const ranged = gRand(-5, 5);
        EXPECT_TRUE(ranged >= -5 && ranged < 5) << ranged;
    }
    QString const text = gRandString(50);
    ASSERT_EQ(text.size(), 50);
    for (QChar c : text)
        EXPECT_TRUE(c >= 'A' && c <= 'Z') << c.unicode();
    EXPECT_EQ(gRandString(0), QString());
    EXPECT_EQ(gRandString(-4), QString());
}
