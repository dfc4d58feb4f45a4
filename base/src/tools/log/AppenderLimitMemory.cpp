// AppenderLimitMemory.cpp: the newest messages in memory, and the errors without limit.
#include "orv/Appender.h"

#include "orv/LogMessage.h"

namespace orv {

namespace {

QString lineOf(LogMessage *msg) {
    return AppenderConsole::trailerFromLogMessage(msg) +
           QString(static_cast<int>(msg->getSpace()), QLatin1Char(' ')) + msg->toString();
}

} // namespace

AppenderLimitMemory::AppenderLimitMemory(unsigned int indexDrop, unsigned int maxMessages,
                                         unsigned int reserved)
    : Appender(QStringLiteral("limitMemory")), indexDrop(indexDrop), maxMessages(maxMessages),
      reserved(reserved) {}

AppenderLimitMemory::~AppenderLimitMemory() {
    qDeleteAll(messages);
    // The error copies are this appender's too: nobody else holds them.
    qDeleteAll(errorMessages);
}

void AppenderLimitMemory::append(LogMessage *msg) {
    if (static_cast<unsigned int>(messages.size()) >= maxMessages) {
        // An index past the end drops nothing, and the list grows by one.
        if (indexDrop < static_cast<unsigned int>(messages.size()))
            delete messages.takeAt(static_cast<int>(indexDrop));
    }
    messages.append(msg->createCopy());
    if (msg->isError() || msg->isFatal())
        errorMessages.append(msg->createCopy());
}

void AppenderLimitMemory::getLogMessagesAsStrings(QStringList &lines) const {
    unsigned int previous = 0;
    for (LogMessage *msg : messages) {
        if (msg->getNumber() > previous + 1)
            lines.append(QStringLiteral(".."));
        lines.append(lineOf(msg));
        previous = msg->getNumber();
    }
}

void AppenderLimitMemory::getLogErrorMessagesAsStrings(QStringList &lines) const {
    for (LogMessage *msg : errorMessages)
        lines.append(lineOf(msg));
}

} // namespace orv
