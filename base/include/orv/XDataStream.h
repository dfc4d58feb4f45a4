// XDataStream.h: the QDataStream of the tree's binary form: it knows a type supporter
// and adds long and short UTF-8 strings, counted big reads and writes, and whole values.
//
//   orv::XDataStream out(&device, orv::XTypeSupporter::basicTypes());
//   out.write_UTF8_String(QStringLiteral("XTree"));   // 8-byte length, then UTF-8
//   out.writeBigData(block, size);                     // 1 MiB at a time
//
// Version 17 (Qt_5_6), big-endian, double precision for float. One stream belongs to
// one thread. Lengths and counts read from a stream are checked against the bytes the
// device still holds, so that damaged input never makes a reader allocate its claims.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XMem.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QString>

namespace orv {

class XMemoryWrapper;
class XNullDevice;
class XTypeSupporter;
class XVal;

class ORV_EXPORT XDataStream : public QDataStream {
public:
    explicit XDataStream(XTypeSupporter const &types);
    XDataStream(QIODevice *device, XTypeSupporter const &types);
    XDataStream(QByteArray *bytes, QIODevice::OpenMode mode, XTypeSupporter const &types);
    XDataStream(QByteArray const &bytes, XTypeSupporter const &types);

    // Must outlive the stream.
    XTypeSupporter const &typeSupporter() const { return *types; }
    // QDataStream's, then the new device's kind is looked at again (see writeNumber).
    void setDevice(QIODevice *device);

    // 8 bytes, signed on the wire.
    void writeCount(quint64 count);
    quint64 readCount();
    // Long string: 8-byte length, then UTF-8. A short write is fatal.
    void write_UTF8_String(QString const &text);
    // Up to the first 0 byte; "" for a length the device can't hold.
    QString readString();
    // Short string: 1 length byte, then at most 254 bytes of UTF-8 (longer text is cut,
    // with a WARN line, maybe inside a character). A short write is fatal.
    void write_short_UTF8_String(QString const &text);
    QString readShortString();
    // Category byte, type name as short string, payload by the supporter.
    bool writeVal(XVal const &val);
    // False, with an ERROR line, for a type the supporter doesn't read; the stream is
    // then out of step. The first failure of a stream pauses (1000 ms by default).
    bool readVal(XVal &val);

    // In pieces of 1 MiB (skips of 1 GiB); the bytes done, -1 when a piece failed.
    qint64 writeBigData(char const *pData, quint64 len);
    qint64 writeBigData(XMem const &mem);
    qint64 readBigData(char *pData, quint64 len);
    // A block of len bytes read; empty when the device doesn't hold them.
    XMem readBigData(quint64 len);
    qint64 skipBigData(quint64 len);
    qint64 read_void(void *pData, quint64 len) {
        return readBigData(static_cast<char *>(pData), len);
    }
    qint64 write_void(void const *pData, quint64 len) {
        return writeBigData(static_cast<char const *>(pData), len);
    }

    // Qt's 32-bit forms: each logs an ERROR line, then does the work all the same.
    int readRawData(char *s, int len);
    int writeRawData(char const *s, int len);
    int skipRawData(int len);

    // True when the device still holds n bytes; otherwise an ERROR line, the stream is
    // marked ReadPastEnd and nothing is read.
    bool canRead(quint64 n);
    // QDataStream's QString form (32-bit byte length or 0xFFFFFFFF, UTF-16 big-endian),
    // checked like the other lengths.
    QString readQtString();
    // A number as QDataStream's operator writes and reads it (bool as 1 byte, float at
    // the stream's precision, the stream's byte order), but straight to and from the
    // memory of an XMemoryWrapper and the counter of an XNullDevice: values are many and
    // small, and QIODevice's way costs more than the value.
    template <typename T> void writeNumber(T value);
    template <typename T> void readNumber(T &value);
    // Values this stream could not read (unknown types, bad lengths).
    quint64 countReadFailures() const { return readFailures; }

    bool isSkipReading() const { return skipReading; }
    void setSkipReading(bool on) { skipReading = on; }

    // Arrays of simple types element by element (on) or as raw blocks in host order
    // (off, the default). Writer and reader must agree; the stream doesn't record it.
    static XAtomic<bool> atomicConsiderByteOrder;
    static bool isDebug() { return flagDebug; }
    static void setDebug(bool on) { flagDebug = on; }
    // The pause of a stream's first failed value, 1000 ms unless changed (fuzzers set 0).
    static void setFailurePauseMs(quint64 ms) { failurePauseMs = ms; }

private:
    friend class XTree;

    void setUp();
    // Nesting of trees being read; too deep is a damaged file, not a stack overflow.
    bool enterTree();
    void leaveTree() { --treeDepth; }
    qint64 bigTransfer(char *data, quint64 len, bool writing);
    // All n bytes or nothing written; false once the stream has failed.
    bool putBytes(char const *data, quint64 n);
    // Up to n bytes read, the rest zero-filled with the stream marked ReadPastEnd; the
    // bytes read, -1 when there were none.
    qint64 getBytes(char *data, quint64 n);
    quint64 bytesLeft() const;

    XTypeSupporter const *types;
    // The device's own kind when it is one the stream reaches without QIODevice.
    XMemoryWrapper *block = nullptr;
    bool blockReads = false;
    bool blockWrites = false;
    XNullDevice *counter = nullptr;
    // Set by the tree when its device appends to this block: bytes go there directly.
    XMem *appendTarget = nullptr;
    XAtomic<bool> skipReading;
    unsigned int treeDepth = 0;
    quint64 readFailures = 0;
    // Links and link arrays read: only then has a tree links to resolve.
    quint64 linksRead = 0;

    static XAtomic<bool> flagDebug;
    static XAtomic<quint64> failurePauseMs;
};

} // namespace orv
