// search_lines_fuzz.cpp: the line search without a table (XContentFilter::findLines)
// against find() on a reader over the same bytes, for any expression and any text.
// Input: one mode byte (bit 0: sentence scope, bit 1: file scope, bit 2: regular
// expression), the expression, a 0x01 byte, the text. Checks: where findLines answers,
// it gives find()'s hit lines and the table's line count; where mayMatch says no,
// find() finds nothing.
#include "FuzzCheck.h"
#include "orv/XContentFilter.h"
#include "orv/XLineReaderDA.h"
#include "orv/XMem.h"
#include "orv/XSearchRun.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    using orv::find::XContentFilter;
    if (size == 0)
        return 0;
    ExpressionInput const input = splitExpressionInput(data, size);
    unsigned char const mode = input.mode;
    QString const &expr = input.expr;
    QByteArray const &text = input.text;

    XContentFilter filter;
    if (!filter.createSymbols(expr, (mode & 4) != 0))
        return 0;
    filter.scope = (mode & 2)   ? XContentFilter::File
                   : (mode & 1) ? XContentFilter::Sentence
                                : XContentFilter::Paragraph;
    // The search run's limit: lines this short are never wrapped.
    orv::XMem mem(text);
    orv::XLineReaderDA reader(mem, 1 << 20, true);
    std::vector<orv::find::XHitLine> const full =
        orv::find::hitLines(reader, filter.search(reader));
    quint64 const size64 = quint64(text.size());
    if (!filter.mayMatch(text.constData(), size64))
        check(full.empty());
    std::vector<XContentFilter::LineHits> found;
    quint64 lines = 0;
    if (!filter.findLines(text.constData(), size64, found, lines))
        return 0;
    check(lines == (reader.countLines() ? quint64(reader.lineInfos().back().lineNumber) + 1 : 0));
    std::vector<orv::find::XHitLine> const sparse = orv::find::hitLines(found);
    check(sparse.size() == full.size());
    for (size_t i = 0; i < full.size(); ++i)
        check(sparse[i].line == full[i].line && sparse[i].offset == full[i].offset &&
              sparse[i].text == full[i].text);
    return 0;
}
