// Tokenizer.h: the owning, byte-oriented splitter for short texts.
//
//   orv::Tokenizer tok("a,,b", ",", false);   // "a", "b"
//   while (tok.hasMoreToken())
//       use(tok.nextToken());
//
// The cut is made on the UTF-8 bytes: every byte of a delimiter set is a
// delimiter by itself. Runs of delimiters never give empty tokens.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <queue>
#include <stack>
#include <vector>

namespace orv {

struct TokenString {
    QString text;
    bool quoted = false; // stood between two quote delimiters
};

class ORV_EXPORT Tokenizer {
public:
    Tokenizer() = default;
    Tokenizer(QString const &text, QString const &delims, bool keepDelims);

    // Appends the tokens of text (it doesn't clear earlier ones) and resets the index.
    // With keepDelims every delimiter byte becomes a one-character token.
    void scan(QString const &text, QString const &delims, bool keepDelims);

    // Copy of token i; "" out of range. The index doesn't move.
    QString operator[](unsigned int i) const { return tokenAt(i); }
    QString tokenAt(unsigned int i) const;

    unsigned int size() const { return static_cast<unsigned int>(tokens.size()); }
    unsigned int remain() const { return size() - index; }
    bool hasMoreToken() const { return index < size(); }
    // True once the last token has been taken: it looks one step past its name.
    bool isLastToken() const { return index == size(); }
    void reset() { index = 0; }

    // Past the end these give "" and leave the index.
    QString nextToken();
    QString peekNextToken() const;
    bool isPeekNextToken(QString const &s) const;
    bool isNextToken_a_Number() const;

    // Past the end: def and the index stays. Otherwise the index moves on, and
    // a token that doesn't parse gives def.
    int nextInt(int def);
    unsigned int nextUInt(unsigned int def);
    qint64 nextLong(qint64 def);
    quint64 nextULong(quint64 def);
    float nextFloat(float def);

    // def when i is out of range or the token is empty; a token that is no
    // number gives 0, not def. The index doesn't move.
    int intAt(unsigned int i, int def) const;
    unsigned int uintAt(unsigned int i, unsigned int def) const;
    qint64 LONG_at(unsigned int i, qint64 def) const;
    quint64 ULONG_at(unsigned int i, quint64 def) const;

    std::queue<QString> getQueue() const;
    std::stack<QString> getStack() const;

    // Quote-aware split: delim is the one quote character. Text after an
    // unclosed quote is lost; a delim of another length logs an error and gives nothing.
    static std::vector<TokenString> get_token_strings(QString const &text, QString const &delim);

    void show(unsigned int indent) const;
    void printSpace(unsigned int) const {}

private:
    unsigned int index = 0;
    std::vector<QString> tokens;
};

} // namespace orv
