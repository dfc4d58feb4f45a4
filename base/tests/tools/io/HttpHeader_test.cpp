// HttpHeader_test.cpp: HTTP heads read from text against Python's own header parser,
// the first line's tokens, the text form, the Host field and the Mime table.
#include "orv/HttpHeader.h"
#include "support/Test.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

namespace {

using orv::HttpHeader;
using orv::test::linesLoggedBy;
using Fields = std::map<QString, QString>;

// Real heads, and where this parser reads them otherwise than Python's http.client
// (an email parser): the reason and the fields it gives instead.
struct HeadRow {
    char const *name;
    QByteArray head;
    char const *departure = nullptr; // null: the fields are Python's, later duplicates winning
    Fields fields = {};
};

// Python also reads a line ending in a bare LF; here the whole head fails instead, as
// BrokenHeadsFailWithTheirLogLines checks.
std::vector<HeadRow> const heads = {
    {"firefox",
     "GET /index.html HTTP/1.1\r\nHost: example.org\r\nUser-Agent: Mozilla/5.0 (X11; Linux "
     "x86_64; rv:109.0) Gecko/20100101 Firefox/115.0\r\nAccept: "
     "text/html,application/xhtml+xml,application/xml;q=0.9,image/avif,*/*;q=0.8\r\n"
     "Accept-Language: en-US,en;q=0.5\r\nAccept-Encoding: gzip, deflate, br\r\nConnection: "
     "keep-alive\r\nUpgrade-Insecure-Requests: 1\r\nSec-Fetch-Dest: document\r\n\r\n"},
    {"chrome",
     "GET /a?q=1 HTTP/1.1\r\nHost: localhost:8080\r\nsec-ch-ua: \"Chromium\";v=\"116\"\r\n"
     "sec-ch-ua-mobile: ?0\r\nCache-Control: max-age=0\r\nCookie: a=1; b=2\r\n\r\n"},
    {"curl",
     "GET / HTTP/1.1\r\nHost: 127.0.0.1:8080\r\nUser-Agent: curl/7.88.1\r\nAccept: */*\r\n\r\n"},
    {"nginx",
     "HTTP/1.1 301 Moved Permanently\r\nServer: nginx/1.22.1\r\nDate: Mon, 01 Jan 2024 00:00:00 "
     "GMT\r\nContent-Type: text/html\r\nContent-Length: 169\r\nLocation: "
     "https://example.org/\r\n\r\n"},
    {"apache, duplicated Set-Cookie",
     "HTTP/1.1 200 OK\r\nServer: Apache/2.4.57 (Debian)\r\nSet-Cookie: a=1\r\nSet-Cookie: "
     "b=2\r\nVary: Accept-Encoding\r\nTransfer-Encoding: chunked\r\n\r\n"},
    {"odd case, a blank value, trailing blanks, Latin-1",
     "HTTP/1.0 200 OK\r\ncontent-TYPE: text/plain\r\nX-Blank: \r\nX-Trail: v  \r\nX-Name: "
     "Jos\xe9\r\n\r\n"},
    {"python http.server",
     "HTTP/1.0 404 File not found\r\nServer: SimpleHTTP/0.6 Python/3.11.2\r\n\r\n"},
    {"empty field",
     "GET / HTTP/1.1\r\nX-Empty:\r\nA: 1\r\n\r\n",
     "a colon with nothing behind it stores nothing",
     {{"A", "1"}}},
    {"folded field",
     "GET / HTTP/1.1\r\nX-Folded: a\r\n  b\r\n\r\n",
     "a continuation line is a line of its own, without a colon: dropped",
     {{"X-Folded", "a"}}},
    {"two blanks and a tab",
     "GET / HTTP/1.1\r\nA:  two\r\nB:\tt\r\n\r\n",
     "only one blank after the colon is skipped",
     {{"A", " two"}, {"B", "\tt"}}},
};

// Python's fields of each head (without its first line), later duplicates winning.
std::vector<Fields> pythonFields() {
    QString const python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty())
        return {};
    QByteArray input;
    for (HeadRow const &row : heads)
        input += row.head.mid(row.head.indexOf('\n') + 1).toHex() + '\n';
    QProcess process;
    process.start(python, {QStringLiteral("-c"),
                           QStringLiteral("import sys, io, json, http.client\n"
                                          "print(json.dumps([http.client.parse_headers(io.BytesIO("
                                          "bytes.fromhex(l))).items() for l in sys.stdin]))")});
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(20000);
    std::vector<Fields> all;
    for (QJsonValue const &head :
         QJsonDocument::fromJson(process.readAllStandardOutput()).array()) {
        Fields fields;
        for (QJsonValue const &pair : head.toArray())
            fields[pair.toArray()[0].toString()] = pair.toArray()[1].toString();
        all.push_back(fields);
    }
    return all;
}

