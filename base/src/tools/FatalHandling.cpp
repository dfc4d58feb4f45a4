// FatalHandling.cpp: the end of the process when a precondition is broken.
#include "orv/XError.h"

#include "orv/Logger.h"
#include "orv/XStringStream.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace orv {

namespace {

// Five seconds give a watching user or a test harness the time to read the place.
void announceExitAndWait() {
    Logger::printToCout("program will exit in 5 sec");
    std::this_thread::sleep_for(std::chrono::milliseconds(5000));
}

} // namespace

void boolExpressionHandling(char const *file, int line) {
    // The logger stops first, so that what it queued reaches the appenders.
    loggerQuit();
    Logger::printToCout("bool expression failure:");
    Logger::printToCout(file);
    Logger::printToCout(xprintF("LINE:$", line));
    announceExitAndWait();
    Logger::printToCout("program exit !");
    std::exit(1);
}

void nullPointerHandling(char const *file, int line, QString const &message) {
    // The logger stops first, so that what it queued reaches the appenders.
    loggerQuit();
    Logger::printToCout(QStringLiteral("nullptr:") + message);
    Logger::printToCout(file);
    Logger::printToCout(xprintF("LINE:$", line));
    announceExitAndWait();
    std::exit(1);
}

} // namespace orv
