// XObject.cpp: places in a tree (parents, roots, paths) and links between them.
#include "orv/XObject.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"

#include <vector>

namespace orv {

XAtomic<bool> XObject::atomicFlagDebug(false);

XObject::XObject() = default;

XObject::XObject(XObject const &other) : bits(other.bits), pParent(other.pParent) {}

XObject &XObject::operator=(XObject const &other) {
    bits = other.bits;
    pParent = other.pParent;
    return *this;
}

XObject::~XObject() = default;

QString XObject::toString(XTypeSupporter const &) const { return str_XObject; }

unsigned char XObject::category() const { return XVal::SIMPLE; }

XTree *XObject::getTree(QString const &) { return nullptr; }

XObject *XObject::objectByKey(QString const &) { return nullptr; }

QString XObject::keyOf(XObject const *) const { return QString(); }

QString XObject::path() const {
    std::vector<QString> keys;
    for (XObject const *node = this; node->pParent; node = node->pParent)
        keys.push_back(node->pParent->keyOf(node));
    QString text;
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        text += QLatin1Char('/') + *key;
    return text;
}

void XObject::show(XTypeSupporter const &, unsigned int space, QString const &, bool,
                   qint64) const {
    ppDebug(space, str_XObject);
}

void XObject::toStream(XStringStream &stream, XTypeSupporter const &, unsigned int, QString const &,
                       bool, qint64) const {
    stream << str_XObject << '\n';
}

void XObject::_swapObject(XObject &&other) {
    AtomicBits const word = bits;
    bits = other.bits;
    other.bits = word;
    std::swap(pParent, other.pParent);
}

void XObject::setParent(XObject *parent) {
    ORV_ASSERT_PTR(parent);
    pParent = parent;
}

XObject *XObject::rootObject() {
    XObject *node = this;
    while (node->pParent)
        node = node->pParent;
    return node;
}

XObject const *XObject::rootObject() const { return const_cast<XObject *>(this)->rootObject(); }

unsigned int XObject::level() const {
    unsigned int n = 0;
    for (XObject const *node = pParent; node; node = node->pParent)
        ++n;
    return n;
}

XObject *XObject::rootObject(XObject *object) { return object ? object->rootObject() : nullptr; }

bool XObject::isRoot(XObject const *object) { return !object || object->isRoot(); }

unsigned int XObject::level(XObject const *object) { return object ? object->level() : 0; }

bool XObject::hasSameRoot(XObject *pOther) {
    ORV_ASSERT_PTR(pOther);
    if (pOther == this) {
        ppWarning("XObject::hasSameRoot, SAME object");
        return true;
    }
    return rootObject() == pOther->rootObject();
}

XLink::XLink() = default;

XLink::XLink(QString const &url) : urlText(url) {}

XLink::XLink(XObject *object) : pObject(object) {}

XLink::XLink(XLink &&other) noexcept { swapLink(other); }

XLink &XLink::operator=(XLink &&other) noexcept {
    if (this != &other)
        swapLink(other);
    return *this;
}

XLink::~XLink() = default;

void XLink::swapLink(XLink &other) {
    _swapObject(std::move(other));
    std::swap(pObject, other.pObject);
    urlText.swap(other.urlText);
}

QString XLink::toString(XTypeSupporter const &) const { return str_XLink; }

unsigned char XLink::category() const { return XVal::LINK; }

bool XLink::pointer_to_URL() {
    if (!pObject) {
        ppDebug("XLink::pointer_to_URL, pObject == nullptr");
        return false;
    }
    urlText = pObject->path();
    return true;
}

bool XLink::URL_to_pointer(XTree *pTreeSomeOwner) {
    ORV_ASSERT_PTR(pTreeSomeOwner);
    if (urlText.isEmpty()) {
        ppWarning("XLink::URL_to_pointer, url == \"\" ");
        return false;
    }
    XObject *const found = pTreeSomeOwner->pointerFromPath(urlText);
    if (!found) {
        ppWarning("XLink::URL_to_pointer, url '$' not found", urlText);
        return false;
    }
    pObject = found;
    return true;
}

} // namespace orv
