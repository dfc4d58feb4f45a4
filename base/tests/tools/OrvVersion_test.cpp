// OrvVersion_test.cpp: the version record and the header lines of further libraries.
#include "orv/LogMessage.h"
#include "orv/OrvVersion.h"

#include "support/Test.h"

#include <QtCore/QRegularExpression>

using namespace orv;

TEST(OrvVersion, TextsAndNumberAreIndependent) {
    EXPECT_EQ(OrvVersion::getVersion(), "1.40.20");
    EXPECT_DOUBLE_EQ(OrvVersion::getVersionNumber(), 1.402);
    EXPECT_TRUE(OrvVersion::getTimestamp_Date().contains(
        QRegularExpression(R"(^[A-Z][a-z]{2} [ 1-3]\d \d{4}$)")));
    EXPECT_TRUE(
        OrvVersion::getTimestamp_Time().contains(QRegularExpression(R"(^\d\d:\d\d:\d\d$)")));
    EXPECT_EQ(OrvVersion::all(), "orv 1.40.20 " + OrvVersion::getTimestamp_Date() + ' ' +
                                     OrvVersion::getTimestamp_Time());
}

TEST(XAdditionalLibInfos, LinesAreInfoMessagesOfThisLibrary) {
    size_t const before = XAdditionalLibInfos::libLogInfos().size();
    EXPECT_TRUE(XAdditionalLibInfos::addLibInfo("lib:geo 2.1 $", true));
    ASSERT_EQ(XAdditionalLibInfos::libLogInfos().size(), before + 1);
    LogMessageString const *line = XAdditionalLibInfos::libLogInfos().back();
    EXPECT_EQ(line->toString(), "lib:geo 2.1 $");
    EXPECT_EQ(line->getLogLevel(), 0x640010u);
    EXPECT_EQ(line->getSpace(), 0u);
}
