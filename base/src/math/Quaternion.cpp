// Quaternion.cpp: construction from axis and angle, and the text form.
#include "orv/Quaternion.h"

#include "orv/Log.h"

namespace orv {

void Quaternion::set(Vector3 const &axis, float angle) {
    if (axis.isZero()) {
        ppError("Quaternion::set: The given axis vector is a zero vector.");
        *this = Quaternion();
        return;
    }
    if (GMath::CHECK_NORMALIZING && !axis.isNormalized())
        ppDebug("Quaternion::set: The given axis vector with length $ is not normalized.", ~axis);
    float const s = std::sin(angle / 2);
    *this = Quaternion(std::cos(angle / 2), s * axis.x, s * axis.y, s * axis.z);
}

QString Quaternion::toString() const {
    if (!isValid())
        return QStringLiteral("Quaternion-INVALID");
    return QString::asprintf("[%+.3f, %+.3f, %+.3f, %+.3f]", static_cast<double>(w),
                             static_cast<double>(x), static_cast<double>(y),
                             static_cast<double>(z));
}

} // namespace orv
