// ReceiverFile.cpp: a receiver that writes a body into a file.
#include "orv/Log.h"
#include "orv/Socket.h"

#include <cerrno>

namespace orv {

ReceiverFile::ReceiverFile(QString const &path) : name(path), file(path) {}

ReceiverFile::~ReceiverFile() = default;

bool ReceiverFile::receive(char const *data, qint64 len) {
    if (!file.isOpen() && !file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        setErrno(EACCES);
        ppError("ReceiverFile::receive, cannot open '$': $", name, file.errorString());
        return false;
    }
    if (file.write(data, len) != len) {
        setErrno(EIO);
        ppError("ReceiverFile::receive, cannot write '$': $", name, file.errorString());
        return false;
    }
    written += len;
    return true;
}

bool ReceiverFile::finish(bool complete) {
    // An empty body still leaves its (empty) file.
    if (!file.isOpen() && isOK())
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.close();
    return complete && isOK();
}

} // namespace orv
