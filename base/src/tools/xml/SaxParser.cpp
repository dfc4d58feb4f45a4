// SaxParser.cpp: the scanner of the XML dialect. It walks the text by pointer; the
// per-character cost is one comparison against the next progress point, and the clock
// is read only every BYTES_BETWEEN_TIME_CALLS characters.
#include "orv/parsing/SaxParser.h"

#include "orv/GuiThread.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/OrvTime.h"
#include "orv/XMemFile.h"
#include "tools/xml/SaxNameTable.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace orv {

QChar const AbstractSaxHelper::XCHAR = QChar(0xFFFF);

namespace {

bool isLetterOrNumber(QChar const *p, QChar const *end) {
    if (p >= end)
        return false;
    ushort const c = p->unicode();
    if (c < 128)
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    return p->isLetterOrNumber();
}

bool isNameChar(QChar const *p, QChar const *end) {
    ushort const c = p->unicode();
    return c == '_' || c == '-' || c == ':' || isLetterOrNumber(p, end);
}

bool is(QChar const *p, QChar const *end, char c) { return p < end && p->unicode() == ushort(c); }

// "!--" at p.
bool isCommentStart(QChar const *p, QChar const *end) {
    return end - p >= 3 && p[0] == QLatin1Char('!') && p[1] == QLatin1Char('-') &&
           p[2] == QLatin1Char('-');
}

// The first of the characters Cs at or after p, or end. Eight characters per step where
// the processor has SSE2 (every x86-64 has): texts, indentation and values are long runs
// without any character the scanner stops at.
template <char... Cs> QChar const *findAny(QChar const *p, QChar const *end) {
#ifdef __SSE2__
    while (end - p >= 8) {
        __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const *>(p));
        __m128i hits = _mm_setzero_si128();
        ((hits = _mm_or_si128(hits, _mm_cmpeq_epi16(v, _mm_set1_epi16(Cs)))), ...);
        if (int const mask = _mm_movemask_epi8(hits))
            return p + (__builtin_ctz(static_cast<unsigned int>(mask)) >> 1);
        p += 8;
    }
#endif
    for (; p < end; ++p)
        if (((p->unicode() == ushort(Cs)) || ...))
            return p;
    return end;
}

template <char C> QChar const *find(QChar const *from, QChar const *end) {
    return findAny<C>(from, end);
}

// The first "a" "b" pair at or after from, or end.
template <char A, char B> QChar const *findPair(QChar const *from, QChar const *end) {
    for (QChar const *p = find<A>(from, end); p + 1 < end; p = find<A>(p + 1, end))
        if (p[1] == QLatin1Char(B))
            return p;
    return end;
}

void trim(QChar const *&from, QChar const *&to) {
    while (from < to && from->isSpace())
        ++from;
    while (to > from && to[-1].isSpace())
        --to;
}

} // namespace

AbstractSaxHelper::AbstractSaxHelper()
    : names(std::make_unique<SaxNameTable>()), values(std::make_unique<SaxValueCache>()) {}

AbstractSaxHelper::~AbstractSaxHelper() = default;

void AbstractSaxHelper::setBuffer(QString const &t) {
    text = t;
    parseBuffer = text.constData();
    size = static_cast<quint64>(text.size());
    consumed = 0;
    cur = parseBuffer;
    end = parseBuffer + text.size();
    state = 0;
    BOM_check();
}

bool AbstractSaxHelper::readFile(QString const &path) {
    QString const content = XMemFile::fromFile(path);
    if (content.isEmpty()) {
        ppError("abstractSax::readFile, problems reading <<<$>>>", path);
        return false;
    }
    setBuffer(content);
    return true;
}

// A byte-order mark read as Latin-1 shows as three characters; a decoded one is a single
// U+FEFF, skipped like any junk before the first tag.
void AbstractSaxHelper::BOM_check() {
    if (end - cur >= 3 && cur == parseBuffer && cur[0].unicode() == 0xEF &&
        cur[1].unicode() == 0xBB && cur[2].unicode() == 0xBF) {
        Logger::printToCout("abstractSax::BOM_check - found BOM");
        cur += 3;
    }
}

bool AbstractSaxHelper::isPeekStartComment(QChar c) const {
    return c == QLatin1Char('<') && isCommentStart(cur, end);
}

