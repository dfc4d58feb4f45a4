// XError_test.cpp: the error word, its texts, the system error messages and the fatal handlers.
#include "orv/XError.h"

#include "support/Test.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <vector>

using orv::XError;
using orv::XErrorMap;

TEST(XError, LibraryCodesGiveTheirTexts) {
    EXPECT_EQ(XError().errAsString(), "NO-ERROR,errno==0");
    // clang-format off
    std::pair<unsigned short, char const *> const rows[] = {
        {XError::ORV_ERROR_CANNOT_READ_RESOURCE, "orv,cannot read resource"},
        {XError::ORV_ERROR_TIMEOUT, "orv,timeout"}, {XError::ORV_ERROR_BUFFER_EMPTY, "orv,buffer empty"},
        {XError::ORV_ERROR_NOT_INITIALIZED, "orv,object not initialized"},
        {XError::ORV_ERROR_OUT_OF_RANGE, "orv,index out of range"},
        {XError::ORV_ERROR_TRUNCATE, "orv,truncate"}, {XError::ORV_ERROR_EOF, "orv,eof"},
        {XError::ORV_ERROR_NUMBER_TOO_BIG, "orv,number too big"},
        {999, "ORV_ERROR_* {999} NOT DEFINED"}, {0, "ORV-ERROR-0"}};
    // clang-format on
    for (auto [code, text] : rows) {
        XError error;
        error.setOrvError(code);
        EXPECT_TRUE(error.isOrvError(code)) << code;
        EXPECT_EQ(error.getErrno(), 0x8000u) << code;
        EXPECT_EQ(error.getOrvError(), code);
        EXPECT_EQ(error.errAsString(), text);
    }
}

TEST(XError, OkOnlyWithoutAnyCodeAndNamedTestsAgreeOnTheirCodes) {
    XError error;
    EXPECT_TRUE(error.isOK() && !error.isError());
    error.setOrvError(0); // an error, but no library error
    EXPECT_TRUE(error.isError() && !error.isOK() && !error.isOrvError());
    error.setOrvEOF();
    EXPECT_TRUE(error.isOrvEOF() && !error.isOrvTimeout());
    error.setOrvErrorTimeout();
    EXPECT_TRUE(error.isOrvTimeout());
    EXPECT_EQ(error.getOrvError(), 110u);
    error.setOrvTruncate();
    EXPECT_TRUE(error.isOrvTruncate());
    error.setOrvError(170);
    EXPECT_TRUE(error.isOrvNumberTooBig() && error.isOrvError());
    error.clearError();
    EXPECT_TRUE(error.isOK());
    error.setErrno(0x8000);
    EXPECT_TRUE(error.isOrvError(0));
    EXPECT_EQ(error.errAsString(), "ORV-ERROR-0");
    // errno keeps sixteen bits and wipes the library code.
    error.setErrno(70000);
    EXPECT_EQ(error.getErrno(), 4464u);
    error.setOrvError(110);
    error.setErrno(2);
    EXPECT_FALSE(error.isOrvTimeout());
    EXPECT_EQ(error.getOrvError(), 0u);
    EXPECT_EQ(error.bitFlags().flags(), 2u);
}

TEST(XError, ErrnoTextIsThatOfTheCurrentErrnoNotTheStoredOne) {
    XError error;
    error.setErrno(EACCES);
    for (int number : {ENOENT, EACCES}) {
        errno = number;
        EXPECT_EQ(error.errAsString(), QString::fromLocal8Bit(std::strerror(number)) +
                                           QStringLiteral(", errno:") + QString::number(number));
    }
    errno = EACCES;
    EXPECT_EQ(XError::printStringErrno("open", -1), -1);
    errno = 0;
    EXPECT_EQ(XError::printStringErrno(QString(), 42), 42);
}

TEST(XError, SettersTellTheInfoCallbackWhenEmitIsOn) {
    XError error;
    std::vector<std::pair<unsigned int, unsigned int>> calls;
    error.bitFlags().setInfoCallBack([&calls](unsigned int oldFlags, unsigned int newFlags) {
        calls.emplace_back(oldFlags, newFlags);
    });
    error.setErrno(5); // not told: emit is off
    error.bitFlags().setEmitChanges(true);
    error.setErrno(7);
    error.setOrvError(160);
    error.clearError();
    EXPECT_EQ(calls, (std::vector<std::pair<unsigned int, unsigned int>>{
                         {5, 7}, {7, 0x8000}, {0x8000, 0x00a08000}}));
}

TEST(XErrorMap, AddedCodeIsFoundAndASecondAddKeepsTheFirstTextAndSaysSo) {
    quint64 const before = XErrorMap::size();
    EXPECT_GE(before, 8u);
    EXPECT_FALSE(XErrorMap::containsError(4711));
    XErrorMap::addError(4711, "app,disk full");
    EXPECT_TRUE(XErrorMap::containsError(4711));
    EXPECT_EQ(XErrorMap::getError(4711), "app,disk full");
    EXPECT_EQ(XErrorMap::size(), before + 1);
    EXPECT_EQ(orv::test::coutOf([] { XErrorMap::addError(100, "other text"); }),
              "XErrorMap::addError, key already present, key:100\n");
    EXPECT_EQ(XErrorMap::getError(100), "orv,cannot read resource");
}

TEST(SystemErrorMessage, NamesErrnoAndItsTextOrTheSocketErrorNumber) {
    errno = ENOENT;
    EXPECT_EQ(orv::get_last_error_message(),
              QStringLiteral("errno:%1 => %2")
                  .arg(ENOENT)
                  .arg(QString::fromLocal8Bit(std::strerror(ENOENT))));
    errno = 0;
    EXPECT_EQ(orv::getLastErrorMessage(), "ERRNO == 0");
    for (int number : {ETIMEDOUT, ECONNREFUSED}) {
        errno = number;
        EXPECT_EQ(orv::getLastErrorMessage(), QStringLiteral("WSAGetLastError:%1").arg(number));
    }
}

namespace {

int const assertLine = __LINE__ + 3;
void failCondition(int value) {
    ::dup2(2, 1);
    ORV_ASSERT(value == 0);
}

int const assertPtrLine = __LINE__ + 1;
void failPointer(char const *buffer) { ORV_ASSERT_PTR(buffer); }

} // namespace

// The one run of the bool-expression handler's wait and exit: the exact lines on plain
// standard output, no trailer, which the child points at stderr for the death test.
TEST(FatalHandlingDeathTest, BoolExpressionPrintsThePlaceWaitsAndExits) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::string const expected = "^bool expression failure:\nbase/tests/tools/XError_test\\.cpp\n"
                                 "LINE:" +
                                 std::to_string(assertLine) +
                                 "\nprogram will exit in 5 sec\nprogram exit !\n$";
    EXPECT_EXIT(failCondition(1), testing::ExitedWithCode(1), expected);
}

TEST(FatalHandlingDeathTest, NullPointerPrintsTheTestAndThePlace) {
    orv::test::expectFatal([] { failPointer(nullptr); },
                           "^nullptr:buffer == NULL\nbase/tests/tools/XError_test\\.cpp\nLINE:" +
                               std::to_string(assertPtrLine) + "\nprogram will exit in 5 sec\n$");
}
