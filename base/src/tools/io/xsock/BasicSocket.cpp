// BasicSocket.cpp: the blocking operations that plain and TLS sockets share, and
// the client's connection by host name or URL.
#include "orv/HttpHeader.h"
#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XSocket.h"

#include <QtCore/QUrl>
#include <QtNetwork/QHostInfo>

namespace orv {

XAtomic<bool> BasicSocket::atomicFlagDebug{false};

QString getIPFromHost(QHostAddress const &address) {
    QString const text = address.toString();
    int const colon = text.lastIndexOf(QLatin1Char(':'));
    return colon > 0 ? text.mid(colon + 1) : text;
}

BasicSocket::BasicSocket(QTcpSocket *socket) : sock(socket) {
    ORV_ASSERT_PTR(sock);
    if (atomicFlagDebug)
        ppDebug("BasicSocket::BasicSocket");
}

BasicSocket::~BasicSocket() = default;

void BasicSocket::connectToHostEncrypted(QString const &, unsigned short) {
    ppWarning("BasicSocket::connectToHostEncrypted - forbidden call !");
}

bool BasicSocket::valid(BasicSocket *socket) {
    return socket != nullptr && socket->sock != nullptr && socket->sock->isOpen();
}

bool BasicSocket::flushWrite(int ms) { return sock->isOpen() && sock->waitForBytesWritten(ms); }

void BasicSocket::close(int ms) {
    if (!sock->isOpen())
        return;
    if (ms >= 1)
        sock->waitForBytesWritten(ms);
    sock->close();
}

void BasicSocket::connectToTheHost(QHostAddress const &address, unsigned short port) {
    sock->connectToHost(address, port, QIODevice::ReadWrite);
}

QString BasicSocket::receiveString(int maxLen) {
    QByteArray const line = sock->readLine(maxLen);
    // constData ends in a 0 byte, so fromLatin1 stops at the first 0 of the line.
    QString text = QString::fromLatin1(line.constData());
    if (text.endsWith(QLatin1String("\r\n")))
        text.chop(2);
    else if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

bool BasicSocket::send(QByteArray const &bytes, char const *writeFailed) {
    if (sock->write(bytes) < 0) {
        ppError(writeFailed);
        return false;
    }
    if (flush && !flushWrite(30000)) {
        ppWarning("BasicSocket::sendString, flushWrite timeout or socket closed !");
        return false;
    }
    return true;
}

bool BasicSocket::sendString(QString const &text) {
    return send(text.toLatin1(), "BasicSocket::sendString, sock->write failed !");
}

bool BasicSocket::sendStringCRLF(QString const &text) {
    return send(text.toLatin1() + "\r\n", "BasicSocket::sendStringCRLF, sock->write failed !");
}

bool BasicSocket::sendHttpHeader(HttpHeader const *header) {
    if (!header) {
        ppError("BasicSocket::sendHttpHeader, httpHeader == nullptr");
        return false;
    }
    return sendString(header->toStringCRLF());
}

BasicSocket *BasicSocket::connectToHost(QString const &host, unsigned short port, bool ssl,
                                        int timeout) {
    if (atomicFlagDebug)
        ppDebug("BasicSocket::connectToHost, try to connect $:$, ssl:$, timeout:$", host, port, ssl,
                timeout);
    QList<QHostAddress> const addresses = QHostInfo::fromName(host).addresses();
    if (addresses.isEmpty()) {
        ppError("BasicSocket::connectToHost, cannot resolve '$'", host);
        return nullptr;
    }
    BasicSocket *socket = nullptr;
    if (ssl) {
        auto *tls = new XSocketSSL();
        socket = tls;
        socket->connectToHostEncrypted(host, port);
        tls->ignoreSslErrors();
    } else {
        socket = new XSocket();
        ppTest("normal sock, host '$'", host);
        socket->connectToTheHost(addresses.first(), port);
    }
    if (!socket->waitForConnected(timeout)) {
        QAbstractSocket::SocketError const error = socket->getSocket()->error();
        if (error == QAbstractSocket::ConnectionRefusedError)
            ppError("BasicSocket::connectToHost, CONNECTION REFUSED");
        else
            ppError("BasicSocket::connectToHost, socket $:$ not open - timout: $ ms reached, "
                    "err:$, '$'",
                    host, port, timeout, static_cast<int>(error), socket->errorString());
        // Whether to free the socket is ours to say: nothing else could.
        delete socket;
        return nullptr;
    }
    if (socket->isOpen())
        ppInfo("BasicSocket::connectToHost, socket $:$ open", host, port);
    else
        ppError("BasicSocket::connectToHost, socket $:$ not open", host, port);
    return socket;
}

BasicSocket *BasicSocket::connectToHost(QUrl const &url, int timeout) {
    if (!url.isValid()) {
        ppWarning("BasicSocket::connectToHost, url is not valid !");
        return nullptr;
    }
    int port = url.port(-1);
    if (port < 0) {
        if (url.scheme() == QLatin1String("http"))
            port = 80;
        else if (url.scheme() == QLatin1String("https"))
            port = 443;
        else {
            ppWarning("BasicSocket::connectToHost, port '$'", port);
            return nullptr;
        }
    }
    return connectToHost(url.host(QUrl::FullyDecoded), static_cast<unsigned short>(port),
                         url.scheme() == QLatin1String("https"), timeout);
}

} // namespace orv