bool AbstractSaxHelper::isPeekEndComment(QChar c) const {
    return c == QLatin1Char('-') && is(cur, end, '>');
}

void AbstractSaxHelper::progressStep(XNode_Parse_Control &control) {
    quint64 const offset = static_cast<quint64>(cur - parseBuffer);
    quint64 const step = XNode_Parse_Control::BYTES_BETWEEN_TIME_CALLS;
    nextCheck = parseBuffer + std::min<quint64>((offset / step + 1) * step, size);
    consumed = offset;
    if (control.cancelled) {
        // The input ends here for every loop: a cancel inside an element fails the
        // parse, one at top level ends it.
        end = cur;
        return;
    }
    control.bytesRead = consumed;
    control.timeLast = getMicroseconds();
    quint64 const total = control.bytesTotal;
    control.percent = total ? static_cast<int>(double(consumed) / double(total) * 100.0) : 0;
    // A control made for one call has no watcher that could outlive it.
    if (control.listeners.isEnabled()) {
        XNode_Parse_Control *watched = &control;
        qt::run_in_Gui_Thread([watched] { watched->listeners.fireEvent(*watched); }, 0);
    }
}

bool AbstractSaxHelper::skipToTag(XNode_Parse_Control &control) {
    for (;;) {
        // Never behind cur: a progress point already passed is taken at once below.
        QChar const *limit = std::min(end, std::max(nextCheck, cur));
        cur = find<'<'>(cur, limit);
        if (cur < limit)
            return true;
        if (cur >= end)
            return false;
        progressStep(control);
    }
}

bool AbstractSaxHelper::advance(XNode_Parse_Control &control) {
    ++cur;
    if (cur >= nextCheck && cur < end)
        progressStep(control);
    return cur < end;
}

QChar AbstractSaxHelper::nextChar(XNode_Parse_Control &control) {
    if (cur >= end)
        return XCHAR;
    if (nextCheck && cur >= nextCheck) {
        progressStep(control);
        if (cur >= end)
            return XCHAR;
    }
    return *cur++;
}

bool AbstractSaxHelper::parse(XNode_Parse_Control &control) {
    if (!parseBuffer) {
        ppError("SaxParser::parse, parseBuffer == nullptr");
        return false;
    }
    control.bytesTotal = remainChars();
    quint64 const step = XNode_Parse_Control::BYTES_BETWEEN_TIME_CALLS;
    quint64 const offset = static_cast<quint64>(cur - parseBuffer);
    nextCheck = parseBuffer + std::min<quint64>((offset / step + 1) * step, size);
    while (cur < end) {
        if (control.cancelled) {
            control.percent = 100;
            return true;
        }
        if (state == 0 || state == 2 || state == 4) {
            QChar const c = *cur;
            if (c == QLatin1Char('<') && isLetterOrNumber(cur + 1, end)) {
                state = 3;
                ++cur;
                if (!parseTag(1, control)) {
                    ppDebug("!parseTag");
                    return false;
                }
            } else if (c == QLatin1Char('<') && is(cur + 1, end, '?')) {
                ++cur;
                readDefinition();
            } else if (isCommentStart(cur + 1, end)) {
                ++cur;
                readCommend(0, control);
            }
        }
        advance(control);
    }
    if (!control.cancelled)
        control.bytesRead = control.bytesTotal.load();
    control.percent = 100;
    return true;
}

void AbstractSaxHelper::readDefinition() {
    QChar const *from = cur + 1;
    QChar const *close = findPair<'?', '>'>(from, end);
    if (close == end)
        return;
    QChar const *to = close;
    trim(from, to);
    inspectDefinition(QString(from, int(to - from)));
    state = 2;
    cur = close + 1;
}

// A comment ends at the first "->": the second "-" of "-->" isn't needed.
bool AbstractSaxHelper::readCommend(int depth, XNode_Parse_Control &) {
    QChar const *close = findPair<'-', '>'>(cur, end);
    inspectCommend(QString(cur, int(close - cur)), depth);
    cur = close == end ? end - 1 : close + 1;
    return true;
}

// Only what stands between the opening tag and the first "<" behind it is the text.
void AbstractSaxHelper::readText(int depth) {
    QChar const *from = cur + 1;
    QChar const *lt = find<'<'>(from, end);
    if (lt == end)
        return;
    QChar const *to = lt;
    trim(from, to);
    if (from < to)
        inspectText(values->get(from, int(to - from)), depth);
    cur = lt - 1;
}

