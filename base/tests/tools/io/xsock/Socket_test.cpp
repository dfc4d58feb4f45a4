// Socket_test.cpp: the plain system sockets on loopback: IPv4 and IPv6, lines with
// their time-out, truncation and end flags, writes to a peer that left, heads read
// through fromSocketClassic, bodies into a file, and the adapter list.
#include "orv/AdapterInfos.h"
#include "orv/HttpHeader.h"
#include "orv/Socket.h"
#include "support/Test.h"

#include <cerrno>
#include <thread>

namespace {

using orv::ServerSocket;
using orv::Socket;
using orv::test::linesLoggedBy;

constexpr int WAIT_MS = 5000;

// A connected pair on loopback: the client end and the server's accepted end.
struct Pair {
    ServerSocket server;
    Socket client;
    std::unique_ptr<Socket> accepted;

    explicit Pair(char const *host = "127.0.0.1") {
        if (!server.listen(0, QHostAddress::Any))
            return;
        client.setTimeout(WAIT_MS);
        if (client.connectTo(host, server.port()))
            accepted = server.accept(WAIT_MS);
        if (accepted)
            accepted->setTimeout(300); // the waits these tests run into on purpose
    }
};

TEST(Socket, ConnectsOverIPv4AndIPv6ToAServerOnAny) {
    for (char const *host : {"127.0.0.1", "::1", "localhost"}) {
        Pair pair(host);
        ASSERT_TRUE(pair.accepted) << host << ": " << pair.client.errorText().toStdString();
        EXPECT_EQ(pair.accepted->peerPort(), pair.client.localPort());
        EXPECT_EQ(pair.client.peerPort(), pair.server.port());
        EXPECT_TRUE(pair.client.sendStringCRLF("ping"));
        EXPECT_EQ(pair.accepted->readLine(100).bytes, "ping");
    }
}

TEST(Socket, ReadLineFlagsTimeoutTruncationAndTheEnd) {
    Pair pair;
    ASSERT_TRUE(pair.accepted);
    Socket &in = *pair.accepted;
    ASSERT_TRUE(pair.client.send(QByteArray("a\r\nb\nc\rd\n0123456789\npart")));
    struct Row {
        int maxLen;
        QByteArray bytes;
        bool timeout, closed, truncated;
    } const rows[] = {{100, "a", false, false, false},      {100, "b", false, false, false},
                      {100, "c\rd", false, false, false},   {4, "0123", false, false, true},
                      {100, "456789", false, false, false}, {100, "", true, false, false}};
    for (Row const &row : rows) {
        orv::SockString const line = in.readLine(row.maxLen);
        EXPECT_EQ(line.bytes, row.bytes);
        EXPECT_EQ(line.timeout, row.timeout) << row.bytes.constData();
        EXPECT_EQ(line.truncated, row.truncated) << row.bytes.constData();
    }
    EXPECT_TRUE(in.isOrvTimeout());
    // The partial line stayed buffered; the close completes it.
    pair.client.close();
    orv::SockString const last = in.readLine(100);
    EXPECT_EQ(last.bytes, "part");
    EXPECT_TRUE(last.closed);
    EXPECT_TRUE(in.isOrvEOF());
}

TEST(Socket, WritingToAPeerThatLeftFailsWithoutASignal) {
    Pair pair;
    ASSERT_TRUE(pair.accepted);
    pair.accepted->close();
    QByteArray const block(1 << 20, 'x');
    bool sent = true;
    // The first writes may still be taken by the system; the peer's reset ends them.
    for (int i = 0; i < 8 && sent; ++i)
        sent = pair.client.send(block);
    EXPECT_FALSE(sent);
    EXPECT_TRUE(pair.client.getErrno() == EPIPE || pair.client.getErrno() == ECONNRESET)
        << pair.client.errorText().toStdString();
}

TEST(Socket, RefusedConnectAndAcceptTimeoutAreReported) {
    unsigned short port = 0;
    {
        ServerSocket probe;
        ASSERT_TRUE(probe.listen(0, QHostAddress::LocalHost));
        port = probe.port();
    }
    Socket socket;
    std::vector<QString> const lines =
        linesLoggedBy([&] { EXPECT_FALSE(socket.connectTo("127.0.0.1", port)); });
    EXPECT_EQ(socket.getErrno(), unsigned(ECONNREFUSED));
    EXPECT_EQ(lines,
              std::vector<QString>{QStringLiteral("Socket::connectTo, '127.0.0.1' "
                                                  "(127.0.0.1) port %1: %2")
                                       .arg(port)
                                       .arg(QString::fromLocal8Bit(strerror(ECONNREFUSED)))});
    ServerSocket server;
    ASSERT_TRUE(server.listen(0, QHostAddress::LocalHost));
    EXPECT_EQ(server.accept(50), nullptr);
    EXPECT_TRUE(server.isOrvTimeout());
}

TEST(Socket, FromSocketClassicReadsAHeadOrNamesWhyNot) {
    QByteArray many;
    for (int i = 0; i < 31; ++i)
        many += "F" + QByteArray::number(i) + ": v\r\n";
    struct Row {
        QByteArray send;
        bool closeAfter;
        bool parses;
        QString line;
    } const rows[] = {
        {"GET /c HTTP/1.0\r\nHost: a\r\n\r\n", false, true, ""},
        {"", false, false, "HttpHeader::fromSocketClassic , timeout"},
        {"GET /c HTTP/1.0\r\n", false, false, "HttpHeader::fromSocketClassic , timeout,2"},
        {"GET /c HTTP/1.0\r\nHo", true, false, "HttpHeader::fromSocketClassic , connection closed"},
        {"GET / HTTP/1.0\r\n" + many + "\r\n", false, false,
         "HttpHeader::fromSocketClassic, read 3.... ?"},
    };
    for (Row const &row : rows) {
        Pair pair;
        ASSERT_TRUE(pair.accepted);
        pair.client.send(row.send);
        if (row.closeAfter)
            pair.client.close();
        orv::HttpHeader header(true);
        bool parsed = false;
        std::vector<QString> const lines = linesLoggedBy(
            [&] { parsed = header.fromSocketClassic(pair.accepted.get()); }, orv::ERROR);
        EXPECT_EQ(parsed, row.parses) << row.line.toStdString();
        EXPECT_EQ(lines.empty() ? QString() : lines.front(), row.line);
        if (row.parses) {
            EXPECT_EQ(header.getResource(), "/c");
            EXPECT_EQ(header.host(), "a");
        }
    }
}

TEST(ReceiverFile, TakesASizedBodyOrOneUpToTheClose) {
    QTemporaryDir dir;
    QByteArray const body = orv::test::patternedBytes(100000);
    for (qint64 len : {qint64(body.size()), qint64(-1)}) {
        Pair pair;
        ASSERT_TRUE(pair.accepted);
        std::thread sender([&] {
            pair.client.send(body + "tail");
            if (len < 0)
                pair.client.close();
        });
        orv::ReceiverFile file(dir.filePath("body"));
        qint64 const expected = len < 0 ? body.size() + 4 : len;
        pair.accepted->setTimeout(WAIT_MS);
        EXPECT_EQ(pair.accepted->readInto(file, len), expected);
        sender.join();
        EXPECT_EQ(orv::test::readFile(file.path()), len < 0 ? body + "tail" : body);
    }
}

TEST(AdapterInfos, ListsTheLoopbackAdapter) {
    orv::AdapterInfos infos;
    ASSERT_TRUE(infos.scan());
    orv::AdapterInfo const *lo = infos.find("lo");
    ASSERT_NE(lo, nullptr);
    EXPECT_TRUE(lo->loopback);
    EXPECT_TRUE(lo->up);
    EXPECT_EQ(lo->macText(), "");
    bool hasLoopbackV4 = false;
    for (orv::AdapterAddress const &address : lo->addresses)
        hasLoopbackV4 |= address.address == QHostAddress::LocalHost && address.prefixLength == 8;
    EXPECT_TRUE(hasLoopbackV4);
    EXPECT_EQ(infos.find("no-such-adapter"), nullptr);
}

} // namespace
