// UnitOffsets.h: byte offsets of QString positions within one decoded unit of text.
// Not part of the library's interface.
#pragma once

#include "orv/XLineInfo.h"

#include <QtCore/QString>

namespace orv::find {

// Hits are found in decoded text but marked in bytes. With the unit's own bytes at
// hand the offset comes from walking them the way QString::fromUtf8 decodes (a leading
// BOM yields nothing, each byte of a broken sequence one U+FFFD), so that marks stay
// exact in broken text; without them the text is re-encoded. Positions asked for in
// rising order cost one pass over the unit in all.
class UnitOffsets {
public:
    UnitOffsets(QString const &text, char const *bytes, quint64 byteCount)
        : text(text), bytes(reinterpret_cast<unsigned char const *>(bytes)), byteCount(byteCount) {
        if (bytes && byteCount >= 3 && this->bytes[0] == 0xEF && this->bytes[1] == 0xBB &&
            this->bytes[2] == 0xBF)
            byteStart = bytePos = 3;
    }

    // Bytes before text position pos (pos <= text.size()).
    quint64 offsetOf(int pos) {
        if (pos < unitPos) {
            unitPos = 0;
            bytePos = byteStart;
        }
        if (!bytes) {
            bytePos += static_cast<quint64>(utf8Bytes(unitPos, pos));
            unitPos = pos;
            return bytePos;
        }
        while (unitPos < pos && bytePos < byteCount) {
            int units = 1;
            quint64 const length = sequence(units);
            // Inside a surrogate pair: counted as the re-encoded text counts a lone half.
            if (unitPos + units > pos)
                return bytePos + 1;
            bytePos += length;
            unitPos += units;
        }
        return bytePos;
    }

private:
    int utf8Bytes(int from, int to) const {
        return from >= to
                   ? 0
                   : XLineInfo::get_UTF8_Bytes_CountFromString(text, static_cast<unsigned>(from),
                                                               static_cast<unsigned>(to - from));
    }

    static bool continuation(unsigned char c) { return (c & 0xC0) == 0x80; }

    // Bytes of the sequence at bytePos, and the UTF-16 units it decodes to.
    quint64 sequence(int &units) const {
        unsigned char const b = bytes[bytePos];
        quint64 const left = byteCount - bytePos;
        units = 1;
        if (b < 0x80)
            return 1;
        int need = 0;
        unsigned int cp = 0;
        if (b >= 0xC2 && b < 0xE0) {
            need = 1;
            cp = b & 0x1F;
        } else if (b >= 0xE0 && b < 0xF0) {
            need = 2;
            cp = b & 0x0F;
        } else if (b >= 0xF0 && b < 0xF5) {
            need = 3;
            cp = b & 0x07;
        } else {
            return 1;
        }
        if (left < quint64(need) + 1)
            return 1;
        for (int i = 1; i <= need; ++i) {
            if (!continuation(bytes[bytePos + quint64(i)]))
                return 1;
            cp = (cp << 6) | (bytes[bytePos + quint64(i)] & 0x3F);
        }
        if (need == 2 && (cp < 0x800 || (cp >= 0xD800 && cp <= 0xDFFF)))
            return 1;
        if (need == 3) {
            if (cp < 0x10000 || cp > 0x10FFFF)
                return 1;
            units = 2;
        }
        return quint64(need) + 1;
    }

    QString const &text;
    unsigned char const *bytes;
    quint64 byteCount;
    quint64 byteStart = 0;
    quint64 bytePos = 0;
    int unitPos = 0;
};

} // namespace orv::find
