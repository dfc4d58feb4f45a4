// ArgsEnvCommandLine.cpp: an ArgsEnv rebuilt from a parsed command line, the process
// environment or a record, and the listings of its vectors.
#include "orv/ArgsEnv.h"

#include "orv/CommandLine.h"
#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/XRecord.h"

#include <QtCore/QProcessEnvironment>

#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace orv {

namespace {

// The longest string an entry keeps: the scratch buffer of 32768 bytes less its NUL.
constexpr int MAX_ENTRY_LEN = 32767;

char *cutCopy(QByteArray const &text) {
    int const len = qMin(text.size(), MAX_ENTRY_LEN);
    char *copy = new char[static_cast<size_t>(len) + 1];
    std::memcpy(copy, text.constData(), static_cast<size_t>(len));
    copy[len] = '\0';
    return copy;
}

int countEnv(char *const *envv) {
    int n = 0;
    while (envv && envv[n])
        ++n;
    return n;
}

} // namespace

void ArgsEnv::fromCommandLine(CommandLine const &cmd, bool withEnvironment) {
    std::vector<CommandLineItem> const items = cmd.getItems();
    char **oldEnvv = std::exchange(envv, nullptr);
    release();
    envv = oldEnvv;
    argc = 2;
    for (CommandLineItem const &item : items)
        argc += item.value.isEmpty() ? 1 : 2;
    ppTest("--------------------cc:$", argc + 1);
    argv = new char *[static_cast<size_t>(argc) + 1]();
    int n = 0;
    argv[n++] = cutCopy(cmd.getProgram().toLocal8Bit());
    argv[n++] = cutCopy(cmd.getCommand().toLocal8Bit());
    for (CommandLineItem const &item : items) {
        argv[n++] = cutCopy("--" + item.key.toLocal8Bit());
        if (!item.value.isEmpty())
            argv[n++] = cutCopy(item.value.toLocal8Bit());
    }
    argv[argc] = nullptr;
    ppTest("======================= argc:$", argc);
    if (!withEnvironment)
        return;
    QStringList entries;
    for (QString const &key : QProcessEnvironment::systemEnvironment().keys())
        entries << key + '=' + getEnv(key);
    replaceEnvironment(entries);
}

void ArgsEnv::fromRecord(XRecord const &record) {
    QStringList entries;
    for (QString const &key : record.keys())
        entries << key + '=' + record.getString(key, QString());
    replaceEnvironment(entries);
}

void ArgsEnv::replaceEnvironment(QStringList const &entries) {
    for (int i = 0; envv && envv[i]; ++i)
        delete[] envv[i];
    delete[] envv;
    envv = new char *[static_cast<size_t>(entries.size()) + 1]();
    int e = 0;
    for (QString const &entry : entries)
        envv[e++] = cutCopy(entry.toLocal8Bit());
    envv[e] = nullptr;
}

void ArgsEnv::showArgsOnly(unsigned int space) const {
    if (argv == nullptr) {
        ppDebug(space, "ArgsEnv - no args");
        return;
    }
    ppDebug(space, "ArgsEnv::showInfo");
    ppDebug(space + 4, "argc:$", argc);
    for (int i = 0; i < argc; ++i)
        ppDebug(space + 4, "argv[$] '$'", i, argv[i]);
}

void ArgsEnv::show(unsigned int space) const {
    if (argv == nullptr) {
        ppDebug(space, "ArgsEnv is *EMPTY*");
        return;
    }
    showArgsOnly(space);
    int const count = countEnv(envv);
    ppDebug(space + 4, "env variables:$", count);
    for (int i = 0; i < count; ++i)
        ppDebug(space + 4, "env[$] '$'", i, envv[i]);
}

void ArgsEnv::showCout() const {
    if (argv == nullptr) {
        std::printf("ArgsEnv is *EMPTY*\n");
        return;
    }
    std::printf("argc:%d\n", argc);
    for (int i = 0; i < argc; ++i)
        std::printf("    argv[%d] '%s'\n", i, argv[i]);
    int const count = countEnv(envv);
    std::printf("env variables:%d\n", count);
    for (int i = 0; i < count; ++i)
        std::printf("    env[%d] '%s'\n", i, envv[i]);
    std::fflush(stdout);
}

} // namespace orv
