// TestContext_test.cpp: registration before main, lookups and filters, the four forms
// and the phases of a FullTest, the listing, and the end on a duplicate key.
#include "orv/Kernel.h"
#include "orv/TestContext.h"

#include "orv/Log.h"

#include "support/Test.h"

#include <QtCore/QStringList>

#include <cstdlib>
#include <string>
#include <unistd.h>
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

TEST(TestContextAdder, StaticAddersRegisterBeforeMainUnderTheirExactKey) {
    for (char const *key : {"XmlParse", "testXML", "Alpha"})
        EXPECT_TRUE(TestContextAdder::hasTest(key)) << key;
    EXPECT_FALSE(TestContextAdder::hasTest("xmlparse"));
    TestContext &found = TestContextAdder::getTestContext("XmlParse");
    EXPECT_TRUE(found.isBasicTest());
    EXPECT_EQ(found.toString(), "XmlParse, parses the sample");
    EXPECT_EQ(TestContextAdder::getTestContext("testXML").toString(), "testXML");
    // An unknown or empty key gives the empty context.
    for (char const *key : {"", "NoSuchTest", "xmlparse"})
        EXPECT_EQ(&TestContextAdder::getTestContext(key), &TestContext::empty) << key;
    EXPECT_FALSE(static_cast<bool>(TestContext::empty));
    EXPECT_EQ(TestContext::empty.toString(), "");
}

TEST(TestContextAdder, FilterMatchesKeysWithoutRegardToCaseInKeyOrder) {
    struct Row {
        char const *filter;
        QStringList keys;
    } const rows[] = {{"xml", {"XmlParse", "testXML"}},
                      {"PARSE", {"XmlParse"}},
                      {"", {"Alpha", "XmlParse", "testXML"}},
                      {"all", {"Alpha", "XmlParse", "testXML"}},
                      {"none-such", {}}};
    for (Row const &row : rows) {
        QStringList keys;
        for (TestContext const *test : TestContextAdder::getTestsByFilter(row.filter))
            keys << test->key();
        EXPECT_EQ(keys, row.keys) << row.filter;
    }
}

TEST(TestContext, ExecRunsTheFormThatIsSetAndAnEmptyContextGivesMinusOne) {
    Kernel &kernel = Kernel::kernel();
    Kernel *seen = nullptr;
    char **argvSeen = nullptr;
    int argcSeen = -1;
    EXPECT_EQ(TestContext(TestContext::FnPlain(plainSeven), "p", "", true).exec(kernel), 7);
    auto const withKernel = [&](Kernel &k) { return seen = &k, 3; };
    EXPECT_EQ(TestContext(TestContext::FnKernel(withKernel), "k", "", true).exec(kernel), 3);
    EXPECT_EQ(seen, &kernel);
    auto const withMain = [&](int c, char **v) { return argcSeen = c, argvSeen = v, 5; };
    EXPECT_EQ(TestContext(TestContext::FnMain(withMain), "m", "", true).exec(kernel), 5);
    EXPECT_EQ(argcSeen, Kernel::argc);
    EXPECT_EQ(argvSeen, Kernel::argv);
    EXPECT_EQ(TestContext().exec(kernel), -1);
}

// Each phase appends its letter to calls and returns its entry of results.
struct PhaseRecorder : FullTest {
    PhaseRecorder(std::vector<int> results, std::string &calls) : results(results), calls(calls) {}
    int phase(char name, size_t index) { return calls += name, results[index]; }
    int parseArguments(Kernel &) override { return phase('a', 0); }
    int prepareTest(Kernel &) override { return phase('p', 1); }
    int runTest(Kernel &) override { return phase('r', 2); }
    int shutDown(Kernel &) override { return phase('s', 3); }
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

// The lines that showTests(4, filter) logs, as "indentation:text".
QStringList listing(QString const &filter) {
    QStringList lines;
    for (test::CapturedLine const &line :
         test::capturedBy([&] { TestContextAdder::showTests(4, filter); }))
        lines << QString::number(line.space) + ':' + line.text;
    return lines;
}

TEST(TestContextAdder, ShowTestsMarksExtraTestsOnlyWhenFilteredAndTotalsAllButAll) {
    struct Row {
        char const *filter;
        QStringList lines;
    } const rows[] = {
        {"",
         {"8:Alpha .... first of all", "8:XmlParse . parses the sample", "0:", "4:basic tests:2",
          "4:extra tests:1", "4:all   tests:3", "4:Tests total:3"}},
        {"xMl",
         {"8: XmlParse . parses the sample", "8:+testXML", "0:", "4:basic tests:1",
          "4:extra tests:1", "4:all   tests:2", "4:Tests total:2 of 3 - filtered by:'xMl'"}},
        {"all",
         {"8: Alpha .... first of all", "8: XmlParse . parses the sample", "8:+testXML",
          "0:", "4:basic tests:2", "4:extra tests:1", "4:all   tests:3"}},
    };
    for (Row const &row : rows)
        EXPECT_EQ(listing(row.filter), row.lines) << row.filter;
}

// In children: the registry of this program stays as it is.
TEST(TestContextAdderDeathTest, DeleteAllEmptiesTheRegistryAndADuplicateKeyEndsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            TestContextAdder::deleteAll();
            bool const emptied = !TestContextAdder::hasTest("XmlParse") &&
                                 TestContextAdder::getTests("").empty() &&
                                 !TestContextAdder::getTestContext("XmlParse");
            TestContextAdder again(plainSeven, "Again", "", true);
            bool const rebuilt = TestContextAdder::hasTest("Again");
            std::exit(emptied && rebuilt && !TestContextAdder::hasTest("Alpha") ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            ::dup2(2, 1); // the line goes to the console
            TestContextAdder duplicate(plainSeven, "XmlParse", "", true);
            std::exit(0);
        },
        testing::ExitedWithCode(1), "TestContextMap::addTestContext, key 'XmlParse' already added");
}

} // namespace
} // namespace orv
