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

// On the GUI thread: at once (msWait 0) or after msWait by a single-shot timer.
// From any other thread: posted to the GUI thread's event loop and run at its
// next turn, msWait dropped; the caller doesn't wait.
ORV_EXPORT void run_in_Gui_Thread(std::function<void()> f, unsigned int msWait);

} // namespace orv::qt
