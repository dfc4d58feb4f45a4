// XProgramStraight.cpp: finding, starting and exec'ing a program described as a value.
#include "orv/XProgramStraight.h"

#include "orv/ArgsEnv.h"
#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/Tokenizer.h"
#include "orv/XError.h"
#include "orv/XProcess.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace orv {

namespace {

constexpr int START_LIMIT_MS = 30000;

} // namespace

XProgramStraight::~XProgramStraight() = default;

bool XProgramStraight::hasValidWorkPath() const {
    return !workPath.isEmpty() && QDir(workPath).exists();
}

QString XProgramStraight::resolvedProgram() const {
    QString const name = cmd.getProgram();
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return name;
    // PATH is split at the system's list separator and joined with its directory
    // separator; no extension is tried.
    Tokenizer dirs;
    dirs.scan(getEnv(QStringLiteral("PATH")), QString(QDir::listSeparator()), false);
    while (dirs.hasMoreToken()) {
        QString const candidate = dirs.nextToken() + QLatin1Char('/') + name;
        if (QFileInfo(candidate).isExecutable())
            return candidate;
    }
    return name;
}

XProcess *XProgramStraight::startProgram() {
    ppDebug("XProgramStraight::startProgram");
    if (hasValidWorkPath() && !QDir::setCurrent(workPath))
        ppError("WinStarter::execProgram, cannot set directory to '$'", workPath);
    QString const path = resolvedProgram();
    ppDebug("XProgramStraight::startProgram, strPath '$'", path);

    auto *process = new XProcess();
    process->listenerState.addListener([process] {
        if (process->isRunning())
            ppDebug("XProgramStraight::startProgram, running PID:$", process->processId());
    });
    process->listenerError.addListener([process] {
        ppError("XProgramStraight::startProgram, da proc err:$", process->toString());
    });
    process->listenerFinished.addListener([process](bool crashed) {
        if (crashed)
            ppError("XProgramStraight::startProgram, listenerExit, process [$] exit, flagCrashed:$",
                    process->processId_past(), crashed);
        else
            ppTest("XProgramStraight::startProgram, listenerExit, process [$] exit",
                   process->processId_past());
        process->deleteLater();
    });

    cmd.showParsedArgs(8);
    // The command line without its program, as the arguments; toString doesn't quote,
    // so a value that must keep its blanks carries its own double quotes.
    process->setArgs(cmd.toString(CommandLine::FORMAT_COMMAND_KEYS), false);
    // "--KEY value ..." is the form addEnv reads.
    process->addEnv(recEnv.toStringCmd());
    process->setProgram(path);
    process->start(QIODevice::ReadWrite);
    if (process->waitForStarted(START_LIMIT_MS))
        ppInfo("XProgramStraight::startProgram, processID:$ started", process->processId());
    else
        ppError("XProgramStraight::startProgram, processID cannot start_global:$",
                getLastErrorMessage());
    return process;
}

bool XProgramStraight::reStartProgram() {
    ppDebug("XProgramStraight::reStartProgram");
    ArgsEnv args;
    args.fromCommandLine(cmd, false);
    args.fromRecord(recEnv);
    args.restartProgram();
    return false;
}

void XProgramStraight::show(unsigned int space) {
    ppDebug(space, "XProgramStraight");
    cmd.showParsedArgs(static_cast<int>(space + 4));
    ppDebug(space + 4, "Environment");
    recEnv.showContents(space + 8, DEBUG, nullptr);
}

} // namespace orv
