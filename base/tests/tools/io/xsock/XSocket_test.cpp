// XSocket_test.cpp: the blocking Qt sockets and the polling server on loopback: heads
// both ways over TCP and TLS, the reading pace of fromSocket, and failed connects.
#include "orv/HttpHeader.h"
#include "orv/XServer.h"
#include "orv/XSocket.h"
#include "support/Test.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QUrl>

#include <memory>
#include <thread>

namespace {

using orv::BasicSocket;
using orv::HttpHeader;
using orv::test::linesLoggedBy;

// Bounds every wait of these tests; nothing here should come near it.
constexpr int WAIT_MS = 5000;

// A short wait for the cases that wait on purpose (the library's own is 30 s).
struct ShortHeadWait {
    ShortHeadWait() { HttpHeader::socketWaitMs = 300; }
    ~ShortHeadWait() { HttpHeader::socketWaitMs = 30000; }
};

// A client thread that connects to the server, sends bytes and keeps what comes back.
class Client {
public:
    Client(quint16 port, QByteArray send, bool tls = false)
        : thread([this, port, send, tls] {
              std::unique_ptr<BasicSocket> socket(
                  BasicSocket::connectToHost("127.0.0.1", port, tls, WAIT_MS));
              if (!socket)
                  return;
              socket->getSocket()->write(send);
              while (socket->flushRead(WAIT_MS))
                  received += socket->getSocket()->readAll();
          }) {}
    // Everything the server sent until it closed.
    QByteArray finish() {
        thread.join();
        return received;
    }

private:
    QByteArray received;
    std::thread thread;
};

struct Served {
    std::unique_ptr<BasicSocket> socket;
    HttpHeader request{true};
    bool parsed = false;
};

Served serveOne(orv::XServer &server) {
    Served served;
    served.socket.reset(server.pollForNextSocket(WAIT_MS));
    if (served.socket)
        served.parsed = served.request.fromSocket(served.socket.get(), false);
    return served;
}

// A key and self-signed certificate made by openssl, as a user of the server would.
bool makeCertificate(QTemporaryDir const &dir) {
    QProcess openssl;
    openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                              "-subj", "/CN=localhost", "-keyout", dir.filePath("key.pem"), "-out",
                              dir.filePath("cert.pem")});
    return openssl.waitForFinished(30000) && openssl.exitCode() == 0;
}

// The same request and answer over plain TCP and over TLS with a fresh certificate.
TEST(XServer, ReadsARequestHeadAndAnswersItOverTcpAndTls) {
    QTemporaryDir dir;
    QSslConfiguration config;
    bool const canTls =
        !QStandardPaths::findExecutable("openssl").isEmpty() && makeCertificate(dir);
    if (canTls) {
        std::vector<QString> const missing = linesLoggedBy([&] {
            EXPECT_FALSE(orv::XServer::setupSSLConfig(config, dir.filePath("no.pem"), ""));
            EXPECT_FALSE(orv::XServer::setupSSLConfig(config, dir.filePath("cert.pem"), "/no"));
        });
        EXPECT_EQ(missing,
                  (std::vector<QString>{"XServer::setupSSLConfig cannot open sslCertFile " +
                                            dir.filePath("no.pem"),
                                        "XServer::setupSSLConfig cannot open sslKeyFile /no"}));
        ASSERT_TRUE(orv::XServer::setupSSLConfig(config, dir.filePath("cert.pem"),
                                                 dir.filePath("key.pem")));
        EXPECT_EQ(config.protocol(), 6);
    }
    for (bool tls : {false, true}) {
        if (tls && !canTls)
            GTEST_SKIP() << "openssl is needed to make a certificate (scripts/bootstrap.sh)";
        SCOPED_TRACE(tls ? "TLS" : "TCP");
        orv::XServer server;
        server.sslConfiguration = tls ? &config : nullptr;
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
        Client client(server.serverPort(),
                      "HEAD /x HTTP/1.1\r\nHost: h:81\r\nUser-Agent: t\r\n\r\n", tls);
        Served served = serveOne(server);
        ASSERT_TRUE(served.parsed);
        EXPECT_EQ(served.socket->isSSL(), tls);
        EXPECT_EQ(served.socket->ipPeer(), "127.0.0.1");
        EXPECT_EQ(served.request.getFirstLine().getRequestType(), orv::HEAD);
        EXPECT_EQ(served.request.getResource(), "/x");
        EXPECT_EQ(served.request.getPort(), 81);
        EXPECT_EQ(served.request.userAgent(), "t");
        HttpHeader answer(200, "OK", 1);
        answer.setContenLen(4);
        EXPECT_TRUE(served.socket->sendHttpHeader(&answer));
        EXPECT_TRUE(served.socket->sendString("body"));
        served.socket->close(WAIT_MS);
        EXPECT_EQ(client.finish(), "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody");
    }
}

