// Circle.cpp: the circle's text form.
#include "orv/Circle.h"

#include "orv/XStringStream.h"

namespace orv {

QString Circle::toString() const {
    return xprintF("vCenter:$, radius:$, capRadius:$, capHeight:$, piDiameterRatio:$",
                   center.toString(), radius, capRadius, capHeight, piDiameterRatio);
}

} // namespace orv
