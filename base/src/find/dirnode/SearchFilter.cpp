// SearchFilter.cpp: name patterns on files and folders, joined with the file filter's
// size, time and extension fields.
#include "orv/StringText.h"
#include "orv/XNodeDir.h"
#include "orv/XTokenizer.h"

namespace orv {

namespace {

// One positive pattern of the kind must hold when there are any, and no negative one.
bool namesAccept(std::vector<SearchFileName> const &names, SearchFileName::Kind kind,
                 QString const &name) {
    bool positives = false, held = false;
    for (SearchFileName const &n : names) {
        if (n.kind != kind)
            continue;
        if (n.negative) {
            if (n.matches(name))
                return false;
        } else {
            positives = true;
            held = held || n.matches(name);
        }
    }
    return !positives || held;
}

} // namespace

SearchFileName::SearchFileName(QString p, bool neg, Kind k)
    : pattern(std::move(p)), negative(neg), kind(k) {}

bool SearchFileName::matches(QString const &name) const {
    return pattern_match_wild_card(name, pattern);
}

void SearchFilter::addNames(QString const &patterns, bool negative, SearchFileName::Kind kind) {
    XTokenizer const tokens(patterns, QStringLiteral(" ,;"), false, false);
    for (QStringRef const &token : tokens)
        if (!token.trimmed().isEmpty())
            names.emplace_back(token.trimmed().toString(), negative, kind);
}

bool SearchFilter::acceptsFile(QString const &name, quint64 size, qint64 modifiedMs) const {
    return namesAccept(names, SearchFileName::FILES, name) &&
           fileFilter.match(name, size, modifiedMs);
}

bool SearchFilter::acceptsFile(AbstractFile const &node) const {
    return acceptsFile(node.fileName(), node.fileSize(), node.lastModified());
}

bool SearchFilter::acceptsFolder(QString const &name) const {
    return namesAccept(names, SearchFileName::FOLDERS, name);
}

} // namespace orv
