// XTypeSet.cpp: the type names of the tree by category.
#include "orv/Log.h"
#include "orv/XObject.h"
#include "orv/XTypeName.h"
#include "orv/XTypeSupporter.h"

namespace orv {

XTypeSet::XTypeSet() {
    pointToOwnSets();
#define ORV_ADD_SIMPLE_TYPE(T, N) _addType(XTypeName<T>::name(), SET_SIMPLE);
    ORV_XTREE_SIMPLE_TYPES(ORV_ADD_SIMPLE_TYPE)
#undef ORV_ADD_SIMPLE_TYPE
    _addType(XTypeName<XTree>::name(), SET_TREE);
    _addType(XTypeName<XTreeArray>::name(), SET_ARRAY);
}

XTypeSet::XTypeSet(XTypeSet const &other)
    : simpleNames(other.simpleNames), treeNames(other.treeNames), arrayNames(other.arrayNames) {
    pointToOwnSets();
}

XTypeSet::XTypeSet(XTypeSet &&other) noexcept
    : simpleNames(std::move(other.simpleNames)), treeNames(std::move(other.treeNames)),
      arrayNames(std::move(other.arrayNames)) {
    pointToOwnSets();
}

XTypeSet &XTypeSet::operator=(XTypeSet const &other) {
    simpleNames = other.simpleNames;
    treeNames = other.treeNames;
    arrayNames = other.arrayNames;
    return *this;
}

XTypeSet &XTypeSet::operator=(XTypeSet &&other) noexcept {
    simpleNames = std::move(other.simpleNames);
    treeNames = std::move(other.treeNames);
    arrayNames = std::move(other.arrayNames);
    return *this;
}

void XTypeSet::pointToOwnSets() {
    sets[SET_SIMPLE] = &simpleNames;
    sets[SET_TREE] = &treeNames;
    sets[SET_ARRAY] = &arrayNames;
}

bool XTypeSet::_addType(QString const &name, unsigned int index) {
    if (index > SET_ARRAY)
        return false;
    if (sets[index]->insert(name).second)
        return true;
    for (char const *indent : {"", " ", "  "})
        Logger::printToCout(
            xprintF("$TypeSet::_addType,category:$, already contains '$'", indent, index, name));
    return false;
}

bool XTypeSet::isTypeLink(QString const &name) { return name == XLink::str_XLink; }

bool XTypeSet::contains(QString const &name) const {
    return isTypeSimple(name) || isTypeTree(name) || isTypeArray(name);
}

void XTypeSet::showTypes(unsigned int space) const {
    ppDebug(space, "TypeSet");
    char const *const headers[] = {"SIMPLE $ types", "TREE $ types", "ARRAY $ types"};
    for (unsigned int index = SET_SIMPLE; index <= SET_ARRAY; ++index) {
        ppDebug(space + 4, headers[index], static_cast<quint64>(sets[index]->size()));
        for (QString const &name : *sets[index])
            ppDebug(space + 8, name);
    }
    ppDebug(space, "~TypeSet");
}

} // namespace orv
