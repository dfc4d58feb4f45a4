// ExternalTool.h: running an outside program (grep, python3, ...) as an independent
// reference for a test, with its standard output as the result.
//
//   QByteArray out;
//   if (!orv::test::runTool("grep", {"-b", "", path}, out))
//       GTEST_SKIP() << "grep is not installed";
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

namespace orv::test {

// False when the program isn't on the PATH or doesn't finish within 60 s; the exit
// status is not judged (grep gives 1 when nothing matches).
inline bool runTool(QString const &program, QStringList const &args, QByteArray &out,
                    QByteArray const &input = QByteArray()) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return false;
    QProcess process;
    process.start(program, args);
    if (!process.waitForStarted(10000))
        return false;
    if (!input.isEmpty())
        process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return false;
    }
    out = process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit;
}

} // namespace orv::test
