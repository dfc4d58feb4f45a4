// NetCommands.cpp: commands of the network subsystem: "serve" answers GET and HEAD
// for the files under a folder, over TCP or TLS, until SIGINT or SIGTERM; "get"
// fetches a URL and prints its head.
#include "orv/HttpHeader.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"
#include "orv/XServer.h"
#include "orv/XSocket.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRunnable>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QUrl>

#include <atomic>
#include <csignal>
#include <memory>

namespace {

using namespace orv;

std::atomic<bool> stopRequested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "the signal handler stores into it");

extern "C" void requestStop(int) { stopRequested.store(true); }

// Waits are cut into slices this long, so a stop request is seen soon.
constexpr int STOP_CHECK_MS = 200;
// Bytes queued on a socket before the sender waits for them to leave.
constexpr qint64 SEND_WINDOW = 256 * 1024;
constexpr qint64 FILE_CHUNK = 64 * 1024;
constexpr int LISTEN_BACKLOG = 1024;

struct ServeSettings {
    QString root; // canonical, without a trailing slash
    int timeoutMs = 30000;
};

struct Answer {
    int code = 200;
    QString text;
    QString file; // the file to send for 200
    bool closeAfter = false;
};

Answer errorAnswer(int code, char const *text, bool closeAfter) {
    return Answer{code, QString::fromLatin1(text), QString(), closeAfter};
}

// The file a resource names under the root, or "" when there is none there. The
// resource is percent-decoded before ".." is resolved, and the result must still
// lie under the root once links are followed, so no spelling reaches outside it.
QString fileUnderRoot(QString const &root, QString resource) {
    for (QChar const end : {QLatin1Char('?'), QLatin1Char('#')})
        if (resource.contains(end))
            resource.truncate(resource.indexOf(end));
    QString const decoded = QUrl::fromPercentEncoding(resource.toLatin1());
    if (decoded.contains(QChar(0)))
        return QString();
    QString path = QDir::cleanPath(root + QLatin1Char('/') + decoded);
    if (QFileInfo(path).isDir())
        path += QStringLiteral("/index.html");
    QString const real = QFileInfo(path).canonicalFilePath();
    if (real.isEmpty() || !real.startsWith(root + QLatin1Char('/')) || !QFileInfo(real).isFile())
        return QString();
    return real;
}

Answer answerFor(HttpHeader const &request, ServeSettings const &settings) {
    FirstLine const &line = request.getFirstLine();
    REQUEST_TYPE const type = line.getRequestType();
    if (type != GET && type != HEAD)
        return errorAnswer(501, "Not Implemented", false);
    QString const resource = request.getResource();
    if (!resource.startsWith(QLatin1Char('/')))
        return errorAnswer(400, "Bad Request", true);
    QString const file = fileUnderRoot(settings.root, resource);
    if (file.isEmpty())
        return errorAnswer(404, "Not Found", false);
    return Answer{200, QStringLiteral("OK"), file, false};
}

// HTTP/1.1 keeps the connection unless told to close; HTTP/1.0 only when asked.
bool wantsKeepAlive(HttpHeader const &request) {
    if (request.getFirstLine().tokens()[2] == QLatin1String("HTTP/1.1"))
        return !request.connection().contains(QLatin1String("close"), Qt::CaseInsensitive);
    return request.isKeepAlive();
}

// Waits until everything queued has left, within timeoutMs per wait.
bool drainWrites(QTcpSocket *socket, qint64 limit, int timeoutMs) {
    while (socket->bytesToWrite() > limit)
        if (!socket->waitForBytesWritten(timeoutMs))
            return false;
    return true;
}

bool sendAnswer(BasicSocket &socket, Answer const &answer, bool headOnly, bool keepAlive,
                int timeoutMs) {
    static Mime const mime;
    HttpHeader head(answer.code, answer.text, 1);
    QFile file(answer.file);
    QByteArray body;
    if (answer.code == 200) {
        if (!file.open(QIODevice::ReadOnly))
            return sendAnswer(socket, errorAnswer(404, "Not Found", false), headOnly, keepAlive,
                              timeoutMs);
        head.setContenType(mime[QFileInfo(answer.file).suffix().toLower()]);
        head.setContenLen(file.size());
    } else {
        body = QStringLiteral("<html><body>%1 %2</body></html>\n")
                   .arg(answer.code)
                   .arg(answer.text)
                   .toLatin1();
        head.setContenType(mime[QStringLiteral("html")]);
        head.setContenLen(body.size());
    }
    head.setConnection(keepAlive ? QStringLiteral("keep-alive") : QStringLiteral("close"));
    QTcpSocket *raw = socket.getSocket();
    if (!socket.sendHttpHeader(&head))
        return false;
    if (!headOnly) {
        if (answer.code != 200)
            raw->write(body);
        while (answer.code == 200 && !file.atEnd()) {
            if (raw->write(file.read(FILE_CHUNK)) < 0 || !drainWrites(raw, SEND_WINDOW, timeoutMs))
                return false;
        }
    }
    return drainWrites(raw, 0, timeoutMs);
}

