// MD5.h: the library's own MD5 digest (RFC 1321) and its text forms.
//
//   orv::MD5 md5;
//   md5.update(data, size);                      // as often as needed
//   md5.finalize();
//   QString hex = md5.toString();                // 32 upper-case hex digits
//   QByteArray tag = orv::MD5::md5FromQByteArray(bytes);   // the 32-character frame form
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>

namespace orv {

class ORV_EXPORT MD5 {
public:
    // Not finalized: feed it with update() and close it with finalize().
    MD5();
    // Digested and finalized: a zero-terminated C string, or the UTF-8 of text.
    explicit MD5(unsigned char const *cString);
    explicit MD5(QString const &text);
    // Digested and finalized: a block of len bytes; a null buf is fatal.
    MD5(void const *buf, unsigned int len);
    MD5(unsigned char const *buf, unsigned int len);

    // Feeding a finalized digest is ignored.
    void update(unsigned char const *input, unsigned int len);
    void update(char const *input, unsigned int len);
    void update(void const *input, unsigned int len);
    void update(QByteArray const &bytes);
    // The UTF-8 of text.
    void updateString(QString const &text);
    // The whole file; a missing file adds nothing.
    void updateFile(char const *fileName);
    // Pads, closes the digest and wipes the working state; later calls do nothing.
    MD5 &finalize();

    bool isFinalized() const { return finalized; }

    // An unfinished `this` compares neither equal nor unequal: all three give false.
    bool operator==(MD5 const &other) const;
    bool operator!=(MD5 const &other) const;
    bool isSame(MD5 const &other) const { return *this == other; }

    // Finalized with an all-zero digest.
    void setInvalid();

    // The 16 raw bytes (zeros until finalized).
    QByteArray getDigest() const;

    // 32 upper-case hex digits, or "MD5-NOT-FINALIZED".
    QString toString() const;
    // Two hex digits per byte, with a blank between bytes when spaced, or "MD5-NOT-FINALIZED".
    QString hexdigest(bool upper, bool spaced) const;
    QByteArray hexDigest(bool upper) const;

    // The 32-character form that frames carry: digest bytes 0-9 as "XX " each, then
    // byte 15 as "XX". Bytes 10-14 take no part in it. The bool has no effect.
    static QByteArray md5FromQByteArray(QByteArray const &bytes, bool unused = false);
    static QByteArray md5_16(QByteArray const &bytes);
    // 32 upper-case hex digits; a null pBuffer is fatal.
    static QString md5FromBuffer(unsigned char const *pBuffer, unsigned int len);
    static MD5 md5_from_Buffer(unsigned char const *pBuffer, unsigned int len);
    static QString md5FromString(QString const &text);
    // The digest of the file's bytes; a missing file gives the digest of nothing.
    static QString md5FromFile(QString const &fileName);
    static QString md5FromFile(char const *pFile);
    // Feeds a file in blocks of 64 KiB; a missing file is ignored.
    static void addMD5FromFile(char const *fileName, MD5 &md5);
    // 16 bytes as 32 lower-case hex digits.
    static QString bytes16AsHex(char const *bytes16);

private:
    void init();
    void transform(unsigned char const *block);

    bool finalized = false;
    unsigned char buffer[64];
    std::uint64_t count; // bits fed so far
    std::uint32_t state[4];
    unsigned char digest[16];
};

} // namespace orv
