// Appender_test.cpp: the console, file and memory appenders called directly, as the
// logger thread calls them; rotated file names; the Qt message filter.
#include "orv/Appender.h"
#include "orv/LogAttachment.h"
#include "orv/LogMessage.h"

#include "support/Test.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <memory>
#include <thread>

using namespace orv;
using test::coutOf;

namespace {

std::unique_ptr<LogMessageString> message(QString const &text, unsigned int number,
                                          unsigned int level = INFO, unsigned int space = 0) {
    auto msg = std::make_unique<LogMessageString>(text);
    msg->setNumber(number);
    msg->setLogLevel(level);
    msg->setSpace(space);
    return msg;
}

bool matches(QString const &text, char const *pattern) {
    return text.contains(QRegularExpression(pattern));
}

} // namespace

TEST(AppenderConsole, LineHasTrailerIndentationAndTextInBothModes) {
    AppenderConsole console(true);
    auto msg = message("text", 42, INFO, 4);
    EXPECT_TRUE(
        matches(QString::fromStdString(coutOf([&] { console.append(msg.get()); })),
                R"(^\[000042\] \[INFO#\] \[\d\d:\d\d:\d\d,\d{3}\] \[000000\]     text\n$)"));
    // An empty text ends in the trailer's last blank.
    auto empty = message("", 7, ERROR);
    std::string const line = coutOf([&] { console.append(empty.get()); });
    EXPECT_EQ(line.substr(line.size() - 12), "] [000000] \n");
    console.setIncludeTrailler(false);
    EXPECT_EQ(coutOf([&] { console.append(msg.get()); }), "    text\n");
    // A worker's thread id is padded to six places.
    std::thread([&] { msg = message("w", 3); }).join();
    EXPECT_TRUE(AppenderConsole::trailerFromLogMessage(msg.get()).endsWith(
        QString::asprintf("[%06u] ", msg->getThreadID())));
}

TEST(AppenderConsole, TimeFormatPicksFieldsAndFraction) {
    std::pair<unsigned int, char const *> const rows[] = {
        {0, R"(\[\d\d:\d\d,\d{3}\])"}, {1, R"(\[\d\d:\d\d:\d\d,\d{3}\])"},
        {2, R"(\[\d\d:\d\d,\d{6}\])"}, {3, R"(\[\d\d:\d\d:\d\d,\d{6}\])"},
        {7, R"(\[INFO#\] \[\] \[)"},
    };
    auto msg = message("t", 1);
    unsigned int const saved = AppenderConsole::atomicTimeFormat.load();
    for (auto [format, pattern] : rows) {
        AppenderConsole::atomicTimeFormat.store(format);
        QString const trailer = AppenderConsole::trailerFromLogMessage(msg.get());
        EXPECT_TRUE(matches(trailer, pattern)) << format << qPrintable(trailer);
    }
    AppenderConsole::atomicTimeFormat.store(saved);
}

TEST(AppenderConsole, AttachmentIsShownAsFlagAndConsumed) {
    AppenderConsole console(false);
    auto withBytes = message("m", 1);
    withBytes->attach(new LogAttachment(QByteArray("abc")));
    EXPECT_EQ(coutOf([&] { console.append(withBytes.get()); }), "{mem:1}m\n");
    EXPECT_FALSE(withBytes->hasAttachment());
    auto empty = message("m", 2, INFO, 2);
    empty->attach(new LogAttachment());
    EXPECT_EQ(coutOf([&] { console.append(empty.get()); }), "  {mem:0}m\n");
}

TEST(AppenderConsole, SimpleTrailerCountsUpByOne) {
    QRegularExpression const form(R"(^<(\d{6})> <\d\d:\d\d:\d\d,\d{3}> <\d{6,}> $)");
    QRegularExpressionMatch const first = form.match(AppenderConsole::trailerSimple());
    QRegularExpressionMatch const second = form.match(AppenderConsole::trailerSimple());
    ASSERT_TRUE(first.hasMatch() && second.hasMatch());
    EXPECT_EQ(second.captured(1).toInt(), first.captured(1).toInt() + 1);
}

TEST(AppenderFile, LineIsLatin1WithoutIndentationAndUnpaddedThread) {
    QTemporaryDir dir;
    std::unique_ptr<AppenderFile> file(AppenderFile::createAppenderFile(dir.path(), "a.txt", 0));
    ASSERT_TRUE(file);
    auto msg = message(QString::fromUtf8("caf\xC3\xA9"), 42, WARN, 4);
    msg->attach(new LogAttachment(QByteArray("x")));
    file->append(msg.get());
    EXPECT_TRUE(msg->hasAttachment());
    QByteArray const expected = "[000042] [WARN#] [" +
                                msg->getTime().getTimeString(368).toLatin1() + "] [" +
                                QByteArray::number(msg->getThreadID()) + "] caf\xE9\n";
    EXPECT_EQ(test::readFile(dir.filePath("a.txt")), expected);
    // The same text on the console is UTF-8: two bytes for the one character.
    AppenderConsole console(false);
    EXPECT_EQ(coutOf([&] { console.append(msg.get()); }), "    {mem:1}caf\xC3\xA9\n");
}

