// StringText.h: small text transformations, wildcard patterns and byte search.
//
//   orv::elidedString("abcdefgh", 2, 2);                    // "ab...gh"
//   orv::pattern_match_wild_card("Main.CPP", "*.cpp");      // true
//   char *hit = orv::memSearch(data, size, "key", 3, true); // null when absent
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

namespace orv {

// The first head characters, "...", and the last tail ones; s itself when it is
// no longer than head + tail.
ORV_EXPORT QString elidedString(QString const &s, unsigned int head, unsigned int tail);
// "&#<decimal code>;"
ORV_EXPORT QString encode_char(QChar c);
// Characters above 128, and those found in chars, become encode_char forms.
ORV_EXPORT QString encode_entities(QString const &s, QString const &chars);
// Every "&#<decimal>;" becomes the character of that code.
ORV_EXPORT QString decode_entities(QString const &s);
ORV_EXPORT QString ensureStringIsQuoted(QString const &s);

// Base64 and hex of the UTF-8 of a text, and back. Decoding skips foreign characters.
ORV_EXPORT QString base64_encode(QString const &s);
ORV_EXPORT QString base64_decode(QString const &s);
ORV_EXPORT QString hex_encode(QString const &s);
ORV_EXPORT QString hex_decode(QString const &s);

// Case-insensitive `*` patterns; a pattern without `*` only tests the ending.
// `?` is an ordinary character. Empty s or pattern: false.
ORV_EXPORT bool pattern_match_wild_card(QString const &s, QString pattern);
// The same on the file name.
ORV_EXPORT bool pattern_match_wild_card(QFileInfo const &fileInfo, QString pattern);

// The first occurrence of what in mem, or null. Overlapping starts are skipped
// (the search goes on behind a failed candidate), and a match that ends at the
// very end of mem is not found. Empty what or mem, or mem shorter than what: an
// ERROR line and null. The QString form searches for the UTF-8 bytes.
ORV_EXPORT char *memSearch(char const *mem, quint64 memSize, char const *what, quint64 lenWhat,
                           bool ignoreCase);
ORV_EXPORT char *memSearch(char const *mem, quint64 memSize, QString const &what, bool ignoreCase);
// The first hit of memSearch that is a whole word, or null.
ORV_EXPORT char *memSearchWord(char const *mem, quint64 memSize, QString const &what,
                               bool ignoreCase);
// ASCII letters in place.
ORV_EXPORT void toUpperCase(char *text, quint64 len);

} // namespace orv
