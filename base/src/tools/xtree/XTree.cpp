// XTree.cpp: the tree as a map of values: moves, access by key, typed stores and the
// objects it holds.
#include "orv/XTree.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XFile.h"

#include <cstring>

namespace orv {

bool XTree::flagDebug = false;

XTree::XTree() {
    if (atomicFlagDebug)
        ppDebug("XTree::XTree");
}

XTree::XTree(XTree &&other) noexcept {
    if (atomicFlagDebug)
        ppDebug("XTree::XTree()  MOVE");
    _swap(std::move(other));
    set_parent_recursive();
}

XTree &XTree::operator=(XTree &&other) noexcept {
    if (flagDebug)
        ppDebug("XTree::operator=(XTree &&)");
    if (this != &other) {
        _swap(std::move(other));
        set_parent_recursive();
    }
    return *this;
}

XTree::~XTree() {
    if (atomicFlagDebug)
        ppDebug("XTree::~XTree");
}

void XTree::_swap(XTree &&other) {
    _swapObject(std::move(other));
    map.swap(other.map);
    filename.swap(other.filename);
}

void XTree::_move(XTree &other) {
    clear();
    map.swap(other.map);
}

unsigned char XTree::category() const { return XVal::TREE; }

QString XTree::getTypeAsString() const { return str_XTree; }

QString XTree::getType() const { return str_XTree; }

void XTree::clear() {
    if (atomicFlagDebug)
        ppDebug("XTree::clear");
    map.clear();
}

bool XTree::erase(QString const &key) {
    if (map.erase(key))
        return true;
    ppWarning("XTree::erase, key <$> not found", key);
    return false;
}

XVal *XTree::findVal(QString const &key) const {
    auto const found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

XVal &XTree::getVal(QString const &key, bool *found) {
    if (!containsKey(key))
        ppError("XTree::get, key '$' ???", key);
    return static_cast<XTree const *>(this)->getVal(key, found);
}

XVal &XTree::getVal(QString const &key, bool *found) const {
    bool const present = containsKey(key);
    if (found)
        *found = present;
    else if (!present)
        ppError("XTree::getVal, key '$' not found - attention !", key);
    return map[key];
}

XTree &XTree::setTree(QString const &key, XTree &&tree) {
    auto *child = new XTree(std::move(tree));
    XVal &slot = map[key];
    slot.setValPointer(child);
    slot.setCategory(XVal::TREE);
    child->setParent(this);
    return *child;
}

XTreeArray &XTree::setArray(QString const &key, XTreeArray &&array) {
    auto *stored = new XTreeArray(std::move(array));
    XVal &slot = map[key];
    slot.setValPointer(stored);
    slot.setCategory(XVal::ARRAY);
    stored->setParent(this);
    return *stored;
}

bool XTree::isFlag(QString const &key, bool dflt) const {
    // The test and its words are at odds; both stay as callers know them.
    if (containsKey(key) && atomicFlagDebug) {
        ppDebug("XTree::isFlag, key:'$' does not exist !", key);
        return dflt;
    }
    XVal const &val = getVal(key);
    if (bool const *flag = val.value<bool>())
        return *flag;
    ppDebug("XTree::isFlag, key:'$', wrong type:'$'", key, val.getType());
    return dflt;
}

bool XTree::isBoundToFile(bool checkExists) const {
    return checkExists ? fileExists(filename) : !filename.isEmpty();
}

bool XTree::isPureXTree() const { return getTypeAsString() == str_XTree; }

XTreeArray &XTree::get_tree_array(QString const &key) {
    static XTreeArray none;
    XVal const *val = findVal(key);
    if (!val) {
        ppError("XTree::get_tree_array, <$> not found !", key);
        return none;
    }
    if (!val->isArray()) {
        ppError("XTree::get_tree_array, <$> found, but not a XTreeArray !, type is <<$>>", key,
                XVal::categoryToString(val->getCategory()));
        return none;
    }
    auto *array = static_cast<XTreeArray *>(val->getPointer());
    if (!array) {
        ppError("XTree::get_tree_array, getVal problems");
        return none;
    }
    return *array;
}

XByteArray XTree::get_XByteArray(QString const &key) {
    XTreeArray const &array = get_tree_array(key);
    if (!array.getArray())
        return XByteArray();
    return XByteArray(static_cast<char const *>(array.getArray()), static_cast<int>(array.size()));
}

void XTree::set_XByteArray(QString const &key, XByteArray const &bytes) {
    auto *block = new signed char[static_cast<size_t>(bytes.size())];
    std::memcpy(block, bytes.constData(), static_cast<size_t>(bytes.size()));
    XTreeArray array;
    array.adopt(block, static_cast<quint64>(bytes.size()));
    setArray(key, std::move(array));
}

XObject *XTree::objectOf(XVal const &slot) {
    switch (slot.getCategory()) {
    case XVal::TREE: return static_cast<XTree *>(slot.getPointer());
    case XVal::ARRAY: return static_cast<XTreeArray *>(slot.getPointer());
    case XVal::LINK: return static_cast<XLink *>(slot.getPointer());
    default: return nullptr;
    }
}

XObject *XTree::objectByKey(QString const &key) {
    XVal const *slot = findVal(key);
    if (!slot) {
        ppDebug("XTree::objectByKey, key:'$',not found !", key);
        return nullptr;
    }
    XObject *const object = objectOf(*slot);
    if (!object)
        ppDebug("XTree::objectByKey, key:'$', unexpected type<$>", key, slot->getType());
    return object;
}

QString XTree::keyOf(XObject const *pChild) const {
    ORV_ASSERT_PTR(pChild);
    for (auto const &[key, val] : map)
        if (!val.isSimpleType() && val.getPointer() && objectOf(val) == pChild)
            return key;
    return QString();
}

void XTree::logPointerMiss(int reason, QString const &key, QString const &type,
                           QString const &want) {
    switch (reason) {
    case 0: ppDebug("XTree::getPointer, key:'$',not found !", key); break;
    case 1:
        ppWarning("XTree::getPointer, 1-WRONG TYPE, key:'$', type:'$', want type:'$',", key, type,
                  want);
        break;
    case 2:
        ppWarning("XTree::getPointer, 2-WRONG TYPE, key:'$', type:'$', want type:'$',", key, type,
                  want);
        break;
    default:
        ppWarning("XTree::getPointer, 3-WRONG TYPE, key:'$', type:'$', want type:'$',", key, type,
                  want);
    }
}

} // namespace orv
