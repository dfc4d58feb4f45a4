// KernelEvents.cpp: the events that carry work to the GUI thread, the posting of
// them, and their delivery inside the kernel's notify.
#include "orv/KernelEvents.h"

#include "orv/GuiThread.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/XMem.h"
#include "orv/XThread.h"
#include "orv/XTree.h"
#include "tools/thread/QtMutexLock.h"

#include <QtCore/QTimer>

#include <algorithm>
#include <climits>

namespace orv {

namespace {

// Qt 5 keeps QTimer::defaultTypeFor private; this is its rule.
void singleShot(quint64 ms, std::function<void()> f) {
    QTimer::singleShot(static_cast<int>(std::min<quint64>(ms, INT_MAX)),
                       ms >= 2000 ? Qt::CoarseTimer : Qt::PreciseTimer, std::move(f));
}

// One receiver, one priority, one lock: events are delivered in the order their
// posters took the lock.
void postToApplication(KernelEvents *event) {
    QtMutexLock lock(&Kernel::mutexRunner);
    KernelEvents::publish();
    QCoreApplication::postEvent(QCoreApplication::instance(), event, Qt::NormalEventPriority);
}

} // namespace

std::atomic<bool> KernelEvents::atomicFlagDebug{false};
std::atomic<quint64> KernelEvents::handedOver{0};

KernelEvents::KernelEvents(int type) : QEvent(static_cast<QEvent::Type>(type)) {}

KernelEvents::~KernelEvents() = default;

bool KernelEvents::is_kernel_event(QEvent const *event) {
    return is_event_Generic(event) || is_event_lambda(event);
}

bool KernelEvents::is_event_Generic(QEvent const *event) {
    return event && event->type() == EV_TYPE_GENERIC;
}

bool KernelEvents::is_event_lambda(QEvent const *event) {
    return event && event->type() == EV_TYPE_LAMBDA;
}

void KernelEvents::setDebug(bool on) { atomicFlagDebug.store(on); }

bool KernelEvents::isDebug() { return atomicFlagDebug.load(); }

void KernelEvents::logDataFunctionMissing() {
    ppError("OrvKernelEvent::runMethod, fuData == nullptr");
}

void KernelEvents::logDataDelivered() { ppDebug("OrvKernelEvent::~runMethod"); }

XLambda_GUI_Event::XLambda_GUI_Event(std::function<void()> f)
    : KernelEvents(EV_TYPE_LAMBDA), functionGUI(std::move(f)) {
    if (isDebug())
        ppDebug("XLamdaGUIEvent::XLambda_GUI_Event, msWait:$", msWait);
}

XLambda_GUI_Event::~XLambda_GUI_Event() = default;

void XLambda_GUI_Event::runMethod() {
    if (!functionGUI) {
        ppError("XLamdaGUIEvent::runMethod functionGUI == null");
        return;
    }
    if (msWait != 0) {
        // The timer keeps its own copy: the event is deleted once delivered.
        singleShot(msWait, functionGUI);
        return;
    }
    if (isDebug())
        ppDebug("XLamdaGUIEvent::runMethod, msWait:$", msWait);
    functionGUI();
    if (isDebug())
        ppDebug("XLamdaGUIEvent::~runMethod");
}

void Kernel::runInGui(std::function<void()> f, quint64 msWait) {
    if (qt::is_Gui_Thread()) {
        // The same answer as the event path gives, rather than an exception here or,
        // after a delay, inside the event loop.
        if (!f) {
            ppError("XLamdaGUIEvent::runMethod functionGUI == null");
            return;
        }
        if (msWait == 0)
            f();
        else
            singleShot(msWait, std::move(f));
        return;
    }
    // msWait is dropped here: the work runs at the next turn of the main loop.
    postToApplication(new XLambda_GUI_Event(std::move(f)));
}

void Kernel::move_mem_to_main_thread(XMem &&mem, std::function<void(XMem &&)> f) {
    ppDebug("Kernel::move_mem_to_main_thread**************+");
    ppDebug("Kernel::move_mem_to_main_thread**************+*");
    ppDebug("Kernel::move_mem_to_main_thread**************+**");
    bool const debug = KernelEvents::isDebug();
    if (qt::is_Gui_Thread()) {
        if (debug)
            ppDebug("Kernel::move_mem_to_main_thread - GUI thread");
        // The event path's answer; the block stays with the caller.
        if (!f) {
            ppError("OrvKernelEvent::runMethod, fuData == nullptr");
            return;
        }
        f(std::move(mem));
        return;
    }
    if (debug)
        ppDebug("Kernel::move_mem_to_main_thread - OTHER thread:$", getCurrentThreadID());
    postToApplication(new OrvKernelEvent<XMem>(std::move(mem), std::move(f)));
}

void Kernel::move_tree_to_main_thread(XTree &&tree, std::function<void(XTree &&)> f) {
    // A moved tree would keep its parent pointer into the tree it left; it travels as
    // a root, with a fresh object part.
    XTree root(std::move(tree));
    root._swapObject(XObject());
    bool const debug = KernelEvents::isDebug();
    if (qt::is_Gui_Thread()) {
        if (debug)
            ppDebug("Kernel::move_tree_to_main_thread - GUI thread");
        if (f)
            f(std::move(root));
        else
            ppError("OrvKernelEvent::runMethod, fuData == nullptr");
        return;
    }
    if (debug)
        ppDebug("Kernel::move_tree_to_main_thread - OTHER thread:$", getCurrentThreadID());
    postToApplication(new OrvKernelEvent<XTree>(std::move(root), std::move(f)));
}

bool Kernel::filterOrvEvents(QObject *, QEvent *event) {
    KernelEvents::received();
    if (!KernelEvents::is_kernel_event(event))
        return true;
    bool const debug = KernelEvents::isDebug();
    if (debug)
        ppDebug("Kernel::filterOrvEvents - XKernelEvent");
    auto *kernelEvent = dynamic_cast<KernelEvents *>(event);
    if (!kernelEvent)
        return true;
    if (debug)
        ppDebug(4, "Kernel::filterOrvEvents - XKernelEvent");
    kernelEvent->runMethod();
    return true;
}

} // namespace orv
