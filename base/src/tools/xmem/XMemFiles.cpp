// XMemFiles.cpp: loading a block from a file or a Qt resource and saving it.
#include "orv/XMem.h"

#include "orv/Log.h"
#include "orv/XFile.h"

#include <QtCore/QFile>

#include <cerrno>

namespace orv {

namespace {

char const *const CANNOT_READ = "XMem::loadFromFile, cannot open file '$' for reading";
char const *const CANNOT_WRITE = "XMem::saveToFile, cannot open file '$' for writing";

} // namespace

bool XMem::readOpenFile(QFile &file, quint64 n) {
    reAlloc(n, -1);
    return n > 0 && file.read(storage.data(), static_cast<qint64>(n)) > 0;
}

bool XMem::loadFromFile(QString const &path, quint64 szPart) {
    ppInfo("XMem::loadFromFile, # s:'$', szPart:$", path, szPart);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ppError(CANNOT_READ, path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    quint64 const fileSize = static_cast<quint64>(file.size());
    return readOpenFile(file, szPart == 0 || szPart > fileSize ? fileSize : szPart);
}

bool XMem::loadFromFileAsString(QString const &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ppError(CANNOT_READ, path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    quint64 const fileSize = static_cast<quint64>(file.size());
    reAlloc(fileSize + 1, -1);
    qint64 const got = file.read(storage.data(), static_cast<qint64>(fileSize));
    storage[fileSize] = '\0';
    return got > 0;
}

bool XMem::loadMem(QString const &path) {
    if (path.startsWith(QLatin1Char(':'))) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            ppError(CANNOT_READ, path);
            setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
            return false;
        }
        return readOpenFile(file, static_cast<quint64>(file.size()));
    }
    errno = 0;
    FileReader reader(path);
    if (!reader.isOpen()) {
        // A folder is refused before the C library is asked, so errno may say nothing.
        int const error = errno ? errno : EISDIR;
        ppError(CANNOT_READ, path);
        setErrno(error);
        return false;
    }
    qint64 const len = reader.getFileLen();
    if (len <= 0) {
        ppError("XMem::loadFromFile, cannot open file '$' for reading, file is empty - 0 bytes",
                path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    reAlloc(static_cast<quint64>(len), -1);
    reader.readBytes(storage.data(), static_cast<quint64>(len));
    return true;
}

bool XMem::saveMem(QString const &path) {
    if (!mem() || isEmpty()) {
        setOrvError(ORV_ERROR_NOT_INITIALIZED);
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        ppError(CANNOT_WRITE, path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    qint64 const toWrite = static_cast<qint64>(size());
    qint64 const written = file.write(storage.data(), toWrite);
    if (written < 0) {
        int const error = errno;
        ppError("XMem::saveToFile, problems saving '$'", path);
        setErrno(error);
        return false;
    }
    if (written != toWrite) {
        ppError("XMem::saveToFile, problems saving '$', ret:$, szToWrite:$", path, written,
                toWrite);
        return false;
    }
    return true;
}

bool XMem::saveToFile(QString const &path, quint64 sz) {
    if (!mem() || isEmpty()) {
        setOrvError(ORV_ERROR_NOT_INITIALIZED);
        return false;
    }
    errno = 0;
    FileWriter writer(path);
    if (!writer.isOpen()) {
        int const error = errno;
        ppError(CANNOT_WRITE, path);
        setErrno(error);
        return false;
    }
    if (sz == 0)
        sz = size();
    // Refused only now: the writer's open has already emptied the file.
    if (sz > size()) {
        setOrvError(ORV_ERROR_OUT_OF_RANGE);
        return false;
    }
    writer.write(storage.data(), sz);
    // A failed write logs and closes the writer.
    return writer.isOpen();
}

} // namespace orv
