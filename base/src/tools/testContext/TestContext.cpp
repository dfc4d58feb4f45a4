// TestContext.cpp: one test and its four forms, the phases of a FullTest, and the
// registry map that owns the tests.
#include "orv/TestContext.h"

#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/OrvTime.h"
#include "orv/XStringStream.h"

#include <cstdlib>

namespace orv {

FullTest::~FullTest() = default;
int FullTest::parseArguments(Kernel &) { return 0; }
int FullTest::prepareTest(Kernel &) { return 0; }
int FullTest::shutDown(Kernel &) { return 0; }

TestContext TestContext::empty;

TestContext::TestContext(FnKernel f, QString const &key, QString const &description, bool basicTest)
    : fnKernel(std::move(f)), strKey(key), strDescription(description), basicTest(basicTest) {}

TestContext::TestContext(FnMain f, QString const &key, QString const &description, bool basicTest)
    : fnMain(std::move(f)), strKey(key), strDescription(description), basicTest(basicTest) {}

TestContext::TestContext(FnPlain f, QString const &key, QString const &description, bool basicTest)
    : fnPlain(std::move(f)), strKey(key), strDescription(description), basicTest(basicTest) {}

TestContext::TestContext(FullTest *f, QString const &key, QString const &description,
                         bool basicTest)
    : fullTest(f), strKey(key), strDescription(description), basicTest(basicTest) {}

TestContext::~TestContext() { delete fullTest; }

int TestContext::exec(Kernel &kernel) {
    if (fnKernel)
        return fnKernel(kernel);
    if (fnMain)
        return fnMain(Kernel::argc, Kernel::argv);
    if (fnPlain)
        return fnPlain();
    if (fullTest) {
        int result = fullTest->parseArguments(kernel);
        if (result == 0)
            result = fullTest->prepareTest(kernel);
        if (result == 0)
            result = fullTest->runTest(kernel);
        if (result == 0)
            result = fullTest->shutDown(kernel);
        return result;
    }
    ppDebug("TestContext::exec - no function pointer set !");
    return -1;
}

QString TestContext::toString() const {
    if (strDescription.isEmpty())
        return strKey;
    return strKey + QStringLiteral(", ") + strDescription;
}

TestContextMap::~TestContextMap() { clear(); }

void TestContextMap::addTestContext(QString const &key, TestContext *testContext) {
    if (mapContexts.count(key) != 0) {
        // Registration runs before main, with no logger yet: straight to the console,
        // and long enough on screen to be read before the program is gone.
        Logger::printToCout(xprintF("TestContextMap::addTestContext, key '$' already added", key));
        xSleep(5000);
        std::exit(1);
    }
    mapContexts[key] = testContext;
}

bool TestContextMap::hasTest(QString const &key) const { return mapContexts.count(key) != 0; }

void TestContextMap::clear() {
    for (auto &entry : mapContexts)
        delete entry.second;
    mapContexts.clear();
}

} // namespace orv
