// TempFiles.h: test files with given bytes inside a test's own temporary folder,
// reading a file back whole, and bytes to fill them with.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace orv::test {

// Writes bytes to name inside dir and returns the path.
inline QString writeFile(QTemporaryDir const &dir, QString const &name, QByteArray const &bytes) {
    QString const path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

// The whole file, or "<missing>" when it can't be read.
inline QByteArray readFile(QString const &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// Bytes that differ from block to block, so that a skipped, repeated or misplaced
// block shows; the same len gives the same bytes.
inline QByteArray patternedBytes(int len) {
    QByteArray bytes(len, Qt::Uninitialized);
    quint32 x = 0x9e3779b9u;
    for (int i = 0; i < len; ++i) {
        x = x * 1664525u + 1013904223u;
        bytes[i] = static_cast<char>(x >> 24);
    }
    return bytes;
}

} // namespace orv::test
