// XContentFilterCompile.cpp: from expression text to symbols: the tokenizer, the term
// options, the syntax check; the symbol cursor and the text forms.
#include "orv/XContentFilter.h"

#include "find/ContentPrefilter.h"
#include "find/ContentUnit.h"
#include "orv/Log.h"
#include "orv/XTokenizer.h"

namespace orv::find {

QString XSymbol::toString() const {
    switch (type) {
    case AND: return QStringLiteral("&");
    case OR: return QStringLiteral("|");
    case NOT: return QStringLiteral("~");
    case BRACKET_OPEN: return QStringLiteral("(");
    case BRACKET_CLOSE: return QStringLiteral(")");
    case FIND: break;
    default: return QString();
    }
    QString options;
    if (wholeWord)
        options += QLatin1String("w,");
    if (caseInsensitive)
        options += QLatin1String("i,");
    if (countMinimum != 0)
        options += QLatin1String("countMinimum");
    if (options.endsWith(QLatin1Char(',')))
        options.chop(1);
    return text + QLatin1Char('{') + options + QLatin1Char('}');
}

XContentFilter::~XContentFilter() = default;

bool XContentFilter::createSymbols(QString const &expr, bool asRegEx) {
    clear();
    source = expr;
    isRegEx = asRegEx;
    prefilter.reset();
    emptyUnitMatches = true;
    if (asRegEx) {
        regEx = QRegularExpression(expr);
        return regEx.isValid();
    }
    XTokenizer tokens(expr, QStringLiteral(" \t,{}+~!&()"), true, true);
    tokens.remove_White_Space_Token();
    while (tokens.hasMoreToken()) {
        QStringRef const token = tokens.nextToken();
        XSymbol symbol;
        if (token == QLatin1String("(")) {
            symbol.type = XSymbol::BRACKET_OPEN;
        } else if (token == QLatin1String(")")) {
            symbol.type = XSymbol::BRACKET_CLOSE;
        } else if (token == QLatin1String("|")) {
            symbol.type = XSymbol::OR;
        } else if (token == QLatin1String("&")) {
            symbol.type = XSymbol::AND;
        } else if (token == QLatin1String("~")) {
            symbol.type = XSymbol::NOT;
        } else {
            symbol.type = XSymbol::FIND;
            symbol.text = token.toString();
            if (tokens.hasMoreToken() && tokens.currentToken() == QLatin1String("{")) {
                tokens.nextToken();
                while (tokens.hasMoreToken()) {
                    QStringRef const option = tokens.nextToken();
                    if (option == QLatin1String("}"))
                        break;
                    if (option == QLatin1String(","))
                        continue;
                    if (option == QLatin1String("i")) {
                        symbol.caseInsensitive = true;
                    } else if (option == QLatin1String("w")) {
                        symbol.wholeWord = true;
                    } else if (XTokenizer::is_Number(option)) {
                        symbol.countMinimum = option.toUInt();
                    } else {
                        ppError("XContentFilter::createSymbols, symbol '$' inside { } is forbidden",
                                option.toString());
                        return false;
                    }
                }
            }
        }
        symbols.push_back(symbol);
    }
    index = 0;
    bool const result = checkSyntaxExt();
    index = 0;
    remove_Char34_from_FindString();
    index = 0;
    if (result) {
        prefilter = ContentPrefilter::build(symbols);
        // A unit without any term gives the same result as an empty one; when that is
        // a match, every unit must be evaluated.
        Unit absent;
        absent.termsAbsent = true;
        emptyUnitMatches = evaluate(&absent, nullptr).isValid();
        index = 0;
    }
    return result;
}

bool XContentFilter::checkSyntaxExt() {
    bool prevFind = false;
    int balance = 0;
    index = 0;
    while (has_more_symbols()) {
        XSymbol const &symbol = next_symbol();
        if (symbol.isBracketOpen()) {
            ++balance;
            prevFind = false;
            // Looks at what follows the bracket; that logs when the bracket ends the text.
            current_symbol(0);
        } else if (symbol.isBracketClose()) {
            --balance;
            prevFind = false;
        } else if (symbol.isOperator()) {
            prevFind = false;
        } else if (symbol.isFind()) {
            if (prevFind) {
                ppDebug("XContentFilter::checkSyntax - 2 Finder tokens not allowed");
                index = 0;
                return false;
            }
            prevFind = true;
        }
    }
    index = 0;
    if (balance != 0) {
        ppError("Brackets open/close must be symmetric +( -) => 0, but we have:$", balance);
        return false;
    }
    return true;
}

void XContentFilter::clear() {
    source.clear();
    symbols.clear();
    index = 0;
}

void XContentFilter::remove_Char34_from_FindString() {
    for (XSymbol &symbol : symbols)
        if (symbol.isFind() && symbol.text.size() >= 2 &&
            symbol.text.startsWith(QLatin1Char('"')) && symbol.text.endsWith(QLatin1Char('"')))
            symbol.text = symbol.text.mid(1, symbol.text.size() - 2);
    index = 0;
}

bool XContentFilter::isValid() const { return isRegEx ? regEx.isValid() : !source.isEmpty(); }

bool XContentFilter::hasContents() const {
    return isRegEx ? !regEx.pattern().isEmpty() : !symbols.empty();
}

namespace {
// Shared by every filter on every thread: nobody writes to it.
XSymbol &invalidSymbol() {
    static XSymbol sym;
    return sym;
}
} // namespace

XSymbol &XContentFilter::next_symbol() {
    if (has_more_symbols())
        return symbols[static_cast<size_t>(index++)];
    ppError("Group::next_symbol, index: $, must be 0 ... $", index,
            static_cast<qint64>(symbols.size()) - 1);
    return invalidSymbol();
}

XSymbol const &XContentFilter::next_symbol() const {
    return const_cast<XContentFilter *>(this)->next_symbol();
}

XSymbol &XContentFilter::current_symbol(unsigned int offset) {
    quint64 const at = quint64(index) + offset;
    if (at < symbols.size())
        return symbols[static_cast<size_t>(at)];
    ppError("Group::next_symbol, index:$, index+offset: $, must be 0 ... $", index, at,
            static_cast<qint64>(symbols.size()) - 1);
    return invalidSymbol();
}

XSymbol const &XContentFilter::current_symbol(unsigned int offset) const {
    return const_cast<XContentFilter *>(this)->current_symbol(offset);
}

bool XContentFilter::eat_symbols_to_close_bracket() {
    if (has_more_symbols() && symbols[static_cast<size_t>(index)].isBracketClose())
        return false;
    // Nesting is not counted: the first close bracket ends the skip, and goes with it.
    while (has_more_symbols())
        if (symbols[static_cast<size_t>(index++)].isBracketClose())
            break;
    return !has_more_symbols();
}

QString XContentFilter::scope_to_string(Scope s) {
    switch (s) {
    case File: return QStringLiteral("File");
    case Paragraph: return QStringLiteral("Paragraph");
    case Sentence: return QStringLiteral("Sentence");
    }
    return QStringLiteral("unknown");
}

QString XContentFilter::toString(bool) const {
    return isRegEx ? xprintF("scope:$, reg-ex pattern '$'", scope_as_string(), source)
                   : xprintF("scope:$, pattern '$'", scope_as_string(), source);
}

void XContentFilter::show(unsigned int indent) {
    if (isRegEx) {
        if (regEx.isValid())
            ppInfo(indent, "XContentFilter::show, Scope:'$', reg ex:'$'", scope_as_string(),
                   source);
        else
            ppInfo(indent, "XContentFilter::show, Scope:'$', reg ex:'$' NOT VALID",
                   scope_as_string(), source);
        return;
    }
    ppInfo(indent, "XContentFilter::show, Scope:'$', symbols:$", scope_as_string(),
           static_cast<qint64>(symbols.size()));
    for (size_t i = 0; i < symbols.size(); ++i)
        ppInfo(indent, "[$] => $", static_cast<qint64>(i), symbols[i].toString());
}

} // namespace orv::find
