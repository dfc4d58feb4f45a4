// PointIterator.cpp: the iterator over a vector of points.
#include "orv/PointIterator.h"

#include "orv/Log.h"
#include "orv/XError.h"

namespace orv {

PointIterator2::~PointIterator2() = default;

PointIteratorByArray::PointIteratorByArray(std::vector<Vector2> *ar) : ar(ar) {
    ORV_ASSERT_PTR(ar);
}

Vector2 PointIteratorByArray::firstPoint() const {
    if (ar->empty()) {
        ppDebug("PointIteratorByArray::firstPoint, out of bound");
        return {};
    }
    return ar->front();
}

Vector2 PointIteratorByArray::lastPoint() const {
    if (ar->empty()) {
        ppDebug("PointIteratorByArray::lastPoint, out of bound");
        return {};
    }
    return ar->back();
}

Vector2 PointIteratorByArray::nextPoint() {
    if (index >= ar->size()) {
        ppDebug("PointIteratorByArray::nextPoint, out of bound");
        return {};
    }
    return (*ar)[index++];
}

} // namespace orv
