// XStringStream.h: the `$` formatter and the text stream it writes on.
//
// Each `$` in the format takes the next argument in its type's text form:
//
//   orv::xprintF("copied $ files in $ s", 12, 0.5);   // "copied 12 files in 0.500000 s"
//   orv::xprintF("$ and $", "a");                     // "a and $"  (surplus `$` stays)
//   orv::xprintF("x=$", 1, 2);                        // "x=1"      (surplus arguments vanish)
//
// The format and `char const *` arguments are read as Latin-1, one byte per
// character; pass other text as QString. Real numbers are written in fixed
// notation with six decimals. A pointer has no text form: use pointerString().
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>
#include <QtCore/QStringRef>
#include <QtCore/QTextStream>

#include <cstdio>
#include <cstring>

class QIODevice;

namespace orv {

// Text forms of the formatter's arguments, appended to a QString.
namespace format {

ORV_EXPORT void append(QString &out, char const *text);
ORV_EXPORT void append(QString &out, bool value);
ORV_EXPORT void append(QString &out, long long value);
ORV_EXPORT void append(QString &out, unsigned long long value);
ORV_EXPORT void append(QString &out, double value);

inline void append(QString &out, QString const &text) { out.append(text); }
inline void append(QString &out, QStringRef const &text) { out.append(text); }
inline void append(QString &out, QChar c) { out.append(c); }
inline void append(QString &out, char c) { out.append(QLatin1Char(c)); }
inline void append(QString &out, char *text) { append(out, static_cast<char const *>(text)); }
inline void append(QString &out, std::nullptr_t) {
    append(out, static_cast<char const *>(nullptr));
}
inline void append(QString &out, int value) { append(out, static_cast<long long>(value)); }
inline void append(QString &out, long value) { append(out, static_cast<long long>(value)); }
inline void append(QString &out, unsigned int value) {
    append(out, static_cast<unsigned long long>(value));
}
inline void append(QString &out, unsigned long value) {
    append(out, static_cast<unsigned long long>(value));
}
inline void append(QString &out, float value) { append(out, static_cast<double>(value)); }

// Pointers would otherwise turn silently into "true".
template <typename T> void append(QString &out, T *pointer) = delete;

inline void appendRest(QString &out, char const *format) { out.append(QLatin1String(format)); }

inline void formatInto(QString &out, char const *format) { appendRest(out, format); }

template <typename First, typename... Rest>
void formatInto(QString &out, char const *format, First const &first, Rest const &...rest) {
    char const *dollar = std::strchr(format, '$');
    if (!dollar) {
        appendRest(out, format);
        return;
    }
    out.append(QLatin1String(format, static_cast<int>(dollar - format)));
    append(out, first);
    formatInto(out, dollar + 1, rest...);
}

} // namespace format

// The `$` formatting of `format` and `args`; a null format gives "".
template <typename... Args> QString xprintF(char const *format, Args const &...args) {
    QString out;
    if (!format)
        return out;
    out.reserve(static_cast<int>(std::strlen(format) + 12 * sizeof...(args)));
    format::formatInto(out, format, args...);
    return out;
}

// "%p" of the pointer; "0x0" for null.
ORV_EXPORT QString pointerString(void const *pointer);

// A QTextStream on UTF-8 that writes real numbers in fixed notation with six
// decimals, with the formatter's text forms as print() and appendF().
class ORV_EXPORT XStringStream : public QTextStream {
public:
    // Writes into a string of its own, which toString() gives back.
    XStringStream();
    explicit XStringStream(QString &text);
    explicit XStringStream(QString *text);
    explicit XStringStream(QByteArray *bytes);
    explicit XStringStream(QByteArray const &bytes);
    explicit XStringStream(FILE *file);
    explicit XStringStream(QIODevice *device);

    // Writes one argument in the formatter's form: print(nullptr) gives "nullptr".
    template <typename T> XStringStream &print(T const &value) {
        QString text;
        format::append(text, value);
        *this << text;
        return *this;
    }

    // n blanks, then the value.
    template <typename T> XStringStream &print(unsigned int n, T const &value) {
        *this << QString(static_cast<int>(n), QLatin1Char(' '));
        return print(value);
    }
    template <typename T> XStringStream &println(T const &value) {
        print(value) << QLatin1Char('\n');
        return *this;
    }
    template <typename T> XStringStream &println(unsigned int n, T const &value) {
        print(n, value) << QLatin1Char('\n');
        return *this;
    }

    bool isOK() const { return status() == QTextStream::Ok; }
    // The stream's status in words, or "unknown".
    QString statusToString() const;
    void showStatus(unsigned int space) const;
    // All the text so far of a stream on a QString; "" for other targets.
    QString toString();

    // Appends the `$` formatting; a null format appends nothing.
    template <typename... Args> XStringStream &appendF(char const *format, Args const &...args) {
        if (format)
            *this << xprintF(format, args...);
        return *this;
    }

private:
    void setLibraryDefaults();

    // The target of a default-constructed stream.
    QString ownText;
};

} // namespace orv
