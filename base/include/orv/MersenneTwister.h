// MersenneTwister.h: reproducible pseudo-random numbers for test data and text
// generation (MT19937 with the reference's seeding and tempering), and the thin
// gRand family over the runtime's rand().
//
//   orv::MersenneTwister random(false, 1024);   // the same sequence on every run
//   int die = random.nextIntRange(1, 6);
//   char const *word = random.randString(8);   // valid until the next text draw
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QChar>
#include <QtCore/QString>

namespace orv {

// Seeded sequences are part of the contract: the derivation of every draw from the
// 32-bit output and the order of draws stay as they are. One object per thread.
class ORV_EXPORT MersenneTwister {
public:
    static constexpr int N = 624;
    static constexpr int M = 397;
    static constexpr quint32 MATRIX_A = 0x9908b0dfU;
    static constexpr quint32 UPPER_MASK = 0x80000000U;
    static constexpr quint32 LOWER_MASK = 0x7fffffffU;

    // Seeds with the reference key {0x123, 0x234, 0x345, 0x456}; with randomize the
    // seed is then the low 32 bits of the current microseconds.
    MersenneTwister(bool randomize, quint64 maxStringLength);
    virtual ~MersenneTwister();
    MersenneTwister(MersenneTwister const &) = delete;
    MersenneTwister &operator=(MersenneTwister const &) = delete;

    void init_genrand(unsigned long seed);
    void init_by_array(unsigned long const *key, int length);
    void init();

    quint32 genrand_int32() const;
    int genrand_int31() const;
    double genrand_real1() const;
    double genrand_real2() const;
    double genrand_real3() const;
    double genrand_res53() const;

    int nextInt() const { return genrand_int31(); }
    // n = 0 divides by zero, as does a range of zero width below.
    int nextInt(int n) const { return nextInt() % n; }
    int nextIntRange(int a, int b) const { return a + nextInt() % (b - a + 1); }
    unsigned int nextUINTRange(unsigned int a, unsigned int b) const;
    double nextDouble() const { return genrand_real1(); }
    // True with a probability of 5/11: compared outputs depend on the skew.
    bool nextBool() const { return nextInt() % 11 > 5; }
    double nextDoubleRange(double a, double b) const { return a + genrand_real1() * (b - a); }
    double nextDoublePlusMinus() const;
    char nextAsciiLetter(bool upperOnly) const;
    QChar next_greek_char() const;
    QChar next_chin_char(bool common) const;
    QChar next_unicode_char(QChar lo, QChar hi) const;
    QChar next_sentence_delimiter(QString const &delimiters) const;
    QChar next_word_delimiter(QString const &delimiters) const;

    // length capital letters in the internal buffer; valid until the next text draw.
    char const *randString(quint64 length);
    // Words of letters split by single blanks, ending in end, length characters in all.
    char const *randLine(quint64 length, quint64 maxWord, bool upperOnly, char end);
    // size - 1 bytes from [lo, hi], then a zero byte.
    void fillCharArray(char *buffer, quint64 size, unsigned int lo, unsigned int hi) const;
    // A size past what a QByteArray holds (about 2 GiB) leaves bytes as it was, with
    // an ERROR line.
    void fillQByteArray(QByteArray &bytes, quint64 size, unsigned int lo, unsigned int hi) const;
    QByteArray randQByteArray(quint64 size, unsigned int lo, unsigned int hi) const;
    void resizeInternalStringBuffer(quint64 size);

    // The library's own generator, behind ArrayTools' random arrays.
    static MersenneTwister &shared();

private:
    quint64 clampedLength(quint64 length) const;
    QChar charAt(QString const &text) const;

    quint64 maxRandString = 0;
    mutable quint32 *state = nullptr;
    mutable int mti = N + 1;
    unsigned long seed = 0;
    char *bufRandString = nullptr;
};

// Over the runtime's rand(): glibc's RAND_MAX is 2^31 - 1, so values differ from
// other runtimes; only their ranges are fixed.
ORV_EXPORT void gRandIni();
ORV_EXPORT int gRand(int n);
// a + rand() % (b - a): b itself never comes; a = b divides by zero.
ORV_EXPORT int gRand(int a, int b);
// n bytes of rand() % 255: 0xFF never occurs.
ORV_EXPORT void gRandBuffer(char *buffer, int n);
ORV_EXPORT QString gRandString(int n);

} // namespace orv
