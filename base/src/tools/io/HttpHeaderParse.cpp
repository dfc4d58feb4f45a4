// HttpHeaderParse.cpp: reading HTTP heads from text and from sockets. The text is
// taken as Latin-1 bytes, as header fields are on the wire.
#include "orv/HttpHeader.h"

#include "orv/Log.h"
#include "orv/Socket.h"
#include "orv/XError.h"
#include "orv/XSocket.h"

#include <cstring>

namespace orv {

namespace {

QString const CRLF = QStringLiteral("\r\n");

bool startsAsStatusLine(QString const &line) {
    return line.startsWith(QLatin1String("HTTP")) || line.startsWith(QLatin1String("http")) ||
           line.startsWith(QLatin1String("Http"));
}

// One line of the text from `from` on: up to the next LF, whose byte before must be
// CR, or up to the end. Gives false for an LF without its CR.
struct LineCut {
    char const *begin;
    int length;
    char const *next; // first byte of the following line, or the end
};

bool cutLine(char const *from, char const *end, LineCut &cut) {
    auto const *lf = static_cast<char const *>(std::memchr(from, '\n', end - from));
    cut.begin = from;
    if (!lf) {
        cut.length = static_cast<int>(end - from);
        cut.next = end;
        return true;
    }
    if (lf == from || lf[-1] != '\r')
        return false;
    cut.length = static_cast<int>(lf - 1 - from);
    cut.next = lf + 1;
    return true;
}

} // namespace

void HttpHeader::addKeyVal(QString const &line) {
    QByteArray const bytes = line.toLatin1();
    addKeyValBytes(bytes.constData(), bytes.size());
}

void HttpHeader::addKeyValBytes(char const *line, int length) {
    auto const *colon = static_cast<char const *>(std::memchr(line, ':', size_t(length)));
    if (!colon || colon + 1 == line + length) {
        ppDebug("HttpHeader::addKeyVal, *p == 0, keyVal '$'", QString::fromLatin1(line, length));
        return;
    }
    if (colon == line) {
        ppDebug("HttpHeader::addKeyVal, s.length:$, key.length == 0", length);
        return;
    }
    char const *value = colon[1] == ' ' ? colon + 2 : colon + 1;
    setString(QString::fromLatin1(line, int(colon - line)),
              QString::fromLatin1(value, int(line + length - value)));
}

bool HttpHeader::fromString(QString const &text) {
    QByteArray const bytes = text.toLatin1();
    char const *const end = bytes.constData() + bytes.size();
    LineCut cut{};
    if (!cutLine(bytes.constData(), end, cut)) {
        ppError("Header::from_String_old - strange1");
        return false;
    }
    firstLine.setLine(QString::fromLatin1(cut.begin, cut.length));
    // Empty lines are passed over, so a text of several blocks is read to its end.
    while (cut.next != end) {
        if (!cutLine(cut.next, end, cut)) {
            ppError("Header::from_String_old - strange2");
            ppError("<<<$>>>", text);
            return false;
        }
        if (cut.length > 0)
            addKeyValBytes(cut.begin, cut.length);
    }
    request = true;
    bool const scanned = startsAsStatusLine(firstLine.getLine()) ? firstLine.scanResponseLine()
                                                                 : firstLine.scanRequestLine();
    if (!scanned) {
        ppError("HttpHeader::from_String_old - first line is not HTTP");
        return false;
    }
    if (startsAsStatusLine(firstLine.getLine()))
        request = false;
    return true;
}

bool HttpHeader::fromStringWithoutFirstLine(QString const &text) {
    if (text.isEmpty()) {
        ppError("HttpHeader::fromStringWithoutFirstLine, s == '' ");
        return false;
    }
    QString line;
    for (QChar const c : text) {
        if (c == QLatin1Char('\r'))
            continue;
        if (c != QLatin1Char('\n')) {
            line += c;
            continue;
        }
        if (!line.isEmpty())
            addKeyVal(line);
        line.clear();
    }
    return true;
}

bool HttpHeader::fromSocket(BasicSocket *socket, bool readTail) {
    ORV_ASSERT_PTR(socket);
    int const waitMs = socketWaitMs;
    // Waits only when no whole line is buffered: a head that came in one packet is
    // read without a single wait.
    auto const lineReady = [socket, waitMs] {
        return socket->canReadLine() || socket->flushRead(waitMs);
    };
    if (!lineReady()) {
        ppError("HttpHeader::fromSocket, read 1.... ?");
        return false;
    }
    QString text;
    int lines = 0;
    for (QString line = socket->receiveString(LINE_BYTES); !line.isEmpty();
         line = socket->receiveString(LINE_BYTES)) {
        if (lines == MAX_LINES) {
            ppError("HttpHeader::fromSocket, read 3.... ?");
            return false;
        }
        text += line + CRLF;
        ++lines;
        if (!lineReady()) {
            ppError("HttpHeader::fromSocket, read 2.... ?");
            return false;
        }
    }
    text += CRLF;
    if (readTail) {
        if (!lineReady()) {
            ppError("HttpHeader::fromSocket, read 3.... ?");
            return false;
        }
        socket->receiveString(LINE_BYTES);
    }
    return fromString(text);
}

bool HttpHeader::fromSocketClassic(Socket *socket) {
    ORV_ASSERT_PTR(socket);
    QString text;
    int lines = 0;
    SockString line = socket->readLine(LINE_BYTES_CLASSIC);
    if (line.timeout) {
        ppError("HttpHeader::fromSocketClassic , timeout");
        return false;
    }
    while (!line.isEmpty()) {
        if (lines == MAX_LINES) {
            ppError("HttpHeader::fromSocketClassic, read 3.... ?");
            return false;
        }
        text += line.toString() + CRLF;
        ++lines;
        line = socket->readLine(LINE_BYTES_CLASSIC);
        if (line.timeout) {
            ppError("HttpHeader::fromSocketClassic , timeout,2");
            return false;
        }
    }
    // A peer that left before the empty line sent no whole head.
    if (line.closed) {
        ppError("HttpHeader::fromSocketClassic , connection closed");
        return false;
    }
    text += CRLF;
    return fromString(text);
}

} // namespace orv
