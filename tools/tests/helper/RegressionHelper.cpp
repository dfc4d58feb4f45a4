// RegressionHelper.cpp: a program whose main is a regression run over the tests below:
// one passes, one fails, one ends through the fatal handler, one never returns, and one
// looks for a file.
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/RegressionTests.h"
#include "orv/TestContext.h"
#include "orv/XError.h"
#include "orv/XProgram.h"

#include <QtCore/QFileInfo>

namespace {

using namespace orv;

int pass() {
    ppInfo("pass ran");
    return EXIT_ORV_OK;
}

int fatal() {
    ORV_ASSERT(false);
    return EXIT_ORV_OK;
}

int hang() {
    for (;;)
        xSleep(1000);
}

int fileExists(Kernel &kernel) {
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    ppInfo("looking for '$'", file);
    return QFileInfo(file).isFile() ? EXIT_ORV_OK : EXIT_ORV_FILE_NOT_FOUND;
}

ModuleTests const helperTests{
    {TestContext::FnPlain(pass), "pass", "", true},
    {TestContext::FnPlain([] { return int(EXIT_ORV_FILE_NOT_FOUND); }), "fail", "", true},
    {TestContext::FnPlain(fatal), "fatal", "", true},
    {TestContext::FnPlain(hang), "hang", "", true},
    {TestContext::FnKernel(fileExists), "fileExists", "", true},
};

} // namespace

int main(int argc, char **argv, char **envp) {
    return orv::RegressionTests::execRegressionTests(argc, argv, envp);
}
