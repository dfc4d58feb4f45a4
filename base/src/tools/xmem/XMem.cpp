// XMem.cpp: construction, assignment and block numbers, growth, raw data and byte access.
#include "orv/XMem.h"

#include "orv/Log.h"
#include "orv/XNullDevice.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>
#include <functional>

namespace orv {

namespace {

// Every block gets a number of its own; the old value of the counter is the number.
XAtomic<unsigned int> counterBlocks{0};

unsigned int nextBlockNumber() { return counterBlocks.fetchAdd(1); }

} // namespace

XMem::XMem() : counterMemBlock(nextBlockNumber()) {
    if (isDebug())
        ppDebug("XMem::XMem ( sz:$ )", 0);
}

XMem::XMem(quint64 sz, int fill) : counterMemBlock(nextBlockNumber()) {
    if (isDebug())
        ppDebug("XMem::XMem ( sz:$ )", sz);
    if (sz)
        storage.assign(sz, fill >= 0 ? static_cast<char>(fill) : '\0');
}

XMem::XMem(char const *text) : counterMemBlock(nextBlockNumber()) { setString(text); }

XMem::XMem(std::string const &text) : counterMemBlock(nextBlockNumber()) {
    setString(text.c_str());
}

XMem::XMem(QString const &text) : counterMemBlock(nextBlockNumber()) {
    setString(text.toUtf8().constData());
}

XMem::XMem(QByteArray const &bytes) : counterMemBlock(nextBlockNumber()) {
    set_raw_data(bytes.constData(), static_cast<quint64>(bytes.size()));
}

XMem::XMem(XMem const &other)
    : AbstractMemory(), storage(other.storage), counterMemBlock(nextBlockNumber()) {
    if (isDebug())
        ppDebug("XMem::XMem ( sz:$ )", size());
}

XMem::XMem(XMem &&other) noexcept
    : AbstractMemory(), storage(std::move(other.storage)), counterMemBlock(other.counterMemBlock) {
    bitFlags() = other.bitFlags().flags();
    other.clearError();
}

XMem::~XMem() = default;

XMem &XMem::operator=(XMem const &other) {
    if (isDebug())
        ppDebug("XMem::operator=, sz:$", other.size());
    // vector's copy assignment reuses the capacity when the bytes fit in it.
    storage = other.storage;
    counterMemBlock = nextBlockNumber();
    return *this;
}

XMem &XMem::operator=(XMem &&other) noexcept {
    if (this == &other)
        return *this;
    storage = std::move(other.storage);
    counterMemBlock = other.counterMemBlock;
    bitFlags() = other.bitFlags().flags();
    other.clearError();
    return *this;
}

XMem &XMem::operator=(char const *text) {
    setString(text);
    return *this;
}

XMem &XMem::operator=(std::string const &text) {
    setString(text.c_str());
    return *this;
}

XMem &XMem::operator=(QString const &text) {
    setString(text);
    return *this;
}

XMem &XMem::operator=(QByteArray const &bytes) {
    set_raw_data(bytes);
    return *this;
}

void XMem::_assign(XMem const &other) {
    if (isDebug())
        ppDebug("XMem::_assign");
    storage = other.storage;
    bitFlags() = other.bitFlags().flags();
    counterMemBlock = other.counterMemBlock;
}

XMem XMem::copy() {
    XMem twin;
    twin._assign(*this);
    // The twin carries this block's identity on: it is this block that is renumbered.
    counterMemBlock = nextBlockNumber();
    return twin;
}

void XMem::resizeStorage(quint64 sz) { storage.resize(sz); }

void XMem::reAlloc(quint64 sz, int fill) {
    if (isDebug())
        ppDebug("XMem::reAlloc, sz:$", sz);
    resizeStorage(sz);
    // Only -1 means "no fill" here, unlike the constructor: -2 fills with 0xFE.
    if (fill != -1 && sz != 0)
        std::memset(storage.data(), static_cast<char>(fill), sz);
}

bool XMem::setMem(void const *pMem, quint64 sz) {
    if (isDebug())
        ppDebug("XMem::setMem, sz:$", sz);
    if (!pMem) {
        ppError("AbstractMemory::setMem, pMem == null");
        return false;
    }
    set_raw_data(pMem, sz);
    return true;
}

void XMem::set_raw_data(QByteArray const &bytes) {
    set_raw_data(bytes.constData(), static_cast<quint64>(bytes.size()));
}

void XMem::set_raw_data(void const *pMem, quint64 sz) {
    ORV_ASSERT_PTR(pMem);
    if (isDebug())
        ppDebug("XMem::set_raw_data, sz:$", sz);
    resizeStorage(sz);
    if (sz)
        std::memmove(storage.data(), pMem, sz);
}

void XMem::append_raw_data(QByteArray const &bytes) {
    append_raw_data(bytes.constData(), static_cast<quint64>(bytes.size()));
}

void XMem::append_raw_data(void const *ppMem, quint64 sz) {
    ORV_ASSERT_PTR(ppMem);
    if (isDebug())
        ppDebug("XMem::append_raw_data, sz:$", sz);
    char const *src = static_cast<char const *>(ppMem);
    char const *begin = storage.data();
    std::less_equal<char const *> const notAfter;
    if (begin && notAfter(begin, src) && std::less<char const *>()(src, begin + storage.size())) {
        // Bytes of this block itself: growing may move them, so go by offset.
        quint64 const offset = static_cast<quint64>(src - begin), old = storage.size();
        resizeStorage(old + sz);
        std::memmove(storage.data() + old, storage.data() + offset, sz);
        return;
    }
    storage.insert(storage.end(), src, src + sz);
}

bool XMem::charAtPos(char &out, quint64 pos) {
    if (!mem() || isEmpty()) {
        setOrvError(ORV_ERROR_NOT_INITIALIZED);
        return false;
    }
    if (pos >= size()) {
        setOrvError(ORV_ERROR_OUT_OF_RANGE);
        return false;
    }
    out = storage[pos];
    return true;
}

bool XMem::setCharAtPos(char c, quint64 pos) {
    if (!mem()) {
        setOrvError(ORV_ERROR_NOT_INITIALIZED);
        return false;
    }
    if (pos >= size()) {
        setOrvError(ORV_ERROR_OUT_OF_RANGE);
        return false;
    }
    storage[pos] = c;
    return true;
}

void XMem::clear() {
    clearError();
    storage.clear();
}

XByteArray XMem::createByteArray() const {
    if (!mem()) {
        ppError("XMem::createByteArray, mem() == nullptr");
        return XByteArray();
    }
    if (isEmpty()) {
        ppError("XMem::createByteArray, length() == 0");
        return XByteArray();
    }
    if (!xmem::fitsQByteArray(size(), "XMem::createByteArray"))
        return XByteArray();
    return XByteArray(mem(), static_cast<int>(size()));
}

XRamInfo XMem::createRamInfo() const { return XRamInfo::ramInfoFromRawMemory(mem(), size()); }

QString XMem::toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const {
    return bytesToString(head, tail, asc, hex, md5);
}

} // namespace orv
