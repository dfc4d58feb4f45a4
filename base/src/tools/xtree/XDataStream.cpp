// XDataStream.cpp: the primitives of the tree's binary form: strings, counted big
// blocks and whole values, with every length read checked against what the device holds.
#include "orv/XDataStream.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XNullDevice.h"
#include "orv/XObject.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"
#include "orv/XVal.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace orv {

XAtomic<bool> XDataStream::atomicConsiderByteOrder(false);
XAtomic<bool> XDataStream::flagDebug(false);
XAtomic<quint64> XDataStream::failurePauseMs(1000);

namespace {

int const STREAM_VERSION = 17; // Qt_5_6
int const SHORT_MAX = 254;
// Strings up to this many bytes go through a buffer on the stack.
int const STACK_TEXT = 256;
// Each level of nesting costs a few frames; deeper trees are refused as damaged long
// before the stack could run out, also on small worker-thread stacks.
unsigned int const MAX_TREE_DEPTH = 1000;

bool isAscii(QString const &text) {
    for (QChar c : text)
        if (c.unicode() >= 0x80)
            return false;
    return true;
}

void copyAscii(QString const &text, char *out) {
    QChar const *in = text.constData();
    for (int i = 0, n = text.size(); i < n; ++i)
        out[i] = static_cast<char>(in[i].unicode());
}

// The readers' rule: the text ends at the first 0 byte.
QString fromUtf8UpToZero(char const *bytes, quint64 len) {
    void const *zero = std::memchr(bytes, 0, len);
    auto const n = zero ? static_cast<char const *>(zero) - bytes : static_cast<qint64>(len);
    return QString::fromUtf8(bytes, static_cast<int>(n));
}

// Short string into out (at least 1 + SHORT_MAX bytes); the bytes used. Longer text is
// cut, maybe inside a character, and cut says so.
int encodeShort(QString const &text, char *out, bool &cut) {
    cut = false;
    if (text.size() <= SHORT_MAX && isAscii(text)) {
        out[0] = static_cast<char>(text.size());
        copyAscii(text, out + 1);
        return 1 + text.size();
    }
    QByteArray utf8 = text.toUtf8();
    if (utf8.size() > SHORT_MAX) {
        cut = true;
        utf8.truncate(SHORT_MAX);
    }
    out[0] = static_cast<char>(utf8.size());
    std::memcpy(out + 1, utf8.constData(), static_cast<size_t>(utf8.size()));
    return 1 + utf8.size();
}

void warnCut(QString const &text) {
    ppWarning("XDataStream::write_short_UTF8_String, str.length() > 254, $ > 254, cut now",
              text.length());
}

// A name read from a stream; the built-in ones come back as the shared constants, so
// that the values read share their name.
QString typeNameOf(char const *bytes, int n) {
    static std::vector<QString> const known = [] {
        std::vector<QString> names;
#define ORV_KNOWN_NAME(T, N) names.push_back(XTypeName<T>::name());
        ORV_XTREE_SIMPLE_TYPES(ORV_KNOWN_NAME)
#undef ORV_KNOWN_NAME
        names.push_back(XTypeName<XTree>::name());
        names.push_back(XTypeName<XTreeArray>::name());
        names.push_back(XTypeName<XLink>::name());
        return names;
    }();
    for (QString const &name : known)
        if (name.size() == n && QLatin1String(bytes, n) == name)
            return name;
    return QString::fromUtf8(bytes, n);
}

} // namespace

XDataStream::XDataStream(XTypeSupporter const &types) : types(&types) { setUp(); }

XDataStream::XDataStream(QIODevice *device, XTypeSupporter const &types)
    : QDataStream(device), types(&types) {
    setUp();
}

XDataStream::XDataStream(QByteArray *bytes, QIODevice::OpenMode mode, XTypeSupporter const &types)
    : QDataStream(bytes, mode), types(&types) {
    setUp();
}

XDataStream::XDataStream(QByteArray const &bytes, XTypeSupporter const &types)
    : QDataStream(bytes), types(&types) {
    setUp();
}

void XDataStream::setUp() {
    setVersion(STREAM_VERSION);
    QIODevice *const dev = device();
    block = dynamic_cast<XMemoryWrapper *>(dev);
    counter = dynamic_cast<XNullDevice *>(dev);
    // A closed block goes the QIODevice way, which reports it.
    blockReads = block && block->isReadable();
    blockWrites = block && block->isWritable();
    appendTarget = nullptr;
}

