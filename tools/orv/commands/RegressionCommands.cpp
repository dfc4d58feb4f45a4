// RegressionCommands.cpp: orv regression: runs a regression file of orv's own command
// lines, or the commands whose names match a filter, and sums the results up.
#include "orv/EnvVariables.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/RegressionTests.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

#include <QtCore/QFileInfo>

namespace {

using namespace orv;

// Fills the list from --file or --filter; 0, or the status to end with.
int loadList(Kernel &kernel, RegressionTests &regression, QString &source) {
    bool const byFile = kernel.hasKey(QStringLiteral("file"));
    if (byFile == kernel.hasKey(QStringLiteral("filter"))) {
        ppError("regression: give either --file F or --filter P");
        return EXIT_ORV_ARGUMENT;
    }
    if (!byFile) {
        source = kernel.getString(QStringLiteral("filter"), QString());
        regression.fromFilter(source);
        return EXIT_ORV_OK;
    }
    source = kernel.getString(QStringLiteral("file"), QString());
    QFileInfo const file(source);
    if (!file.isFile()) {
        ppError("regression: file '$' not found", source);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    if (!regression.fromFile(source)) {
        ppError("regression: problems loading <$>", source);
        return EXIT_ORV_IO;
    }
    // Lines of the file name the files beside it as $(RELPATH)/name.
    setEnv(QStringLiteral("RELPATH"), file.absolutePath());
    return EXIT_ORV_OK;
}

// Unlike a regression program, which always ends with 0, the command's status says
// whether every test gave 0.
int regressionCommand(Kernel &kernel) {
    // A run's tests replace the kernel's command line and the log's set-up as they go:
    // a run inside a run (a list that names itself, to begin with) is refused.
    static bool running = false;
    if (running) {
        ppError("regression: a regression run can't start another one");
        return EXIT_ORV_ARGUMENT;
    }
    RegressionTests regression;
    regression.setTestTimeLimit(
        kernel.getUInt(QStringLiteral("testTimeout"), RegressionTests::DEFAULT_TEST_TIME_LIMIT));
    QString source;
    if (int const status = loadList(kernel, regression, source))
        return status;
    running = true;
    int const result = regression.runAndReport(kernel, source);
    running = false;
    return result == 0 && regression.countOK() == regression.size() ? EXIT_ORV_OK
                                                                    : EXIT_ORV_GENERAL;
}

ModuleTests const regressionCommands{
    {TestContext::FnKernel(regressionCommand), QStringLiteral("regression"),
     QStringLiteral("run the command lines of a file, or the commands named like P, and sum "
                    "up: --file F | --filter P [--testTimeout S]"),
     true},
};

} // namespace
