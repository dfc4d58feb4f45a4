// NetServe_test.cpp: "orv serve" and "orv get" against other programs on loopback:
// curl, Python's http.client and http.server, openssl s_client; and clients that
// misbehave, after each of which the server must still answer a normal request.
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpSocket>

#include <memory>
#include <thread>

namespace {

constexpr int WAIT_MS = 10000;
// The server's wait for a silent client, shortened from its 30 s default.
constexpr int SERVER_TIMEOUT_MS = 400;

bool have(char const *program) { return !QStandardPaths::findExecutable(program).isEmpty(); }

// Runs a program to its end; its standard output and error, or "<failed>".
QByteArray run(QString const &program, QStringList const &args, QByteArray const &input = {}) {
    QProcess process;
    process.start(program, args);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(WAIT_MS) || process.exitCode() != 0)
        return "<failed> " + process.readAllStandardOutput() + process.readAllStandardError();
    return process.readAllStandardOutput() + process.readAllStandardError();
}

// A child that serves and prints its port; stopped by SIGTERM at the end.
class ChildServer {
public:
    ChildServer(QString const &program, QStringList const &args, QString const &portLine) {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, args);
        QRegularExpression const pattern(portLine);
        QElapsedTimer clock;
        clock.start();
        while (port == 0 && clock.elapsed() < WAIT_MS && process.waitForReadyRead(WAIT_MS)) {
            output += process.readAll();
            QRegularExpressionMatch const match = pattern.match(QString::fromUtf8(output));
            if (match.hasMatch())
                port = match.captured(1).toUShort();
        }
    }
    ~ChildServer() {
        process.terminate();
        if (!process.waitForFinished(WAIT_MS))
            process.kill();
        process.waitForFinished();
    }
    // Ends the server by SIGTERM; its exit status, or -1 if it didn't end.
    int stop() {
        process.terminate();
        return process.waitForFinished(WAIT_MS) ? process.exitCode() : -1;
    }
    bool running() const { return process.state() == QProcess::Running; }
    qint64 pid() const { return process.processId(); }

    QProcess process;
    QByteArray output;
    quint16 port = 0;
};

class OrvServe : public ::testing::Test {
protected:
    void SetUp() override {
        QDir(root.path()).mkpath("www/sub");
        orv::test::writeFile(root, "www/a.txt", "hello from orv serve\n");
        orv::test::writeFile(root, "www/sub/index.html", "<p>index</p>\n");
        orv::test::writeFile(root, "secret.txt", "never served\n");
    }
    void start(QStringList const &extra = {}) {
        server = std::make_unique<ChildServer>(
            ORV_PROGRAM,
            QStringList{"serve", "--port", "0", "--address", "127.0.0.1", "--root",
                        root.filePath("www"), "--timeout", QString::number(SERVER_TIMEOUT_MS),
                        "--workers", "8"} +
                extra,
            "listening on 127.0.0.1 port (\\d+)");
        ASSERT_NE(server->port, 0) << server->output.constData();
    }
    QString url(char const *path, char const *scheme = "http") const {
        return QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(server->port).arg(path);
    }
    // What the server answers to raw request bytes, up to its close or a pause.
    QByteArray ask(QByteArray const &request) const {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server->port);
        if (!socket.waitForConnected(WAIT_MS))
            return "<no connection>";
        socket.write(request);
        QByteArray answer;
        while (socket.waitForReadyRead(2 * SERVER_TIMEOUT_MS + 500))
            answer += socket.readAll();
        return answer + socket.readAll();
    }
    void expectStillServing() const {
        EXPECT_TRUE(ask("GET /a.txt HTTP/1.0\r\n\r\n").endsWith("\r\n\r\nhello from orv serve\n"));
    }

    QTemporaryDir root;
    std::unique_ptr<ChildServer> server;
};

