// RebootHelper_test.cpp: a program that sets the reboot flag starts once more, with
// the same arguments, through execve.
#include "support/ChildRun.h"
#include "support/TempFiles.h"

namespace {

TEST(RebootProgram, RestartsOnceWithTheSameArguments) {
    QTemporaryDir dir;
    QString const countFile = dir.filePath("starts.txt");
    orv::test::ChildRun const run = orv::test::runChild(
        ORV_REBOOT_HELPER, {"countStart", "--countFile", countFile, "--logLevel", "err"});
    EXPECT_EQ(run.exitCode, 0) << run.output.toStdString();
    // The second start found the first line and asked for no further restart.
    EXPECT_EQ(orv::test::readFile(countFile), "start\nstart\n");
}

} // namespace
