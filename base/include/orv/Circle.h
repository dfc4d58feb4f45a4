// Circle.h: a circle in the plane with the cap sizes its users store beside it.
//
//   orv::Circle c;
//   c.setRadius(1);                  // also sets getPiDiameterRatio() to PI / 2
#pragma once

#include "orv/Vector.h"

namespace orv {

class ORV_EXPORT Circle {
public:
    Circle() = default;
    Circle(Vector2 const &center, float radius) : center(center) { setRadius(radius); }

    Vector2 const &getCenter() const { return center; }
    void setCenter(Vector2 const &c) { center = c; }
    float getRadius() const { return radius; }
    void setRadius(float r) {
        radius = r;
        computePiDiameterRatio();
    }
    float getCapRadius() const { return capRadius; }
    void setCapRadius(float r) { capRadius = r; }
    float getCapHeight() const { return capHeight; }
    void setCapHeight(float h) { capHeight = h; }
    float getPiDiameterRatio() const { return piDiameterRatio; }
    // PI / (2 * radius), stored and returned; a zero radius gives infinity.
    float computePiDiameterRatio() { return piDiameterRatio = GMath::PI / (2.0f * radius); }

    QString toString() const;

private:
    Vector2 center;
    float radius = 0.0f, capRadius = 0.0f, capHeight = 0.0f, piDiameterRatio = 0.0f;
};

} // namespace orv
