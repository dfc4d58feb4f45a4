// XUTF8_Detector.cpp: the sequence-counting state machine, the decision between the
// kinds of UTF-8, and one character's UTF-8 form.
#include "orv/XUTF8_Detector.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/StringText.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"

#include <algorithm>
#include <cstring>

namespace orv {

namespace {

// States name the lead byte's class and how far the sequence got: 2 waits for the
// one continuation of a 2-byte sequence, 3x for the second byte of a 3-byte one
// (x telling the lead's range), 3x0 for its last byte, 4x, 400, 4000 likewise.
enum State : unsigned int {
    REST = 0,
    B2 = 2,
    B3_E0 = 30,
    B3_E1 = 31,
    B3_ED = 32,
    B3_EE = 33,
    B3_LAST = 300,
    B4_F0 = 40,
    B4_F1 = 41,
    B4_THIRD = 400,
    B4_LAST = 4000,
};

bool within(unsigned char c, unsigned char low, unsigned char high) {
    return c >= low && c <= high;
}

State leadState(unsigned char c) {
    if (within(c, 0xC2, 0xDF))
        return B2;
    if (c == 0xE0)
        return B3_E0;
    if (within(c, 0xE1, 0xEC))
        return B3_E1;
    if (c == 0xED)
        return B3_ED;
    if (c == 0xEE || c == 0xEF)
        return B3_EE;
    if (c == 0xF0)
        return B4_F0;
    // F4 is taken like F1..F3, so that code points above U+10FFFF pass.
    if (within(c, 0xF1, 0xF4))
        return B4_F1;
    return REST;
}

} // namespace

void XUTF8_Detector::analyze(char const *p, quint64 len) {
    analyze(reinterpret_cast<unsigned char const *>(p), len);
}

void XUTF8_Detector::analyze(unsigned char const *p, quint64 len) {
    if (!p)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("pBuf == NULL"));
    nBytes = static_cast<unsigned int>(len);
    nAscii = n2 = n3 = n4 = nLineFeeds = 0;
    if (len >= 3)
        bom = p[0] == 0xEF && p[1] == 0xBB && p[2] == 0xBF;
    char const *text = reinterpret_cast<char const *>(p);
    // Bounded by len: a mapped file has no terminating NUL; only len 0 asks for strlen.
    quint64 const lenTmp = len == 0 ? std::strlen(text) : strnlen(text, len);
    if (len == 0)
        len = lenTmp;
    if (len > lenTmp) {
        ppDebug("UTF8_Detector::analyze, len > lenTmp, $ > $, set len to $", len, lenTmp, lenTmp);
        len = lenTmp;
    }
    if (len == 0) {
        ppDebug("UTF8_Detector::analyze, empty string");
        return;
    }
    unsigned int state = REST;
    for (quint64 i = 0; i < len; ++i) {
        unsigned char const c = p[i];
        if (c < 0x80) {
            // An ASCII byte inside a sequence neither ends nor disturbs it.
            ++nAscii;
            if (c == '\n')
                ++nLineFeeds;
            continue;
        }
        bool const continuation = within(c, 0x80, 0xBF);
        switch (state) {
        case REST: state = leadState(c); break;
        case B2:
            n2 += continuation;
            state = REST;
            break;
        case B3_E0: state = within(c, 0xA0, 0xBF) ? B3_LAST : REST; break;
        case B3_E1:
        case B3_EE: state = continuation ? B3_LAST : REST; break;
        case B3_ED: state = within(c, 0x80, 0x9F) ? B3_LAST : REST; break;
        case B3_LAST:
            n3 += continuation;
            state = REST;
            break;
        case B4_F0: state = within(c, 0x90, 0xBF) ? B4_THIRD : REST; break;
        case B4_F1: state = continuation ? B4_THIRD : REST; break;
        case B4_THIRD: state = continuation ? B4_LAST : REST; break;
        case B4_LAST:
            n4 += continuation;
            state = REST;
            break;
        default: state = REST; break;
        }
    }
}

XUTF8_Detector::UTF_TYPE::Utf XUTF8_Detector::getTheMostSignifcantType() const {
    unsigned int const a = nAscii, b = n2, c = n3, d = n4;
    if (d > std::max({c, a, b}))
        return UTF_TYPE::BYTE4_ENCODED;
    if (c > std::max(a, b))
        return UTF_TYPE::BYTE3_ENCODED;
    if (b > a)
        return UTF_TYPE::BYTE2_ENCODED;
    return a > 0 ? UTF_TYPE::ASCII_ENCODED : UTF_TYPE::UTF_NOT_DETECTED;
}

unsigned int XUTF8_Detector::get_factor_for_gui() const {
    unsigned int const type = getTheMostSignifcantType();
    return type == 0 ? 1 : type;
}

QString XUTF8_Detector::utfTypeToString(UTF_TYPE::Utf type) {
    switch (type) {
    case UTF_TYPE::UTF_NOT_DETECTED: return QStringLiteral("UTF_NOT_DETECTED");
    case UTF_TYPE::ASCII_ENCODED: return QStringLiteral("ASCII_ENCODED");
    case UTF_TYPE::BYTE2_ENCODED: return QStringLiteral("BYTE2_ENCODED");
    case UTF_TYPE::BYTE3_ENCODED: return QStringLiteral("BYTE3_ENCODED");
    case UTF_TYPE::BYTE4_ENCODED: return QStringLiteral("BYTE4_ENCODED");
    }
    return QStringLiteral("UTF_MYSTERIOUS");
}

QString XUTF8_Detector::toString() const {
    QString text =
        xprintF("$ Characters, LF:$, Type is:$, { ", format1000(count_detected_characters()),
                nLineFeeds, utfTypeToString(getTheMostSignifcantType()));
    if (nAscii)
        text += QLatin1String("1 ");
    if (n2)
        text += QLatin1String("2 ");
    if (n3)
        text += QLatin1String("3 ");
    if (n4)
        text += QLatin1String("4 ");
    text += QLatin1String("}, {");
    text += xprintF("1-byte-enc:$, ", nAscii) + xprintF("2-bytes-enc:$, ", n2) +
            xprintF("3-bytes-enc:$, ", n3) + xprintF("4-bytes-enc:$", n4);
    return text + QLatin1String(" }");
}

void XUtf8_Info::decode() {
    QByteArray const bytes = QString(character).toUtf8();
    hex.clear();
    value = 0;
    for (char byte : bytes) {
        unsigned char const c = static_cast<unsigned char>(byte);
        hex += QString::asprintf("%02X ", c);
        value = (value << 8) | c;
    }
}

QString XUtf8_Info::toString() const {
    return xprintF("'$', hex:$, dec:$", QString(character), hex, format1000(value));
}

QString XUtf8_Info::toHTML() const { return encode_char(character); }

} // namespace orv
