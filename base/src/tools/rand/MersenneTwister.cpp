// MersenneTwister.cpp: the MT19937 state, its two seedings and tempering as the
// reference has them, and the draws built on the 31-bit value.
#include "orv/MersenneTwister.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "tools/xmem/LongBlocks.h"

#include <new>

namespace orv {

namespace {
unsigned long const referenceKey[] = {0x123, 0x234, 0x345, 0x456};
} // namespace

MersenneTwister::MersenneTwister(bool randomize, quint64 maxStringLength) : state(new quint32[N]) {
    init_by_array(referenceKey, 4);
    if (randomize)
        init();
    resizeInternalStringBuffer(maxStringLength);
}

MersenneTwister::~MersenneTwister() {
    delete[] state;
    delete[] bufRandString;
}

void MersenneTwister::init_genrand(unsigned long s) {
    seed = s;
    state[0] = static_cast<quint32>(s);
    for (mti = 1; mti < N; ++mti)
        state[mti] =
            1812433253U * (state[mti - 1] ^ (state[mti - 1] >> 30)) + static_cast<quint32>(mti);
}

void MersenneTwister::init_by_array(unsigned long const *key, int length) {
    init_genrand(19650218UL);
    int i = 1;
    int j = 0;
    for (int k = N > length ? N : length; k > 0; --k) {
        state[i] = (state[i] ^ ((state[i - 1] ^ (state[i - 1] >> 30)) * 1664525U)) +
                   static_cast<quint32>(key[j]) + static_cast<quint32>(j);
        ++i;
        ++j;
        if (i >= N) {
            state[0] = state[N - 1];
            i = 1;
        }
        if (j >= length)
            j = 0;
    }
    for (int k = N - 1; k > 0; --k) {
        state[i] = (state[i] ^ ((state[i - 1] ^ (state[i - 1] >> 30)) * 1566083941U)) -
                   static_cast<quint32>(i);
        ++i;
        if (i >= N) {
            state[0] = state[N - 1];
            i = 1;
        }
    }
    // Non-zero initial state, whatever the key.
    state[0] = 0x80000000U;
}

void MersenneTwister::init() { init_genrand(static_cast<quint32>(getMicroseconds())); }

quint32 MersenneTwister::genrand_int32() const {
    static quint32 const mag01[2] = {0, MATRIX_A};
    if (mti >= N) {
        if (mti == N + 1)
            const_cast<MersenneTwister *>(this)->init_genrand(5489UL);
        auto twist = [&](int kk, int next, int far) {
            quint32 const y = (state[kk] & UPPER_MASK) | (state[next] & LOWER_MASK);
            state[kk] = state[far] ^ (y >> 1) ^ mag01[y & 1U];
        };
        int kk = 0;
        for (; kk < N - M; ++kk)
            twist(kk, kk + 1, kk + M);
        for (; kk < N - 1; ++kk)
            twist(kk, kk + 1, kk + (M - N));
        twist(N - 1, 0, M - 1);
        mti = 0;
    }
    quint32 y = state[mti++];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9d2c5680U;
    y ^= (y << 15) & 0xefc60000U;
    y ^= y >> 18;
    return y;
}

int MersenneTwister::genrand_int31() const { return static_cast<int>(genrand_int32() >> 1); }

double MersenneTwister::genrand_real1() const { return genrand_int32() * (1.0 / 4294967295.0); }

double MersenneTwister::genrand_real2() const { return genrand_int32() * (1.0 / 4294967296.0); }

double MersenneTwister::genrand_real3() const {
    return (static_cast<double>(genrand_int32()) + 0.5) * (1.0 / 4294967296.0);
}

double MersenneTwister::genrand_res53() const {
    quint32 const a = genrand_int32() >> 5;
    quint32 const b = genrand_int32() >> 6;
    return (a * 67108864.0 + b) * (1.0 / 9007199254740992.0);
}

unsigned int MersenneTwister::nextUINTRange(unsigned int a, unsigned int b) const {
    return a + static_cast<unsigned int>(nextInt()) % (b - a + 1);
}

double MersenneTwister::nextDoublePlusMinus() const {
    double const sign = nextInt() % 11 < 6 ? -1.0 : 1.0;
    return genrand_real1() * sign;
}

char MersenneTwister::nextAsciiLetter(bool upperOnly) const {
    char const first = upperOnly || nextInt() % 11 >= 6 ? 'A' : 'a';
    return static_cast<char>(first + nextInt() % 26);
}

QChar MersenneTwister::next_greek_char() const { return QChar(nextInt() % 57 + 913); }

QChar MersenneTwister::next_chin_char(bool common) const {
    return common ? QChar(nextInt() % 784 + 20224) : QChar(nextInt() % 39936 + 1024);
}

QChar MersenneTwister::next_unicode_char(QChar lo, QChar hi) const {
    return QChar(lo.unicode() + nextInt() % (hi.unicode() - lo.unicode() + 1));
}

QChar MersenneTwister::charAt(QString const &text) const {
    return text.at(nextInt() % text.size());
}

QChar MersenneTwister::next_sentence_delimiter(QString const &delimiters) const {
    return charAt(delimiters);
}

QChar MersenneTwister::next_word_delimiter(QString const &delimiters) const {
    return charAt(delimiters);
}

quint64 MersenneTwister::clampedLength(quint64 length) const {
    quint64 const limit = maxRandString - 1;
    if (length >= limit) {
        ppWarning("MersenneTwister::randString, len > MAX_RAND_STRING, cut to:$", limit);
        return limit;
    }
    return length;
}

char const *MersenneTwister::randString(quint64 length) {
    length = clampedLength(length);
    for (quint64 i = 0; i < length; ++i)
        bufRandString[i] = static_cast<char>(nextInt() % 26 + 'A');
    bufRandString[length] = '\0';
    return bufRandString;
}

char const *MersenneTwister::randLine(quint64 length, quint64 maxWord, bool upperOnly, char end) {
    length = clampedLength(length);
    if (length == 0) {
        bufRandString[0] = '\0';
        return bufRandString;
    }
    auto drawWordLength = [&] { return static_cast<quint64>(nextInt()) % maxWord + 1; };
    quint64 wordLength = drawWordLength();
    for (quint64 i = 0; i + 1 < length; ++i) {
        if (i != 0 && i % wordLength == 0) {
            bufRandString[i] = ' ';
            wordLength = drawWordLength();
        } else {
            bufRandString[i] = nextAsciiLetter(upperOnly);
        }
    }
    bufRandString[length - 1] = end;
    bufRandString[length] = '\0';
    return bufRandString;
}

void MersenneTwister::fillCharArray(char *buffer, quint64 size, unsigned int lo,
                                    unsigned int hi) const {
    if (size == 0)
        return;
    unsigned int const width = hi - lo + 1;
    for (quint64 i = 0; i + 1 < size; ++i)
        buffer[i] = static_cast<char>(lo + static_cast<unsigned int>(nextInt()) % width);
    buffer[size - 1] = '\0';
}

void MersenneTwister::fillQByteArray(QByteArray &bytes, quint64 size, unsigned int lo,
                                     unsigned int hi) const {
    if (!xmem::fitsQByteArray(size, "MersenneTwister::fillQByteArray"))
        return;
    bytes.resize(static_cast<int>(size));
    fillCharArray(bytes.data(), size, lo, hi);
}

QByteArray MersenneTwister::randQByteArray(quint64 size, unsigned int lo, unsigned int hi) const {
    QByteArray bytes;
    fillQByteArray(bytes, size, lo, hi);
    return bytes;
}

void MersenneTwister::resizeInternalStringBuffer(quint64 size) {
    delete[] bufRandString;
    // One byte at least: the terminating zero always has its place.
    maxRandString = size > 0 ? size : 1;
    bufRandString = new (std::nothrow) char[maxRandString];
    ORV_ASSERT_PTR(bufRandString);
    bufRandString[0] = '\0';
}

MersenneTwister &MersenneTwister::shared() {
    // Reproducible like every default generator: test data comes out the same per run.
    static MersenneTwister generator(false, 1024);
    return generator;
}

} // namespace orv
