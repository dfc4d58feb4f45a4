// ArgsEnv.cpp: the deep copy of arguments and environment, and the restart of the
// process from it.
#include "orv/ArgsEnv.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XProcess.h"
#include "tools/platform/OrvPlatform.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace orv {

namespace {

char *copyString(char const *text) {
    size_t const len = std::strlen(text);
    char *copy = new char[len + 1];
    std::memcpy(copy, text, len + 1);
    return copy;
}

int countEntries(char *const *vector) {
    int n = 0;
    while (vector && vector[n])
        ++n;
    return n;
}

// count entries and a closing null; every entry its own block.
char **copyVector(char *const *vector, int count) {
    char **copy = new char *[static_cast<size_t>(count) + 1];
    for (int i = 0; i < count; ++i) {
        char const *p = vector[i];
        ORV_ASSERT_PTR(p);
        copy[i] = copyString(p);
    }
    copy[count] = nullptr;
    return copy;
}

char const *shown(char const *text) { return text ? text : "(null)"; }

} // namespace

ArgsEnv::ArgsEnv(ArgsEnv const &other) { copyFrom(other); }

ArgsEnv::ArgsEnv(ArgsEnv &&other) noexcept
    : argc(std::exchange(other.argc, 0)), argv(std::exchange(other.argv, nullptr)),
      envv(std::exchange(other.envv, nullptr)) {}

ArgsEnv &ArgsEnv::operator=(ArgsEnv const &other) {
    if (this != &other) {
        release();
        copyFrom(other);
    }
    return *this;
}

ArgsEnv &ArgsEnv::operator=(ArgsEnv &&other) noexcept {
    if (this != &other) {
        release();
        argc = std::exchange(other.argc, 0);
        argv = std::exchange(other.argv, nullptr);
        envv = std::exchange(other.envv, nullptr);
    }
    return *this;
}

ArgsEnv::~ArgsEnv() { release(); }

void ArgsEnv::fromMain(int argc, char **const argv, char **const envv) {
    release();
    this->argc = argc;
    this->argv = copyVector(argv, argc);
    this->envv = copyVector(envv, countEntries(envv));
}

void ArgsEnv::restartProgram() {
    int const result = platform::replaceProcess(argv, envv);
    int const error = errno;
    // Past argc there is no entry to read: the array holds argc + 1.
    auto entry = [this](int i) -> char const * { return i <= argc && argv ? argv[i] : nullptr; };
    std::printf("ArgsEnv::restartProgram, result of execv:%d\n", result);
    std::printf("ArgsEnv::restartProgram, errno:%d\n", error);
    std::printf(">>>%s<<<\n", shown(entry(0)));
    std::printf(">>>%s<<<\n", shown(entry(1)));
    std::printf("%s\n", entry(2) ? "what ?" : "ok");
    std::fflush(stdout);
    errno = error;
    std::perror("mist");
}

void ArgsEnv::startProgram() {
    ppDebug("ArgsEnv::startProgram");
    XProcess process;
}

void ArgsEnv::release() {
    for (int i = 0; argv && i < argc; ++i)
        delete[] argv[i];
    delete[] argv;
    for (int i = 0; envv && envv[i]; ++i)
        delete[] envv[i];
    delete[] envv;
    argc = 0;
    argv = nullptr;
    envv = nullptr;
}

void ArgsEnv::copyFrom(ArgsEnv const &other) {
    argc = other.argc;
    argv = other.argv ? copyVector(other.argv, other.argc) : nullptr;
    envv = other.envv ? copyVector(other.envv, countEntries(other.envv)) : nullptr;
}

} // namespace orv
