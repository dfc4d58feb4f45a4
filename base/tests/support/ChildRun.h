// ChildRun.h: running a program of ours to its end as a child process, and checking
// that its merged output holds some texts and lacks others.
//
//   orv::test::ChildRun run = orv::test::runChild(ORV_PROGRAM, {"md5", "--help"});
//   orv::test::expectHasAndLacks(run.output, {"md5 --file F"}, {});
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

namespace orv::test {

struct ChildRun {
    int exitCode = -1; // -1 when killed after 30 s, -2 when it crashed
    QString output;    // standard output and error, interleaved
    qint64 ms = 0;
};

inline ChildRun
runChild(QString const &program, QStringList const &args,
         QProcessEnvironment const &env = QProcessEnvironment::systemEnvironment()) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(env);
    QElapsedTimer timer;
    timer.start();
    process.start(program, args);
    ChildRun run;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.ms = timer.elapsed();
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.output = QString::fromUtf8(process.readAll());
    return run;
}

inline void expectHasAndLacks(QString const &output, QStringList const &has,
                              QStringList const &lacks) {
    for (QString const &text : has)
        EXPECT_TRUE(output.contains(text)) << "lacks: " << text.toStdString();
    for (QString const &text : lacks)
        EXPECT_FALSE(output.contains(text)) << "has: " << text.toStdString();
}

} // namespace orv::test
