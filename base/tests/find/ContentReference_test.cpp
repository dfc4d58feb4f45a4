// ContentReference_test.cpp: search results on real text beside independent tools:
// the lines that grep -n (with -i, -w, -v and set operations for &, |, ~) or Python's
// re find, and each hit's byte offset as grep -b -o or Python gives it. Every row is
// also searched in all scopes with the byte-level prefilter off, which must not change
// a single mark.
#include "orv/XContentFilter.h"
#include "orv/XDelimiter.h"
#include "orv/XLineReaderDA.h"

#include "support/ExternalTool.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <tuple>

using namespace orv;
using namespace orv::find;

namespace {

using Lines = std::set<int>;
using Offsets = std::vector<quint64>;

// Per line: "line offset ..." of the patterns' matches (overlapping ones with a
// lookahead), for lines whose match count reaches the minimum; with sentences, only
// sentences (cut at the enders given) holding every pattern count.
char const *const pythonReference = R"(
import re, sys
path, minimum, enders, patterns = sys.argv[1], int(sys.argv[2]), sys.argv[3], sys.argv[4:]
data = open(path, 'rb').read()
pos = 0
for number, raw in enumerate(data.split(b'\n'), 1):
    line = raw.decode('utf-8', 'surrogateescape')
    units = re.findall('[^' + re.escape(enders) + ']*[' + re.escape(enders) + ']|[^' + re.escape(enders) + ']+$', line) if enders else [line]
    hits = []
    for unit in units:
        found = [list(re.finditer(p, unit)) for p in patterns]
        if all(len(f) >= minimum for f in found):
            base = line.index(unit)
            hits += [pos + len(line[:base + m.start()].encode('utf-8', 'surrogateescape')) for f in found for m in f]
    if hits:
        print(number, *sorted(hits))
    pos += len(raw) + 1
)";

struct Reference {
    Lines lines;
    std::optional<Offsets> offsets{}; // none where a reference gives only lines
};

// The leading numbers of grep's lines: line numbers with -n, offsets with -b -o.
Offsets grepNumbers(QStringList const &args, QString const &file, bool &ran) {
    QByteArray out;
    ran = ran && test::runTool("grep", QStringList{"-a"} + args + QStringList{"--", file}, out);
    Offsets numbers;
    for (QByteArray const &line : out.split('\n'))
        if (!line.isEmpty())
            numbers.push_back(line.left(line.indexOf(':')).toULongLong());
    return numbers;
}

Lines grepLines(QStringList const &args, QString const &file, bool &ran) {
    Offsets const numbers = grepNumbers(QStringList{"-n"} + args, file, ran);
    return Lines(numbers.begin(), numbers.end());
}

Reference python(QStringList const &patterns, int minimum, QString const &enders,
                 QString const &file, bool &ran) {
    QByteArray out;
    ran = ran &&
          test::runTool("python3",
                        QStringList{"-c", pythonReference, file, QString::number(minimum), enders} +
                            patterns,
                        out);
    Reference ref{{}, Offsets()};
    for (QByteArray const &line : out.split('\n')) {
        QList<QByteArray> const fields = line.split(' ');
        if (line.isEmpty())
            continue;
        ref.lines.insert(fields[0].toInt());
        for (int i = 1; i < fields.size(); ++i)
            ref.offsets->push_back(fields[i].toULongLong());
    }
    return ref;
}

// The lines grep finds with a, combined by op ('&', '|' or '-') with those it finds with b.
Lines combined(char op, QStringList const &a, QStringList const &b, QString const &file,
               bool &ran) {
    Lines const left = grepLines(a, file, ran), right = grepLines(b, file, ran);
    Lines result;
    auto const into = std::inserter(result, result.end());
    if (op == '&')
        std::set_intersection(left.begin(), left.end(), right.begin(), right.end(), into);
    else if (op == '|')
        std::set_union(left.begin(), left.end(), right.begin(), right.end(), into);
    else
        std::set_difference(left.begin(), left.end(), right.begin(), right.end(), into);
    return result;
}

struct Row {
    QString file;
    QString expr;
    bool regEx;
    XContentFilter::Scope scope;
    // Computes the reference; ran turns false when a tool is missing.
    std::function<Reference(QString const &file, bool &ran)> reference;
};

using Marks = std::vector<std::tuple<int, int, int>>;

Marks marksOf(XRamLayer const &layer) {
    Marks marks;
    for (XRam const &m : layer)
        marks.emplace_back(m.start, m.end, m.category);
    return marks;
}

} // namespace

