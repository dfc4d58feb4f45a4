// ChildLines.h: runs one disabled test of a copy of this test program as a child
// process and gives back what it reported, so that a test can look at the program
// from another place on disk or from a second process.
#pragma once

#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <iostream>

namespace orv::test {

// Lines the child reports through report(), without the marker.
inline QStringList childLines(QString const &program, QString const &test,
                              QProcessEnvironment const &env, QString const &workDir = QString()) {
    QProcess child;
    child.setProcessEnvironment(env);
    child.setWorkingDirectory(workDir);
    child.start(program,
                {QStringLiteral("--gtest_also_run_disabled_tests"), "--gtest_filter=" + test});
    EXPECT_TRUE(child.waitForFinished(60000));
    EXPECT_EQ(child.exitCode(), 0) << child.readAllStandardError().toStdString();
    QStringList lines;
    for (QString const &line : QString::fromUtf8(child.readAllStandardOutput()).split('\n'))
        if (line.startsWith(QLatin1String("@@")))
            lines << line.mid(2);
    return lines;
}

// One line for the parent to read.
inline void report(QString const &line) { std::cout << "@@" << line.toStdString() << std::endl; }

} // namespace orv::test
