// XServer.cpp: a TCP server that queues plain or TLS sockets for polling threads,
// and the TLS set-up from PEM files.
#include "orv/XServer.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XSocket.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QFile>
#include <QtCore/QThread>
#include <QtNetwork/QSslKey>

namespace orv {

XServer::XServer() {
    if (BasicSocket::atomicFlagDebug)
        ppDebug("XServer::XServer");
}

XServer::~XServer() = default;

void XServer::incomingConnection(qintptr handle) {
    QTcpSocket *socket = nullptr;
    XSocketSSL *tls = nullptr;
    if (sslConfiguration) {
        tls = new XSocketSSL();
        tls->setSslConfiguration(*sslConfiguration);
        socket = tls;
    } else {
        socket = new XSocket();
    }
    socket->setSocketDescriptor(handle, QAbstractSocket::ConnectedState, QIODevice::ReadWrite);
    // Encryption starts while the socket still has a thread; a socket without one
    // can't start anything, and the thread that polls it out adopts it.
    if (tls)
        tls->startServerEncryption();
    socket->moveToThread(nullptr);
    auto *basSock = dynamic_cast<BasicSocket *>(socket);
    ORV_ASSERT_PTR(basSock);
    ppDebug("XServer::incomingConnection, local '$', peer '$', ssl:$", basSock->ipLocal(),
            basSock->ipPeer(), tls ? "true" : "false");
    addPendingConnection(socket);
}

BasicSocket *XServer::pollForNextSocket(int ms) {
    // A connection already queued is handed out without waiting.
    if (!hasPendingConnections() && !waitForNewConnection(ms))
        return nullptr;
    QTcpSocket *socket = nextPendingConnection();
    if (!socket)
        return nullptr;
    socket->moveToThread(QThread::currentThread());
    return dynamic_cast<BasicSocket *>(socket);
}

bool XServer::setListenBacklog(int backlog) {
    return isListening() && platform::socketSetBacklog(socketDescriptor(), backlog);
}

bool XServer::setupSSLConfig(QSslConfiguration &config, QString const &certFile,
                             QString const &keyFile) {
    QFile cert(certFile);
    if (!cert.open(QIODevice::ReadOnly)) {
        ppError("XServer::setupSSLConfig cannot open sslCertFile $", certFile);
        return false;
    }
    QSslCertificate const certificate(&cert, QSsl::Pem);
    QFile key(keyFile);
    if (!key.open(QIODevice::ReadOnly)) {
        ppError("XServer::setupSSLConfig cannot open sslKeyFile $", keyFile);
        return false;
    }
    QSslKey const privateKey(&key, QSsl::Rsa, QSsl::Pem, QSsl::PrivateKey, QByteArray());
    config.setLocalCertificate(certificate);
    config.setPrivateKey(privateKey);
    config.setPeerVerifyMode(QSslSocket::VerifyNone);
    // Value 6 is TlsV1SslV3, which Qt 5.15 no longer names without a warning; its
    // OpenSSL back end reads it as TLS 1.0 or later.
    config.setProtocol(static_cast<QSsl::SslProtocol>(6));
    return true;
}

} // namespace orv
