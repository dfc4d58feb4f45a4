// OrvPlatform.h: the few calls that differ between operating systems.
// Each system implements them in its own folder (srcLinux, ...); no other file
// of the library tests the platform.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdio>
#include <ctime>

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

} // namespace orv::platform
