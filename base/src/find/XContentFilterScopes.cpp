// XContentFilterScopes.cpp: the walk over a file's lines in paragraph and sentence
// scope, with the byte-level skip of lines that hold no term, and the cut of a
// paragraph into sentences.
#include "orv/XContentFilter.h"

#include "find/ContentPrefilter.h"
#include "find/ContentUnit.h"
#include "find/LineFeedCount.h"
#include "find/LineTableSeek.h"
#include "orv/Log.h"
#include "orv/XDelimiter.h"
#include "orv/XLineReaderDA.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace orv::find {

namespace {

bool startsWithBom(char const *p, quint64 n) {
    return p && n >= 3 && static_cast<unsigned char>(p[0]) == 0xEF &&
           static_cast<unsigned char>(p[1]) == 0xBB && static_cast<unsigned char>(p[2]) == 0xBF;
}

} // namespace

int XContentFilter::accumulate_line_info(XLineReaderDA const &reader, unsigned int index,
                                         XLineInfo &out) {
    std::vector<XLineInfo> const &entries = reader.lineInfos();
    XLineInfo const &first = reader.lineInfoAt(index);
    size_t last = index;
    while (last + 1 < entries.size() && entries[last + 1].lineNumber <= first.lineNumber)
        ++last;
    out.posMemory = first.posMemory;
    out.lineNumber = first.lineNumber;
    out.wrapIndex = -1;
    quint64 total = 0;
    if (last + 1 < entries.size())
        total = entries[last + 1].posMemory - first.posMemory;
    else if (last < entries.size())
        total = entries[last].posMemory - first.posMemory + entries[last].lengthTotal;
    // A CR before the LF stays part of the paragraph's text.
    out.lengthTotal = static_cast<unsigned int>(total);
    out.length = static_cast<unsigned int>(total == 0 ? 0 : total - 1);
    return static_cast<int>(last);
}

std::vector<XLineInfo> XContentFilter::create_sentences_from_paragraph(XLineInfo const &li,
                                                                       QString const &text) {
    std::vector<XLineInfo> sentences;
    quint64 pos = li.posMemory;
    int start = 0;
    auto const add = [&](unsigned int n) {
        XLineInfo s;
        s.posMemory = pos;
        s.setLengths(n, n);
        s.lineNumber = 0;
        sentences.push_back(s);
        pos += n;
    };
    for (int i = 0; i < text.size(); ++i) {
        if (!XDelimiter::sDelimAll_Sentence.contains(text.at(i)))
            continue;
        add(static_cast<unsigned int>(XLineInfo::get_UTF8_Bytes_CountFromString(
            text, static_cast<unsigned int>(start), static_cast<unsigned int>(i - start + 1))));
        start = i + 1;
    }
    // The rest without an ender is measured in characters, not bytes; readers of
    // sentence positions expect exactly this.
    if (start < text.size())
        add(static_cast<unsigned int>(text.size() - start));
    return sentences;
}

template <typename Visit>
bool XContentFilter::forEachParagraph(XLineReaderDA const &reader, bool usePrefilter,
                                      Visit visit) const {
    std::vector<XLineInfo> const &entries = reader.lineInfos();
    char const *data = reader.data();
    quint64 const size = reader.getMemorySize();
    bool const skip = usePrefilter && data;
    std::unique_ptr<ContentPrefilter::Cursor> cursor;
    if (skip)
        cursor = std::make_unique<ContentPrefilter::Cursor>(*prefilter);
    for (size_t i = 0; i < entries.size();) {
        if (skip) {
            quint64 const x = cursor->nextCandidate(data, size, entries[i].posMemory);
            if (x >= size)
                break;
            size_t j = seekEntry(entries, i, x, [x](XLineInfo const &e) {
                return e.posMemory + e.lengthTotal <= x;
            });
            if (j == entries.size())
                break;
            // Back to the first piece of that file line.
            while (j > i && entries[j - 1].lineNumber == entries[j].lineNumber)
                --j;
            i = j;
        }
        XLineInfo li;
        li.hasLineEnd = true;
        size_t const last = static_cast<size_t>(accumulate_line_info(reader, unsigned(i), li));
        // Measured on the table: a paragraph's own 32-bit lengths may have wrapped.
        quint64 const paragraphEnd = last + 1 < entries.size()
                                         ? entries[last + 1].posMemory
                                         : entries[last].posMemory + entries[last].lengthTotal;
        if (paragraphEnd > quint64(INT_MAX)) {
            ppWarning("XContentFilter::find, marks end at 2 GiB, <$> searched up to there",
                      reader.getFile());
            return false;
        }
        visit(li, data ? data + li.posMemory : nullptr);
        i = last + 1;
    }
    return true;
}

