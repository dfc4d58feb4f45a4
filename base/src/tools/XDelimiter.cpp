// XDelimiter.cpp: delimiter tables and whole-word tests.
#include "orv/XDelimiter.h"

#include "orv/Log.h"

#include <cstring>

namespace orv {

namespace {

// Joins the UTF-8 strings of the table; built here so that the QString members
// don't depend on another translation unit's initialisation.
QString joinUtf8(std::vector<char const *> const &parts) {
    QString joined;
    for (char const *part : parts)
        joined += QString::fromUtf8(part);
    return joined;
}

std::vector<char const *> const chineseDelimiters = {
    "\u3002", "\uFF01", "\uFF0E", "\uFF0C", "\uFF1F", "\uFF1A", "\u2026", "\uFF08",
    "\uFF09", "\u9AD8", "\u201D", "\u300A", "\u300B", "\u201C", "\u3000",
};

} // namespace

char const *const XDelimiter::pDelimASCII = " \t{,;:./}()[]@\\+-*/%^#!?<>|&~=\"'`";
char const *const XDelimiter::pDelimASCII_Sentence = ".!?";
QString const XDelimiter::sDelimAscii = QString::fromLatin1(" \t{,;:./}()[]@\\+-*/%^#!?<>|&~=\"'`");
QString const XDelimiter::sDelimAscii_Sentence = QStringLiteral(".!?");
std::vector<char const *> const XDelimiter::arDelimChinese = chineseDelimiters;
QString const XDelimiter::sDelimChinese = joinUtf8(chineseDelimiters);
QString const XDelimiter::sDelimAll = XDelimiter::sDelimAscii + XDelimiter::sDelimChinese;
QString const XDelimiter::sDelimAll_Sentence =
    XDelimiter::sDelimAscii_Sentence + XDelimiter::sDelimChinese;

bool XDelimiter::isWord(QString const &text, int posFirst, int posLast, QString const &delims) {
    int const length = text.size();
    if (posFirst < 0 || posLast < 0 || posFirst >= length || posLast >= length || delims.isEmpty())
        return false;
    if (delims.contains(text.at(posFirst)) || delims.contains(text.at(posLast)))
        return false;
    QChar const before = posFirst == 0 ? delims.at(0) : text.at(posFirst - 1);
    QChar const after = posLast == length - 1 ? delims.at(0) : text.at(posLast + 1);
    return delims.contains(before) && delims.contains(after);
}

bool XDelimiter::isWord(char const *pMem, quint64 memSize, char const *pWord, quint64 wordSize,
                        char const *pDelim) {
    if (!pMem) {
        ppError("XDelimiter::isWord, pMem == nullptr");
        return false;
    }
    if (!pWord) {
        ppError("XDelimiter::isWord, pWord == nullptr");
        return false;
    }
    if (!pDelim) {
        ppError("XDelimiter::isWord, pDelim == nullptr");
        return false;
    }
    // Compared as offsets, so that a word longer than the memory can't wrap around.
    if (pWord < pMem || wordSize > memSize || quint64(pWord - pMem) > memSize - wordSize) {
        ppError("XDelimiter::isWord, range !");
        return false;
    }
    quint64 const offset = quint64(pWord - pMem);
    char const before = offset == 0 ? ' ' : pWord[-1];
    char const after = offset + 1 < memSize - wordSize ? pWord[wordSize] : ' ';
    // strchr finds the terminating NUL too, so a NUL byte counts as a delimiter.
    return std::strchr(pDelim, before) != nullptr && std::strchr(pDelim, after) != nullptr;
}

} // namespace orv
