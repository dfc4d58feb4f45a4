// ResidentMemory.h: this process's resident memory, for checks that big files are
// read through mappings and not copied.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>

namespace orv::test {

// VmRSS in KiB from the kernel's status file; -1 when it can't be read.
inline long residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (QByteArray const &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

} // namespace orv::test
