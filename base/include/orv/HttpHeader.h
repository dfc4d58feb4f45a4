// HttpHeader.h: the header block of an HTTP request or response as a record of
// fields, its first line with its tokens, and the small extension-to-type table.
//
//   orv::HttpHeader head(true);
//   head.fromString("GET /a.png HTTP/1.1\r\nHost: h:8080\r\n\r\n");   // true
//   head.getResource();                       // "/a.png"; head.getPort() gives 8080
//   orv::HttpHeader answer(200, "OK", 1);     // "HTTP/1.1 200 OK"
//   answer.setContenType(orv::Mime()["png"]);
//
// No body handling: the block ends at its empty line. Keys are compared exactly and
// keep the case the peer sent, so a peer's "Cache-Control" isn't cacheControl()'s
// "CACHE-CONTROL". Parsers report by false with a log line; a failed parse keeps
// the fields read so far.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/Tokenizer.h"
#include "orv/XAtomic.h"
#include "orv/XRecord.h"

#include <QtCore/QString>

#include <map>

namespace orv {

class BasicSocket;
class Socket;

enum REQUEST_TYPE { GET = 0, POST = 1, HEAD = 2, NOT_SUPPORTED = 3 };

// Compares exactly ("get" is not GET); anything else logs at TEST and is NOT_SUPPORTED.
ORV_EXPORT REQUEST_TYPE requestTypeFromString(QString const &type);
ORV_EXPORT QString stringFromRequestType(REQUEST_TYPE type);

// The request or status line; the tokens exist after a scan.
class ORV_EXPORT FirstLine {
public:
    // Traces each successful request-line scan at DEBUG.
    static XAtomic<bool> atomicFlagDebug;

    FirstLine() = default;
    explicit FirstLine(QString const &line) : line(line) {}

    QString const &getLine() const { return line; }
    void setLine(QString const &text) { line = text; }
    unsigned int getAnswerCode() const { return answerCode; }
    // The line becomes "HTTP/1.0 <code> OK", whatever the code.
    void setAnswerCode(unsigned int code);

    // Cut at blanks and tabs; a request line needs exactly 3 tokens.
    bool scanRequestLine();
    // At least 2 tokens; the second is the answer code (0 if it is no number).
    bool scanResponseLine();

    // The first of 3 tokens, upper-cased.
    REQUEST_TYPE getRequestType() const;
    // The second of 3 tokens, or "" with an error line.
    QString getResource() const;
    bool isHttp1() const;
    bool isHttp11() const;
    bool isHttp2() const;
    // True unless the line starts with "HTTP", "http" or "Http".
    bool isRequest() const;

    Tokenizer const &tokens() const { return toks; }

private:
    bool isVersion(char const *name, char const *version) const;

    QString line;
    unsigned int answerCode = 0;
    Tokenizer toks;
};

class ORV_EXPORT HttpHeader : public XRecord {
public:
    // How long fromSocket waits for more bytes, per wait: 30000 ms unless a program
    // (or a test) sets it shorter.
    static XAtomic<int> socketWaitMs;
    static constexpr int LINE_BYTES = 1024;         // longest line fromSocket takes
    static constexpr int LINE_BYTES_CLASSIC = 4096; // and fromSocketClassic
    static constexpr int MAX_LINES = 30;            // lines before the empty one

    explicit HttpHeader(bool isRequest);
    // The first line as given, not scanned.
    explicit HttpHeader(QString const &firstLine);
    // "HTTP/1.<minor> <code> <text>", scanned as a response.
    HttpHeader(int code, QString const &text, int minor);
    HttpHeader(HttpHeader const &) = default;
    HttpHeader(HttpHeader &&) noexcept = default;
    HttpHeader &operator=(HttpHeader const &) = default;
    HttpHeader &operator=(HttpHeader &&) noexcept = default;
    ~HttpHeader() override;

    QString realTypeAsString() const override { return QStringLiteral("HttpHeader"); }

