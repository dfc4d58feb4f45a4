// XContentFilter_test.cpp: compiling expressions (also hostile ones) and the
// evaluation rules: short-circuits, not, options and minimum counts, the three scopes,
// regular expressions, and one compiled filter searching on several threads.
#include "orv/XContentFilter.h"
#include "orv/XLineReaderDA.h"
#include "orv/XMem.h"

#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>

using namespace orv;
using namespace orv::find;

namespace {

using Marks = std::vector<std::pair<int, int>>;

Marks marksOf(XRamLayer const &layer) {
    Marks marks;
    for (XRam const &m : layer)
        marks.emplace_back(m.start, m.end);
    return marks;
}

Marks search(QByteArray const &text, QString const &expr,
             XContentFilter::Scope scope = XContentFilter::Paragraph, bool regEx = false) {
    XMem mem(text);
    XLineReaderDA reader(mem, 1 << 16, true);
    XContentFilter filter;
    EXPECT_TRUE(filter.createSymbols(expr, regEx)) << expr.toStdString();
    filter.scope = scope;
    return marksOf(filter.find(0, reader));
}

QStringList symbolsOf(XContentFilter const &filter) {
    QStringList texts;
    for (XSymbol const &s : filter.getSymbols())
        texts << s.toString();
    return texts;
}

} // namespace

TEST(XContentFilter, CompilesTermsOperatorsAndOptions) {
    QString const tokens = "XContentFilter::checkSyntax - 2 Finder tokens not allowed";
    QString const brackets = "Brackets open/close must be symmetric +( -) => 0, but we have:";
    // The expression, whether it compiles, its symbols, the ERROR and DEBUG lines it logs.
    std::tuple<QString, bool, QStringList, std::vector<QString>> const rows[] = {
        {"a & (b | ~c)", true, {"a{}", "&", "(", "b{}", "|", "~", "c{}", ")"}, {}},
        {"a{i,w,3}", true, {"a{w,i,countMinimum}"}, {}},
        {"\"a b\"{i} & x", true, {"a b{i}", "&", "x{}"}, {}},
        // No blanks: `|` is no delimiter, so this is one term.
        {"a|b", true, {"a|b{}"}, {}},
        {"a b", false, {"a{}", "b{}"}, {tokens}},
        {"a, b", false, {"a{}", ",{}", "b{}"}, {tokens}},
        {"a + b", false, {"a{}", "+{}", "b{}"}, {tokens}},
        {"(a", false, {"(", "a{}"}, {brackets + "1"}},
        {"a)", false, {"a{}", ")"}, {brackets + "-1"}},
        {"a{x}", false, {}, {"XContentFilter::createSymbols, symbol 'x' inside { } is forbidden"}},
        // The syntax check knows only two rules: these pass.
        {"a &", true, {"a{}", "&"}, {}},
        {"& a", true, {"&", "a{}"}, {}},
        {"a & & b", true, {"a{}", "&", "&", "b{}"}, {}},
        {"\"\"", true, {"{}"}, {}},
    };
    for (auto const &[expr, ok, symbols, log] : rows) {
        SCOPED_TRACE(expr.toStdString());
        XContentFilter filter;
        std::vector<QString> const logged = test::linesLoggedBy(
            [&, expr = expr, ok = ok] { EXPECT_EQ(filter.createSymbols(expr, false), ok); },
            ERROR | DEBUG);
        EXPECT_EQ(symbolsOf(filter), symbols);
        EXPECT_EQ(logged, log);
        EXPECT_TRUE(filter.isValid());
    }
}

TEST(XContentFilter, HostileExpressionsAreRefusedOrEvaluatedWithoutCrashing) {
    XContentFilter filter;
    QString const deep = QString(10000, '(') + "fox" + QString(10000, ')');
    ASSERT_TRUE(filter.createSymbols(deep, false));
    XMem mem(QByteArray("the fox\nno\n"));
    XLineReaderDA reader(mem, 100, true);
    EXPECT_EQ(marksOf(filter.find(0, reader)), (Marks{{4, 7}}));
    std::vector<QString> const logged = test::linesLoggedBy(
        [&] {
            EXPECT_FALSE(filter.createSymbols(QString(10000, '(') + "fox", false));
            EXPECT_FALSE(filter.createSymbols("[", true));
            EXPECT_FALSE(filter.isValid());
            EXPECT_TRUE(filter.createSymbols("(", false) == false);
        },
        ERROR);
    EXPECT_EQ(logged.front(),
              "Brackets open/close must be symmetric +( -) => 0, but we have:10000");
    // The open bracket at the end looks past the symbols before the balance refuses it.
    EXPECT_EQ(logged.back(), "Brackets open/close must be symmetric +( -) => 0, but we have:1");
    EXPECT_EQ(logged[1], "Group::next_symbol, index:1, index+offset: 1, must be 0 ... 0");
    // A refused expression still finds nothing harmful to do.
    EXPECT_TRUE(marksOf(filter.find(0, reader)).empty());
}

