// XDataStream.cpp: the primitives of the tree's binary form: strings, counted big
// blocks and whole values, with every length read checked against what the device holds.
#include "orv/XDataStream.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "orv/XObject.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"
#include "orv/XVal.h"

#include <QtCore/QtEndian>

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

// Short string into out (at least 1 + SHORT_MAX bytes); the bytes used.
int encodeShort(QString const &text, char *out) {
    if (text.size() <= SHORT_MAX && isAscii(text)) {
        out[0] = static_cast<char>(text.size());
        copyAscii(text, out + 1);
        return 1 + text.size();
    }
    QByteArray utf8 = text.toUtf8();
    if (utf8.size() > SHORT_MAX) {
        ppWarning("XDataStream::write_short_UTF8_String, str.length() > 254, $ > 254, cut now",
                  text.length());
        utf8.truncate(SHORT_MAX);
    }
    out[0] = static_cast<char>(utf8.size());
    std::memcpy(out + 1, utf8.constData(), static_cast<size_t>(utf8.size()));
    return 1 + utf8.size();
}

// Type names repeat once per value: known ones come back as the shared constants, so
// that reading a value allocates no name.
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

void XDataStream::setUp() { setVersion(STREAM_VERSION); }

bool XDataStream::canRead(quint64 n) {
    QIODevice *const dev = device();
    quint64 const left = dev ? static_cast<quint64>(qMax<qint64>(dev->bytesAvailable(), 0)) : 0;
    if (n <= left)
        return true;
    ppError("XDataStream::canRead, $ bytes wanted, $ left", n, left);
    setStatus(ReadPastEnd);
    return false;
}

void XDataStream::writeCount(quint64 count) { *this << static_cast<qint64>(count); }

quint64 XDataStream::readCount() {
    qint64 count = 0;
    *this >> count;
    return static_cast<quint64>(count);
}

void XDataStream::write_UTF8_String(QString const &text) {
    char stack[8 + STACK_TEXT];
    if (text.size() <= STACK_TEXT && isAscii(text)) {
        qToBigEndian<qint64>(text.size(), stack);
        copyAscii(text, stack + 8);
        int const n = 8 + text.size();
        ORV_ASSERT(QDataStream::writeRawData(stack, n) == n);
        return;
    }
    QByteArray const utf8 = text.toUtf8();
    qToBigEndian<qint64>(utf8.size(), stack);
    ORV_ASSERT(QDataStream::writeRawData(stack, 8) == 8);
    ORV_ASSERT(QDataStream::writeRawData(utf8.constData(), utf8.size()) == utf8.size());
}

QString XDataStream::readString() {
    qint64 len = 0;
    *this >> len;
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
        QDataStream::readRawData(stack, n);
        return fromUtf8UpToZero(stack, static_cast<quint64>(n));
    }
    QByteArray bytes(n, Qt::Uninitialized);
    QDataStream::readRawData(bytes.data(), n);
    return fromUtf8UpToZero(bytes.constData(), static_cast<quint64>(n));
}

void XDataStream::write_short_UTF8_String(QString const &text) {
    char buffer[1 + SHORT_MAX];
    int const n = encodeShort(text, buffer);
    ORV_ASSERT(QDataStream::writeRawData(buffer, n) == n);
}

QString XDataStream::readShortString() {
    quint8 len = 0;
    *this >> len;
    if (len == 0 || !canRead(len))
        return QString();
    char buffer[256];
    QDataStream::readRawData(buffer, len);
    return fromUtf8UpToZero(buffer, len);
}

QString XDataStream::readQtString() {
    quint32 bytes = 0;
    *this >> bytes;
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
    QDataStream::readRawData(reinterpret_cast<char *>(text.data()), static_cast<int>(bytes));
    qFromBigEndian<quint16>(text.data(), text.size(), text.data());
    return text;
}

bool XDataStream::writeVal(XVal const &val) {
    // Category and type name go out in one piece: values are many and small.
    char head[2 + SHORT_MAX];
    head[0] = static_cast<char>(val.getCategory());
    int const n = 1 + encodeShort(val.getType(), head + 1);
    ORV_ASSERT(QDataStream::writeRawData(head, n) == n);
    if (types->writeVal(*this, val))
        return true;
    ppError("XDataStream::writeVal, type problems <$>, typeSupporter@$", val.getType(),
            types->getName());
    return false;
}

bool XDataStream::readVal(XVal &val) {
    quint8 category = 0;
    quint8 len = 0;
    *this >> category >> len;
    QString type;
    if (len && canRead(len)) {
        char buffer[256];
        QDataStream::readRawData(buffer, len);
        type = typeNameOf(buffer, static_cast<int>(qstrnlen(buffer, len)));
    }
    XVal fresh;
    // A category that contradicts the type would let a value be taken for an object of
    // another class, and a slot left without value (a tree type its supporter can't
    // make) would be taken for one: such a file is damaged.
    unsigned char const expected = types->isTreeType(type)              ? XVal::TREE
                                   : type == XTreeArray::str_XTreeArray ? XVal::ARRAY
                                   : type == XLink::str_XLink           ? XVal::LINK
                                                                        : XVal::SIMPLE;
    if (types->readVal(*this, type, fresh) && fresh.getPointer() && category == expected) {
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
    auto const piece = [&](quint64 offset, quint64 n) {
        int const size = static_cast<int>(n);
        return writing ? QDataStream::writeRawData(data + offset, size)
                       : QDataStream::readRawData(data + offset, size);
    };
    quint64 const chunk = 0x100000;
    quint64 done = 0;
    for (quint64 i = 0, pieces = len >> 20; i < pieces; ++i) {
        int const r = piece(done, chunk);
        if (r < 0) {
            ppError("XDataStream::$ failed", name);
            return -1;
        }
        done += static_cast<quint64>(r);
    }
    if (quint64 const rest = len & 0xFFFFF) {
        int const r = piece(done, rest);
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
