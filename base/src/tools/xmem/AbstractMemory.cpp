// AbstractMemory.cpp: the operations every block shares, written on mem() and length().
#include "orv/AbstractMemory.h"

#include "orv/Log.h"
#include "orv/XByteArray.h"
#include "tools/xmem/LongBlocks.h"

#include <QtCore/QBuffer>

#include <cstring>
#include <new>

namespace orv {

XAtomic<bool> AbstractMemory::atomicFlagDebug{false};

AbstractMemory::~AbstractMemory() = default;

bool AbstractMemory::setMem(void const *p, quint64 sz) {
    if (!p) {
        ppError("AbstractMemory::set_mem_file, pMem == null");
        return false;
    }
    if (sz > length()) {
        ppError("AbstractMemory::set_mem_file, sz > length(), $ > $", sz, length());
        return false;
    }
    if (sz)
        std::memcpy(mem(), p, sz);
    return true;
}

bool AbstractMemory::setString(char const *s, bool terminated) {
    if (!s) {
        ppError("AbstractMemory::setString, pMem == null");
        return false;
    }
    return setMem(s, std::strlen(s) + (terminated ? 1 : 0));
}

bool AbstractMemory::setQString(QString const &s) {
    QByteArray const latin1 = s.toLatin1();
    return setString(latin1.constData(), true);
}

void AbstractMemory::fill(char c) {
    if (mem() && length())
        std::memset(mem(), c, length());
}

void AbstractMemory::fillPattern(QString const &pattern) {
    QByteArray const bytes = pattern.toLatin1();
    if (!mem() || !length() || bytes.isEmpty())
        return;
    char *p = mem();
    quint64 const n = length(), step = static_cast<quint64>(bytes.size());
    for (quint64 pos = 0; pos < n; pos += step)
        std::memcpy(p + pos, bytes.constData(), qMin(step, n - pos));
}

int AbstractMemory::charAt(unsigned int pos) const {
    if (!mem()) {
        ppError("AbstractMemory::charAt, mem() == nullptr");
        return -1;
    }
    if (!length()) {
        ppError("AbstractMemory::charAt, length() == nullptr");
        return 0;
    }
    if (pos >= length()) {
        ppError("AbstractMemory::charAt, rnage problem, valid range 0-$, position to read:$",
                length() - 1, pos);
        return 0;
    }
    return static_cast<signed char>(mem()[pos]);
}

MD5 AbstractMemory::createMD5() const {
    if (!mem()) {
        ppError("AbstractMemory::createMD5, mem() == nullptr");
        return MD5();
    }
    if (!length()) {
        ppError("AbstractMemory::createMD5, length() == 0");
        return MD5();
    }
    return xmem::digestOf(mem(), length());
}

bool AbstractMemory::hasSameContents(AbstractMemory const &other) const {
    if (!mem()) {
        ppError("AbstractMemory::hasSameContents, mem() == nullptr");
        return false;
    }
    if (!length()) {
        ppError("AbstractMemory::hasSameContents, length() == 0");
        return false;
    }
    return createMD5() == other.createMD5();
}

void AbstractMemory::show(unsigned int space) const {
    ppDebug(space, toString(5, 5, false, true, false));
}

QString AbstractMemory::toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const {
    if (isError())
        return xprintF("AbstractMemory, error:$", errAsString());
    return bytesToString(head, tail, asc, hex, md5);
}

QString AbstractMemory::bytesToString(quint64 head, quint64 tail, bool asc, bool hex,
                                      bool md5) const {
    if (!mem())
        return QStringLiteral("mem() == nullptr");
    if (!length())
        return QStringLiteral("length() == 0");
    // Straight from the bytes, not a copy: dumps of large blocks stay cheap, and a
    // block past what a QByteArray holds is shown too.
    return xmem::dumpBytes(mem(), length(), head, tail, asc, hex, md5, 0, 0, QStringLiteral(","));
}

std::string AbstractMemory::toStdString(quint64 head, quint64 tail, bool asc, bool hex,
                                        bool md5) const {
    return toString(head, tail, asc, hex, md5).toStdString();
}

namespace {

char *copyOf(char const *p, quint64 n, char const *nullText, char const *emptyText) {
    if (!p) {
        ppError(nullText);
        return nullptr;
    }
    if (!n) {
        ppError(emptyText);
        return nullptr;
    }
    char *copy = new (std::nothrow) char[n];
    if (!copy) {
        ppError("AbstractMemory::memCopy, cannot allocate $ bytes", n);
        return nullptr;
    }
    std::memcpy(copy, p, n);
    return copy;
}

} // namespace

char const *AbstractMemory::memCopy() const {
    return copyOf(mem(), length(), "AbstractMemory::memCopy, mem() == nullptr",
                  "AbstractMemory::memCopy, length() == 0");
}

char *AbstractMemory::memCopy() {
    return copyOf(mem(), length(), "AbstractMemory::memCopy, mem() == nullptr",
                  "AbstractMemory::memCopy, length() == 0");
}

bool AbstractMemory::writeToQBuffer(QBuffer &buffer) const {
    if (!mem() || !length() || !xmem::fitsQByteArray(length(), "AbstractMemory::writeToQBuffer"))
        return false;
    buffer.setData(mem(), static_cast<int>(length()));
    return true;
}

} // namespace orv
