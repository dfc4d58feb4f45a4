// XMemoryWrapper.h: a fixed block of foreign memory seen as a random-access
// QIODevice and as an AbstractMemory, so that streams read and write a mapping.
//
//   orv::XMemoryWrapper device(mapped, size, QIODevice::WriteOnly);
//   QDataStream(&device) << tree;        // fails once the block is full
//
// The wrapper never owns the bytes: the block must outlive it. It never grows.
#pragma once

#include "orv/AbstractMemory.h"
#include "orv/XAtomic.h"

#include <QtCore/QIODevice>

namespace orv {

class XMem;

class ORV_EXPORT XMemoryWrapper : public QIODevice, public AbstractMemory {
public:
    XMemoryWrapper();
    // Any mode but 0 opens the device at once, always Unbuffered. A null p is fatal.
    XMemoryWrapper(void *p, quint64 len, QIODevice::OpenMode mode);
    // The array's detached data; a null data pointer is fatal.
    XMemoryWrapper(XByteArray &bytes, QIODevice::OpenMode mode);
    // A block without bytes logs an ERROR line and leaves the wrapper empty.
    XMemoryWrapper(XMem &block, QIODevice::OpenMode mode);
    // Takes pointers, length and open mode; the source is left empty and closed.
    XMemoryWrapper(XMemoryWrapper &&other);
    XMemoryWrapper &operator=(XMemoryWrapper &&other);
    ~XMemoryWrapper() override;

    // Adds Unbuffered, so that pos() stays true and QIODevice keeps no copy.
    bool open(QIODevice::OpenMode mode) override;
    qint64 pos() const override { return posMemory(); }
    qint64 size() const override { return static_cast<qint64>(len); }
    // No range test: the next read or write tells.
    bool seek(qint64 pos) override;
    bool atEnd() const override;
    bool reset() override;
    qint64 bytesAvailable() const override;

    char const *mem() const override { return start; }
    char *mem() override { return start; }
    quint64 length() const override { return len; }
    qint64 posMemory() const { return current - start; }
    qint64 restSize() const { return static_cast<qint64>(len) - posMemory(); }

    // The bytes written so far (the block up to the position); empty with an
    // ERROR line when closed, in error, without bytes or at position 0.
    XByteArray createByteArray() const override;
    MD5 createMD5() const override;
    QString toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const override;
    using AbstractMemory::fill;
    using AbstractMemory::fillPattern;

    // The rest as UTF-8, and the UTF-8 of text written at the position.
    QString readString();
    qint64 writeString(QString const &text);

    // The next n bytes in place, the position moved past them, for streams that read
    // or write the block without a copy through QIODevice. Null, and nothing moved,
    // when fewer than n are left.
    char *step(quint64 n) {
        if (n > static_cast<quint64>(restSize()))
            return nullptr;
        char *const here = current;
        current += n;
        if (releaseBehind)
            releasePassedPages(here);
        return here;
    }

    // Hands the pages the position has passed back to the system, a MiB at a time, so
    // that one pass over a big file mapping keeps the process small. Only for a shared
    // file mapping: on other memory the bytes would be lost.
    void setReleaseBehind(bool on) { releaseBehind = on; }

    static bool isDebug() { return atomicFlagDebug; }
    static void setDebug(bool on) { atomicFlagDebug = on; }
    // Reads refused at the end of the data, by all wrappers of the process.
    static quint64 countReadsAtEnd() { return counterReadAtEnd; }

    static XAtomic<bool> atomicFlagDebug;

protected:
    // -1 with a log line at the end of the data; otherwise at most the rest.
    qint64 readData(char *data, qint64 maxSize) override;
    // -1 with a log line, writing nothing, when n bytes don't fit in the rest.
    qint64 writeData(char const *data, qint64 n) override;

private:
    void openAtConstruction(QIODevice::OpenMode mode);
    void takeFrom(XMemoryWrapper &other);
    // Only the pages below upTo: the bytes above may still be on their way.
    void releasePassedPages(char *upTo);

    char *start = nullptr;
    char *current = nullptr;
    quint64 len = 0;
    bool releaseBehind = false;
    char *released = nullptr; // below it, pages went back to the system

    static XAtomic<quint64> counterReadAtEnd;
};

} // namespace orv