void XDataStream::setDevice(QIODevice *device) {
    QDataStream::setDevice(device);
    setUp();
}

template <typename Match> XDataStream::TypeEntry *XDataStream::findTypeEntry(Match const &match) {
    unsigned int const used = qMin(typeEntriesUsed, TYPE_ENTRIES);
    if (!used)
        return nullptr;
    TypeEntry &last = typeEntries[lastTypeEntry];
    if (match(last))
        return &last;
    unsigned int found = last.next;
    if (found >= used || !match(typeEntries[found])) {
        found = 0;
        while (found < used && !match(typeEntries[found]))
            ++found;
        if (found == used)
            return nullptr;
        last.next = static_cast<unsigned char>(found);
    }
    lastTypeEntry = found;
    return &typeEntries[found];
}

XDataStream::TypeEntry &XDataStream::findTypeEntry(QString const &type) {
    if (TypeEntry *entry =
            findTypeEntry([&](TypeEntry const &e) { return e.name.isSharedWith(type); }))
        return *entry;
    if (TypeEntry *entry = findTypeEntry([&](TypeEntry const &e) { return e.name == type; }))
        return *entry;
    return addTypeEntry(type, nullptr, 0);
}

XDataStream::TypeEntry &XDataStream::typeEntry(char const *utf8, int n) {
    if (TypeEntry *entry = findTypeEntry([&](TypeEntry const &e) {
            return e.shortSize == n + 1 && std::memcmp(e.shortForm() + 1, utf8, n) == 0;
        }))
        return *entry;
    return addTypeEntry(typeNameOf(utf8, n), utf8, n);
}

XDataStream::TypeEntry &XDataStream::addTypeEntry(QString const &type, char const *utf8, int n) {
    TypeEntry &entry = looseEntry;
    entry.name = type;
    entry.handlers = XFunctionMapper::instance().find(type);
    // A category that contradicts the type would let a value be taken for an object of
    // another class: readVal refuses it.
    entry.category = types->isTreeType(type)              ? XVal::TREE
                     : type == XTreeArray::str_XTreeArray ? XVal::ARRAY
                     : type == XLink::str_XLink           ? XVal::LINK
                                                          : XVal::SIMPLE;
    // A name the writer cuts is not kept, so that each value gets its warning, as it
    // always did; nor is a name read whose bytes don't come back (no valid UTF-8).
    bool cut = false;
    entry.shortSize = static_cast<unsigned char>(encodeShort(type, entry.head + 1, cut));
    if (cut && !utf8)
        warnCut(type);
    bool const keep =
        !cut &&
        (!utf8 || (entry.shortSize == n + 1 && std::memcmp(entry.shortForm() + 1, utf8, n) == 0));
    if (!keep)
        return entry;
    unsigned int const slot = typeEntriesUsed++ % TYPE_ENTRIES;
    typeEntries[lastTypeEntry].next = static_cast<unsigned char>(slot);
    lastTypeEntry = slot;
    return typeEntries[slot] = entry;
}

quint64 XDataStream::bytesLeft() const {
    if (blockReads)
        return static_cast<quint64>(qMax<qint64>(block->restSize(), 0));
    QIODevice *const dev = device();
    return dev ? static_cast<quint64>(qMax<qint64>(dev->bytesAvailable(), 0)) : 0;
}

bool XDataStream::putBytes(char const *data, quint64 n) {
    if (status() != Ok)
        return false;
    if (appendTarget) {
        appendTarget->append_raw_data(data, n);
        return true;
    }
    if (blockWrites) {
        char *const to = block->step(n);
        if (!to) {
            setStatus(WriteFailed);
            return false;
        }
        std::memcpy(to, data, n);
        return true;
    }
    if (counter) {
        counter->account(data, n);
        return true;
    }
    int const size = static_cast<int>(n);
    return QDataStream::writeRawData(data, size) == size;
}

qint64 XDataStream::getBytes(char *data, quint64 n) {
    qint64 got = 0;
    if (blockReads) {
        // Like a device read: what is left, then zeros.
        quint64 const take = qMin<quint64>(n, bytesLeft());
        if (take)
            std::memcpy(data, block->step(take), take);
        got = take ? static_cast<qint64>(take) : -1;
    } else {
        got = QDataStream::readRawData(data, static_cast<int>(n));
    }
    if (got != static_cast<qint64>(n)) {
        std::memset(data + qMax<qint64>(got, 0), 0, n - static_cast<quint64>(qMax<qint64>(got, 0)));
        setStatus(ReadPastEnd);
    }
    return got;
}

