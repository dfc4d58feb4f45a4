// XSearchRun_test.cpp: the search run over a tree beside `find ... -exec grep`, with the
// same filters on both sides; the line search without a table against find() on a
// reader; files that vanish between walk and search; a run without content filter.
#include "orv/XLineReaderDA.h"
#include "orv/XMem.h"
#include "orv/XSearchRun.h"

#include "support/QtPrinters.h"
#include "support/SampleTree.h"

#include <gtest/gtest.h>

#include <set>

using namespace orv;
using namespace orv::find;

namespace {

using Keys = std::set<QString>;

// "path:line:offset" per hit, or "path:line" per matching line.
Keys runKeys(XSearchRun const &search, bool byMark) {
    Keys keys;
    for (XSearchRun::FileResult const &file : search.results())
        for (XHitLine const &hit : file.hitLines)
            keys.insert(QStringLiteral("%1:%2").arg(file.path).arg(hit.line) +
                        (byMark ? QStringLiteral(":%1").arg(hit.offset) : QString()));
    return keys;
}

// The same from grep -Z (name, NUL, "line:offset:..." or "line:text") over find's files.
Keys grepKeys(QString const &root, QStringList const &findTests, QStringList const &grepArgs,
              bool hidden, bool byMark, bool &ran) {
    QStringList const args = test::findFileArguments(root, {"-L"}, hidden, findTests) +
                             QStringList{"-exec", "grep", "-I", "-H", "-Z", "-n"} +
                             (byMark ? QStringList{"-b", "-o"} : QStringList()) + grepArgs +
                             QStringList{"{}", "+"};
    QByteArray out;
    ran = test::runTool(QStringLiteral("find"), args, out);
    Keys keys;
    for (QByteArray const &line : out.split('\n')) {
        int const nul = line.indexOf('\0');
        if (nul < 0)
            continue;
        QList<QByteArray> const fields = line.mid(nul + 1).split(':');
        QString key = QString::fromUtf8(line.left(nul)) + ':' + QString::fromUtf8(fields.value(0));
        if (byMark)
            key += ':' + QString::fromUtf8(fields.value(1));
        keys.insert(key);
    }
    return keys;
}

TEST(XSearchRun, HitsEqualGrepsOverTheFilesFindSelects) {
    test::SampleTree const tree;
    qint64 const mid = QDateTime(QDate(2022, 1, 1), QTime(0, 0)).toMSecsSinceEpoch();
    // The file filter's pattern, negative pattern, extensions, least size and time.
    struct Files {
        char const *pattern = "", *negative = "";
        std::unordered_set<QString> extensions{};
        quint64 sizeAbove = 0;
        qint64 after = 0;
    };
    struct Row {
        char const *expr;
        bool regEx, byMark, hidden;
        char const *grepArgs, *findTests; // cut at blanks
        Files files{};
    } const rows[] = {
        {"fox", false, true, false, "-e fox", ""},
        {"fox{i}", false, true, false, "-i -e fox", ""},
        {"fox & dog", false, false, false, "-P (?=.*fox)(?=.*dog)", ""},
        {"fox | cat", false, false, false, "-e fox -e cat", ""},
        {"fox & ~dog", false, false, false, "-P ^(?!.*dog).*fox", ""},
        {"f[o]x+ ", true, true, false, "-E -e f[o]x+[[:blank:]]", ""}, // the tree holds no tabs
        {"fox", false, true, true, "-e fox", ""},
        {"fox", false, true, false, "-e fox", "-iname *.txt", {"*.txt"}},
        {"fox{i}",
         false,
         true,
         false,
         "-i -e fox",
         "( -iname *.log -o -iname *.md )",
         {"", "", {"log", "md"}}},
        {"fox", false, false, false, "-e fox", "-size +29c -not -iname *.md", {"", "*.md", {}, 29}},
        {"fox", false, false, false, "-e fox", "-newermt 2022-01-01", {"", "", {}, 0, mid}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(std::string(row.findTests) + " " + row.expr);
        XFilter filter;
        ASSERT_TRUE(filter.contentFilter.createSymbols(QString::fromUtf8(row.expr), row.regEx));
        XFileFilter &files = filter.fileFilter;
        files.setPattern(QString::fromUtf8(row.files.pattern), false);
        files.setPattern(QString::fromUtf8(row.files.negative), true);
        files.textExtensions = row.files.extensions;
        files.sizeArea = row.files.sizeAbove ? XFileFilter::AFTER : XFileFilter::NO_AREA;
        files.size1 = row.files.sizeAbove;
        files.timeArea = row.files.after ? XFileFilter::AFTER : XFileFilter::NO_AREA;
        files.time1 = row.files.after;
        XSearchRun search(filter);
        search.dirInfo().setHiddenFiles(row.hidden);
        search.dirInfo().rescan = true;
        ASSERT_TRUE(search.run(tree.root()));
        bool ran = false;
        Keys const expected = grepKeys(tree.root(), test::words(row.findTests),
                                       test::words(row.grepArgs), row.hidden, row.byMark, ran);
        if (!ran)
            GTEST_SKIP() << "find or grep is not installed";
        EXPECT_FALSE(expected.empty());
        EXPECT_EQ(runKeys(search, row.byMark), expected);
    }
    XDirInfo::cacheDir.deleteEntry(tree.root());
}

// Lines of words, delimiters, UTF-8, CRLF ends, empty lines and long lines that the
// reader wraps; a BOM at the start now and then; the last line with or without LF.
QByteArray randomText(quint32 seed) {
    static QList<QByteArray> const words =
        QByteArray("fox|Fox|dog|cat|a|the|x|fox.|dog!|why?|Gr\u00fc\u00dfe|\t|foxes|\u3002")
            .split('|');
    QByteArray text = seed % 3 == 0 ? QByteArray("\xef\xbb\xbf") : QByteArray();
    for (int line = 0; line < 60; ++line) {
        int const count = int(seed % 7 == 0 ? 40 : seed % 9);
        for (int w = 0; w < count; ++w) {
            seed = seed * 1103515245u + 12345u;
            text += words[int((seed >> 16) % unsigned(words.size()))];
            text += ' ';
        }
        seed = seed * 1103515245u + 12345u;
        text += (seed >> 16) % 5 == 0 ? "\r\n" : "\n";
    }
    if (seed % 2)
        text.chop(1);
    return text;
}

TEST(XContentFilter, LinesWithoutATableGiveWhatFindGives) {
    char const *const expressions[] = {
        "fox",         "fox & dog",         "fox{i} | cat",
        "fox{w}",      "dog & ~cat",        "fox{2}",
        "\"fox dog\"", "(fox | cat) & dog", "Gr\u00fc\u00dfe | why?"};
    size_t compared = 0;
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QByteArray const text = randomText(seed);
        XMem mem(text);
        XLineReaderDA reader(mem, 40, true); // long lines come in wrapped pieces
        quint64 const tableLines =
            reader.countLines() ? quint64(reader.lineInfos().back().lineNumber) + 1 : 0;
        for (char const *expr : expressions)
            for (auto scope : {XContentFilter::Paragraph, XContentFilter::Sentence}) {
                SCOPED_TRACE(std::to_string(seed) + " " + expr + " " + std::to_string(scope));
                XContentFilter filter;
                ASSERT_TRUE(filter.createSymbols(QString::fromUtf8(expr), false));
                filter.scope = scope;
                std::vector<XContentFilter::LineHits> found;
                quint64 lines = 0;
                ASSERT_TRUE(filter.findLines(text.constData(), quint64(text.size()), found, lines));
                EXPECT_EQ(lines, tableLines);
                std::vector<XHitLine> const sparse = hitLines(found);
                std::vector<XHitLine> const full = hitLines(reader, filter.find(0, reader));
                ASSERT_EQ(sparse.size(), full.size());
                for (size_t i = 0; i < full.size(); ++i)
                    EXPECT_EQ(sparse[i].toString(QString()), full[i].toString(QString()));
                compared += full.size();
            }
    }
    EXPECT_GT(compared, 2000u);
    // Where every line must be looked at, the caller takes the table.
    for (auto const &[expr, regEx, scope] : {std::tuple<char const *, bool, XContentFilter::Scope>{
                                                 "~cat", false, XContentFilter::Paragraph},
                                             {"fox", false, XContentFilter::File},
                                             {"fo.", true, XContentFilter::Paragraph}}) {
        XContentFilter filter;
        ASSERT_TRUE(filter.createSymbols(QString::fromUtf8(expr), regEx));
        filter.scope = scope;
        std::vector<XContentFilter::LineHits> found;
        quint64 lines = 7;
        EXPECT_FALSE(filter.findLines("fox\n", 4, found, lines)) << expr;
        EXPECT_EQ(lines, 0u);
    }
}

TEST(XSearchRun, VanishedFilesAreNamedAndBinaryFilesKeepTheirLines) {
    test::SampleTree const tree;
    XFilter filter;
    ASSERT_TRUE(filter.contentFilter.createSymbols(QStringLiteral("fox"), false));
    {
        XDirInfo walk;
        walk.scan_dir(tree.root()); // the cache now knows b.md
    }
    ASSERT_TRUE(QFile::remove(tree.path(QStringLiteral("b.md"))));
    XSearchRun search(filter);
    ASSERT_TRUE(search.run(tree.root()));
    std::map<QString, XSearchRun::FileResult> byName;
    for (XSearchRun::FileResult const &file : search.results())
        byName[QFileInfo(file.path).fileName()] = file;
    EXPECT_TRUE(byName[QStringLiteral("b.md")].unreadable);
    EXPECT_TRUE(byName[QStringLiteral("data.bin")].binary);
    EXPECT_EQ(byName[QStringLiteral("data.bin")].hits, 1u);
    EXPECT_TRUE(byName[QStringLiteral("data.bin")].hitLines.empty());
    EXPECT_EQ(byName[QStringLiteral("a.txt")].lines, 3u);
    EXPECT_EQ(byName[QStringLiteral("a.txt")].hits, 2u);
    EXPECT_EQ(search.stats().files, search.results().size());
    EXPECT_EQ(search.stats().filesTotal, search.results().size());

    XSearchRun binaryLines(filter);
    binaryLines.setLinesOfBinaryFiles(true);
    binaryLines.setThreadCount(1);
    ASSERT_TRUE(binaryLines.run(tree.root()));
    QStringList paths;
    for (XSearchRun::FileResult const &file : binaryLines.results()) {
        paths << file.path;
        if (file.path.endsWith(QLatin1String("data.bin"))) {
            EXPECT_EQ(file.hitLines.size(), 1u);
        }
    }
    QStringList sorted = paths;
    sorted.sort();
    EXPECT_EQ(paths, sorted);
    XDirInfo::cacheDir.deleteEntry(tree.root());
}

TEST(XSearchRun, WithoutContentFilterTheFilteredFilesAreTheResult) {
    test::SampleTree const tree;
    XFilter filter;
    filter.fileFilter.setPattern(QStringLiteral("*.log,*.md"), false);
    XSearchRun search(filter);
    ASSERT_TRUE(search.run(tree.root()));
    QStringList paths;
    for (XSearchRun::FileResult const &file : search.results()) {
        paths << file.path;
        EXPECT_EQ(file.lines, 0u); // not opened
    }
    EXPECT_EQ(paths, test::findFiles(tree.root(), {"-L"}, false,
                                     {"(", "-iname", "*.log", "-o", "-iname", "*.md", ")"}));
    XDirInfo::cacheDir.deleteEntry(tree.root());
}

} // namespace