TEST_F(OrvServe, AnswersGetHeadAndErrorsAndStopsOnSigterm) {
    start();
    struct Row {
        QByteArray request;
        QByteArray statusLine;
        QByteArray bodyEnd;
    } const rows[] = {
        {"GET /a.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 200 OK", "hello from orv serve\n"},
        {"GET /sub/ HTTP/1.0\r\n\r\n", "HTTP/1.1 200 OK", "<p>index</p>\n"},
        {"HEAD /a.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 200 OK", "Content-Type: text/html\r\n\r\n"},
        {"GET /nothing HTTP/1.0\r\n\r\n", "HTTP/1.1 404 Not Found", "</html>\n"},
        {"POST /a.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 501 Not Implemented", "</html>\n"},
        {"GET /a.txt\r\n\r\n", "HTTP/1.1 400 Bad Request", "</html>\n"},
        // Every spelling of a way out of the root is a missing file.
        {"GET /../secret.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 404 Not Found", "</html>\n"},
        {"GET /%2e%2e/secret.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 404 Not Found", "</html>\n"},
        {"GET /sub/..%2f..%2fsecret.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 404 Not Found", "</html>\n"},
        {"GET /sub/%2E%2E/a.txt HTTP/1.0\r\n\r\n", "HTTP/1.1 200 OK", "hello from orv serve\n"},
    };
    for (Row const &row : rows) {
        QByteArray const answer = ask(row.request);
        EXPECT_TRUE(answer.startsWith(row.statusLine + "\r\n"))
            << row.request.constData() << answer.constData();
        EXPECT_TRUE(answer.endsWith(row.bodyEnd)) << row.request.constData() << answer.constData();
    }
    EXPECT_EQ(server->stop(), 0);
    EXPECT_TRUE(server->output.contains("serve: stopped") ||
                server->process.readAll().contains("serve: stopped"));
}

