// XLineInfo.cpp: the text form of a line record and the byte/character conversions.
#include "orv/XLineInfo.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"

namespace orv {

namespace {

// Bytes of s[from, to) in UTF-8 as QString::toUtf8 writes them: a surrogate pair
// takes 4 bytes, a lone surrogate becomes one '?'.
int utf8Bytes(QChar const *s, int from, int to, int size) {
    int bytes = 0;
    for (int i = from; i < to; ++i) {
        ushort const u = s[i].unicode();
        if (u < 0x80)
            bytes += 1;
        else if (u < 0x800)
            bytes += 2;
        else if (QChar::isHighSurrogate(u) && i + 1 < size && i + 1 < to &&
                 QChar::isLowSurrogate(s[i + 1].unicode())) {
            bytes += 4;
            ++i;
        } else if (QChar::isSurrogate(u))
            bytes += 1;
        else
            bytes += 3;
    }
    return bytes;
}

// Characters in the first n bytes, where a character cut off at the end counts once
// (the decoder alone would give one replacement per byte of it).
int charsOfPrefix(char const *p, unsigned int n) {
    auto const *u = reinterpret_cast<unsigned char const *>(p);
    unsigned int lead = n;
    while (lead > 0 && n - lead < 3 && (u[lead - 1] & 0xC0) == 0x80)
        --lead;
    if (lead > 0) {
        unsigned char const b = u[lead - 1];
        unsigned int const need = b >= 0xF0 ? 4 : b >= 0xE0 ? 3 : b >= 0xC2 ? 2 : 1;
        unsigned int const have = n - lead + 1;
        if (b >= 0xC2 && b <= 0xF4 && have < need)
            return QString::fromUtf8(p, static_cast<int>(lead - 1)).size() + 1;
    }
    return QString::fromUtf8(p, static_cast<int>(n)).size();
}

int charsFromBytes(QByteArray const &utf8, unsigned int countBytes) {
    if (countBytes > static_cast<unsigned int>(utf8.size())) {
        ppWarning(
            "XLineInfo::get_UTF8_Chars_CountFromBytes, countBytes >= (uint)ar.length(), $ >= $",
            countBytes, utf8.size());
        return -1;
    }
    return charsOfPrefix(utf8.constData(), countBytes);
}

} // namespace

QString XLineInfo::toString() const {
    QString const number = wrapIndex > 0
                               ? xprintF("$/$", format1000(lineNumber), format1000(wrapIndex))
                               : format1000(lineNumber);
    // The labels are this way round on purpose: existing readers of the text expect it.
    return xprintF(
        "{ [$] $/$ => LEN:$,($), $, LF:$ }", number, format1000(qint64(posMemory)),
        format1000(qint64(posMemory + length)), format1000(length), format1000(lengthTotal),
        wrapIndex >= 0 ? QStringLiteral("FULL-LINE") : QStringLiteral("WRAPPED-LINE"), hasLineEnd);
}

int XLineInfo::countBytes(QString const &s) {
    return utf8Bytes(s.constData(), 0, s.size(), s.size());
}

int XLineInfo::countBytes(QChar c) { return utf8Bytes(&c, 0, 1, 1); }

QString XLineInfo::elidedText(QString const &s, unsigned int n) {
    int const m = n == 0 ? 8 : static_cast<int>(qMin(n, 0x7FFFFFFFu));
    return s.size() <= m ? s : s.left(m) + QLatin1String("...");
}

int XLineInfo::get_UTF8_Bytes_CountFromString(QString const &s, unsigned int pos,
                                              unsigned int len) {
    unsigned int const size = static_cast<unsigned int>(s.size());
    if (pos >= size) {
        ppError("XLineInfo::get_UTF8_Bytes_CountFromString, pos >= s.length(), $ >= $", pos, size);
        return -1;
    }
    if (len == 0)
        return 0;
    if (quint64(pos) + len > size) {
        ppError("XLineInfo::get_UTF8_Bytes_CountFromString, (pos+len) >= s.length(), ($+$) >= $",
                pos, len, size);
        return -1;
    }
    return utf8Bytes(s.constData(), static_cast<int>(pos), static_cast<int>(pos + len),
                     static_cast<int>(size));
}

int XLineInfo::get_UTF8_Chars_CountFromBytes(QString const &s, unsigned int countBytes) {
    return s.isEmpty() ? 0 : charsFromBytes(s.toUtf8(), countBytes);
}

int XLineInfo::get_UTF8_Chars_CountFromBytes(QStringRef const &s, unsigned int countBytes) {
    return s.isEmpty() ? 0 : charsFromBytes(s.toUtf8(), countBytes);
}

int XLineInfo::get_UTF8_Chars_CountFromBytes(char const *p, unsigned int countBytes) {
    if (!p)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("pMem == NULL"));
    return charsOfPrefix(p, countBytes);
}

} // namespace orv
