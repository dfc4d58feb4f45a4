// Logger_test.cpp: console output, the main-thread id, the logger thread with its
// numbering, masks and start-up options, the header, rotation, quit, and the fatal end
// of a null message.
//
// The logger starts once per process: tests in this process share the capturing logger
// of startCapturingLogger(); tests that start it their own way, or quit it, run in a
// fresh process of their own.
#include "orv/Appender.h"
#include "orv/CommandLine.h"
#include "orv/Log.h"
#include "orv/LogAttachment.h"
#include "orv/OrvVersion.h"
#include "orv/XCalendarUTC.h"

#include "support/Test.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTextCodec>
#include <QtCore/QThread>

#include <cstdio>
#include <functional>
#include <thread>

using namespace orv;
using test::coutWithoutTrailers;

namespace {

// Runs body in a fresh process, which ends with status 1 when a check failed; the
// child's failure messages reach the death test's output.
void inFreshProcess(std::function<void()> body) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            ::dup2(2, 1);
            body();
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

CommandLine commandLine(QString const &line) {
    CommandLine cmd;
    cmd.fromString(line);
    return cmd;
}

// Starts the logger with a file in dir and no console; options come last.
bool iniToFile(QTemporaryDir const &dir, QString const &options) {
    return Logger::ini(commandLine("x --logConsole false --logDir " + dir.path() + " " + options),
                       nullptr, DEFAULT_LOG_MASK);
}

QStringList fileLines(QString const &path) {
    return QString::fromLatin1(test::readFile(path)).split('\n', Qt::SkipEmptyParts);
}

// "[000012] [INFO#] [..] [tid] text" -> 12 and text; -1 for another form.
long long numberOf(QString const &line, QString *text = nullptr) {
    static QRegularExpression const form(
        R"(^\[(\d{6,})\] \[.{5}\] \[\d\d:\d\d:\d\d,\d{6}\] \[\d+\] (.*)$)");
    QRegularExpressionMatch const match = form.match(line);
    if (!match.hasMatch())
        return -1;
    if (text)
        *text = match.captured(2);
    return match.captured(1).toLongLong();
}

} // namespace

