// XDirInfo_test.cpp: the walk beside `find` on a tree with hidden files, links and a
// link loop; the cache that answers a second walk and forgets nothing by itself; the
// text-file lists; the flat listings; copies; four walks at once.
#include "orv/XDirInfo.h"

#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/SampleTree.h"

#include <gtest/gtest.h>

#include <thread>

using namespace orv;

namespace {

QString pathOf(QFileInfo const &f) { return f.filePath(); }
QString pathOf(QFileInfo const *f) { return f->filePath(); }

// The sorted paths of files, given as QFileInfo or pointers to them.
template <typename Files> QStringList paths(Files const &files) {
    QStringList list;
    for (auto const &f : files)
        list << pathOf(f);
    list.sort();
    return list;
}

TEST(XDirInfo, WalkListsWhatFindListsFollowingLinksButNotTheLoop) {
    test::SampleTree const tree;
    for (bool hidden : {false, true}) {
        SCOPED_TRACE(hidden ? "hidden files" : "no hidden files");
        XDirInfo info;
        info.setHiddenFiles(hidden);
        info.scan_dir(tree.root());
        QStringList const expected = test::findFiles(tree.root(), {"-L"}, hidden);
        EXPECT_EQ(paths(info.getFiles()), expected);
        EXPECT_EQ(info.countFiles, expected.size());
        // sub, deeper, empty (and the hidden folder): the loop is no folder of its own.
        EXPECT_EQ(info.countDirs, hidden ? 4 : 3);
        XDirInfo::cacheDir.deleteEntry(tree.root());
    }
}

TEST(XDirInfo, SecondScanComesFromTheCacheUntilRescanIsSet) {
    test::SampleTree tree;
    XDirInfo info;
    info.scan_dir(tree.root());
    int const files = info.countFiles;
    ASSERT_GT(files, 0);
    EXPECT_TRUE(XDirInfo::cacheDir.containsKey(tree.root()));
    EXPECT_FALSE(XDirInfo::cacheDir.containsKey(tree.root() + QLatin1Char('/')));

    tree.write(QStringLiteral("new.txt"), "fox");
    std::vector<QString> const lines = test::linesLoggedBy([&] { info.scan_dir(tree.root()); });
    EXPECT_EQ(lines,
              std::vector<QString>{
                  QStringLiteral("XDirInfo::scan_dir, <<<%1>>> from cache").arg(tree.root())});
    EXPECT_EQ(int(info.getFiles().size()), files); // stale: the new file is unknown
    EXPECT_EQ(info.countFiles, 0);                 // counters don't live in the cache
    EXPECT_EQ(info.toString(),
              QStringLiteral("dirs:0, files:0, bytes:0, text files:0, text bytes:0"));

    info.rescan = true;
    info.scan_dir(tree.root());
    EXPECT_FALSE(info.rescan);
    EXPECT_EQ(info.countFiles, files + 1);
    XDirInfo::cacheDir.deleteEntry(tree.root());
}

TEST(XDirInfo, MissingFolderIsCachedEmptyAndCountsMinusOneBytes) {
    QString const missing = QDir::tempPath() + QStringLiteral("/orv-no-such-folder-4711");
    XDirInfo info;
    info.scan_dir(missing);
    EXPECT_TRUE(info.getFiles().empty());
    EXPECT_EQ(info.getUnreadableDirs(), std::vector<QString>{missing});
    EXPECT_TRUE(XDirInfo::cacheDir.containsKey(missing));
    XDirInfo::cacheDir.deleteEntry(missing);
    EXPECT_EQ(XDirInfo::count_bytes(missing, true), -1);
}

TEST(XCacheDirInfo, PutReplacesMoveKeepsAndEmptyKeysAreRefused) {
    XCacheDirInfo cache;
    std::vector<QFileInfo> one{QFileInfo(QStringLiteral("/a"))};
    std::vector<QFileInfo> two{QFileInfo(QStringLiteral("/b")), QFileInfo(QStringLiteral("/c"))};
    cache.put(QStringLiteral("k"), one);
    cache.put(QStringLiteral("k"), two);
    EXPECT_EQ(cache.get(QStringLiteral("k")).size(), 2u);
    cache.move(QStringLiteral("k"), std::move(one));
    EXPECT_EQ(cache.get(QStringLiteral("k")).size(), 2u);
    EXPECT_EQ(one.size(), 1u); // left untouched
    cache.move(QStringLiteral("m"), std::move(one));
    EXPECT_EQ(cache.countEntries(), 2u);
    EXPECT_TRUE(cache.get(QStringLiteral("none")).empty());
    std::vector<QString> const lines = test::linesLoggedBy([&] { cache.deleteEntry(QString()); });
    EXPECT_EQ(lines, std::vector<QString>{
                         QStringLiteral("XCacheDirInfo::deleteEntry, key is empty or null !")});
    EXPECT_EQ(cache.countEntries(), 2u);
    cache.clear();
    EXPECT_EQ(cache.countEntries(), 0u);
}

// Text files by extension leave out the binaries; the head test judges by bytes, and
// takes a non-ASCII byte for binary.
TEST(XDirInfo, TextFilesByExtensionAndByHead) {
    test::SampleTree const tree;
    XDirInfo info;
    info.textExtensions = {QStringLiteral("txt"), QStringLiteral("md"), QStringLiteral("log")};
    info.scan_dir(tree.root());
    info.setupTextFiles();
    QStringList const texts = paths(info.getTextFiles());
    EXPECT_EQ(texts, test::findFiles(tree.root(), {"-L"}, false,
                                     {"(", "-iname", "*.txt", "-o", "-iname", "*.md", "-o",
                                      "-iname", "*.log", ")"}));
    EXPECT_EQ(info.countTextFiles, texts.size());
    info.setupTextFiles(); // counts them once more
    EXPECT_EQ(info.countTextFilesAll, 2 * texts.size());
    EXPECT_TRUE(info.isTextFile(QStringLiteral("x/NOTES.Md")));
    XDirInfo::cacheDir.deleteEntry(tree.root());

    QTemporaryDir dir;
    std::tuple<QByteArray, bool> const rows[] = {
        {"plain\ttext\r\n", true},
        {"back\bspace", true},
        {"", false},
        {"Gr\u00fc\u00dfe", false},
        {"<!DOCTYPE html>\xc3\xbc", true},
        {"<!xml a=\"\xc3\xbc\"", true},
        {"<!xml\xc3\xbc", false}, // the opening is looked for from 9 bytes on
        {QByteArray("nul\0byte", 8), false},
        {"form\ffeed", false},
        {QByteArray(1024, 'a') + "\x01", true}, // only the head counts
    };
    int i = 0;
    for (auto const &[bytes, text] : rows) {
        QString const path = test::writeFile(dir, QString::number(++i), bytes);
        EXPECT_EQ(is_text_file(path), text) << bytes.toStdString();
    }
    EXPECT_FALSE(is_text_file(QString()));
    EXPECT_FALSE(is_text_file(dir.path()));
    EXPECT_FALSE(is_text_file(dir.filePath(QStringLiteral("missing"))));
}

TEST(XDirInfo, FilteredFilesAndTheirCounts) {
    test::SampleTree const tree;
    XDirInfo info;
    info.scan_dir(tree.root());
    XFileFilter filter;
    filter.setPattern(QStringLiteral("*.txt"), false);
    filter.sizeArea = XFileFilter::AFTER;
    XFindStats const stats = info.setup_filtered_files(filter, true);
    QStringList const expected =
        test::findFiles(tree.root(), {"-L"}, false, {"-iname", "*.txt", "-size", "+0c"});
    EXPECT_EQ(paths(info.get_view_filtered_files()), expected);
    EXPECT_EQ(stats.files, quint64(expected.size()));
    EXPECT_EQ(stats.filesTotal, info.getFiles().size());
    quint64 bytes = 0;
    for (QFileInfo const &f : info.getFiles())
        bytes += quint64(f.size());
    EXPECT_EQ(stats.bytes, bytes);

    // A copy's lists point into its own files.
    XDirInfo const copy(info);
    ASSERT_EQ(copy.get_view_filtered_files().size(), info.get_view_filtered_files().size());
    QFileInfo const *first = copy.get_view_filtered_files()[0];
    EXPECT_TRUE(first >= copy.getFiles().data() &&
                first < copy.getFiles().data() + copy.getFiles().size());
    XDirInfo::cacheDir.deleteEntry(tree.root());
}

TEST(XDirInfo, FlatListingsOfOneFolder) {
    test::SampleTree const tree;
    std::vector<QFileInfo> const bySize =
        XDirInfo::get_files_only(tree.root(), XDirInfo::SIZE, XDirInfo::DESCENDING);
    ASSERT_FALSE(bySize.empty());
    EXPECT_EQ(bySize.front().fileName(), QStringLiteral("a.txt"));
    EXPECT_EQ(bySize.back().size(), 0);
    EXPECT_EQ(paths(bySize), test::findFiles(tree.root(), {"-L"}, true, {"-maxdepth", "1"}));
    std::vector<QFileInfo> const byName =
        XDirInfo::get_files_only(tree.root(), XDirInfo::NAME, XDirInfo::ASCENDING);
    EXPECT_EQ(byName.front().fileName(), QStringLiteral(".hidden.txt"));
    EXPECT_EQ(byName[1].fileName(), QStringLiteral("a.txt"));

    std::vector<QFileInfo> const flat = XDirInfo::get_flat_directory_info(tree.root());
    EXPECT_EQ(flat.front().fileName(), QStringLiteral(".hiddendir"));
    EXPECT_EQ(flat[1].fileName(), QStringLiteral("sub"));
    EXPECT_EQ(flat.size(), bySize.size() + 2);

    // Hidden files count; the loop is walked once.
    qint64 expected = 0;
    for (QString const &f : test::findFiles(tree.root(), {"-L"}, true))
        expected += QFileInfo(f).size();
    EXPECT_EQ(XDirInfo::count_bytes(tree.root(), true), expected);
}

// Four threads walk four trees and share the cache; the race checker watches.
TEST(XDirInfo, FourThreadsScanAtOnce) {
    std::vector<std::unique_ptr<test::SampleTree>> trees;
    for (int i = 0; i < 4; ++i)
        trees.push_back(std::make_unique<test::SampleTree>());
    std::vector<int> counts(4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < 3; ++round) {
                XDirInfo info;
                info.scan_dir(trees[size_t(i)]->root());
                info.scan_dir(trees[size_t((i + 1) % 4)]->root());
                counts[size_t(i)] = int(info.getFiles().size());
            }
        });
    for (std::thread &t : threads)
        t.join();
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(counts[size_t(i)], counts[0]);
        XDirInfo::cacheDir.deleteEntry(trees[size_t(i)]->root());
    }
}

} // namespace
