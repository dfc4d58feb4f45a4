// XByteArray.h: a QByteArray that is also an AbstractMemory, with big-endian field
// writers, checked compression and file helpers.
//
//   orv::XByteArray packet;
//   packet.writeUInt16(0x0102);                           // 01 02
//   orv::XByteArray sent = orv::XByteArray::compress(packet);
//   orv::XByteArray back = orv::XByteArray::unCompress(sent);   // empty if damaged
#pragma once

#include "orv/AbstractMemory.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string>
#include <vector>

namespace orv {

// The bytes keep QByteArray's implicit sharing; copies and moves carry the error word.
class ORV_EXPORT XByteArray : public QByteArray, public AbstractMemory {
public:
    XByteArray() = default;
    XByteArray(int size, char fill) : QByteArray(size, fill) {}
    XByteArray(char const *data, int size) : QByteArray(data, size) {}
    XByteArray(QByteArray const &bytes) : QByteArray(bytes) {}
    XByteArray(QByteArray &&bytes) noexcept : QByteArray(std::move(bytes)) {}
    XByteArray(XByteArray const &other) = default;
    XByteArray(XByteArray &&other) noexcept : XByteArray(static_cast<XByteArray const &>(other)) {}
    ~XByteArray() override;

    XByteArray &operator=(QByteArray const &bytes);
    XByteArray &operator=(QByteArray &&bytes) noexcept;
    XByteArray &operator=(XByteArray const &other);
    XByteArray &operator=(XByteArray &&other) noexcept;

    // A view of foreign bytes, nothing copied: they must outlive the result (or until
    // a write detaches it). A length past what a QByteArray holds (about 2 GiB) gives
    // an empty array and an ERROR line.
    static XByteArray fromMem(char const *p, quint64 len);
    // Each line's UTF-8 and its line end (CR LF or LF), the last line's too.
    static XByteArray fromStringLines(std::vector<QString> const &lines, bool crlf);
    static XByteArray from_QString_UTF8(QString const &text);
    // Failure shows in the result's error word.
    static XByteArray load(QString const &path);
    // 16-byte MD5 of the rest, then qCompress's form (4-byte big-endian length, zlib).
    static XByteArray compress(XByteArray const &src);
    // Empty with an ERROR line when the digest does not match or the input is too short.
    static XByteArray unCompress(XByteArray const &src);

    char const *mem() const override { return constData(); }
    char *mem() override { return data(); }
    quint64 length() const override { return static_cast<quint64>(size()); }
    XByteArray createByteArray() const override { return XByteArray(*this); }

    using AbstractMemory::fill;
    using AbstractMemory::toStdString;
    using QByteArray::operator+=;

    bool empty() const { return size() < 1; }
    explicit operator bool() const { return size() >= 1 && isOK(); }
    operator char const *() const { return mem(); }

    bool operator==(XByteArray const &other) const;
    bool operator!=(XByteArray const &other) const { return !(*this == other); }

    // Both stop at the string's first 0.
    XByteArray &operator+=(std::string const &text);
    void appendStdString(std::string const &text);
    XByteArray &operator+=(QString const &text);

    // Deep copy; a null pMem is fatal. A length past what a QByteArray holds leaves
    // the array as it was, with ORV_ERROR_NUMBER_TOO_BIG and an ERROR line.
    void setMemory(void const *pMem, quint64 sz);
    void erase(int pos, int len) { remove(pos, len); }

    // These see the array up to its first 0 byte only; not found is npos.
    size_t find(QString const &pattern) const;
    size_t rfind(QString const &pattern) const;
    size_t find_first_not_of(QString const &set) const;
    // Throws std::out_of_range for pos past the end.
    std::string substr(int pos, int len) const;
    std::string toStdString() const;
    // One QChar per byte (Latin-1), up to the first 0.
    QString toQString() const;
    std::vector<XByteArray> splitX(QString const &delims) const;
    // The 32-character MD5 form that frames carry.
    QString md5String() const;

    void writeUInt8(unsigned char value);
    void writeUInt16(unsigned short value);
    void writeUInt32(unsigned int value);
    // Always the head of the array, big-endian; 0 when it is too short.
    unsigned short readUInt16() const;
    unsigned int readUInt32() const;
    void writePadByte() { append('\0'); }
    // Past what a QByteArray holds: nothing appended, an ERROR line.
    void writePadBytes(unsigned int n);
    void writeQStringUTF8(QString const &text, bool newline);

    // As XMem::loadMem with a part size; a part above the file's size is
    // ORV_ERROR_NUMBER_TOO_BIG.
    bool loadFromFile(QString const &path, quint64 szPart);
    // sz 0 writes all; a larger sz than the array writes the array and reports a
    // short write.
    bool saveToFile(QString const &path, quint64 sz);
};

} // namespace orv
