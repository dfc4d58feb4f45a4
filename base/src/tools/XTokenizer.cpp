// XTokenizer.cpp: the cut into views, token classes and typed reads.
#include "orv/XTokenizer.h"

#include "orv/Log.h"

#include <array>

namespace orv {

namespace {

// Membership of the delimiters, looked up by table for Latin-1 characters
// (nearly every delimiter set) and by indexOf for the rest.
class DelimiterSet {
public:
    explicit DelimiterSet(QString const &delims) : delims(delims) {
        for (QChar c : delims)
            if (c.unicode() < latin1.size())
                latin1[c.unicode()] = true;
    }
    bool contains(QChar c) const {
        return c.unicode() < latin1.size() ? latin1[c.unicode()] : delims.indexOf(c) >= 0;
    }

private:
    QString const &delims;
    std::array<bool, 256> latin1{};
};

} // namespace

XTokenizer::XTokenizer(QString const &text, QString const &delims, bool keepDelims, bool quotes) {
    buildToken(text, delims, keepDelims, quotes);
}

unsigned int XTokenizer::buildToken(QString const &text, QString const &delims, bool keepDelims,
                                    bool quotes) {
    tokens.clear();
    DelimiterSet const isDelim(delims);
    QChar const *data = text.constData();
    int const length = text.size();
    int start = 0;
    bool inToken = false;
    for (int i = 0; i < length; ++i) {
        QChar const c = data[i];
        if (quotes && c == QLatin1Char('"')) {
            start = i;
            int close = i + 1;
            while (close < length && data[close] != QLatin1Char('"'))
                ++close;
            if (close == length)
                break; // unclosed: a word in progress takes the rest from the quote on
            // A word in progress before the opening quote is dropped on purpose.
            tokens.emplace_back(&text, start, close - start + 1);
            inToken = false;
            i = close;
        } else if (isDelim.contains(c)) {
            if (inToken) {
                tokens.emplace_back(&text, start, i - start);
                inToken = false;
            }
            if (keepDelims)
                tokens.emplace_back(&text, i, 1);
        } else if (!inToken) {
            start = i;
            inToken = true;
        }
    }
    if (inToken)
        tokens.emplace_back(&text, start, length - start);
    return static_cast<unsigned int>(tokens.size());
}

QStringRef &XTokenizer::tokenAt(unsigned int i) {
    static QStringRef tokDummy;
    if (i < tokens.size())
        return tokens[i];
    tokDummy = QStringRef(); // a caller may have written to it
    return tokDummy;
}

QStringRef const &XTokenizer::tokenAt(unsigned int i) const {
    static QStringRef const tokDummy;
    return i < tokens.size() ? tokens[i] : tokDummy;
}

QStringRef const &XTokenizer::lastToken() const {
    static QStringRef const empty;
    return tokens.empty() ? empty : tokens.back();
}

QStringRef &XTokenizer::nextToken() { return tokenAt(static_cast<unsigned int>(index++)); }

QStringRef const &XTokenizer::nextToken() const {
    return tokenAt(static_cast<unsigned int>(index++));
}

int XTokenizer::nextInt() const {
    QStringRef const &token = nextToken();
    bool ok = false;
    int value = token.toInt(&ok, 10);
    if (ok)
        return value;
    ppError("XTokenizer::nextInt, token '$' is not a number", token.toString());
    return 0;
}

double XTokenizer::nextDouble() const {
    QStringRef const &token = nextToken();
    bool ok = false;
    double value = token.toDouble(&ok);
    if (ok)
        return value;
    ppError("XTokenizer::nextDouble, token '$' is not a 'real' number", token.toString());
    return 0.0;
}

void XTokenizer::fill(std::set<QString> &out) const {
    for (QStringRef const &token : tokens)
        out.insert(token.toString());
}

void XTokenizer::remove_White_Space_Token() {
    index = 0;
    std::vector<QStringRef> kept;
    kept.reserve(tokens.size());
    for (QStringRef const &token : tokens)
        if (!is_WhiteSpace(token))
            kept.push_back(token);
    tokens.swap(kept);
}

QString XTokenizer::removeWhitespace(QString const &text) {
    QString result;
    result.reserve(text.size());
    for (QChar c : text)
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n') &&
            c != QLatin1Char('\r'))
            result.append(c);
    return result;
}

QStringRef XTokenizer::get_String(QStringRef const &token) {
    return is_String(token) ? token.mid(1, token.size() - 2) : token;
}

bool XTokenizer::is_Number(QStringRef const &token) {
    bool ok = false;
    token.toInt(&ok, 10);
    return ok;
}

bool XTokenizer::is_RealNumber(QStringRef const &token) {
    bool ok = false;
    token.toDouble(&ok);
    return ok;
}

bool XTokenizer::is_String(QStringRef const &token) {
    return !token.isEmpty() && token.startsWith(QLatin1Char('"')) &&
           token.endsWith(QLatin1Char('"'));
}

bool XTokenizer::is_WhiteSpace(QStringRef const &token) {
    for (QChar c : token)
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t'))
            return false;
    return true;
}

bool XTokenizer::is_One_of_these_Chars(QStringRef const &token, QString const &set) {
    return token.size() == 1 && set.contains(token.at(0));
}

bool XTokenizer::is_Bracket_open(QStringRef const &token, QString const &set) {
    return is_One_of_these_Chars(token, set);
}

bool XTokenizer::is_Bracket_close(QStringRef const &token, QString const &set) {
    return is_One_of_these_Chars(token, set);
}

bool XTokenizer::is_Operator(QStringRef const &token, QString const &set) {
    return is_One_of_these_Chars(token, set);
}

char const *XTokenizer::className(QStringRef const &token) {
    if (is_String(token))
        return "STRING";
    if (is_Number(token))
        return "NUMBER";
    if (is_RealNumber(token))
        return "REAL NUMBER";
    if (is_Bracket_open(token))
        return "BRACKET OPEN";
    if (is_Bracket_close(token))
        return "BRACKET CLOSE";
    if (is_Operator(token))
        return "OPERATOR";
    return "OTHER";
}

void XTokenizer::show(unsigned int indent, bool withClass) const {
    ppTest(indent, "Token:$", static_cast<unsigned long long>(tokens.size()));
    for (unsigned int i = 0; i < tokens.size(); ++i) {
        if (withClass)
            ppTest(indent, "[$] = '$' -  $", i, tokens[i].toString(), className(tokens[i]));
        else
            ppTest(indent, "[$] = '$'", i, tokens[i].toString());
    }
}

} // namespace orv
