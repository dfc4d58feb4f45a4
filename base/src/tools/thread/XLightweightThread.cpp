// XLightweightThread.cpp: the pool thread object and its listeners on the GUI thread.
#include "orv/XThread.h"

#include "orv/GuiThread.h"
#include "orv/Log.h"

namespace orv {

XLightweightThread::XLightweightThread() = default;

XLightweightThread::~XLightweightThread() = default;

void XLightweightThread::run() {
    // Pairs with publish() on the starting thread; Qt's queue hand-over is invisible to race
    // checkers.
    inPool.load(std::memory_order_acquire);
    setFinished(false);
    setRunning(true);
    runCustom();
    setRunning(false);
    setFinished(true);
    // The finished listeners are done too: only now may the owner take the object back.
    inPool.store(false, std::memory_order_release);
}

void XLightweightThread::runCustom() { ppDebug("XLightweightThread::run_custom, override me"); }

void XLightweightThread::reuse() {
    setFinished(false);
    setRunning(false);
}

void XLightweightThread::enableListener(bool on) { bits().setEmitChanges(on); }

void XLightweightThread::prepareListener(bool enable) {
    AtomicBits::ChangeListener &changes = bits().listenerChange();
    if (!enable) {
        changes.removeListener(listenerKey);
        ppDebug("XLightweightThread::prepareListener, listener removed");
        return;
    }
    changes.clear();
    listenerKey = changes.addListener(
        [this](BitFlags<unsigned int> const &, BitFlags<unsigned int> const &newFlags) {
            if (newFlags.isFlag(FINISHED))
                qt::run_in_Gui_Thread([this] { listenerFinished.fireEvent(); }, 0);
            if (newFlags.isFlag(RUNNING))
                qt::run_in_Gui_Thread([this] { listenerStarted.fireEvent(); }, 0);
        });
}

} // namespace orv