TEST(Logger, PrintToCoutWritesOneWholeLinePerCallFromAnyThread) {
    // The local 8-bit encoding comes from the environment: pin it.
    QTextCodec *const locale = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    char const *nullText = nullptr;
    EXPECT_EQ(coutWithoutTrailers([&] {
                  Logger::printToCout("hello");
                  Logger::printToCout(nullText);
                  Logger::printToCout(QString());
                  Logger::printToCout(QString::fromUtf8("gr\xC3\xBC $"));
              }),
              "hello\nppCout(nullptr)\n\ngr\xC3\xBC $\n");
    QTextCodec::setCodecForLocale(locale);
    std::string const out = coutWithoutTrailers([] {
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([t] {
                for (int i = 0; i < 50; ++i)
                    Logger::printToCout(QString(200, QChar('a' + t)));
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
    EXPECT_TRUE(LogMessageString("y").isMainThread());
    bool onWorker = true;
    std::unique_ptr<LogMessageString> msg;
    std::thread([&] {
        onWorker = isMainThread();
        msg = std::make_unique<LogMessageString>("x");
    }).join();
    EXPECT_FALSE(onWorker);
    EXPECT_FALSE(msg->isMainThread());
    EXPECT_NE(msg->getThreadID(), Logger::getThreadIDMain());
}

TEST(Logger, NothingIsWrittenBeforeIniNorStartedByABadRotateValue) {
    inFreshProcess([] {
        EXPECT_FALSE(Logger::isRunning());
        // One call of each form of the log functions.
        std::string const out = coutWithoutTrailers([] {
            char const *nullFormat = nullptr;
            ppDebug(0, "x");
            ppDebug("a $ b");
            ppFatal("f $", 1.5);
            ppError(2, "e $ $", "s", QString("q"));
            ppInfo(QString("plain $"));
            ppTest(3, QString("indented"));
            ppResponse("r $", nullptr);
            ppInfo(nullFormat, 1);
            ppLog(WARN, 2, "x $", 1);
            ppLog(INFO, 0, QString("y"));
        });
        EXPECT_EQ(out, "");
        EXPECT_FALSE(Logger::isInitialized());
        QTemporaryDir dir;
        EXPECT_FALSE(iniToFile(dir, "--logFile app --logRotate weekly"));
        EXPECT_FALSE(Logger::isRunning() || Logger::isReady());
        EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
    });
}

TEST(Logger, MaskDropsMessagesWithoutTakingANumber) {
    unsigned int const saved = Logger::getLogLevel();
    std::vector<test::CapturedLine> const lines = test::capturedBy([&] {
        Logger::setLogLevel(ERROR | INFO);
        ppInfo("mask-first");
        ppDebug("mask-dropped");
        ppInfo("mask-second");
        Logger::setLogLevel(0);
        EXPECT_FALSE(Logger::getLogger().isLogLevelMatching(FATAL));
        ppFatal("mask-zero");
        Logger::setLogLevel(saved);
        ppInfo("mask-end");
    });
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].text, "mask-second");
    EXPECT_EQ(lines[1].number, lines[0].number + 1);
    EXPECT_EQ(lines[2].number, lines[0].number + 2);
    EXPECT_EQ(lines[0].level, 0x640010u);
}

TEST(Logger, DebugScopeWidensTheMaskAndMarksItsContext) {
    unsigned int const saved = Logger::getLogLevel();
    std::vector<QString> const texts = test::linesLoggedBy([&] {
        Logger::setLogLevel(ERROR);
        ppError("scope-start");
        {
            RESOURCE_LOGGER_DEBUG scope("parse");
            EXPECT_EQ(Logger::getLogLevel(), DEFAULT_LOG_MASK);
            ppDebug("scope-inside");
        }
        EXPECT_EQ(Logger::getLogLevel(), unsigned(ERROR));
        ppDebug("scope-dropped");
        Logger::setLogLevel(saved);
    });
    EXPECT_EQ(texts, (std::vector<QString>{"scope-start", "DEBUG-CONTEXT: <<< parse >>>",
                                           "scope-inside", "DEBUG-CONTEXT: <<< ~parse >>>"}));
}

TEST(Logger, DebugFormatsPrintfStyleAndCutsAt4096) {
    std::vector<test::CapturedLine> const lines = test::capturedBy([] {
        Logger::debug(4, "debug-n=%d %s", 5, "x");
        Logger::debug("%s", std::string(5000, 'a').c_str());
    });
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].text, "    debug-n=5 x");
    EXPECT_EQ(lines[0].level, 0x640020u);
    EXPECT_EQ(lines[0].space, 0u);
    EXPECT_EQ(lines[1].text, QString(4095, 'a'));
}

TEST(Logger, SavedMaskComesBackAndShowsAsNames) {
    test::startCapturingLogger();
    unsigned int const saved = Logger::getLogLevel();
    Logger::saveLogLevel();
    Logger::setLogLevelSimple(SIMPLE_ERROR);
    EXPECT_EQ(Logger::getLogLevel(), 7046u);
    Logger::setLogLevel(FATAL | ERROR);
    EXPECT_EQ(coutWithoutTrailers([] { Logger::showLogLevel(); }),
              "Logger::llogLevel: | FATAL | XERROR\n");
    Logger::restoreLogLevel();
    EXPECT_EQ(Logger::getLogLevel(), saved);
}

TEST(Logger, SecondIniSaysSoAndKeepsTheLogger) {
    test::startCapturingLogger();
    bool result = false;
    EXPECT_EQ(coutWithoutTrailers(
                  [&] { result = Logger::ini(commandLine("x --logRotate bad"), nullptr, 0); }),
              "Logger::ini, already called\n");
    EXPECT_TRUE(result);
    EXPECT_TRUE(Logger::isReady());
    EXPECT_FALSE(Logger::getLogger().hasAppenderConsole());
    EXPECT_FALSE(Logger::getLogger().IsConsoleAppenderEnabled());
}

TEST(Logger, AppendersAreAddedAndRemovedWhileMessagesFlow) {
    test::startCapturingLogger();
    Logger &logger = Logger::getLogger();
    AppenderLimitMemory memory(0, 1000, 0);
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        while (!stop.load())
            ppInfo("flow");
    });
    for (int i = 0; i < 200; ++i) {
        logger.addAppender(&memory);
        EXPECT_TRUE(logger.removeAppender(&memory));
    }
    EXPECT_FALSE(logger.removeAppender(&memory));
    logger.addAppender(&memory);
    stop.store(true);
    writer.join();
    test::capturedBy([] { ppError("flow-end"); }); // through the appenders
    ASSERT_EQ(logger.getAppenderLimitMemory(), &memory);
    ASSERT_EQ(memory.getLogErrorMessages().size(), 1);
    EXPECT_EQ(memory.getLogErrorMessages().last()->toString(), "flow-end");
    EXPECT_TRUE(logger.removeAppender(&memory));
}

