// AppenderConsole.cpp: the appender base and the console lines with their trailers.
#include "orv/Appender.h"

#include "orv/LogAttachment.h"
#include "orv/LogMessage.h"
#include "orv/OrvTime.h"
#include "tools/log/LoggerState.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

namespace {

// Counts the lines of printToCout, independent of the message numbers.
std::atomic<unsigned int> simpleTrailerCounter{0};

QString timeGroup(OrvTime const &time, unsigned int format) {
    switch (format) {
    case 0: return time.getTheTimeString("%M:%S", OrvTime::MILLISECONDS);
    case 1: return time.getTheTimeString("%H:%M:%S", OrvTime::MILLISECONDS);
    case 2: return time.getTheTimeString("%M:%S", OrvTime::MICROSECONDS);
    case 3: return time.getTheTimeString("%H:%M:%S", OrvTime::MICROSECONDS);
    default: return QString();
    }
}

} // namespace

Appender::Appender(QString const &name) : name(name) {}

Appender::~Appender() = default;

bool Appender::isAppenderConsole() const { return false; }

bool Appender::isAppenderGUI() const { return false; }

bool Appender::isAppenderFile() const { return false; }

std::atomic<unsigned int> AppenderConsole::atomicTimeFormat{1};

AppenderConsole::AppenderConsole(bool includeTrailler)
    : Appender(QStringLiteral("console")), includeTrailler(includeTrailler) {}

QString AppenderConsole::trailerFromLogMessage(LogMessage *msg) {
    return QString::asprintf("[%06u] [%s] [", msg->getNumber(),
                             logLevelToString(msg->getLogLevel())) +
           timeGroup(msg->getTime(), atomicTimeFormat.load()) +
           QString::asprintf("] [%06u] ", msg->isMainThread() ? 0u : msg->getThreadID());
}

QString AppenderConsole::trailerSimple() {
    return QString::asprintf("<%06u> <", simpleTrailerCounter.fetch_add(1)) +
           OrvTime(true).getTheTimeString("%H:%M:%S", OrvTime::MILLISECONDS) +
           QString::asprintf("> <%06u> ", platform::threadId());
}

void AppenderConsole::append(LogMessage *msg) {
    QString line;
    if (includeTrailler.load())
        line = trailerFromLogMessage(msg);
    line += QString(static_cast<int>(msg->getSpace()), QLatin1Char(' '));
    if (LogAttachment *attachment = msg->detach()) {
        line += QStringLiteral("{mem:$}").replace(
            '$', attachment->length() > 0 && attachment->isOK() ? '1' : '0');
        delete attachment;
    }
    line += msg->toString();
    logger::writeLine(line.toUtf8());
}

} // namespace orv