namespace {

// Numbers in the stream's byte order, as QDataStream writes them.
template <typename U> void toStreamOrder(U bits, char *out, QDataStream::ByteOrder order) {
    if (order == QDataStream::BigEndian)
        qToBigEndian(bits, out);
    else
        qToLittleEndian(bits, out);
}

template <typename U> U fromStreamOrder(char const *in, QDataStream::ByteOrder order) {
    return order == QDataStream::BigEndian ? qFromBigEndian<U>(in) : qFromLittleEndian<U>(in);
}

} // namespace

template <typename T> void XDataStream::writeNumber(T value) {
    if constexpr (std::is_same_v<T, bool>) {
        writeNumber<qint8>(value ? 1 : 0);
    } else if constexpr (std::is_same_v<T, float>) {
        if (floatingPointPrecision() == DoublePrecision)
            return writeNumber<double>(value);
        quint32 bits;
        std::memcpy(&bits, &value, 4);
        char bytes[4];
        toStreamOrder(bits, bytes, byteOrder());
        putBytes(bytes, 4);
    } else if constexpr (std::is_floating_point_v<T>) {
        quint64 bits;
        std::memcpy(&bits, &value, 8);
        char bytes[8];
        toStreamOrder(bits, bytes, byteOrder());
        putBytes(bytes, 8);
    } else {
        char bytes[sizeof(T)];
        toStreamOrder(value, bytes, byteOrder());
        putBytes(bytes, sizeof(T));
    }
}

template <typename T> void XDataStream::readNumber(T &value) {
    if constexpr (std::is_same_v<T, bool>) {
        qint8 byte = 0;
        readNumber(byte);
        value = byte != 0;
    } else if constexpr (std::is_same_v<T, float>) {
        if (floatingPointPrecision() == DoublePrecision) {
            double d = 0;
            readNumber(d);
            value = static_cast<float>(d);
            return;
        }
        char bytes[4];
        getBytes(bytes, 4);
        quint32 const bits = fromStreamOrder<quint32>(bytes, byteOrder());
        std::memcpy(&value, &bits, 4);
    } else if constexpr (std::is_floating_point_v<T>) {
        char bytes[8];
        getBytes(bytes, 8);
        quint64 const bits = fromStreamOrder<quint64>(bytes, byteOrder());
        std::memcpy(&value, &bits, 8);
    } else {
        char bytes[sizeof(T)];
        getBytes(bytes, sizeof(T));
        value = fromStreamOrder<T>(bytes, byteOrder());
    }
}

#define ORV_INSTANTIATE_NUMBER(T)                                                                  \
    template ORV_EXPORT void XDataStream::writeNumber<T>(T);                                       \
    template ORV_EXPORT void XDataStream::readNumber<T>(T &);
ORV_INSTANTIATE_NUMBER(bool)
ORV_INSTANTIATE_NUMBER(qint8)
ORV_INSTANTIATE_NUMBER(quint8)
ORV_INSTANTIATE_NUMBER(qint16)
ORV_INSTANTIATE_NUMBER(quint16)
ORV_INSTANTIATE_NUMBER(qint32)
ORV_INSTANTIATE_NUMBER(quint32)
ORV_INSTANTIATE_NUMBER(qint64)
ORV_INSTANTIATE_NUMBER(quint64)
ORV_INSTANTIATE_NUMBER(float)
ORV_INSTANTIATE_NUMBER(double)
#undef ORV_INSTANTIATE_NUMBER

bool XDataStream::canRead(quint64 n) {
    quint64 const left = bytesLeft();
    if (n <= left)
        return true;
    ppError("XDataStream::canRead, $ bytes wanted, $ left", n, left);
    setStatus(ReadPastEnd);
    return false;
}

void XDataStream::writeCount(quint64 count) { writeNumber(static_cast<qint64>(count)); }

quint64 XDataStream::readCount() {
    qint64 count = 0;
    readNumber(count);
    return static_cast<quint64>(count);
}

void XDataStream::write_UTF8_String(QString const &text) {
    char stack[8 + STACK_TEXT];
    if (text.size() <= STACK_TEXT && isAscii(text)) {
        qToBigEndian<qint64>(text.size(), stack);
        copyAscii(text, stack + 8);
        ORV_ASSERT(putBytes(stack, 8 + static_cast<quint64>(text.size())));
        return;
    }
    QByteArray const utf8 = text.toUtf8();
    qToBigEndian<qint64>(utf8.size(), stack);
    ORV_ASSERT(putBytes(stack, 8));
    ORV_ASSERT(putBytes(utf8.constData(), static_cast<quint64>(utf8.size())));
}

