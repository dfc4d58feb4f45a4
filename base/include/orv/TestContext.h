// TestContext.h: tests registered by static objects, found by name, listed by filter.
//
//   static orv::TestContextAdder adder([] { return checkParser(); }, "XmlParse", "parser", true);
//   orv::TestContextAdder::getTestContext("XmlParse").exec(kernel);   // 0 is success
//   orv::TestContextAdder::showTests(4, "xml");                       // lists XmlParse, testXML
//
// Registration runs before main; afterwards the registry is only read.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <functional>
#include <initializer_list>
#include <map>
#include <vector>

namespace orv {

class Kernel;

// A test in phases; the first non-zero phase result ends the run.
class ORV_EXPORT FullTest {
public:
    virtual ~FullTest();
    virtual int runTest(Kernel &kernel) = 0;
    virtual int parseArguments(Kernel &kernel);
    virtual int prepareTest(Kernel &kernel);
    virtual int shutDown(Kernel &kernel);
};

// One registered test: a name, a text and exactly one of four callable forms.
// Owns its FullTest.
class ORV_EXPORT TestContext {
public:
    using FnKernel = std::function<int(Kernel &)>;
    using FnMain = std::function<int(int, char **)>;
    using FnPlain = std::function<int()>;

    // Lookups give this in place of a null reference.
    static TestContext empty;

    TestContext() = default;
    TestContext(FnKernel f, QString const &key, QString const &description, bool basicTest);
    TestContext(FnMain f, QString const &key, QString const &description, bool basicTest);
    TestContext(FnPlain f, QString const &key, QString const &description, bool basicTest);
    TestContext(FullTest *f, QString const &key, QString const &description, bool basicTest);
    TestContext(TestContext const &) = delete;
    TestContext &operator=(TestContext const &) = delete;
    virtual ~TestContext();

    // Runs the form that is set (in the order kernel, main, plain, full test) and
    // gives its result; -1 with none set.
    virtual int exec(Kernel &kernel);

    explicit operator bool() const { return fnKernel || fnMain || fnPlain || fullTest; }
    QString key() const { return strKey; }
    QString description() const { return strDescription; }
    bool isBasicTest() const { return basicTest; }
    // The key, then ", description" if there is one.
    QString toString() const;

private:
    FnKernel fnKernel;
    FnMain fnMain;
    FnPlain fnPlain;
    FullTest *fullTest = nullptr;
    QString strKey;
    QString strDescription;
    bool basicTest = false;
};

// The registry: contexts by key, in key order; owns them.
class ORV_EXPORT TestContextMap {
public:
    TestContextMap() = default;
    TestContextMap(TestContextMap const &) = delete;
    TestContextMap &operator=(TestContextMap const &) = delete;
    virtual ~TestContextMap();

    // A key already present is a programming error: a console line, 5 s, exit(1).
    void addTestContext(QString const &key, TestContext *testContext);
    bool hasTest(QString const &key) const;
    void clear();

    std::map<QString, TestContext *> const &contexts() const { return mapContexts; }

private:
    std::map<QString, TestContext *> mapContexts;
};

// Registration object: each constructor adds one test to the registry. Meant for
// static objects; not thread-safe after main has started.
class ORV_EXPORT TestContextAdder {
public:
    TestContextAdder() = default;
    TestContextAdder(TestContext::FnKernel f, QString const &key, QString const &description,
                     bool basicTest);
    TestContextAdder(TestContext::FnMain f, QString const &key, QString const &description,
                     bool basicTest);
    TestContextAdder(TestContext::FnPlain f, QString const &key, QString const &description,
                     bool basicTest);
    // Takes ownership of f.
    TestContextAdder(FullTest *f, QString const &key, QString const &description, bool basicTest);

    // Takes ownership of testContext; a null one is fatal.
    void addTestContext(QString const &key, TestContext *testContext);
    // Creates the registry on first use.
    void checkMap();

    static bool hasTest(QString const &key);
    // TestContext::empty for an empty or unknown key, or before any registration.
    static TestContext &getTestContext(QString const &key);
    // Key order; keys containing filter regardless of case. "all" and "" take all.
    static std::vector<TestContext *> getTests(QString const &filter);
    static std::vector<TestContext const *> getTestsByFilter(QString const &filter);
    // The list at DEBUG, after 200 ms for earlier output to drain. An empty filter
    // lists the basic tests alone, without marker; any other filter ("all" too)
    // lists matches with " " for basic and "+" for extra tests.
    static void showTests(unsigned int indent, QString const &filter);
    // Empties the registry; afterwards nothing is registered.
    static void deleteAll();

private:
    static TestContextMap *tcm;
};

// Lets a module register all its tests in one static object:
//   static orv::ModuleTests tests{{fnA, "A", "", true}, {fnB, "B", "", false}};
struct ORV_EXPORT ModuleTests {
    ModuleTests(std::initializer_list<TestContextAdder> adders);
};

} // namespace orv
