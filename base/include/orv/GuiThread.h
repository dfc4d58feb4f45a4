// GuiThread.h: which thread is the GUI thread, and how work gets there.
//
//   orv::qt::run_in_Gui_Thread([] { window.refresh(); }, 0);
//   if (orv::qt::is_Gui_Thread()) ...
//
// The GUI thread is the one that owns the application object; without one,
// every thread counts as the GUI thread.
#pragma once

#include "orv/OrvGlobal.h"

#include <functional>

namespace orv::qt {

ORV_EXPORT bool is_Gui_Thread();

// Kernel::runInGui with the delay widened. On the GUI thread: at once (msWait 0)
// or after msWait by a single-shot timer. From any other thread: posted to the
// application object as a kernel event and run at the next turn of its loop,
// msWait dropped; the caller doesn't wait. Only a kernel application (Kernel.h)
// runs those events. An empty f runs nothing and logs its ERROR line.
ORV_EXPORT void run_in_Gui_Thread(std::function<void()> f, unsigned int msWait);

} // namespace orv::qt
