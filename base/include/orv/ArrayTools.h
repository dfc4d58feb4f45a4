// ArrayTools.h: the stateless toolbox for QByteArrays: a byte-stuffed frame with 0 as
// its delimiter (also with a digest tail), removal from a buffer, a checksum byte,
// and the text dumps of bytes.
//
//   QByteArray wire = orv::ArrayTools::frameQByteArray_MD5(payload);   // 00 ... 00
//   QByteArray got;
//   if (orv::ArrayTools::unFrameQByteArray_MD5(wire, got)) use(got);
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orv {

// Bad frames and checksums are not errors of any object: these log and give an
// empty array or false.
class ORV_EXPORT ArrayTools {
public:
    // 00, the stuffed payload (no 0 byte in it), 00. Empty, with an ERROR line, when
    // the frame would outgrow what a QByteArray holds (a payload near 2 GiB).
    static QByteArray frameQByteArray(QByteArray const &payload);
    // Drops every 0 byte of the input, delimiters and strays alike, and decodes the
    // rest: cutting a stream at its delimiters is the reader's job.
    static QByteArray unFrameQByteArray(QByteArray const &framed);
    // The frame of the payload followed by its 32-character MD5 text.
    static QByteArray frameQByteArray_MD5(QByteArray const &payload);
    // Appends the payload to out when the digest matches; out is untouched otherwise.
    static bool unFrameQByteArray_MD5(QByteArray const &framed, QByteArray &out);

    // Consistent overhead byte stuffing. dst holds n + n / 254 + 1 bytes; both return
    // the bytes written. Decoding stops at a code 0 or at the end of the input.
    static quint64 stuffData(unsigned char const *src, quint64 n, unsigned char *dst);
    static quint64 unStuffData(unsigned char const *src, quint64 n, unsigned char *dst);
    // The same, written over dst from index 0: dst grows when needed, never shrinks.
    // 0 bytes, with an ERROR line, when the stuffed form would outgrow a QByteArray.
    static quint64 stuffToQByteArray(QByteArray const &src, QByteArray &dst);
    static quint64 unStuffQData(QByteArray const &src, QByteArray &dst);

    // Appends the byte that makes all bytes sum to 0 modulo 256.
    static void addChecksumByte(QByteArray &ar);

    static bool canRemove(QByteArray &ar, unsigned int pos, unsigned int len);
    static bool canRemoveFromBegin(QByteArray &ar, unsigned int len) {
        return canRemove(ar, 0, len);
    }
    // The len bytes at pos, cut out of ar. A range past the end gives only the byte
    // at pos and leaves ar as it was; len 0 or pos past the end give empty.
    static QByteArray arRemove(QByteArray &ar, unsigned int pos, unsigned int len);
    static QByteArray arRemoveFromBegin(QByteArray &ar, unsigned int len) {
        return arRemove(ar, 0, len);
    }
    static QByteArray arRemoveAll(QByteArray &ar);
    static quint64 countCharsOf(QByteArray const &ar, char c);
    // n bytes running A to Z and round again; empty, with an ERROR line, for n past
    // what a QByteArray holds.
    static QByteArray createQByteArrayABC(quint64 n);
    // n - 1 bytes from [low, high] and a zero byte, from the library's shared generator:
    // reproducible per run; calls from several threads take turns.
    static QByteArray randQByteArray(quint64 n, unsigned int low, unsigned int high);
    static void randomfillQByteArray(QByteArray &ar, quint64 n, unsigned int low,
                                     unsigned int high);

    // "[<total>] = " and, as asked, "{text} ", "HEX{hex} ", "MD5{digest of all} ".
    // Past head + tail bytes only head and tail are shown, with " .. " between.
    // limit 0 means the whole array; group > 1 puts separator after every group.
    static QString qByteArrayToString(QByteArray const &ar, quint64 head, quint64 tail, bool asc,
                                      bool hex, bool md5, quint64 limit, unsigned int group,
                                      QString const &separator);
    static QString qByteArray_to_hex_string(QByteArray const &ar, quint64 head, quint64 tail,
                                            quint64 limit);

    // Flag bits of show().
    enum SHOW_FLAGS : unsigned int {
        SHOW_HEX = 2,
        SHOW_ASC = 4,
        SHOW_DEC = 8,
        SHOW_BIN = 16,
        SHOW_MD5 = 32
    };
    // Logs "[<size>] = " and the streams the flags ask for, in the order ASC, HEX,
    // DEC, BIN, MD5. The short forms log at TEST level with space 0.
    static void show(unsigned int space, unsigned int level, QByteArray const &ar,
                     unsigned int flags, quint64 head, quint64 tail);
    static void show(QByteArray const &ar, unsigned int flags, quint64 head, quint64 tail);
    static void show(unsigned int space, QByteArray const &ar, unsigned int flags, quint64 head,
                     quint64 tail);
    static void showQByteArray(QByteArray const &ar, quint64 head, quint64 tail, bool asc, bool hex,
                               bool md5, unsigned int group, QString const &separator);
    static void showQByteArray(unsigned int space, QByteArray const &ar, quint64 head, quint64 tail,
                               bool asc, bool hex, bool md5, unsigned int group,
                               QString const &separator);
    static void showArray(char const *p, quint64 len, quint64 head, quint64 tail, bool asc,
                          bool hex, bool md5, unsigned int group, QString const &separator);
    // Ignores group and separator.
    static void showArray(unsigned int space, char const *p, quint64 len, quint64 head,
                          quint64 tail, bool asc, bool hex, bool md5, unsigned int group,
                          QString const &separator);
    // flags: 4 text, 2 hex, 32 digest.
    static void show_array(char const *p, quint64 len, quint64 head, quint64 tail,
                           unsigned int flags, unsigned int group, QString const &separator);
    static void show_array(unsigned int space, char const *p, quint64 len, quint64 head,
                           quint64 tail, unsigned int flags, unsigned int group,
                           QString const &separator);
};

} // namespace orv
