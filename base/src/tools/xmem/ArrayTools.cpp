// ArrayTools.cpp: byte stuffing, the frames built on it, removal and the checksum byte.
//
// Stuffing (COBS): groups of a code byte and code - 1 non-zero data bytes. A code
// below 255 stands for its data and one 0 that is not stored (the last group's 0 is
// virtual); 255 stands for 254 data bytes with no 0 behind them. The output holds
// no 0, so 0 can delimit frames on a stream.
#include "orv/ArrayTools.h"

#include "orv/Log.h"
#include "orv/MD5.h"
#include "orv/MersenneTwister.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>
#include <mutex>

namespace orv {

namespace {

int const MD5_TEXT_SIZE = 32;

quint64 stuffedBound(quint64 n) { return n + n / 254 + 1; }

auto const *bytesOf(QByteArray const &ar) {
    return reinterpret_cast<unsigned char const *>(ar.constData());
}

// Writes out over dst from its start; dst grows when needed and never shrinks.
quint64 writeOver(QByteArray &dst, QByteArray const &out, quint64 n) {
    if (static_cast<quint64>(dst.size()) < n)
        dst.resize(static_cast<int>(n));
    if (n)
        std::memcpy(dst.data(), out.constData(), n);
    return n;
}

} // namespace

quint64 ArrayTools::stuffData(unsigned char const *src, quint64 n, unsigned char *dst) {
    unsigned char *out = dst;
    unsigned char *codeSlot = out++;
    unsigned char code = 1;
    for (quint64 i = 0; i < n; ++i) {
        if (src[i] == 0) {
            *codeSlot = code;
            codeSlot = out++;
            code = 1;
            continue;
        }
        *out++ = src[i];
        // A full group closes at once, so a run of 254 at the end leaves a lone code 1.
        if (++code == 0xFF) {
            *codeSlot = code;
            codeSlot = out++;
            code = 1;
        }
    }
    *codeSlot = code;
    return static_cast<quint64>(out - dst);
}

quint64 ArrayTools::unStuffData(unsigned char const *src, quint64 n, unsigned char *dst) {
    unsigned char *out = dst;
    unsigned int previous = 0xFF;
    quint64 i = 0;
    while (i < n) {
        if (previous < 0xFF)
            *out++ = 0;
        unsigned int const code = src[i++];
        if (code == 0)
            break;
        for (unsigned int k = 1; k < code && i < n; ++k)
            *out++ = src[i++];
        previous = code;
    }
    return static_cast<quint64>(out - dst);
}

quint64 ArrayTools::stuffToQByteArray(QByteArray const &src, QByteArray &dst) {
    // Near 2 GiB the stuffed form outgrows what a QByteArray holds.
    if (!xmem::fitsQByteArray(stuffedBound(static_cast<quint64>(src.size())),
                              "ArrayTools::stuffToQByteArray"))
        return 0;
    QByteArray out(static_cast<int>(stuffedBound(static_cast<quint64>(src.size()))),
                   Qt::Uninitialized);
    quint64 const n = stuffData(bytesOf(src), static_cast<quint64>(src.size()),
                                reinterpret_cast<unsigned char *>(out.data()));
    return writeOver(dst, out, n);
}

quint64 ArrayTools::unStuffQData(QByteArray const &src, QByteArray &dst) {
    // Decoding never writes more bytes than it reads.
    QByteArray out(src.size(), Qt::Uninitialized);
    quint64 const n = unStuffData(bytesOf(src), static_cast<quint64>(src.size()),
                                  reinterpret_cast<unsigned char *>(out.data()));
    return writeOver(dst, out, n);
}

QByteArray ArrayTools::frameQByteArray(QByteArray const &payload) {
    quint64 const n = static_cast<quint64>(payload.size());
    if (!xmem::fitsQByteArray(stuffedBound(n) + 2, "ArrayTools::frameQByteArray"))
        return QByteArray();
    QByteArray framed(static_cast<int>(stuffedBound(n) + 2), Qt::Uninitialized);
    auto *p = reinterpret_cast<unsigned char *>(framed.data());
    p[0] = 0;
    quint64 const stuffed = stuffData(bytesOf(payload), n, p + 1);
    p[stuffed + 1] = 0;
    framed.resize(static_cast<int>(stuffed + 2));
    return framed;
}

QByteArray ArrayTools::unFrameQByteArray(QByteArray const &framed) {
    if (framed.isEmpty()) {
        ppError("ArrayTools::unFrameQByteArray, arSrcFramed.size() == 0");
        return framed;
    }
    QByteArray stuffed(framed.size(), Qt::Uninitialized);
    char *kept = stuffed.data();
    for (char c : framed)
        if (c != '\0')
            *kept++ = c;
    stuffed.resize(static_cast<int>(kept - stuffed.constData()));
    QByteArray out(stuffed.size(), Qt::Uninitialized);
    quint64 const n = unStuffData(bytesOf(stuffed), static_cast<quint64>(stuffed.size()),
                                  reinterpret_cast<unsigned char *>(out.data()));
    out.resize(static_cast<int>(n));
    return out;
}

QByteArray ArrayTools::frameQByteArray_MD5(QByteArray const &payload) {
    return frameQByteArray(payload + MD5::md5FromQByteArray(payload));
}

bool ArrayTools::unFrameQByteArray_MD5(QByteArray const &framed, QByteArray &out) {
    QByteArray const data = unFrameQByteArray(framed);
    if (data.size() <= MD5_TEXT_SIZE)
        return false;
    QByteArray const payload = data.left(data.size() - MD5_TEXT_SIZE);
    QByteArray const stored = data.right(MD5_TEXT_SIZE);
    QByteArray const computed = MD5::md5FromQByteArray(payload);
    if (stored.size() != computed.size() || stored != computed) {
        ppError("ArrayTools::unFrameQByteArray_MD5, CHECKSUM problems");
        return false;
    }
    out.append(payload);
    return true;
}

void ArrayTools::addChecksumByte(QByteArray &ar) {
    unsigned char sum = 0;
    for (char c : ar)
        sum = static_cast<unsigned char>(sum + static_cast<unsigned char>(c));
    ar.append(static_cast<char>(-sum));
}

bool ArrayTools::canRemove(QByteArray &ar, unsigned int pos, unsigned int len) {
    if (len == 0) {
        ppError("ArrayTools::arRemove, len == 0");
        return false;
    }
    quint64 const size = static_cast<quint64>(ar.size());
    return pos < size && static_cast<quint64>(pos) + len <= size;
}

QByteArray ArrayTools::arRemove(QByteArray &ar, unsigned int pos, unsigned int len) {
    if (len == 0) {
        ppError("ArrayTools::arRemove, len == 0");
        return QByteArray();
    }
    unsigned int const size = static_cast<unsigned int>(ar.size());
    if (pos >= size) {
        ppError("ArrayTools::arRemove, posMemory:$, ar.size():$", pos, size);
        return QByteArray();
    }
    // 32-bit sum as the wire code has always done it. A range past the end is answered
    // with the one byte at pos and an untouched buffer: the caller sees it asked too much.
    unsigned int const end = pos + len;
    if (end > size || end < pos)
        return ar.mid(static_cast<int>(pos), 1);
    QByteArray cut = ar.mid(static_cast<int>(pos), static_cast<int>(len));
    ar.remove(static_cast<int>(pos), static_cast<int>(len));
    return cut;
}

QByteArray ArrayTools::arRemoveAll(QByteArray &ar) {
    QByteArray all = ar;
    ar.clear();
    return all;
}

quint64 ArrayTools::countCharsOf(QByteArray const &ar, char c) {
    return static_cast<quint64>(ar.count(c));
}

QByteArray ArrayTools::createQByteArrayABC(quint64 n) {
    if (!xmem::fitsQByteArray(n, "ArrayTools::createQByteArrayABC"))
        return QByteArray();
    QByteArray out(static_cast<int>(n), Qt::Uninitialized);
    for (quint64 i = 0; i < n; ++i)
        out[static_cast<int>(i)] = static_cast<char>('A' + i % 26);
    return out;
}

namespace {
std::mutex sharedGeneratorMutex;
} // namespace

QByteArray ArrayTools::randQByteArray(quint64 n, unsigned int low, unsigned int high) {
    QByteArray ar;
    randomfillQByteArray(ar, n, low, high);
    return ar;
}

void ArrayTools::randomfillQByteArray(QByteArray &ar, quint64 n, unsigned int low,
                                      unsigned int high) {
    std::lock_guard<std::mutex> lock(sharedGeneratorMutex);
    MersenneTwister::shared().fillQByteArray(ar, n, low, high);
}

} // namespace orv
