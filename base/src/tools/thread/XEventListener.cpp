// XEventListener.cpp: the out-of-line anchor of the listener base.
#include "orv/XEventListener.h"

namespace orv {

AbstractXEventListener::~AbstractXEventListener() = default;

} // namespace orv
