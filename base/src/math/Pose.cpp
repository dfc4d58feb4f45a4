// Pose.cpp: keeping a coordinate system orthonormal, and the text forms.
#include "orv/Pose.h"

#include "orv/Log.h"

namespace orv {

void CoordinateSystem3::set(Vector3 const &a, Vector3 const &o, Vector3 const &p) {
    abscissa = a, ordinate = o, applicate = p;
    controlOrthonormality();
}

void CoordinateSystem3::setAfterRightHandRule(Vector3 const &a, Vector3 const &o) {
    abscissa = a, ordinate = o;
    orthonormalizeAfterRightHandRule();
}

void CoordinateSystem3::setRotation(Matrix3 const &m) {
    abscissa.rotate(m), ordinate.rotate(m), applicate.rotate(m);
    controlOrthonormality();
}

void CoordinateSystem3::controlOrthonormality() {
    for (Vector3 *axis : {&abscissa, &ordinate, &applicate})
        if (!axis->isNormalized())
            axis->normalize();
    // Unit axes give a triple product of +-1 only when they are orthogonal.
    float const triple = abscissa.getScalarTripleProduct(ordinate, applicate);
    if (std::fabs(1.0f - std::fabs(triple)) > 0.01f)
        orthonormalizeAfterGramSchmidt();
}

void CoordinateSystem3::orthonormalizeAfterGramSchmidt() {
    abscissa.normalize();
    ordinate -= abscissa * (ordinate * abscissa);
    ordinate.normalize();
    applicate -= abscissa * (applicate * abscissa) + ordinate * (applicate * ordinate);
    applicate.normalize();
}

void CoordinateSystem3::orthonormalizeAfterRightHandRule() {
    abscissa.normalize();
    ordinate -= abscissa * (ordinate * abscissa);
    ordinate.normalize();
    applicate = abscissa % ordinate;
    if (GMath::CHECK_NORMALIZING && !applicate.isNormalized())
        ppDebug("CoordinateSystem3::orthonormalizeAfterRightHandRule: The calling vector with "
                "length $ is not normalized",
                ~applicate);
}

QString CoordinateSystem3::toString() const {
    return xprintF("abscissa:$, ordinate:$, applicate:$", abscissa.toString(), ordinate.toString(),
                   applicate.toString());
}

QString Pose3::toString() const {
    return xprintF("posMemory:$, orn:$", position.toString(), orientation.toString());
}

} // namespace orv
