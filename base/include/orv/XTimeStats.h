// XTimeStats.h: named time slots on a global table, listed at the end of a run with
// each slot's share of the total.
//
//   { orv::XTimeSlot slot = orv::XTimeStats::start_slot("load scene");
//     slot->setType_READ();
//     load(); }                                   // the handle stops the slot here
//   orv::XTimeStats::show_slots(orv::XTimeStats::SORT::DELTA_TIME);
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XStopwatch.h"

#include <QtCore/QMutex>
#include <QtCore/QString>

#include <vector>

namespace orv {

// One measurement. Started once and stopped once: a stopped slot can't run again.
class ORV_EXPORT XTimeSlot_Impl {
public:
    struct SLOT {
        enum SLOT_TYPE {
            STANDARD = 0,
            READ = 1,
            WRITE = 2,
            CALC = 3,
            CREATE = 4,
            PARSE = 5,
            CONVERT = 6,
            GUI = 7,
            OPENGL = 8,
            TESTING = 9,
            SLEEP = 10
        };
    };

    XTimeSlot_Impl() = default;
    // Copies get a mutex of their own.
    XTimeSlot_Impl(XTimeSlot_Impl const &other);
    XTimeSlot_Impl &operator=(XTimeSlot_Impl const &other);

    // A second start logs an error, except on the shared slot of measurements
    // that found no place.
    void start();
    // A second stop logs an error.
    void stop();

    void setMessage(QString const &text);
    // Also stops the slot unless it is stopped already.
    void setMessageEnd(QString const &text);
    QString messageBegin() const;
    QString messageEnd() const;

    SLOT::SLOT_TYPE getSlotType() const;
    XTimeSlot_Impl *setSlotType(SLOT::SLOT_TYPE type);
    XTimeSlot_Impl *setType_STANDARD() { return setSlotType(SLOT::STANDARD); }
    XTimeSlot_Impl *setType_READ() { return setSlotType(SLOT::READ); }
    XTimeSlot_Impl *setType_WRITE() { return setSlotType(SLOT::WRITE); }
    XTimeSlot_Impl *setType_CALC() { return setSlotType(SLOT::CALC); }
    XTimeSlot_Impl *setType_CREATE() { return setSlotType(SLOT::CREATE); }
    XTimeSlot_Impl *setType_PARSE() { return setSlotType(SLOT::PARSE); }
    XTimeSlot_Impl *setType_CONVERT() { return setSlotType(SLOT::CONVERT); }
    XTimeSlot_Impl *setType_GUI() { return setSlotType(SLOT::GUI); }
    XTimeSlot_Impl *setType_OPENGL() { return setSlotType(SLOT::OPENGL); }
    XTimeSlot_Impl *setType_TESTING() { return setSlotType(SLOT::TESTING); }
    XTimeSlot_Impl *setType_SLEEP() { return setSlotType(SLOT::SLEEP); }

    // Microseconds; 0 unless started and stopped.
    quint64 delta() const { return isValid() ? stopwatch.elapsed_time_microSeconds() : 0; }
    bool isValid() const { return flagStarted && flagStopped; }
    bool isStartedButNotStopped() const { return flagStarted && !flagStopped; }

    unsigned int getNumber() const { return number; }
    unsigned int getThreadID() const { return threadID; }
    XStopwatch const &getStopwatch() const { return stopwatch; }

    // One list line; total (microseconds) gives the share.
    QString toString(quint64 total) const;
    void show(unsigned int space) const;

    // Padded with underscores to eight characters, for aligned lists.
    static QString slotTypeToString(SLOT::SLOT_TYPE type);
    static QString slot_type_to_string(SLOT::SLOT_TYPE type);

    static XAtomic<bool> atomicFlagDebug;

private:
    friend class XTimeStats;