QString XDataStream::readString() {
    qint64 len = 0;
    readNumber(len);
    if (len < 0 || len > std::numeric_limits<int>::max()) {
        ppError("XDataStream::readString, length:$ is no string's", len);
        setStatus(ReadCorruptData);
        return QString();
    }
    if (len == 0 || !canRead(static_cast<quint64>(len)))
        return QString();
    int const n = static_cast<int>(len);
    if (n <= STACK_TEXT) {
        char stack[STACK_TEXT];
        getBytes(stack, static_cast<quint64>(n));
        return fromUtf8UpToZero(stack, static_cast<quint64>(n));
    }
    QByteArray bytes(n, Qt::Uninitialized);
    getBytes(bytes.data(), static_cast<quint64>(n));
    return fromUtf8UpToZero(bytes.constData(), static_cast<quint64>(n));
}

void XDataStream::write_short_UTF8_String(QString const &text) {
    char buffer[1 + SHORT_MAX];
    bool cut = false;
    int const n = encodeShort(text, buffer, cut);
    if (cut)
        warnCut(text);
    ORV_ASSERT(putBytes(buffer, static_cast<quint64>(n)));
}

QString XDataStream::readShortString() {
    quint8 len = 0;
    readNumber(len);
    if (len == 0 || !canRead(len))
        return QString();
    char buffer[256];
    getBytes(buffer, len);
    return fromUtf8UpToZero(buffer, len);
}

QString XDataStream::readQtString() {
    quint32 bytes = 0;
    readNumber(bytes);
    if (bytes == 0xFFFFFFFFu)
        return QString();
    if (bytes & 1u) {
        ppError("XDataStream::readQtString, odd length:$", bytes);
        setStatus(ReadCorruptData);
        return QString();
    }
    if (!canRead(bytes))
        return QString();
    QString text(static_cast<int>(bytes / 2), Qt::Uninitialized);
    getBytes(reinterpret_cast<char *>(text.data()), bytes);
    qFromBigEndian<quint16>(text.data(), text.size(), text.data());
    return text;
}

bool XDataStream::writeVal(XVal const &val) {
    // Category and type name go out in one piece: values are many and small.
    TypeEntry &entry = typeEntry(val.getType());
    entry.head[0] = static_cast<char>(val.getCategory());
    ORV_ASSERT(putBytes(entry.head, 1 + static_cast<quint64>(entry.shortSize)));
    return writePayload(val);
}

bool XDataStream::writeEntry(QString const &key, XVal const &val) {
    int const n = key.size();
    if (n > STACK_TEXT || !isAscii(key)) {
        write_UTF8_String(key);
        return writeVal(val);
    }
    // The key, the category and the type name in one piece, as a tree's entries are many.
    TypeEntry &entry = typeEntry(val.getType());
    char piece[8 + STACK_TEXT + sizeof entry.head];
    qToBigEndian<qint64>(n, piece);
    copyAscii(key, piece + 8);
    char *const head = piece + 8 + n;
    head[0] = static_cast<char>(val.getCategory());
    // Names are short: a copy of a fixed size is a few moves, one of the name's size a call.
    size_t constexpr usual = 32;
    if (entry.shortSize <= usual)
        std::memcpy(head + 1, entry.shortForm(), usual);
    else
        std::memcpy(head + 1, entry.shortForm(), entry.shortSize);
    ORV_ASSERT(putBytes(piece, static_cast<quint64>(head + 1 + entry.shortSize - piece)));
    return writePayload(val);
}

bool XDataStream::writePayload(XVal const &val) {
    if (types->writeVal(*this, val))
        return true;
    ppError("XDataStream::writeVal, type problems <$>, typeSupporter@$", val.getType(),
            types->getName());
    return false;
}

