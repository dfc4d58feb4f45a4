// LogAttachment_test.cpp: blocks handed to the logger with a message, copied or
// taken over, as the console shows them.
#include "orv/CommandLine.h"
#include "orv/LogAttachment.h"
#include "orv/Logger.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace orv;

TEST(LogAttachment, IsAnEmptyMemoryFileByDefault) {
    LogAttachment attachment;
    EXPECT_EQ(attachment.getSize(), 0);
    EXPECT_FALSE(attachment.hasMimeType());
    LogAttachment bytes(QByteArray("abcd"));
    EXPECT_EQ(bytes.getSize(), 4);
}

TEST(LogAttachment, LogMemShowsTheBlockOnTheConsoleAndCopiesOrTakes) {
    // The logger starts once per process: this one gets a fresh process.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            CommandLine cmd;
            cmd.fromString("x --logTrailler false");
            Logger::ini(cmd, nullptr, DEFAULT_LOG_MASK);
            XMemFile kept(QByteArray("payload"));
            XMemFile taken(QByteArray("payload"));
            XMemFile empty;
            testing::internal::CaptureStdout();
            Logger::logMemInfo(kept, true, "copied");
            Logger::logMemWarning(taken, false, "taken");
            Logger::logMemError(empty, true, "nothing");
            Logger::getLogger().getAppenderLimitMemory(); // waits for the queue
            std::string const out = testing::internal::GetCapturedStdout();
            bool const ok = out.find("{mem:1}copied\n") != std::string::npos &&
                            out.find("{mem:1}taken\n") != std::string::npos &&
                            out.find("{mem:0}nothing\n") != std::string::npos && kept.size() == 7 &&
                            taken.isEmpty();
            std::fprintf(stderr, "%s\n", out.c_str());
            std::exit(ok ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
