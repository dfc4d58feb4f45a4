// XNodeDir_test.cpp: directory trees as nodes beside `find` (links followed or not, a
// loop, depth limits, name filters), saved as XML and read back into the same tree,
// names the XML can't hold plainly, and the queries on a tree.
#include "orv/XNodeDir.h"

#include "support/QtPrinters.h"
#include "support/SampleTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

using namespace orv;

namespace {

QStringList filePaths(XNodeDir const &tree) {
    QStringList paths;
    for (XNodeFile const *file : tree.allFiles())
        paths << file->path();
    paths.sort();
    return paths;
}

std::unique_ptr<XNodeDir> scan(XDirScanParameter const &p) {
    return std::unique_ptr<XNodeDir>(XNodeDir::scan(p));
}

TEST(XNodeDir, ScanKeepsWhatFindFinds) {
    test::SampleTree const tree;
    // Links followed, hidden files, depth, and find's options and tests (cut at blanks).
    std::tuple<bool, bool, int, char const *, char const *> const rows[] = {
        {false, false, -1, "", ""},
        {true, false, -1, "-L", ""}, // the loop ends the walk where find ends it
        {true, true, -1, "-L", ""},
        {false, true, 1, "", "-maxdepth 2"},
        {false, false, 0, "", "-maxdepth 1"},
    };
    for (auto const &[follow, hidden, depth, findOptions, findTests] : rows) {
        SCOPED_TRACE(std::string(findOptions) + findTests);
        XDirScanParameter p(tree.root());
        p.followSymLinks = follow;
        p.hiddenFiles = hidden;
        p.maxDepth = depth;
        std::unique_ptr<XNodeDir> const root = scan(p);
        ASSERT_TRUE(root);
        EXPECT_EQ(filePaths(*root), test::findFiles(tree.root(), test::words(findOptions), hidden,
                                                    test::words(findTests)));
    }
    EXPECT_EQ(XNodeDir::scan(XDirScanParameter(tree.path(QStringLiteral("a.txt")))), nullptr);
}

TEST(XNodeDir, NameFiltersAndEmptyFolders) {
    test::SampleTree const tree;
    XDirScanParameter p(tree.root());
    p.filter.addNames(QStringLiteral("*.txt; *.log"), false, SearchFileName::FILES);
    p.filter.addNames(QStringLiteral("deep*"), true, SearchFileName::FOLDERS);
    p.filter.fileFilter.sizeArea = XFileFilter::AFTER; // not empty
    std::unique_ptr<XNodeDir> const root = scan(p);
    ASSERT_TRUE(root);
    EXPECT_EQ(
        filePaths(*root),
        test::findFiles(
            tree.root(), {}, false,
            test::words("-name deeper -prune -o ( -iname *.txt -o -iname *.log ) -size +0c")));
    EXPECT_TRUE(root->nodeAtPath(QStringLiteral("sub/empty")));
    EXPECT_FALSE(root->nodeAtPath(QStringLiteral("sub/deeper")));
    p.keepEmptyFolders = false;
    std::unique_ptr<XNodeDir> const pruned = scan(p);
    EXPECT_FALSE(pruned->nodeAtPath(QStringLiteral("sub/empty")));
    EXPECT_TRUE(pruned->nodeAtPath(QStringLiteral("sub/c.txt")));
}

TEST(XNodeDir, SavedAndLoadedTreeIsTheSameTree) {
    test::SampleTree tree;
    // Names the XML can't hold as they are: quotes, markup, a variable, a blank at the end.
    for (char const *name : {"it's \"quoted\".txt", "<a&b>.txt", "$(HOME).txt", "trail .txt "})
        tree.write(QString::fromUtf8(name), "x");
    XDirScanParameter p(tree.root());
    p.hiddenFiles = true;
    std::unique_ptr<XNodeDir> const root = scan(p);
    ASSERT_TRUE(root);
    QTemporaryDir out;
    QString const xml = out.filePath(QStringLiteral("tree.xml"));
    ASSERT_TRUE(root->saveNodeToXml(xml, QString()));

    XDirFileCreator const creator;
    std::unique_ptr<XNode> loaded(XNode::parseFile(xml, &creator, nullptr));
    auto *back = dynamic_cast<XNodeDir *>(loaded.get());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->getMD5(true), root->getMD5(true));
    EXPECT_EQ(filePaths(*back), test::findFiles(tree.root(), {}, true));
    AbstractFile const *quoted = back->nodeAtPath(QStringLiteral("it's \"quoted\".txt"));
    ASSERT_TRUE(quoted);
    EXPECT_FALSE(quoted->hasName()); // kept as Base64
    auto const *file = dynamic_cast<XNodeFile const *>(back->nodeAtPath("sub/deeper/d.log"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->fileSize(), 16u);
    EXPECT_EQ(file->lastModified(), test::SampleTree::oldTime().toMSecsSinceEpoch());
    EXPECT_FALSE(file->isDir());
    EXPECT_EQ(file->suffix(), QStringLiteral("log"));
}

TEST(XNodeDir, QueriesOnATree) {
    test::SampleTree const tree;
    std::unique_ptr<XNodeDir> const root = scan(XDirScanParameter(tree.root()));
    ASSERT_TRUE(root);
    quint64 bytes = 0;
    for (XNodeFile const *file : root->allFiles())
        bytes += file->fileSize();
    EXPECT_EQ(root->fileSize(), bytes);
    auto *sub = dynamic_cast<XNodeDir *>(root->nodeAtPath(QStringLiteral("sub")));
    ASSERT_TRUE(sub);
    EXPECT_EQ(sub->dirs().size(), 2u);
    EXPECT_EQ(sub->files().size(), 1u);
    EXPECT_EQ(sub->path(), tree.path(QStringLiteral("sub")));

    SearchFilter old;
    old.fileFilter.timeArea = XFileFilter::BEFORE;
    old.fileFilter.time1 = test::SampleTree::oldTime().toMSecsSinceEpoch();
    QStringList found;
    for (XNodeFile const *file : root->filesMatching(old))
        found << file->relativePath();
    EXPECT_EQ(found, QStringList({"sub/deeper/d.log", "a.txt"})); // folders first

    sub->removeAt(0, true); // a folder gone: the sizes above follow after updateSizes
    EXPECT_LT(root->updateSizes(), bytes);
    EXPECT_EQ(root->nodeAtPath(QStringLiteral("nothing/here")), nullptr);
}

} // namespace
