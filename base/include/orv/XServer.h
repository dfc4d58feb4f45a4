// XServer.h: a TCP or TLS server whose connections are taken by polling, for
// threads without an event loop.
//
//   orv::XServer server;                      // plain; for TLS set sslConfiguration
//   server.listen(QHostAddress::LocalHost, 8080);
//   while (running)
//       if (orv::BasicSocket *s = server.pollForNextSocket(200))
//           serve(s);                         // the caller owns s
//
// The server is polled from one thread. A polled socket belongs to the polling
// thread; to hand it on, the poller detaches it (getSocket()->moveToThread(nullptr))
// and the new thread adopts it (moveToThread(QThread::currentThread())).
#pragma once

#include "orv/OrvGlobal.h"

#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QTcpServer>

namespace orv {

class BasicSocket;

class ORV_EXPORT XServer : public QTcpServer {
public:
    XServer();
    ~XServer() override;

    // Null for a plain server. Set and freed by the owner; the server only reads it.
    QSslConfiguration *sslConfiguration = nullptr;

    // A pending connection at once, or the next within ms; null when none came.
    BasicSocket *pollForNextSocket(int ms);

    // After listen(): lets the system queue up to backlog connections that no poll has
    // taken yet, beyond the 50 that QTcpServer asks for. False if not listening.
    bool setListenBacklog(int backlog);

    // Certificate and unencrypted RSA key from PEM files; clients aren't verified.
    static bool setupSSLConfig(QSslConfiguration &config, QString const &certFile,
                               QString const &keyFile);

protected:
    void incomingConnection(qintptr handle) override;
};

} // namespace orv
