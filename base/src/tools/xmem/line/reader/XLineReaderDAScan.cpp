// XLineReaderDAScan.cpp: the one forward scan that builds the line table, with the
// wrapping of long lines at word borders and the binary-file test.
#include "orv/XLineReaderDA.h"

#include "orv/Log.h"
#include "orv/XDelimiter.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace orv {

namespace {

// A piece's text must fit one QString (and XLineInfo's 32-bit lengths): a longer limit
// would cut lengths silently, so such lines are wrapped at this limit instead.
constexpr quint64 maxPieceLength = 0x7FFFFFFEu;

// The LF bytes of a memory in rising order, found 64 bytes at a time as a bit mask, so
// that short lines don't pay a memchr call each.
class LineFeedScanner {
public:
    explicit LineFeedScanner(char const *end) : end(end) {}

    // The first LF at or after p, or null.
    char const *next(char const *p) {
        for (;;) {
            if (!base || p < base || p >= base + 64)
                load(p);
            else
                mask &= ~0ull << (p - base);
            if (mask)
                return base + __builtin_ctzll(mask);
            if (end - base <= 64)
                return nullptr;
            p = base + 64;
        }
    }

private:
    void load(char const *p) {
        base = p;
        mask = 0;
        quint64 const n = std::min<quint64>(quint64(end - p), 64);
#if defined(__SSE2__)
        if (n == 64) {
            __m128i const lf = _mm_set1_epi8('\n');
            for (int i = 0; i < 4; ++i) {
                __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p + 16 * i));
                mask |= quint64(quint32(_mm_movemask_epi8(_mm_cmpeq_epi8(v, lf)))) << (16 * i);
            }
            return;
        }
#endif
        for (quint64 i = 0; i < n; ++i)
            mask |= quint64(p[i] == '\n') << i;
    }

    char const *end;
    char const *base = nullptr;
    quint64 mask = 0;
};

} // namespace

bool XLineReaderDA::looksBinary(char const *data, quint64 size) {
    quint64 const n = data ? std::min<quint64>(size, 1024) : 0;
    quint64 i = 0;
#if defined(__SSE2__)
    // Every file of a search is asked, so 16 bytes at a time: a byte up to 31 that is
    // none of the four allowed ones.
    __m128i const controlTop = _mm_set1_epi8(31);
    for (; i + 16 <= n; i += 16) {
        __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const *>(data + i));
        __m128i const control = _mm_cmpeq_epi8(_mm_min_epu8(v, controlTop), v);
        __m128i const allowed = _mm_or_si128(
            _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8(8)), _mm_cmpeq_epi8(v, _mm_set1_epi8(9))),
            _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8(10)),
                         _mm_cmpeq_epi8(v, _mm_set1_epi8(13))));
        if (_mm_movemask_epi8(_mm_andnot_si128(allowed, control)) != 0)
            return true;
    }
#endif
    for (; i < n; ++i) {
        unsigned char const c = static_cast<unsigned char>(data[i]);
        if (c < 32 && c != 8 && c != 9 && c != 10 && c != 13)
            return true;
    }
    return false;
}

void XLineReaderDA::check_if_binary_file() {
    if (looksBinary(lineReader.pBegin, lineReader.length()))
        binary = true;
}

