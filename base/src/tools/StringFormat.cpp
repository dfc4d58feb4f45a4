// StringFormat.cpp: number, size and duration texts, and the number-in-name helpers.
#include "orv/StringFormat.h"

#include "orv/Log.h"

#include <cmath>
#include <cstdarg>

namespace orv {

namespace {

unsigned int const maxSpace = 1000000;

quint64 magnitude(qint64 value) {
    // Negating in unsigned arithmetic also covers the smallest qint64.
    return value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value);
}

// Writes the decimal digits of value backwards, ending at `end`; returns the first.
char *digitsBackwards(quint64 value, char *end) {
    do {
        *--end = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    return end;
}

bool isAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The x86 conversion gives 0x8000000000000000 for values outside the 64-bit range
// and for NaN; the low half of that is 0.
quint32 truncateTo32(double value) {
    if (!(value > -9223372036854775808.0 && value < 9223372036854775808.0))
        return 0;
    return static_cast<quint32>(static_cast<quint64>(static_cast<qint64>(value)));
}

QString bitsToString(quint32 bits, int count, bool withBlanks) {
    QString out;
    out.reserve(count + count / 8);
    for (int i = count - 1; i >= 0; --i) {
        out.append(QLatin1Char((bits >> i) & 1U ? '1' : '0'));
        if (withBlanks && i > 0 && i % 8 == 0)
            out.append(QLatin1Char(' '));
    }
    return out;
}

} // namespace

QString format1000(qint64 value) {
    char buffer[24];
    char *const end = buffer + sizeof buffer;
    char *first = digitsBackwards(magnitude(value), end);
    if (value < 0)
        *--first = '-';
    int const len = static_cast<int>(end - first);
    QString out(len + (len - 1) / 3, Qt::Uninitialized);
    QChar *o = out.data();
    for (int i = 0; i < len; ++i) {
        if (i > 0 && (len - i) % 3 == 0)
            *o++ = QLatin1Char('.');
        *o++ = QLatin1Char(first[i]);
    }
    return out;
}

QString formatBytes(double bytes) {
    if (bytes > 1e9)
        return QString::asprintf("%2.2f GB", bytes / 1e9);
    if (bytes > 1e6)
        return QString::asprintf("%2.2f MB", bytes / 1e6);
    return QString::asprintf("%2.2f KB", bytes / 1000.0);
}

QString formatBytesMiB(double bytes) {
    double const kib = 1024.0, mib = kib * 1024.0, gib = mib * 1024.0;
    if (bytes > gib)
        return QString::asprintf("%2.2f GiB", bytes / gib);
    if (bytes > mib)
        return QString::asprintf("%2.2f MiB", bytes / mib);
    return QString::asprintf("%2.2f KiB", bytes / kib);
}

QString formatMicrosecond_as_Sec(quint64 microseconds) {
    quint64 const rest = microseconds % 1000000;
    return QString::asprintf("%llu,%03llu.%03llu", microseconds / 1000000, rest / 1000,
                             rest % 1000);
}

QString formatMillisecond_as_Sec(quint64 milliseconds) {
    return formatMicrosecond_as_Sec(milliseconds * 1000);
}

QString formatPercent(double value, unsigned int precision) {
    if (precision > 6) {
        ppWarning("::formatPercent, precision > 6, reduced to 6!");
        precision = 6;
    }
    double integral = 0.0;
    double const fraction = std::modf(value, &integral);
    char format[8];
    std::snprintf(format, sizeof format, "%%.%uf", precision);
    QString const fractionText = QString::asprintf(format, fraction);
    int const point = fractionText.indexOf(QLatin1Char('.'));
    return QString::asprintf("%02lld,", static_cast<long long>(integral)) +
           (point < 0 ? QString() : fractionText.mid(point + 1));
}

QString formatFillZero(unsigned int width, qint64 value) {
    // printf's zero fill: the sign first, and it counts toward the width.
    char buffer[24];
    char *const end = buffer + sizeof buffer;
    char const *const first = digitsBackwards(magnitude(value), end);
    unsigned int const len = static_cast<unsigned int>(end - first) + (value < 0 ? 1 : 0);
    QString out;
    if (value < 0)
        out.append(QLatin1Char('-'));
    if (width > len)
        out.append(QString(static_cast<int>(qMin(width, maxSpace) - len), QLatin1Char('0')));
    out.append(QLatin1String(first, static_cast<int>(end - first)));
    return out;
}

QString formatFloat(float value) {
    return value < 0 ? QString::asprintf("%.2f", static_cast<double>(value))
                     : QString::asprintf("+%.2f", static_cast<double>(value));
}

unsigned int countDigits(quint64 value) {
    unsigned int n = 1;
    for (; value >= 10; value /= 10)
        ++n;
    return n;
}

unsigned int countDigits(qint64 value) { return countDigits(magnitude(value)); }

QString bitsToString(unsigned char bits, bool withBlanks) {
    return bitsToString(bits, 8, withBlanks);
}
QString bitsToString(unsigned short bits, bool withBlanks) {
    return bitsToString(bits, 16, withBlanks);
}
QString bitsToString(unsigned int bits, bool withBlanks) {
    return bitsToString(static_cast<quint32>(bits), 32, withBlanks);
}

QString formatHex(quint64 value, unsigned int width) {
    return QString::number(value, 16).toUpper().rightJustified(
        static_cast<int>(qMin(width, maxSpace)), QLatin1Char('0'));
}

QString format_toString_arguments(QStringList const &texts) {
    QStringList nonEmpty;
    for (QString const &text : texts)
        if (!text.isEmpty())
            nonEmpty.append(text);
    return nonEmpty.join(QLatin1String(", "));
}

QString get_string_number(QString const &s, unsigned int digits) {
    int start = s.size();
    while (start > 0 && isAsciiDigit(s.at(start - 1)))
        --start;
    if (start == s.size())
        return s;
    int const number = s.midRef(start).toInt();
    return s.left(start) +
           (digits >= 1 && digits <= 6 ? formatFillZero(digits, number) : QString::number(number));
}

quint32 get_bytes_number(QString const &s) {
    if (s.length() > 30) {
        ppError("orv::get_bytes_number, sNum.length > 30, $ > 30, ", s.length());
        return 0;
    }
    bool ok = false;
    double const plain = s.toDouble(&ok);
    if (ok)
        return truncateTo32(plain);

    QString const t = s.toLower().replace(QLatin1Char(','), QLatin1Char('.'));
    int len = 0;
    while (len < t.size() && (isAsciiDigit(t.at(len)) || t.at(len) == QLatin1Char('.')))
        ++len;
    if (len == 0) {
        ppError("orv::get_bytes_number, '$' is not a valid bytes size_range number", s);
        return 0;
    }
    double const value = t.leftRef(len).toDouble(&ok);
    if (!ok)
        return 0;
    QString const unit = t.mid(len).trimmed();
    if (unit.isEmpty())
        return truncateTo32(value);

    // "tb" and "pb" are 10^12 and 10^15 after a 32-bit overflow, as they always were.
    static struct {
        char const *unit;
        qint64 factor;
    } const factors[] = {
        {"kb", 1000}, {"mb", 1000000}, {"gb", 1000000000}, {"tb", -727379968}, {"pb", -1530494976}};
    for (auto const &f : factors)
        if (unit == QLatin1String(f.unit))
            return truncateTo32(value * static_cast<double>(f.factor));
    ppError("orv::get_bytes_number,  unknown symbol <<<$>>>", unit);
    return 0;
}

QString createNextNumberString(QString const &s) {
    if (s.isEmpty())
        return QStringLiteral("0");
    int start = s.size();
    while (start > 0 && isAsciiDigit(s.at(start - 1)))
        --start;
    if (start == s.size())
        return s + QLatin1Char('0');
    // Decimal increment on the text, so that no length of digits can overflow.
    QString number = s.mid(start);
    int firstNonZero = 0;
    while (firstNonZero < number.size() - 1 && number.at(firstNonZero) == QLatin1Char('0'))
        ++firstNonZero;
    number.remove(0, firstNonZero);
    int i = number.size() - 1;
    for (; i >= 0 && number.at(i) == QLatin1Char('9'); --i)
        number[i] = QLatin1Char('0');
    if (i < 0)
        number.prepend(QLatin1Char('1'));
    else
        number[i] = QChar(number.at(i).unicode() + 1);
    return s.left(start) + number;
}

QString createSpace(unsigned int n) {
    if (n > maxSpace) {
        ppError("createSpace, countSpaces >maxSpace !, $ > $, cut to:$", n, maxSpace, maxSpace);
        n = maxSpace;
    }
    return QString(static_cast<int>(n), QLatin1Char(' '));
}

QString fillUpTo(QString const &text, unsigned int len) {
    if (len > maxSpace) {
        ppError("fillUpTo, len to big, cut to:$", maxSpace);
        len = maxSpace;
    }
    return text.leftJustified(static_cast<int>(len), QLatin1Char(' '));
}

QString prf(char const *fmt, ...) {
    if (!fmt)
        return QStringLiteral("<<<prf,nullpointer>>>");
    va_list args;
    va_start(args, fmt);
    QString out = QString::vasprintf(fmt, args);
    va_end(args);
    return out;
}

} // namespace orv
