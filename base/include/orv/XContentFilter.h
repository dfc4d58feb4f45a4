// XContentFilter.h: the file-content search. A small boolean expression of terms
// (or a regular expression) is compiled once and evaluated over a file that an
// XLineReaderDA has opened, in file, paragraph (file line) or sentence scope; the
// result is a layer of marks at byte positions, non-empty when the file matches.
//
//   orv::find::XContentFilter filter;
//   if (filter.createSymbols("\"red car\"{i,w,3} & (wheel | ~door{i})", false))
//       orv::find::XRamLayer hits = filter.search(reader);
//
// Terms: "quoted text", options {i} case-insensitive, {w} whole word, {3} at least 3
// hits in the scope. Operators & | ~ and brackets, evaluated strictly left to right.
#pragma once

#include "orv/XLineInfo.h"
#include "orv/XRam.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace orv {

class XLineReaderDA;

namespace find {

class ContentPrefilter;

// One element of a compiled expression.
struct ORV_EXPORT XSymbol {
    enum Type {
        FIND = 0,
        AND = 1,
        OR = 2,
        NOT = 3,
        BRACKET_OPEN = 4,
        BRACKET_CLOSE = 5,
        INVALID = 6
    };

    int type = INVALID;
    QString text;
    bool caseInsensitive = false;
    bool wholeWord = false;
    unsigned int countMinimum = 0;

    bool isFind() const { return type == FIND; }
    bool is_op_AND() const { return type == AND; }
    bool is_op_OR() const { return type == OR; }
    bool is_op_NOT() const { return type == NOT; }
    bool isBracketOpen() const { return type == BRACKET_OPEN; }
    bool isBracketClose() const { return type == BRACKET_CLOSE; }
    bool isBracket() const { return isBracketOpen() || isBracketClose(); }
    bool isOperator() const { return type >= AND && type <= NOT; }
    bool isValid() const { return type < INVALID; }
    explicit operator bool() const { return isValid(); }
    // A term as "abc{w,i,countMinimum}", an operator or bracket as its sign.
    QString toString() const;
};

// The cursor over the symbols is object state: one filter serves one evaluation at
// a time. search() and matches() work on a private copy, so threads may share one
// compiled filter through them.
class ORV_EXPORT XContentFilter {
public:
    enum Scope { File = 0, Paragraph = 1, Sentence = 2 };

    XContentFilter() = default;
    XContentFilter(XContentFilter const &) = default;
    XContentFilter(XContentFilter &&) = default;
    XContentFilter &operator=(XContentFilter const &) = default;
    XContentFilter &operator=(XContentFilter &&) = default;
    ~XContentFilter();

    // Compiles expr; false (with a log line) for a bad expression. The symbols read so
    // far stay even then; a caller should not search with a refused expression.
    bool createSymbols(QString const &expr, bool regEx);
    bool checkSyntaxExt();
    void clear();
    void remove_Char34_from_FindString();

    bool isValid() const;
    explicit operator bool() const { return isValid(); }
    bool isEmpty() const { return symbols.empty(); }
    size_t size() const { return symbols.size(); }
    size_t rest() const { return symbols.size() - static_cast<size_t>(index); }
    bool has_more_symbols() const { return static_cast<size_t>(index) < symbols.size(); }
    bool hasContents() const;
    // Why a regular expression was refused; empty otherwise.
    QString errorString() const {
        return isRegEx && !regEx.isValid() ? regEx.errorString() : QString();
    }
    bool is_reg_ex() const { return isRegEx; }
    QString const &getSource() const { return source; }
    std::vector<XSymbol> const &getSymbols() const { return symbols; }

    void seekHome() { index = 0; }
    XSymbol &next_symbol();
    XSymbol const &next_symbol() const;
    XSymbol &current_symbol(unsigned int offset = 0);
    XSymbol const &current_symbol(unsigned int offset = 0) const;
    bool is_find(unsigned int offset = 0) const { return current_symbol(offset).isFind(); }
    bool is_operator_ext(unsigned int offset = 0) const {
        return current_symbol(offset).isOperator();
    }
    // Skips to behind the next close bracket (not counting nesting); true at the end.
    bool eat_symbols_to_close_bracket();

