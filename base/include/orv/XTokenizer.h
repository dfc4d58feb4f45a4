// XTokenizer.h: the non-copying splitter that keeps views into the caller's text.
//
//   QString const expr = "a \"b c\" + 1";
//   orv::XTokenizer tok(expr, " +", true, true);   // a, ' ', "b c", ' ', +, ' ', 1
//   while (tok.hasMoreToken())
//       QStringRef token = tok.nextToken();
//
// The text must outlive the tokenizer. Even the const calls move the cursor,
// so an instance belongs to one thread.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>
#include <QtCore/QStringRef>

#include <set>
#include <vector>

namespace orv {

class ORV_EXPORT XTokenizer {
public:
    XTokenizer() = default;
    XTokenizer(QString const &text, QString const &delims, bool keepDelims, bool quotes);

    // Replaces the tokens by the cut of text; returns the count. The cursor stays.
    // With quotes a "..." stretch is one token, quotes included.
    unsigned int buildToken(QString const &text, QString const &delims, bool keepDelims,
                            bool quotes);

    size_t size() const { return tokens.size(); }
    // Count minus cursor: unsigned, so it wraps once the cursor ran past the end.
    size_t rest() const { return tokens.size() - index; }
    bool hasMoreToken() const { return index < tokens.size(); }
    explicit operator bool() const { return hasMoreToken(); }

    // Token i; out of range an empty view, never an error.
    QStringRef &tokenAt(unsigned int i);
    QStringRef const &tokenAt(unsigned int i) const;
    QStringRef &operator[](unsigned int i) { return tokenAt(i); }
    QStringRef const &operator[](unsigned int i) const { return tokenAt(i); }
    QStringRef const &firstToken() const { return tokenAt(0); }
    QStringRef const &lastToken() const;

    // tokenAt(cursor), and the cursor moves on, also past the end.
    QStringRef &nextToken();
    QStringRef const &nextToken() const;
    // A text holds fewer than 2^31 characters, so the token count fits 32 bits.
    QStringRef &currentToken(unsigned int offset = 0) {
        return tokenAt(static_cast<unsigned int>(index + offset));
    }
    QStringRef const &currentToken(unsigned int offset = 0) const {
        return tokenAt(static_cast<unsigned int>(index + offset));
    }
    QString stringAt(unsigned int i) const { return tokenAt(i).toString(); }

    // Take the next token as a number; a token that is none logs an error and gives 0.
    int nextInt() const;
    double nextDouble() const;

    void putBack() const {
        if (index > 0)
            --index;
    }
    void reset() const { index = 0; }
    void seekHome() const { index = 0; }

    std::vector<QStringRef>::iterator begin() { return tokens.begin(); }
    std::vector<QStringRef>::iterator end() { return tokens.end(); }
    std::vector<QStringRef>::const_iterator begin() const { return tokens.begin(); }
    std::vector<QStringRef>::const_iterator end() const { return tokens.end(); }
    std::vector<QStringRef> const &get_token_direct() const { return tokens; }

    void fill(std::set<QString> &out) const;
    // Rewinds, then drops every token of blanks and tabs only.
    void remove_White_Space_Token();

    static QString removeWhitespace(QString const &text);
    // The text between the quotes of a string token, else the token itself.
    static QStringRef get_String(QStringRef const &token);

    static bool is_Number(QStringRef const &token);
    static bool is_RealNumber(QStringRef const &token);
    static bool is_String(QStringRef const &token);
    static bool is_WhiteSpace(QStringRef const &token);
    static bool is_One_of_these_Chars(QStringRef const &token, QString const &set);
    static bool is_Bracket_open(QStringRef const &token,
                                QString const &set = QStringLiteral("{(["));
    static bool is_Bracket_close(QStringRef const &token,
                                 QString const &set = QStringLiteral("})]"));
    static bool is_Operator(QStringRef const &token, QString const &set = QStringLiteral("+-*/^~"));

    // The member tests look at tokenAt(cursor + offset) ...
    bool is_Number(unsigned int offset = 0) const { return is_Number(currentToken(offset)); }
    bool is_RealNumber(unsigned int offset = 0) const {
        return is_RealNumber(currentToken(offset));
    }
    bool is_String(unsigned int offset = 0) const { return is_String(currentToken(offset)); }
    bool is_One_of_these_Chars(QString const &set, unsigned int offset = 0) const {
        return is_One_of_these_Chars(currentToken(offset), set);
    }
    bool is_Bracket_open(unsigned int offset = 0) const {
        return is_Bracket_open(currentToken(offset));
    }
    bool is_Bracket_close(unsigned int offset = 0) const {
        return is_Bracket_close(currentToken(offset));
    }
    bool is_Operator(unsigned int offset = 0) const { return is_Operator(currentToken(offset)); }
    // ... except this one, which takes an absolute token number.
    bool is_WhiteSpace(unsigned int i) const { return is_WhiteSpace(tokenAt(i)); }
    bool is_Next_Token(QString const &s) const {
        return tokenAt(static_cast<unsigned int>(index)) == s;
    }

    void show(unsigned int indent, bool withClass) const;

private:
    static char const *className(QStringRef const &token);

    std::vector<QStringRef> tokens;
    mutable size_t index = 0;
};

} // namespace orv
