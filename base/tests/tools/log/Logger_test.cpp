// Logger_test.cpp: console output, the main-thread id, messages and the pp... family before
// any logger thread runs.
#include "orv/Log.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtCore/QTextCodec>

#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace orv;

namespace {

// The local 8-bit encoding comes from the environment; pin it for one test.
class Utf8Locale {
public:
    Utf8Locale() : saved(QTextCodec::codecForLocale()) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
    ~Utf8Locale() { QTextCodec::setCodecForLocale(saved); }

private:
    QTextCodec *saved;
};

template <typename Print> std::string captured(Print print) {
    testing::internal::CaptureStdout();
    print();
    return testing::internal::GetCapturedStdout();
}

} // namespace

TEST(Logger, PrintToCoutWritesOneLinePerCall) {
    Utf8Locale utf8;
    char const *nullText = nullptr;
    EXPECT_EQ(captured([] { Logger::printToCout("hello"); }), "hello\n");
    EXPECT_EQ(captured([&] { Logger::printToCout(nullText); }), "ppCout(nullptr)\n");
    EXPECT_EQ(captured([] { Logger::printToCout(QString()); }), "\n");
    EXPECT_EQ(captured([] { Logger::printToCout(QString::fromUtf8("gr\xC3\xBC\xC3\x9F $")); }),
              "gr\xC3\xBC\xC3\x9F $\n");
}

TEST(Logger, PrintToCoutKeepsLinesOfConcurrentThreadsWhole) {
    std::string const out = captured([] {
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([t] {
                QString const line = QString(200, QChar('a' + t));
                for (int i = 0; i < 50; ++i)
                    Logger::printToCout(line);
            });
        for (std::thread &thread : threads)
            thread.join();
    });
    QStringList const lines = QString::fromStdString(out).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 200);
    for (QString const &line : lines)
        EXPECT_EQ(line, QString(200, line.at(0)));
}

TEST(Logger, MainThreadIsTheTestsMainThreadOnly) {
    EXPECT_TRUE(isMainThread());
    EXPECT_TRUE(Logger::isMainThread(Logger::getThreadIDMain()));
    bool onWorker = true;
    unsigned int workerMessageThread = 0;
    bool workerMessageMain = true;
    std::thread worker([&] {
        onWorker = isMainThread();
        LogMessageString msg("x");
        workerMessageThread = msg.getThreadID();
        workerMessageMain = msg.isMainThread();
    });
    worker.join();
    EXPECT_FALSE(onWorker);
    EXPECT_FALSE(workerMessageMain);
    EXPECT_NE(workerMessageThread, Logger::getThreadIDMain());
    EXPECT_TRUE(LogMessageString("y").isMainThread());
}

TEST(Logger, MessageSizeCountsTwoBytesPerCharacter) {
    EXPECT_EQ(LogMessageString(QString("abc")).getSize(), 48u);
    EXPECT_EQ(LogMessageString("a$c", 'b').getSize(), 48u);
    EXPECT_EQ(LogMessageString().getSize(), 42u);
    EXPECT_EQ(LogMessageString("$", nullptr).toString(), "nullptr");
}

TEST(Logger, MessageLevelWordCarriesTheLibraryId) {
    LogMessageString msg("m");
    EXPECT_EQ(msg.getLogLevel(), unsigned(DEBUG));
    msg.setLogLevel(ERROR | TEST);
    EXPECT_EQ(msg.getLogLevel(), 0x640044u);
    EXPECT_EQ(msg.getLibIdentifier(), 100u);
    EXPECT_TRUE(msg.isError());
    EXPECT_TRUE(msg.isTest());
    EXPECT_FALSE(msg.isFatal());
    EXPECT_FALSE(msg.isDebug());

    msg.setSpace(4);
    msg.setNumber(17);
    std::unique_ptr<LogMessage> copy(msg.createCopy());
    EXPECT_EQ(copy->toString(), "m");
    EXPECT_EQ(copy->getLogLevel(), 0x640044u);
    EXPECT_EQ(copy->getSpace(), 4u);
    EXPECT_EQ(copy->getNumber(), 17u);

    LogMessageString other("o");
    other.assign(&msg);
    EXPECT_EQ(other.getLogLevel(), 0x640044u);
    EXPECT_EQ(other.getNumber(), 17u);
    EXPECT_EQ(other.toString(), "o");
}

TEST(Logger, MessageFamilyIsFormattedAndDiscardedBeforeTheLoggerRuns) {
    ASSERT_FALSE(Logger::isRunning());
    std::string const out = captured([] {
        ppDebug(0, "x");
        ppDebug("a $ b");
        ppDebug(4u, "v=$", 1);
        ppFatal("f $", 1.5);
        ppError(2, "e $ $", "s", QString("q"));
        ppWarning("w");
        ppInfo(QString("plain $"));
        ppTest(3, QString("indented"));
        ppCommand("c");
        ppRequest(1, "r");
        ppResponse("r $", nullptr);
        ppEvent(0L, "e");
        ppState("s $", true);
        ppDestruct(8ULL, "d");
        char const *nullFormat = nullptr;
        ppInfo(nullFormat, 1);
        ppLog(WARN, 2, "x $", 1);
        ppLog(INFO, 0, QString("y"));
    });
    EXPECT_EQ(out, "");
}
