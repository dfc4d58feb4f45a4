// OrvPlatformLinux.cpp: Linux bodies of the platform calls.
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QFile>

#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <mutex>

#include <cstdlib>
#include <cxxabi.h>
#include <sys/mman.h>
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

// QCoreApplication applies the user's locale (setlocale(LC_ALL, "")) on Unix.
void initProcess() {
    ::tzset();
    std::setlocale(LC_NUMERIC, "C");
}

// No PATH search: argv[0] is run as it stands.
int replaceProcess(char *const *argv, char *const *envv) {
    if (!argv || !argv[0]) {
        errno = EFAULT; // what execve reports for a missing path
        return -1;
    }
    return ::execve(argv[0], argv, envv);
}

// A terminal belongs to the session, not to the process: nothing to release.
void releaseConsole() {}

bool isTerminal(std::FILE *stream) { return stream && ::isatty(::fileno(stream)) == 1; }

// glibc's off_t is 64 bits wide on this target, so the o-forms cover large files.
std::FILE *fopenPath(QString const &path, char const *mode) {
    return std::fopen(QFile::encodeName(path).constData(), mode);
}

bool seek64(std::FILE *fp, long long pos) {
    return ::fseeko(fp, static_cast<off_t>(pos), SEEK_SET) == 0;
}

long long tell64(std::FILE *fp) { return static_cast<long long>(::ftello(fp)); }

QString demangle(char const *mangledName) {
    int status = 0;
    char *readable = abi::__cxa_demangle(mangledName, nullptr, nullptr, &status);
    QString const name = QString::fromLatin1(status == 0 && readable ? readable : mangledName);
    std::free(readable);
    return name;
}

// On a shared file mapping MADV_DONTNEED unmaps the pages only: written ones are already
// in the page cache, and a later access maps them in again from there.
char *releaseMappedPages(char *p, unsigned long long len) {
    static unsigned long long const page = static_cast<unsigned long long>(::sysconf(_SC_PAGESIZE));
    auto const start = reinterpret_cast<unsigned long long>(p);
    unsigned long long const first = (start + page - 1) / page * page;
    unsigned long long const end = (start + len) / page * page;
    if (end <= first)
        return p;
    ::madvise(reinterpret_cast<void *>(first), end - first, MADV_DONTNEED);
    return reinterpret_cast<char *>(end);
}

} // namespace orv::platform