// 30 lines before the empty one are a head, 31 are too many; a silent client and a
// head that stops mid-way end in the wait's failure.
TEST(XServer, FromSocketTakesThirtyLinesAndWaitsOnlyBetweenLines) {
    ShortHeadWait shortWait;
    QByteArray fields;
    for (int i = 1; i < 30; ++i)
        fields += QByteArray("F") + QByteArray::number(i) + ": v\r\n";
    struct Row {
        QByteArray send;
        bool parses;
        QString line;
    } const rows[] = {
        {"GET / HTTP/1.1\r\n" + fields + "\r\n", true, ""},
        {"GET / HTTP/1.1\r\n" + fields + "X: 31\r\n\r\n", false,
         "HttpHeader::fromSocket, read 3.... ?"},
        {"", false, "HttpHeader::fromSocket, read 1.... ?"},
        {"GET / HTTP/1.1\r\nHost: a", false, "HttpHeader::fromSocket, read 2.... ?"},
    };
    orv::XServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    for (Row const &row : rows) {
        Client client(server.serverPort(), row.send);
        Served served;
        std::vector<QString> const lines =
            linesLoggedBy([&] { served = serveOne(server); }, orv::ERROR);
        EXPECT_EQ(served.parsed, row.parses) << row.send.left(20).constData();
        EXPECT_EQ(lines.empty() ? QString() : lines.front(), row.line);
        if (row.parses) {
            EXPECT_EQ(served.request.countAttributes(), 29);
        }
        served.socket->close(0);
        client.finish();
    }
}

TEST(BasicSocket, ReceiveStringCutsLineEndsAndSendStringSendsLatin1) {
    orv::XServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
    Client client(server.serverPort(), QByteArray("a\r\nb\nc\rd\ne\0f\n", 14));
    std::unique_ptr<BasicSocket> socket(server.pollForNextSocket(WAIT_MS));
    ASSERT_TRUE(socket);
    while (socket->getSocket()->bytesAvailable() < 14 && socket->flushRead(WAIT_MS)) {
    }
    for (char const *line : {"a", "b", "c\rd", "e", ""})
        EXPECT_EQ(socket->receiveString(1024), QString::fromLatin1(line));
    EXPECT_TRUE(socket->sendStringCRLF(QString::fromUtf8("\xc3\xa9\xe2\x82\xac")));
    socket->close(WAIT_MS);
    EXPECT_EQ(client.finish(), "\xe9?\r\n");
}

TEST(BasicSocket, FailedConnectsGiveNullWithTheirLine) {
    quint16 closedPort = 0;
    {
        QTcpServer probe;
        ASSERT_TRUE(probe.listen(QHostAddress::LocalHost, 0));
        closedPort = probe.serverPort();
    }
    struct Row {
        std::function<BasicSocket *()> connect;
        QString line;
    } const rows[] = {
        {[&] { return BasicSocket::connectToHost("127.0.0.1", closedPort, false, WAIT_MS); },
         "BasicSocket::connectToHost, CONNECTION REFUSED"},
        // An empty name fails without asking any name server.
        {[] { return BasicSocket::connectToHost("", 80, false, WAIT_MS); },
         "BasicSocket::connectToHost, cannot resolve ''"},
        {[] { return BasicSocket::connectToHost(QUrl("ftp://h"), WAIT_MS); },
         "BasicSocket::connectToHost, port '-1'"},
        {[] { return BasicSocket::connectToHost(QUrl("http://a b"), WAIT_MS); },
         "BasicSocket::connectToHost, url is not valid !"},
    };
    for (Row const &row : rows) {
        BasicSocket *socket = reinterpret_cast<BasicSocket *>(1);
        std::vector<QString> const lines =
            linesLoggedBy([&] { socket = row.connect(); }, orv::ERROR | orv::WARN);
        EXPECT_EQ(socket, nullptr);
        EXPECT_EQ(lines, std::vector<QString>{row.line});
    }
    EXPECT_EQ(orv::getIPFromHost(QHostAddress("::ffff:10.1.2.3")), "10.1.2.3");
    EXPECT_EQ(orv::getIPFromHost(QHostAddress("127.0.0.1")), "127.0.0.1");
}

} // namespace
