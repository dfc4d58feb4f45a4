// XTimeStats.cpp: the table of time slots, sorted copies of it and its listing.
#include "orv/XTimeStats.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XStringStream.h"
#include "orv/XThread.h"

#include "tools/thread/QtMutexLock.h"

#include <algorithm>

namespace orv {

XAtomic<bool> XTimeStats::atomicFlagEnabled{true};

XTimeStats::XTimeStats(unsigned int maxSlots) : maxSlots(maxSlots) { slotTable.reserve(maxSlots); }

XTimeStats *XTimeStats::getInstance() {
    static XTimeStats global(0x10000);
    return &global;
}

XTimeSlot_Impl &XTimeStats::dummy() {
    static XTimeSlot_Impl slot;
    return slot;
}

XTimeSlot XTimeStats::start_slot(QString const &msg) { return getInstance()->startSlot(msg); }

XTimeSlot XTimeStats::startSlot(QString const &msg) { return XTimeSlot(startSlotImpl(msg)); }

XTimeSlot_Impl *XTimeStats::startSlotImpl(QString const &msg) {
    XTimeSlot_Impl *slot = createSlotImpl();
    slot->setMessage(slot == &dummy() ? QStringLiteral("DUMMY-LOOP") : msg);
    slot->start();
    return slot;
}

XTimeSlot_Impl *XTimeStats::createSlotImpl() {
    if (!atomicFlagEnabled)
        return &dummy();
    // A thread keeps its id: asking the kernel once per thread spares a system call per slot.
    thread_local unsigned int const thread = getCurrentThreadID();
    {
        QtMutexLock lock(&mutex);
        // Appending below the reserved capacity never moves the slots handed out.
        if (countSlots != maxSlots) {
            slotTable.emplace_back();
            XTimeSlot_Impl &slot = slotTable.back();
            slot.number = countSlots.load();
            slot.threadID = Logger::isMainThread(thread) ? 0 : thread;
            countSlots.fetchAdd(1);
            return &slot;
        }
    }
    // Logged outside the lock, so that the table never waits for the logger.
    ppWarning("XTimeStats::createSlotImpl - maximum Slots size_range is:$", maxSlots.load());
    return &dummy();
}

XTimeSlot XTimeStats::chain_slot(XTimeSlot &previous, QString const &msg) {
    QString text = msg;
    if (text.isEmpty())
        text = previous->messageEnd();
    if (text.isEmpty())
        text = previous->messageBegin();
    XTimeSlot_Impl::SLOT::SLOT_TYPE const type = previous->getSlotType();
    // Stopped whatever its state: one already stopped says so in its line.
    previous->stop();
    XTimeSlot next = start_slot(text);
    next->setSlotType(type);
    return next;
}

void XTimeStats::clear() {
    QtMutexLock lock(&mutex);
    slotTable.clear();
    slotTable.reserve(maxSlots);
    countSlots = 0;
}

void XTimeStats::setMaxSlots(unsigned int newMax) {
    QtMutexLock lock(&mutex);
    slotTable.clear();
    maxSlots = newMax;
    slotTable.reserve(newMax);
    countSlots = 0;
}

std::vector<XTimeSlot_Impl> XTimeStats::getSortedSlotsCopy(SORT::SORT_TYPE sort,
                                                           bool ascending) const {
    std::vector<XTimeSlot_Impl> copy;
    {
        QtMutexLock lock(&mutex);
        copy = slotTable;
    }
    auto sortBy = [&copy, ascending](auto key) {
        std::sort(copy.begin(), copy.end(),
                  [&key, ascending](XTimeSlot_Impl const &a, XTimeSlot_Impl const &b) {
                      return ascending ? key(a) < key(b) : key(b) < key(a);
                  });
    };
    switch (sort) {
    case SORT::NUMBER: sortBy([](XTimeSlot_Impl const &s) { return s.getNumber(); }); break;
    case SORT::THREAD: sortBy([](XTimeSlot_Impl const &s) { return s.getThreadID(); }); break;
    case SORT::DELTA_TIME: sortBy([](XTimeSlot_Impl const &s) { return s.delta(); }); break;
    case SORT::TYPE_SLOT:
        sortBy([](XTimeSlot_Impl const &s) { return static_cast<int>(s.getSlotType()); });
        break;
    }
    return copy;
}

std::vector<QString> XTimeStats::getSortedStringArray(quint64 &total, SORT::SORT_TYPE sort) const {
    std::vector<XTimeSlot_Impl> const sorted = getSortedSlotsCopy(sort, true);
    total = getSumOfDeltas(sorted);
    std::vector<QString> lines;
    lines.reserve(sorted.size());
    for (XTimeSlot_Impl const &slot : sorted)
        lines.push_back(slot.toString(total));
    return lines;
}

quint64 XTimeStats::getSumOfDeltas(std::vector<XTimeSlot_Impl> const &list) {
    quint64 sum = 0;
    for (XTimeSlot_Impl const &slot : list)
        sum += slot.delta();
    return sum;
}

void XTimeStats::show(unsigned int space, SORT::SORT_TYPE sort) const {
    quint64 total = 0;
    std::vector<QString> const lines = getSortedStringArray(total, sort);
    ppDebug(space, "XTimeSlots:$, sorted by $", lines.size(), sortTypeToString(sort));
    for (QString const &line : lines)
        ppDebug(space + 4, line);
    ppDebug(space, "XTimeSlots, deltas total:$", formatMicrosecond_as_Sec(total));
}

void XTimeStats::show_slots(unsigned int space, SORT::SORT_TYPE sort) {
    getInstance()->show(space, sort);
}

QString XTimeStats::toString() const {
    quint64 total = 0;
    std::vector<QString> const lines = getSortedStringArray(total, SORT::NUMBER);
    QStringList text{xprintF("$ timeSlots", lines.size())};
    for (QString const &line : lines)
        text << line;
    return text.join('\n');
}

QString XTimeStats::sortTypeToString(SORT::SORT_TYPE sort) {
    switch (sort) {
    case SORT::NUMBER: return QStringLiteral("NUMBER");
    case SORT::THREAD: return QStringLiteral("THREAD");
    case SORT::DELTA_TIME: return QStringLiteral("DELTA_TIME");
    case SORT::TYPE_SLOT: return QStringLiteral("TYPE_SLOT");
    }
    return xprintF("SORT-UNKNOWN:$", static_cast<int>(sort));
}

} // namespace orv
