// FirstLine.cpp: the request or status line of an HTTP head, cut into its tokens,
// and the request methods by name.
#include "orv/HttpHeader.h"

#include "orv/Log.h"

namespace orv {

XAtomic<bool> FirstLine::atomicFlagDebug{false};

REQUEST_TYPE requestTypeFromString(QString const &type) {
    if (type == QLatin1String("GET"))
        return GET;
    if (type == QLatin1String("POST"))
        return POST;
    if (type == QLatin1String("HEAD"))
        return HEAD;
    ppTest("::requestTypeFromString - type is '$'", type);
    return NOT_SUPPORTED;
}

QString stringFromRequestType(REQUEST_TYPE type) {
    switch (type) {
    case GET: return QStringLiteral("GET");
    case POST: return QStringLiteral("POST");
    case HEAD: return QStringLiteral("HEAD");
    case NOT_SUPPORTED: return QStringLiteral("NOT_SUPPORTED");
    }
    return QStringLiteral("???stringFromRequestType??? should not be here");
}

namespace {

// A fresh cut each time: the tokenizer appends to what an earlier scan left.
Tokenizer cutAtBlanks(QString const &line) { return Tokenizer(line, QStringLiteral(" \t"), false); }

} // namespace

void FirstLine::setAnswerCode(unsigned int code) {
    answerCode = code;
    line = QStringLiteral("HTTP/1.0 %1 OK").arg(code);
}

bool FirstLine::scanRequestLine() {
    toks = cutAtBlanks(line);
    if (toks.size() == 3) {
        if (atomicFlagDebug)
            ppDebug("FirstLine::scanRequestLine - strLine '$'", line);
        return true;
    }
    ppError("FirstLine::scanRequestLine - toks.size() != 3, we have $ token", toks.size());
    ppError("first line '$'", line);
    ppError(QString());
    return false;
}

bool FirstLine::scanResponseLine() {
    toks = cutAtBlanks(line);
    if (toks.size() >= 2) {
        answerCode = static_cast<unsigned int>(toks.LONG_at(1, 0));
        return true;
    }
    ppError("FirstLine::scanResponseLine - toks.size() < 2, we have $ token", toks.size());
    ppError("FirstLine::scanResponseLine - strLine '$'", line);
    return false;
}

REQUEST_TYPE FirstLine::getRequestType() const {
    if (toks.size() != 3) {
        ppError("FirstLine::getRequestType - toks.size() != 3, we have $ token", toks.size());
        return NOT_SUPPORTED;
    }
    return requestTypeFromString(toks[0].toUpper());
}

QString FirstLine::getResource() const {
    if (toks.size() != 3) {
        ppError("FirstLine::getResource - toks.size() != 3, we have $ token", toks.size());
        return QString();
    }
    return toks[1];
}

bool FirstLine::isVersion(char const *name, char const *version) const {
    if (toks.size() != 3) {
        ppError("FirstLine::$ - toks.size() != 3, we have $ token", name, toks.size());
        return false;
    }
    return toks[2] == QLatin1String(version);
}

bool FirstLine::isHttp1() const { return isVersion("isHttp1", "HTTP/1.0"); }
bool FirstLine::isHttp11() const { return isVersion("isHttp11", "HTTP/1.1"); }
bool FirstLine::isHttp2() const { return isVersion("isHttp2", "HTTP/2"); }

bool FirstLine::isRequest() const {
    return !(line.startsWith(QLatin1String("HTTP")) || line.startsWith(QLatin1String("http")) ||
             line.startsWith(QLatin1String("Http")));
}

} // namespace orv
