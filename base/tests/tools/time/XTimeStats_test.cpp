// XTimeStats_test.cpp: slots on private tables and the global one: list lines, the
// scope guard, chaining, sorting, the full and the disabled table, and many threads.
#include "orv/XTimeStats.h"

#include "orv/OrvTime.h"

#include "support/Test.h"

#include <set>
#include <thread>

using orv::XTimeSlot;
using orv::XTimeSlot_Impl;
using orv::XTimeStats;
using SLOT = XTimeSlot_Impl::SLOT;
using SORT = XTimeStats::SORT;

namespace {

QStringList fieldsOf(QString const &line) { return line.split(", "); }

std::vector<unsigned int> numbersOf(std::vector<XTimeSlot_Impl> const &all) {
    std::vector<unsigned int> numbers;
    for (XTimeSlot_Impl const &slot : all)
        numbers.push_back(slot.getNumber());
    return numbers;
}

} // namespace

TEST(XTimeSlot_Impl, NamesSlotTypesPaddedAndPlain) {
    struct Row {
        int type;
        char const *padded, *plain;
    };
    Row const rows[] = {
        // clang-format off
        {0, "STANDARD", "STANDARD"}, {1, "____READ", "READ"}, {2, "___WRITE", "WRITE"},
        {3, "____CALC", "CALC"}, {4, "__CREATE", "CREATE"}, {5, "___PARSE", "PARSE"},
        {6, "_CONVERT", "CONVERT"}, {7, "_____GUI", "GUI"}, {8, "__OPENGL", "OPENGL"},
        {9, "_TESTING", "TESTING"}, {10, "___SLEEP", "SLEEP"}, {11, "UNKNOWN-SLOT:11", "SLOT:11 ?"},
        {-1, "UNKNOWN-SLOT:-1", "SLOT:-1 ?"},
    }; // clang-format on
    for (Row const &row : rows) {
        auto const type = static_cast<SLOT::SLOT_TYPE>(row.type);
        EXPECT_EQ(XTimeSlot_Impl::slotTypeToString(type), row.padded);
        EXPECT_EQ(XTimeSlot_Impl::slot_type_to_string(type), row.plain);
    }
    std::pair<int, char const *> const sorts[] = {
        {0, "NUMBER"}, {1, "THREAD"}, {2, "DELTA_TIME"}, {3, "TYPE_SLOT"}, {4, "SORT-UNKNOWN:4"}};
    for (auto const &[sort, text] : sorts)
        EXPECT_EQ(XTimeStats::sortTypeToString(static_cast<SORT::SORT_TYPE>(sort)), text);
}

TEST(XTimeSlot_Impl, LineShowsStateShareAndPlaceholders) {
    orv::test::startCapturingLogger(); // makes this thread the main one: thread id 0
    XTimeStats table(8);
    XTimeSlot_Impl *valid = table.startSlotImpl("load");
    valid->setType_READ();
    orv::xSleep(2);
    valid->stop();
    XTimeSlot_Impl *running = table.startSlotImpl("");
    XTimeSlot_Impl *idle = table.createSlotImpl();

    quint64 const delta = valid->delta();
    ASSERT_GT(delta, 0u);
    QStringList const line = fieldsOf(valid->toString(4 * delta));
    ASSERT_EQ(line.size(), 8) << line.join("|").toStdString();
    EXPECT_EQ(line[0], "000");
    EXPECT_EQ(line[1], "000000");
    EXPECT_EQ(line[2], "____READ");
    EXPECT_EQ(line[3].size(), 15); // hh:mm:ss.uuuuuu
    EXPECT_TRUE(line[4].startsWith("delta:") && line[4].endsWith(" sec"));
    EXPECT_EQ(line[5], "25,000 %");
    EXPECT_EQ(line[6], "load");
    EXPECT_EQ(line[7], "~");
    EXPECT_EQ(fieldsOf(valid->toString(0))[5], "??,000 %");

    EXPECT_EQ(fieldsOf(running->toString(1)).mid(4),
              (QStringList{"RUNNING" + QString(22, ' '), "*", "~"}));
    EXPECT_EQ(
        fieldsOf(idle->toString(1)),
        (QStringList{"002", "000000", "STANDARD", "SLOT-NOT-VALID" + QString(32, ' '), "*", "~"}));
}

