// XProcess.h: a QProcess with listener lists, environment helpers and a blocking run
// that gives the whole outcome as an XProcessResult.
//
//   orv::XProcess process;
//   process.setProgram("/bin/ls");
//   process.setArgs("-l \"my dir\"", false);
//   orv::XProcessResult result = process.sync_process_result(0);
//   if (result) use(result.get_out());
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XEventListener.h"

#include <QtCore/QProcess>
#include <QtCore/QStringList>

namespace orv {

struct ORV_EXPORT XProcessResult {
    // The last state and error the run saw; a run without an error keeps
    // UnknownError, as QProcess::error() does.
    qint64 processState = QProcess::NotRunning;
    qint64 reservedWord = -1; // never written
    int exitCode = 0;
    int reservedInt = 0; // never written
    QString output;
    QString outputError;
    qint64 processError = QProcess::UnknownError;
    quint64 microseconds = 0;

    // A process that never started has exit code 0 and reads as valid: only
    // processError tells.
    bool is_valid() const { return exitCode == 0; }
    explicit operator bool() const { return is_valid(); }
    QString toString() const { return QString(); }
    bool has_output() const { return !output.isEmpty(); }
    bool has_output_error() const { return !outputError.isEmpty(); }
    // The text less one trailing "\n" (a "\r\n" ending keeps its "\r").
    QString get_out() const;
    QString get_err_out() const;
    QString get_out_elided(unsigned int head, unsigned int tail) const;
    QString format_time() const;
    void show(unsigned int space, bool withOutput) const;
};

// Belongs to the thread that created it, as every QObject.
class ORV_EXPORT XProcess : public QProcess {
    Q_OBJECT
public:
    XProcess();

    // The start forms of QProcess, each noting the start time first.
    void start(QString const &program, QStringList const &args, OpenMode mode = ReadWrite);
    void start(QString const &command, OpenMode mode = ReadWrite);
    void start(OpenMode mode = ReadWrite);

    void setArgs(QString const &line, bool flagSingleQuotes);
    // flagSingleQuotes false: double-quoted stretches are one argument each, the rest
    // is cut at blanks and tabs. True: every piece around single quotes is exactly
    // one argument, with one leading and one trailing `"` removed.
    static QStringList getArgs(QString const &line, bool flagSingleQuotes);
    // The system environment plus the keys of line (read by XArgs); each call starts
    // again from the system environment.
    void addEnv(QString const &line);
    // Puts dir in front of PATH of the calling process, which the child inherits.
    void addToPath(QString const &dir);
    void setWindowsConsoleWin();

    // Starts what is set and waits up to 30 s for the start and 10 minutes for the
    // end; a child that overruns is left running. The argument is not used. Every
    // call adds listeners to the lists, and they stay.
    XProcessResult sync_process_result(int unused);

    QString read_utf8_answer();
    QString read_utf8_error();

    bool isRunning() const { return state() == Running; }
    bool isStarting() const { return state() == Starting; }
    bool isNotRunning() const { return state() == NotRunning; }
    // The id while running is QProcess::processId(); this one outlives the process.
    qint64 processId_past() const { return lastProcessId; }
    quint64 mcProcessTimeStart() const { return startMicroseconds; }
    quint64 mcProcessTimeConsumption() const;

    QString processErrorAsString() const { return processErrorToString(error()); }
    QString processStateAsString() const { return processStateToString(state()); }
    static QString processErrorToString(QProcess::ProcessError error);
    static QString processStateToString(QProcess::ProcessState state);
    // "[<id>], <state>"
    QString toString() const;

    void showEnv(unsigned int space) const;
    static void showArgs(unsigned int space, QStringList const &args);
    void show_before_running(unsigned int space, bool withEnvironment) const;

    XEventListener<void()> listenerState;
    XEventListener<void()> listenerError;
    XEventListener<void(QProcess::ProcessError)> listenerProcessError;
    // true when the process crashed.
    XEventListener<void(bool)> listenerFinished;

    static XAtomic<bool> atomicFlagDebug;

private:
    qint64 lastProcessId = 0;
    quint64 startMicroseconds = 0;
};

} // namespace orv
