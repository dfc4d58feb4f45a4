// AtomicBits_test.cpp: the flag word's quirky comparisons, part setters and notification levels.
#include "orv/AtomicBits.h"
#include "orv/XThread.h"

#include "support/Test.h"

#include <atomic>
#include <thread>
#include <vector>

namespace orv {
namespace {

using Flags = BitFlags<unsigned int>;
using Changes = std::vector<std::pair<unsigned int, unsigned int>>;

// What the change list, the GUI list and the info callback of one word were told.
struct Recorder {
    Changes changes, infos;
    std::vector<unsigned int> gui;

    explicit Recorder(AtomicBits &bits) {
        bits.listenerChange().addListener([this](Flags const &oldFlags, Flags const &newFlags) {
            changes.emplace_back(oldFlags.flags(), newFlags.flags());
        });
        bits.listenerGui().addListener([this](AtomicBits &b) { gui.push_back(b.flags()); });
        bits.setInfoCallBack([this](unsigned int o, unsigned int n) { infos.emplace_back(o, n); });
    }
};

TEST(AtomicBits, EqualityMeansAnyBitOfTheMaskAndBoolIsAlwaysFalse) {
    struct Row {
        unsigned int word, mask;
        bool equal;
    } const rows[] = {{6, 2, true}, {6, 1, false}, {6, 0, false},
                      {6, 5, true}, {0, 0, false}, {0xffffffffu, 1, true}};
    for (Row const &row : rows) {
        SCOPED_TRACE(testing::Message() << row.word << " vs " << row.mask);
        AtomicBits bits(row.word);
        EXPECT_EQ(bits == row.mask, row.equal);
        EXPECT_EQ(bits != row.mask, !row.equal);
        EXPECT_EQ(bits.isFlag(row.mask), row.equal);
        EXPECT_FALSE(static_cast<bool>(bits));
        EXPECT_EQ(bits.isZeroFlags(), row.word == 0);
        EXPECT_EQ(static_cast<unsigned int>(bits), row.word);
    }
    AtomicBits const halves(0x00020003);
    EXPECT_EQ(halves.lowPart(), 3u);
    EXPECT_EQ(halves.highPart(), 2u);
    EXPECT_EQ(halves.toString(), "00000000 00000010 00000000 00000011, (low:3,high:2)");
}

TEST(AtomicBits, EachSetterGivesItsWordAndTellsItsOwnListsAndTheCallback) {
    struct Row {
        char const *name;
        unsigned int word, after;
        bool emitOn;
        void (*op)(AtomicBits &);
        Changes changes, infos;
        std::vector<unsigned int> gui; // on the GUI thread the GUI list runs synchronously
    } const rows[] = {
        // clang-format off
        {"+= emit off", 1, 3, false, [](AtomicBits &b) { b += 2; }, {}, {}, {}},
        {"+=", 3, 7, true, [](AtomicBits &b) { b += 4; }, {{3, 7}}, {{3, 7}}, {7}},
        {"-=", 7, 6, true, [](AtomicBits &b) { b -= 1; }, {{7, 6}}, {{7, 6}}, {6}},
        {"toggle", 6, 14, true, [](AtomicBits &b) { EXPECT_TRUE(b.toggleFlag(8)); },
         {{6, 14}}, {{6, 14}}, {14}},
        {"disabled change list", 0, 1, true,
         [](AtomicBits &b) { b.listenerChange().enable(false); b.setFlag(1, true); },
         {}, {{0, 1}}, {1}},
        // The older layer chooses its lists whatever the emit flag says.
        {"set_flag unchanged", 1, 1, true, [](AtomicBits &b) { b.set_flag(1, true, true, true); },
         {{1, 1}}, {}, {}},
        {"set_flag any case", 1, 1, true, [](AtomicBits &b) { b.set_flag(1, true, false, false); },
         {}, {}, {1}},
        {"reset_flags", 1, 0, false, [](AtomicBits &b) { b.reset_flags(true); }, {{1, 0}}, {}, {0}},
        {"set_flags", 0, 0x30, false, [](AtomicBits &b) { b.set_flags(0x30, true); },
         {{0, 0x30}}, {{0, 0x30}}, {0x30}},
        {"bit 33 is bit 1", 0, 2, false,
         [](AtomicBits &b) { EXPECT_EQ(b.setBitNumber(33, true, false), 2u); },
         {}, {}, {}},
        {"bit number off", 2, 0, false,
         [](AtomicBits &b) { EXPECT_EQ(b.setBitNumber(1, false, false), 0u); },
         {}, {}, {}},
        // The part setters tell the callback only; the high one adds to a half that isn't empty.
        {"setHighPart emit off", 0x10003, 0x30003, false, [](AtomicBits &b) { b.setHighPart(2); },
         {}, {}, {}},
        {"setLowPart", 0x50003, 7, true, [](AtomicBits &b) { b.setLowPart(7); },
         {}, {{0x50003, 7}}, {}},
        // clang-format on
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        AtomicBits bits(row.word);
        Recorder rec(bits);
        bits.setEmitChanges(row.emitOn);
        row.op(bits);
        EXPECT_EQ(bits.flags(), row.after);
        EXPECT_EQ(rec.changes, row.changes);
        EXPECT_EQ(rec.infos, row.infos);
        EXPECT_EQ(rec.gui, row.gui);
    }
}

TEST(AtomicBits, CopyHasNoListenersMoveCarriesThem) {
    AtomicBits bits(5);
    bits.setEmitChanges(true);
    Recorder rec(bits);
    AtomicBits copy(bits);
    EXPECT_EQ(copy.flags(), 5u);
    EXPECT_TRUE(copy.isEmitChanges());
    EXPECT_EQ(copy.listenerChange().size(), 0u);
    EXPECT_EQ(copy.listenerGui().size(), 0u);
    EXPECT_FALSE(copy.infoCallBack());

    AtomicBits moved(std::move(bits));
    EXPECT_EQ(bits.flags(), 0u);
    EXPECT_FALSE(bits.isEmitChanges());
    EXPECT_EQ(moved.flags(), 5u);
    moved += 2;
    EXPECT_EQ(rec.changes.size(), 1u);
    EXPECT_EQ(rec.gui, std::vector<unsigned int>{7});
    AtomicBits assigned;
    assigned = std::move(moved);
    assigned -= 1;
    EXPECT_EQ(rec.changes.size(), 2u);
    EXPECT_EQ(moved.listenerChange().size(), 0u);
}

TEST(AtomicBits, ChangeFromWorkerRunsChangeListThereAndGuiListOnMainThread) {
    AtomicBits bits;
    bits.setEmitChanges(true);
    unsigned int const mainId = getCurrentThreadID();
    std::atomic<unsigned int> changeThread{0}, guiThread{0}, guiWord{0};
    bits.listenerChange().addListener(
        [&](Flags const &, Flags const &) { changeThread = getCurrentThreadID(); });
    bits.listenerGui().addListener([&](AtomicBits &b) {
        guiWord = b.flags();
        guiThread = getCurrentThreadID();
    });
    std::thread([&bits] { bits += 0x40; }).join();
    EXPECT_NE(changeThread.load(), mainId);
    EXPECT_EQ(guiThread.load(), 0u); // posted, not yet delivered
    ASSERT_TRUE(test::pumpEventsUntil([&] { return guiThread != 0; }));
    EXPECT_EQ(guiThread.load(), mainId);
    EXPECT_EQ(guiWord.load(), 0x40u);
}

TEST(AtomicBits, TransactionIsSilentAndReportsTheNetChangeOnce) {
    AtomicBits bits(1);
    bits.setEmitChanges(true);
    Recorder rec(bits);
    if (TransactionAtomicBits t{bits}) {
        bits += 2;
        bits += 4;
        EXPECT_FALSE(bits.isEmitChanges());
    }
    EXPECT_TRUE(bits.isEmitChanges());
    EXPECT_TRUE(rec.changes.empty());
    EXPECT_TRUE(rec.gui.empty());
    EXPECT_EQ(rec.infos, (Changes{{1, 7}}));
    { TransactionAtomicBits unchanged{bits}; }
    EXPECT_EQ(rec.infos.size(), 1u);
}

} // namespace
} // namespace orv