TEST(XTimeSlot_Impl, WrongStartsAndStopsLogAndKeepTheFirstMeasurement) {
    XTimeStats table(4);
    XTimeSlot_Impl *slot = table.startSlotImpl("twice");
    slot->stop();
    quint64 const stopped = slot->getStopwatch().getTimeStop();
    EXPECT_EQ(orv::test::linesLoggedBy([&] { slot->start(); }),
              std::vector<QString>{"XTimeSlot_Impl::start_global, already started!, msg 'twice'"});
    EXPECT_EQ(orv::test::linesLoggedBy([&] { slot->stop(); }),
              std::vector<QString>{"XTimeSlot_Impl::stop, already stopped!"});
    EXPECT_EQ(slot->getStopwatch().getTimeStop(), stopped);

    XTimeSlot_Impl *never = table.createSlotImpl();
    EXPECT_EQ(orv::test::linesLoggedBy([&] { never->stop(); }),
              std::vector<QString>{"XStopwatch::stop - not started before"});
    EXPECT_FALSE(never->isValid());
    EXPECT_EQ(never->delta(), 0u);
}

TEST(XTimeSlot, HandleStopsItsSlotOnceAndMovedFromHandleHoldsNone) {
    XTimeStats table(4);
    XTimeSlot_Impl *impl = nullptr;
    std::vector<QString> const lines = orv::test::linesLoggedBy([&] {
        XTimeSlot outer(nullptr);
        {
            XTimeSlot slot = table.startSlot("scope");
            impl = slot.operator->();
            XTimeSlot copy = slot; // copies share the slot: only the first to go stops it
            outer = std::move(slot);
            EXPECT_FALSE(slot.isReadyToUse());
            EXPECT_TRUE(static_cast<bool>(slot));
        }
        EXPECT_TRUE(impl->isValid());
    });
    EXPECT_EQ(lines, std::vector<QString>{});
}

TEST(XTimeStats, ChainStopsThePreviousAndCarriesTypeAndMessage) {
    XTimeStats *global = XTimeStats::getInstance();
    global->clear();
    struct Row {
        char const *msg, *previousEnd, *expected;
    };
    Row const rows[] = {{"next", "end", "next"}, {"", "end", "end"}, {"", "", "first"}};
    for (Row const &row : rows) {
        XTimeSlot first = XTimeStats::start_slot("first");
        first->setType_PARSE();
        if (*row.previousEnd) {
            first->setMessageEnd(row.previousEnd); // stops it, too
            EXPECT_TRUE(first->isValid());
        }
        XTimeSlot next(nullptr);
        std::vector<QString> const lines = orv::test::linesLoggedBy(
            [&] { next = XTimeStats::chain_slot(first, row.msg); }, orv::ERROR);
        // An already stopped one is stopped again, and says so.
        EXPECT_EQ(lines, *row.previousEnd
                             ? std::vector<QString>{"XTimeSlot_Impl::stop, already stopped!"}
                             : std::vector<QString>{});
        EXPECT_TRUE(first->isValid());
        EXPECT_TRUE(next->isStartedButNotStopped());
        EXPECT_EQ(next->messageBegin(), row.expected);
        EXPECT_EQ(next->getSlotType(), SLOT::PARSE);
    }
    global->clear();
}

