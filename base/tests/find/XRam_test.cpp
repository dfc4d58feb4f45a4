// XRam_test.cpp: marks, layers with their active mark, and the layer group with its
// listeners, also fired while another thread registers listeners.
#include "orv/XRam.h"

#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace orv;
using namespace orv::find;

namespace {

XRam mark(int start, int end, int category = XRam::SEARCH_RESULT) {
    XRam m;
    m.start = start;
    m.end = end;
    m.category = category;
    return m;
}

XRamLayer layerOf(std::initializer_list<XRam> marks) {
    XRamLayer layer;
    for (XRam const &m : marks)
        layer.add_mark(m);
    return layer;
}

} // namespace

TEST(XRam, ValidityRangesAndTextForms) {
    EXPECT_FALSE(XRam().isValid());
    EXPECT_FALSE(mark(0, 0).isValid()); // end must be at least 1
    EXPECT_TRUE(mark(0, 1).isValid());
    XRam const m = mark(3, 8);
    EXPECT_EQ(m.len(), 5);
    EXPECT_EQ(m.toString(), "{  id:10, start:3, end:8, len:6 }");
    EXPECT_EQ(m.asShortForm(), "{ 3/8=6 }");
    EXPECT_EQ(mark(3, 8, XRam::SEARCH_RESULT_NOT).asShortForm(), "{ NOT - 3/8=6 }");
    EXPECT_EQ(XRam().toString(), "{ id:10, status NOT VALID }");
    EXPECT_EQ(XRam().asShortForm(), "{}");
    EXPECT_TRUE(m.isInRange(8));
    EXPECT_TRUE(m.contains_range(3, 8));
    EXPECT_FALSE(m.contains_range(2, 8));
    XLineInfo li;
    li.posMemory = 8;
    li.setLengths(4, 5);
    EXPECT_TRUE(m.intersects(li));
    li.posMemory = 9;
    EXPECT_FALSE(m.intersects(li));
    EXPECT_TRUE(mark(0, 20).intersects(li)); // the line lies inside the mark
}

TEST(XRamLayer, MergeAddsOnlyStretchesNotHeldBefore) {
    XRamLayer layer = layerOf({mark(0, 5, XRam::CATEGORY_WORD)});
    layer.merge_ramLayer(layerOf({mark(0, 5), mark(6, 7), mark(6, 7)}));
    ASSERT_EQ(layer.size(), 3u); // category doesn't count; repeats within o all stay
    EXPECT_EQ(layer[1].start, 6);
    EXPECT_EQ(layer.index_mark_from_position(7), 1);
    EXPECT_EQ(layer.mark_from_position(100), nullptr);
    layer.add_ram_layer(layerOf({mark(0, 5)}));
    EXPECT_EQ(layer.size(), 4u);
    layer.add_mark(mark(1, 2, XRam::CATEGORY_PARAGRAPH));
    layer.adapt_layers_order();
    EXPECT_EQ(layer[0].category, XRam::CATEGORY_PARAGRAPH);
    EXPECT_EQ(layer.get_mark_paragraph().start, 1);
    layer.remove_mark(XRam::CATEGORY_PARAGRAPH);
    EXPECT_FALSE(layer.contains_mark_paragraph());
    EXPECT_EQ(test::linesLoggedBy([&] { EXPECT_FALSE(layer.get_mark_paragraph().isValid()); }),
              std::vector<QString>{"XRamLayer::get_mark_paragraph, NOT VALID"});
}

TEST(XRamLayer, ActiveMarkStepsAndStopsAtTheEnds) {
    XRamLayer layer = layerOf({mark(0, 1), mark(2, 3), mark(4, 5)});
    EXPECT_FALSE(layer.has_active_mark_index());
    layer.set_active_mark_index(0);
    layer.set_active_mark_index(2);
    EXPECT_EQ(layer.active_mark(), &*layer.begin()); // the first of two active marks
    layer.clear_active_mark();
    EXPECT_EQ(layer.active_mark_index(), 2);
    layer.move_active_mark_index(false);
    EXPECT_EQ(layer.active_mark_index(), 2);
    layer.move_active_mark_index(true);
    layer.move_active_mark_index(true);
    layer.move_active_mark_index(true);
    EXPECT_EQ(layer.active_mark_index(), 0);
    std::vector<QString> const logged = test::linesLoggedBy([&] {
        layer.set_active_mark_index(3);
        XRamLayer().set_active_mark_first();
        XRamLayer().set_active_mark_last();
    });
    EXPECT_EQ(logged, (std::vector<QString>{
                          "XRamLayer::set_active_mark_index, index >= arMarkRam.size, 3 > 3",
                          "XRamLayer::set_active_mark_first, arMarkRam.size() == 0",
                          "XRamLayer::set_active_mark_last, arMarkRam.size() == 0"}));
    EXPECT_EQ(XRamLayer().color_background(), XRam::COLOR_BG_DEFAULT);
    layer.set_color_background(0xFF000000u);
    EXPECT_EQ(layer.color_background(), 0xFF000000u);
}

TEST(XRamLayerGroup, AddsLayersOnceTellsListenersAndClears) {
    XRamLayerGroup group;
    std::vector<int> heard;
    group.addListener([&](int id) { heard.push_back(id); });
    group.add_layer(7, false).add_mark(mark(0, 1));
    XRamLayer &again = group.add_layer(7, false);
    again.add_mark(mark(0, 1));
    EXPECT_NE(&again, &group.layer_by_ID(7)); // detached, not part of the group
    EXPECT_EQ(group.size(), 1u);
    group.add_layer(3, true);
    EXPECT_EQ(heard, (std::vector<int>{7, 3}));
    EXPECT_EQ(group.layers()[0].id_layer(), 3u);
    group.clear(-1);
    EXPECT_EQ(group.size(), 2u);
    EXPECT_FALSE(group.layer_by_ID(7).isValid());
    EXPECT_EQ(test::linesLoggedBy([&] { group.layer_by_ID(9); }),
              std::vector<QString>{"XRamLayerGroup::layer_by_ID, id:9 not found"});
}

// One thread owns the layers and adds them; another registers listeners meanwhile.
TEST(XRamLayerGroup, ListenersMayBeAddedWhileAnotherThreadFires) {
    XRamLayerGroup group;
    std::atomic<int> calls{0};
    std::thread owner([&] {
        for (unsigned int id = 0; id < 200; ++id)
            group.add_layer(id, false);
    });
    std::thread registrar([&] {
        for (int i = 0; i < 50; ++i)
            group.addListener([&](int) { ++calls; });
    });
    owner.join();
    registrar.join();
    EXPECT_EQ(group.size(), 200u);
    int const before = calls;
    group.add_layer(1000, false);
    EXPECT_EQ(calls - before, 50);
}
