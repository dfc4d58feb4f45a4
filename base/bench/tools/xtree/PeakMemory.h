// PeakMemory.h: the process's peak resident size, reset before a measurement and read
// after it (Linux /proc), for benchmarks that report memory beside time.
#pragma once

#include <QtCore/QFile>

namespace orv::bench {

// Resets the peak to the present size; false where the system doesn't allow it.
inline bool resetPeakMemory() {
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    return refs.open(QIODevice::WriteOnly) && refs.write("5") == 1;
}

// VmHWM in MiB, or -1.
inline double peakMemoryMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (QByteArray const &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return -1;
}

} // namespace orv::bench
