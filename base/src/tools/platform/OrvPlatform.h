// OrvPlatform.h: the few calls that differ between operating systems.
// Each system implements them in its own folder (srcLinux, ...); no other file
// of the library tests the platform.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtNetwork/QHostAddress>

#include <cstdio>
#include <ctime>
#include <vector>

namespace orv::platform {

// The kernel's id of the calling thread (not a Qt or pthread handle).
unsigned int threadId();

// Wall-clock time in ticks of 100 ns since 1970-01-01 00:00:00 UTC.
unsigned long long ticks100ns();
// A clock that never jumps, in nanoseconds from an arbitrary origin.
unsigned long long monotonicNs();
// Broken-down time of seconds since 1970: in UTC, and in the zone TZ names.
std::tm utcTm(long long seconds);
std::tm localTm(long long seconds);

// The error number of the last failed socket call, and whether it means a timeout.
int lastSocketError();
bool isTimeout(int socketError);

// The process environment; names are compared as the system does (case-sensitive
// here). getEnv gives a null array for an unset name.
QByteArray getEnv(char const *name);
bool setEnv(char const *name, QByteArray const &value);
// Separates the entries of PATH-like lists.
char pathListSeparator();

// Process set-up right after the Qt application object is built: local time
// follows TZ, and numbers in C library texts keep the C notation.
void initProcess();
// Replaces the process with argv[0] run on argv and envv; returns only on failure,
// with the system's result (errno set).
int replaceProcess(char *const *argv, char *const *envv);
// Releases the console of the process where the system gives it one; never closes
// the standard streams.
void releaseConsole();

// Whether a C stream goes to a terminal (not a pipe or a file).
bool isTerminal(std::FILE *stream);

// A C stream on path, named as the file system wants it; null on failure.
std::FILE *fopenPath(QString const &path, char const *mode);
// 64-bit stream positions: seek from the start (false on failure), tell (-1 on failure).
bool seek64(std::FILE *fp, long long pos);
long long tell64(std::FILE *fp);

// The readable name of a C++ type from typeid(T).name(); the raw name when it can't.
QString demangle(char const *mangledName);
// Drops the pages wholly inside [p, p + len) of a file mapping from the process, which
// keeps its memory small while it streams a big mapping once. The file keeps the data;
// never use it on memory that isn't a shared file mapping. Returns the end of what was
// dropped (a page boundary), or p when no whole page lay inside.
char *releaseMappedPages(char *p, unsigned long long len);

} // namespace orv::platform

namespace orv {
struct AdapterInfo;
}

// Sockets. Handles are the system's descriptors, -1 for none; every handle made here
// is non-blocking. An interrupted call goes on; a failure gives -1 (or false) with
// the error number in lastSocketError(). Nothing here raises SIGPIPE.
namespace orv::platform {

// The addresses of a name or numeric text, in the resolver's order; empty on failure
// with the resolver's text in errorText.
std::vector<QHostAddress> resolveHost(QString const &host, QString &errorText);
// A TCP socket connected to address:port within timeoutMs, or -1 (ETIMEDOUT when the
// time ran out).
qintptr socketConnect(QHostAddress const &address, unsigned short port, int timeoutMs);
// A listening TCP socket; an "any" address takes IPv6 and IPv4 where it can.
qintptr socketListen(QHostAddress const &address, unsigned short port, int backlog);
// Sets the queue length of a socket that listens already.
bool socketSetBacklog(qintptr listener, int backlog);
// Waits until handle can be read (or accepted from), or written: 1 ready, 0 the
// time-out passed, -1 an error. timeoutMs below 0 waits without a limit.
int socketWait(qintptr handle, bool forWrite, int timeoutMs);
qintptr socketAccept(qintptr listener);
// Bytes moved, 0 from socketReceive when the peer closed, -1 on error (EAGAIN when
// nothing can move now).
qint64 socketSend(qintptr handle, char const *data, qint64 len);
qint64 socketReceive(qintptr handle, char *data, qint64 len);
// The local or the peer's address and port; false on error.
bool socketAddress(qintptr handle, bool peer, QHostAddress &address, unsigned short &port);
void socketShutdownWrite(qintptr handle);
void socketClose(qintptr handle);
QString socketErrorText(int error);

// The adapters with their hardware and IP addresses; false with lastSocketError().
bool networkAdapters(std::vector<AdapterInfo> &out);

} // namespace orv::platform
