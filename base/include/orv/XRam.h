// XRam.h: marks on a text in memory, by byte position. XRam is one marked stretch,
// XRamLayer a list of marks that belong together (one search result, a selection)
// with one active mark to step through, XRamLayerGroup several layers by id.
//
//   orv::find::XRamLayer hits = filter.find(0, reader);
//   hits.set_active_mark_first();
//   hits.move_active_mark_index(false);                // to the next hit
#pragma once

#include "orv/XEventListener.h"
#include "orv/XLineInfo.h"

#include <QtCore/QString>

#include <vector>

namespace orv {

class XLineReaderDA;

namespace find {

// Positions are 32-bit: marks reach into the first 2 GiB of a file.
struct ORV_EXPORT XRam {
    static constexpr unsigned int COLOR_BG_DEFAULT = 0xFF73D216;
    enum Category {
        SEARCH_RESULT = 10,
        SEARCH_RESULT_NOT = 11,
        CATEGORY_CHAR = 20,
        CATEGORY_WORD = 30,
        CATEGORY_LINE = 40,
        CATEGORY_SENTENCE = 45,
        CATEGORY_PARAGRAPH = 50,
    };

    int start = -1; // first marked byte
    int end = -1;   // behind the last byte, for search results
    unsigned int colour = COLOR_BG_DEFAULT;
    bool active = false;
    int category = SEARCH_RESULT;

    bool isValid() const { return start >= 0 && end >= 1; }
    explicit operator bool() const { return isValid(); }
    void reset() { start = end = -1; }
    void setInvalid() { reset(); }
    int len() const { return end - start; }
    bool isInRange(int pos) const { return start <= pos && pos <= end; }
    bool contains_range(quint64 a, quint64 b) const {
        return isInRange(static_cast<int>(a)) && isInRange(static_cast<int>(b));
    }
    bool intersects(XLineInfo const &li) const;
    bool is_category(int c) const { return category == c; }
    bool is_search_result() const { return category == SEARCH_RESULT; }
    bool is_search_result_NOT() const { return category == SEARCH_RESULT_NOT; }
    bool is_category_char() const { return category == CATEGORY_CHAR; }
    bool is_category_word() const { return category == CATEGORY_WORD; }
    bool is_category_line() const { return category == CATEGORY_LINE; }
    bool is_category_sentence() const { return category == CATEGORY_SENTENCE; }
    bool is_category_paragraph() const { return category == CATEGORY_PARAGRAPH; }
    // Marks are the same stretch when start and end agree; colour and category don't count.
    bool isEquals(XRam const &o) const { return start == o.start && end == o.end; }
    bool operator!=(XRam const &o) const { return !isEquals(o); }
    void set_mark_contents(XRam const &o) {
        start = o.start;
        end = o.end;
        colour = o.colour;
    }
    // Both give len as end - start + 1.
    QString toString() const;
    QString asShortForm() const;
};

// A plain value without locks. The reader pointer serves showInfo only.
class ORV_EXPORT XRamLayer {
public:
    XRamLayer() = default;

    bool isValid() const { return !arMarkRam.empty(); }
    explicit operator bool() const { return isValid(); }
    size_t size() const { return arMarkRam.size(); }
    std::vector<XRam>::iterator begin() { return arMarkRam.begin(); }
    std::vector<XRam>::iterator end() { return arMarkRam.end(); }
    std::vector<XRam>::const_iterator begin() const { return arMarkRam.begin(); }
    std::vector<XRam>::const_iterator end() const { return arMarkRam.end(); }
    std::vector<XRam> const &marks() const { return arMarkRam; }
    XRam const &operator[](size_t i) const { return arMarkRam[i]; }

    void add_mark(XRam const &mark) { arMarkRam.push_back(mark); }
    void add_ram_layer(XRamLayer const &o);
    // Adds the marks of o whose stretch this layer didn't hold before the call.
    void merge_ramLayer(XRamLayer const &o);
    void clear() { arMarkRam.clear(); }
    void remove_mark(int category);
    bool contains_mark(int category) const { return mark_by_category(category) != nullptr; }
    bool contains_mark_line() const { return contains_mark(XRam::CATEGORY_LINE); }
    bool contains_mark_paragraph() const { return contains_mark(XRam::CATEGORY_PARAGRAPH); }
    XRam *mark_by_category(int category);
    XRam const *mark_by_category(int category) const;
    XRam &get_mark_paragraph();
    int index_mark_from_position(unsigned int pos) const;
    XRam *mark_from_position(unsigned int pos);

    XRam *active_mark();
    int active_mark_index() const;
    bool has_active_mark_index() const { return active_mark_index() >= 0; }
    void clear_active_mark();
    void set_active_mark_first();
    void set_active_mark_last();
    void set_active_mark_index(unsigned int i);
    // One step forward or back; stops at the ends.
    void move_active_mark_index(bool backward);

    unsigned int color_background() const;
    void set_color_background(unsigned int colour);
    // By category, descending: paragraphs first, hits last. Not stable.
    void adapt_layers_order();

    unsigned int id_layer() const { return id; }
    void set_id_layer(unsigned int i) { id = i; }
    bool is_id_layer(unsigned int i) const { return id == i; }
    bool is_enabled() const { return enabled; }
    void set_enabled(bool on) { enabled = on; }
    bool is_binary_file() const { return binary; }
    void set_binary_file(bool on) { binary = on; }
    XLineReaderDA const *reader() const { return lineReader; }
    void set_reader(XLineReaderDA const *r) { lineReader = r; }

    QString toString() const;
    void showInfo(unsigned int indent, bool withText) const;

private:
    XLineReaderDA const *lineReader = nullptr;
    std::vector<XRam> arMarkRam;
    unsigned int id = 0;
    bool enabled = true;
    bool binary = false;
};

// Layers by id over one text; listeners hear of each layer added. The listener list
// is locked while listeners run, so a listener must not add a layer to its group.
// References to layers don't survive the next add_layer.
class ORV_EXPORT XRamLayerGroup : public XEventListener<void(int)> {
public:
    // A new layer; an id already present gives a detached empty layer and no event.
    XRamLayer &add_layer(unsigned int id, bool sort);
    XRamLayer &layer_by_ID(unsigned int id);
    bool contains_layer(unsigned int id) const;
    // -1 empties all layers.
    void clear(int id);
    size_t size() const { return layerList.size(); }
    std::vector<XRamLayer> &layers() { return layerList; }
    std::vector<XRamLayer> const &layers() const { return layerList; }
    void sort_layer();
    void show(unsigned int indent) const;

private:
    std::vector<XRamLayer> layerList;
};

} // namespace find
} // namespace orv