// The one run of the null-pointer handler's wait and exit; the other null checks use
// the quick test::expectFatal. The place is the logger's own, fixed one.
TEST(LoggerDeathTest, NullMessageIsFatalAtTheLoggersPlace) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            ::dup2(2, 1);
            Logger::log(nullptr, INFO, 0);
        },
        testing::ExitedWithCode(1),
        "^nullptr:msg == NULL\nLogger\nLINE:742\nprogram will exit in 5 sec\n$");
}

TEST(Logger, ConsoleOptionsReachEveryMessageAndLogMemShowsTheBlock) {
    inFreshProcess([] {
        bool const started =
            Logger::ini(commandLine("x --logTrailler false"), nullptr, DEFAULT_LOG_MASK);
        Logger &logger = Logger::getLogger();
        EXPECT_TRUE(started && logger.hasAppenderConsole() && !logger.hasAppenderFile());
        EXPECT_TRUE(!Logger::isIncludeTraillerConsole() && logger.IsConsoleAppenderEnabled());
        XMemFile kept(QByteArray("payload"));
        XMemFile taken(QByteArray("payload"));
        XMemFile empty;
        // getAppenderLimitMemory() waits until the queue is empty.
        std::string const out = coutWithoutTrailers([&] {
            Logger::logMemInfo(kept, true, "copied");
            Logger::logMemWarning(taken, false, "taken");
            Logger::logMemError(empty, true, "nothing");
            ppWarning(4, "$ $", QString::fromUtf8("caf\xC3\xA9"), 1);
            logger.getAppenderLimitMemory();
            logger.enableConsoleAppender(false);
            ppWarning("hidden");
            logger.getAppenderLimitMemory();
            logger.enableConsoleAppender(true);
            Logger::setIncludeTraillerConsole(true);
            ppInfo("shown");
            logger.getAppenderLimitMemory();
        });
        // The header comes first; then the lines that passed.
        QRegularExpression const tail(
            "(^|\n)\\{mem:1\\}copied\n\\{mem:1\\}taken\n\\{mem:0\\}nothing\n    caf\xC3\xA9 1\n"
            R"(\[\d{6}\] \[INFO#\] \[.*\] \[000000\] shown\n$)");
        EXPECT_TRUE(QString::fromUtf8(out.c_str()).contains(tail)) << out;
        EXPECT_TRUE(out.find("hidden") == std::string::npos && kept.size() == 7 && taken.isEmpty());
    });
}

TEST(Logger, HeaderOpensTheLogAndRegressionNumbersFromZero) {
    inFreshProcess([] {
        QTemporaryDir dir;
        qputenv("ORVVM", "on");
        XAdditionalLibInfos::addLibInfo("lib:geo 2.1", true);
        Logger::prepareForRegressionTests(true);
        bool const started = iniToFile(dir, "--logFile app.txt");
        // Lines join the header until the first message is accepted.
        Logger::addHeaderString("header-extra");
        EXPECT_TRUE(started && Logger::isRunning() && Logger::isReady());
        EXPECT_TRUE(Logger::getLogger().hasAppenderFile() &&
                    !Logger::getLogger().hasAppenderConsole());
        ppInfo("first");
        Logger::addHeaderString("header-late");
        ppInfo("second");
        Logger::getLogger().getAppenderLimitMemory();
        QStringList const lines = fileLines(dir.filePath("app.txt"));
        QStringList texts;
        // The header's eight lines count from 0, and the messages from 0 again.
        for (int i = 0; i < lines.size(); ++i) {
            QString text;
            EXPECT_EQ(numberOf(lines[i], &text), i < 8 ? i : i - 8) << lines[i].toStdString();
            texts << text;
        }
        QString const fileName = QString(dir.path() + "/app.txt").replace('/', '\\');
        QStringList const expected = {xprintF("PID:$", QCoreApplication::applicationPid()),
                                      "VM:true",
                                      xprintF("CPU, threads:$", QThread::idealThreadCount()),
                                      "lib:Qt " QT_VERSION_STR,
                                      "lib:Orv 1.40.20 - build at " +
                                          OrvVersion::getTimestamp_Date() + " / " +
                                          OrvVersion::getTimestamp_Time(),
                                      "lib:geo 2.1",
                                      "Logger::iniFileAppender => '" + fileName + "'",
                                      "header-extra",
                                      "first",
                                      "second"};
        EXPECT_EQ(texts, expected);
        EXPECT_TRUE(Logger::isInitialized());
    });
}

