// search_expr_fuzz.cpp: compiles arbitrary search expressions (boolean or regular) and
// evaluates them over a small text in every scope, with the text's line table wrapped
// at a small limit. Input: one mode byte, the expression, a 0x01 byte, the text.
// Checks what must hold for any input: the byte-level prefilter changes no mark, the
// line table stays inside the text and equals single steps, and every hit of a plain term starts at
// that term's bytes, also in broken UTF-8.
#include "FuzzCheck.h"
#include "orv/XContentFilter.h"
#include "orv/XLineReader.h"
#include "orv/XLineReaderDA.h"
#include "orv/XMem.h"
#include "orv/XUTF8_Detector.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <vector>

namespace {

using Marks = std::vector<std::tuple<int, int, int>>;

Marks marksOf(orv::find::XRamLayer const &layer) {
    Marks marks;
    for (orv::find::XRam const &m : layer)
        marks.emplace_back(m.start, m.end, m.category);
    return marks;
}

// The table stays inside the text and equals the one that single steps make.
void checkLineTable(orv::XLineReaderDA const &reader, orv::XMem const &mem, quint64 wrap) {
    orv::XLineReaderDA stepper(mem, wrap, false);
    orv::XLineInfo step;
    for (orv::XLineInfo const &li : reader) {
        check(li.posMemory + li.length <= mem.length());
        check(stepper.nextLineStruct(step, true));
        check(step.posMemory == li.posMemory && step.length == li.length &&
              step.lengthTotal == li.lengthTotal && step.lineNumber == li.lineNumber &&
              step.wrapIndex == li.wrapIndex && step.hasLineEnd == li.hasLineEnd);
        reader.lineAt(li);
    }
    check(!stepper.nextLineStruct(step, true));
}

// Terms whose hits must start at their own bytes: case-sensitive, not whole-word
// (a refused whole word goes on case-insensitively), and plain UTF-8.
bool plainTerms(orv::find::XContentFilter const &filter, std::vector<QByteArray> &terms) {
    for (orv::find::XSymbol const &s : filter.getSymbols()) {
        if (!s.isFind())
            continue;
        if (s.caseInsensitive || s.wholeWord || s.text.isEmpty() || s.text.contains(QChar(0xFFFD)))
            return false;
        for (QChar c : s.text)
            if (c.isSurrogate())
                return false;
        terms.push_back(s.text.toUtf8());
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    if (size == 0)
        return 0;
    ExpressionInput const input = splitExpressionInput(data, size);
    unsigned char const mode = input.mode;
    QString const &expr = input.expr;
    QByteArray const &text = input.text;
    bool const regEx = mode & 1;
    quint64 const wrap = 2 + (mode >> 2);

    orv::XUTF8_Detector detector;
    if (!text.isEmpty())
        detector.analyze(text.constData(), static_cast<quint64>(text.size()));
    orv::XMem mem(text);
    orv::XLineReader lines(mem, wrap);
    while (lines.nextLine()) {
    }
    orv::XLineReaderDA reader(mem, wrap, true);
    checkLineTable(reader, mem, wrap);

    orv::find::XContentFilter filter;
    if (!filter.createSymbols(expr, regEx))
        return 0;
    std::vector<QByteArray> terms;
    bool const plain = !regEx && plainTerms(filter, terms);
    for (auto scope : {orv::find::XContentFilter::File, orv::find::XContentFilter::Paragraph,
                       orv::find::XContentFilter::Sentence}) {
        filter.scope = scope;
        filter.setPrefilterEnabled(true);
        Marks const fast = marksOf(filter.search(reader));
        filter.setPrefilterEnabled(false);
        Marks const full = marksOf(filter.search(reader));
        check(fast == full);
        for (auto const &[start, stop, category] : full) {
            check(start >= 0 && start <= text.size());
            if (!plain || category != orv::find::XRam::SEARCH_RESULT)
                continue;
            // Sentence units are measured by re-encoding and may be cut short: only the
            // whole-line scopes promise exact bytes.
            if (scope == orv::find::XContentFilter::Sentence)
                continue;
            bool atTerm = false;
            for (QByteArray const &term : terms)
                atTerm = atTerm || text.mid(start, term.size()) == term;
            check(atTerm);
        }
    }
    return 0;
}
