// PointIterator.h: a walk over the points of a polygon, whatever holds them.
//
//   std::vector<orv::Vector2> ring = {{0, 0}, {4, 0}, {0, 3}};
//   orv::PointIteratorByArray it(&ring);             // not owned; must outlive it
//   while (it.hasMorePoints()) use(it.nextPoint());
#pragma once

#include "orv/Vector.h"

#include <cstddef>
#include <vector>

namespace orv {

class ORV_EXPORT PointIterator2 {
public:
    virtual ~PointIterator2();
    virtual bool hasMorePoints() const = 0;
    // The two ends, without moving.
    virtual Vector2 firstPoint() const = 0;
    virtual Vector2 lastPoint() const = 0;
    // The point at the position, which then advances.
    virtual Vector2 nextPoint() = 0;
    virtual void reset() = 0;
    virtual size_t size() const = 0;
};

// Out of range gives (0, 0) with a DEBUG line "PointIteratorByArray::<slot>, out of bound".
class ORV_EXPORT PointIteratorByArray : public PointIterator2 {
public:
    // A null array asserts "ar == NULL".
    explicit PointIteratorByArray(std::vector<Vector2> *ar);

    bool hasMorePoints() const override { return index < ar->size(); }
    Vector2 firstPoint() const override;
    Vector2 lastPoint() const override;
    Vector2 nextPoint() override;
    void reset() override { index = 0; }
    size_t size() const override { return ar->size(); }

private:
    std::vector<Vector2> *ar;
    size_t index = 0;
};

} // namespace orv