template <typename LineText, typename UnitSearch>
void XContentFilter::searchParagraph(XLineInfo const &li, QString const &text, char const *bytes,
                                     LineText lineText, XRamLayer &r, UnitSearch unitSearch) {
    if (scope != Sentence) {
        XRamLayer const sub = unitSearch(Unit{li, text, bytes});
        if (sub.isValid())
            r.add_ram_layer(sub);
        return;
    }
    // Sentences are measured on the decoded text, which has lost a leading BOM.
    XLineInfo from = li;
    if (startsWithBom(bytes, li.length)) {
        from.posMemory += 3;
        from.length -= 3;
    }
    // Sentences are measured by re-encoding: behind broken bytes they drift and may
    // reach past their paragraph. A unit is never more than its paragraph's text.
    quint64 const paragraphEnd = li.posMemory + li.length;
    for (XLineInfo s : create_sentences_from_paragraph(from, text)) {
        if (s.posMemory >= paragraphEnd)
            break;
        s.setLengths(unsigned(std::min<quint64>(s.length, paragraphEnd - s.posMemory)), 0);
        char const *sentenceBytes = bytes ? bytes + (s.posMemory - li.posMemory) : nullptr;
        XRamLayer const sub = unitSearch(Unit{s, lineText(s), sentenceBytes});
        if (sub.isValid())
            r.add_ram_layer(sub);
    }
}

template <typename UnitSearch>
void XContentFilter::searchUnits(XLineReaderDA const &reader, bool usePrefilter, XRamLayer &r,
                                 UnitSearch unitSearch) {
    auto const lineText = [&reader](XLineInfo const &li) { return reader.lineAt(li); };
    forEachParagraph(reader, usePrefilter, [&](XLineInfo const &li, char const *bytes) {
        searchParagraph(li, reader.lineAt(li), bytes, lineText, r, unitSearch);
    });
}

XRamLayer XContentFilter::evaluateUnit(Unit const &unit) {
    index = 0;
    // An empty line is not evaluated: "~a" gives it no mark.
    if (unit.li.length == 0)
        return XRamLayer();
    XRamLayer sub = evaluate(&unit, nullptr);
    index = 0;
    return sub;
}

XRamLayer XContentFilter::find(unsigned int indent, XLineReaderDA const &reader) {
    if (isRegEx)
        return rx_find(indent + 4, reader);
    index = 0;
    if (scope == File)
        return find_in_file(indent + 4, reader);
    XRamLayer r;
    r.set_reader(&reader);
    bool const usePrefilter = prefilterEnabled && prefilter && !emptyUnitMatches;
    searchUnits(reader, usePrefilter, r, [this](Unit const &unit) { return evaluateUnit(unit); });
    r.set_binary_file(reader.isBinaryFile());
    return r;
}

XRamLayer XContentFilter::rx_find(unsigned int, XLineReaderDA const &reader) {
    XRamLayer r;
    r.set_reader(&reader);
    if (regEx.isValid())
        searchUnits(reader, false, r, [&](Unit const &unit) { return rxSearch(unit); });
    r.set_binary_file(reader.isBinaryFile());
    return r;
}

bool XContentFilter::findLines(char const *data, quint64 size, std::vector<LineHits> &found,
                               quint64 &lines) {
    found.clear();
    lines = 0;
    if (isRegEx || scope == File || !prefilterEnabled || !prefilter || emptyUnitMatches)
        return false;
    auto const lineText = [data](XLineInfo const &li) {
        return li.length ? QString::fromUtf8(data + li.posMemory, int(li.length)) : QString();
    };
    ContentPrefilter::Cursor cursor(*prefilter);
    // from: where the line after the last one evaluated starts; feeds: the LFs before it.
    quint64 from = 0, feeds = 0;
    while (data && from < size) {
        quint64 const x = cursor.nextCandidate(data, size, from);
        if (x >= size)
            break;
        quint64 const start = lineStartOf(data, from, x);
        feeds += countLineFeeds(data, from, start);
        auto const *lf = static_cast<char const *>(std::memchr(data + x, '\n', size - x));
        quint64 const end = lf ? quint64(lf - data) : size;
        if (end + 1 > quint64(INT_MAX)) {
            ppWarning("XContentFilter::findLines, marks end at 2 GiB, searched up to there");
            from = start;
            break;
        }
        XLineInfo li;
        li.posMemory = start;
        li.lineNumber = unsigned(feeds);
        li.wrapIndex = -1;
        li.hasLineEnd = true;
        li.setLengths(unsigned(end - start), unsigned(end - start + 1));
        LineHits hits{li, lineText(li), XRamLayer()};
        searchParagraph(li, hits.text, data + start, lineText, hits.marks,
                        [this](Unit const &unit) { return evaluateUnit(unit); });
        if (hits.marks.isValid())
            found.push_back(std::move(hits));
        feeds += lf != nullptr;
        from = end + 1;
    }
    if (data && from < size)
        feeds += countLineFeeds(data, from, size);
    lines = feeds + (size > 0 && data && data[size - 1] != '\n');
    return true;
}

bool XContentFilter::mayMatch(char const *data, quint64 size) const {
    if (isRegEx || !prefilterEnabled || !prefilter)
        return true;
    // A unit without terms can match in paragraph and sentence scope ("~a"); in file
    // scope marks come only from term hits.
    if (scope != File && emptyUnitMatches)
        return true;
    if (!data || size == 0)
        return false;
    ContentPrefilter::Cursor cursor(*prefilter);
    return cursor.nextCandidate(data, size, 0) < size;
}

XRamLayer XContentFilter::search(XLineReaderDA const &reader) const {
    XContentFilter copy(*this);
    return copy.find(0, reader);
}

} // namespace orv::find
