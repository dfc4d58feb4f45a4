// Socket.h: blocking TCP sockets on the system's socket interface, for threads
// without any event loop: a client or accepted Socket, a listening ServerSocket,
// the buffered input they read through, and receivers for bodies.
//
//   orv::Socket socket;
//   socket.setTimeout(5000);                       // every blocking call, in ms
//   if (socket.connectTo("localhost", 8080) && socket.sendStringCRLF("HELLO")) {
//       orv::SockString const line = socket.readLine(4096);
//       if (!line.timeout && !line.closed) use(line.toString());
//   }
//
// Design: one descriptor per object, non-blocking underneath, so that every wait
// (connect, accept, each readLine or send) is a poll with the object's time-out;
// an interrupted call (EINTR) goes on with the time left. Writes never raise
// SIGPIPE: a peer that left gives a false and the error EPIPE. IPv4 and IPv6 both:
// a name is tried address by address, and a server on "any" takes both families.
// Failures are a false, a null or a flag, with the error in the object's XError
// (the system's errno, or the library's timeout and EOF codes) and errorText().
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XError.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtNetwork/QHostAddress>

#include <memory>

namespace orv {

// One line read from a socket, without its CR LF or LF.
struct ORV_EXPORT SockString {
    QByteArray bytes;
    bool timeout = false;   // the time-out passed first; the bytes stay buffered
    bool closed = false;    // the peer closed (or the socket failed) before a line end
    bool truncated = false; // maxLen bytes came without a line end; the rest follows

    bool isEmpty() const { return bytes.isEmpty(); }
    // The bytes as Latin-1, as header lines are.
    QString toString() const { return QString::fromLatin1(bytes); }
};

// Takes the bytes of a body as they come, in order.
class ORV_EXPORT AbstractReceiver {
public:
    virtual ~AbstractReceiver();
    // False stops the transfer.
    virtual bool receive(char const *data, qint64 len) = 0;
    // After the last bytes; complete is false when the transfer stopped early.
    virtual bool finish(bool complete) { return complete; }
};

// Writes the received bytes into a file that it creates or truncates.
class ORV_EXPORT ReceiverFile : public AbstractReceiver, public XError {
public:
    explicit ReceiverFile(QString const &path);
    ~ReceiverFile() override;

    // False (with a log line) when the file can't be opened or written.
    bool receive(char const *data, qint64 len) override;
    // Closes the file.
    bool finish(bool complete) override;
    qint64 bytesWritten() const { return written; }
    QString const &path() const { return name; }

private:
    QString name;
    QFile file;
    qint64 written = 0;
};

// The buffered input side of a socket descriptor, with one time-out for each call.
class ORV_EXPORT ReadStream : public XError {
public:
    static constexpr int DEFAULT_TIMEOUT_MS = 30000;

    explicit ReadStream(qintptr handle = -1);
    ReadStream(ReadStream const &) = delete;
    ReadStream &operator=(ReadStream const &) = delete;
    ~ReadStream() override;

    // The bound of each blocking call in ms; below 0 a call waits as long as it takes.
    void setTimeout(int ms) { timeoutMs = ms; }
    int timeout() const { return timeoutMs; }
    qintptr handle() const { return fd; }

    // Up to the next LF or maxLen bytes, within the time-out for the whole line.
    SockString readLine(int maxLen);
    // Buffered bytes, or what one wait brings: > 0 bytes, 0 when the peer closed,
    // -1 on a time-out or an error.
    qint64 read(char *data, qint64 maxLen);
    // Exactly len bytes, each wait within the time-out, or false.
    bool readExactly(char *data, qint64 len);
    // len bytes (below 0: until the peer closes) handed to receiver; gives the count
    // handed. Ends early on a time-out, an error or a receiver that refuses.
    qint64 readInto(AbstractReceiver &receiver, qint64 len);
    qint64 buffered() const { return buffer.size() - start; }

    // The error as text: the library's text for its codes, the system's otherwise.
    QString errorText() const;

protected:
    void setHandle(qintptr handle);
    // Records the system's error number with a log line and returns false.
    bool failWithSystemError(char const *where, int error);

    qintptr fd;

private:
    enum class Fill { DATA, CLOSED, FAILED };
    // One receive into the buffer within ms (below 0: no limit).
    Fill fill(int ms);
    void consume(int count);

    QByteArray buffer;
    int start = 0; // first unread byte of buffer
    int timeoutMs = DEFAULT_TIMEOUT_MS;
};

class ORV_EXPORT Socket : public ReadStream {
public:
    // Trace lines of connect and close.
    static XAtomic<bool> atomicFlagDebug;

    Socket();
    // Takes over a connected descriptor (as ServerSocket::accept gives it).
    explicit Socket(qintptr handle);
    ~Socket() override;

    // Tries the addresses of host in turn, each within the time-out; an open socket
    // is closed first. False with a log line when none answers.
    bool connectTo(QString const &host, unsigned short port);
    bool isOpen() const { return fd >= 0; }
    void close();
    // Tells the peer no more bytes come; reading goes on.
    void shutdownWrite();

    // All len bytes, waiting within the time-out whenever the system's buffer is full.
    bool send(char const *data, qint64 len);
    bool send(QByteArray const &bytes) { return send(bytes.constData(), bytes.size()); }
    // The text as Latin-1.
    bool sendString(QString const &text);
    bool sendStringCRLF(QString const &text);

    QHostAddress peerAddress() const;
    unsigned short peerPort() const;
    QHostAddress localAddress() const;
    unsigned short localPort() const;
};

class ORV_EXPORT ServerSocket : public XError {
public:
    ServerSocket();
    ServerSocket(ServerSocket const &) = delete;
    ServerSocket &operator=(ServerSocket const &) = delete;
    ~ServerSocket() override;

    // Port 0 takes a free port (see port()). QHostAddress::Any listens on IPv6 and
    // IPv4 where the system allows both.
    bool listen(unsigned short port, QHostAddress const &address = QHostAddress::Any,
                int backlog = 128);
    bool isListening() const { return fd >= 0; }
    unsigned short port() const;
    // The next connection within timeoutMs (below 0: no limit), or null: a time-out
    // sets the library's timeout code, a failure the system's error.
    std::unique_ptr<Socket> accept(int timeoutMs);
    void close();
    QString errorText() const;

private:
    qintptr fd = -1;
};

} // namespace orv
