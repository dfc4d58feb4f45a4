// XMemoryWrapper.cpp: foreign memory as a random-access device and as a block.
#include "orv/XMemoryWrapper.h"

#include "orv/Log.h"
#include "orv/XByteArray.h"
#include "orv/XMem.h"
#include "tools/platform/OrvPlatform.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>

namespace orv {

XAtomic<bool> XMemoryWrapper::atomicFlagDebug(false);
XAtomic<quint64> XMemoryWrapper::counterReadAtEnd(0);

XMemoryWrapper::XMemoryWrapper() = default;

XMemoryWrapper::XMemoryWrapper(void *p, quint64 length, QIODevice::OpenMode mode) {
    char *mem = static_cast<char *>(p);
    ORV_ASSERT_PTR(mem);
    start = current = mem;
    len = length;
    openAtConstruction(mode);
}

XMemoryWrapper::XMemoryWrapper(XByteArray &bytes, QIODevice::OpenMode mode) {
    char *pMem = bytes.data();
    ORV_ASSERT_PTR(pMem);
    start = current = pMem;
    len = static_cast<quint64>(bytes.size());
    openAtConstruction(mode);
}

XMemoryWrapper::XMemoryWrapper(XMem &block, QIODevice::OpenMode mode) {
    if (!block.mem()) {
        ppError("XMemoryWrapper::XMemoryWrapper, pMem == nullptr");
        return;
    }
    start = current = block.mem();
    len = block.length();
    openAtConstruction(mode);
}

XMemoryWrapper::XMemoryWrapper(XMemoryWrapper &&other) : QIODevice(), AbstractMemory() {
    takeFrom(other);
}

XMemoryWrapper &XMemoryWrapper::operator=(XMemoryWrapper &&other) {
    if (this != &other) {
        close();
        takeFrom(other);
    }
    return *this;
}

XMemoryWrapper::~XMemoryWrapper() = default;

void XMemoryWrapper::takeFrom(XMemoryWrapper &other) {
    QIODevice::OpenMode const mode = other.openMode();
    qint64 const position = other.posMemory();
    start = other.start;
    current = other.current;
    len = other.len;
    releaseBehind = other.releaseBehind;
    released = other.released;
    other.close();
    other.start = other.current = nullptr;
    other.len = 0;
    if (mode != QIODevice::NotOpen && open(mode))
        seek(position);
}

void XMemoryWrapper::openAtConstruction(QIODevice::OpenMode mode) {
    if (mode != QIODevice::NotOpen && !open(mode))
        ppError("XMemoryWrapper::XMemoryWrapper, cannot open device, err:$", errorString());
}

bool XMemoryWrapper::open(QIODevice::OpenMode mode) {
    return QIODevice::open(mode | QIODevice::Unbuffered);
}

bool XMemoryWrapper::seek(qint64 position) {
    if (!isOpen()) {
        ppError("XMemoryWrapper::seek, device not open");
        return false;
    }
    current = start + position;
    return QIODevice::seek(position);
}

bool XMemoryWrapper::atEnd() const {
    if (atomicFlagDebug)
        ppDebug("XMemoryWrapper::atEnd, restSize:$", restSize());
    return restSize() <= 0;
}

bool XMemoryWrapper::reset() {
    if (!isOpen()) {
        ppError("XMemoryWrapper::reset_thumb, device not open");
        return false;
    }
    current = start;
    return QIODevice::reset();
}

qint64 XMemoryWrapper::bytesAvailable() const {
    if (atomicFlagDebug)
        ppDebug("XMemoryWrapper::bytesAvailable, restSize:$", restSize());
    return restSize();
}

qint64 XMemoryWrapper::readData(char *data, qint64 maxSize) {
    ORV_ASSERT_PTR(data);
    qint64 const rest = restSize();
    if (rest <= 0) {
        ppError("XMemoryWrapper::readData, EOF");
        counterReadAtEnd.fetchAdd(1);
        return -1;
    }
    qint64 const n = qMin(maxSize, rest);
    std::memcpy(data, current, static_cast<size_t>(n));
    current += n;
    releasePassedPages(current);
    return n;
}

qint64 XMemoryWrapper::writeData(char const *data, qint64 n) {
    qint64 const rest = restSize();
    if (n > rest) {
        ppError("XMemoryWrapper::writeData, want to write:$ bytes but only:$ free bytes left", n,
                rest);
        return -1;
    }
    std::memcpy(current, data, static_cast<size_t>(n));
    current += n;
    releasePassedPages(current);
    return n;
}

void XMemoryWrapper::releasePassedPages(char *upTo) {
    qint64 const chunk = 1 << 20;
    if (!releaseBehind)
        return;
    if (released < start || released > upTo)
        released = start;
    if (upTo - released >= chunk)
        released = platform::releaseMappedPages(released, static_cast<quint64>(upTo - released));
}

QString XMemoryWrapper::readString() { return QString(readAll()); }

qint64 XMemoryWrapper::writeString(QString const &text) { return write(text.toUtf8()); }

XByteArray XMemoryWrapper::createByteArray() const {
    if (!isOpen()) {
        ppError("XMemoryWrapper::createByteArray, XMemoryWrapper is not open!");
        return XByteArray();
    }
    if (isError()) {
        ppError("XMemoryWrapper::createByteArray, error: '$'", errAsString());
        return XByteArray();
    }
    if (!mem()) {
        ppError("XMemoryWrapper::createByteArray, mem() == nullptr");
        return XByteArray();
    }
    if (!length()) {
        ppError("XMemoryWrapper::createByteArray, length() == 0");
        return XByteArray();
    }
    if (posMemory() == 0) {
        ppError("XMemoryWrapper::createByteArray, posMemory() == 0");
        return XByteArray();
    }
    if (!xmem::fitsQByteArray(posMemory(), "XMemoryWrapper::createByteArray"))
        return XByteArray();
    return XByteArray(start, static_cast<int>(posMemory()));
}

MD5 XMemoryWrapper::createMD5() const {
    if (!mem()) {
        ppError("XMemoryWrapper::createMD5, mem() == nullptr");
        return MD5();
    }
    if (!length()) {
        ppError("XMemoryWrapper::createMD5, length() == 0");
        return MD5();
    }
    return xmem::digestOf(start, len);
}

QString XMemoryWrapper::toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const {
    if (!isOpen())
        return QStringLiteral("XMemoryWrapper is not open!");
    if (isError())
        return xprintF("XMemoryWrapper, error:$", errAsString());
    if (!mem())
        return QStringLiteral("XMemoryWrapper, mem() == nullptr");
    if (!length())
        return QStringLiteral("XMemoryWrapper, length() == 0");
    return bytesToString(head, tail, asc, hex, md5);
}

} // namespace orv
