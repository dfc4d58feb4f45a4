// NameAble.cpp: the anchor of NameAble's virtual table.
#include "orv/NameAble.h"

namespace orv {

NameAble::~NameAble() = default;

} // namespace orv