    QString accept(QString const &dflt) const { return getString(QStringLiteral("Accept"), dflt); }
    void setAccept(QString const &v) { setString(QStringLiteral("Accept"), v); }
    QString acceptEncoding() const { return getString(QStringLiteral("Accept-Encoding")); }
    void setAcceptEncoding(QString const &v) { setString(QStringLiteral("Accept-Encoding"), v); }
    QString acceptLanguage(QString const &dflt) const {
        return getString(QStringLiteral("Accept-Language"), dflt);
    }
    void setAcceptLanguage(QString const &v) { setString(QStringLiteral("Accept-Language"), v); }
    QString cacheControl() const { return getString(QStringLiteral("CACHE-CONTROL")); }
    void setCacheControl(QString const &v) { setString(QStringLiteral("CACHE-CONTROL"), v); }
    QString connection() const { return getString(QStringLiteral("Connection")); }
    void setConnection(QString const &v) { setString(QStringLiteral("Connection"), v); }
    QString contentType() const { return getString(QStringLiteral("Content-Type")); }
    void setContenType(QString const &v) { setString(QStringLiteral("Content-Type"), v); }
    void setMime(QString const &v) { setContenType(v); }
    QString copyright() const { return getString(QStringLiteral("Copyright")); }
    void setCopyright(QString const &v) { setString(QStringLiteral("Copyright"), v); }
    QString description() const { return getString(QStringLiteral("Description")); }
    void setDecription(QString const &v) { setString(QStringLiteral("Description"), v); }
    QString expires() const { return getString(QStringLiteral("EXPIRES")); }
    void setExpires(QString const &v) { setString(QStringLiteral("EXPIRES"), v); }
    QString getContenLanguage(QString const &dflt) const {
        return getString(QStringLiteral("Content-Language"), dflt);
    }
    void setContenLanguage(QString const &v) { setString(QStringLiteral("Content-Language"), v); }
    quint64 getContentLength() const { return getULong(QStringLiteral("Content-Length"), 0); }
    void setContenLen(qint64 len) { setLong(QStringLiteral("Content-Length"), len); }
    QString host() const { return getString(QStringLiteral("Host")); }
    void setHost(QString const &v) { setString(QStringLiteral("Host"), v); }
    QString lastModified() const { return getString(QStringLiteral("LAST-MODIFIED")); }
    void setLastModified(QString const &v) { setString(QStringLiteral("LAST-MODIFIED"), v); }
    QString userAgent() const { return getString(QStringLiteral("User-Agent")); }
    QString getUserAgent() const { return userAgent(); }
    void setUserAgent(QString const &v) { setString(QStringLiteral("User-Agent"), v); }
    int upgradeInsecureRequest() const {
        return getInt(QStringLiteral("Upgrade-Insecure-Requests"), 0);
    }
    void setUpgradeInsecureRequest(int v) {
        setInt(QStringLiteral("Upgrade-Insecure-Requests"), v);
    }

    bool isRequest() const { return request; }
    void setRequest(bool on) { request = on; }
    bool is404() const { return firstLine.getAnswerCode() == 404; }
    // "Connection" holds "keep-alive", case-sensitive.
    bool isKeepAlive() const;
    void setConnectionKeepAlive() { setConnection(QStringLiteral("keep-alive")); }
    bool isUpgradeInsecureRequest() const { return upgradeInsecureRequest() > 0; }

    FirstLine &getFirstLine() { return firstLine; }
    FirstLine const &getFirstLine() const { return firstLine; }
    QString getResource() const { return firstLine.getResource(); }
    // "Host" before its ":", or "".
    QString getHost() const;
    // "Host" behind its ":", 80 when there is none or it is no number.
    int getPort() const;
    // A "GET <path> HTTP/1.1" line and the field "HOST" (this spelling, unseen by
    // host()) from an http URL; other schemes change nothing.
    void setGetResource(QString const &url);

    // One "Key: value" line: one blank after the colon is skipped, a later key replaces
    // an earlier one. No colon, no value or no key: a log line, nothing stored.
    void addKeyVal(QString const &line);

    // A whole head, CR LF line ends required; empty lines are passed over, so the
    // text may hold several blocks. A status line (from "HTTP") makes a response.
    bool fromString(QString const &text);
    // Fields only: CRs dropped, a text after the last LF ignored. False if empty.
    bool fromStringWithoutFirstLine(QString const &text);
    // Reads lines of at most 1024 bytes until the empty one, at most 30, waiting up to
    // socketWaitMs whenever no whole line is buffered; readTail drops one more line.
    bool fromSocket(BasicSocket *socket, bool readTail);
    // The same on a plain socket with lines of at most 4096 bytes and its time-out.
    bool fromSocketClassic(Socket *socket);

    // The first line (if any), "Key: value" lines in key order, each with CR LF, and
    // the empty line.
    QString toStringCRLF(unsigned int space = 0) const;

    void showContents(unsigned int indent, unsigned int level, KeyValueText fn) const override;
    void showContentsOnly(unsigned int indent, unsigned int level) const;

private:
    // addKeyVal on Latin-1 bytes, as the parsers hold them.
    void addKeyValBytes(char const *line, int length);

    FirstLine firstLine;
    bool request = true;
};

// File extensions (lower case, without the dot) to content types. A fixed table:
// "css" and "txt" give "text/html" too.
class ORV_EXPORT Mime {
public:
    Mime();
    // The type of a known extension, or the default type; the table doesn't grow.
    QString const &operator[](QString const &ext) const;
    // The first extension in key order with that type ("text/html" gives "css"), or "".
    QString mimeToExtension(QString const &type) const;
    QString const &defaultType() const { return dfltType; }

private:
    QString dfltType = QStringLiteral("application/octet-stream");
    std::map<QString, QString> table;
};

} // namespace orv