TEST_F(OrvServe, CurlAndPythonFetchFilesOverTcpAndTls) {
    if (!have("curl") || !have("python3") || !have("openssl"))
        GTEST_SKIP() << "curl, python3 and openssl are needed (scripts/bootstrap.sh)";
    QString const key = root.filePath("key.pem"), cert = root.filePath("cert.pem");
    ASSERT_FALSE(run("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                                 "-subj", "/CN=localhost", "-keyout", key, "-out", cert})
                     .startsWith("<failed>"));
    char const *const pythonGet =
        "import sys, ssl, http.client\n"
        "c = (http.client.HTTPSConnection(sys.argv[1], context=ssl._create_unverified_context())"
        " if sys.argv[3] == 'https' else http.client.HTTPConnection(sys.argv[1]))\n"
        "for i in range(3):\n"
        "  c.request('GET', sys.argv[2]); r = c.getresponse()\n"
        "  sys.stdout.write('%d %s %s' % (r.status, r.getheader('Content-Type'), "
        "r.read().decode()))\n";
    for (bool const tls : {false, true}) {
        SCOPED_TRACE(tls ? "tls" : "plain");
        start(tls ? QStringList{"--cert", cert, "--key", key} : QStringList{});
        char const *scheme = tls ? "https" : "http";
        EXPECT_EQ(run("curl", {"-sS", "-k", url("/a.txt", scheme)}), "hello from orv serve\n");
        EXPECT_EQ(
            run("curl", {"-sS", "-k", "-o", "/dev/null", "-w", "%{http_code}", url("/no", scheme)}),
            "404");
        // One connection kept alive for three requests.
        EXPECT_EQ(run("python3", {"-c", pythonGet, QStringLiteral("127.0.0.1:%1").arg(server->port),
                                  "/sub/", scheme}),
                  QByteArray("200 text/html <p>index</p>\n").repeated(3));
        if (tls) {
            QByteArray const handshake =
                run("openssl",
                    {"s_client", "-connect", QStringLiteral("127.0.0.1:%1").arg(server->port)});
            EXPECT_TRUE(handshake.contains("New, TLSv1.")) << handshake.constData();
            EXPECT_FALSE(handshake.contains("Cipher is (NONE)"));
        }
    }
}

TEST_F(OrvServe, GetReadsFromPythonsHttpServer) {
    if (!have("python3"))
        GTEST_SKIP() << "python3 is needed (scripts/bootstrap.sh)";
    ChildServer python("python3",
                       {"-u", "-m", "http.server", "0", "--bind", "127.0.0.1", "--directory",
                        root.filePath("www")},
                       "port (\\d+)");
    ASSERT_NE(python.port, 0) << python.output.constData();
    QString const out = root.filePath("got.txt");
    QByteArray const printed =
        run(ORV_PROGRAM, {"get", QStringLiteral("http://127.0.0.1:%1/a.txt").arg(python.port),
                          "--out", out, "--logTrailler", "false"});
    for (char const *line : {"\nHTTP/1.0 200 OK\n", "\nContent-Length: 21\n", "\nbody: 21 bytes\n"})
        EXPECT_TRUE(printed.contains(line)) << printed.constData();
    EXPECT_EQ(orv::test::readFile(out), "hello from orv serve\n");
}

// Each client misbehaves once; the server answers as told and then serves again.
TEST_F(OrvServe, HostileClientsNeitherStopNorLeakTheServer) {
    start();
    // Pool threads come and go with descriptors of their own; sockets are what a
    // leaking connection would leave.
    auto const openSockets = [this] {
        QDir const fds(QStringLiteral("/proc/%1/fd").arg(server->pid()));
        int count = 0;
        for (QFileInfo const &fd : fds.entryInfoList(QDir::System | QDir::Files))
            count += fd.symLinkTarget().contains("socket:") ? 1 : 0;
        return count;
    };
    expectStillServing();
    int const socketsBefore = openSockets();

    // One byte per 100 ms: each wait brings a piece of a line, thirty pieces are too
    // many. It takes seconds, so the other clients come meanwhile.
    QByteArray slowAnswer;
    std::thread slowClient([this, &slowAnswer] {
        QTcpSocket slow;
        slow.connectToHost(QHostAddress::LocalHost, server->port);
        if (!slow.waitForConnected(WAIT_MS))
            return;
        for (char const c : QByteArray("GET /a.txt HTTP/1.1\r\nHost: localhost\r\n\r\n")) {
            slow.write(&c, 1);
            slow.waitForBytesWritten(WAIT_MS);
            if (slow.waitForReadyRead(100))
                break;
        }
        do
            slowAnswer += slow.readAll();
        while (slow.waitForReadyRead(1000));
    });

    // 1 MB without a line end: cut after thirty pieces of a line, answered 400.
    EXPECT_TRUE(ask(QByteArray(1 << 20, 'A')).startsWith("HTTP/1.1 400 Bad Request\r\n"));
    expectStillServing();

    // Connects and says nothing: closed once the server's time-out passed.
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(ask(""), "");
    EXPECT_LT(clock.elapsed(), 4 * SERVER_TIMEOUT_MS + 1000);
    expectStillServing();

    // Leaves in the middle of a head.
    {
        QTcpSocket gone;
        gone.connectToHost(QHostAddress::LocalHost, server->port);
        ASSERT_TRUE(gone.waitForConnected(WAIT_MS));
        gone.write("GET /a.txt HTTP/1.1\r\nHo");
        gone.waitForBytesWritten(WAIT_MS);
    }
    expectStillServing();

    // A thousand connections opened and dropped.
    for (int i = 0; i < 1000; ++i) {
        QTcpSocket dropped;
        dropped.connectToHost(QHostAddress::LocalHost, server->port);
        ASSERT_TRUE(dropped.waitForConnected(WAIT_MS)) << i;
    }
    expectStillServing();

    slowClient.join();
    EXPECT_TRUE(slowAnswer.startsWith("HTTP/1.1 400 Bad Request\r\n")) << slowAnswer.constData();
    // The dropped connections' sockets are given back once their workers see them gone.
    clock.restart();
    while (openSockets() > socketsBefore && clock.elapsed() < WAIT_MS)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(openSockets(), socketsBefore);
    EXPECT_TRUE(server->running());
}

} // namespace
