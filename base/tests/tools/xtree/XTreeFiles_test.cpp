// XTreeFiles_test.cpp: trees in files (plain and compressed), in memory and in Base64,
// with the failures of each, and trees handed to the main thread.
#include "orv/Kernel.h"
#include "orv/XThread.h"
#include "orv/XTree.h"
#include "support/EventPump.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace orv {
namespace {

XTypeSupporter const &types = XTypeSupporter::basicTypes();

XTree sample() {
    XTree tree;
    tree.setString(QStringLiteral("name"), QString::fromUtf8("Würfel"));
    tree.addTree(QStringLiteral("size")).set(QStringLiteral("edge"), 2.5);
    tree.setArray(QStringLiteral("ids"), XTreeArray::fromVector(std::vector<quint64>{1, 2, 3}));
    return tree;
}

bool sameAsSample(XTree &tree) {
    XTree *size = tree.getTree(QStringLiteral("size"));
    return tree.countChildren() == 3 && size && size->get(QStringLiteral("edge"), 0.0) == 2.5 &&
           tree.get(QStringLiteral("name"), QString()) == QString::fromUtf8("Würfel") &&
           tree.get_tree_array(QStringLiteral("ids")).data<quint64>()[2] == 3;
}

TEST(XTreeFiles, EveryFormReadsBack) {
    QTemporaryDir dir;
    XTree tree = sample();
    QString const packed = dir.filePath(QStringLiteral("packed"));
    ASSERT_TRUE(tree.save_as_compressed_file(packed, types));
    XTree fromPacked;
    EXPECT_TRUE(fromPacked.load_from_compressed_file(QFileInfo(packed), types));
    EXPECT_TRUE(sameAsSample(fromPacked));
    EXPECT_EQ(XByteArray::unCompress(XByteArray(test::readFile(packed))),
              tree.createByteArray(types));

    XTree fromText = XTree::create_tree_from_base64(tree.create_string_base64(types), types);
    EXPECT_TRUE(sameAsSample(fromText));
    XTree copy;
    tree.copy(&copy, types);
    EXPECT_TRUE(sameAsSample(copy));
    EXPECT_EQ(copy.calc_MD5Sum(types), tree.calc_MD5Sum(types));

    // Saving rebinds; save() goes to the bound file.
    QString const plain = dir.filePath(QStringLiteral("plain"));
    ASSERT_TRUE(tree.saveAsFile(plain, types));
    tree.set(QStringLiteral("extra"), 1);
    ASSERT_TRUE(tree.save(types));
    XTree loaded = XTree::load(plain, types);
    EXPECT_TRUE(loaded.containsKey(QStringLiteral("extra")));
    EXPECT_TRUE(loaded.isBoundToFile(true));
}

TEST(XTreeFiles, FailuresGiveTheirLinesAndResults) {
    QTemporaryDir dir;
    QString const missing = dir.filePath(QStringLiteral("missing"));
    QString const empty = test::writeFile(dir, QStringLiteral("empty"), QByteArray());
    XTree tree = sample();
    QByteArray packed = tree.write_to_compressed_bytes(types);
    packed[20] = char(packed[20] ^ 1);
    QString const damaged = test::writeFile(dir, QStringLiteral("damaged"), packed);
    XTree unbound;
    struct Row {
        char const *name;
        std::function<bool()> run;
        bool result;
        QString line;
    } const rows[] = {
        {"missing file", [&] { return tree.loadFromFile(missing, types); }, false,
         QStringLiteral("XTree::loadFromFile, file '%1' does not exist !").arg(missing)},
        {"empty file", [&] { return tree.loadFromFile(empty, types); }, false,
         QStringLiteral("XTree::loadFromFile, file mapper to file '%1', mapReadWrite() failed !")
             .arg(empty)},
        {"unbound save", [&] { return unbound.save(types); }, false,
         QStringLiteral("XTree::save, object is not bound to a valid filename")},
        {"no such folder", [&] { return tree.saveAsFile(missing + "/x", types); }, false,
         QStringLiteral("XTree::saveAsFile, file mapper to file '%1/x', mapReadWrite() failed !")
             .arg(missing)},
        {"missing compressed", [&] { return tree.load_from_compressed_file(missing, types); },
         false, QStringLiteral("XTree::load_from_compressed_file, problems")},
        // A bad digest reads as an empty tree, and that counts as done.
        {"damaged compressed", [&] { return tree.load_from_compressed_file(damaged, types); }, true,
         QStringLiteral("XByteArray::unCompress, CHECKSUM-ERROR, return empty array!")},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        bool result = !row.result;
        std::vector<QString> const lines = test::linesLoggedBy([&] { result = row.run(); }, ERROR);
        EXPECT_EQ(result, row.result);
        EXPECT_NE(std::find(lines.begin(), lines.end(), row.line), lines.end())
            << (lines.empty() ? std::string() : lines.front().toStdString());
    }
    EXPECT_TRUE(tree.isEmpty());
    EXPECT_TRUE(XTree().createMem(types).isEmpty());
}

TEST(XTreeFiles, TreesReachTheMainThreadAsRoots) {
    unsigned int const mainId = getCurrentThreadID();
    XTree parent = sample();
    XTree *child = parent.getTree(QStringLiteral("size"));
    XTree here;
    Kernel::move_tree_to_main_thread(std::move(*child),
                                     [&](XTree &&got) { here = std::move(got); });
    EXPECT_EQ(here.get(QStringLiteral("edge"), 0.0), 2.5);
    EXPECT_TRUE(here.isRoot());

    XTree arrived;
    unsigned int ranOn = 0;
    std::thread([&] {
        Kernel::move_tree_to_main_thread(sample(), [&](XTree &&got) {
            ranOn = getCurrentThreadID();
            arrived = std::move(got);
        });
    }).join();
    ASSERT_TRUE(test::pumpEventsUntil([&] { return ranOn != 0; }, 30000));
    EXPECT_EQ(ranOn, mainId);
    EXPECT_TRUE(sameAsSample(arrived));
    EXPECT_EQ(arrived.getTree(QStringLiteral("size"))->parent(), &arrived);
    std::vector<QString> const lines =
        test::linesLoggedBy([] { Kernel::move_tree_to_main_thread(XTree(), nullptr); });
    EXPECT_EQ(lines,
              std::vector<QString>{QStringLiteral("OrvKernelEvent::runMethod, fuData == nullptr")});
}

} // namespace
} // namespace orv
