// http_header_fuzz.cpp: feeds arbitrary bytes, read as Latin-1 as header text is, to
// the HTTP head parsers and checks what must hold for any input.
#include "FuzzCheck.h"
#include "orv/HttpHeader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// The text form of a parsed head reads back to the same fields, as long as no key
// or value holds what the text form can't carry (a line end, a leading blank).
bool textFormCarries(orv::HttpHeader const &head) {
    for (auto const &field : head.getAttributes()) {
        QString const &key = field.first, &value = field.second;
        if (key.contains(QLatin1Char(':')) || key.contains(QLatin1Char('\n')) ||
            key.contains(QLatin1Char('\r')) || value.contains(QLatin1Char('\n')) ||
            value.contains(QLatin1Char('\r')) || value.startsWith(QLatin1Char(' ')))
            return false;
    }
    return !head.getFirstLine().getLine().contains(QLatin1Char('\n'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    QString const text =
        QString::fromLatin1(reinterpret_cast<char const *>(data), static_cast<int>(size));
    orv::HttpHeader head(true);
    bool const ok = head.fromString(text);
    head.getHost();
    head.getPort();
    head.getContentLength();
    head.isKeepAlive();
    orv::FirstLine const &line = head.getFirstLine();
    if (ok) {
        check(head.isRequest() == line.isRequest());
        check(head.isRequest() ? line.tokens().size() == 3 : line.tokens().size() >= 2);
        if (head.isRequest()) {
            line.getRequestType();
            line.getResource();
        }
        for (auto const &field : head.getAttributes())
            check(!field.first.isEmpty() && !field.first.contains(QLatin1Char(':')));
        if (textFormCarries(head)) {
            orv::HttpHeader back(true);
            check(back.fromString(head.toStringCRLF()));
            check(back.getAttributes() == head.getAttributes());
        }
    }
    orv::HttpHeader fields(true);
    check(fields.fromStringWithoutFirstLine(text) == !text.isEmpty());
    fields.setGetResource(text);
    return 0;
}