TEST(XContentFilter, TermsFoundTogetherAtEveryPlaceOfABlockAsOneByOne) {
    // The expression, and the text put at each position of a filler line, then at its end.
    std::pair<char const *, char const *> const rows[] = {
        {"Sherlock | Watson", "Watson"},
        {"Sherlock | Watson", "SherWatsonlock"},               // one inside the other
        {"Ab | Abc", "Abc"},                                   // a prefix of the other
        {"XY | YZ", "XYZ"},                                    // overlapping
        {"Q1 | Q2{i} | 7x | #y | Zz | %% | W | K | J9", "J9"}, // more than one pass holds
        {"Kelvin{i} | Long{i}", "lONG"}, // folded, with non-ASCII alternatives
        {"Fox | Dog", "FoDog"},
    };
    QByteArray const filler(70, 'x');
    for (auto const &[expr, placed] : rows)
        for (int at = 0; at <= filler.size(); ++at) {
            QByteArray const text = filler.left(at) + placed + filler.mid(at) + "\nFox";
            SCOPED_TRACE(std::string(expr) + " at " + std::to_string(at));
            XMem mem(text);
            XLineReaderDA reader(mem, 1 << 20, true);
            XContentFilter filter;
            ASSERT_TRUE(filter.createSymbols(QString::fromUtf8(expr), false));
            std::vector<int> starts[2];
            for (bool prefilter : {true, false}) {
                filter.setPrefilterEnabled(prefilter);
                for (XRam const &m : filter.search(reader))
                    starts[prefilter].push_back(m.start);
            }
            EXPECT_EQ(starts[true], starts[false]);
            EXPECT_FALSE(starts[false].empty());
        }
    // Lines counted past the 255 steps a byte counter holds, and the last without an LF.
    QByteArray const lines = QByteArray(9000, '\n') + "Watson";
    XContentFilter filter;
    ASSERT_TRUE(filter.createSymbols(QStringLiteral("Sherlock | Watson"), false));
    std::vector<XContentFilter::LineHits> found;
    quint64 count = 0;
    ASSERT_TRUE(filter.findLines(lines.constData(), quint64(lines.size()), found, count));
    EXPECT_EQ(count, 9001u);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].li.lineNumber, 9000u);
}