TEST(ContentReference, MatchingLinesAndOffsetsEqualGrepAndPython) {
    QString const prose = QStringLiteral(ORV_TEST_DATA_DIR "/prose.txt");
    QString const gpl = QStringLiteral("/usr/share/common-licenses/GPL-3");
    auto const P = XContentFilter::Paragraph;
    auto const S = XContentFilter::Sentence;
    auto const grep = [](QStringList args) {
        return [args](QString const &f, bool &ran) {
            return Reference{grepLines(args, f, ran),
                             grepNumbers(QStringList{"-b", "-o"} + args, f, ran)};
        };
    };
    auto const lines = [](char op, QStringList a, QStringList b) {
        return [=](QString const &f, bool &ran) { return Reference{combined(op, a, b, f, ran)}; };
    };
    auto const py = [](QStringList patterns, int minimum, bool sentences) {
        return [=](QString const &f, bool &ran) {
            return python(patterns, minimum, sentences ? XDelimiter::sDelimAll_Sentence : QString(),
                          f, ran);
        };
    };
    std::vector<Row> const rows = {
        {prose, "fox", false, P, grep({"fox"})},
        {prose, "fox{i}", false, P, grep({"-i", "fox"})},
        {prose, "fox{w}", false, P, grep({"-w", "fox"})},
        {prose, "grapes{3}", false, P, py({"(?=grapes)"}, 3, false)},
        {prose, "fox & grapes", false, P, lines('&', {"fox"}, {"grapes"})},
        {prose, "fox | Fuchs", false, P, lines('|', {"fox"}, {"Fuchs"})},
        {prose, "grapes & ~fox", false, P, lines('-', {"grapes"}, {"fox"})},
        // Empty lines are not evaluated, so "not" never marks them.
        {prose, "~fox{i}", false, P, lines('&', {"-v", "-i", "fox"}, {"-v", "^$"})},
        {prose, "(fox | Fuchs | αλεπού | 狐狸) & ~grapes{i}", false, P,
         lines('-', {"-e", "fox", "-e", "Fuchs", "-e", "αλεπού", "-e", "狐狸"}, {"-i", "grapes"})},
        {prose, "αλεπού", false, P, grep({"αλεπού"})},
        {prose, "葡萄", false, P, grep({"葡萄"})},
        {prose, "gr[a-z]+es", true, P, py({"gr[a-z]+es"}, 1, false)},
        {prose, "[Ff][Oo][Xx]|🦊", true, P, py({"[Ff][Oo][Xx]|🦊"}, 1, false)},
        {prose, "fox & grapes", false, S, py({"fox", "grapes"}, 1, true)},
        {prose, "狐狸", false, S, py({"狐狸"}, 1, true)},
        {prose, "[a-z]+s\\.", true, S, py({"[a-z]+s\\."}, 1, true)},
        {gpl, "GNU", false, P, grep({"GNU"})},
        {gpl, "license{i}", false, P, grep({"-i", "license"})},
        {gpl, "software{w}", false, P, grep({"-w", "software"})},
        {gpl, "copyright{i,2}", false, P, py({"(?i)copyright"}, 2, false)},
        {gpl, "GNU & ~License", false, P, lines('-', {"GNU"}, {"License"})},
        {gpl, "[Ww]arrant[a-z]*", true, P, py({"[Ww]arrant[a-z]*"}, 1, false)},
    };
    int compared = 0;
    for (Row const &row : rows) {
        SCOPED_TRACE(row.expr.toStdString() + " in " + row.file.toStdString());
        if (!QFile::exists(row.file))
            continue;
        bool ran = true;
        Reference const ref = row.reference(row.file, ran);
        if (!ran)
            GTEST_SKIP() << "grep and python3 are needed (scripts/bootstrap.sh installs them)";
        XLineReaderDA reader;
        ASSERT_TRUE(reader.openFile(row.file, 1 << 20, true));
        XContentFilter filter;
        ASSERT_TRUE(filter.createSymbols(row.expr, row.regEx));
        filter.scope = row.scope;
        XRamLayer const found = filter.search(reader);
        Lines lines;
        Offsets offsets;
        for (XRam const &m : found) {
            lines.insert(int(reader.lineInfoAtRamPos(m.start).lineNumber) + 1);
            if (m.is_search_result())
                offsets.push_back(quint64(m.start));
        }
        EXPECT_EQ(lines, ref.lines);
        EXPECT_FALSE(lines.empty());
        std::sort(offsets.begin(), offsets.end());
        if (ref.offsets) {
            EXPECT_EQ(offsets, *ref.offsets);
        }
        // The prefilter changes no mark, in any scope.
        for (auto scope :
             {XContentFilter::File, XContentFilter::Paragraph, XContentFilter::Sentence}) {
            filter.scope = scope;
            filter.setPrefilterEnabled(true);
            Marks const fast = marksOf(filter.search(reader));
            filter.setPrefilterEnabled(false);
            EXPECT_EQ(fast, marksOf(filter.search(reader))) << scope;
        }
        ++compared;
    }
    EXPECT_GE(compared, 16);
}
