// XThread.h: the library's threads, with their state in a watchable AtomicBits word.
//
//   class Poller : public orv::XThread {
//       void run() override { while (isRunning()) { poll(); break_sleep(100); } }
//   };
//   Poller p;  p.start();  ...  p.stopJoin();   // stop is cooperative: run reads isRunning()
//
// XLightweightThread is the pool form (a QRunnable, see XThreadPool.h); BaseThreadState
// is a state word for objects that are no thread.
#pragma once

#include "orv/AtomicBits.h"

#include <QtCore/QRunnable>
#include <QtCore/QThread>

#include <mutex>

namespace orv {

// The kernel's id of the calling thread.
ORV_EXPORT unsigned int getCurrentThreadID();

class ORV_EXPORT AbstractThread {
public:
    enum : unsigned int { INITIALIZED = 1, RUNNING = 2, FINISHED = 4, JOINED = 8 };

    AbstractThread();
    virtual ~AbstractThread();
    // The set flags as "{INITIALIZED | RUNNING}".
    virtual QString toString() const;

    bool isInitialized() const { return flagBits.isFlag(INITIALIZED); }
    bool isRunning() const { return flagBits.isFlag(RUNNING); }
    bool isFinished() const { return flagBits.isFlag(FINISHED); }
    bool isJoined() const { return flagBits.isFlag(JOINED); }
    void setInitialized(bool on) { flagBits.setFlag(INITIALIZED, on); }
    void setRunning(bool on) { flagBits.setFlag(RUNNING, on); }
    void setFinished(bool on) { flagBits.setFlag(FINISHED, on); }
    void setJoined(bool on) { flagBits.setFlag(JOINED, on); }
    AtomicBits &bits() { return flagBits; }

    // Sleeps up to ms in steps of 10 ms, returning early once running is cleared.
    void break_sleep(unsigned int ms);

private:
    AtomicBits flagBits;
};

class HelperThread;

// Start, stop and stopJoin are serialised per object; join takes no lock. The
// destructor neither stops nor joins: the owner must, before it goes.
class ORV_EXPORT XThread : public AbstractThread {
public:
    XThread();
    // "XTHREAD [<thread id>]".
    QString toString() const override;
    ~XThread() override;
    // Does nothing while a run is under way or a finished run wasn't joined.
    virtual void start();
    // Clears running; run() has to look at isRunning() itself.
    virtual void stop();
    // Waits for a run that is no longer running and frees its thread, so the
    // object can start again; returns at once while running is set.
    virtual void join();
    virtual void stopJoin();
    unsigned int threadID() const { return threadId; }

protected:
    virtual void run();
    // Called on the thread after the flags say finished.
    virtual void afterRun();

private:
    friend class HelperThread;
    XAtomic<unsigned int> threadId{0};
    HelperThread *helper = nullptr;
    std::mutex mutex;
};

// The QThread under an XThread.
class ORV_EXPORT HelperThread : public QThread {
public:
    explicit HelperThread(XThread *owner);
    // Set as the very last step of run(), for the joiner to read.
    bool isDone() const { return done.load(std::memory_order_acquire); }

protected:
    void run() override;

private:
    XThread *owner;
    std::atomic<bool> done{false};
};

// A thread object for a pool. Its listeners run on the GUI thread when the
// word says started or finished (enableListener and prepareListener switch that on).
class ORV_EXPORT XLightweightThread : public QRunnable, public AbstractThread {
public:
    XLightweightThread();
    ~XLightweightThread() override;
    // Makes a finished object ready for the pool again (with auto-delete off).
    virtual void reuse();

    void enableListener(bool on);
    void prepareListener(bool enable);

    XEventListener<void()> listenerStarted;
    XEventListener<void()> listenerFinished;

    // Marks the hand-over to a pool thread; the pool calls it before starting this object.
    void publish() { inPool.store(true, std::memory_order_release); }
    // True before the first start and once run() has returned: the pool is done with
    // the object (auto-delete off), which may now be reused or destroyed.
    bool isHandedBack() const { return !inPool.load(std::memory_order_acquire); }

protected:
    virtual void runCustom();

private:
    void run() override;

    unsigned int listenerKey = 0;
    std::atomic<bool> inPool{false};
};

class ORV_EXPORT BaseThreadState : public AtomicBits {
public:
    enum : unsigned int { INITIALIZED = 2, RUNNING = 4, CANCELLED = 8, ERROR = 16, FINISHED = 32 };

    bool is_initialized() const { return isFlag(INITIALIZED); }
    bool is_running() const { return isFlag(RUNNING); }
    bool is_cancelled() const { return isFlag(CANCELLED); }
    bool is_error() const { return isFlag(ERROR); }
    bool is_finished() const { return isFlag(FINISHED); }
    void set_initialized(bool on) { setFlag(INITIALIZED, on); }
    void set_running(bool on) { setFlag(RUNNING, on); }
    void set_cancelled(bool on) { setFlag(CANCELLED, on); }
    void set_error(bool on) { setFlag(ERROR, on); }
    void set_finished(bool on) { setFlag(FINISHED, on); }
    using AtomicBits::reset_flags;
    void reset_flags() { resetFlags(); }

    // The words of the set flags ("RUNNING | ") in the order initialized, running,
    // finished, error, cancelled, through format_toString_arguments.
    static QString bit_flags_as_string(AtomicBits const &bits);
    QString toString() const { return bit_flags_as_string(*this); }
};

class ORV_EXPORT BaseThread : public BaseThreadState {
public:
    // Sleeps up to ms in steps of 10 ms, returning early once running (4) is cleared.
    void sleep_breakable(unsigned int ms);
    static void wait_for_all(int ms);
};

} // namespace orv
