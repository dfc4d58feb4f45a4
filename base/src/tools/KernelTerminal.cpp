// KernelTerminal.cpp: the console program's kernel, a Qt application whose notify
// runs the kernel's events.
#include "orv/Kernel.h"

#include "orv/GuiThread.h"
#include "orv/XThread.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

KernelTerminal::KernelTerminal(int &argc, char **argv, char **envv, bool insertPlaceHolder)
    : QCoreApplication(argc, argv), Kernel(argc, argv, envv, insertPlaceHolder) {
    // The application object has just applied the user's locale and zone.
    platform::initProcess();
    mainThreadID = static_cast<long>(getCurrentThreadID());
}

KernelTerminal::~KernelTerminal() = default;

bool KernelTerminal::notify(QObject *receiver, QEvent *event) {
    filterOrvEvents(receiver, event);
    return QCoreApplication::notify(receiver, event);
}

QString KernelTerminal::toString() const { return QStringLiteral("KernelTerminal"); }

int KernelTerminal::execute() { return QCoreApplication::exec(); }

void KernelTerminal::quit() { qt::run_in_Gui_Thread(&QCoreApplication::quit, 0); }

} // namespace orv