// The marks per text and expression, in the scope given.
TEST(XContentFilter, EvaluatesLeftToRightWithShortCircuitsInEachScope) {
    using S = XContentFilter;
    auto const P = S::Paragraph, Sn = S::Sentence, F = S::File;
    std::tuple<QByteArray, QString, S::Scope, Marks> const rows[] = {
        {"red car\nblue car\n", "red & car", P, {{0, 3}, {4, 7}}},
        {"red car\nblue car\n", "red | blue", P, {{0, 3}, {8, 12}}},
        // A true left side ends the level: `car` is never searched.
        {"red car\n", "red | car", P, {{0, 3}}},
        // A unit lacking the negated term is marked whole beside the hits.
        {"red car\nblue car\n", "car & ~red", P, {{13, 16}, {8, 16}}},
        // Not alone marks the whole unit that lacks the term; empty lines are skipped.
        {"red car\n\nblue\n", "~red", P, {{9, 13}}},
        // (a & b) | c: a failed and inside the group ends the outer level as well.
        {"a c\n", "(a & b) | c", P, {}},
        {"c\n", "(a & b) | c", P, {{0, 1}}},
        // No precedence: (a | b) & c, except that a true `a` ends at the `|`.
        {"a\n", "a | b & c", P, {{0, 1}}},
        {"b\n", "a | b & c", P, {}},
        {"b c\n", "a | b & c", P, {{0, 1}, {2, 3}}},
        // Overlapping hits all count.
        {"aaa\n", "aa", P, {{0, 2}, {1, 3}}},
        {"x y\nx x x\n", "x{2}", P, {{4, 5}, {6, 7}, {8, 9}}},
        {"Fox fox FOX\n", "fox{i}", P, {{0, 3}, {4, 7}, {8, 11}}},
        // A refused whole-word hit goes on case-insensitively: `ab` at 4 is accepted.
        {"ABC ab\n", "AB{w}", P, {{4, 6}}},
        {"the cat concat\n", "cat{w}", P, {{4, 7}}},
        // Byte positions behind multi-byte text, and behind broken bytes.
        {"\xCE\xB1\xCE\xB2 fox\n", "fox", P, {{5, 8}}},
        {"\xE4\xB8 fox\xFF fox\n", "fox", P, {{3, 6}, {8, 11}}},
        {"\uFEFFfox\n", "fox", P, {{3, 6}}},
        {"a \xE2\x84\xAA\n", "k{i}", P, {{2, 3}}},
        // The second sentence begins with the blank.
        {"Hello world. Bye\n", "Bye", Sn, {{13, 16}}},
        {"Hello world. Bye\n", "world & Bye", Sn, {}},
        {"Hello world. Bye\n", "world & Bye", P, {{6, 11}, {13, 16}}},
        {"a.b\n", "a.b", Sn, {}},
        {"a.b\n", "a.b", P, {{0, 3}}},
        // In file scope the terms may stand on different lines, and not only filters.
        {"red\ncar\n", "red & car", F, {{0, 3}, {4, 7}}},
        {"red\ncar\n", "~red", F, {}},
        {"red\ncar\n", "car & ~blue", F, {{4, 7}}},
        {"x\nx\nx\n", "x{2}", F, {{0, 1}, {2, 3}}},
    };
    for (auto const &[text, expr, scope, marks] : rows) {
        SCOPED_TRACE(expr.toStdString() + " in " + S::scope_to_string(scope).toStdString() +
                     " on " + text.toStdString());
        EXPECT_EQ(search(text, expr, scope), marks);
    }
    EXPECT_EQ(S::scope_to_string(static_cast<S::Scope>(7)), "unknown");
}

TEST(XContentFilter, SentencesAreCutAtEndersAndTheLastIsCountedInCharacters) {
    XLineInfo li;
    li.posMemory = 100;
    std::vector<XLineInfo> const s = XContentFilter::create_sentences_from_paragraph(
        li, QString::fromUtf8("Ab. \xCE\xB1\xCE\xB2"));
    ASSERT_EQ(s.size(), 2u);
    EXPECT_EQ(s[0].posMemory, 100u);
    EXPECT_EQ(s[0].length, 3u);
    EXPECT_EQ(s[1].posMemory, 103u);
    EXPECT_EQ(s[1].length, 3u); // three characters, five bytes
    EXPECT_TRUE(XContentFilter::create_sentences_from_paragraph(li, QString()).empty());
}

TEST(XContentFilter, RegularExpressionsMarkEveryMatch) {
    EXPECT_EQ(search("cat catalog\n\xCE\xB1 cot\n", "c[ao]t", XContentFilter::Paragraph, true),
              (Marks{{0, 3}, {4, 7}, {15, 18}}));
    EXPECT_EQ(search("one. two.\n", "o\\.", XContentFilter::Sentence, true), (Marks{{7, 9}}));
    XContentFilter filter;
    filter.createSymbols("x+", true);
    EXPECT_EQ(filter.toString(), "scope:Paragraph, reg-ex pattern 'x+'");
    XRamLayer const none = filter.rx_find_in_file(0, XLineReaderDA());
    EXPECT_FALSE(none.isValid());
}

TEST(XContentFilter, OneFilterSearchesTwoFilesOnTwoThreads) {
    XContentFilter filter;
    ASSERT_TRUE(filter.createSymbols("fox{i} & ~dog", false));
    QByteArray a, b;
    for (int i = 0; i < 2000; ++i) {
        a += "the quick fox\nthe lazy dog and fox\n";
        b += "FOX only\n";
    }
    XMem memA(a), memB(b);
    XLineReaderDA readerA(memA, 1 << 16, true), readerB(memB, 1 << 16, true);
    XRamLayer resultA, resultB;
    std::thread ta([&] { resultA = filter.search(readerA); });
    std::thread tb([&] { resultB = filter.search(readerB); });
    ta.join();
    tb.join();
    // The fox and the whole line without a dog, on every first line of a and every line of b.
    EXPECT_EQ(resultA.size(), 4000u);
    EXPECT_EQ(resultB.size(), 4000u);
    EXPECT_EQ(resultA.reader(), &readerA);
    EXPECT_EQ(marksOf(resultA), marksOf(filter.search(readerA)));
}
