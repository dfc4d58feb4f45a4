// FuzzCheck.h: what the fuzz targets share: a broken promise ends the run with abort(),
// which the fuzzer reports as a crash with its input; and the split of an input into a
// search expression and the text it runs on.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

inline void check(bool condition) {
    if (!condition)
        std::abort();
}

// An input of the search targets: a mode byte, the expression, then after a byte 1 the
// text; without that byte, a short text with the line ends and sentences searches meet.
struct ExpressionInput {
    unsigned char mode = 0;
    QString expr;
    QByteArray text;
};

inline ExpressionInput splitExpressionInput(uint8_t const *data, size_t size) {
    ExpressionInput input;
    input.mode = data[0];
    auto const *begin = reinterpret_cast<char const *>(data + 1);
    auto const *end = reinterpret_cast<char const *>(data + size);
    auto const *split = static_cast<char const *>(std::memchr(begin, 1, size - 1));
    input.expr = QString::fromUtf8(begin, static_cast<int>((split ? split : end) - begin));
    input.text = split ? QByteArray(split + 1, static_cast<int>(end - split - 1))
                       : QByteArray("The quick fox. Jumps over\r\nthe lazy dog!\n\nfox");
    return input;
}
