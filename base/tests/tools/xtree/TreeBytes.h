// TreeBytes.h: tree files built field by field, the way the format's tables describe
// them, for comparison with what the library writes and for damaged inputs.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstring>

namespace orv::test {

class TreeBytes {
public:
    // n bytes of v, most significant first, or least significant first.
    TreeBytes &be(quint64 v, int n) {
        for (int i = n - 1; i >= 0; --i)
            bytes.append(static_cast<char>(v >> (8 * i)));
        return *this;
    }
    TreeBytes &le(quint64 v, int n) {
        for (int i = 0; i < n; ++i)
            bytes.append(static_cast<char>(v >> (8 * i)));
        return *this;
    }
    TreeBytes &beDouble(double d) { return be(bitsOf(d), 8); }
    TreeBytes &leDouble(double d) { return le(bitsOf(d), 8); }
    TreeBytes &leFloat(float f) {
        quint32 u;
        std::memcpy(&u, &f, 4);
        return le(u, 4);
    }
    TreeBytes &raw(QByteArray const &b) {
        bytes.append(b);
        return *this;
    }
    // 8-byte length, then UTF-8.
    TreeBytes &longString(QByteArray const &utf8) { return be(quint64(utf8.size()), 8).raw(utf8); }
    // 1-byte length, then UTF-8.
    TreeBytes &shortString(QByteArray const &utf8) { return be(quint64(utf8.size()), 1).raw(utf8); }
    // 32-bit byte length, then UTF-16 big-endian.
    TreeBytes &qtString(QString const &text) {
        be(quint64(text.size()) * 2, 4);
        for (QChar c : text)
            be(c.unicode(), 2);
        return *this;
    }
    TreeBytes &header() { return longString("XTree"); }
    TreeBytes &count(qint32 n) { return be(quint32(n), 4); }
    // Key, category and type of an entry; the payload follows.
    TreeBytes &entry(QByteArray const &key, int category, QByteArray const &type) {
        return longString(key).be(quint64(category), 1).shortString(type);
    }
    // The element type and count of an array record.
    TreeBytes &arrayHead(QString const &type, qint64 n) { return qtString(type).be(quint64(n), 8); }

    QByteArray bytes;

private:
    static quint64 bitsOf(double d) {
        quint64 u;
        std::memcpy(&u, &d, 8);
        return u;
    }
};

} // namespace orv::test
