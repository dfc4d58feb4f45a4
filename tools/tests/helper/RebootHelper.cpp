// RebootHelper.cpp: a program that asks for its own restart on its first start. Each
// start appends a line to --countFile; the restart comes from the kernel's reboot flag.
#include "orv/Kernel.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

#include <QtCore/QFile>

namespace {

int countStart(orv::Kernel &kernel) {
    QFile file(kernel.getString(QStringLiteral("countFile"), QString()));
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append))
        return orv::EXIT_ORV_IO;
    bool const firstStart = file.size() == 0;
    file.write("start\n");
    file.close();
    orv::Kernel::setRebootProgram(firstStart);
    return 0;
}

orv::TestContextAdder const adder(orv::TestContext::FnKernel(countStart),
                                  QStringLiteral("countStart"),
                                  QStringLiteral("count a start, restart on the first"), true);

} // namespace

int main(int argc, char **argv, char **envp) {
    return orv::XProgramConsole::runStandard(argc, argv, envp, "orv", "", nullptr);
}
