// OrvPlatformLinux.cpp: Linux bodies of the platform calls.
#include "tools/platform/OrvPlatform.h"

#include <cerrno>
#include <chrono>
#include <mutex>

#include <sys/syscall.h>
#include <unistd.h>

namespace orv::platform {

unsigned int threadId() { return static_cast<unsigned int>(::syscall(SYS_gettid)); }

unsigned long long ticks100ns() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<unsigned long long>(now.tv_sec) * 10000000ULL +
           static_cast<unsigned long long>(now.tv_nsec) / 100;
}

unsigned long long monotonicNs() {
    return static_cast<unsigned long long>(std::chrono::duration_cast<std::chrono::nanoseconds>(
                                               std::chrono::steady_clock::now().time_since_epoch())
                                               .count());
}

std::tm utcTm(long long seconds) {
    std::time_t t = static_cast<std::time_t>(seconds);
    std::tm out{};
    ::gmtime_r(&t, &out);
    return out;
}

std::tm localTm(long long seconds) {
    // localtime_r needn't read TZ; one tzset makes it follow the environment.
    static std::once_flag zoneRead;
    std::call_once(zoneRead, [] { ::tzset(); });
    std::time_t t = static_cast<std::time_t>(seconds);
    std::tm out{};
    ::localtime_r(&t, &out);
    return out;
}

int lastSocketError() { return errno; }

bool isTimeout(int socketError) { return socketError == ETIMEDOUT; }

QByteArray getEnv(char const *name) { return qgetenv(name); }

bool setEnv(char const *name, QByteArray const &value) { return qputenv(name, value); }

char pathListSeparator() { return ':'; }

} // namespace orv::platform
