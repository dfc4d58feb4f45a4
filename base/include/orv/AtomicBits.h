// AtomicBits.h: the library's 32-bit flag word that tells about its changes.
//
//   orv::AtomicBits state;
//   state.setEmitChanges(true);
//   state.listenerGui().addListener([](orv::AtomicBits &bits) { show(bits.flags()); });
//   state += 4;                       // change list now, GUI list on the GUI thread
//   if (state == 6) ...               // true when bit 2 or bit 4 is set: "any bit", not equality
//
// Three levels of notification: the change list and the info callback run on
// the thread that changed the word and see every change; the GUI list is posted
// to the GUI thread and sees the word as it is when it runs. Also here: the
// blocking AtomicBitsWatcher and the silent scope TransactionAtomicBits.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XEventListener.h"

#include <QtCore/QString>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace orv {

// A flag word by value: the parameter form of the change list.
template <typename T> class BitFlags {
public:
    BitFlags(T flags = 0) : word(flags) {}
    T flags() const { return word; }
    bool isFlag(T mask) const { return (word & mask) != 0; }
    bool isZeroFlags() const { return word == 0; }
    bool operator==(BitFlags const &other) const { return word == other.word; }
    bool operator!=(BitFlags const &other) const { return word != other.word; }

private:
    T word;
};

class ORV_EXPORT AtomicBits {
public:
    using InfoCallBack = std::function<void(unsigned int oldFlags, unsigned int newFlags)>;
    using ChangeListener = XEventListener<void(BitFlags<unsigned int> const &oldFlags,
                                               BitFlags<unsigned int> const &newFlags)>;
    using GuiListener = XEventListener<void(AtomicBits &)>;

    AtomicBits(unsigned int flags = 0);
    // Copies take the word and the emit flag, never the listeners or the callback.
    AtomicBits(AtomicBits const &other);
    AtomicBits &operator=(AtomicBits const &other);
    // Moves carry the word, the emit flag and both lists; the source keeps 0 and no emit.
    AtomicBits(AtomicBits &&other);
    AtomicBits &operator=(AtomicBits &&other);

    // Without notification.
    AtomicBits &operator=(unsigned int flags);
    // Any bit of mask is set: no test of equality.
    bool operator==(unsigned int mask) const { return isFlag(mask); }
    bool operator!=(unsigned int mask) const { return !isFlag(mask); }
    bool isFlag(unsigned int mask) const { return (word.load() & mask) != 0; }
    unsigned int flags() const { return word.load(); }
    operator unsigned int() const { return word.load(); }
    // Always false, whatever the word holds: ask isZeroFlags() instead.
    explicit operator bool() const { return false; }
    bool isZeroFlags() const { return word.load() == 0; }
    unsigned short lowPart() const { return static_cast<unsigned short>(word.load() & 0xffff); }
    unsigned short highPart() const { return static_cast<unsigned short>(word.load() >> 16); }

    void setEmitChanges(bool on) { emitChanges = on; }
    bool isEmitChanges() const { return emitChanges; }
    // Unguarded: set it before other threads touch the word.
    void setInfoCallBack(InfoCallBack callBack) { infoCall = std::move(callBack); }
    InfoCallBack infoCallBack() const { return infoCall; }

    ChangeListener &listenerChange() { return changeList; }
    GuiListener &listenerGui() { return guiList; }

    // With notification, when the emit flag is on: change list, GUI list, callback.
    bool setFlag(unsigned int mask, bool on);
    void delFlag(unsigned int mask) { setFlag(mask, false); }
    AtomicBits &operator+=(unsigned int mask);
    AtomicBits &operator-=(unsigned int mask);
    bool toggleFlag(unsigned int mask);
    void resetFlags();

    // The older layer: the caller chooses what is told, whatever the emit flag says.
    bool set_flag(unsigned int mask, bool on, bool doEmit, bool onlyIfChanged);
    bool toggle_flag(unsigned int mask, bool doEmit);
    void set_flags(unsigned int value, bool doEmit);
    unsigned int setBitNumber(unsigned int bit, bool on, bool doEmit);
    void reset_flags(bool doEmit);

    // Tell only the callback (with the emit flag on). setHighPart adds the value
    // shifted into the high half, so it expects that half to be empty.
    void setHighPart(unsigned short value);
    void setLowPart(unsigned short value);

    // Posts a firing of the GUI list; this object must outlive the posted call.
    void fireEventToGuiThread();

    QString toString() const;

private:
    // Replaces the word by change(old) and returns the old word.
    template <typename Change> unsigned int update(Change change);
    unsigned int changeMask(unsigned int mask, bool on);
    void fireChanges(unsigned int oldFlags, unsigned int newFlags);
    void callInfo(unsigned int oldFlags, unsigned int newFlags);

    InfoCallBack infoCall;
    ChangeListener changeList;
    GuiListener guiList;
    XAtomic<unsigned int> word;
    XAtomic<bool> emitChanges{false};
};

// Blocking waits for flags. Every change and wait pairs up under one mutex, so
// no wake-up is lost.
class ORV_EXPORT AtomicBitsWatcher {
public:
    AtomicBitsWatcher(unsigned int flags = 0);
    virtual ~AtomicBitsWatcher();

    unsigned int get_flags() const;
    bool is_flag(unsigned int mask) const;
    // Wakes every waiter, changed or not.
    void set_flag(unsigned int mask, bool on);
    // These two wake only if the word changed.
    void set_flags(unsigned int value);
    void set_bit_number(unsigned int bit, bool on);

    // Returns when the word differs from the one at the call; stop() doesn't end it.
    void wait_stateChange();
    // As above, false once ms passed with the word unchanged.
    bool wait_stateChange(unsigned long ms);
    // Returns when a bit of mask is set or stop() was called.
    void wait_until_bit_is_set(unsigned int mask);
    // As above; true only if a bit of mask is set at the return.
    bool wait_until_bit_is_set(unsigned int mask, unsigned long ms);

    void stop();
    // Clears the stop mark and the word, silently and without a wake.
    void reset();
    bool is_running() const { return !atomicFlagStop; }
    std::mutex &get_mutex() { return mutex; }
    QString toString() const;

private:
    AtomicBits bits;
    XAtomic<bool> atomicFlagStop{false};
    mutable std::mutex mutex;
    std::condition_variable condition;
};

// Mutes a word for a scope; at the end the callback hears the net change once.
//
//   if (orv::TransactionAtomicBits t{bits}) { bits += 1; bits += 2; }
class ORV_EXPORT TransactionAtomicBits {
public:
    explicit TransactionAtomicBits(AtomicBits &bits);
    ~TransactionAtomicBits();
    TransactionAtomicBits(TransactionAtomicBits const &) = delete;
    TransactionAtomicBits &operator=(TransactionAtomicBits const &) = delete;
    // Always true, so that the transaction can head an if.
    explicit operator bool() const { return true; }

private:
    AtomicBits &bits;
    bool savedEmit;
    unsigned int savedFlags;
};

// Sleeps in steps of stepMs until ms passed or flag turns true; may overrun by one step.
ORV_EXPORT void xSleep_breakable(quint64 ms, XAtomic<bool> const &flag);
ORV_EXPORT void xSleep_breakable(quint64 ms, XAtomic<bool> const &flag, quint64 stepMs);

} // namespace orv