TEST(HttpHeader, ReadsRealHeadsAsPythonsParserDoesSaveWhereItDepartsOnPurpose) {
    std::vector<Fields> const python = pythonFields();
    if (python.size() != heads.size())
        GTEST_SKIP() << "python3 is needed for the reference parser (scripts/bootstrap.sh)";
    for (size_t i = 0; i < heads.size(); ++i) {
        HeadRow const &row = heads[i];
        SCOPED_TRACE(row.name);
        HttpHeader header(true);
        EXPECT_TRUE(header.fromString(QString::fromLatin1(row.head)));
        if (!row.departure) {
            EXPECT_EQ(header.getAttributes(), python[i]);
            continue;
        }
        EXPECT_NE(header.getAttributes(), python[i]) << "no departure: " << row.departure;
        EXPECT_EQ(header.getAttributes(), row.fields) << row.departure;
    }
}

TEST(HttpHeader, ReadsRequestAndResponseLines) {
    HttpHeader request(false);
    ASSERT_TRUE(request.fromString("GET / HTTP/1.1\r\nHost: a:8080\r\n\r\n"));
    EXPECT_TRUE(request.isRequest());
    EXPECT_EQ(request.getHost(), "a");
    EXPECT_EQ(request.getPort(), 8080);
    EXPECT_EQ(request.getResource(), "/");
    EXPECT_EQ(request.getFirstLine().getRequestType(), orv::GET);
    EXPECT_TRUE(request.getFirstLine().isHttp11());

    HttpHeader response(true);
    ASSERT_TRUE(response.fromString("HTTP/1.1 404 Not Found\r\n\r\n"));
    EXPECT_TRUE(response.is404());
    EXPECT_FALSE(response.isRequest());

    HttpHeader built(200, "OK", 1);
    EXPECT_EQ(built.getFirstLine().getLine(), "HTTP/1.1 200 OK");
    EXPECT_EQ(built.getFirstLine().getAnswerCode(), 200u);
    EXPECT_FALSE(built.isRequest());
}

// Each text logs exactly these lines (at any level) and gives the result.
TEST(HttpHeader, BrokenHeadsFailWithTheirLogLines) {
    struct Row {
        char const *text;
        std::vector<QString> lines;
    } const rows[] = {
        {"GET / HTTP/1.1\nHost: a\n\n", {"Header::from_String_old - strange1"}},
        {"GET / HTTP/1.1\r\nA: 1\n\r\n",
         {"Header::from_String_old - strange2", "<<<GET / HTTP/1.1\r\nA: 1\n\r\n>>>"}},
        {"GET /\r\n\r\n",
         {"FirstLine::scanRequestLine - toks.size() != 3, we have 2 token", "first line 'GET /'",
          "", "HttpHeader::from_String_old - first line is not HTTP"}},
        {"HTTP\r\n\r\n",
         {"FirstLine::scanResponseLine - toks.size() < 2, we have 1 token",
          "FirstLine::scanResponseLine - strLine 'HTTP'",
          "HttpHeader::from_String_old - first line is not HTTP"}},
    };
    for (Row const &row : rows) {
        HttpHeader header(true);
        bool ok = true;
        EXPECT_EQ(linesLoggedBy([&] { ok = header.fromString(row.text); }), row.lines) << row.text;
        EXPECT_FALSE(ok) << row.text;
    }
}

TEST(HttpHeader, AddKeyValSkipsOneBlankAndRefusesLinesWithoutKeyOrValue) {
    HttpHeader header(true);
    std::vector<QString> const lines = linesLoggedBy([&] {
        header.addKeyVal("A:v");
        header.addKeyVal("B: v");
        header.addKeyVal("C:  v");
        header.addKeyVal("A: later");
        header.addKeyVal("NoColon");
        header.addKeyVal(": v");
    });
    EXPECT_EQ(header.getAttributes(), (Fields{{"A", "later"}, {"B", "v"}, {"C", " v"}}));
    EXPECT_EQ(lines, (std::vector<QString>{"HttpHeader::addKeyVal, *p == 0, keyVal 'NoColon'",
                                           "HttpHeader::addKeyVal, s.length:3, key.length == 0"}));
}

