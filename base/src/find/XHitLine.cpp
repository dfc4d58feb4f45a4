// XHitLine.cpp: search hits as the lines they lie on, for line-oriented output.
#include "orv/XContentFilter.h"
#include "orv/XLineReaderDA.h"
#include "orv/XSearchRun.h"

#include <algorithm>

namespace orv::find {

QString XHitLine::toString(QString const &path) const {
    return path + QLatin1Char(':') + QString::number(line) + QLatin1Char(':') +
           QString::number(offset) + QLatin1Char(':') + text;
}

namespace {

std::vector<XRam> inFileOrder(XRamLayer const &layer) {
    std::vector<XRam> marks(layer.begin(), layer.end());
    std::stable_sort(marks.begin(), marks.end(),
                     [](XRam const &a, XRam const &b) { return a.start < b.start; });
    return marks;
}

// The line as printed: a CR before the LF is no part of it.
QString printable(QString text) {
    if (text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text;
}

} // namespace

std::vector<XHitLine> hitLines(XLineReaderDA const &reader, XRamLayer const &hits) {
    std::vector<XLineInfo> const &table = reader.lineInfos();
    std::vector<XRam> const marks = inFileOrder(hits);
    std::vector<XHitLine> lines;
    lines.reserve(marks.size());
    XHitLine current;
    for (XRam const &mark : marks) {
        auto const it =
            std::upper_bound(table.begin(), table.end(), quint64(mark.start),
                             [](quint64 pos, XLineInfo const &li) { return pos < li.posMemory; });
        if (it == table.begin())
            continue;
        unsigned int const index = unsigned(it - table.begin() - 1);
        quint64 const line = quint64(table[index].lineNumber) + 1;
        if (lines.empty() || line != current.line) {
            // The text of the whole file line, from its first wrapped piece.
            unsigned int first = index;
            while (first > 0 && table[first - 1].lineNumber == table[index].lineNumber)
                --first;
            XLineInfo paragraph;
            XContentFilter::accumulate_line_info(reader, first, paragraph);
            current.text = printable(reader.lineAt(paragraph));
            current.line = line;
        }
        current.offset = mark.start;
        lines.push_back(current);
    }
    return lines;
}

std::vector<XHitLine> hitLines(std::vector<XContentFilter::LineHits> const &found) {
    std::vector<XHitLine> lines;
    for (XContentFilter::LineHits const &hits : found) {
        XHitLine current;
        current.line = quint64(hits.li.lineNumber) + 1;
        current.text = printable(hits.text);
        for (XRam const &mark : inFileOrder(hits.marks)) {
            current.offset = mark.start;
            lines.push_back(current);
        }
    }
    return lines;
}

} // namespace orv::find
