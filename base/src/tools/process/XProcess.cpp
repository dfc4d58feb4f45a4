// XProcess.cpp: the QProcess signals turned into listener lists, argument and
// environment set-up, and the blocking run.
#include "orv/XProcess.h"

#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/Tokenizer.h"
#include "orv/XArgs.h"
#include "tools/process/Quotes.h"

#include <QtCore/QDir>
#include <QtCore/QProcessEnvironment>

#include <memory>

namespace orv {

namespace {

constexpr int START_LIMIT_MS = 30000;
constexpr int FINISH_LIMIT_MS = 600000;

void showList(unsigned int space, char const *title, QStringList const &entries) {
    ppDebug(space, title, entries.size());
    for (QString const &entry : entries)
        ppDebug(space + 4, "<$>", entry);
}

} // namespace

XAtomic<bool> XProcess::atomicFlagDebug{false};

XProcess::XProcess() {
    connect(this, &QProcess::stateChanged, this, [this](QProcess::ProcessState newState) {
        if (atomicFlagDebug)
            ppDebug("XProcess::XProcess, QProcess::stateChanged, state:$",
                    processStateToString(newState));
        listenerState.fireEvent();
        if (state() == Running)
            lastProcessId = processId();
    });
    connect(this, &QProcess::errorOccurred, this, [this](QProcess::ProcessError processError) {
        if (atomicFlagDebug)
            ppWarning("XProcess::XProcess, QProcess::ProcessError, error:$",
                      processErrorToString(processError));
        listenerError.fireEvent();
        listenerProcessError.fireEvent(processError);
    });
    connect(this, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int, QProcess::ExitStatus exitStatus) {
                bool const crashed = exitStatus == CrashExit;
                if (atomicFlagDebug)
                    ppDebug("XProcess::XProcess, QProcess::ExitStatus:$",
                            crashed ? "CRASH" : "NORMAL");
                listenerFinished.fireEvent(crashed);
            });
}

void XProcess::start(QString const &program, QStringList const &args, OpenMode mode) {
    startMicroseconds = getMicroseconds();
    QProcess::start(program, args, mode);
}

void XProcess::start(QString const &command, OpenMode mode) {
    // The one-string start of QProcess is deprecated; this is the split it made.
    QStringList args = splitCommand(command);
    QString const program = args.isEmpty() ? QString() : args.takeFirst();
    start(program, args, mode);
}

void XProcess::start(OpenMode mode) {
    startMicroseconds = getMicroseconds();
    QProcess::start(mode);
}

void XProcess::setArgs(QString const &line, bool flagSingleQuotes) {
    setArguments(getArgs(line, flagSingleQuotes));
}

QStringList XProcess::getArgs(QString const &line, bool flagSingleQuotes) {
    QStringList args;
    QString const quote = flagSingleQuotes ? QStringLiteral("'") : QStringLiteral("\"");
    for (TokenString const &piece : Tokenizer::get_token_strings(line, quote)) {
        if (flagSingleQuotes) {
            // The blanks between two quoted arguments come as a piece of their own,
            // and give an empty argument.
            args << process::withoutDoubleQuotes(piece.text);
        } else if (piece.quoted) {
            args << piece.text;
        } else {
            Tokenizer words(piece.text, QStringLiteral(" \t"), false);
            while (words.hasMoreToken())
                args << words.nextToken();
        }
    }
    return args;
}

void XProcess::addEnv(QString const &line) {
    XArgs parsed;
    parsed.fromString(line);
    ppDebug("XProcess::addEnv, strEnv:$", line);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (auto const &entry : parsed.getAttributes()) {
        ppDebug(4, "XProcess::addEnv, key:$, val:$", entry.first, entry.second);
        env.insert(entry.first, entry.second);
    }
    setProcessEnvironment(env);
}

void XProcess::addToPath(QString const &dir) {
    if (dir.isEmpty())
        return;
    // PATH is split at the system's list separator, ':' here; a ';' would glue dir
    // and the first old entry into one directory that doesn't exist.
    QString const pathOld = getEnv(QStringLiteral("PATH"));
    QString const pathNew = dir + QDir::listSeparator() + pathOld;
    ppInfo("pathOld:'$'", pathOld);
    ppInfo("pathNew:'$'", pathNew);
    setEnv(QStringLiteral("PATH"), pathNew);
}

// A console of its own is a matter of the Windows process creation; elsewhere the
// child shares the terminal and the call changes nothing.
void XProcess::setWindowsConsoleWin() { ppDebug("XProcess::setWindowsConsoleWin"); }

XProcessResult XProcess::sync_process_result(int) {
    // The listeners stay on the lists after the run and fire again on a later run,
    // so the result they write lives as long as they do.
    auto result = std::make_shared<XProcessResult>();
    listenerState.addListener([this, result] { result->processState = state(); });
    listenerProcessError.addListener(
        [result](QProcess::ProcessError processError) { result->processError = processError; });
    listenerFinished.addListener([this, result](bool) {
        result->exitCode = exitCode();
        ppDebug("pr.exitCode:$", result->exitCode);
    });

    start(ReadWrite);
    if (!waitForStarted(START_LIMIT_MS)) {
        ppError("XProcess::sync_process_result, waitForStarted PROBLEMS");
        return *result;
    }
    if (!waitForFinished(FINISH_LIMIT_MS)) {
        ppError("XProcess::sync_process_result, waitForFinished PROBLEMS");
        return *result;
    }
    result->output = read_utf8_answer();
    result->outputError = read_utf8_error();
    ppDebug("process id:$", lastProcessId);
    return *result;
}

QString XProcess::read_utf8_answer() { return QString::fromUtf8(readAll()); }

QString XProcess::read_utf8_error() { return QString::fromUtf8(readAllStandardError()); }

quint64 XProcess::mcProcessTimeConsumption() const { return getMicroseconds() - startMicroseconds; }

QString XProcess::processErrorToString(QProcess::ProcessError error) {
    switch (static_cast<int>(error)) {
    case 0:
    case 4: return QStringLiteral("FailedToStart");
    case 1: return QStringLiteral("Crashed");
    case 2: return QStringLiteral("Timedout");
    case 3: return QStringLiteral("ReadError");
    case 5: return QStringLiteral("UnknownError");
    default: return xprintF("UNKNOWN ERROR:$", static_cast<int>(error));
    }
}

QString XProcess::processStateToString(QProcess::ProcessState state) {
    switch (state) {
    case NotRunning: return QStringLiteral("NOT RUNNING");
    case Starting: return QStringLiteral("STARTING");
    case Running: return QStringLiteral("RUNNING");
    }
    return xprintF("UNKNOWN-PROCESS-STATE:$", static_cast<int>(state));
}

QString XProcess::toString() const {
    return xprintF("[$], $", processId(), processStateAsString());
}

void XProcess::showEnv(unsigned int space) const {
    showList(space, "environment variables:$", processEnvironment().toStringList());
}

void XProcess::showArgs(unsigned int space, QStringList const &args) {
    showList(space, "Args:$", args);
}

void XProcess::show_before_running(unsigned int space, bool withEnvironment) const {
    ppDebug(space, "XProcess, program: <$>", program());
    showList(space, "arguments:$", arguments());
    if (withEnvironment)
        showList(space, "environment:$", processEnvironment().toStringList());
}

} // namespace orv
