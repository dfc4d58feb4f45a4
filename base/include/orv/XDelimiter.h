// XDelimiter.h: the library's delimiter alphabets and the whole-word test.
//
//   orv::XDelimiter::isWord("an apple", 3, 7, orv::XDelimiter::sDelimAscii);   // true
//
// The tables are built during static initialisation and are read-only afterwards.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <vector>

namespace orv {

struct ORV_EXPORT XDelimiter {
    static char const *const pDelimASCII;
    static char const *const pDelimASCII_Sentence;
    static QString const sDelimAscii;
    static QString const sDelimAscii_Sentence;
    // Fifteen CJK punctuation marks and blanks (and U+9AD8, which belongs to the table).
    static std::vector<char const *> const arDelimChinese;
    static QString const sDelimChinese;
    static QString const sDelimAll;
    static QString const sDelimAll_Sentence;

    // Whether text[posFirst..posLast] (both inclusive) is a whole word: delimiters on
    // both sides, none at its own ends. The text's ends count as delimiters.
    static bool isWord(QString const &text, int posFirst, int posLast, QString const &delims);

    // The same on bytes, with pDelim a NUL-terminated set. The last byte of the memory
    // is never looked at: a word that ends one byte before it counts as followed by a blank.
    static bool isWord(char const *pMem, quint64 memSize, char const *pWord, quint64 wordSize,
                       char const *pDelim);
};

} // namespace orv
