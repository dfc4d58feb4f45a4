// XError.cpp: the error word, the table of library error texts and the
// system error messages.
#include "orv/XError.h"

#include "orv/Log.h"
#include "tools/log/LoggerState.h"
#include "tools/platform/OrvPlatform.h"

#include <cerrno>
#include <cstring>
#include <mutex>

namespace orv {

namespace {

std::map<unsigned int, QString> &rawMap() {
    static std::map<unsigned int, QString> map;
    return map;
}

void insertError(unsigned int code, QString const &text) {
    // Plain standard output: the first texts are added before any logger exists.
    if (!rawMap().emplace(code, text).second)
        logger::writeLine("XErrorMap::addError, key already present, key:" +
                          QByteArray::number(code));
}

} // namespace

XError::~XError() = default;

void XError::setErrno(int value) { bits.setLowPart(static_cast<unsigned short>(value)); }

void XError::setOrvError(unsigned short code) {
    bits.setLowPart(ORV_ERROR_BASE);
    bits.setHighPart(code);
}

QString XError::errAsString() const {
    if (bits.lowPart() == 0)
        return QStringLiteral("NO-ERROR,errno==0");
    if (bits.lowPart() >= ORV_ERROR_BASE) {
        if (bits.highPart() == 0)
            return QStringLiteral("ORV-ERROR-0");
        return XErrorMap::getError(bits.highPart());
    }
    int number = errno;
    char const *text = std::strerror(number);
    if (!text)
        return xprintF("no error text, errno:$", number);
    return xprintF("$, errno:$", QString::fromLocal8Bit(text), number);
}

int XError::printStringErrno(QString const &text, int result) {
    XError error;
    error.setErrno(errno);
    if (text.isEmpty())
        ppError(error.errAsString());
    else
        ppError(text + QStringLiteral(", errno:") + error.errAsString());
    return result;
}

XErrorMap::~XErrorMap() = default;

void XErrorMap::checkMap() {
    static std::once_flag filled;
    std::call_once(filled, [] {
        insertError(100, QStringLiteral("orv,cannot read resource"));
        insertError(110, QStringLiteral("orv,timeout"));
        insertError(120, QStringLiteral("orv,buffer empty"));
        insertError(130, QStringLiteral("orv,object not initialized"));
        insertError(140, QStringLiteral("orv,index out of range"));
        insertError(150, QStringLiteral("orv,truncate"));
        insertError(160, QStringLiteral("orv,eof"));
        insertError(170, QStringLiteral("orv,number too big"));
    });
}

std::map<unsigned int, QString> &XErrorMap::mapErr() {
    checkMap();
    return rawMap();
}

void XErrorMap::addError(unsigned int code, QString const &text) {
    checkMap();
    insertError(code, text);
}

bool XErrorMap::containsError(unsigned int code) { return mapErr().count(code) > 0; }

QString XErrorMap::getError(unsigned int code) {
    // A copy, so that a lookup on a failure path never sees a map being filled.
    std::map<unsigned int, QString> copy = mapErr();
    auto it = copy.find(code);
    if (it == copy.end())
        return xprintF("ORV_ERROR_* {$} NOT DEFINED", code);
    return it->second;
}

quint64 XErrorMap::size() { return mapErr().size(); }

void XErrorMap::showErrorMap(unsigned int space) {
    ppDebug(space, "XErrorMap - size():$", size());
    for (auto const &entry : mapErr())
        ppDebug(space, "$: '$'", entry.first, entry.second);
}

QString get_last_error_message() {
    int number = errno;
    char const *text = std::strerror(number);
    if (!text || !*text)
        return xprintF("errno:$", number);
    return xprintF("errno:$ => $", number, QString::fromLocal8Bit(text));
}

QString getLastErrorMessage() {
    if (errno == 0)
        return QStringLiteral("ERRNO == 0");
    int socketError = platform::lastSocketError();
    if (platform::isTimeout(socketError)) {
        ppDebug(" - da timeout ! -");
        ppDebug(" - da timeout X ! -");
    }
    return xprintF("WSAGetLastError:$", socketError);
}

} // namespace orv
