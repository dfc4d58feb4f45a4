// XNullDevice.h: a device that stores nothing and counts, and optionally digests,
// what is written to it; XRamInfo is what it found.
//
//   orv::XNullDevice counter(true);
//   QDataStream(&counter) << value;     // nothing is kept
//   counter.finalizeWriting();
//   ppInfo("$", counter.ramInfo().toString(false));   // "size:1.024, md5-sum:..."
#pragma once

#include "orv/MD5.h"
#include "orv/OrvGlobal.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>

namespace orv {

class XTree;
class XTypeSupporter;

// Size and digest of some bytes, and the microseconds it took to get them.
struct ORV_EXPORT XRamInfo {
    MD5 md5;
    quint64 size = 0;
    quint64 time = 0;

    // The block digested through an XNullDevice.
    static XRamInfo ramInfoFromRawMemory(void const *p, quint64 len);
    // The tree's file form written through an XNullDevice: exactly its size, nothing
    // stored.
    static XRamInfo ramInfoFromTree(XTree const &tree, XTypeSupporter const &s, bool withDigest);
    // "size:<format1000>, md5-sum:<spaced hex>", or "size:<n> bytes" with an all-zero
    // digest; withTime adds the time and the rate per second.
    QString toString(bool withTime) const;
};

class ORV_EXPORT XNullDevice : public QIODevice {
public:
    // Opens itself read-write and starts the clock.
    explicit XNullDevice(bool withDigest);
    ~XNullDevice() override;

    // The answers of QIODevice, traced.
    qint64 size() const override;
    qint64 bytesAvailable() const override;
    qint64 bytesToWrite() const override;

    // What a write does, without the way through QIODevice: for streams that count
    // many small pieces.
    void account(char const *data, quint64 n) {
        written += n;
        if (withDigest)
            digest(data, n);
    }

    // Closes the digest and stops the clock; call it once, after the last write.
    void finalizeWriting();
    XRamInfo ramInfo() const;
    // "<format1000> => <formatBytes>" of the bytes written.
    QString toString() const;

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(char const *data, qint64 n) override;

private:
    void digest(char const *data, quint64 n);

    MD5 md5;
    quint64 written = 0;
    quint64 time = 0;
    bool withDigest;
};

} // namespace orv