// Reads and drops what a refused client still sends, for up to a second, so that
// closing doesn't reset the connection before the client has read the answer.
void discardInput(QTcpSocket *socket) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 1000 && socket->state() == QAbstractSocket::ConnectedState) {
        socket->readAll();
        if (!socket->waitForReadyRead(100))
            break;
    }
}

// Waits in slices for the first bytes of the next request; false when the client
// left, the idle time ran out or the server stops.
bool requestArrives(BasicSocket &socket, int idleMs) {
    QElapsedTimer clock;
    clock.start();
    while (socket.getSocket()->bytesAvailable() == 0) {
        if (stopRequested.load() || clock.elapsed() >= idleMs ||
            socket.state() != QAbstractSocket::ConnectedState)
            return false;
        socket.flushRead(STOP_CHECK_MS);
    }
    return true;
}

void serveConnection(BasicSocket &socket, ServeSettings const &settings) {
    bool keepAlive = true;
    while (keepAlive && requestArrives(socket, settings.timeoutMs)) {
        HttpHeader request(true);
        Answer answer;
        if (!request.fromSocket(&socket, false)) {
            if (socket.state() != QAbstractSocket::ConnectedState)
                return;
            answer = errorAnswer(400, "Bad Request", true);
        } else {
            answer = answerFor(request, settings);
        }
        keepAlive = !answer.closeAfter && wantsKeepAlive(request);
        bool const headOnly = !answer.closeAfter && request.getFirstLine().getRequestType() == HEAD;
        // The access line is formatted only when it will be shown: it is one per request.
        if (Logger::getLogLevel() & INFO)
            ppInfo("serve: $ '$' -> $", socket.ipPeer(), request.getFirstLine().getLine(),
                   answer.code);
        if (!sendAnswer(socket, answer, headOnly, keepAlive, settings.timeoutMs))
            return;
        if (answer.closeAfter)
            discardInput(socket.getSocket());
    }
}

// One connection on a pool thread, which adopts the socket the poller let go of.
class ConnectionTask : public QRunnable {
public:
    ConnectionTask(BasicSocket *socket, ServeSettings const &settings, QSemaphore &freeWorkers)
        : socket(socket), settings(settings), freeWorkers(freeWorkers) {}

    // The pool hands the task over under a lock of its own, which the race checker
    // can't see; this release and the acquire in run() show it the hand-over.
    void handOver() { handedOver.store(true, std::memory_order_release); }

    void run() override {
        while (!handedOver.load(std::memory_order_acquire))
            QThread::yieldCurrentThread();
        socket->getSocket()->moveToThread(QThread::currentThread());
        serveConnection(*socket, settings);
        socket->close(0); // answers were flushed as they went
        socket.reset();
        freeWorkers.release();
    }

private:
    std::unique_ptr<BasicSocket> socket;
    ServeSettings settings;
    QSemaphore &freeWorkers;
    std::atomic<bool> handedOver{false};
};

int serveCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("port"))) {
        ppError("serve: missing --port");
        return EXIT_ORV_ARGUMENT;
    }
    int const port = kernel.getInt(QStringLiteral("port"), -1);
    int const workers = kernel.getInt(QStringLiteral("workers"), 64);
    ServeSettings settings;
    settings.timeoutMs = kernel.getInt(QStringLiteral("timeout"), 30000);
    QString const cert = kernel.getString(QStringLiteral("cert"), QString());
    QString const key = kernel.getString(QStringLiteral("key"), QString());
    if (port < 0 || port > 65535 || workers < 1 || settings.timeoutMs < 1 ||
        cert.isEmpty() != key.isEmpty()) {
        ppError("serve: needs --port 0..65535, --workers and --timeout above 0, and --cert "
                "with --key");
        return EXIT_ORV_ARGUMENT;
    }
    QFileInfo const rootInfo(kernel.getString(QStringLiteral("root"), QStringLiteral(".")));
    settings.root = rootInfo.canonicalFilePath();
    if (!rootInfo.isDir()) {
        ppError("serve: root '$' is no folder", rootInfo.filePath());
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    HttpHeader::socketWaitMs = settings.timeoutMs;

    XServer server;
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    if (!cert.isEmpty()) {
        if (!XServer::setupSSLConfig(tls, cert, key))
            return EXIT_ORV_FILE_NOT_FOUND;
        server.sslConfiguration = &tls;
    }
    QHostAddress const address(
        kernel.getString(QStringLiteral("address"), QStringLiteral("0.0.0.0")));
    if (address.isNull() || !server.listen(address, static_cast<quint16>(port))) {
        ppError("serve: cannot listen on '$' port $: $", address.toString(), port,
                server.errorString());
        return EXIT_ORV_IO;
    }
    // Connections wait there while every worker is busy: more than Qt's 50 of them.
    server.setListenBacklog(LISTEN_BACKLOG);
    ppInfo("serve: listening on $ port $, root '$', tls:$", address.toString(), server.serverPort(),
           settings.root, !cert.isEmpty());

    stopRequested.store(false);
    std::signal(SIGINT, requestStop);
    std::signal(SIGTERM, requestStop);
    QThreadPool pool;
    pool.setMaxThreadCount(workers);
    // One slot per worker: connections beyond that wait in the listen queue, not in
    // an unbounded list of our own.
    QSemaphore freeWorkers(workers);
    while (!stopRequested.load()) {
        if (!freeWorkers.tryAcquire(1, STOP_CHECK_MS))
            continue;
        BasicSocket *socket = server.pollForNextSocket(STOP_CHECK_MS);
        if (!socket) {
            freeWorkers.release();
            continue;
        }
        socket->getSocket()->moveToThread(nullptr);
        auto *task = new ConnectionTask(socket, settings, freeWorkers);
        task->handOver();
        pool.start(task);
    }
    server.close();
    pool.waitForDone();
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    ppInfo("serve: stopped");
    return EXIT_ORV_OK;
}

