// Logger.h: the process-wide logger and the console output that works before it runs.
//
//   orv::Logger::printToCout("starting");   // straight to stdout, one line
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

namespace orv {

class LogMessage;

class ORV_EXPORT Logger {
public:
    // One line on stdout, under the console mutex, bypassing queue and mask.
    // A null text prints "ppCout(nullptr)".
    static void printToCout(QString const &text);
    static void printToCout(char const *text);

    static bool isRunning();

    // Gives the message its level word and indentation and hands it on. Until
    // the logger thread runs, messages are formatted and then discarded.
    static void log(LogMessage *msg, unsigned int level, unsigned int space);

    // The main thread is the one that loaded the library, until set otherwise.
    static void setThreadIDMain();
    static unsigned int getThreadIDMain();
    static bool isMainThread(unsigned int threadID);

private:
    static void logMessage(LogMessage *msg);
};

// Whether the calling thread is the program's main thread.
ORV_EXPORT bool isMainThread();

} // namespace orv
