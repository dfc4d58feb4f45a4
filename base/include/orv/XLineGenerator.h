// XLineGenerator.h: lines of pseudo-random text, words split by delimiters and closed
// by a sentence ending, in ASCII, Greek or Chinese characters; the library's
// MersenneTwister with a text front.
//
//   orv::XLineGenerator generator(false);          // the same lines on every run
//   orv::XLineGenerator::Params params;            // 80 characters, "ABCD..." in order
//   params.language = orv::XLineGenerator::GREEK;
//   std::vector<QString> lines = generator.genLines(100, params);
#pragma once

#include "orv/MersenneTwister.h"
#include "orv/OrvGlobal.h"

#include <QtCore/QString>
#include <QtCore/QStringRef>

#include <vector>

namespace orv {

namespace WORD_DELIMITER {
// Indices into XLineGenerator::arWordDelims.
enum WordDelim : int { SPACE_ONLY = 0, ASCII = 1, CHIN = 2, EXT = 3 };
} // namespace WORD_DELIMITER

namespace SENTENCE_ENDING {
// Indices into XLineGenerator::arSentenceEnding.
enum SE : int { ASCII = 0, CHIN = 1, EXT = 2 };
} // namespace SENTENCE_ENDING

// Holds the state of its generator: one thread at a time, though genLine is const.
class ORV_EXPORT XLineGenerator : public MersenneTwister {
public:
    enum Language : int { ASCII = 0, CHINESE_SMALL = 1, CHINESE_FULL = 2, GREEK = 3 };

    struct ORV_EXPORT Params {
        unsigned int lineLen = 80;
        // 0: a delimiter at the start, then one every second character; 1 is refused.
        unsigned int wordLen = 12;
        bool uppercase = true;
        // Characters run through the alphabet in order; delimiters come from the table.
        bool sequence = true;
        int language = ASCII;
        WORD_DELIMITER::WordDelim wordDelimiter = WORD_DELIMITER::SPACE_ONLY;
        SENTENCE_ENDING::SE sentenceEnding = SENTENCE_ENDING::ASCII;

        QString toString() const;
    };

    static QString const sWordDelimiterSpaceOnly;
    static QString const sWordDelimiterASCII;
    static QString const sWordDelimiterChin;
    static QString const sWordDelimiterExt;
    static QString const sLineEndingASCII;
    static QString const sLineEndingChin;
    static QString const sLineEndingExt;
    static std::vector<QStringRef> const arWordDelims;
    static std::vector<QStringRef> const arSentenceEnding;

    // Seeded like MersenneTwister(false, 0x10000); randomize reseeds from the clock.
    explicit XLineGenerator(bool randomize);

    void iniRandom() { init(); }

    // lineLen characters ending in a sentence ending. An empty line and an error line
    // for what has no line: lineLen 0 or above what a QString holds, wordLen 1 or
    // above INT_MAX, an unknown language, delimiter or ending index.
    QString genLine(Params const &p) const;
    std::vector<QString> genLines(unsigned int n, Params const &p) const;

    // A random character of s; a null QChar and an error line when s is empty.
    QChar randChar(QString const &s) const;
    QChar randChar(QStringRef const &s) const;

    // The table entry; empty for an index outside the table.
    static QStringRef getWordDelimiter(WORD_DELIMITER::WordDelim index);
    static QStringRef getSentenceEnding(SENTENCE_ENDING::SE index);

    static QString elidedLine(QString const &s, unsigned int head, unsigned int tail);
    // Logs the first headLines and the last tailLines lines, each cut by elidedLine to
    // headChars and tailChars (with its full length when cut), and a gap line between.
    static void showLines(std::vector<QString> const &lines, unsigned int headLines,
                          unsigned int tailLines, unsigned int headChars, unsigned int tailChars);
    static void showLines(unsigned int indent, std::vector<QString> const &lines,
                          unsigned int headLines, unsigned int tailLines, unsigned int headChars,
                          unsigned int tailChars);
};

} // namespace orv
