// AtomicBits_test.cpp: the flag word's quirky comparisons, part setters and notification levels.
#include "orv/AtomicBits.h"
#include "orv/XThread.h"

#include "support/EventPump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace orv {
namespace {

using Flags = BitFlags<unsigned int>;

struct Recorder {
    std::vector<std::pair<unsigned int, unsigned int>> changes;
    std::vector<std::pair<unsigned int, unsigned int>> infos;
    std::vector<unsigned int> gui;

    void attach(AtomicBits &bits) {
        bits.listenerChange().addListener([this](Flags const &oldFlags, Flags const &newFlags) {
            changes.emplace_back(oldFlags.flags(), newFlags.flags());
        });
        bits.listenerGui().addListener([this](AtomicBits &b) { gui.push_back(b.flags()); });
        bits.setInfoCallBack([this](unsigned int o, unsigned int n) { infos.emplace_back(o, n); });
    }
};

TEST(AtomicBits, EqualityOperatorsMeanAnyBitOfTheMask) {
    struct Row {
        unsigned int word, mask;
        bool equal;
    } const rows[] = {{6, 2, true}, {6, 1, false}, {6, 0, false}, {6, 5, true}, {0, 0, false}};
    for (Row const &row : rows) {
        AtomicBits bits(row.word);
        EXPECT_EQ(bits == row.mask, row.equal) << row.word << " == " << row.mask;
        EXPECT_EQ(bits != row.mask, !row.equal) << row.word << " != " << row.mask;
        EXPECT_EQ(bits.isFlag(row.mask), row.equal);
    }
}

TEST(AtomicBits, BoolConversionIsFalseWhateverTheWord) {
    for (unsigned int word : {0u, 1u, 0xffffffffu}) {
        AtomicBits bits(word);
        EXPECT_FALSE(static_cast<bool>(bits));
        EXPECT_EQ(bits.isZeroFlags(), word == 0);
        EXPECT_EQ(static_cast<unsigned int>(bits), word);
    }
}

TEST(AtomicBits, PartSettersAndBitNumbers) {
    AtomicBits low(0x00050003);
    low.setLowPart(7);
    EXPECT_EQ(low.flags(), 0x00000007u);

    AtomicBits high(0x00010003);
    high.setHighPart(2); // adds: the high half was not empty
    EXPECT_EQ(high.flags(), 0x00030003u);
    EXPECT_EQ(high.highPart(), 3u);
    EXPECT_EQ(high.lowPart(), 3u);

    AtomicBits numbered;
    EXPECT_EQ(numbered.setBitNumber(33, true, false), 2u);
    EXPECT_EQ(numbered.setBitNumber(1, false, false), 0u);
}

TEST(AtomicBits, TextShowsBitsAndBothHalves) {
    EXPECT_EQ(AtomicBits(0x00020003).toString(),
              "00000000 00000010 00000000 00000011, (low:3,high:2)");
}

TEST(AtomicBits, SetFlagTellsChangeListGuiListAndCallbackOnlyWithEmitOn) {
    AtomicBits bits(1);
    Recorder rec;
    rec.attach(bits);
    bits += 2;
    EXPECT_TRUE(rec.changes.empty());
    EXPECT_TRUE(rec.infos.empty());

    bits.setEmitChanges(true);
    bits += 4;
    bits -= 1;
    EXPECT_EQ(bits.toggleFlag(8), true);
    using P = std::pair<unsigned int, unsigned int>;
    std::vector<P> const expected{{3, 7}, {7, 6}, {6, 14}};
    EXPECT_EQ(rec.changes, expected);
    EXPECT_EQ(rec.infos, expected);
    // On the GUI thread the GUI list runs synchronously.
    EXPECT_EQ(rec.gui, (std::vector<unsigned int>{7, 6, 14}));
}

TEST(AtomicBits, DisabledChangeListStillReachesGuiListAndCallback) {
    AtomicBits bits;
    Recorder rec;
    rec.attach(bits);
    bits.setEmitChanges(true);
    bits.listenerChange().enable(false);
    bits.setFlag(1, true);
    EXPECT_TRUE(rec.changes.empty());
    EXPECT_EQ(rec.gui, std::vector<unsigned int>{1});
    EXPECT_EQ(rec.infos.size(), 1u);
}

TEST(AtomicBits, OlderLayerChoosesItsListsWhateverTheEmitFlag) {
    AtomicBits bits(1);
    Recorder rec;
    rec.attach(bits);
    bits.setEmitChanges(true);

    bits.set_flag(1, true, true, true); // unchanged: change list yes, GUI list no
    EXPECT_EQ(rec.changes.size(), 1u);
    EXPECT_TRUE(rec.gui.empty());
    bits.set_flag(1, true, false, false); // GUI list in any case
    EXPECT_EQ(rec.changes.size(), 1u);
    EXPECT_EQ(rec.gui.size(), 1u);
    EXPECT_TRUE(rec.infos.empty()); // set_flag never calls the callback

    bits.reset_flags(true);
    EXPECT_EQ(rec.changes.back(), std::make_pair(1u, 0u));
    EXPECT_TRUE(rec.infos.empty());
    bits.set_flags(0x30, true);
    EXPECT_EQ(rec.infos.back(), std::make_pair(0u, 0x30u));
}

TEST(AtomicBits, PartSettersTellTheCallbackOnly) {
    AtomicBits bits(0x00010003);
    Recorder rec;
    rec.attach(bits);
    bits.setHighPart(2);
    EXPECT_TRUE(rec.infos.empty()); // emit flag off
    bits.setEmitChanges(true);
    bits.setLowPart(9);
    EXPECT_EQ(rec.infos, (std::vector<std::pair<unsigned int, unsigned int>>{{0x30003, 9}}));
    EXPECT_TRUE(rec.changes.empty());
    EXPECT_TRUE(rec.gui.empty());
}

TEST(AtomicBits, CopyHasNoListenersMoveCarriesThem) {
    AtomicBits bits(5);
    bits.setEmitChanges(true);
    Recorder rec;
    rec.attach(bits);

    AtomicBits copy(bits);
    EXPECT_EQ(copy.flags(), 5u);
    EXPECT_TRUE(copy.isEmitChanges());
    EXPECT_EQ(copy.listenerChange().size(), 0u);
    EXPECT_EQ(copy.listenerGui().size(), 0u);
    copy += 8;
    EXPECT_TRUE(rec.changes.empty());

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

    std::thread worker([&bits] { bits += 0x40; });
    worker.join();
    EXPECT_NE(changeThread.load(), mainId);
    EXPECT_EQ(guiThread.load(), 0u); // posted, not yet delivered
    ASSERT_TRUE(test::pumpEventsUntil([&] { return guiThread != 0; }));
    EXPECT_EQ(guiThread.load(), mainId);
    EXPECT_EQ(guiWord.load(), 0x40u);
}

TEST(AtomicBits, TransactionIsSilentAndReportsTheNetChangeOnce) {
    AtomicBits bits(1);
    bits.setEmitChanges(true);
    Recorder rec;
    rec.attach(bits);
    if (TransactionAtomicBits t{bits}) {
        bits += 2;
        bits += 4;
        EXPECT_FALSE(bits.isEmitChanges());
    }
    EXPECT_TRUE(bits.isEmitChanges());
    EXPECT_TRUE(rec.changes.empty());
    EXPECT_TRUE(rec.gui.empty());
    EXPECT_EQ(rec.infos, (std::vector<std::pair<unsigned int, unsigned int>>{{1, 7}}));

    { TransactionAtomicBits unchanged{bits}; }
    EXPECT_EQ(rec.infos.size(), 1u);
}

} // namespace
} // namespace orv
