// XLineInfo.h: where one line (or one wrapped piece of it) lies in a mapped file,
// without its text; and the conversions between UTF-8 byte counts and QString
// positions that turn hits in decoded text into byte positions.
//
//   orv::XLineInfo const &li = reader.lineInfoAt(7);
//   quint64 hit = li.posMemory + orv::XLineInfo::get_UTF8_Bytes_CountFromString(text, 0, p);
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringRef>

namespace orv {

// A plain record, 32 bytes: what a line table spends per line.
struct ORV_EXPORT XLineInfo {
    quint64 posMemory = 0;        // first byte of the line, from the start of the memory
    unsigned int length = 0;      // bytes of text, without LF and CR
    unsigned int lengthTotal = 0; // bytes taken in the memory, line end included
    unsigned int lineNumber = 0;  // file line from 0, shared by all pieces of a line
    int wrapIndex = -1;           // piece within the file line, -1 when not wrapping
    bool hasLineEnd = false;      // the piece ends a file line (also a last one without LF)

    bool isValid() const { return lengthTotal > 0; }
    explicit operator bool() const { return isValid(); }

    int posEnd() const { return static_cast<int>(posMemory + length); }
    // Both ends inclusive.
    bool isInRange(quint64 pos) const { return posMemory <= pos && pos <= posMemory + length; }
    bool containsRange(quint64 a, quint64 b) const { return isInRange(a) && isInRange(b); }
    int getRelPos(quint64 pos) const {
        return isInRange(pos) ? static_cast<int>(pos - posMemory) : -1;
    }
    // total 0 means "the same as length".
    void setLengths(unsigned int len, unsigned int total) {
        length = len;
        lengthTotal = total == 0 ? len : total;
    }
    QString toString() const;

    static int countBytes(QString const &s);
    static int countBytes(QChar c);
    static QByteArray get_UTF8_Bytes(QString const &s) { return s.toUtf8(); }
    static QByteArray get_UTF8_Bytes(QChar c) { return QString(c).toUtf8(); }
    // s itself when it has at most n characters (8 for n 0), else its head and "...".
    static QString elidedText(QString const &s, unsigned int n);
    // UTF-8 bytes of s[pos, pos + len); -1 with an ERROR line when out of range.
    static int get_UTF8_Bytes_CountFromString(QString const &s, unsigned int pos, unsigned int len);
    // Characters (UTF-16 units) that the first countBytes bytes of s's UTF-8 decode
    // to; a cut through a character counts it once. -1 with a WARN line past the end.
    static int get_UTF8_Chars_CountFromBytes(QString const &s, unsigned int countBytes);
    static int get_UTF8_Chars_CountFromBytes(QStringRef const &s, unsigned int countBytes);
    // The same on raw bytes; a null p is fatal.
    static int get_UTF8_Chars_CountFromBytes(char const *p, unsigned int countBytes);
};

} // namespace orv
