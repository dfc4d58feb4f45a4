// TestContextAdder.cpp: registration of tests before main, the lookups of the registry
// that follow, and the listing of the tests.
#include "orv/TestContext.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "tools/log/LoggerState.h"

#include <algorithm>

namespace orv {

TestContextMap *TestContextAdder::tcm = nullptr;

namespace {

// "all" and the empty filter take every test.
bool passes(QString const &key, QString const &filter) {
    return filter.isEmpty() || filter == QLatin1String("all") ||
           key.indexOf(filter, 0, Qt::CaseInsensitive) >= 0;
}

// Key, then dots up to width, so that the descriptions start in one column.
QString listLine(TestContext const &test, QString const &marker, int width) {
    QString line = marker + test.key();
    if (!test.description().isEmpty())
        line += QLatin1Char(' ') + QString(width - test.key().size() - 1, QLatin1Char('.')) +
                QLatin1Char(' ') + test.description();
    return line;
}

} // namespace

TestContextAdder::TestContextAdder(TestContext::FnKernel f, QString const &key,
                                   QString const &description, bool basicTest) {
    addTestContext(key, new TestContext(std::move(f), key, description, basicTest));
}

TestContextAdder::TestContextAdder(TestContext::FnMain f, QString const &key,
                                   QString const &description, bool basicTest) {
    addTestContext(key, new TestContext(std::move(f), key, description, basicTest));
}

TestContextAdder::TestContextAdder(TestContext::FnPlain f, QString const &key,
                                   QString const &description, bool basicTest) {
    addTestContext(key, new TestContext(std::move(f), key, description, basicTest));
}

TestContextAdder::TestContextAdder(FullTest *f, QString const &key, QString const &description,
                                   bool basicTest) {
    addTestContext(key, new TestContext(f, key, description, basicTest));
}

void TestContextAdder::addTestContext(QString const &key, TestContext *testContext) {
    ORV_ASSERT_PTR(testContext);
    checkMap();
    tcm->addTestContext(key, testContext);
}

void TestContextAdder::checkMap() {
    // Adders run during static initialisation, in an order nobody controls: the map
    // must exist on first use, not as a global that may not be built yet.
    static TestContextMap map;
    if (!tcm)
        tcm = &map;
}

bool TestContextAdder::hasTest(QString const &key) { return tcm && tcm->hasTest(key); }

TestContext &TestContextAdder::getTestContext(QString const &key) {
    if (key.isEmpty())
        return TestContext::empty;
    if (!tcm) {
        ppDebug("TestContextAdder::getTestContext, tcm == nullptr");
        return TestContext::empty;
    }
    auto found = tcm->contexts().find(key);
    return found == tcm->contexts().end() ? TestContext::empty : *found->second;
}

std::vector<TestContext *> TestContextAdder::getTests(QString const &filter) {
    std::vector<TestContext *> tests;
    if (!tcm)
        return tests;
    for (auto const &entry : tcm->contexts())
        if (passes(entry.first, filter))
            tests.push_back(entry.second);
    return tests;
}

std::vector<TestContext const *> TestContextAdder::getTestsByFilter(QString const &filter) {
    std::vector<TestContext *> tests = getTests(filter);
    return std::vector<TestContext const *>(tests.begin(), tests.end());
}

void TestContextAdder::showTests(unsigned int indent, QString const &filter) {
    // Earlier output still in the logger's queue would cut into the list; it has
    // 200 ms to get out, and usually needs far less.
    logger::waitUntilIdle(200);
    if (!tcm)
        return;
    bool const withMarker = !filter.isEmpty();
    int basic = 0, extra = 0, longest = 0;
    std::vector<TestContext const *> passing;
    for (auto const &entry : tcm->contexts()) {
        if (!passes(entry.first, filter))
            continue;
        passing.push_back(entry.second);
        (entry.second->isBasicTest() ? basic : extra)++;
        longest = std::max(longest, static_cast<int>(entry.first.size()));
    }
    int listed = 0;
    for (TestContext const *test : passing) {
        if (!withMarker && !test->isBasicTest())
            continue;
        QString const marker = !withMarker           ? QString()
                               : test->isBasicTest() ? QStringLiteral(" ")
                                                     : QStringLiteral("+");
        ppDebug(indent + 4, listLine(*test, marker, longest + 2));
        ++listed;
    }
    ppDebug(QString());
    ppDebug(indent, "basic tests:$", basic);
    ppDebug(indent, "extra tests:$", extra);
    ppDebug(indent, "all   tests:$", basic + extra);
    if (filter == QLatin1String("all"))
        return;
    int const total = static_cast<int>(tcm->contexts().size());
    if (filter.isEmpty())
        ppDebug(indent, "Tests total:$", total);
    else
        ppDebug(indent, "Tests total:$ of $ - filtered by:'$'", listed, total, filter);
}

void TestContextAdder::deleteAll() {
    if (tcm)
        tcm->clear();
    tcm = nullptr;
}

ModuleTests::ModuleTests(std::initializer_list<TestContextAdder>) {}

} // namespace orv