// Enough for the threads to interleave in the queue; volume belongs to the benchmark.
constexpr int messagesPerThread = 5000;

TEST(Logger, ManyThreadsLoseNothingAndKeepTheirOrder) {
    inFreshProcess([] {
        QTemporaryDir dir;
        int const threads = 8;
        qunsetenv("ORVVM");
        iniToFile(dir, "--logFile m.txt");
        // Behind the file appender: a line it has seen is already in the file.
        auto *capture = new test::CapturingAppender();
        Logger::getLogger().addAppender(capture);
        std::vector<std::thread> writers;
        for (int t = 0; t < threads; ++t)
            writers.emplace_back([t] {
                for (int i = 0; i < messagesPerThread; ++i)
                    ppInfo("t$ $", t, i);
            });
        for (std::thread &writer : writers)
            writer.join();
        ppInfo("all-written");
        EXPECT_TRUE(capture->waitForText("all-written", 60000));
        Logger::quit();
        EXPECT_TRUE(Logger::isRunning()); // quit leaves the running flag set
        ppInfo("after-quit");
        xSleep(100);

        QStringList const lines = fileLines(dir.filePath("m.txt"));
        // PID, CPU, Qt, Orv and the file's name.
        int const header = 5;
        EXPECT_EQ(lines.size(), header + threads * messagesPerThread + 2);
        std::vector<int> next(threads, 0);
        for (int i = 0; i < lines.size() && !testing::Test::HasFailure(); ++i) {
            QString text;
            EXPECT_EQ(numberOf(lines[i], &text), i) << lines[i].toStdString();
            if (i < header)
                continue;
            QStringList const parts = text.mid(1).split(' ');
            if (text.startsWith('t') && parts.size() == 2) {
                int const t = parts[0].toInt();
                EXPECT_EQ(parts[1].toInt(), next[t]++) << lines[i].toStdString();
            }
        }
        for (int t = 0; t < threads; ++t)
            EXPECT_EQ(next[t], messagesPerThread) << "thread " << t;
        // The quit message itself is the last line; what came after it nobody reads.
        EXPECT_TRUE(lines.value(lines.size() - 1).endsWith("] QUIT")) << lines.last().toStdString();
    });
}

TEST(Logger, RotationBySecondWritesFilesThatSortInTimeOrder) {
    inFreshProcess([] {
        QTemporaryDir dir;
        // The scheduler stays silent once the seconds wrap: start after a wrap.
        XCalendarUTC now;
        for (now.fromNow(); now.sec() >= 55; now.fromNow())
            xSleep(100);
        EXPECT_TRUE(iniToFile(dir, "--logFile app --logRotate second"));
        for (int i = 0; i < 32; ++i) {
            ppInfo("tick $", i);
            xSleep(100);
        }
        Logger::getLogger().getAppenderLimitMemory();
        QStringList const names = QDir(dir.path()).entryList(QDir::Files, QDir::Name);
        EXPECT_GE(names.size(), 3) << names.join(' ').toStdString();
        long long previousFirst = -1;
        for (QString const &name : names) {
            EXPECT_TRUE(
                name.contains(QRegularExpression(R"(^app_\d{4}_\d\d_\d\d___\d\d_\d\d_\d\d\.txt$)")))
                << name.toStdString();
            QStringList const lines = fileLines(dir.filePath(name));
            // A rotation between the last tick and the listing leaves a file with no line yet.
            if (lines.isEmpty())
                continue;
            long long const first = numberOf(lines.value(0));
            EXPECT_GT(first, previousFirst) << name.toStdString();
            previousFirst = first;
        }
        // Stops the rotation too, so that no file comes back after the directory is gone.
        Logger::quit();
    });
}
