// XSharedMemory.h: a named shared-memory segment seen as an AbstractMemory, with
// whole-block copies in and out under the segment's lock, and the scoped lock.
//
//   orv::XSharedMemory segment(QStringLiteral("frames"));
//   segment.writeCreateMem(block);              // creates the segment and fills it
//   orv::XMem copy;
//   other.attach(); other.readMem(copy);        // in another process
#pragma once

#include "orv/AbstractMemory.h"

#include <QtCore/QSharedMemory>

namespace orv {

// Processes and threads meet only under the segment's lock. mem() hands out the raw
// pointer without it: a caller who uses it holds an XLockerSharedMem.
class ORV_EXPORT XSharedMemory : public QSharedMemory, public AbstractMemory {
public:
    XSharedMemory();
    explicit XSharedMemory(QString const &key, QObject *parent = nullptr);
    // Detaches when attached.
    ~XSharedMemory() override;

    char const *mem() const override { return static_cast<char const *>(data()); }
    char *mem() override { return static_cast<char *>(data()); }
    quint64 length() const override { return static_cast<quint64>(size()); }
    // A copy taken under the lock; empty with a log line when not attached or after
    // a segment error.
    XByteArray createByteArray() const override;

    // False, with an ERROR line, for a size past what a segment holds (2 GiB - 1).
    bool createMem(unsigned int size, QSharedMemory::AccessMode mode);
    // The whole segment into target through its setMem: a fixed block must be large
    // enough, an XMem takes the segment's size. False when not attached.
    bool readMem(AbstractMemory &target);
    // Copies source over the head of the segment; false, with the segment unchanged,
    // when not attached or when source is longer than the segment.
    bool writeMem(AbstractMemory &source);
    // Creates the segment with source's length and fills it; false for an empty
    // source, one past what a segment holds (with an ERROR line naming its length),
    // or when the segment can't be created (the key is taken, for one).
    bool writeCreateMem(AbstractMemory &source);

    using AbstractMemory::toString;
    // "attached, size:N" or "not attached", then ", " and the segment's error text.
    QString toString() const;
};

// Holds the segment's lock for its scope. A failed lock or unlock logs and changes
// nothing else.
class ORV_EXPORT XLockerSharedMem {
public:
    explicit XLockerSharedMem(XSharedMemory &memory);
    ~XLockerSharedMem();
    XLockerSharedMem(XLockerSharedMem const &) = delete;
    XLockerSharedMem &operator=(XLockerSharedMem const &) = delete;

private:
    XSharedMemory *memory;
};

} // namespace orv
