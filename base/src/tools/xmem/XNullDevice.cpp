// XNullDevice.cpp: counting and digesting without storing, and the XRamInfo texts.
#include "orv/XNullDevice.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XError.h"

#include <chrono>

namespace orv {

namespace {

quint64 nowMicroseconds() {
    return static_cast<quint64>(std::chrono::duration_cast<std::chrono::microseconds>(
                                    std::chrono::steady_clock::now().time_since_epoch())
                                    .count());
}

bool isAllZero(QByteArray const &digest) {
    for (char c : digest)
        if (c)
            return false;
    return true;
}

} // namespace

XNullDevice::XNullDevice(bool withDigest) : time(nowMicroseconds()), withDigest(withDigest) {
    if (!open(QIODevice::ReadWrite))
        ppError("XNullDevice::XNullDevice, cannot open, err:$", errorString());
}

XNullDevice::~XNullDevice() = default;

qint64 XNullDevice::writeData(char const *data, qint64 n) {
    account(data, static_cast<quint64>(n));
    return n;
}

void XNullDevice::digest(char const *data, quint64 n) {
    // MD5 takes 32-bit lengths: a longer write goes in pieces.
    quint64 constexpr piece = quint64(1) << 30;
    for (quint64 pos = 0; pos < n; pos += piece)
        md5.update(data + pos, static_cast<unsigned int>(qMin(piece, n - pos)));
}

qint64 XNullDevice::readData(char *data, qint64 maxSize) {
    ORV_ASSERT_PTR(data);
    ppError("XNullDevice::readData, useless !");
    return maxSize;
}

qint64 XNullDevice::size() const {
    ppDebug("XNullDevice::size");
    return QIODevice::size();
}

qint64 XNullDevice::bytesAvailable() const {
    ppDebug("XNullDevice::bytesAvailable");
    return QIODevice::bytesAvailable();
}

qint64 XNullDevice::bytesToWrite() const {
    ppDebug("XNullDevice::bytesToWrite");
    return QIODevice::bytesToWrite();
}

void XNullDevice::finalizeWriting() {
    if (withDigest)
        md5.finalize();
    time = nowMicroseconds() - time;
}

XRamInfo XNullDevice::ramInfo() const { return XRamInfo{md5, written, time}; }

QString XNullDevice::toString() const {
    return xprintF("$ => $", format1000(static_cast<qint64>(written)),
                   formatBytes(static_cast<double>(written)));
}

XRamInfo XRamInfo::ramInfoFromRawMemory(void const *p, quint64 len) {
    XNullDevice device(true);
    char const *bytes = static_cast<char const *>(p);
    // QIODevice::write takes a signed 64-bit count; pieces keep MD5's 32-bit updates whole.
    quint64 constexpr piece = 1u << 30;
    for (quint64 pos = 0; pos < len; pos += piece)
        device.write(bytes + pos, static_cast<qint64>(qMin(piece, len - pos)));
    device.finalizeWriting();
    return device.ramInfo();
}

QString XRamInfo::toString(bool withTime) const {
    QString text = isAllZero(md5.getDigest())
                       ? xprintF("size:$ bytes", size)
                       : xprintF("size:$, md5-sum:$", format1000(static_cast<qint64>(size)),
                                 md5.hexdigest(true, true));
    if (withTime)
        text += xprintF(", delta t:$ sec, $ times / sec", formatMicrosecond_as_Sec(time),
                        1e6 / static_cast<double>(time));
    return text;
}

} // namespace orv
