// AbstractMemory.h: the one interface of every block of bytes with a start and a
// length, whoever owns the bytes, with the copy, fill, compare and dump operations.
//
//   void dump(orv::AbstractMemory const &block) {
//       ppInfo("$", block.toString_Hex_MD5(8, 8));   // "[1.024] = HEX{...} MD5{...} "
//   }
#pragma once

#include "orv/MD5.h"
#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XError.h"

#include <QtCore/QString>

#include <string>

class QBuffer;

namespace orv {

class XByteArray;

// Failures of these operations log and give a neutral result; none touches the
// error word, which belongs to the subclasses' own operations.
class ORV_EXPORT AbstractMemory : public XError {
public:
    AbstractMemory() = default;
    AbstractMemory(AbstractMemory const &) = default;
    AbstractMemory &operator=(AbstractMemory const &) = default;
    ~AbstractMemory() override;

    virtual char const *mem() const = 0;
    virtual char *mem() = 0;
    virtual quint64 length() const = 0;
    // A copy of the bytes. A block past what a QByteArray holds (about 2 GiB) gives an
    // empty array and an ERROR line naming its length, never a shortened copy.
    virtual XByteArray createByteArray() const = 0;

    // Copies sz bytes over the head of the block; the length stays. False when p is
    // null or sz exceeds the length.
    virtual bool setMem(void const *p, quint64 sz);
    // setMem of the string, with its terminator when terminated.
    virtual bool setString(char const *s, bool terminated);
    // The Latin-1 bytes with terminator.
    virtual bool setQString(QString const &s);
    virtual void fill(char c);
    // Repeats the pattern's Latin-1 bytes over the block; an empty pattern writes nothing.
    virtual void fillPattern(QString const &pattern);
    // The byte sign-extended; -1 for a null block, 0 for an empty one or pos past the end.
    virtual int charAt(unsigned int pos) const;
    // A default (unfinished) MD5 for a null or empty block.
    virtual MD5 createMD5() const;
    virtual void show(unsigned int space) const;
    virtual QString toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const;
    virtual std::string toStdString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const;
    // A new[] copy the caller deletes; null for a null or empty block, or when the
    // memory for the copy cannot be had.
    virtual char const *memCopy() const;
    virtual char *memCopy();
    // False for a null or empty block, or one past what a QBuffer holds (about 2 GiB).
    virtual bool writeToQBuffer(QBuffer &buffer) const;

    bool isValid() const { return mem() != nullptr; }
    operator char const *() { return mem(); }
    // Compares digests, not bytes; a null or empty this is never the same.
    bool hasSameContents(AbstractMemory const &other) const;
    QString toString_MD5() const { return toString(5, 5, false, false, true); }
    QString toString_Hex_MD5(quint64 head, quint64 tail) const {
        return toString(head, tail, false, true, true);
    }
    QString toString_ASC_Hex_MD5(quint64 head, quint64 tail) const {
        return toString(head, tail, true, true, true);
    }

    static bool isDebug() { return atomicFlagDebug; }
    static void setDebug(bool on) { atomicFlagDebug = on; }

    // Turns on the DEBUG trace lines of the blocks' constructors and size changes.
    static XAtomic<bool> atomicFlagDebug;

protected:
    // The dump of the bytes themselves, without looking at the error word.
    QString bytesToString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const;
};

} // namespace orv
