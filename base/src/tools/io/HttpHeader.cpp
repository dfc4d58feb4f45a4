// HttpHeader.cpp: building HTTP heads (requests, responses, the URL form), their
// Host field, and their text and log forms. Parsing is in HttpHeaderParse.cpp.
#include "orv/HttpHeader.h"

#include "orv/Log.h"

#include <QtCore/QUrl>

namespace orv {

XAtomic<int> HttpHeader::socketWaitMs{30000};

HttpHeader::HttpHeader(bool isRequest) : request(isRequest) {}

HttpHeader::HttpHeader(QString const &line) : firstLine(line), request(firstLine.isRequest()) {}

HttpHeader::HttpHeader(int code, QString const &text, int minor)
    : firstLine(QStringLiteral("HTTP/1.%1 %2 %3").arg(minor).arg(code).arg(text)), request(false) {
    firstLine.scanResponseLine();
}

HttpHeader::~HttpHeader() = default;

bool HttpHeader::isKeepAlive() const {
    QString const value = connection();
    return !value.isEmpty() && value.contains(QLatin1String("keep-alive"));
}

QString HttpHeader::getHost() const {
    QString const value = host();
    Tokenizer const toks(value, QStringLiteral(":"), false);
    if (toks.size() == 0) {
        ppDebug("HttpHeader::getHost, what ????, s '$'", value);
        return QString();
    }
    return toks[0];
}

int HttpHeader::getPort() const {
    QString const value = host();
    Tokenizer const toks(value, QStringLiteral(":"), false);
    if (toks.size() == 0) {
        ppDebug("HttpHeader::getPort, what ????, s '$'", value);
        return 80;
    }
    if (toks.size() == 1) {
        ppDebug("HttpHeader::getPort, standard, return 80");
        return 80;
    }
    bool ok = false;
    long long const port = toks[1].toLongLong(&ok, 10);
    return ok ? static_cast<int>(port) : 80;
}

void HttpHeader::setGetResource(QString const &url) {
    QUrl parsed(url);
    if (parsed.scheme().isEmpty())
        parsed = QUrl(QStringLiteral("http://") + url);
    QString const hostName = parsed.host(QUrl::FullyDecoded);
    QString const path = parsed.path(QUrl::FullyDecoded);
    ppDebug("host: '$'", hostName);
    ppDebug("path: '$'", path);
    ppDebug("scheme: '$'", parsed.scheme());
    if (parsed.scheme() != QLatin1String("http")) {
        ppDebug("HttpHeader::setGetResource - '$' not supported yet!", parsed.scheme());
        return;
    }
    setString(QStringLiteral("HOST"), hostName);
    firstLine.setLine(QStringLiteral("GET ") + path + QStringLiteral(" HTTP/1.1"));
}

QString HttpHeader::toStringCRLF(unsigned int) const {
    static QString const crlf = QStringLiteral("\r\n");
    QString text;
    if (!firstLine.getLine().isEmpty())
        text += firstLine.getLine() + crlf;
    for (auto const &field : getAttributes())
        text += field.first + QStringLiteral(": ") + field.second + crlf;
    return text + crlf;
}

void HttpHeader::showContents(unsigned int indent, unsigned int level, KeyValueText fn) const {
    KeyValueText const &print = fn ? fn : kvAsString;
    ppLog(level, indent, QStringLiteral("HttpHeader"));
    ppLog(level, indent, "<<<$>>>", firstLine.getLine());
    for (auto const &field : getAttributes())
        ppLog(level, indent, print(field.first, field.second));
    ppLog(level, indent, QStringLiteral("~Header"));
}

void HttpHeader::showContentsOnly(unsigned int indent, unsigned int level) const {
    ppLog(level, indent, "Header [$]", countAttributes());
    for (auto const &field : getAttributes())
        ppLog(level, indent, "$: '$'", field.first, field.second);
    ppLog(level, indent, QStringLiteral("~Header"));
}

} // namespace orv
