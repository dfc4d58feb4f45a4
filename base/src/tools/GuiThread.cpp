// GuiThread.cpp: the GUI thread test, and the qt:: door to Kernel::runInGui.
#include "orv/GuiThread.h"

#include "orv/Kernel.h"
#include "orv/XError.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

namespace orv::qt {

bool is_Gui_Thread() {
    QCoreApplication *app = QCoreApplication::instance();
    if (!app)
        return true;
    QThread *thMain = app->thread();
    ORV_ASSERT_PTR(thMain);
    QThread *thCurrent = QThread::currentThread();
    ORV_ASSERT_PTR(thCurrent);
    return thMain == thCurrent;
}

void run_in_Gui_Thread(std::function<void()> f, unsigned int msWait) {
    Kernel::runInGui(std::move(f), msWait);
}

} // namespace orv::qt
