// XSocket.h: blocking TCP and TLS sockets on Qt Network for threads without an event
// loop: wait, then read or write text lines and HTTP heads.
//
//   std::unique_ptr<orv::BasicSocket> s(orv::BasicSocket::connectToHost("h", 80, false, 5000));
//   if (s && s->sendString("GET / HTTP/1.0\r\n\r\n") && s->flushRead(5000))
//       QString const status = s->receiveString(1024);   // "HTTP/1.0 200 OK"
//
// A socket is used by the one thread that adopted it. XSocket and XSocketSSL inherit
// Qt members and these under the same names: call the Qt ones through getSocket()
// and these through a BasicSocket pointer.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslSocket>
#include <QtNetwork/QTcpSocket>

class QUrl;

namespace orv {

class HttpHeader;

// The address as text, cut behind its last ":" if it has one past the first
// character, so an IPv4-mapped address gives its IPv4 form.
ORV_EXPORT QString getIPFromHost(QHostAddress const &address);

class ORV_EXPORT BasicSocket {
public:
    // Trace lines of construction and of connectToHost.
    static XAtomic<bool> atomicFlagDebug;

    // Not owned: in XSocket and XSocketSSL it is the object itself. Null is fatal.
    explicit BasicSocket(QTcpSocket *sock);
    BasicSocket(BasicSocket const &) = delete;
    BasicSocket &operator=(BasicSocket const &) = delete;
    virtual ~BasicSocket();
    virtual bool isSSL() const = 0;
    // Only a TLS socket can; here a warning.
    virtual void connectToHostEncrypted(QString const &host, unsigned short port);

    QTcpSocket *getSocket() const { return sock; }
    // Not null, with a socket that is open.
    static bool valid(BasicSocket *socket);
    bool isOpen() const { return sock->isOpen(); }

    // Each waits up to ms for new bytes to read, or for written bytes to leave.
    bool canRead(int ms) { return sock->waitForReadyRead(ms); }
    bool flushRead(int ms) { return sock->waitForReadyRead(ms); }
    bool canWrite(int ms) { return sock->waitForBytesWritten(ms); }
    // False for a closed socket.
    bool flushWrite(int ms);
    // A whole line is buffered: receiveString needn't wait.
    bool canReadLine() const { return sock->canReadLine(); }
    // With ms >= 1 the unsent bytes get up to ms to leave first.
    void close(int ms);

    void connectToTheHost(QHostAddress const &address, unsigned short port);
    bool waitForConnected(int ms) { return sock->waitForConnected(ms); }
    QAbstractSocket::SocketState state() const { return sock->state(); }
    QString errorString() const { return sock->errorString(); }
    QHostAddress localAddress() const { return sock->localAddress(); }
    QHostAddress peerAddress() const { return sock->peerAddress(); }
    QString ipLocal() const { return getIPFromHost(localAddress()); }
    QString ipPeer() const { return getIPFromHost(peerAddress()); }

    // What is buffered up to one line end and maxLen, as Latin-1 up to a 0 byte,
    // without its CR LF or LF. No wait: "" is an empty line or nothing there.
    QString receiveString(int maxLen);
    // The text as Latin-1; false if the write fails or, with the flush flag, the
    // bytes don't leave within 30 s.
    bool sendString(QString const &text);
    bool sendStringCRLF(QString const &text);
    bool sendHttpHeader(HttpHeader const *header);

    // While on, sendString and sendStringCRLF wait for their bytes to leave.
    bool isFlush() const { return flush; }
    void setFlush(bool on) { flush = on; }

    // A new socket that the caller owns, connected within timeout ms, or null with an
    // error line. A TLS client accepts any certificate.
    static BasicSocket *connectToHost(QString const &host, unsigned short port, bool ssl,
                                      int timeout);
    // http (port 80 unless given) or https (443); other schemes without a port give null.
    static BasicSocket *connectToHost(QUrl const &url, int timeout);

private:
    bool send(QByteArray const &bytes, char const *writeFailed);

    QTcpSocket *sock;
    XAtomic<bool> flush{false};
};

class ORV_EXPORT XSocket : public QTcpSocket, public BasicSocket {
public:
    XSocket();
    ~XSocket() override;
    bool isSSL() const override { return false; }
};

class ORV_EXPORT XSocketSSL : public QSslSocket, public BasicSocket {
public:
    XSocketSSL();
    ~XSocketSSL() override;
    bool isSSL() const override { return true; }
    void connectToHostEncrypted(QString const &host, unsigned short port) override;
};

} // namespace orv
