// OrvTestFramework.h: the inner part of a program's main: starts the logger, runs the
// registered test the command names, or lists the tests.
//
//   orv::KernelTerminal kernel(argc, argv, envp, false);
//   return orv::OrvTestFramework::mainTest(kernel);   // "prog md5 --file a.txt"
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace orv {

class Appender;
class Kernel;
class KernelTerminal;

class ORV_EXPORT OrvTestFramework {
public:
    // Set while a test runs; read by the logger and the kernel on other threads.
    static XAtomic<bool> atomicFlagTesting;

    explicit OrvTestFramework(Kernel &kernel);
    virtual ~OrvTestFramework();

    // Not owned (nor by the logger). A second console appender is dropped.
    void addLogAppender(Appender *appender);
    bool iniSimple(unsigned int level);
    // Starts the logger on the kernel's options with the appenders given.
    virtual bool iniTestFramework(unsigned int logFlags);
    // Runs the test the kernel's command names.
    virtual int execTest();

    static bool hasTest(QString const &name);
    // Log-flag mask for "debug", "test", "info", "warn(ing)", "err(or)" as written
    // (case counts); 8190 for anything else.
    static unsigned int stringToLogLevel(QString const &text);
    static void setTesting(bool on);
    static bool isTesting();

    // Runs the kernel's command as a test: its result, or 1 after listing the tests.
    static int mainTest(KernelTerminal &kernel);
    // Builds the kernel, runs mainTest on it, restarts the program if asked to.
    static int mainTest(int argc, char **const argv, char **envv, bool insertPlaceHolder);

private:
    Kernel *kernel;
    QList<Appender *> appenders;
};

} // namespace orv
