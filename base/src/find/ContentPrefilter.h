// ContentPrefilter.h: which stretches of a file can hold a hit of a compiled
// expression, judged on raw bytes before any text is decoded. Not part of the
// library's interface.
#pragma once

#include "find/ByteSearch.h"
#include "orv/XContentFilter.h"

#include <QtCore/QByteArray>

#include <memory>
#include <vector>

namespace orv::find {

// For every term the byte strings that must occur where the term is found in decoded
// text. A unit of text that holds none of them cannot give a term a hit; whether the
// expression can then still match (as "~a" does) is decided by the filter.
// Immutable after build, so any number of searches may share it.
class ContentPrefilter {
public:
    // Null when some term cannot be told from bytes (an empty term, a case-insensitive
    // term outside ASCII, a term holding U+FFFD or a lone surrogate half).
    static std::shared_ptr<ContentPrefilter const> build(std::vector<XSymbol> const &symbols);

    // Per search: the next place of each needle and of each group of needles, so that
    // the bytes are read once however many units are asked about.
    class Cursor {
    public:
        explicit Cursor(ContentPrefilter const &filter)
            : filter(filter), next(filter.needles.size(), 0),
              searched(filter.needles.size(), false), nextOfGroup(filter.groups.size(), 0),
              groupSearched(filter.groups.size(), false) {}
        // The first position at or after from where a needle of any term starts, or
        // size when there is none.
        quint64 nextCandidate(char const *data, quint64 size, quint64 from);
        // Same, for the needles of one term (its index among the terms).
        quint64 nextCandidate(char const *data, quint64 size, quint64 from, int term);

    private:
        quint64 needleAt(int i, char const *data, quint64 size, quint64 from);
        quint64 groupAt(size_t g, char const *data, quint64 size, quint64 from);

        ContentPrefilter const &filter;
        std::vector<quint64> next;
        std::vector<bool> searched;
        std::vector<quint64> nextOfGroup;
        std::vector<bool> groupSearched;
    };

    // The term index of find symbol number symbolIndex (-1 for other symbols).
    int termOfSymbol(size_t symbolIndex) const {
        return symbolIndex < termIndex.size() ? termIndex[symbolIndex] : -1;
    }

private:
    struct Needle {
        QByteArray bytes;
        bool foldAscii = false;
        int term = 0;
    };
    std::vector<Needle> needles;
    // All needles, in groups searched in one pass each, for the question "any term?".
    std::vector<std::vector<ByteNeedle>> groups;
    std::vector<int> termIndex;
};

} // namespace orv::find