TEST(XTimeStats, SortsCopiesByEachKeyBothWaysAndShowListsThemWithTheirTotal) {
    XTimeStats table(8);
    XTimeSlot_Impl *slow = table.startSlotImpl("slow");
    slow->setType_SLEEP();
    orv::xSleep(30);
    slow->stop();
    table.startSlotImpl("quick")->setType_CALC()->stop();
    table.startSlotImpl("quicker")->setType_GUI()->stop();

    using Numbers = std::vector<unsigned int>;
    EXPECT_EQ(numbersOf(table.getSortedSlotsCopy(SORT::NUMBER, false)), (Numbers{2, 1, 0}));
    EXPECT_EQ(numbersOf(table.getSortedSlotsCopy(SORT::TYPE_SLOT, true)), (Numbers{1, 2, 0}));
    EXPECT_EQ(numbersOf(table.getSortedSlotsCopy(SORT::TYPE_SLOT, false)), (Numbers{0, 2, 1}));
    EXPECT_EQ(numbersOf(table.getSortedSlotsCopy(SORT::DELTA_TIME, false))[0], 0u);
    EXPECT_EQ(numbersOf(table.getSortedSlotsCopy(static_cast<SORT::SORT_TYPE>(9), false)),
              (Numbers{0, 1, 2}));

    quint64 total = 0;
    std::vector<QString> const lines = table.getSortedStringArray(total, SORT::DELTA_TIME);
    EXPECT_EQ(total, XTimeStats::getSumOfDeltas(table.getSortedSlotsCopy(SORT::NUMBER, true)));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(lines[2].startsWith("000, ")) << lines[2].toStdString();
    EXPECT_EQ(XTimeStats::getSumOfDeltas({}), 0u);
    EXPECT_TRUE(table.toString().startsWith("3 timeSlots\n000, "));
    // show lists the count, one line per slot and the total.
    XTimeStats one(4);
    one.startSlotImpl("a")->stop();
    std::vector<QString> const shown = orv::test::linesLoggedBy([&] { one.show(SORT::THREAD); });
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0], "XTimeSlots:1, sorted by THREAD");
    EXPECT_TRUE(shown[1].endsWith(", a, ~"));
    EXPECT_TRUE(shown[2].startsWith("XTimeSlots, deltas total:"));
}

TEST(XTimeStats, FullOrDisabledTableHandsOutTheDummyWarningOnlyWhenFull) {
    XTimeStats table(2);
    XTimeSlot_Impl *first = table.createSlotImpl();
    XTimeSlot_Impl *second = table.createSlotImpl();
    XTimeSlot_Impl *extra[2] = {};
    std::vector<QString> const lines = orv::test::linesLoggedBy([&] {
        extra[0] = table.startSlotImpl("lost");
        extra[1] = table.createSlotImpl();
    });
    QString const warning = "XTimeStats::createSlotImpl - maximum Slots size_range is:2";
    EXPECT_EQ(lines, (std::vector<QString>{warning, warning}));
    EXPECT_EQ(extra[0], extra[1]);
    EXPECT_NE(extra[0], first);
    EXPECT_NE(extra[0], second);
    EXPECT_EQ(extra[0]->messageBegin(), "DUMMY-LOOP");
    EXPECT_EQ(table.getSortedSlotsCopy(SORT::NUMBER, true).size(), 2u);

    table.setMaxSlots(3);
    EXPECT_FALSE(table.hasTimeSlots());
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(table.createSlotImpl(), extra[0]);
    // Disabled statistics use the dummy too, silently.
    XTimeStats *global = XTimeStats::getInstance();
    global->clear();
    XTimeStats::atomicFlagEnabled = false;
    EXPECT_EQ(orv::test::linesLoggedBy([] {
                  for (int i = 0; i < 3; ++i)
                      EXPECT_EQ(XTimeStats::start_slot("off")->messageBegin(), "DUMMY-LOOP");
              }),
              std::vector<QString>{});
    XTimeStats::atomicFlagEnabled = true;
    EXPECT_FALSE(global->hasTimeSlots());
}

TEST(XTimeStats, ThreadsAddSlotsWhileTheTableIsCopied) {
    orv::test::startCapturingLogger();
    XTimeStats table(1000);
    constexpr int threads = 4, perThread = 200;
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t)
        workers.emplace_back([&table] {
            for (int i = 0; i < perThread; ++i) {
                XTimeSlot slot = table.startSlot("work");
                slot->setType_CALC();
            }
        });
    size_t seen = 0;
    while (seen < static_cast<size_t>(threads * perThread))
        seen = table.getSortedSlotsCopy(SORT::DELTA_TIME, true).size();
    for (std::thread &worker : workers)
        worker.join();

    std::vector<XTimeSlot_Impl> const all = table.getSortedSlotsCopy(SORT::NUMBER, true);
    ASSERT_EQ(all.size(), static_cast<size_t>(threads * perThread));
    std::set<unsigned int> ids;
    for (size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i].getNumber(), i);
        EXPECT_TRUE(all[i].isValid());
        EXPECT_NE(all[i].getThreadID(), 0u);
        ids.insert(all[i].getThreadID());
    }
    EXPECT_EQ(ids.size(), static_cast<size_t>(threads));
}
