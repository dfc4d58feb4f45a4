// regression_fuzz.cpp: feeds arbitrary bytes as a regression file (through a file, as the
// runner maps it) and checks what the grammar promises for any input.
#include "FuzzCheck.h"
#include "orv/CommandLine.h"
#include "orv/RegressionTests.h"
#include "orv/TestContext.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <unistd.h>

namespace {

// Short names, so that the fuzzer finds them.
orv::ModuleTests const tests{
    {orv::TestContext::FnPlain([] { return 0; }), "a", "", true},
    {orv::TestContext::FnPlain([] { return 0; }), "run", "", true},
    {orv::TestContext::FnPlain([] { return 0; }), "e", "", false},
};

QString const &inputFile() {
    // Memory-backed where the system has it: the file is rewritten for every input.
    static QString const path =
        (QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm")
                                                   : QDir::tempPath()) +
        QStringLiteral("/regression_fuzz_%1.txt").arg(::getpid());
    return path;
}

void removeInputFile() { QFile::remove(inputFile()); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    static QString const path = inputFile();
    static int const cleanUp = std::atexit(removeInputFile);
    (void)cleanUp;
    QByteArray const bytes(reinterpret_cast<char const *>(data), static_cast<int>(size));
    {
        QFile file(path);
        check(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        check(file.write(bytes) == bytes.size());
    }
    orv::RegressionTests regression;
    // Only an empty file (it can't be mapped) fails to load.
    check(regression.fromFile(path) == (size > 0));
    // Every test line is one line of the input, or one piece of a line longer than the
    // reader's block.
    check(regression.size() <= quint64(bytes.count('\n')) + 1 + size / 65535);
    for (orv::RegTest const &test : regression.regTests()) {
        check(!test.cmdLine.isEmpty() && !test.cmdLine.contains(QLatin1Char('#')));
        check(!test.cmdLine.startsWith(QLatin1String("exit")));
        check(!test.cmdLine.contains(QLatin1String("RegTestConfig")));
        check(test.result == orv::RegTest::NOT_RUN_YET && test.testContext != nullptr);
        orv::CommandLine cmd;
        check(cmd.fromString(test.cmdLine));
        check(cmd.getCommand() == test.testContext->key());
    }
    orv::RegTestConfig config;
    check(config.fromString(QString::fromUtf8(bytes)));
    return 0;
}