TEST(HttpHeader, TextFormPutsFieldsInKeyOrderAndEndsInAnEmptyLine) {
    HttpHeader header(QStringLiteral("GET / HTTP/1.1"));
    header.setString("b", "2");
    header.setString("A", "1");
    EXPECT_EQ(header.toStringCRLF(), "GET / HTTP/1.1\r\nA: 1\r\nb: 2\r\n\r\n");
    EXPECT_EQ(HttpHeader(true).toStringCRLF(), "\r\n");

    HttpHeader back(false);
    ASSERT_TRUE(back.fromString(header.toStringCRLF()));
    EXPECT_EQ(back.getAttributes(), header.getAttributes());
}

TEST(HttpHeader, FieldsWithoutFirstLineStopAtTheLastLineEnd) {
    HttpHeader header(true);
    EXPECT_TRUE(header.fromStringWithoutFirstLine("A: 1\r\nB: 2\nC: 3"));
    EXPECT_EQ(header.getAttributes(), (Fields{{"A", "1"}, {"B", "2"}}));
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_FALSE(header.fromStringWithoutFirstLine("")); }),
              std::vector<QString>{"HttpHeader::fromStringWithoutFirstLine, s == '' "});
}

TEST(HttpHeader, HostPortAndKeysSpelledTheLibrarysWay) {
    struct Row {
        char const *host;
        int port;
    } const rows[] = {{"", 80}, {"a", 80}, {"a:8080", 8080}, {"a:x", 80}};
    for (Row const &row : rows) {
        HttpHeader header(true);
        if (*row.host)
            header.setHost(row.host);
        EXPECT_EQ(header.getPort(), row.port) << row.host;
    }
    HttpHeader header(true);
    header.setString("Cache-Control", "no-cache");
    header.setConnection("Keep-Alive");
    EXPECT_EQ(header.cacheControl(), "");
    EXPECT_FALSE(header.isKeepAlive());
    header.setConnectionKeepAlive();
    EXPECT_TRUE(header.isKeepAlive());
    header.setContenLen(123456789012LL);
    EXPECT_EQ(header.getContentLength(), 123456789012ULL);
}

TEST(HttpHeader, GetResourceFromAnHttpUrlOnly) {
    HttpHeader header(true);
    header.setGetResource("example.org/a%20b?x=1");
    EXPECT_EQ(header.getFirstLine().getLine(), "GET /a b HTTP/1.1");
    EXPECT_EQ(header.getString("HOST"), "example.org");
    EXPECT_EQ(header.host(), "");
    std::vector<QString> const lines = linesLoggedBy([&] { header.setGetResource("ftp://h/f"); });
    EXPECT_EQ(lines.back(), "HttpHeader::setGetResource - 'ftp' not supported yet!");
    EXPECT_EQ(header.getFirstLine().getLine(), "GET /a b HTTP/1.1");
}

TEST(FirstLine, RequestTypesAndVersions) {
    orv::FirstLine line(QStringLiteral("post /x HTTP/2"));
    ASSERT_TRUE(line.scanRequestLine());
    EXPECT_EQ(line.getRequestType(), orv::POST);
    EXPECT_TRUE(line.isHttp2());
    EXPECT_FALSE(line.isHttp1());
    EXPECT_EQ(
        linesLoggedBy([] { EXPECT_EQ(orv::requestTypeFromString("get"), orv::NOT_SUPPORTED); }),
        std::vector<QString>{"::requestTypeFromString - type is 'get'"});
    EXPECT_EQ(orv::stringFromRequestType(orv::HEAD), "HEAD");
    EXPECT_EQ(orv::stringFromRequestType(static_cast<orv::REQUEST_TYPE>(7)),
              "???stringFromRequestType??? should not be here");
    line.setAnswerCode(404);
    EXPECT_EQ(line.getLine(), "HTTP/1.0 404 OK");
    EXPECT_FALSE(line.isRequest());
    orv::FirstLine unscanned(QStringLiteral("GET / HTTP/1.1"));
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_EQ(unscanned.getResource(), ""); }),
              std::vector<QString>{"FirstLine::getResource - toks.size() != 3, we have 0 token"});
}

TEST(Mime, FixedTableWithDefault) {
    orv::Mime const mime;
    EXPECT_EQ(mime["xyz"], "application/octet-stream");
    EXPECT_EQ(mime["txt"], "text/html");
    EXPECT_EQ(mime["jpeg"], "image/jpeg");
    EXPECT_EQ(mime["PNG"], "application/octet-stream");
    EXPECT_EQ(mime.mimeToExtension("text/html"), "css");
    EXPECT_EQ(mime.mimeToExtension("text/plain"), "");
}

} // namespace
