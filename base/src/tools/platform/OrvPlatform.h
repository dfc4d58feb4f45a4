// OrvPlatform.h: the few calls that differ between operating systems.
// Each system implements them in its own folder (srcLinux, ...); no other file
// of the library tests the platform.
#pragma once

#include <QtCore/QByteArray>

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

} // namespace orv::platform
