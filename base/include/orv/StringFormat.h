// StringFormat.h: the text forms of numbers, sizes and durations that log lines
// and toString texts are made of.
//
//   orv::format1000(1234567);              // "1.234.567"
//   orv::formatBytes(1.5e6);               // "1.50 MB"
//   orv::formatMicrosecond_as_Sec(1234567) // "1,234.567"
//   orv::get_bytes_number("1,5 kb");       // 1500
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orv {

// Groups of three digits from the right, joined by `.`. The sign counts as a
// character when grouping, so format1000(-123456) is "-.123.456".
ORV_EXPORT QString format1000(qint64 value);
// "%2.2f" in GB, MB or KB (powers of 1000); small values too are written in KB.
ORV_EXPORT QString formatBytes(double bytes);
// "%2.2f" in GiB, MiB or KiB (powers of 1024).
ORV_EXPORT QString formatBytesMiB(double bytes);
// Seconds, a comma, the six digits of the rest with a `.` after the third.
ORV_EXPORT QString formatMicrosecond_as_Sec(quint64 microseconds);
ORV_EXPORT QString formatMillisecond_as_Sec(quint64 milliseconds);
// "%02d" of the integer part, a comma, the fraction's digits ("%.Nf" without "0.").
// A precision above 6 is logged and reduced to 6.
ORV_EXPORT QString formatPercent(double value, unsigned int precision);
// "%0<width>ld" of the value, all 64 bits.
ORV_EXPORT QString formatFillZero(unsigned int width, qint64 value);
// "%.2f" for negative values, "+%.2f" otherwise.
ORV_EXPORT QString formatFloat(float value);
// Decimal digits of the value, without a sign; 0 has one digit.
ORV_EXPORT unsigned int countDigits(qint64 value);
ORV_EXPORT unsigned int countDigits(quint64 value);
// The bits of the value, most significant first; withBlanks puts a blank between bytes.
ORV_EXPORT QString bitsToString(unsigned char bits, bool withBlanks);
ORV_EXPORT QString bitsToString(unsigned short bits, bool withBlanks);
ORV_EXPORT QString bitsToString(unsigned int bits, bool withBlanks);
// "%0<width>llX" of the value.
ORV_EXPORT QString formatHex(quint64 value, unsigned int width);
// The non-empty texts joined by ", ".
ORV_EXPORT QString format_toString_arguments(QStringList const &texts);
template <typename... Texts> QString format_toString_arguments(Texts const &...texts) {
    return format_toString_arguments(QStringList{QString(texts)...});
}

// The text before the trailing digits of s, then their number zero-filled to
// 1..6 digits; other digit counts write it unfilled. Without trailing digits, s.
ORV_EXPORT QString get_string_number(QString const &s, unsigned int digits);
// A size such as "1,5 kb", "3 MB" or "1e6" in bytes. 32 bits wide: "tb" and "pb"
// multiply by their 32-bit overflowed factors. Bad text logs and gives 0.
ORV_EXPORT quint32 get_bytes_number(QString const &s);
// "a9" -> "a10", "a09" -> "a10", "ab" -> "ab0", "" -> "0".
ORV_EXPORT QString createNextNumberString(QString const &s);

// n blanks; the text padded with blanks to len. Lengths above 1000000 are logged and cut.
ORV_EXPORT QString createSpace(unsigned int n);
inline QString xspace(unsigned int n) { return createSpace(n); }
ORV_EXPORT QString fillUpTo(QString const &text, unsigned int len);

// printf-style; a null format gives "<<<prf,nullpointer>>>".
ORV_EXPORT QString prf(char const *fmt, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);

} // namespace orv
