// Logger_test.cpp: console output, the main-thread id, messages, the logger thread with
// its numbering, masks and start-up options, the header, rotation and quit.
//
// The logger starts once per process: tests in this process share the capturing logger
// of startCapturingLogger(); tests that start it their own way, or quit it, run in a
// fresh process of their own.
#include "orv/Appender.h"
#include "orv/CommandLine.h"
#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/LogAttachment.h"
#include "orv/OrvVersion.h"
#include "orv/XCalendarUTC.h"

#include "support/CapturingAppender.h"
#include "support/ConsoleCapture.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextCodec>
#include <QtCore/QThread>

#include <cstdio>
#include <cstdlib>
#include <functional>

#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
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

// Runs body in a fresh process; body gives the list of what went wrong.
void inFreshProcess(std::function<QStringList()> body) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            QStringList const failures = body();
            std::fprintf(stderr, "%s\n", qPrintable(failures.join('\n')));
            std::exit(failures.isEmpty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

#define CHECK(condition, ...)                                                                      \
    do {                                                                                           \
        if (!(condition))                                                                          \
            failures << (QStringLiteral(#condition " ") + xprintF(__VA_ARGS__));                   \
    } while (false)

CommandLine commandLine(QString const &line) {
    CommandLine cmd;
    cmd.fromString(line);
    return cmd;
}

QStringList fileLines(QString const &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLatin1(file.readAll()).split('\n', Qt::SkipEmptyParts);
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

TEST(Logger, PrintToCoutWritesOneLinePerCall) {
    Utf8Locale utf8;
    char const *nullText = nullptr;
    EXPECT_EQ(test::withoutSimpleTrailers(captured([] { Logger::printToCout("hello"); })),
              "hello\n");
    EXPECT_EQ(test::withoutSimpleTrailers(captured([&] { Logger::printToCout(nullText); })),
              "ppCout(nullptr)\n");
    EXPECT_EQ(test::withoutSimpleTrailers(captured([] { Logger::printToCout(QString()); })), "\n");
    EXPECT_EQ(test::withoutSimpleTrailers(
                  captured([] { Logger::printToCout(QString::fromUtf8("gr\xC3\xBC\xC3\x9F $")); })),
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
    QStringList const lines =
        QString::fromStdString(test::withoutSimpleTrailers(out)).split('\n', Qt::SkipEmptyParts);
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
    inFreshProcess([] {
        QStringList failures;
        CHECK(!Logger::isRunning(), "");
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
        CHECK(out.empty(), "$", QString::fromStdString(out));
        CHECK(!Logger::isInitialized(), "");
        return failures;
    });
}

TEST(Logger, CopyTakesTheAttachmentAndQuitStaysQuit) {
    LogMessageString msg("m");
    msg.attach(new LogAttachment(QByteArray(10, 'x')));
    EXPECT_EQ(msg.getSize(), 32u + 10u + 10u + 2u);
    std::unique_ptr<LogMessage> copy(msg.createCopy());
    EXPECT_FALSE(msg.hasAttachment());
    ASSERT_TRUE(copy->hasAttachment());
    EXPECT_EQ(copy->getTime().getMicroseconds(), msg.getTime().getMicroseconds());
    std::unique_ptr<LogAttachment> taken(copy->detach());
    EXPECT_EQ(taken->length(), 10u);
    EXPECT_FALSE(copy->hasAttachment());

    LogMessageQuit quit;
    std::unique_ptr<LogMessage> quitCopy(quit.createCopy());
    EXPECT_TRUE(quitCopy->isQuitMessage());
    EXPECT_EQ(quitCopy->toString(), "QUIT");
    EXPECT_FALSE(msg.isQuitMessage());
}

TEST(Logger, VirtualMachineIsDeclaredByOrvvm) {
    QByteArray const saved = qgetenv("ORVVM");
    struct Row {
        char const *value;
        bool expected;
    } const rows[] = {{"ON", true}, {"1", true}, {"\"true\"", true}, {"yes", false}, {"", false}};
    for (Row const &row : rows) {
        qputenv("ORVVM", row.value);
        EXPECT_EQ(is_running_inside_VM(), row.expected) << row.value;
    }
    qputenv("ORVVM", saved);
}

TEST(Logger, MaskDropsMessagesWithoutTakingANumber) {
    test::CapturingAppender &log = test::startCapturingLogger();
    unsigned int const saved = Logger::getLogLevel();
    Logger::setLogLevel(ERROR | INFO);
    ppInfo("mask-first");
    ppDebug("mask-dropped");
    ppInfo("mask-second");
    Logger::setLogLevel(0);
    EXPECT_FALSE(Logger::getLogger().isLogLevelMatching(FATAL));
    ppFatal("mask-zero");
    Logger::setLogLevel(saved);
    ppInfo("mask-end");
    ASSERT_TRUE(log.waitForText("mask-end"));
    std::vector<test::CapturedLine> const lines = log.takenFrom("mask-first");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].text, "mask-second");
    EXPECT_EQ(lines[1].number, lines[0].number + 1);
    EXPECT_EQ(lines[2].number, lines[0].number + 2);
    EXPECT_EQ(lines[0].level, 0x640010u);
}

TEST(Logger, DebugScopeWidensTheMaskAndMarksItsContext) {
    test::CapturingAppender &log = test::startCapturingLogger();
    unsigned int const saved = Logger::getLogLevel();
    Logger::setLogLevel(ERROR);
    ppError("scope-start");
    {
        RESOURCE_LOGGER_DEBUG scope("parse");
        EXPECT_EQ(Logger::getLogLevel(), DEFAULT_LOG_MASK);
        ppDebug("scope-inside");
    }
    EXPECT_EQ(Logger::getLogLevel(), unsigned(ERROR));
    ppDebug("scope-dropped");
    ppError("scope-end");
    Logger::setLogLevel(saved);
    ASSERT_TRUE(log.waitForText("scope-end"));
    QStringList texts;
    for (test::CapturedLine const &line : log.takenFrom("scope-start"))
        texts << line.text;
    EXPECT_EQ(texts, QStringList({"scope-start", "DEBUG-CONTEXT: <<< parse >>>", "scope-inside",
                                  "DEBUG-CONTEXT: <<< ~parse >>>", "scope-end"}));
}

TEST(Logger, DebugFormatsPrintfStyleAndCutsAt4096) {
    test::CapturingAppender &log = test::startCapturingLogger();
    Logger::debug(4, "debug-n=%d %s", 5, "x");
    Logger::debug("%s", std::string(5000, 'a').c_str());
    Logger::debug("debug-end");
    ASSERT_TRUE(log.waitForText("debug-end"));
    std::vector<test::CapturedLine> const lines = log.takenFrom("    debug-n=5 x");
    ASSERT_EQ(lines.size(), 3u);
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
    EXPECT_EQ(test::withoutSimpleTrailers(captured([] { Logger::showLogLevel(); })),
              "Logger::llogLevel: | FATAL | XERROR\n");
    Logger::restoreLogLevel();
    EXPECT_EQ(Logger::getLogLevel(), saved);
}

TEST(Logger, SecondIniSaysSoAndKeepsTheLogger) {
    test::startCapturingLogger();
    bool result = false;
    EXPECT_EQ(test::withoutSimpleTrailers(captured(
                  [&] { result = Logger::ini(commandLine("x --logRotate bad"), nullptr, 0); })),
              "Logger::ini, already called\n");
    EXPECT_TRUE(result);
    EXPECT_TRUE(Logger::isReady());
    EXPECT_FALSE(Logger::getLogger().hasAppenderConsole());
    EXPECT_FALSE(Logger::getLogger().IsConsoleAppenderEnabled());
}

TEST(Logger, AppendersAreAddedAndRemovedWhileMessagesFlow) {
    test::CapturingAppender &log = test::startCapturingLogger();
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
    ppError("flow-end");
    ASSERT_TRUE(log.waitForText("flow-end"));
    ASSERT_EQ(logger.getAppenderLimitMemory(), &memory);
    EXPECT_EQ(memory.getLogMessages().last()->toString(), "flow-end");
    EXPECT_EQ(memory.getLogErrorMessages().size(), 1);
    EXPECT_TRUE(logger.removeAppender(&memory));
}

TEST(LoggerDeathTest, NullMessageIsFatalAtTheLoggersPlace) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::string const t = test::simpleTrailerPattern;
    EXPECT_EXIT(
        {
            ::dup2(2, 1);
            Logger::log(nullptr, INFO, 0);
        },
        testing::ExitedWithCode(1),
        "^" + t + "nullptr:msg == NULL\n" + t + "Logger\n" + t + "LINE:742\n");
}

TEST(Logger, ConsoleOptionsReachEveryMessage) {
    inFreshProcess([] {
        QStringList failures;
        bool const started =
            Logger::ini(commandLine("x --logTrailler false"), nullptr, DEFAULT_LOG_MASK);
        Logger &logger = Logger::getLogger();
        CHECK(started && logger.hasAppenderConsole() && !logger.hasAppenderFile(), "");
        CHECK(!Logger::isIncludeTraillerConsole() && logger.IsConsoleAppenderEnabled(), "");
        std::string const out = captured([&] {
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
        QStringList const lines = QString::fromUtf8(out.c_str()).split('\n');
        // The header comes first; then the three lines that passed.
        CHECK(lines.size() >= 3, "$", QString::fromStdString(out));
        CHECK(lines.value(lines.size() - 3) == QString::fromUtf8("    caf\xC3\xA9 1"), "$",
              QString::fromStdString(out));
        CHECK(lines.value(lines.size() - 2)
                  .contains(QRegularExpression(R"(^\[\d{6}\] \[INFO#\] \[.*\] \[000000\] shown$)")),
              "$", QString::fromStdString(out));
        CHECK(!out.empty() && out.find("hidden") == std::string::npos, "");
        return failures;
    });
}

TEST(Logger, HeaderOpensTheLogAndRegressionNumbersFromZero) {
    inFreshProcess([] {
        QStringList failures;
        QTemporaryDir dir;
        qputenv("ORVVM", "on");
        XAdditionalLibInfos::addLibInfo("lib:geo 2.1", true);
        Logger::prepareForRegressionTests(true);
        bool const started = Logger::ini(
            commandLine("x --logConsole false --logDir " + dir.path() + " --logFile app.txt"),
            nullptr, DEFAULT_LOG_MASK);
        // Lines join the header until the first message is accepted.
        Logger::addHeaderString("header-extra");
        CHECK(started && Logger::isRunning() && Logger::isReady(), "");
        CHECK(Logger::getLogger().hasAppenderFile() && !Logger::getLogger().hasAppenderConsole(),
              "");
        ppInfo("first");
        Logger::addHeaderString("header-late");
        ppInfo("second");
        Logger::getLogger().getAppenderLimitMemory();
        QStringList const lines = fileLines(dir.filePath("app.txt"));
        QStringList texts;
        for (int i = 0; i < lines.size(); ++i) {
            QString text;
            long long const number = numberOf(lines[i], &text);
            texts << text;
            if (i < 8)
                CHECK(number == i, "line $: '$'", i, lines[i]);
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
        CHECK(texts == expected, "got:\n$", texts.join('\n'));
        CHECK(numberOf(lines.value(8)) == 0 && numberOf(lines.value(9)) == 1, "");
        CHECK(Logger::isInitialized(), "");
        return failures;
    });
}

namespace {

#if defined(__SANITIZE_THREAD__)
#define ORV_UNDER_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ORV_UNDER_TSAN 1
#endif
#endif

#ifdef ORV_UNDER_TSAN
constexpr int messagesPerThread = 5000;
#else
constexpr int messagesPerThread = 100000;
#endif

} // namespace

TEST(Logger, ManyThreadsLoseNothingAndKeepTheirOrder) {
    inFreshProcess([] {
        QStringList failures;
        QTemporaryDir dir;
        int const threads = 8;
        qunsetenv("ORVVM");
        Logger::ini(commandLine("x --logConsole false --logDir " + dir.path() + " --logFile m.txt"),
                    nullptr, DEFAULT_LOG_MASK);
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
        CHECK(capture->waitForText("all-written", 600000), "");
        Logger::quit();
        CHECK(Logger::isRunning(), "quit leaves the running flag set");
        ppInfo("after-quit");
        xSleep(100);

        QStringList const lines = fileLines(dir.filePath("m.txt"));
        // PID, CPU, Qt, Orv and the file's name.
        int const header = 5;
        CHECK(lines.size() == header + threads * messagesPerThread + 2, "lines:$", lines.size());
        std::vector<int> next(threads, 0);
        for (int i = 0; i < lines.size() && failures.size() < 5; ++i) {
            QString text;
            CHECK(numberOf(lines[i], &text) == i, "line $: '$'", i, lines[i]);
            if (i < header)
                continue;
            QStringList const parts = text.mid(1).split(' ');
            if (text.startsWith('t') && parts.size() == 2) {
                int const t = parts[0].toInt();
                CHECK(parts[1].toInt() == next[t]++, "line $: '$'", i, lines[i]);
            }
        }
        for (int t = 0; t < threads; ++t)
            CHECK(next[t] == messagesPerThread, "thread $: $", t, next[t]);
        // The quit message itself is the last line; what came after it nobody reads.
        CHECK(lines.value(lines.size() - 1).endsWith("] QUIT"), "$", lines.value(lines.size() - 1));
        return failures;
    });
}

TEST(Logger, RotationBySecondWritesFilesThatSortInTimeOrder) {
    inFreshProcess([] {
        QStringList failures;
        QTemporaryDir dir;
        // The scheduler stays silent once the seconds wrap: start after a wrap.
        XCalendarUTC now;
        for (now.fromNow(); now.sec() >= 55; now.fromNow())
            xSleep(100);
        bool const started = Logger::ini(commandLine("x --logConsole false --logDir " + dir.path() +
                                                     " --logFile app --logRotate second"),
                                         nullptr, DEFAULT_LOG_MASK);
        CHECK(started, "");
        for (int i = 0; i < 32; ++i) {
            ppInfo("tick $", i);
            xSleep(100);
        }
        Logger::getLogger().getAppenderLimitMemory();
        QStringList const names = QDir(dir.path()).entryList(QDir::Files, QDir::Name);
        CHECK(names.size() >= 3, "$", names.join(' '));
        long long previousFirst = -1;
        for (QString const &name : names) {
            CHECK(
                name.contains(QRegularExpression(R"(^app_\d{4}_\d\d_\d\d___\d\d_\d\d_\d\d\.txt$)")),
                "$", name);
            QStringList const lines = fileLines(dir.filePath(name));
            // A rotation between the last tick and the listing leaves a file with no line yet.
            if (lines.isEmpty())
                continue;
            long long const first = numberOf(lines.value(0));
            CHECK(first > previousFirst, "$ starts at $", name, first);
            previousFirst = first;
        }
        // Stops the rotation too, so that no file comes back after the directory is gone.
        Logger::quit();
        return failures;
    });
}

TEST(Logger, BadRotateValueFailsIniAndStartsNothing) {
    inFreshProcess([] {
        QStringList failures;
        QTemporaryDir dir;
        bool const started = Logger::ini(commandLine("x --logConsole false --logDir " + dir.path() +
                                                     " --logFile app --logRotate weekly"),
                                         nullptr, DEFAULT_LOG_MASK);
        CHECK(!started, "");
        CHECK(!Logger::isRunning() && !Logger::isReady(), "");
        CHECK(QDir(dir.path()).entryList(QDir::Files).isEmpty(), "");
        return failures;
    });
}
