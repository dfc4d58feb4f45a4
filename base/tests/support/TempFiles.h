// TempFiles.h: test files with given bytes inside a test's own temporary folder, and
// reading a file back whole.
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

} // namespace orv::test
