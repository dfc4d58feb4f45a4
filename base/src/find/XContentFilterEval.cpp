// XContentFilterEval.cpp: evaluating the compiled expression: the left-to-right levels
// with their short-circuits, and the term search in one unit of text or over a file.
#include "orv/XContentFilter.h"

#include "find/ContentPrefilter.h"
#include "find/ContentUnit.h"
#include "find/LineTableSeek.h"
#include "find/UnitOffsets.h"
#include "orv/Log.h"
#include "orv/XDelimiter.h"
#include "orv/XLineReaderDA.h"

#include <algorithm>
#include <climits>

namespace orv::find {

namespace {

// One level of the expression: what is known so far and what waits for the next operand.
struct Level {
    XRamLayer r;
    bool first = true;
    bool andPending = false;
    bool notPending = false;
};

// The combination step; true when the level ends here (with R cleared).
template <typename NotMark> bool combine(Level &level, XRamLayer const &sub, NotMark notMark) {
    if (!level.notPending) {
        if (sub.isValid()) {
            level.r.merge_ramLayer(sub);
        } else if (level.andPending && !level.first) {
            level.r.clear();
            return true;
        }
    } else if (!sub.isValid()) {
        notMark(level.r);
    } else if (level.andPending) {
        level.r.clear();
        return true;
    }
    level.first = level.andPending = level.notPending = false;
    return false;
}

XRam hitMark(quint64 start, quint64 end) {
    XRam mark;
    mark.start = static_cast<int>(start);
    mark.end = static_cast<int>(end);
    return mark;
}

// QString::indexOf, faster where the first character is seldom in the text: the
// character search runs many characters a step, where the string search hashes
// every character.
int indexOfTerm(QString const &text, QString const &term, int from, Qt::CaseSensitivity cs) {
    if (cs == Qt::CaseInsensitive || term.isEmpty())
        return text.indexOf(term, from, cs);
    QChar const first = term.at(0);
    int const last = text.size() - term.size();
    for (int p = from; p <= last; ++p) {
        p = text.indexOf(first, p);
        if (p < 0 || p > last)
            return -1;
        if (QStringView(text).mid(p, term.size()) == term)
            return p;
    }
    return -1;
}

// Marks hold 32-bit positions.
bool addressable(quint64 end) { return end <= quint64(INT_MAX); }

} // namespace

XRamLayer XContentFilter::evaluate(Unit const *unit, XLineReaderDA const *fileReader) {
    auto const notMark = [unit](XRamLayer &r) {
        // In file scope "not" only filters what stands on its left.
        if (!unit)
            return;
        XRam mark = hitMark(unit->li.posMemory, unit->li.posMemory + unit->li.length);
        mark.category = XRam::SEARCH_RESULT_NOT;
        r.add_mark(mark);
    };
    std::vector<Level> levels(1);
    XRamLayer result;
    bool returning = false;
    for (;;) {
        if (!returning) {
            Level &level = levels.back();
            if (!has_more_symbols()) {
                returning = true;
            } else {
                size_t const at = static_cast<size_t>(index++);
                XSymbol const &symbol = symbols[at];
                switch (symbol.type) {
                case XSymbol::BRACKET_OPEN: levels.emplace_back(); continue;
                case XSymbol::BRACKET_CLOSE: returning = true; break;
                case XSymbol::FIND: {
                    XRamLayer const sub =
                        unit ? searchTerm(symbol, *unit) : searchTermInFile(at, *fileReader);
                    returning = combine(level, sub, notMark);
                    break;
                }
                case XSymbol::OR:
                    level.first = false;
                    level.andPending = false;
                    if (level.r.isValid()) {
                        eat_symbols_to_close_bracket();
                        returning = true;
                    } else {
                        level.first = true;
                    }
                    break;
                case XSymbol::AND:
                    level.first = false;
                    level.andPending = true;
                    if (!level.r.isValid()) {
                        eat_symbols_to_close_bracket();
                        returning = true;
                    }
                    break;
                case XSymbol::NOT:
                    level.first = false;
                    level.notPending = true;
                    break;
                default: break;
                }
            }
        }
        if (returning) {
            result = std::move(levels.back().r);
            levels.pop_back();
            if (levels.empty())
                return result;
            // The group's result is the operand of the level around it.
            returning = combine(levels.back(), result, notMark);
        }
    }
}

XRamLayer XContentFilter::searchTerm(XSymbol const &term, Unit const &unit) const {
    XRamLayer s;
    if (unit.termsAbsent)
        return s;
    QString const &text = unit.text;
    Qt::CaseSensitivity const optionCase =
        term.caseInsensitive ? Qt::CaseInsensitive : Qt::CaseSensitive;
    Qt::CaseSensitivity cs = optionCase;
    int const termBytes = XLineInfo::countBytes(term.text);
    int const lastOfTerm = static_cast<int>(term.text.size()) - 1;
    UnitOffsets offsets(text, unit.bytes, unit.li.length);
    for (int from = 0;;) {
        int const p = indexOfTerm(text, term.text, from, cs);
        if (p < 0)
            break;
        from = p + 1;
        if (term.wholeWord) {
            if (!XDelimiter::isWord(text, p, p + lastOfTerm, XDelimiter::sDelimAll)) {
                // A refused hit goes on case-insensitively until the next accepted one.
                cs = Qt::CaseInsensitive;
                continue;
            }
            cs = optionCase;
        }
        // An empty text has no position to count from: the count reports the error.
        if (text.isEmpty() && XLineInfo::get_UTF8_Bytes_CountFromString(text, 0, 0) < 0)
            continue;
        quint64 const start = unit.li.posMemory + offsets.offsetOf(p);
        if (!addressable(start + quint64(termBytes)))
            break;
        s.add_mark(hitMark(start, start + quint64(termBytes)));
    }
    if (term.countMinimum > 0 && s.size() < term.countMinimum)
        s.clear();
    return s;
}

XRamLayer XContentFilter::searchTermInFile(size_t symbolIndex, XLineReaderDA const &reader) const {
    XSymbol const &term = symbols[symbolIndex];
    XRamLayer s;
    s.set_reader(&reader);
    std::vector<XLineInfo> const &entries = reader.lineInfos();
    char const *data = reader.data();
    quint64 const size = reader.getMemorySize();
    bool const skip = prefilterEnabled && prefilter && data;
    std::unique_ptr<ContentPrefilter::Cursor> cursor;
    if (skip)
        cursor = std::make_unique<ContentPrefilter::Cursor>(*prefilter);
    int const termIndex = skip ? prefilter->termOfSymbol(symbolIndex) : -1;
    auto const enough = [&] { return term.countMinimum > 0 && s.size() >= term.countMinimum; };
    for (size_t i = 0; i < entries.size() && !enough();) {
        if (skip) {
            quint64 const x = cursor->nextCandidate(data, size, entries[i].posMemory, termIndex);
            // The first entry whose text reaches past the candidate.
            if (x >= size)
                break;
            i = seekEntry(entries, i, x,
                          [x](XLineInfo const &e) { return e.posMemory + e.length <= x; });
            if (i == entries.size())
                break;
        }
        XLineInfo const &entry = entries[i++];
        if (entry.length == 0)
            continue;
        if (!addressable(entry.posMemory + entry.length)) {
            ppWarning("XContentFilter::find_in_file, marks end at 2 GiB, <$> searched up to there",
                      reader.getFile());
            break;
        }
        Unit const unit{entry, reader.lineAt(entry), data ? data + entry.posMemory : nullptr};
        XRamLayer const hits = searchTerm(
            XSymbol{XSymbol::FIND, term.text, term.caseInsensitive, term.wholeWord, 0}, unit);
        for (XRam const &mark : hits) {
            if (enough())
                break;
            s.add_mark(mark);
        }
    }
    if (term.countMinimum > 0 && s.size() < term.countMinimum)
        s.clear();
    return s;
}

XRamLayer XContentFilter::find_in_paragraph(unsigned int, XLineInfo const &li,
                                            QString const &text) {
    Unit const unit{li, text, nullptr};
    return evaluate(&unit, nullptr);
}

XRamLayer XContentFilter::find_in_file(unsigned int, XLineReaderDA const &reader) {
    index = 0;
    XRamLayer r = evaluate(nullptr, &reader);
    r.set_reader(nullptr);
    r.set_binary_file(reader.isBinaryFile());
    return r;
}

XRamLayer XContentFilter::rxSearch(Unit const &unit) const {
    XRamLayer s;
    UnitOffsets offsets(unit.text, unit.bytes, unit.li.length);
    QRegularExpressionMatchIterator it = regEx.globalMatch(unit.text);
    while (it.hasNext()) {
        QRegularExpressionMatch const match = it.next();
        quint64 const start = unit.li.posMemory + offsets.offsetOf(match.capturedStart(0));
        quint64 const end = unit.li.posMemory + offsets.offsetOf(match.capturedEnd(0));
        if (!addressable(end))
            break;
        s.add_mark(hitMark(start, end));
    }
    return s;
}

XRamLayer XContentFilter::rx_find_in_paragraph(unsigned int, XLineInfo const &li,
                                               QString const &text) {
    return rxSearch(Unit{li, text, nullptr});
}

XRamLayer XContentFilter::rx_find_in_file(unsigned int, XLineReaderDA const &) {
    ppDebug("XContentFilter::find_in_file, actually not supported!");
    return XRamLayer();
}

} // namespace orv::find
