// SocketsLinux.cpp: the socket calls on BSD sockets, non-blocking underneath so that
// every wait is a poll with a time-out.
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QSet>

#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orv::platform {

namespace {

using Clock = std::chrono::steady_clock;

// The system's form of address:port; "any" becomes the IPv6 wildcard, which takes
// IPv4 as well once IPV6_V6ONLY is off.
socklen_t toSockaddr(QHostAddress const &address, unsigned short port, sockaddr_storage &out) {
    std::memset(&out, 0, sizeof out);
    if (address.protocol() == QAbstractSocket::IPv4Protocol) {
        auto *in = reinterpret_cast<sockaddr_in *>(&out);
        in->sin_family = AF_INET;
        in->sin_port = htons(port);
        in->sin_addr.s_addr = htonl(address.toIPv4Address());
        return sizeof(sockaddr_in);
    }
    auto *in6 = reinterpret_cast<sockaddr_in6 *>(&out);
    in6->sin6_family = AF_INET6;
    in6->sin6_port = htons(port);
    Q_IPV6ADDR const bytes = address.toIPv6Address();
    std::memcpy(&in6->sin6_addr, bytes.c, sizeof bytes.c);
    QString const scope = address.scopeId();
    if (!scope.isEmpty()) {
        bool numeric = false;
        unsigned int index = scope.toUInt(&numeric);
        in6->sin6_scope_id = numeric ? index : ::if_nametoindex(scope.toLatin1().constData());
    }
    return sizeof(sockaddr_in6);
}

bool isAny(QHostAddress const &address) {
    return address == QHostAddress(QHostAddress::Any) ||
           address == QHostAddress(QHostAddress::AnyIPv6);
}

int remainingMs(Clock::time_point deadline) {
    auto const left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

// Small replies would otherwise wait for the peer's delayed acknowledgement.
void noDelay(int fd) {
    int const on = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

// Closes fd without touching errno, so the caller still reports the first error.
void closeKeepingErrno(int fd) {
    int const saved = errno;
    ::close(fd);
    errno = saved;
}

} // namespace

std::vector<QHostAddress> resolveHost(QString const &host, QString &errorText) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    int const rc = ::getaddrinfo(host.toUtf8().constData(), nullptr, &hints, &found);
    std::vector<QHostAddress> addresses;
    if (rc != 0) {
        errorText = QString::fromLocal8Bit(::gai_strerror(rc));
        return addresses;
    }
    QSet<QString> seen;
    for (addrinfo *ai = found; ai; ai = ai->ai_next) {
        QHostAddress const address(ai->ai_addr);
        if (!address.isNull() && !seen.contains(address.toString())) {
            seen.insert(address.toString());
            addresses.push_back(address);
        }
    }
    ::freeaddrinfo(found);
    return addresses;
}

qintptr socketConnect(QHostAddress const &address, unsigned short port, int timeoutMs) {
    sockaddr_storage target{};
    socklen_t const length = toSockaddr(address, port, target);
    int const fd = ::socket(target.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return -1;
    // A non-blocking connect that is interrupted goes on in the background, like one
    // in progress: both end in the wait below.
    if (::connect(fd, reinterpret_cast<sockaddr *>(&target), length) != 0 && errno != EINPROGRESS &&
        errno != EINTR) {
        closeKeepingErrno(fd);
        return -1;
    }
    int const ready = socketWait(fd, true, timeoutMs);
    if (ready <= 0) {
        if (ready == 0)
            errno = ETIMEDOUT;
        closeKeepingErrno(fd);
        return -1;
    }
    int error = 0;
    socklen_t errorLength = sizeof error;
    if (::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &errorLength) != 0 || error != 0) {
        if (error != 0)
            errno = error;
        closeKeepingErrno(fd);
        return -1;
    }
    noDelay(fd);
    return fd;
}

qintptr socketListen(QHostAddress const &address, unsigned short port, int backlog) {
    sockaddr_storage local{};
    socklen_t const length = toSockaddr(address, port, local);
    int const fd = ::socket(local.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return -1;
    int const on = 1, off = 0;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (local.ss_family == AF_INET6)
        ::setsockopt(fd, IPPROTO_IPV6, IPV6_V6ONLY, isAny(address) ? &off : &on, sizeof on);
    if (::bind(fd, reinterpret_cast<sockaddr *>(&local), length) != 0 ||
        ::listen(fd, backlog) != 0) {
        closeKeepingErrno(fd);
        return -1;
    }
    return fd;
}

// Linux takes a second listen() on a listening socket as the new queue length.
bool socketSetBacklog(qintptr listener, int backlog) {
    return ::listen(static_cast<int>(listener), backlog) == 0;
}

int socketWait(qintptr handle, bool forWrite, int timeoutMs) {
    pollfd entry{static_cast<int>(handle), static_cast<short>(forWrite ? POLLOUT : POLLIN), 0};
    Clock::time_point const deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        int const rc = ::poll(&entry, 1, timeoutMs < 0 ? -1 : remainingMs(deadline));
        if (rc >= 0)
            return rc > 0 ? 1 : 0; // POLLERR and POLLHUP too: the next call tells
        if (errno != EINTR)
            return -1;
    }
}

qintptr socketAccept(qintptr listener) {
    for (;;) {
        int const fd =
            ::accept4(static_cast<int>(listener), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (fd >= 0) {
            noDelay(fd);
            return fd;
        }
        if (errno != EINTR)
            return -1;
    }
}

qint64 socketSend(qintptr handle, char const *data, qint64 len) {
    for (;;) {
        ssize_t const sent =
            ::send(static_cast<int>(handle), data, static_cast<size_t>(len), MSG_NOSIGNAL);
        if (sent >= 0 || errno != EINTR)
            return sent;
    }
}

qint64 socketReceive(qintptr handle, char *data, qint64 len) {
    for (;;) {
        ssize_t const got = ::recv(static_cast<int>(handle), data, static_cast<size_t>(len), 0);
        if (got >= 0 || errno != EINTR)
            return got;
    }
}

bool socketAddress(qintptr handle, bool peer, QHostAddress &address, unsigned short &port) {
    sockaddr_storage storage{};
    socklen_t length = sizeof storage;
    auto *raw = reinterpret_cast<sockaddr *>(&storage);
    int const rc = peer ? ::getpeername(static_cast<int>(handle), raw, &length)
                        : ::getsockname(static_cast<int>(handle), raw, &length);
    if (rc != 0)
        return false;
    address.setAddress(raw);
    port = storage.ss_family == AF_INET6
               ? ntohs(reinterpret_cast<sockaddr_in6 *>(&storage)->sin6_port)
               : ntohs(reinterpret_cast<sockaddr_in *>(&storage)->sin_port);
    return true;
}

void socketShutdownWrite(qintptr handle) { ::shutdown(static_cast<int>(handle), SHUT_WR); }

// Linux frees the descriptor even when close is interrupted: never retry it.
void socketClose(qintptr handle) { ::close(static_cast<int>(handle)); }

QString socketErrorText(int error) {
    char buffer[256];
    return QString::fromLocal8Bit(::strerror_r(error, buffer, sizeof buffer));
}

} // namespace orv::platform
