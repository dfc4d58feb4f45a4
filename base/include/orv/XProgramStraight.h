// XProgramStraight.h: a program to launch, as a value: its command line, the extra
// environment it gets and the directory it starts in. It starts that program as a
// child, or replaces the current process with it.
//
//   orv::XProgramStraight program;
//   program.setCmd(cmd);                          // program, command, --key value ...
//   program.setRecEnv(env);                       // keys added to the system's environment
//   orv::XProcess *child = program.startProgram();   // deletes itself when it ends
#pragma once

#include "orv/CommandLine.h"
#include "orv/XRecord.h"

#include <QtCore/QString>

namespace orv {

class XProcess;

class ORV_EXPORT XProgramStraight {
public:
    XProgramStraight() = default;
    XProgramStraight(XProgramStraight const &) = default;
    XProgramStraight(XProgramStraight &&) = default;
    XProgramStraight &operator=(XProgramStraight const &) = default;
    XProgramStraight &operator=(XProgramStraight &&) = default;
    virtual ~XProgramStraight();

    CommandLine const &getCmd() const { return cmd; }
    void setCmd(CommandLine const &commandLine) { cmd = commandLine; }
    XRecord const &getRecEnv() const { return recEnv; }
    void setRecEnv(XRecord const &record) { recEnv = record; }
    QString getWorkPath() const { return workPath; }
    void setWorkPath(QString const &path) { workPath = path; }
    // Not empty, and the directory exists.
    bool hasValidWorkPath() const;

    // The program as it will be started: a name with a path separator as it stands,
    // else the first executable of that name on PATH, else the name as given.
    QString resolvedProgram() const;

    // Starts the program as a child with "command --key value ..." as its arguments
    // (double quotes keep blanks inside one argument), the system's environment plus
    // recEnv, in workPath when that is valid: the directory of this process changes
    // too and stays changed. Waits up to 30 s for the start. The process is returned
    // whether it started or not, and deletes itself (deleteLater) when it finishes: the
    // pointer goes stale then, and one that never started is never deleted.
    XProcess *startProgram();
    // Replaces this process with the program, argv program, command, "--key", value
    // ..., and recEnv alone as its environment (workPath is not used). Returns false
    // only when the replacement failed, after the diagnostics on stdout.
    bool reStartProgram();
    void show(unsigned int space);

private:
    CommandLine cmd;
    XRecord recEnv;
    QString workPath;
};

} // namespace orv
