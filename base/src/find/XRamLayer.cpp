// XRamLayer.cpp: a layer's marks: merging, lookups, the active mark, and showing them
// with their text.
#include "orv/XRam.h"

#include "orv/Log.h"
#include "orv/XLineReaderDA.h"

#include <algorithm>

namespace orv::find {

void XRamLayer::add_ram_layer(XRamLayer const &o) {
    arMarkRam.insert(arMarkRam.end(), o.arMarkRam.begin(), o.arMarkRam.end());
}

void XRamLayer::merge_ramLayer(XRamLayer const &o) {
    size_t const before = arMarkRam.size();
    for (XRam const &mark : o.arMarkRam) {
        auto const last = arMarkRam.begin() + static_cast<std::ptrdiff_t>(before);
        bool const known =
            std::any_of(arMarkRam.begin(), last, [&](XRam const &m) { return m.isEquals(mark); });
        if (!known)
            arMarkRam.push_back(mark);
    }
}

void XRamLayer::remove_mark(int category) {
    auto const it = std::find_if(arMarkRam.begin(), arMarkRam.end(),
                                 [&](XRam const &m) { return m.category == category; });
    if (it != arMarkRam.end())
        arMarkRam.erase(it);
}

XRam *XRamLayer::mark_by_category(int category) {
    for (XRam &mark : arMarkRam)
        if (mark.category == category)
            return &mark;
    return nullptr;
}

XRam const *XRamLayer::mark_by_category(int category) const {
    return const_cast<XRamLayer *>(this)->mark_by_category(category);
}

XRam &XRamLayer::get_mark_paragraph() {
    static XRam invalid;
    if (XRam *mark = mark_by_category(XRam::CATEGORY_PARAGRAPH))
        return *mark;
    ppError("XRamLayer::get_mark_paragraph, NOT VALID");
    invalid = XRam(); // a caller may have written to it
    return invalid;
}

int XRamLayer::index_mark_from_position(unsigned int pos) const {
    for (size_t i = 0; i < arMarkRam.size(); ++i)
        if (arMarkRam[i].isInRange(static_cast<int>(pos)))
            return static_cast<int>(i);
    return -1;
}

XRam *XRamLayer::mark_from_position(unsigned int pos) {
    int const i = index_mark_from_position(pos);
    return i < 0 ? nullptr : &arMarkRam[static_cast<size_t>(i)];
}

XRam *XRamLayer::active_mark() {
    int const i = active_mark_index();
    return i < 0 ? nullptr : &arMarkRam[static_cast<size_t>(i)];
}

int XRamLayer::active_mark_index() const {
    for (size_t i = 0; i < arMarkRam.size(); ++i)
        if (arMarkRam[i].active)
            return static_cast<int>(i);
    return -1;
}

void XRamLayer::clear_active_mark() {
    if (XRam *mark = active_mark())
        mark->active = false;
}

void XRamLayer::set_active_mark_first() {
    if (arMarkRam.empty()) {
        ppError("XRamLayer::set_active_mark_first, arMarkRam.size() == 0");
        return;
    }
    arMarkRam.front().active = true;
}

void XRamLayer::set_active_mark_last() {
    if (arMarkRam.empty()) {
        ppError("XRamLayer::set_active_mark_last, arMarkRam.size() == 0");
        return;
    }
    arMarkRam.back().active = true;
}

void XRamLayer::set_active_mark_index(unsigned int i) {
    if (i >= arMarkRam.size()) {
        ppError("XRamLayer::set_active_mark_index, index >= arMarkRam.size, $ > $", i,
                static_cast<qint64>(arMarkRam.size()));
        return;
    }
    arMarkRam[i].active = true;
}

void XRamLayer::move_active_mark_index(bool backward) {
    int const i = active_mark_index();
    if (i < 0)
        return;
    arMarkRam[static_cast<size_t>(i)].active = false;
    int const last = static_cast<int>(arMarkRam.size()) - 1;
    int const next = backward ? std::max(i - 1, 0) : std::min(i + 1, last);
    arMarkRam[static_cast<size_t>(next)].active = true;
}

unsigned int XRamLayer::color_background() const {
    return arMarkRam.empty() ? XRam::COLOR_BG_DEFAULT : arMarkRam.front().colour;
}

void XRamLayer::set_color_background(unsigned int colour) {
    for (XRam &mark : arMarkRam)
        mark.colour = colour;
}

void XRamLayer::adapt_layers_order() {
    std::sort(arMarkRam.begin(), arMarkRam.end(),
              [](XRam const &a, XRam const &b) { return a.category > b.category; });
}

QString XRamLayer::toString() const {
    return xprintF("id:$, size():$", id, static_cast<qint64>(arMarkRam.size()));
}

void XRamLayer::showInfo(unsigned int indent, bool withText) const {
    ppInfo(indent, "XRamLayer:$", static_cast<qint64>(arMarkRam.size()));
    for (size_t n = 0; n < arMarkRam.size(); ++n) {
        XRam const &mark = arMarkRam[n];
        if (!withText || !lineReader) {
            ppInfo(indent, "[$] = $", static_cast<qint64>(n), mark.asShortForm());
            continue;
        }
        XLineInfo const li = lineReader->lineInfoAtRamPos(mark.start);
        QString const line = lineReader->lineAtRamPos(mark.start);
        auto const chars = [&](int pos) {
            qint64 const bytes = qint64(pos) - qint64(li.posMemory);
            return bytes <= 0 ? 0 : XLineInfo::get_UTF8_Chars_CountFromBytes(line, unsigned(bytes));
        };
        int const c1 = chars(mark.start), c2 = chars(mark.end);
        QString const text = xprintF("$[$]$", line.left(c1), line.mid(c1, qMax(0, c2 - c1)),
                                     c2 < 0 ? QString() : line.mid(c2));
        ppInfo(indent, "[$] = $ <<<$>>>", static_cast<qint64>(n), mark.asShortForm(), text);
    }
}

} // namespace orv::find
