// ArgsEnv.h: an owned deep copy of the process's arguments and environment, in the
// NUL-terminated form execve wants, so that the program can start itself again.
//
//   orv::ArgsEnv args;
//   args.fromMain(argc, argv, envp);
//   args.restartProgram();   // returns only if the new start failed
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QStringList>

namespace orv {

class CommandLine;
struct XRecord;

class ORV_EXPORT ArgsEnv {
public:
    static constexpr int MAX_LINE_LEN = 4096;

    ArgsEnv() = default;
    // Deep copy.
    ArgsEnv(ArgsEnv const &other);
    // Takes the vectors and leaves other empty.
    ArgsEnv(ArgsEnv &&other) noexcept;
    ArgsEnv &operator=(ArgsEnv const &other);
    ArgsEnv &operator=(ArgsEnv &&other) noexcept;
    virtual ~ArgsEnv();

    // Copies argc arguments (a null among them is fatal) and envv up to its null
    // entry; a null envv gives an empty vector.
    void fromMain(int argc, char **const argv, char **const envv);
    // argv becomes program, command, then "--key" and (when not empty) the value of
    // each item, every string cut at 32767 bytes; with withEnvironment, envv becomes
    // the process environment as NAME=value (double quotes of values dropped).
    void fromCommandLine(CommandLine const &cmd, bool withEnvironment);
    // envv becomes one key=value per key of the record, in its key order, each cut
    // at 32767 bytes.
    void fromRecord(XRecord const &record);
    // Replaces the process with argv[0] started on argv and envv. Returns only when
    // that failed, after the diagnostics on stdout.
    void restartProgram();
    // Builds a process object and lets it go again: nothing is started.
    void startProgram();
    // The vectors at DEBUG; "ArgsEnv is *EMPTY*" when there are none.
    void show(unsigned int space) const;
    void showArgsOnly(unsigned int space) const;
    // The same list on stdout.
    void showCout() const;

    int argc = 0;
    // argc + 1 entries, the last null.
    char **argv = nullptr;
    // NAME=value entries up to a null one; may be null.
    char **envv = nullptr;

private:
    void release();
    void replaceEnvironment(QStringList const &entries);
    void copyFrom(ArgsEnv const &other);
};

} // namespace orv