bool XLineReaderDA::nextLineStruct(XLineInfo &li, bool wrap, unsigned int) {
    char const *start = lineReader.pBegin;
    char const *cur = lineReader.pCurrent;
    char const *end = lineReader.pEnd;
    quint64 const max = std::min(lineReader.maxLen, maxPieceLength);
    li.posMemory = static_cast<quint64>(cur - start);
    li.length = li.lengthTotal = 0;
    li.lineNumber = lineCount;
    li.wrapIndex = -1;
    li.hasLineEnd = false;
    if (!cur || cur >= end)
        return false;
    // Only the first max + 1 bytes can decide: an LF further on makes a long line
    // either way, and looking beyond would rescan a huge line once for every piece.
    quint64 const window = std::min<quint64>(quint64(end - cur), max + 1);
    auto const *lf = static_cast<char const *>(std::memchr(cur, '\n', window));
    char const *p = lf ? lf : (window == quint64(end - cur) ? end : cur + window);
    quint64 const n = static_cast<quint64>(p - cur);
    auto const piece = [&](quint64 len, char const *next) {
        li.setLengths(static_cast<unsigned int>(len), static_cast<unsigned int>(len));
        li.wrapIndex = static_cast<int>(wrapCount++);
        lineReader.pCurrent = next;
        return true;
    };
    if (n <= max) {
        bool const cr = p != start && n > 0 && p[-1] == '\r';
        li.setLengths(static_cast<unsigned int>(cr ? n - 1 : n), static_cast<unsigned int>(n + 1));
        // A last line without LF still counts one byte for its end, and leaves the
        // position one past the memory.
        lineReader.pCurrent = p + 1;
        ++lineCount;
        if (wrap) {
            li.wrapIndex = static_cast<int>(wrapCount);
            wrapCount = 0;
        }
        li.hasLineEnd = true;
        return true;
    }
    if (!wrap) {
        li.setLengths(static_cast<unsigned int>(max), static_cast<unsigned int>(max));
        lineReader.pCurrent = cur + max;
        return true;
    }
    char const *c = cur + max;
    for (char const *q = c; q > cur; --q) {
        // strchr finds the terminator too: a NUL byte is a delimiter.
        if (std::strchr(XDelimiter::pDelimASCII, *q)) {
            if (q == c)
                return piece(max, c);
            if (q + 1 < end && q[1] == '\n')
                ppDebug("DA LINEFEED ?");
            return piece(quint64(q - cur) + 1, q + 1);
        }
        if (c - q > 2) {
            for (char const *chinese : XDelimiter::arDelimChinese)
                if (std::memcmp(q, chinese, 3) == 0) {
                    wrappedUTF8Extended = true;
                    return piece(quint64(q - cur) + 3, q + 3);
                }
        }
    }
    // No word border: cut before a character. The next piece starts three bytes on,
    // and a cut without any character start skips one byte; readers of the table
    // rely on these exact positions.
    for (char const *q = c; q > cur; --q)
        if (XUTF8_Detector::matchFirstByteOfSequences(static_cast<unsigned char>(*q)))
            return piece(quint64(q - cur), q + 3);
    return piece(max, cur + max + 1);
}

std::vector<XLineInfo> XLineReaderDA::createLineInfos(bool wrap) {
    binary = false;
    check_if_binary_file();
    std::vector<XLineInfo> infos;
    char const *const start = lineReader.pBegin;
    char const *const end = lineReader.pEnd;
    if (!lineReader.pCurrent || lineReader.pCurrent >= end)
        return infos;
    // Reserved by the head's line density: pages of the table that are never written
    // are never made resident, and the vector is not copied while it grows.
    quint64 const rest = quint64(end - lineReader.pCurrent);
    quint64 const sample = std::min<quint64>(rest, 1 << 20);
    quint64 const headLines =
        quint64(std::count(lineReader.pCurrent, lineReader.pCurrent + sample, '\n'));
    infos.reserve(size_t(std::min(rest + 1, rest / sample * (headLines + 1) * 9 / 8 + 16)));

    quint64 const max = std::min(lineReader.maxLen, maxPieceLength);
    LineFeedScanner lineFeeds(end);
    // The first LF at or after knownFrom is knownLf (null: none); kept across the pieces
    // of a long line, so that its end is looked for once.
    char const *knownFrom = nullptr;
    char const *knownLf = nullptr;
    XLineInfo li;
    for (;;) {
        char const *cur = lineReader.pCurrent;
        if (cur >= end)
            break;
        if (!knownFrom || cur < knownFrom || (knownLf && cur > knownLf)) {
            knownFrom = cur;
            knownLf = lineFeeds.next(cur);
        }
        quint64 const n = knownLf ? quint64(knownLf - cur) : 0;
        if (!knownLf || n > max) {
            // A long line or a last line without LF: the general step, piece by piece.
            if (!nextLineStruct(li, wrap))
                break;
            infos.push_back(li);
            continue;
        }
        // The common line, exactly as nextLineStruct makes it.
        bool const cr = knownLf != start && n > 0 && knownLf[-1] == '\r';
        li.posMemory = quint64(cur - start);
        li.setLengths(static_cast<unsigned int>(cr ? n - 1 : n), static_cast<unsigned int>(n + 1));
        li.lineNumber = lineCount++;
        li.wrapIndex = wrap ? static_cast<int>(wrapCount) : -1;
        if (wrap)
            wrapCount = 0;
        li.hasLineEnd = true;
        lineReader.pCurrent = knownLf + 1;
        infos.push_back(li);
    }
    return infos;
}

unsigned int XLineReaderDA::create_internal_line_infos() {
    arLines = createLineInfos(true);
    return static_cast<unsigned int>(arLines.size());
}

void XLineReaderDA::re_load(quint64 maxLen) {
    lineCount = 0;
    wrapCount = 0;
    if (ownsFile && !fileMapper.isMapped()) {
        ppError("XLineReaderDA::re_load, !fileMapper.isMapped()");
        return;
    }
    lineReader.seekHome();
    lineReader.setMaxLineLength(maxLen);
    longest = 0;
    create_internal_line_infos();
}

} // namespace orv
