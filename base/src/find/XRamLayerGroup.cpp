// XRamLayerGroup.cpp: layers by id, and the event that a layer was added.
#include "orv/XRam.h"

#include "orv/Log.h"

#include <algorithm>

namespace orv::find {

XRamLayer &XRamLayerGroup::add_layer(unsigned int id, bool sort) {
    static XRamLayer detached;
    if (contains_layer(id)) {
        detached = XRamLayer(); // a caller may have filled it
        return detached;
    }
    XRamLayer layer;
    layer.set_id_layer(id);
    layerList.push_back(layer);
    if (sort)
        sort_layer();
    fireEvent(static_cast<int>(id));
    return layer_by_ID(id);
}

XRamLayer &XRamLayerGroup::layer_by_ID(unsigned int id) {
    static XRamLayer none;
    for (XRamLayer &layer : layerList)
        if (layer.is_id_layer(id))
            return layer;
    ppError("XRamLayerGroup::layer_by_ID, id:$ not found", id);
    none = XRamLayer();
    return none;
}

bool XRamLayerGroup::contains_layer(unsigned int id) const {
    return std::any_of(layerList.begin(), layerList.end(),
                       [&](XRamLayer const &layer) { return layer.is_id_layer(id); });
}

void XRamLayerGroup::clear(int id) {
    for (XRamLayer &layer : layerList) {
        if (id == -1) {
            layer.clear();
        } else if (layer.is_id_layer(static_cast<unsigned int>(id))) {
            layer.clear();
            return;
        }
    }
}

void XRamLayerGroup::sort_layer() {
    std::sort(layerList.begin(), layerList.end(),
              [](XRamLayer const &a, XRamLayer const &b) { return a.id_layer() < b.id_layer(); });
}

void XRamLayerGroup::show(unsigned int indent) const {
    ppInfo(indent, "XRamLayerGroup:$", static_cast<qint64>(layerList.size()));
    for (XRamLayer const &layer : layerList)
        ppInfo(indent, "layer:$", layer.toString());
}

} // namespace orv::find
