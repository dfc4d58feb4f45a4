// XSharedMemory.cpp: block copies in and out of a shared segment, always under its lock.
#include "orv/XSharedMemory.h"

#include "orv/Log.h"
#include "orv/XByteArray.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>

namespace orv {

XSharedMemory::XSharedMemory() {
    if (isDebug())
        ppDebug("XSharedMemory::XSharedMemory");
}

XSharedMemory::XSharedMemory(QString const &key, QObject *parent) : QSharedMemory(key, parent) {
    if (isDebug())
        ppDebug("XSharedMemory::XSharedMemory, key:'$'", key);
}

XSharedMemory::~XSharedMemory() {
    if (isAttached()) {
        if (isDebug())
            ppDebug("XSharedMemory::~XSharedMemory, detach");
        detach();
    } else if (isDebug()) {
        ppDebug("XSharedMemory::~XSharedMemory");
    }
}

XByteArray XSharedMemory::createByteArray() const {
    if (!isAttached()) {
        ppError("XSharedMemory::createByteArray, not attached !");
        return XByteArray();
    }
    if (error() != QSharedMemory::NoError) {
        ppError("XSharedMemory::createByteArray, shared error:$", errorString());
        return XByteArray();
    }
    // Locking changes the segment's state but not its bytes.
    auto &self = const_cast<XSharedMemory &>(*this);
    XLockerSharedMem locker(self);
    return XByteArray(mem(), size());
}

bool XSharedMemory::createMem(unsigned int size, QSharedMemory::AccessMode mode) {
    if (!xmem::fitsQt(size, xmem::MAX_QSHAREDMEMORY_LENGTH, "QSharedMemory",
                      "XSharedMemory::createMem"))
        return false;
    return create(static_cast<int>(size), mode);
}

bool XSharedMemory::readMem(AbstractMemory &target) {
    if (!isAttached()) {
        ppError("XSharedMemory::readMem, NOT ATTACHED !, size:$", size());
        return false;
    }
    if (isDebug())
        ppDebug("XSharedMemory::readMem, size:$", size());
    XLockerSharedMem locker(*this);
    if (data() == nullptr) {
        ppError("XSharedMemory::readMem, pData == nullptr !");
        return false;
    }
    return target.setMem(data(), length());
}

bool XSharedMemory::writeMem(AbstractMemory &source) {
    if (!isAttached()) {
        ppError("XSharedMemory::writeMem, NOT ATTACHED !");
        return false;
    }
    if (source.length() > length()) {
        ppError("XSharedMemory::writeMem, xmem.size() > sharedMem.Size(), $ > $", source.length(),
                size());
        return false;
    }
    XLockerSharedMem locker(*this);
    std::memcpy(data(), source.mem(), source.length());
    return true;
}

bool XSharedMemory::writeCreateMem(AbstractMemory &source) {
    if (source.length() == 0 || !xmem::fitsQt(source.length(), xmem::MAX_QSHAREDMEMORY_LENGTH,
                                              "QSharedMemory", "XSharedMemory::writeCreateMem"))
        return false;
    if (!create(static_cast<int>(source.length()), QSharedMemory::ReadWrite)) {
        ppError("XSharedMemory::writeCreateMem, cannot create_growable shared memory $ bytes, "
                "err:$",
                source.length(), errorString());
        return false;
    }
    XLockerSharedMem locker(*this);
    std::memcpy(data(), source.mem(), source.length());
    if (isDebug())
        ppDebug("XSharedMemory::writeCreateMem, size is now:$", size());
    return true;
}

QString XSharedMemory::toString() const {
    QString text = isAttached() ? QStringLiteral("attached, size:%1").arg(size())
                                : QStringLiteral("not attached");
    if (error() != QSharedMemory::NoError)
        text += QStringLiteral(", ") + errorString();
    return text;
}

XLockerSharedMem::XLockerSharedMem(XSharedMemory &memory) : memory(&memory) {
    if (!memory.lock())
        ppError("XLockerSharedMem::XLockerSharedMem - locker problems, err:$",
                memory.errorString());
}

XLockerSharedMem::~XLockerSharedMem() {
    if (!memory->unlock())
        ppError("XLockerSharedMem::~XLockerSharedMem - un-locker problems, err:$",
                memory->errorString());
}

} // namespace orv