TEST(AppenderFile, MaxLenStopsAfterTheLineThatReachesIt) {
    QTemporaryDir dir;
    std::unique_ptr<AppenderFile> file(AppenderFile::createAppenderFile(dir.path(), "m.txt", 1));
    ASSERT_TRUE(file);
    for (unsigned int i = 0; i < 3; ++i)
        file->append(message(QString("line%1").arg(i), i).get());
    EXPECT_TRUE(file->isFull());
    QList<QByteArray> const lines = test::readFile(dir.filePath("m.txt")).split('\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith("line0"));
}

TEST(AppenderFile, CreatesFoldersTruncatesAnOldFileAndGivesNullWhereItCannotWrite) {
    QTemporaryDir dir;
    QString const old = test::writeFile(dir, "log.txt", "old content\n");
    std::unique_ptr<AppenderFile> file(AppenderFile::createAppenderFile(dir.path(), "log.txt", 0));
    ASSERT_TRUE(file);
    EXPECT_EQ(test::readFile(old), QByteArray());
    file.reset(AppenderFile::createAppenderFile(dir.filePath("x/y/z"), "n.txt", 0));
    EXPECT_TRUE(file && QFile::exists(dir.filePath("x/y/z/n.txt")));

    test::writeFile(dir, "plain", "");
    std::string const out = coutOf([&] {
        EXPECT_EQ(AppenderFile::createAppenderFile(dir.filePath("plain/sub"), "f.txt", 0), nullptr);
    });
    EXPECT_NE(out.find("PROBLEM creating directory"), std::string::npos);
    // A directory where the file should be can't be opened for writing.
    ASSERT_TRUE(QDir().mkpath(dir.filePath("d/taken")));
    EXPECT_EQ(AppenderFile::createAppenderFile(dir.filePath("d"), "taken", 0), nullptr);
}

TEST(AppenderLimitMemory, DropIndexDecidesWhichMessagesStay) {
    std::pair<unsigned int, std::vector<unsigned int>> const rows[] = {
        {0, {2, 3, 4}}, {1, {0, 3, 4}}, {2, {0, 1, 4}}, {5, {0, 1, 2, 3, 4}}};
    for (auto const &[indexDrop, kept] : rows) {
        AppenderLimitMemory memory(indexDrop, 3, 0);
        for (unsigned int i = 0; i < 5; ++i)
            memory.append(message("m", i).get());
        std::vector<unsigned int> numbers;
        for (LogMessage *msg : memory.getLogMessages())
            numbers.push_back(msg->getNumber());
        EXPECT_EQ(numbers, kept) << "indexDrop " << indexDrop;
    }
}

TEST(AppenderLimitMemory, ErrorsAreKeptApartHolesMarkedAndTheAttachmentTaken) {
    AppenderLimitMemory memory(0, 10, 0);
    for (auto [number, level] : {std::pair{3u, ERROR}, {4u, INFO}, {7u, FATAL}}) {
        auto msg = message(QString("n%1").arg(number), number, level, 1);
        msg->attach(new LogAttachment(QByteArray("abc")));
        memory.append(msg.get());
        EXPECT_FALSE(msg->hasAttachment());
    }
    EXPECT_TRUE(memory.getLogMessages().at(0)->hasAttachment());
    QStringList lines, errors;
    memory.getLogMessagesAsStrings(lines);
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0], "..");
    EXPECT_TRUE(lines[1].startsWith("[000003] [ERROR] [") && lines[1].endsWith("]  n3"));
    EXPECT_TRUE(lines[2].endsWith(" n4"));
    EXPECT_EQ(lines[3], "..");
    memory.getLogErrorMessagesAsStrings(errors);
    ASSERT_EQ(errors.size(), 2);
    EXPECT_TRUE(errors[1].startsWith("[000007] [FATAL]"));
}

TEST(SchedulerFileSystemAction, RotatedNamesCarryTheUtcStampDownToTheUnit) {
    std::tuple<SCHEDULE, char const *, char const *> const rows[] = {
        {SCHEDULE_SECOND, "app", R"(^app_\d{4}_\d\d_\d\d___\d\d_\d\d_\d\d\.txt$)"},
        {SCHEDULE_HOUR, "app", R"(^app_\d{4}_\d\d_\d\d___\d\d\.txt$)"},
        {SCHEDULE_YEAR, "app.log", R"(^app\.log_\d{4}\.txt$)"},
    };
    for (auto [unit, name, pattern] : rows) {
        QTemporaryDir dir;
        std::unique_ptr<AppenderFile> file(
            SchedulerFileSystemAction::createAppenderFile(unit, dir.filePath("r"), name, 0));
        ASSERT_TRUE(file);
        QStringList const names = QDir(dir.filePath("r")).entryList(QDir::Files);
        ASSERT_EQ(names.size(), 1);
        EXPECT_TRUE(matches(names[0], pattern)) << qPrintable(names[0]);
    }
}

TEST(ConsoleFilterQt, SwallowsMessagesHoldingAFilterText) {
    ConsoleFilterQt::addFilter("QFont::");
    QMessageLogContext context;
    testing::internal::CaptureStderr();
    ConsoleFilterQt::daMessageOut(QtWarningMsg, context, "QFont::setPointSize: <= 0");
    ConsoleFilterQt::daMessageOut(QtWarningMsg, context, "kept message");
    ConsoleFilterQt::clearFilters();
    ConsoleFilterQt::daMessageOut(QtDebugMsg, context, "QFont:: again");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "kept message\nQFont:: again\n");
}
