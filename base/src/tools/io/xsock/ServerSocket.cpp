// ServerSocket.cpp: a listening TCP socket whose accept waits within a time-out.
#include "orv/Log.h"
#include "orv/Socket.h"
#include "tools/platform/OrvPlatform.h"

#include <cerrno>

namespace orv {

ServerSocket::ServerSocket() = default;

ServerSocket::~ServerSocket() { close(); }

bool ServerSocket::listen(unsigned short port, QHostAddress const &address, int backlog) {
    close();
    clearError();
    fd = platform::socketListen(address, port, backlog);
    if (fd >= 0)
        return true;
    int const error = platform::lastSocketError();
    setErrno(error);
    ppError("ServerSocket::listen, $ port $: $", address.toString(), port,
            platform::socketErrorText(error));
    return false;
}

unsigned short ServerSocket::port() const {
    QHostAddress address;
    unsigned short number = 0;
    if (fd >= 0)
        platform::socketAddress(fd, false, address, number);
    return number;
}

std::unique_ptr<Socket> ServerSocket::accept(int timeoutMs) {
    if (fd < 0) {
        setErrno(EBADF);
        return nullptr;
    }
    int const ready = platform::socketWait(fd, false, timeoutMs);
    if (ready == 0) {
        setOrvErrorTimeout();
        return nullptr;
    }
    qintptr const handle = ready > 0 ? platform::socketAccept(fd) : -1;
    if (handle >= 0) {
        clearError();
        return std::make_unique<Socket>(handle);
    }
    int const error = platform::lastSocketError();
    setErrno(error);
    // A client that left between the wait and the accept is not the server's failure.
    if (error != EAGAIN && error != ECONNABORTED)
        ppError("ServerSocket::accept, $", platform::socketErrorText(error));
    return nullptr;
}

void ServerSocket::close() {
    if (fd >= 0)
        platform::socketClose(fd);
    fd = -1;
}

QString ServerSocket::errorText() const {
    if (isOK() || getErrno() == ORV_ERROR_BASE)
        return errAsString();
    return platform::socketErrorText(getErrno());
}

} // namespace orv
