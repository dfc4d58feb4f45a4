// FatalHandling.cpp: the end of the process when a precondition is broken.
#include "orv/XError.h"

#include "orv/Logger.h"
#include "tools/log/LoggerState.h"

#include <QtCore/QByteArray>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace orv {

namespace {

// Plain standard output, no trailer and no lock: the console mutex may be held by
// the very thread that failed.
void toStdout(QByteArray const &lines) { logger::writeLine(lines); }

// Five seconds give a watching user or a test harness the time to read the place.
void announceExitAndWait() {
    toStdout("program will exit in 5 sec");
    std::this_thread::sleep_for(std::chrono::milliseconds(5000));
}

QByteArray place(char const *file, int line) {
    return QByteArray(file ? file : "") + "\nLINE:" + QByteArray::number(line);
}

} // namespace

void boolExpressionHandling(char const *file, int line) {
    // The logger stops first, so that what it queued reaches the appenders.
    loggerQuit();
    toStdout("bool expression failure:\n" + place(file, line));
    announceExitAndWait();
    toStdout("program exit !");
    std::exit(1);
}

void nullPointerHandling(char const *file, int line, QString const &message) {
    // The logger stops first, so that what it queued reaches the appenders.
    loggerQuit();
    toStdout("nullptr:" + message.toUtf8() + '\n' + place(file, line));
    announceExitAndWait();
    std::exit(1);
}

} // namespace orv
