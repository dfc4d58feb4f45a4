// MD5.cpp: the RFC 1321 digest, its streaming interface and the text forms around it.
#include "orv/MD5.h"

#include "orv/XError.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

namespace orv {

namespace {

// The four round functions. F is written in the one-operation-shorter form
// (select by x) that gives the same bits as the RFC's. G's two halves never share
// a bit, so they are added instead of or-ed: the half that doesn't need x is
// summed into the step while x is still being computed.
inline std::uint32_t F(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return z ^ (x & (y ^ z));
}
inline std::uint32_t G(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (y & ~z) + (x & z);
}
inline std::uint32_t H(std::uint32_t x, std::uint32_t y, std::uint32_t z) { return x ^ y ^ z; }
inline std::uint32_t I(std::uint32_t x, std::uint32_t y, std::uint32_t z) { return y ^ (x | ~z); }

inline std::uint32_t rotateLeft(std::uint32_t x, int n) { return (x << n) | (x >> (32 - n)); }

inline void FF(std::uint32_t &a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t x,
               int s, std::uint32_t ac) {
    a = rotateLeft(a + x + ac + F(b, c, d), s) + b;
}
inline void GG(std::uint32_t &a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t x,
               int s, std::uint32_t ac) {
    a = rotateLeft(a + x + ac + G(b, c, d), s) + b;
}
inline void HH(std::uint32_t &a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t x,
               int s, std::uint32_t ac) {
    a = rotateLeft(a + x + ac + H(b, c, d), s) + b;
}
inline void II(std::uint32_t &a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t x,
               int s, std::uint32_t ac) {
    a = rotateLeft(a + x + ac + I(b, c, d), s) + b;
}

// Little-endian words regardless of the host, and of any alignment.
inline std::uint32_t loadWord(unsigned char const *p) {
    return std::uint32_t(p[0]) | (std::uint32_t(p[1]) << 8) | (std::uint32_t(p[2]) << 16) |
           (std::uint32_t(p[3]) << 24);
}
inline void storeWord(unsigned char *p, std::uint32_t v) {
    p[0] = static_cast<unsigned char>(v);
    p[1] = static_cast<unsigned char>(v >> 8);
    p[2] = static_cast<unsigned char>(v >> 16);
    p[3] = static_cast<unsigned char>(v >> 24);
}

char const *const NOT_FINALIZED = "MD5-NOT-FINALIZED";
unsigned int const FILE_BLOCK = 0x10000;

QString hexText(unsigned char const *bytes, int n, bool upper, bool spaced) {
    char const *digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    QString out;
    out.reserve(spaced ? 3 * n - 1 : 2 * n);
    for (int i = 0; i < n; ++i) {
        if (spaced && i > 0)
            out.append(QLatin1Char(' '));
        out.append(QLatin1Char(digits[bytes[i] >> 4]));
        out.append(QLatin1Char(digits[bytes[i] & 0x0F]));
    }
    return out;
}

} // namespace

MD5::MD5() { init(); }

MD5::MD5(unsigned char const *cString) {
    init();
    size_t const len = cString ? std::strlen(reinterpret_cast<char const *>(cString)) : 0;
    // update takes 32-bit lengths: a longer text goes in pieces.
    size_t constexpr piece = size_t(1) << 30;
    for (size_t pos = 0; pos < len; pos += piece)
        update(cString + pos, static_cast<unsigned int>(std::min(piece, len - pos)));
    finalize();
}

MD5::MD5(QString const &text) {
    init();
    updateString(text);
    finalize();
}

MD5::MD5(void const *buf, unsigned int len) {
    ORV_ASSERT_PTR(buf);
    init();
    update(buf, len);
    finalize();
}

MD5::MD5(unsigned char const *buf, unsigned int len) : MD5(static_cast<void const *>(buf), len) {}

void MD5::init() {
    finalized = false;
    count = 0;
    state[0] = 0x67452301;
    state[1] = 0xefcdab89;
    state[2] = 0x98badcfe;
    state[3] = 0x10325476;
    std::memset(buffer, 0, sizeof(buffer));
    std::memset(digest, 0, sizeof(digest));
}

void MD5::update(unsigned char const *input, unsigned int len) {
    if (finalized || len == 0)
        return;
    unsigned int index = static_cast<unsigned int>((count >> 3) & 0x3F);
    count += std::uint64_t(len) << 3;
    unsigned int const partLen = 64 - index;
    unsigned int i = 0;
    if (len >= partLen) {
        std::memcpy(&buffer[index], input, partLen);
        transform(buffer);
        // Whole blocks go straight from the caller's memory: no copy on the hot path.
        for (i = partLen; i + 63 < len; i += 64)
            transform(&input[i]);
        index = 0;
    }
    std::memcpy(&buffer[index], &input[i], len - i);
}

void MD5::update(char const *input, unsigned int len) {
    update(reinterpret_cast<unsigned char const *>(input), len);
}

void MD5::update(void const *input, unsigned int len) {
    update(static_cast<unsigned char const *>(input), len);
}

void MD5::update(QByteArray const &bytes) {
    update(bytes.constData(), static_cast<unsigned int>(bytes.size()));
}

void MD5::updateString(QString const &text) { update(text.toUtf8()); }

void MD5::updateFile(char const *fileName) { addMD5FromFile(fileName, *this); }

MD5 &MD5::finalize() {
    if (finalized)
        return *this;
    unsigned char bits[8];
    storeWord(bits, static_cast<std::uint32_t>(count));
    storeWord(bits + 4, static_cast<std::uint32_t>(count >> 32));
    static unsigned char const padding[64] = {0x80};
    unsigned int const index = static_cast<unsigned int>((count >> 3) & 0x3f);
    unsigned int const padLen = (index < 56) ? (56 - index) : (120 - index);
    update(padding, padLen);
    update(bits, 8);
    for (int i = 0; i < 4; ++i)
        storeWord(digest + 4 * i, state[i]);
    // The running state is not needed any more; leave no trace of the input behind.
    std::memset(buffer, 0, sizeof(buffer));
    std::memset(state, 0, sizeof(state));
    count = 0;
    finalized = true;
    return *this;
}

// One 64-byte block, the four rounds of sixteen steps each, unrolled.
void MD5::transform(unsigned char const *block) {
    std::uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    std::uint32_t x[16];
    for (int i = 0; i < 16; ++i)
        x[i] = loadWord(block + 4 * i);

    FF(a, b, c, d, x[0], 7, 0xd76aa478);
    FF(d, a, b, c, x[1], 12, 0xe8c7b756);
    FF(c, d, a, b, x[2], 17, 0x242070db);
    FF(b, c, d, a, x[3], 22, 0xc1bdceee);
    FF(a, b, c, d, x[4], 7, 0xf57c0faf);
    FF(d, a, b, c, x[5], 12, 0x4787c62a);
    FF(c, d, a, b, x[6], 17, 0xa8304613);
    FF(b, c, d, a, x[7], 22, 0xfd469501);
    FF(a, b, c, d, x[8], 7, 0x698098d8);
    FF(d, a, b, c, x[9], 12, 0x8b44f7af);
    FF(c, d, a, b, x[10], 17, 0xffff5bb1);
    FF(b, c, d, a, x[11], 22, 0x895cd7be);
    FF(a, b, c, d, x[12], 7, 0x6b901122);
    FF(d, a, b, c, x[13], 12, 0xfd987193);
    FF(c, d, a, b, x[14], 17, 0xa679438e);
    FF(b, c, d, a, x[15], 22, 0x49b40821);

    GG(a, b, c, d, x[1], 5, 0xf61e2562);
    GG(d, a, b, c, x[6], 9, 0xc040b340);
    GG(c, d, a, b, x[11], 14, 0x265e5a51);
    GG(b, c, d, a, x[0], 20, 0xe9b6c7aa);
    GG(a, b, c, d, x[5], 5, 0xd62f105d);
    GG(d, a, b, c, x[10], 9, 0x02441453);
    GG(c, d, a, b, x[15], 14, 0xd8a1e681);
    GG(b, c, d, a, x[4], 20, 0xe7d3fbc8);
    GG(a, b, c, d, x[9], 5, 0x21e1cde6);
    GG(d, a, b, c, x[14], 9, 0xc33707d6);
    GG(c, d, a, b, x[3], 14, 0xf4d50d87);
    GG(b, c, d, a, x[8], 20, 0x455a14ed);
    GG(a, b, c, d, x[13], 5, 0xa9e3e905);
    GG(d, a, b, c, x[2], 9, 0xfcefa3f8);
    GG(c, d, a, b, x[7], 14, 0x676f02d9);
    GG(b, c, d, a, x[12], 20, 0x8d2a4c8a);

    HH(a, b, c, d, x[5], 4, 0xfffa3942);
    HH(d, a, b, c, x[8], 11, 0x8771f681);
    HH(c, d, a, b, x[11], 16, 0x6d9d6122);
    HH(b, c, d, a, x[14], 23, 0xfde5380c);
    HH(a, b, c, d, x[1], 4, 0xa4beea44);
    HH(d, a, b, c, x[4], 11, 0x4bdecfa9);
    HH(c, d, a, b, x[7], 16, 0xf6bb4b60);
    HH(b, c, d, a, x[10], 23, 0xbebfbc70);
    HH(a, b, c, d, x[13], 4, 0x289b7ec6);
    HH(d, a, b, c, x[0], 11, 0xeaa127fa);
    HH(c, d, a, b, x[3], 16, 0xd4ef3085);
    HH(b, c, d, a, x[6], 23, 0x04881d05);
    HH(a, b, c, d, x[9], 4, 0xd9d4d039);
    HH(d, a, b, c, x[12], 11, 0xe6db99e5);
    HH(c, d, a, b, x[15], 16, 0x1fa27cf8);
    HH(b, c, d, a, x[2], 23, 0xc4ac5665);

    II(a, b, c, d, x[0], 6, 0xf4292244);
    II(d, a, b, c, x[7], 10, 0x432aff97);
    II(c, d, a, b, x[14], 15, 0xab9423a7);
    II(b, c, d, a, x[5], 21, 0xfc93a039);
    II(a, b, c, d, x[12], 6, 0x655b59c3);
    II(d, a, b, c, x[3], 10, 0x8f0ccc92);
    II(c, d, a, b, x[10], 15, 0xffeff47d);
    II(b, c, d, a, x[1], 21, 0x85845dd1);
    II(a, b, c, d, x[8], 6, 0x6fa87e4f);
    II(d, a, b, c, x[15], 10, 0xfe2ce6e0);
    II(c, d, a, b, x[6], 15, 0xa3014314);
    II(b, c, d, a, x[13], 21, 0x4e0811a1);
    II(a, b, c, d, x[4], 6, 0xf7537e82);
    II(d, a, b, c, x[11], 10, 0xbd3af235);
    II(c, d, a, b, x[2], 15, 0x2ad7d2bb);
    II(b, c, d, a, x[9], 21, 0xeb86d391);

    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
}

bool MD5::operator==(MD5 const &other) const {
    return finalized && std::memcmp(digest, other.digest, sizeof(digest)) == 0;
}

bool MD5::operator!=(MD5 const &other) const {
    return finalized && std::memcmp(digest, other.digest, sizeof(digest)) != 0;
}

void MD5::setInvalid() {
    finalized = true;
    std::memset(digest, 0, sizeof(digest));
}

QByteArray MD5::getDigest() const {
    return QByteArray(reinterpret_cast<char const *>(digest), sizeof(digest));
}

QString MD5::toString() const { return hexdigest(true, false); }

QString MD5::hexdigest(bool upper, bool spaced) const {
    if (!finalized)
        return QString::fromLatin1(NOT_FINALIZED);
    return hexText(digest, 16, upper, spaced);
}

QByteArray MD5::hexDigest(bool upper) const { return hexdigest(upper, false).toLatin1(); }

QByteArray MD5::md5FromQByteArray(QByteArray const &bytes, bool) {
    MD5 md5;
    md5.update(bytes);
    md5.finalize();
    // Frames store exactly this text, so the overlapping prints stay as they are:
    // the last one lands on the text of byte 10 and ends the string there.
    char text[64] = {};
    for (int i = 0; i < 15; ++i)
        std::snprintf(text + 3 * i, sizeof(text) - 3 * i, "%02X ", md5.digest[i]);
    std::snprintf(text + 2 * 15, sizeof(text) - 2 * 15, "%02X", md5.digest[15]);
    return QByteArray(text);
}

QByteArray MD5::md5_16(QByteArray const &bytes) {
    MD5 md5;
    md5.update(bytes);
    return md5.finalize().getDigest();
}

QString MD5::md5FromBuffer(unsigned char const *pBuffer, unsigned int len) {
    ORV_ASSERT_PTR(pBuffer);
    return MD5(pBuffer, len).toString();
}

MD5 MD5::md5_from_Buffer(unsigned char const *pBuffer, unsigned int len) {
    ORV_ASSERT_PTR(pBuffer);
    return MD5(pBuffer, len);
}

QString MD5::md5FromString(QString const &text) { return MD5(text).toString(); }

QString MD5::md5FromFile(QString const &fileName) {
    return md5FromFile(QFile::encodeName(fileName).constData());
}

QString MD5::md5FromFile(char const *pFile) {
    ORV_ASSERT_PTR(pFile);
    MD5 md5;
    addMD5FromFile(pFile, md5);
    return md5.finalize().toString();
}

void MD5::addMD5FromFile(char const *fileName, MD5 &md5) {
    if (!fileName)
        return;
    QFile file(QFile::decodeName(fileName));
    if (!file.open(QIODevice::ReadOnly))
        return;
    std::unique_ptr<char[]> block(new char[FILE_BLOCK]);
    for (qint64 n; (n = file.read(block.get(), FILE_BLOCK)) > 0;)
        md5.update(block.get(), static_cast<unsigned int>(n));
}

QString MD5::bytes16AsHex(char const *bytes16) {
    ORV_ASSERT_PTR(bytes16);
    return hexText(reinterpret_cast<unsigned char const *>(bytes16), 16, false, false);
}

} // namespace orv
