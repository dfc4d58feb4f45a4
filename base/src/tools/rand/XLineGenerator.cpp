// XLineGenerator.cpp: the delimiter and ending tables, the line builder over the
// 31-bit draws, and the log view of a list of lines.
#include "orv/XLineGenerator.h"

#include "orv/Log.h"
#include "orv/StringText.h"
#include "orv/XStringStream.h"

#include <limits>

namespace orv {

// The repeated characters weight the draws: they are part of the tables' values.
QString const XLineGenerator::sWordDelimiterSpaceOnly = QStringLiteral(" ");
QString const XLineGenerator::sWordDelimiterASCII = QStringLiteral(" \t{,;:./}()[]\\+-*/#!?<>|&~=");
QString const XLineGenerator::sWordDelimiterChin = QStringLiteral("\uFF0E\u3002\u2026");
QString const XLineGenerator::sWordDelimiterExt =
    sWordDelimiterASCII + QStringLiteral("\uFF0E\u3002\uFF1A\u2026\u2026\u3002\uFF01\uFF1F");
QString const XLineGenerator::sLineEndingASCII = QStringLiteral(".!?");
QString const XLineGenerator::sLineEndingChin = QStringLiteral("\uFF0E\u3002\u2026\u2026");
QString const XLineGenerator::sLineEndingExt = sLineEndingASCII + sLineEndingChin;

// Defined after the strings they point into: one translation unit initializes in order.
std::vector<QStringRef> const XLineGenerator::arWordDelims = {
    QStringRef(&sWordDelimiterSpaceOnly), QStringRef(&sWordDelimiterASCII),
    QStringRef(&sWordDelimiterChin), QStringRef(&sWordDelimiterExt)};
std::vector<QStringRef> const XLineGenerator::arSentenceEnding = {
    QStringRef(&sLineEndingASCII), QStringRef(&sLineEndingChin), QStringRef(&sLineEndingExt)};

namespace {

struct CharRange {
    ushort lo;
    ushort hi;
};

char const *const languageNames[] = {"ASCII", "CHINESE_SMALL", "CHINESE_FULL", "GREEK"};
int const languageCount = 4;

// Qt 5 keeps a QString's size and header within one int-sized allocation.
unsigned int const maxLineLen = (std::numeric_limits<int>::max() - 64) / 2;

CharRange rangeOf(int language, bool uppercase) {
    switch (language) {
    case XLineGenerator::CHINESE_SMALL: return {0x4F00, 0x520F};
    case XLineGenerator::CHINESE_FULL: return {0x4E00, 0x9FFF};
    case XLineGenerator::GREEK: return {0x0391, 0x03C9};
    default: return uppercase ? CharRange{'A', 'Z'} : CharRange{'a', 'z'};
    }
}

template <typename Table> bool inTable(Table const &table, int index) {
    return index >= 0 && static_cast<size_t>(index) < table.size();
}

char const *boolText(bool b) { return b ? "true" : "false"; }

} // namespace

QString XLineGenerator::Params::toString() const {
    QString const lang = language >= 0 && language < languageCount
                             ? QString::fromLatin1(languageNames[language])
                             : QString::number(language);
    return xprintF("lineLen:$, wordLen:$, uppercase:$, sequence:$, lang:$, ", lineLen, wordLen,
                   boolText(uppercase), boolText(sequence), lang);
}

XLineGenerator::XLineGenerator(bool randomize) : MersenneTwister(false, 0x10000) {
    if (randomize)
        init();
}

QString XLineGenerator::genLine(Params const &p) const {
    // wordLen 1 would take draws modulo 0; above INT_MAX it is a negative length.
    bool const valid = p.lineLen != 0 && p.lineLen <= maxLineLen && p.wordLen != 1 &&
                       p.wordLen <= static_cast<unsigned int>(std::numeric_limits<int>::max()) &&
                       p.language >= 0 && p.language < languageCount &&
                       inTable(arWordDelims, p.wordDelimiter) &&
                       inTable(arSentenceEnding, p.sentenceEnding);
    if (!valid) {
        ppError("XLineGenerator::genLine, no line for $ wordDelimiter:$, sentenceEnding:$",
                p.toString(), static_cast<int>(p.wordDelimiter),
                static_cast<int>(p.sentenceEnding));
        return QString();
    }
    CharRange const range = rangeOf(p.language, p.uppercase);
    int const width = range.hi - range.lo + 1;
    int const len = static_cast<int>(p.lineLen);
    QStringRef const delimiters = arWordDelims[p.wordDelimiter];

    QString line(len, QLatin1Char('A'));
    QChar *out = line.data();
    // Signed on purpose: wordLen 0 gives a spread of -1, and r % -1 + 2 puts a
    // delimiter at every second place after the first one.
    int const spread = static_cast<int>(p.wordLen) - 1;
    auto drawWordEnd = [&] { return nextInt() % spread + 2; };
    int wordEnd = p.wordLen != 0 ? drawWordEnd() : 0;
    int count = 0;
    ushort next = range.lo;
    for (int i = 0; i <= len - 2; ++i, ++count) {
        if (count == wordEnd && i < len - 2) {
            out[i] = p.sequence ? randChar(delimiters) : QChar(QLatin1Char(' '));
            wordEnd = drawWordEnd();
            count = 0;
        } else if (p.sequence) {
            out[i] = QChar(next);
            next = next == range.hi ? range.lo : static_cast<ushort>(next + 1);
        } else {
            out[i] = QChar(static_cast<ushort>(range.lo + nextInt() % width));
        }
    }
    out[len - 1] = randChar(arSentenceEnding[p.sentenceEnding]);
    return line;
}

std::vector<QString> XLineGenerator::genLines(unsigned int n, Params const &p) const {
    std::vector<QString> lines;
    lines.reserve(n);
    for (unsigned int i = 0; i < n; ++i)
        lines.push_back(genLine(p));
    return lines;
}

QChar XLineGenerator::randChar(QString const &s) const { return randChar(QStringRef(&s)); }

QChar XLineGenerator::randChar(QStringRef const &s) const {
    if (s.isEmpty()) {
        ppError("XLineGenerator::randChar, no character to choose from");
        return QChar();
    }
    return s.at(nextInt() % s.size());
}

QStringRef XLineGenerator::getWordDelimiter(WORD_DELIMITER::WordDelim index) {
    return inTable(arWordDelims, index) ? arWordDelims[index] : QStringRef();
}

QStringRef XLineGenerator::getSentenceEnding(SENTENCE_ENDING::SE index) {
    return inTable(arSentenceEnding, index) ? arSentenceEnding[index] : QStringRef();
}

QString XLineGenerator::elidedLine(QString const &s, unsigned int head, unsigned int tail) {
    // Appending the last tail characters unconditionally adds nothing when tail is 0,
    // so the shared elision gives the same text.
    return elidedString(s, head, tail);
}

void XLineGenerator::showLines(std::vector<QString> const &lines, unsigned int headLines,
                               unsigned int tailLines, unsigned int headChars,
                               unsigned int tailChars) {
    showLines(0, lines, headLines, tailLines, headChars, tailChars);
}

void XLineGenerator::showLines(unsigned int indent, std::vector<QString> const &lines,
                               unsigned int headLines, unsigned int tailLines,
                               unsigned int headChars, unsigned int tailChars) {
    auto showOne = [&](size_t i) {
        QString const shown = elidedLine(lines[i], headChars, tailChars);
        if (shown != lines[i])
            ppInfo(indent, "[$] $   len:$", i, shown, lines[i].size());
        else
            ppInfo(indent, "[$] $", i, shown);
    };
    size_t const n = lines.size();
    if (static_cast<size_t>(headLines) + tailLines >= n) {
        for (size_t i = 0; i < n; ++i)
            showOne(i);
        return;
    }
    for (size_t i = 0; i < headLines; ++i)
        showOne(i);
    ppInfo(indent, "... ... ... ... ... ... ... ... ... ... .. .");
    for (size_t i = n - tailLines; i < n; ++i)
        showOne(i);
}

} // namespace orv
