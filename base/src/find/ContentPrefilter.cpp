// ContentPrefilter.cpp: the byte needles of each term and the shared scan over them.
#include "find/ContentPrefilter.h"

#include "find/ByteSearch.h"

#include <QtCore/QChar>

#include <algorithm>
#include <array>
#include <cstdint>

namespace orv::find {

namespace {

// The characters outside ASCII that fold to an ASCII one (U+212A KELVIN SIGN to 'k',
// U+017F LONG S to 's'): a case-insensitive ASCII term matches them too, so their
// UTF-8 forms are needles as well.
std::array<QByteArray, 128> const &nonAsciiFoldingTo() {
    static std::array<QByteArray, 128> const table = [] {
        std::array<QByteArray, 128> t;
        for (uint u = 0x80; u <= 0xFFFF; ++u) {
            if (QChar::isSurrogate(u))
                continue;
            uint const folded = QChar::toCaseFolded(u);
            if (folded < 0x80)
                t[folded] += QString(QChar(u)).toUtf8() + '\0';
        }
        return t;
    }();
    return table;
}

bool searchableInBytes(QString const &term, bool caseInsensitive) {
    if (term.isEmpty())
        return false;
    for (int i = 0; i < term.size(); ++i) {
        ushort const u = term.at(i).unicode();
        if (caseInsensitive && u >= 0x80)
            return false;
        if (u == 0xFFFD)
            return false;
        if (QChar::isHighSurrogate(u) && i + 1 < term.size() &&
            QChar::isLowSurrogate(term.at(i + 1).unicode())) {
            ++i;
            continue;
        }
        if (QChar::isSurrogate(u))
            return false;
    }
    return true;
}

} // namespace

std::shared_ptr<ContentPrefilter const>
ContentPrefilter::build(std::vector<XSymbol> const &symbols) {
    auto prefilter = std::make_shared<ContentPrefilter>();
    int term = 0;
    for (XSymbol const &symbol : symbols) {
        if (!symbol.isFind()) {
            prefilter->termIndex.push_back(-1);
            continue;
        }
        if (!searchableInBytes(symbol.text, symbol.caseInsensitive))
            return nullptr;
        // A refused whole-word hit goes on case-insensitively, but only after a hit in
        // the term's own case: that first hit is what the needle stands for.
        prefilter->needles.push_back({symbol.text.toUtf8(), symbol.caseInsensitive, term});
        if (symbol.caseInsensitive) {
            std::array<QByteArray, 128> const &folding = nonAsciiFoldingTo();
            for (QChar c : symbol.text)
                for (QByteArray const &alternative :
                     folding[QChar::toCaseFolded(c.unicode())].split('\0'))
                    if (!alternative.isEmpty())
                        prefilter->needles.push_back({alternative, false, term});
        }
        prefilter->termIndex.push_back(term++);
    }
    // Needles that start rarely share passes; the others go alone.
    std::vector<std::vector<ByteNeedle>> &groups = prefilter->groups;
    size_t shared = SIZE_MAX; // the group that rare starts join until it is full
    for (Needle const &needle : prefilter->needles) {
        ByteNeedle const bytes{needle.bytes, needle.foldAscii};
        bool const rare = startsRarely(bytes);
        if (rare && shared < groups.size() && groups[shared].size() < MAX_NEEDLES_AT_ONCE) {
            groups[shared].push_back(bytes);
            continue;
        }
        if (rare)
            shared = groups.size();
        groups.push_back({bytes});
    }
    return prefilter;
}

quint64 ContentPrefilter::Cursor::needleAt(int i, char const *data, quint64 size, quint64 from) {
    auto const k = static_cast<size_t>(i);
    if (!searched[k] || next[k] < from) {
        Needle const &needle = filter.needles[k];
        next[k] = searchBytes(data, size, from, needle.bytes, needle.foldAscii);
        searched[k] = true;
    }
    return next[k];
}

quint64 ContentPrefilter::Cursor::groupAt(size_t g, char const *data, quint64 size, quint64 from) {
    if (!groupSearched[g] || nextOfGroup[g] < from) {
        std::vector<ByteNeedle> const &group = filter.groups[g];
        nextOfGroup[g] = searchAnyBytes(data, size, from, group.data(), group.size());
        groupSearched[g] = true;
    }
    return nextOfGroup[g];
}

quint64 ContentPrefilter::Cursor::nextCandidate(char const *data, quint64 size, quint64 from) {
    quint64 best = size;
    for (size_t g = 0; g < filter.groups.size(); ++g)
        best = std::min(best, groupAt(g, data, size, from));
    return best;
}

quint64 ContentPrefilter::Cursor::nextCandidate(char const *data, quint64 size, quint64 from,
                                                int term) {
    quint64 best = size;
    for (size_t i = 0; i < filter.needles.size(); ++i)
        if (filter.needles[i].term == term)
            best = std::min(best, needleAt(static_cast<int>(i), data, size, from));
    return best;
}

} // namespace orv::find
