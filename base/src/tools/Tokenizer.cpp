// Tokenizer.cpp: byte-wise splitting, typed token access and the quote-aware split.
#include "orv/Tokenizer.h"

#include "orv/Log.h"

#include <array>

namespace orv {

namespace {

// Delimiter membership of every byte value.
std::array<bool, 256> delimiterTable(QByteArray const &delims) {
    std::array<bool, 256> table{};
    for (char c : delims)
        table[static_cast<unsigned char>(c)] = true;
    return table;
}

} // namespace

Tokenizer::Tokenizer(QString const &text, QString const &delims, bool keepDelims) {
    scan(text, delims, keepDelims);
}

void Tokenizer::scan(QString const &text, QString const &delims, bool keepDelims) {
    index = 0;
    QByteArray const bytes = text.toUtf8();
    std::array<bool, 256> const isDelim = delimiterTable(delims.toUtf8());
    char const *data = bytes.constData();
    int const size = bytes.size();
    int tokenStart = -1; // first byte of the token in progress
    for (int pos = 0; pos < size; ++pos) {
        unsigned char c = static_cast<unsigned char>(data[pos]);
        if (!isDelim[c]) {
            if (tokenStart < 0)
                tokenStart = pos;
            continue;
        }
        if (tokenStart >= 0) {
            tokens.push_back(QString::fromUtf8(data + tokenStart, pos - tokenStart));
            tokenStart = -1;
        }
        if (keepDelims)
            tokens.push_back(QString(QLatin1Char(static_cast<char>(c))));
    }
    if (tokenStart >= 0)
        tokens.push_back(QString::fromUtf8(data + tokenStart, size - tokenStart));
}

QString Tokenizer::tokenAt(unsigned int i) const { return i < size() ? tokens[i] : QString(); }

QString Tokenizer::nextToken() { return hasMoreToken() ? tokens[index++] : QString(); }

QString Tokenizer::peekNextToken() const { return tokenAt(index); }

bool Tokenizer::isPeekNextToken(QString const &s) const {
    return hasMoreToken() && tokens[index] == s;
}

bool Tokenizer::isNextToken_a_Number() const {
    if (!hasMoreToken() || tokens[index].isEmpty() || tokens[index].at(0).isLetter())
        return false;
    bool ok = false;
    tokens[index].toDouble(&ok);
    return ok;
}

namespace {

// The next... family: def past the end (index stays), else the parse or def.
template <typename T, typename Parse> T takeNext(Tokenizer &tok, T def, Parse parse) {
    if (!tok.hasMoreToken())
        return def;
    bool ok = false;
    T value = parse(tok.nextToken(), &ok);
    return ok ? value : def;
}

// The ...At family: def only when there is no token; a failed parse gives 0.
template <typename T, typename Parse>
T valueAt(Tokenizer const &tok, unsigned int i, T def, Parse parse) {
    QString token = tok.tokenAt(i);
    return token.isEmpty() ? def : parse(token, nullptr);
}

} // namespace

int Tokenizer::nextInt(int def) {
    return takeNext(*this, def, [](QString const &t, bool *ok) { return t.toInt(ok, 10); });
}

unsigned int Tokenizer::nextUInt(unsigned int def) {
    return takeNext(*this, def, [](QString const &t, bool *ok) { return t.toUInt(ok, 10); });
}

qint64 Tokenizer::nextLong(qint64 def) {
    return takeNext(*this, def, [](QString const &t, bool *ok) { return t.toLongLong(ok, 10); });
}

quint64 Tokenizer::nextULong(quint64 def) {
    return takeNext(*this, def, [](QString const &t, bool *ok) { return t.toULongLong(ok, 10); });
}

float Tokenizer::nextFloat(float def) {
    return takeNext(*this, def, [](QString const &t, bool *ok) { return t.toFloat(ok); });
}

int Tokenizer::intAt(unsigned int i, int def) const {
    return valueAt(*this, i, def, [](QString const &t, bool *ok) { return t.toInt(ok, 10); });
}

unsigned int Tokenizer::uintAt(unsigned int i, unsigned int def) const {
    return valueAt(*this, i, def, [](QString const &t, bool *ok) { return t.toUInt(ok, 10); });
}

qint64 Tokenizer::LONG_at(unsigned int i, qint64 def) const {
    return valueAt(*this, i, def, [](QString const &t, bool *ok) { return t.toLongLong(ok, 10); });
}

quint64 Tokenizer::ULONG_at(unsigned int i, quint64 def) const {
    return valueAt(*this, i, def, [](QString const &t, bool *ok) { return t.toULongLong(ok, 10); });
}

std::queue<QString> Tokenizer::getQueue() const {
    std::queue<QString> queue;
    for (QString const &token : tokens)
        queue.push(token);
    return queue;
}

std::stack<QString> Tokenizer::getStack() const {
    std::stack<QString> stack;
    for (QString const &token : tokens)
        stack.push(token);
    return stack;
}

std::vector<TokenString> Tokenizer::get_token_strings(QString const &text, QString const &delim) {
    std::vector<TokenString> result;
    if (delim.size() != 1) {
        ppError("Tokenizer::get_token_strings, delim error, must be one char !");
        return result;
    }
    Tokenizer tok(text, delim, true);
    bool inQuote = false;
    QString prev;
    for (QString const &token : tok.tokens) {
        if (token == delim) {
            inQuote = !inQuote;
            if (!inQuote)
                result.push_back({prev, true});
        } else if (!inQuote) {
            result.push_back({token.trimmed(), false});
        }
        prev = token;
    }
    return result;
}

void Tokenizer::show(unsigned int indent) const {
    ppTest(indent, "Tokenizer, size:$", size());
    for (unsigned int i = 0; i < size(); ++i)
        ppTest(indent + 4, "[$] = '$'", i, tokens[i]);
}

} // namespace orv