    // Evaluates over the reader's table in this filter's scope.
    XRamLayer find(unsigned int indent, XLineReaderDA const &reader);
    XRamLayer find_in_file(unsigned int indent, XLineReaderDA const &reader);
    XRamLayer find_in_paragraph(unsigned int indent, XLineInfo const &li, QString const &text);
    XRamLayer rx_find(unsigned int indent, XLineReaderDA const &reader);
    XRamLayer rx_find_in_paragraph(unsigned int indent, XLineInfo const &li, QString const &text);
    XRamLayer rx_find_in_file(unsigned int indent, XLineReaderDA const &reader);

    // find() on a copy: leaves this filter untouched, so that one compiled filter can
    // serve several files on several threads at once.
    XRamLayer search(XLineReaderDA const &reader) const;
    // Whether the file matches at all.
    bool matches(XLineReaderDA const &reader) const { return search(reader).isValid(); }
    // One file line that matched, as findLines gives it.
    struct LineHits {
        XLineInfo li; // the line's first byte and its number from 0
        QString text; // a CR before the LF stays part of it
        XRamLayer marks;
    };
    // find() without a line table, in paragraph and sentence scope: the prefilter walks
    // the bytes, and only the file lines that hold a term are cut out at their line feeds,
    // numbered and evaluated, giving the marks find() gives. lines gets the file's line
    // count. False, with nothing found, where every line must be evaluated (regular
    // expressions, file scope, an expression that a line without terms satisfies, terms
    // that bytes can't tell): find() on a reader serves then.
    bool findLines(char const *data, quint64 size, std::vector<LineHits> &found, quint64 &lines);
    // Whether a file of these bytes can match at all: false only when no term occurs in
    // them and the expression needs one, so that a file can be passed over without its
    // line table. Regular expressions and terms that bytes can't tell give true.
    bool mayMatch(char const *data, quint64 size) const;
    // The byte-level prefilter skips units that hold no term; results are the same
    // with it off (for comparison and measurement).
    void setPrefilterEnabled(bool on) { prefilterEnabled = on; }
    bool isPrefilterEnabled() const { return prefilterEnabled; }

    // The file line that starts at table entry index as one unit; returns the index of
    // its last piece.
    static int accumulate_line_info(XLineReaderDA const &reader, unsigned int index,
                                    XLineInfo &out);
    static std::vector<XLineInfo> create_sentences_from_paragraph(XLineInfo const &li,
                                                                  QString const &text);

    QString scope_as_string() const { return scope_to_string(scope); }
    static QString scope_to_string(Scope s);
    QString toString(bool details = false) const;
    void show(unsigned int indent);

    Scope scope = Paragraph;

private:
    struct Unit;

    // One level after another, without recursion, so that nesting depth costs heap
    // and not stack. File mode (unit null) searches terms over the whole reader.
    XRamLayer evaluate(Unit const *unit, XLineReaderDA const *fileReader);
    XRamLayer searchTerm(XSymbol const &term, Unit const &unit) const;
    XRamLayer searchTermInFile(size_t symbolIndex, XLineReaderDA const &reader) const;
    XRamLayer rxSearch(Unit const &unit) const;
    // The file lines of the reader that may hold a hit, in file order, each given to
    // visit with its bytes; false when the file reaches past what marks can address.
    template <typename Visit>
    bool forEachParagraph(XLineReaderDA const &reader, bool usePrefilter, Visit visit) const;
    // The units of one file line in this scope (the line, or its sentences, whose text
    // lineText gives), each searched by unitSearch; the marks go into result.
    template <typename LineText, typename UnitSearch>
    void searchParagraph(XLineInfo const &li, QString const &text, char const *bytes,
                         LineText lineText, XRamLayer &result, UnitSearch unitSearch);
    template <typename UnitSearch>
    void searchUnits(XLineReaderDA const &reader, bool usePrefilter, XRamLayer &result,
                     UnitSearch unitSearch);
    // The expression on one unit; an empty unit gives nothing.
    XRamLayer evaluateUnit(Unit const &unit);

    std::vector<XSymbol> symbols;
    QString source;
    QRegularExpression regEx;
    int index = 0;
    bool isRegEx = false;
    bool prefilterEnabled = true;
    // Immutable once built, so copies share it.
    std::shared_ptr<ContentPrefilter const> prefilter;
    // Whether a unit without any term can match (as with "~a"): then no unit may be skipped.
    bool emptyUnitMatches = true;
};

} // namespace find
} // namespace orv