    QString message;
    QString messageEndText;
    XAtomic<bool> flagStarted{false};
    XAtomic<bool> flagStopped{false};
    mutable QMutex mutex; // the two texts and the type
    XStopwatch stopwatch;
    XAtomic<unsigned int> threadID{0}; // 0 for the main thread
    XAtomic<unsigned int> number{0};   // place in the table
    SLOT::SLOT_TYPE slotType = SLOT::STANDARD;
};

// The scope guard: stops its slot, if running, when it goes. Copies share the slot;
// a moved-from handle holds none, and operator-> on it is fatal.
class ORV_EXPORT XTimeSlot {
public:
    explicit XTimeSlot(XTimeSlot_Impl *slot) : slot(slot) {}
    XTimeSlot(XTimeSlot const &other) = default;
    XTimeSlot &operator=(XTimeSlot const &other) = default;
    XTimeSlot(XTimeSlot &&other) noexcept;
    XTimeSlot &operator=(XTimeSlot &&other) noexcept;
    virtual ~XTimeSlot();

    XTimeSlot_Impl *operator->() const;
    explicit operator bool() const { return true; }
    bool isReadyToUse() const { return slot != nullptr; }

private:
    XTimeSlot_Impl *slot; // not owned
};

// The table. Its memory is reserved once, so the slots never move and handles stay
// valid while other threads add slots; clear() and setMaxSlots() end every slot and
// leave any handle still out dangling.
class ORV_EXPORT XTimeStats {
public:
    struct SORT {
        enum SORT_TYPE { NUMBER = 0, THREAD = 1, DELTA_TIME = 2, TYPE_SLOT = 3 };
    };

    explicit XTimeStats(unsigned int maxSlots);
    XTimeStats(XTimeStats const &) = delete;
    XTimeStats &operator=(XTimeStats const &) = delete;

    // The global table, with room for 65536 slots.
    static XTimeStats *getInstance();
    static XTimeSlot start_slot(QString const &msg);
    XTimeSlot startSlot(QString const &msg);
    XTimeSlot_Impl *startSlotImpl(QString const &msg);
    // A new slot, not started; when disabled or full, the shared dummy slot (a full
    // table warns each time).
    XTimeSlot_Impl *createSlotImpl();
    // Stops previous (one already stopped logs its ERROR line) and starts the next
    // phase on the global table with previous's type; msg defaults to previous's end
    // text, then to its begin text.
    static XTimeSlot chain_slot(XTimeSlot &previous, QString const &msg);

    void clear();
    void setMaxSlots(unsigned int maxSlots);
    bool hasTimeSlots() const { return countSlots != 0; }

    // A copy, so that listing doesn't hold up measuring. Ties keep no fixed order;
    // an unknown sort leaves the copy in table order.
    std::vector<XTimeSlot_Impl> getSortedSlotsCopy(SORT::SORT_TYPE sort, bool ascending) const;
    // Ascending lines; total receives the sum of all deltas.
    std::vector<QString> getSortedStringArray(quint64 &total, SORT::SORT_TYPE sort) const;
    static quint64 getSumOfDeltas(std::vector<XTimeSlot_Impl> const &list);

    // The list at DEBUG.
    void show(unsigned int space, SORT::SORT_TYPE sort) const;
    void show(SORT::SORT_TYPE sort) const { show(0, sort); }
    static void show_slots(unsigned int space, SORT::SORT_TYPE sort);
    static void show_slots(SORT::SORT_TYPE sort) { show_slots(0, sort); }
    // "N timeSlots", then one line per slot in table order.
    QString toString() const;

    static QString sortTypeToString(SORT::SORT_TYPE sort);

    // Off: every slot goes to the dummy and the table stays as it is.
    static XAtomic<bool> atomicFlagEnabled;

private:
    static XTimeSlot_Impl &dummy();

    mutable QMutex mutex;
    XAtomic<unsigned int> countSlots{0};
    std::vector<XTimeSlot_Impl> slotTable;
    XAtomic<unsigned int> maxSlots;
};

} // namespace orv
