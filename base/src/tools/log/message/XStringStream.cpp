// XStringStream.cpp: text forms of the `$` formatter's arguments and the stream set-up.
#include "orv/XStringStream.h"

#include "orv/Log.h"

#include <QtCore/QLocale>

#include <charconv>
#include <cmath>

namespace orv {

namespace format {

namespace {

void appendChars(QString &out, char const *begin, char const *end) {
    out.append(QLatin1String(begin, static_cast<int>(end - begin)));
}

// Beyond this magnitude std::to_chars and Qt's fixed notation may disagree on
// the digits, so such numbers take Qt's path like every QTextStream does.
constexpr double largestCharconvReal = 1e15;

// std::to_chars rounds an exact tie to even, Qt's fixed notation rounds it away
// from zero. With six decimals a tie is a number whose lowest set bit is 2^-7,
// that is one for which x * 128 is an odd integer (the scaling is exact).
bool isSixDecimalTie(double value) {
    double const scaled = std::fabs(value) * 128.0;
    return scaled == std::floor(scaled) && std::fmod(scaled, 2.0) == 1.0;
}

// Numbers that Qt writes differently from std::to_chars: a negative zero loses
// its sign there, and ties round away from zero.
bool needsQtPath(double value) {
    return !std::isfinite(value) || std::fabs(value) >= largestCharconvReal ||
           (value == 0.0 && std::signbit(value)) || isSixDecimalTie(value);
}

} // namespace

void append(QString &out, char const *text) { out.append(QLatin1String(text ? text : "nullptr")); }

void append(QString &out, bool value) { out.append(QLatin1String(value ? "true" : "false")); }

void append(QString &out, long long value) {
    char buffer[24];
    appendChars(out, buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void append(QString &out, unsigned long long value) {
    char buffer[24];
    appendChars(out, buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void append(QString &out, double value) {
    if (needsQtPath(value)) {
        out.append(QLocale::c().toString(value, 'f', 6));
        return;
    }
    char buffer[48];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6);
    appendChars(out, buffer, result.ptr);
}

} // namespace format

QString pointerString(void const *pointer) {
    return pointer ? QString::asprintf("%p", pointer) : QStringLiteral("0x0");
}

// Set in the body: the member is built only after the QTextStream base.
XStringStream::XStringStream() {
    setString(&ownText);
    setLibraryDefaults();
}

XStringStream::XStringStream(QString &text) : QTextStream(&text) { setLibraryDefaults(); }

XStringStream::XStringStream(QString *text) : QTextStream(text) { setLibraryDefaults(); }

XStringStream::XStringStream(QByteArray *bytes) : QTextStream(bytes) { setLibraryDefaults(); }

XStringStream::XStringStream(QByteArray const &bytes) : QTextStream(bytes) { setLibraryDefaults(); }

XStringStream::XStringStream(FILE *file) : QTextStream(file) { setLibraryDefaults(); }

XStringStream::XStringStream(QIODevice *device) : QTextStream(device) { setLibraryDefaults(); }

QString XStringStream::statusToString() const {
    switch (status()) {
    case QTextStream::Ok: return QStringLiteral("Ok");
    case QTextStream::ReadPastEnd: return QStringLiteral("ReadPastEnd");
    case QTextStream::ReadCorruptData: return QStringLiteral("ReadCorruptData");
    case QTextStream::WriteFailed: return QStringLiteral("WriteFailed");
    }
    return QStringLiteral("unknown");
}

void XStringStream::showStatus(unsigned int space) const { ppDebug(space, statusToString()); }

QString XStringStream::toString() {
    flush();
    return string() ? *string() : QString();
}

void XStringStream::setLibraryDefaults() {
    setCodec("UTF-8");
    setRealNumberNotation(QTextStream::FixedNotation);
    setRealNumberPrecision(6);
}

} // namespace orv
