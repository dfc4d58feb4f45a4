// TestContext_test.cpp: registration before main, lookups and filters, the four forms
// and the phases of a FullTest, the listing, and the end on a duplicate key.
#include "orv/Kernel.h"
#include "orv/TestContext.h"

#include "orv/Log.h"

#include "support/CapturingAppender.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

#include <string>
#include <vector>

namespace orv {
namespace {

int plainSeven() { return 7; }

// Registered during static initialisation, before main.
TestContextAdder const xmlParse(plainSeven, "XmlParse", "parses the sample", true);
ModuleTests const moduleTests{
    {[](Kernel &) { return 0; }, "testXML", "", false},
    {[](int, char **) { return 0; }, "Alpha", "first of all", true},
};

std::vector<std::string> keysOf(std::vector<TestContext const *> const &tests) {
    std::vector<std::string> keys;
    for (TestContext const *test : tests)
        keys.push_back(test->key().toStdString());
    return keys;
}

TEST(TestContextAdder, StaticAddersRegisterBeforeMain) {
    EXPECT_TRUE(TestContextAdder::hasTest("XmlParse"));
    EXPECT_TRUE(TestContextAdder::hasTest("testXML"));
    EXPECT_TRUE(TestContextAdder::hasTest("Alpha"));
    EXPECT_FALSE(TestContextAdder::hasTest("xmlparse")); // keys keep their case
    TestContext &found = TestContextAdder::getTestContext("XmlParse");
    EXPECT_TRUE(static_cast<bool>(found));
    EXPECT_TRUE(found.isBasicTest());
    EXPECT_EQ(found.toString(), "XmlParse, parses the sample");
    EXPECT_EQ(TestContextAdder::getTestContext("testXML").toString(), "testXML");
}

TEST(TestContextAdder, UnknownOrEmptyKeyGivesTheEmptyContext) {
    for (char const *key : {"", "NoSuchTest"}) {
        TestContext &found = TestContextAdder::getTestContext(key);
        EXPECT_EQ(&found, &TestContext::empty) << key;
        EXPECT_FALSE(static_cast<bool>(found));
        EXPECT_EQ(found.toString(), "");
    }
}

TEST(TestContextAdder, FilterMatchesKeysWithoutRegardToCaseInKeyOrder) {
    struct Row {
        char const *filter;
        std::vector<std::string> keys;
    } const rows[] = {
        {"xml", {"XmlParse", "testXML"}},
        {"PARSE", {"XmlParse"}},
        {"", {"Alpha", "XmlParse", "testXML"}},
        {"all", {"Alpha", "XmlParse", "testXML"}},
        {"none-such", {}},
    };
    for (Row const &row : rows)
        EXPECT_EQ(keysOf(TestContextAdder::getTestsByFilter(row.filter)), row.keys) << row.filter;
}

TEST(TestContext, ExecRunsTheFormThatIsSet) {
    Kernel &kernel = Kernel::kernel();
    TestContext plain(TestContext::FnPlain(plainSeven), "p", "", true);
    EXPECT_EQ(plain.exec(kernel), 7);
    Kernel *seen = nullptr;
    TestContext withKernel(TestContext::FnKernel([&](Kernel &k) {
                               seen = &k;
                               return 3;
                           }),
                           "k", "", true);
    EXPECT_EQ(withKernel.exec(kernel), 3);
    EXPECT_EQ(seen, &kernel);
    int argcSeen = -1;
    char **argvSeen = nullptr;
    TestContext withMain(TestContext::FnMain([&](int c, char **v) {
                             argcSeen = c;
                             argvSeen = v;
                             return 5;
                         }),
                         "m", "", true);
    EXPECT_EQ(withMain.exec(kernel), 5);
    EXPECT_EQ(argcSeen, Kernel::argc);
    EXPECT_EQ(argvSeen, Kernel::argv);
}

TEST(TestContext, ExecOfAnEmptyContextGivesMinusOne) {
    TestContext none;
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_EQ(none.exec(Kernel::kernel()), -1);
}

class PhaseRecorder : public FullTest {
public:
    PhaseRecorder(std::vector<int> results, std::string &calls)
        : results(std::move(results)), calls(calls) {}
    int parseArguments(Kernel &) override { return phase('a', 0); }
    int prepareTest(Kernel &) override { return phase('p', 1); }
    int runTest(Kernel &) override { return phase('r', 2); }
    int shutDown(Kernel &) override { return phase('s', 3); }

private:
    int phase(char name, size_t index) {
        calls += name;
        return results[index];
    }
    std::vector<int> results;
    std::string &calls;
};

TEST(TestContext, FullTestPhasesStopAtTheFirstNonZeroResult) {
    struct Row {
        std::vector<int> results;
        int expected;
        char const *calls;
    } const rows[] = {
        {{0, 0, 0, 0}, 0, "aprs"}, {{0, 4, 0, 0}, 4, "ap"},   {{0, 0, 3, 0}, 3, "apr"},
        {{2, 0, 0, 0}, 2, "a"},    {{0, 0, 0, 9}, 9, "aprs"},
    };
    for (Row const &row : rows) {
        std::string calls;
        TestContext full(new PhaseRecorder(row.results, calls), "f", "", true);
        EXPECT_EQ(full.exec(Kernel::kernel()), row.expected) << row.calls;
        EXPECT_EQ(calls, row.calls);
    }
}

struct Line {
    unsigned int space;
    std::string text;
    bool operator==(Line const &o) const { return space == o.space && text == o.text; }
};

void PrintTo(Line const &line, std::ostream *os) { *os << line.space << ":'" << line.text << "'"; }

// The lines that showTests(4, filter) logs, between two markers (the logger's own
// header comes before the first).
std::vector<Line> listing(QString const &filter) {
    test::CapturingAppender &log = test::startCapturingLogger();
    QString const begin = QStringLiteral("listing '") + filter + QLatin1Char('\'');
    QString const end = QStringLiteral("end of ") + begin;
    ppDebug(begin);
    TestContextAdder::showTests(4, filter);
    ppDebug(end);
    EXPECT_TRUE(log.waitForText(end));
    std::vector<test::CapturedLine> const taken = log.takenFrom(begin);
    std::vector<Line> lines;
    for (size_t i = 1; i < taken.size() && taken[i].text != end; ++i)
        lines.push_back({taken[i].space, taken[i].text.toStdString()});
    return lines;
}

TEST(TestContextAdder, ShowTestsWithoutFilterListsBasicTestsWithoutMarker) {
    std::vector<Line> const expected{
        {8, "Alpha .... first of all"},
        {8, "XmlParse . parses the sample"},
        {0, ""},
        {4, "basic tests:2"},
        {4, "extra tests:1"},
        {4, "all   tests:3"},
        {4, "Tests total:3"},
    };
    EXPECT_EQ(listing(""), expected);
}

TEST(TestContextAdder, ShowTestsWithFilterMarksExtraTests) {
    std::vector<Line> const expected{
        {8, " XmlParse . parses the sample"},
        {8, "+testXML"},
        {0, ""},
        {4, "basic tests:1"},
        {4, "extra tests:1"},
        {4, "all   tests:2"},
        {4, "Tests total:2 of 3 - filtered by:'xMl'"},
    };
    EXPECT_EQ(listing("xMl"), expected);
}

TEST(TestContextAdder, ShowTestsWithAllListsEverythingAndNoTotal) {
    std::vector<Line> const expected{
        {8, " Alpha .... first of all"},
        {8, " XmlParse . parses the sample"},
        {8, "+testXML"},
        {0, ""},
        {4, "basic tests:2"},
        {4, "extra tests:1"},
        {4, "all   tests:3"},
    };
    EXPECT_EQ(listing("all"), expected);
}

TEST(TestContextAdderDeathTest, DeleteAllEmptiesTheRegistryAndAddersRebuildIt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // In a child: the registry of this program stays as it is.
    EXPECT_EXIT(
        {
            TestContextAdder::deleteAll();
            bool ok = !TestContextAdder::hasTest("XmlParse") &&
                      TestContextAdder::getTests("").empty() &&
                      !TestContextAdder::getTestContext("XmlParse");
            TestContextAdder again(plainSeven, "Again", "", true);
            ok = ok && TestContextAdder::hasTest("Again") && !TestContextAdder::hasTest("Alpha");
            std::exit(ok ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// Run only as the child of the test below.
TEST(TestContextAdder, DISABLED_AddsADuplicateKey) {
    TestContextAdder duplicate(plainSeven, "XmlParse", "", true);
}

TEST(TestContextAdder, DuplicateKeyEndsTheProgramWithAConsoleLine) {
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=TestContextAdder.DISABLED_AddsADuplicateKey",
                 "--gtest_also_run_disabled_tests"});
    ASSERT_TRUE(child.waitForFinished(30000));
    EXPECT_EQ(child.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(child.exitCode(), 1);
    EXPECT_TRUE(child.readAllStandardOutput().contains(
        "TestContextMap::addTestContext, key 'XmlParse' already added"));
}

} // namespace
} // namespace orv
