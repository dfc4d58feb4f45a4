// RebootHelper_test.cpp: a program that sets the reboot flag starts once more, with
// the same arguments, through execve.
#include "support/Test.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

namespace {

TEST(RebootProgram, RestartsOnceWithTheSameArguments) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QString const countFile = dir.filePath("starts.txt");
    QProcess process;
    process.start(ORV_REBOOT_HELPER, {"countStart", "--countFile", countFile, "--logLevel", "err"});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardOutput().toStdString();
    QFile file(countFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    // The second start found the first line and asked for no further restart.
    EXPECT_EQ(file.readAll(), "start\nstart\n");
}

} // namespace