// The whole body: Content-Length bytes, or up to the close without one.
QByteArray readBody(BasicSocket &socket, HttpHeader const &head, int timeoutMs) {
    bool const sized = head.hasAttribute(QStringLiteral("Content-Length"));
    quint64 const length = head.getContentLength();
    QByteArray body = socket.getSocket()->readAll();
    while ((!sized || quint64(body.size()) < length) && socket.flushRead(timeoutMs))
        body += socket.getSocket()->readAll();
    return sized ? body.left(int(qMin<quint64>(length, quint64(body.size())))) : body;
}

// "orv get URL": the command line keeps only "--key value" pairs, so the bare word is
// looked up among the program's arguments.
QString urlArgument(Kernel &kernel) {
    if (kernel.hasKey(QStringLiteral("url")))
        return kernel.getString(QStringLiteral("url"), QString());
    QStringList const args = QCoreApplication::arguments();
    for (int i = args.indexOf(QStringLiteral("get")) + 1; i > 0 && i < args.size(); ++i) {
        if (args[i].startsWith(QLatin1String("--")))
            ++i; // and its value
        else
            return args[i];
    }
    return QString();
}

int getCommand(Kernel &kernel) {
    QString const text = urlArgument(kernel);
    QUrl const url(text, QUrl::StrictMode);
    int const timeoutMs = kernel.getInt(QStringLiteral("timeout"), 30000);
    if (text.isEmpty() || !url.isValid() || url.host().isEmpty() || timeoutMs < 1) {
        ppError("get: needs a URL http://host[:port]/path (or https) and --timeout above 0");
        return EXIT_ORV_ARGUMENT;
    }
    std::unique_ptr<BasicSocket> socket(BasicSocket::connectToHost(url, timeoutMs));
    if (!socket) {
        ppError("get: cannot connect to '$'", text);
        return EXIT_ORV_IO;
    }
    QString path = url.path(QUrl::FullyEncoded);
    if (path.isEmpty())
        path = QStringLiteral("/");
    if (url.hasQuery())
        path += QLatin1Char('?') + url.query(QUrl::FullyEncoded);
    HttpHeader request(QStringLiteral("GET ") + path + QStringLiteral(" HTTP/1.1"));
    request.setHost(url.port() < 0 ? url.host()
                                   : url.host() + QLatin1Char(':') + QString::number(url.port()));
    request.setUserAgent(QStringLiteral("orv get"));
    request.setAccept(QStringLiteral("*/*"));
    request.setConnection(QStringLiteral("close"));
    HttpHeader::socketWaitMs = timeoutMs;
    HttpHeader response(false);
    if (!socket->sendHttpHeader(&request) || !response.fromSocket(socket.get(), false)) {
        ppError("get: no answer head from '$'", text);
        return EXIT_ORV_PARSING;
    }
    for (QString const &line : response.toStringCRLF().split(QStringLiteral("\r\n")))
        if (!line.isEmpty())
            ppInfo(line);
    QByteArray const body = readBody(*socket, response, timeoutMs);
    ppInfo("body: $ bytes", body.size());
    QString const out = kernel.getString(QStringLiteral("out"), QString());
    if (!out.isEmpty()) {
        QFile file(out);
        if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size()) {
            ppError("get: cannot write '$'", out);
            return EXIT_ORV_IO;
        }
    }
    return EXIT_ORV_OK;
}

ModuleTests const netCommands{
    {TestContext::FnKernel(serveCommand), QStringLiteral("serve"),
     QStringLiteral("serve the files of a folder over HTTP: --port P [--root DIR] [--cert C "
                    "--key K]"),
     true},
    {TestContext::FnKernel(getCommand), QStringLiteral("get"),
     QStringLiteral("fetch a URL and print its head: URL [--out FILE]"), true},
};

} // namespace
