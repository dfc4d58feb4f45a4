// LoggerMem.cpp: messages that carry a block of memory along, one wrapper per level.
#include "orv/LogAttachment.h"
#include "orv/LogMessage.h"
#include "orv/Logger.h"

namespace orv {

void Logger::logMem(XMemFile &mem, bool copy, unsigned int level, QString const &text) {
    auto *msg = new LogMessageString(text);
    auto *attachment = new LogAttachment();
    if (copy)
        attachment->XMemFile::operator=(mem);
    else
        attachment->XMemFile::operator=(std::move(mem));
    msg->attach(attachment);
    log(msg, level, 0);
}

void Logger::logMemCommand(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, COMMAND, text);
}

void Logger::logMemDebug(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, DEBUG, text);
}

void Logger::logMemError(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, ERROR, text);
}

void Logger::logMemInfo(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, INFO, text);
}

void Logger::logMemRequest(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, REQUEST, text);
}

void Logger::logMemResponse(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, RESPONSE, text);
}

void Logger::logMemState(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, STATE, text);
}

void Logger::logMemTest(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, TEST, text);
}

void Logger::logMemWarning(XMemFile &mem, bool copy, QString const &text) {
    logMem(mem, copy, WARN, text);
}

} // namespace orv
