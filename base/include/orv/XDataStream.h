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
#include "orv/XTypeSupporter.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QString>

namespace orv {

class XMemoryWrapper;
class XNullDevice;
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
    friend class XTypeSupporter;

    // What the stream knows of a type name that it meets once per value: its short
    // string, its handlers and the category its values must have. Made on the first
    // meeting, so that the name is encoded and looked up once per stream.
    struct TypeEntry {
        // Held, so that its shared data lives on: entries are found by that before their
        // text.
        QString name;
        XFunctionMapper::Handlers const *handlers = nullptr;
        unsigned char category = 0;
        // The entry met after this one last time: trees repeat their pattern of types.
        unsigned char next = 0;
        // The bytes of the short string.
        unsigned char shortSize = 0;
        // A value's head as it goes out: its category (set per value), then the short
        // string, so that both leave in one piece without a copy.
        char head[1 + 1 + 255] = {};
        char const *shortForm() const { return head + 1; }
    };
    static unsigned int constexpr TYPE_ENTRIES = 16;

    // The entry of a name to write: the last one when the name shares its data, which
    // values of one type do.
    TypeEntry &typeEntry(QString const &type) {
        TypeEntry &last = typeEntries[lastTypeEntry];
        return typeEntriesUsed && last.name.isSharedWith(type) ? last : findTypeEntry(type);
    }
    TypeEntry &findTypeEntry(QString const &type);
    // The last entry, the one that followed it last time, then all; null for none.
    template <typename Match> TypeEntry *findTypeEntry(Match const &match);
    // The entry of a name read from the stream, up to its first 0 byte.
    TypeEntry &typeEntry(char const *utf8, int n);
    // A new entry; one whose short string is cut or differs from utf8 (bytes read that
    // are no valid UTF-8) is not kept, so that each such value gets its own.
    TypeEntry &addTypeEntry(QString const &type, char const *utf8, int n);
    // The supporter asks right after writeVal or readVal met the name: the last entry
    // answers, or the mapper for a name no entry keeps.
    XFunctionMapper::Handlers const *handlersOf(QString const &type) const {
        TypeEntry const &last = typeEntries[lastTypeEntry];
        if (typeEntriesUsed && (last.name.isSharedWith(type) || last.name == type))
            return last.handlers;
        return XFunctionMapper::instance().find(type);
    }

    // A tree's entry: its key as long string, then the value as writeVal writes it.
    bool writeEntry(QString const &key, XVal const &val);
    // The value behind its head, by the supporter.
    bool writePayload(XVal const &val);
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
    // Set while a file is sized: the writers bring each link's URL up to date as they
    // meet it, so that no walk of its own over the tree is needed before the save.
    bool refreshLinks = false;
    TypeEntry typeEntries[TYPE_ENTRIES];
    unsigned int typeEntriesUsed = 0;
    // The entry found last: values of one type often follow each other.
    unsigned int lastTypeEntry = 0;
    // Where names that are not kept are prepared.
    TypeEntry looseEntry;
    unsigned int treeDepth = 0;
    quint64 readFailures = 0;
    // Links and link arrays read: only then has a tree links to resolve.
    quint64 linksRead = 0;

    static XAtomic<bool> flagDebug;
    static XAtomic<quint64> failurePauseMs;
};

} // namespace orv
