// LogCommands.cpp: commands of the logging subsystem.
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/OrvVersion.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

namespace {

using namespace orv;

// The program's own line in the head of every log.
bool const headerLine = XAdditionalLibInfos::addLibInfo(QStringLiteral("lib:orv tool"), true);

int loginfoCommand(Kernel &kernel) {
    int const count = kernel.getInt(QStringLiteral("count"), 1);
    if (count < 0) {
        ppError("loginfo: --count must not be negative, got $", count);
        return EXIT_ORV_ARGUMENT;
    }
    for (int i = 1; i <= count; ++i) {
        ppFatal("loginfo line $ at FATAL", i);
        ppError("loginfo line $ at ERROR", i);
        ppWarning("loginfo line $ at WARN", i);
        ppInfo("loginfo line $ at INFO", i);
        ppDebug("loginfo line $ at DEBUG", i);
        ppTest("loginfo line $ at TEST", i);
    }
    return EXIT_ORV_OK;
}

ModuleTests const logCommands{
    {TestContext::FnKernel(loginfoCommand), QStringLiteral("loginfo"),
     QStringLiteral("log header and lines at every level: [--count N]"), true},
};

} // namespace
