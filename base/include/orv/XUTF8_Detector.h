// XUTF8_Detector.h: what kind of UTF-8 a block of bytes holds, judged by counting its
// well-formed sequences of each length; and one character's UTF-8 form.
//
//   orv::XUTF8_Detector d;
//   d.analyze(head, std::min<quint64>(size, 64 * 1024));   // judge a huge file by its head
//   QString kind = orv::XUTF8_Detector::utfTypeToString(d.getTheMostSignifcantType());
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QChar>
#include <QtCore/QString>

namespace orv {

// A plain value; analyze reads the bytes once with a small integer state.
class ORV_EXPORT XUTF8_Detector {
public:
    struct UTF_TYPE {
        enum Utf {
            UTF_NOT_DETECTED = 0,
            ASCII_ENCODED = 1,
            BYTE2_ENCODED = 2,
            BYTE3_ENCODED = 3,
            BYTE4_ENCODED = 4,
        };
    };

    // Counts the sequences of p[0..len). Analysis ends at the first NUL byte, while
    // countBytes keeps len; len 0 means "up to the NUL". A null p is fatal.
    void analyze(char const *p, quint64 len);
    void analyze(unsigned char const *p, quint64 len);

    unsigned int countAscii() const { return nAscii; }
    unsigned int count2ByteEncodings() const { return n2; }
    unsigned int count3ByteEncodings() const { return n3; }
    unsigned int count4ByteEncodings() const { return n4; }
    unsigned int countLineFeeds() const { return nLineFeeds; }
    unsigned int countBytes() const { return nBytes; }
    unsigned int count_detected_characters() const { return nAscii + n2 + n3 + n4; }
    // Bytes minus characters: not a count of bad bytes for multi-byte text.
    unsigned int count_un_detected_bytes() const { return nBytes - count_detected_characters(); }

    bool isAsciiType() const { return nAscii > 0; }
    bool is2BytesType() const { return n2 > 0; }
    bool is3BytesType() const { return n3 > 0; }
    bool is4BytesType() const { return n4 > 0; }
    bool is_urf8_bom() const { return bom; }
    bool isValid() const { return true; }

    // The kind with the most characters, the longer sequences winning ties against
    // shorter ones only when strictly ahead; compares characters, not bytes.
    UTF_TYPE::Utf getTheMostSignifcantType() const;
    unsigned int get_factor_for_gui() const;

    // A byte that can start a character: ASCII and C2..F4.
    static bool matchFirstByteOfSequences(unsigned char c) {
        return c < 0x80 || (c >= 0xC2 && c <= 0xF4);
    }
    static QString utfTypeToString(UTF_TYPE::Utf type);
    QString toString() const;

private:
    unsigned int nAscii = 0;
    unsigned int n2 = 0;
    unsigned int n3 = 0;
    unsigned int n4 = 0;
    unsigned int nLineFeeds = 0;
    unsigned int nBytes = 0;
    bool bom = false;
};

// One character, its UTF-8 bytes as hexadecimal text and as one big-endian number.
struct ORV_EXPORT XUtf8_Info {
    XUtf8_Info() = default;
    explicit XUtf8_Info(QChar c) : character(c) { decode(); }

    void decode();
    // "'c', hex:E4 B8 AD , dec:14.989.485"
    QString toString() const;
    QString toHTML() const;

    QChar character;
    QString hex;
    unsigned int value = 0;
};

} // namespace orv