void AbstractSaxHelper::addAttribute(QString const &key, QString &&value) {
    auto at = std::lower_bound(attributes.begin(), attributes.end(), key,
                               [](auto const &entry, QString const &k) { return entry.first < k; });
    if (at != attributes.end() && at->first == key)
        at->second = std::move(value);
    else
        attributes.emplace(at, key, std::move(value));
}

// Quotes are the only value form: a key runs to "=" or a quote, a value from one quote
// to the next of either kind; characters outside quotes behind "=" are lost, and an
// attribute whose quote doesn't close is dropped.
void AbstractSaxHelper::readAttributes(QChar const *from, QChar const *to) {
    attributes.clear();
    trim(from, to);
    QChar const *p = from;
    while (p < to) {
        QChar const *keyFrom = p;
        p = findAny<'=', '"', '\''>(p, to);
        QChar const *keyTo = p;
        p = findAny<'"', '\''>(p, to);
        if (p >= to)
            return;
        QChar const *valueFrom = ++p;
        p = findAny<'"', '\''>(p, to);
        if (p >= to)
            return;
        trim(keyFrom, keyTo);
        addAttribute(names->intern(keyFrom, int(keyTo - keyFrom)),
                     values->get(valueFrom, int(p - valueFrom)));
        ++p;
    }
}

// cur stands on the first character of the name; on success it stands on the tag's ">".
bool AbstractSaxHelper::readOpenTag(int depth, bool &selfClosed) {
    QChar const *nameFrom = cur;
    while (cur < end && isNameChar(cur, end))
        ++cur;
    QString const &name = names->intern(nameFrom, int(cur - nameFrom));
    // Quotes mean nothing here: a ">" inside a value ends the tag.
    QChar const *attrFrom = cur;
    cur = find<'>'>(cur, end);
    if (cur >= end)
        return false;
    selfClosed = cur > attrFrom && cur[-1] == QLatin1Char('/');
    if (selfClosed)
        state = 4;
    readAttributes(attrFrom, selfClosed ? cur - 1 : cur);
    return inspectTag(name, attributes, depth);
}

bool AbstractSaxHelper::inspectTag(QString const &type, AttributeList const &list, int depth) {
    std::map<QString, QString> map;
    for (auto const &entry : list)
        map.emplace_hint(map.end(), entry.first, entry.second);
    return inspectTypeAttribs(type, map, depth);
}

// Reads one element and everything inside it, iteratively so that deep nesting costs
// no stack: open counts the elements whose content is being read. cur stands on the
// first character of the name; on success it stands on the last ">".
bool AbstractSaxHelper::parseTag(int depth, XNode_Parse_Control &control) {
    int open = depth - 1;
    int const outer = open;
    for (;;) {
        bool selfClosed = false;
        if (!readOpenTag(open + 1, selfClosed))
            return false;
        if (!selfClosed) {
            if (++open > MAX_DEPTH) {
                ppDebug("SaxParser::parseTag, nesting deeper than $", MAX_DEPTH);
                return false;
            }
            readText(open);
        } else if (open == outer) {
            return true;
        }
        // The content loop: anything but a tag or a comment is skipped.
        for (;;) {
            if (!advance(control) || !skipToTag(control))
                return false; // an element left open at the end of the input
            if (isLetterOrNumber(cur + 1, end)) {
                state = 3;
                ++cur;
                break;
            }
            if (is(cur + 1, end, '/')) {
                state = 4;
                // Whatever the closing tag says, it closes the open element.
                cur = find<'>'>(cur, end);
                if (cur >= end) {
                    ppDebug("SaxParser::parseTag, '>' missing");
                    return false;
                }
                if (--open == outer)
                    return true;
            } else if (isCommentStart(cur + 1, end)) {
                ++cur;
                readCommend(open, control);
            }
        }
    }
}

void SaxParser::set_QByteArray(QByteArray const &bytes) { setBuffer(QString::fromUtf8(bytes)); }

bool SaxParser::readFile(QString const &path) {
    file = path;
    return AbstractSaxHelper::readFile(path);
}

} // namespace orv