bool XDataStream::readVal(XVal &val) {
    quint8 category = 0;
    quint8 len = 0;
    readNumber(category);
    readNumber(len);
    // Copies: reading the value can reuse the entry for names met below it.
    QString type;
    unsigned char expected = XVal::SIMPLE;
    if (len && canRead(len)) {
        char buffer[256];
        getBytes(buffer, len);
        TypeEntry const &entry = typeEntry(buffer, static_cast<int>(qstrnlen(buffer, len)));
        type = entry.name;
        expected = entry.category;
    }
    XVal fresh;
    // A slot left without value (a tree type its supporter can't make) would be taken
    // for one: such a file is damaged, as is one whose category contradicts the type.
    if (types->readVal(*this, type, fresh) && fresh.getPointer() && category == expected) {
        XTreeArray const *array = category == XVal::ARRAY ? fresh.value<XTreeArray>() : nullptr;
        if (category == XVal::LINK || (array && array->isCategoryLink()))
            ++linksRead;
        val = std::move(fresh);
        val.setCategory(category);
        return true;
    }
    ppError("XDataStream::readVal, type problems <$>, typeSupporter@$", type, types->getName());
    // Only the first failure of a stream pauses: a damaged file with thousands of bad
    // values must not hold its reader for hours.
    if (++readFailures == 1 && failurePauseMs.load())
        xSleep(failurePauseMs.load());
    return false;
}

qint64 XDataStream::bigTransfer(char *data, quint64 len, bool writing) {
    char const *const name = writing ? "writeBigData" : "readBigData";
    auto const piece = [&](quint64 offset, quint64 n) -> qint64 {
        if (writing)
            return putBytes(data + offset, n) ? static_cast<qint64>(n) : -1;
        return getBytes(data + offset, n);
    };
    quint64 const chunk = 0x100000;
    quint64 done = 0;
    for (quint64 i = 0, pieces = len >> 20; i < pieces; ++i) {
        qint64 const r = piece(done, chunk);
        if (r < 0) {
            ppError("XDataStream::$ failed", name);
            return -1;
        }
        done += static_cast<quint64>(r);
    }
    if (quint64 const rest = len & 0xFFFFF) {
        qint64 const r = piece(done, rest);
        if (r < 0) {
            ppError("XDataStream::$,REST failed", name);
            return -1;
        }
        done += static_cast<quint64>(r);
    }
    if (done != len)
        ppError(writing ? "XDataStream::writeBigData, bytesWritten:$, len:$"
                        : "XDataStream::readBigData, bytesRead:$, len:$",
                done, len);
    return static_cast<qint64>(done);
}

qint64 XDataStream::writeBigData(char const *pData, quint64 len) {
    ORV_ASSERT_PTR(pData);
    return bigTransfer(const_cast<char *>(pData), len, true);
}

qint64 XDataStream::writeBigData(XMem const &mem) { return writeBigData(mem.mem(), mem.length()); }

qint64 XDataStream::readBigData(char *pData, quint64 len) {
    ORV_ASSERT_PTR(pData);
    return bigTransfer(pData, len, false);
}

XMem XDataStream::readBigData(quint64 len) {
    if (!canRead(len))
        return XMem();
    XMem block(len);
    if (len)
        readBigData(block.mem(), len);
    return block;
}

qint64 XDataStream::skipBigData(quint64 len) {
    quint64 const chunk = 0x40000000;
    quint64 done = 0;
    for (quint64 i = 0, pieces = len >> 30; i < pieces; ++i) {
        int const r = QDataStream::skipRawData(static_cast<int>(chunk));
        if (r < 0) {
            ppError("XDataStream::skipBigData failed");
            return -1;
        }
        done += static_cast<quint64>(r);
    }
    if (quint64 const rest = len & 0x3FFFFFFF) {
        int const r = QDataStream::skipRawData(static_cast<int>(rest));
        if (r < 0) {
            ppError("XDataStream::skipBigData,REST failed");
            return -1;
        }
        done += static_cast<quint64>(r);
    }
    if (done != len)
        ppError("XDataStream::skipBigData, bytesSkipped:$, len:$", done, len);
    return static_cast<qint64>(done);
}

int XDataStream::readRawData(char *s, int len) {
    ppError("XDataStream::readRawData, should NOT be here, len:$", len);
    return QDataStream::readRawData(s, len);
}

int XDataStream::writeRawData(char const *s, int len) {
    ppError("XDataStream::writeRawData, should NOT be here, len:$", len);
    return QDataStream::writeRawData(s, len);
}

int XDataStream::skipRawData(int len) {
    ppError("XDataStream::skipRawData, should NOT be here, len:$", len);
    return QDataStream::skipRawData(len);
}

bool XDataStream::enterTree() {
    if (treeDepth >= MAX_TREE_DEPTH) {
        ppError("XTree::readFromStream, trees nested deeper than $ levels", MAX_TREE_DEPTH);
        setStatus(ReadCorruptData);
        return false;
    }
    ++treeDepth;
    return true;
}

} // namespace orv
