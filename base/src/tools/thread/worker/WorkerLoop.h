// WorkerLoop.h: the loop both workers run (private to the library): the job over and
// over while there is one, asleep on the watcher while there is none, until the run
// flag falls.
#pragma once

#include "orv/AtomicBits.h"
#include "orv/Log.h"
#include "orv/XAtomic.h"

namespace orv::worker_internal {

struct LoopTexts {
    char const *start;
    char const *afterStateChange;
    // Null: no line after a round of the job.
    char const *afterWork;
    char const *end;
};

// takeJob() gives the job as it is now (read under the worker's mutex); runJob(job)
// runs one round of it.
//
// How the watcher word is armed: setWorker and stopThread set the word to 1, and a
// set only wakes a sleeper when it changes the word. So the loop sets it back to 0
// before it goes to sleep, and only then looks at the job and the run flag once more:
// a setWorker or stopThread that came before the 0 is seen by that second look, one
// that comes after it changes the word and ends the wait. The word thus goes 0 on
// every idle pass, and idle, working, idle, working again, stopped all wake the loop.
// The wait asks for the bit rather than for a change from the word it finds, because
// a 1 set between the arming and the wait must count too.
template <typename TakeJob, typename RunJob>
void runLoop(XAtomic<bool> const &flagRun, XAtomic<bool> const &flagDebug,
             AtomicBitsWatcher &watcher, LoopTexts const &texts, TakeJob takeJob, RunJob runJob) {
    if (flagDebug)
        ppDebug(texts.start);
    while (flagRun) {
        if (auto job = takeJob()) {
            runJob(job);
            if (flagDebug && texts.afterWork)
                ppDebug(texts.afterWork);
            continue;
        }
        watcher.set_flags(0);
        if (!flagRun || takeJob())
            continue;
        watcher.wait_until_bit_is_set(1);
        if (flagDebug)
            ppDebug(texts.afterStateChange);
    }
    if (flagDebug)
        ppDebug(texts.end);
}

} // namespace orv::worker_internal
