// FatalExit.h: a call that must end the program through a fatal handler, checked without
// the handler's five-second wait. The child's stdout goes through a pipe to stderr, where
// the death test reads it, and the child ends with the handler's status 1 as soon as the
// handler announces its wait. The wait and the exit themselves are checked once per
// handler with a plain EXPECT_EXIT (XError_test.cpp, Logger_test.cpp).
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <unistd.h>

namespace orv::test {

template <typename Action> void expectFatal(Action action, std::string const &stdoutPattern) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            int ends[2];
            if (::pipe(ends) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0)
                std::_Exit(2);
            std::thread([in = ends[0]] {
                std::string const announced = "program will exit in 5 sec\n";
                std::string seen;
                for (char c; ::read(in, &c, 1) == 1;) {
                    seen += c;
                    (void)!::write(STDERR_FILENO, &c, 1);
                    if (seen.size() >= announced.size() &&
                        seen.compare(seen.size() - announced.size(), announced.size(), announced) ==
                            0)
                        std::_Exit(1);
                }
            }).detach();
            action();
        },
        testing::ExitedWithCode(1), stdoutPattern);
}

} // namespace orv::test
