// AtomicBits.cpp: the flag word's changes and their three levels of notification.
#include "orv/AtomicBits.h"

#include "orv/GuiThread.h"
#include "orv/Log.h"
#include "orv/StringFormat.h"

namespace orv {

namespace {

unsigned int withMask(unsigned int flags, unsigned int mask, bool on) {
    return on ? flags | mask : flags & ~mask;
}

} // namespace

AtomicBits::AtomicBits(unsigned int flags) : word(flags) {}

AtomicBits::AtomicBits(AtomicBits const &other)
    : word(other.word.load()), emitChanges(other.emitChanges.load()) {}

AtomicBits &AtomicBits::operator=(AtomicBits const &other) {
    word = other.word.load();
    emitChanges = other.emitChanges.load();
    return *this;
}

AtomicBits::AtomicBits(AtomicBits &&other)
    : word(other.word.exchange(0)), emitChanges(other.emitChanges.exchange(false)) {
    changeList.takeListenersFrom(other.changeList);
    guiList.takeListenersFrom(other.guiList);
}

AtomicBits &AtomicBits::operator=(AtomicBits &&other) {
    if (&other == this)
        return *this;
    word = other.word.exchange(0);
    emitChanges = other.emitChanges.exchange(false);
    changeList.takeListenersFrom(other.changeList);
    guiList.takeListenersFrom(other.guiList);
    return *this;
}

AtomicBits &AtomicBits::operator=(unsigned int flags) {
    word = flags;
    return *this;
}

template <typename Change> unsigned int AtomicBits::update(Change change) {
    unsigned int oldFlags = word.load();
    while (!word.compareExchange(oldFlags, change(oldFlags))) {
    }
    return oldFlags;
}

unsigned int AtomicBits::changeMask(unsigned int mask, bool on) {
    return update([mask, on](unsigned int flags) { return withMask(flags, mask, on); });
}

void AtomicBits::fireChanges(unsigned int oldFlags, unsigned int newFlags) {
    changeList.fireEvent(BitFlags<unsigned int>(oldFlags), BitFlags<unsigned int>(newFlags));
    fireEventToGuiThread();
}

void AtomicBits::callInfo(unsigned int oldFlags, unsigned int newFlags) {
    if (emitChanges && infoCall)
        infoCall(oldFlags, newFlags);
}

bool AtomicBits::setFlag(unsigned int mask, bool on) {
    unsigned int const oldFlags = changeMask(mask, on);
    if (emitChanges) {
        unsigned int const newFlags = withMask(oldFlags, mask, on);
        fireChanges(oldFlags, newFlags);
        callInfo(oldFlags, newFlags);
    }
    return on;
}

AtomicBits &AtomicBits::operator+=(unsigned int mask) {
    setFlag(mask, true);
    return *this;
}

AtomicBits &AtomicBits::operator-=(unsigned int mask) {
    setFlag(mask, false);
    return *this;
}

bool AtomicBits::toggleFlag(unsigned int mask) { return setFlag(mask, !isFlag(mask)); }

void AtomicBits::resetFlags() {
    unsigned int const oldFlags = word.exchange(0);
    if (emitChanges) {
        fireChanges(oldFlags, 0);
        callInfo(oldFlags, 0);
    }
}

bool AtomicBits::set_flag(unsigned int mask, bool on, bool doEmit, bool onlyIfChanged) {
    unsigned int const oldFlags = changeMask(mask, on);
    unsigned int const newFlags = withMask(oldFlags, mask, on);
    if (doEmit)
        changeList.fireEvent(BitFlags<unsigned int>(oldFlags), BitFlags<unsigned int>(newFlags));
    if (onlyIfChanged) {
        if (oldFlags != newFlags)
            fireEventToGuiThread();
    } else {
        ppDebug(4, "AtomicBits::set_flag - fire in gui thread");
        fireEventToGuiThread();
    }
    return on;
}

bool AtomicBits::toggle_flag(unsigned int mask, bool doEmit) {
    return set_flag(mask, !isFlag(mask), doEmit, false);
}

void AtomicBits::set_flags(unsigned int value, bool doEmit) {
    unsigned int const oldFlags = word.exchange(value);
    if (doEmit) {
        fireChanges(oldFlags, value);
        if (infoCall)
            infoCall(oldFlags, value);
    }
}

unsigned int AtomicBits::setBitNumber(unsigned int bit, bool on, bool doEmit) {
    unsigned int const mask = 1u << (bit & 31);
    unsigned int const oldFlags = changeMask(mask, on);
    unsigned int const newFlags = withMask(oldFlags, mask, on);
    callInfo(oldFlags, newFlags);
    if (doEmit) {
        changeList.fireEvent(BitFlags<unsigned int>(oldFlags), BitFlags<unsigned int>(newFlags));
        ppTest("EMIT ?");
        fireEventToGuiThread();
    }
    return newFlags;
}

void AtomicBits::reset_flags(bool doEmit) {
    unsigned int const oldFlags = word.exchange(0);
    if (doEmit)
        fireChanges(oldFlags, 0);
}

void AtomicBits::setHighPart(unsigned short value) {
    unsigned int const oldFlags = update(
        [value](unsigned int flags) { return (static_cast<unsigned int>(value) << 16) + flags; });
    callInfo(oldFlags, (static_cast<unsigned int>(value) << 16) + oldFlags);
}

void AtomicBits::setLowPart(unsigned short value) {
    unsigned int const oldFlags = word.exchange(value);
    callInfo(oldFlags, value);
}

void AtomicBits::fireEventToGuiThread() {
    // Nobody to tell: spare the post (and the object's duty to outlive it).
    if (guiList.size() == 0)
        return;
    qt::run_in_Gui_Thread([this] { guiList.fireEvent(*this); }, 0);
}

QString AtomicBits::toString() const {
    unsigned int const flags = word.load();
    return xprintF("$, (low:$,high:$)", bitsToString(flags, true), flags & 0xffff, flags >> 16);
}

TransactionAtomicBits::TransactionAtomicBits(AtomicBits &bits)
    : bits(bits), savedEmit(bits.isEmitChanges()), savedFlags(bits.flags()) {
    bits.setEmitChanges(false);
}

TransactionAtomicBits::~TransactionAtomicBits() {
    bits.setEmitChanges(savedEmit);
    unsigned int const flags = bits.flags();
    AtomicBits::InfoCallBack const callBack = bits.infoCallBack();
    if (savedEmit && flags != savedFlags && callBack)
        callBack(savedFlags, flags);
}

} // namespace orv
