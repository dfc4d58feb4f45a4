// Socket.cpp: a connected TCP socket on the system's interface: connecting by name,
// sending within the time-out, and the addresses of both ends.
#include "orv/Socket.h"
#include "orv/Log.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QElapsedTimer>

#include <cerrno>

namespace orv {

XAtomic<bool> Socket::atomicFlagDebug{false};

Socket::Socket() : ReadStream(-1) {}

Socket::Socket(qintptr handle) : ReadStream(handle) {}

Socket::~Socket() { close(); }

bool Socket::connectTo(QString const &host, unsigned short port) {
    close();
    clearError();
    QString resolveError;
    std::vector<QHostAddress> const addresses = platform::resolveHost(host, resolveError);
    if (addresses.empty()) {
        setErrno(EHOSTUNREACH);
        ppError("Socket::connectTo, cannot resolve '$': $", host, resolveError);
        return false;
    }
    for (QHostAddress const &address : addresses) {
        if (atomicFlagDebug)
            ppDebug("Socket::connectTo, try $ port $", address.toString(), port);
        qintptr const handle = platform::socketConnect(address, port, timeout());
        if (handle >= 0) {
            setHandle(handle);
            clearError();
            return true;
        }
        int const error = platform::lastSocketError();
        if (platform::isTimeout(error))
            setOrvErrorTimeout();
        else
            setErrno(error);
        ppError("Socket::connectTo, '$' ($) port $: $", host, address.toString(), port,
                platform::socketErrorText(error));
    }
    return false;
}

void Socket::close() {
    if (fd < 0)
        return;
    if (atomicFlagDebug)
        ppDebug("Socket::close, handle $", static_cast<qint64>(fd));
    platform::socketClose(fd);
    setHandle(-1);
}

void Socket::shutdownWrite() {
    if (fd >= 0)
        platform::socketShutdownWrite(fd);
}

bool Socket::send(char const *data, qint64 len) {
    if (fd < 0) {
        setErrno(EBADF);
        return false;
    }
    QElapsedTimer clock;
    clock.start();
    for (qint64 done = 0; done < len;) {
        qint64 const sent = platform::socketSend(fd, data + done, len - done);
        if (sent > 0) {
            done += sent;
            continue;
        }
        int const error = sent < 0 ? platform::lastSocketError() : EAGAIN;
        if (error != EAGAIN)
            return failWithSystemError("Socket::send", error);
        int const left = timeout() < 0 ? -1 : qMax<int>(0, timeout() - int(clock.elapsed()));
        int const ready = platform::socketWait(fd, true, left);
        if (ready == 0) {
            setOrvErrorTimeout();
            ppDebug("Socket::send, timeout after $ of $ bytes", done, len);
            return false;
        }
        if (ready < 0)
            return failWithSystemError("Socket::send, wait", platform::lastSocketError());
    }
    return true;
}

bool Socket::sendString(QString const &text) { return send(text.toLatin1()); }

bool Socket::sendStringCRLF(QString const &text) { return send(text.toLatin1() + "\r\n"); }

namespace {

QHostAddress addressOf(qintptr fd, bool peer, unsigned short *port) {
    QHostAddress address;
    unsigned short number = 0;
    if (fd >= 0)
        platform::socketAddress(fd, peer, address, number);
    if (port)
        *port = number;
    return address;
}

} // namespace

QHostAddress Socket::peerAddress() const { return addressOf(fd, true, nullptr); }

unsigned short Socket::peerPort() const {
    unsigned short port = 0;
    addressOf(fd, true, &port);
    return port;
}

QHostAddress Socket::localAddress() const { return addressOf(fd, false, nullptr); }

unsigned short Socket::localPort() const {
    unsigned short port = 0;
    addressOf(fd, false, &port);
    return port;
}

} // namespace orv
