// ReadStream.cpp: buffered reading from a socket descriptor with one time-out per
// call, so that a slow peer can't hold a reader longer than the caller allows.
#include "orv/Log.h"
#include "orv/Socket.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QElapsedTimer>

#include <cerrno>
#include <cstring>

namespace orv {

namespace {

constexpr int RECEIVE_CHUNK = 16384;

// What is left of a call's time-out; below 0 stays "no limit".
int timeLeft(int timeoutMs, QElapsedTimer const &clock) {
    if (timeoutMs < 0)
        return -1;
    qint64 const left = timeoutMs - clock.elapsed();
    return left > 0 ? static_cast<int>(left) : 0;
}

} // namespace

AbstractReceiver::~AbstractReceiver() = default;

ReadStream::ReadStream(qintptr handle) : fd(handle) {}

ReadStream::~ReadStream() = default;

void ReadStream::setHandle(qintptr handle) {
    fd = handle;
    buffer.clear();
    start = 0;
}

bool ReadStream::failWithSystemError(char const *where, int error) {
    setErrno(error);
    ppError("$, $", where, platform::socketErrorText(error));
    return false;
}

QString ReadStream::errorText() const {
    if (isOK())
        return errAsString();
    return getErrno() == ORV_ERROR_BASE ? errAsString() : platform::socketErrorText(getErrno());
}

ReadStream::Fill ReadStream::fill(int ms) {
    if (fd < 0) {
        setErrno(EBADF);
        return Fill::FAILED;
    }
    int const ready = platform::socketWait(fd, false, ms);
    if (ready == 0) {
        setOrvErrorTimeout();
        return Fill::FAILED;
    }
    if (ready < 0) {
        failWithSystemError("ReadStream::fill, wait", platform::lastSocketError());
        return Fill::FAILED;
    }
    // Unread bytes move to the front before the buffer grows.
    if (start > 0) {
        buffer.remove(0, start);
        start = 0;
    }
    int const before = buffer.size();
    buffer.resize(before + RECEIVE_CHUNK);
    qint64 const got = platform::socketReceive(fd, buffer.data() + before, RECEIVE_CHUNK);
    int const error = got < 0 ? platform::lastSocketError() : 0;
    buffer.resize(before + static_cast<int>(got > 0 ? got : 0));
    if (got > 0)
        return Fill::DATA;
    if (got == 0) {
        setOrvEOF();
        return Fill::CLOSED;
    }
    // The wait said readable, but another reader may have been quicker.
    if (error == EAGAIN)
        return Fill::DATA;
    failWithSystemError("ReadStream::fill, receive", error);
    return Fill::FAILED;
}

void ReadStream::consume(int count) {
    start += count;
    if (start == buffer.size()) {
        buffer.clear();
        start = 0;
    }
}

SockString ReadStream::readLine(int maxLen) {
    SockString line;
    QElapsedTimer clock;
    clock.start();
    int searched = 0; // bytes already known to hold no LF
    for (;;) {
        char const *data = buffer.constData() + start;
        int const available = buffer.size() - start;
        int const limit = qMin(available, maxLen);
        auto const *lf = static_cast<char const *>(
            std::memchr(data + searched, '\n', static_cast<size_t>(limit - searched)));
        if (lf) {
            int const length = static_cast<int>(lf - data);
            line.bytes = QByteArray(data, length > 0 && lf[-1] == '\r' ? length - 1 : length);
            consume(length + 1);
            return line;
        }
        if (available >= maxLen) {
            line.bytes = QByteArray(data, maxLen);
            line.truncated = true;
            consume(maxLen);
            return line;
        }
        searched = limit;
        Fill const result = fill(timeLeft(timeout(), clock));
        if (result == Fill::DATA)
            continue;
        // The partial line stays for a later call after a time-out; after the end it
        // is all there is.
        if (isOrvTimeout()) {
            line.timeout = true;
        } else {
            line.closed = true;
            line.bytes = QByteArray(buffer.constData() + start, buffer.size() - start);
            consume(buffer.size() - start);
        }
        return line;
    }
}

qint64 ReadStream::read(char *data, qint64 maxLen) {
    if (maxLen <= 0)
        return 0;
    if (buffered() == 0) {
        Fill const result = fill(timeout());
        if (result != Fill::DATA)
            return result == Fill::CLOSED ? 0 : -1;
    }
    qint64 const count = qMin(buffered(), maxLen);
    std::memcpy(data, buffer.constData() + start, static_cast<size_t>(count));
    consume(static_cast<int>(count));
    return count;
}

bool ReadStream::readExactly(char *data, qint64 len) {
    for (qint64 done = 0; done < len;) {
        qint64 const got = read(data + done, len - done);
        if (got <= 0)
            return false;
        done += got;
    }
    return true;
}

qint64 ReadStream::readInto(AbstractReceiver &receiver, qint64 len) {
    char chunk[RECEIVE_CHUNK];
    qint64 handed = 0;
    bool complete = true;
    while (len < 0 || handed < len) {
        qint64 const want = len < 0 ? RECEIVE_CHUNK : qMin<qint64>(RECEIVE_CHUNK, len - handed);
        qint64 const got = read(chunk, want);
        if (got == 0 && len < 0)
            break; // until the peer closes: the close is the end
        if (got <= 0 || !receiver.receive(chunk, got)) {
            complete = false;
            break;
        }
        handed += got;
    }
    receiver.finish(complete);
    return handed;
}

} // namespace orv
