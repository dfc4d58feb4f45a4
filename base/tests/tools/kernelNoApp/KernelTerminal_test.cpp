// KernelTerminal_test.cpp: a program that has no application object until a test builds
// the terminal kernel; every thread is the GUI thread before and after it.
#include "orv/GuiThread.h"
#include "orv/Kernel.h"
#include "orv/XThread.h"

#include "support/Test.h"

#include <QtCore/QCoreApplication>

#include <clocale>
#include <string>
#include <thread>

namespace orv {
namespace {

// Whether a worker counts as the GUI thread, and whether its work ran on it at once.
struct WorkerView {
    bool isGui = false;
    bool ranAtOnceOnWorker = false;
};

WorkerView fromAWorker() {
    WorkerView view;
    std::thread([&] {
        unsigned int const workerId = getCurrentThreadID();
        unsigned int ranOn = 0;
        view.isGui = qt::is_Gui_Thread();
        Kernel::runInGui([&] { ranOn = getCurrentThreadID(); }, 0);
        view.ranAtOnceOnWorker = ranOn == workerId;
    }).join();
    return view;
}

TEST(KernelTerminal, WithoutApplicationEveryThreadIsTheGuiThreadUntilTheKernelBuildsOne) {
    WorkerView const before = fromAWorker();
    EXPECT_TRUE(before.isGui);
    EXPECT_TRUE(before.ranAtOnceOnWorker);
    char prog[] = "prog", command[] = "run", key[] = "--level", value[] = "3";
    char *args[] = {prog, command, key, value, nullptr};
    int argc = 4;
    Kernel::setCompanyName("ACME");
    {
        KernelTerminal kernel(argc, args, nullptr, false);
        EXPECT_EQ(argc, 4);
        EXPECT_EQ(QCoreApplication::instance(), &kernel);
        EXPECT_EQ(&Kernel::kernel(), &kernel);
        EXPECT_EQ(CommandLine::cmdMain, &kernel);
        EXPECT_EQ(kernel.testName(), "run");
        EXPECT_EQ(kernel.getInt("level", 0), 3);
        EXPECT_EQ(kernel.toString(), "KernelTerminal");
        EXPECT_EQ(QCoreApplication::organizationName(), "ACME");
        EXPECT_EQ(Kernel::getMainThreadID(), static_cast<long>(getCurrentThreadID()));
        // The application object applied the user's locale; numbers stay in C notation.
        EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), "C");
        EXPECT_FALSE(fromAWorker().isGui);
        EXPECT_TRUE(qt::is_Gui_Thread());
    }
    CommandLine::cmdMain = nullptr; // it would dangle for later tests
    EXPECT_TRUE(fromAWorker().isGui);
}

ArgsEnv argsOf(std::initializer_list<char const *> words) {
    std::vector<std::string> texts(words.begin(), words.end());
    std::vector<char *> argv;
    for (std::string &text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    ArgsEnv args;
    args.fromMain(static_cast<int>(words.size()), argv.data(), nullptr);
    return args;
}

TEST(KernelDeathTest, RebootReplacesTheProcessWithTheSavedArguments) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            Kernel::setArgsEnv(argsOf({"/bin/sh", "-c", "exit 7"}));
            Kernel::rebootProgram();
        },
        testing::ExitedWithCode(7), "");
}

TEST(Kernel, FailedRebootTellsWhyAndReturns) {
    Kernel::moveArgsEnv(argsOf({"/nonexistent/orv-program", "again"}));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Kernel::rebootProgram();
    std::string const out = testing::internal::GetCapturedStdout();
    std::string const err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out, "ArgsEnv::restartProgram, result of execv:-1\n"
                   "ArgsEnv::restartProgram, errno:2\n"
                   ">>>/nonexistent/orv-program<<<\n"
                   ">>>again<<<\n"
                   "ok\n");
    EXPECT_EQ(err, "mist: No such file or directory\n");
}

} // namespace
} // namespace orv
