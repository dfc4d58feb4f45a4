// XNode.cpp: making nodes and changing the child list: adding under the uniqueness
// rule, inserting, replacing, removing, reordering, moving and deep copies.
#include "orv/XNode.h"

#include "orv/Log.h"
#include "orv/XError.h"

#include <algorithm>

namespace orv {

XAtomic<bool> XNode::atomicFlagDebug{false};
XAtomic<bool> XNode::atomicWriteFullEmptyTags{false};

XmlNodeCreator::~XmlNodeCreator() = default;

XNode *XmlNodeCreator::create(QString const &type) const {
    XNode *node = new XNode;
    node->setType(type);
    return node;
}

void XmlNodeCreator::show(unsigned int indent) const { ppInfo(indent, toString()); }

QString XmlNodeCreator::toString() const { return QStringLiteral("XmlNodeCreator (plain XNode)"); }

XNode const *XNodeIterator::operator*() const { return node->nodeAt(static_cast<unsigned>(index)); }

XNode::XNode() : type(QStringLiteral("XNode")) {
    if (atomicFlagDebug)
        ppTest("XNode::XNode()");
}

XNode::~XNode() {
    if (atomicFlagDebug)
        ppTest("XNode::~XNode()");
    for (XNode *child : childList)
        delete child;
}

XNode *XNode::createRoot(QString const &type, QString const &name, XmlNodeCreator *creator) {
    XmlNodeCreator const plain;
    XNode *node = (creator ? creator : &plain)->create(type);
    node->setType(type);
    if (!name.isEmpty())
        node->setName(name);
    return node;
}

XNode *XNode::createNode(QString const &type, QString const &name, XmlNodeCreator *creator) {
    if (type.isEmpty()) {
        ppDebug("XNode::createNode - type == '' not allowed, return nullptr");
        return nullptr;
    }
    if (containsNode_Type_Name(type, name)) {
        ppDebug("XNode::createNode - name must be unique, return nullptr");
        return nullptr;
    }
    XNode *node = createRoot(type, name, creator);
    addNode(node, false);
    return node;
}

XNode const *XNode::directChild(QString const &type, QString const &name) const {
    for (XNode const *child : childList)
        if (child->isType(type) && (name.isEmpty() || child->isName(name)))
            return child;
    return nullptr;
}

// Looks the direct child up by type and name rather than through a query path, so that
// a name holding "@" or "/" is found instead of being refused as a duplicate.
XNode *XNode::getCreateNode(QString const &type, QString const &name, XmlNodeCreator *creator) {
    if (XNode const *found = directChild(type, name))
        return const_cast<XNode *>(found);
    return createNode(type, name, creator);
}

bool XNode::addNode(XNode *node, bool checkInside) {
    ORV_ASSERT_PTR(node);
    if (node->hasName() && containsNode_Type_Name(node->type, node->getName())) {
        ppError("XNode::addNode, nodes name must be unique, name is '$'", node->getName());
        return false;
    }
    if (checkInside && containsNode(node)) {
        ppError("XNode::addNode, node already inside container !");
        return false;
    }
    childList.push_back(node);
    node->parentNode = this;
    return true;
}

void XNode::addNodes(std::vector<XNode *> const &nodes) {
    for (XNode *node : nodes)
        addNode(node, false);
}

void XNode::insertNodeAt(XNode *node, int index) {
    if (!node) {
        ppError("XNode::insertNodeAt - node == nullptr");
        return;
    }
    // An index equal to the size would append: refused, so only addNode places a first child.
    if (!checkRangeWithinChildren(index)) {
        ppError("XNode::insertNodeAt - index:$ not valid - must be >= 0 && <= $", index,
                size() - 1);
        return;
    }
    if (containsNode(node)) {
        ppError("XNode::insertNodeAt - node already inside !");
        return;
    }
    childList.insert(childList.begin() + index, node);
    node->parentNode = this;
}

void XNode::setNodeAt(XNode *node, int index) {
    if (!node) {
        ppError("XNode::setNodeAt - node == nullptr");
        return;
    }
    if (!checkRangeWithinChildren(index)) {
        ppError("XNode::setNodeAt - index:$ not valid - must be >= 0 && <= $", index, size() - 1);
        return;
    }
    childList[static_cast<size_t>(index)] = node;
    node->parentNode = this;
}

bool XNode::removeAt(int index, bool deleteNode) {
    if (!checkRangeWithinChildren(index)) {
        ppError("XNode::removeAt, index:$ out of range 0-$", index, size() - 1);
        return false;
    }
    XNode *taken = childList[static_cast<size_t>(index)];
    childList.erase(childList.begin() + index);
    if (deleteNode)
        delete taken;
    return true;
}

bool XNode::removeNode(XNode const *node, bool deleteNode) {
    ORV_ASSERT_PTR(node);
    int const index = indexOf(node);
    return index >= 0 && removeAt(index, deleteNode);
}

void XNode::removeNodes(std::vector<XNode *> const &nodes, bool deleteNode) {
    for (XNode *n : nodes) {
        if (!n)
            ppWarning("XNode::removeNodes - n == nullptr");
        else if (!removeNode(n, deleteNode))
            ppWarning("XNode::removeNodes - does not contain node");
    }
}

void XNode::deleteChildren() {
    for (XNode *child : childList)
        delete child;
    clear();
}

void XNode::clear() { childList.clear(); }

bool XNode::swap(XNode *a, XNode *b) {
    int const ia = indexOf(a);
    int const ib = indexOf(b);
    if (ia < 0 || ib < 0)
        return false;
    std::swap(childList[static_cast<size_t>(ia)], childList[static_cast<size_t>(ib)]);
    return true;
}

XNode *XNode::moveWithinStack(XNode *nChild, STACKING stacking) {
    if (size() < 2)
        return nullptr;
    ORV_ASSERT_PTR(nChild);
    int const index = indexOf(nChild);
    if (index < 0)
        return nullptr;
    switch (stacking) {
    case STACK_UP:
    case STACK_DOWN: {
        int const other = stacking == STACK_UP ? index - 1 : index + 1;
        if (!checkRangeWithinChildren(other))
            return nullptr;
        XNode *neighbour = childList[static_cast<size_t>(other)];
        setNodeAt(nChild, other);
        setNodeAt(neighbour, index);
        return neighbour;
    }
    case STACK_TOP:
        removeAt(index, false);
        childList.insert(childList.begin(), nChild);
        return nullptr;
    case STACK_BOTTOM:
        removeAt(index, false);
        addNode(nChild, false);
        return nullptr;
    }
    return nullptr;
}

namespace {

void copyInto(XNode const *nSrc, XNode *nDest, XmlNodeCreator const *nodeCreator) {
    ORV_ASSERT_PTR(nSrc);
    ORV_ASSERT_PTR(nDest);
    ORV_ASSERT_PTR(nodeCreator);
    nSrc->copyAttributesTo(nDest);
    if (nSrc->hasText())
        nDest->setText(nSrc->getText());
    for (XNode const *child : nSrc->children()) {
        XNode *copy = nodeCreator->create(child->getType());
        copy->setType(child->getType());
        nDest->addNode(copy, false);
        copyInto(child, copy, nodeCreator);
    }
}

} // namespace

XNode *XNode::deepCopy(XmlNodeCreator const *creator) const {
    XmlNodeCreator const plain;
    XmlNodeCreator const *nodeCreator = creator ? creator : &plain;
    XNode *copy = nodeCreator->create(type);
    copy->setType(type);
    copyInto(this, copy, nodeCreator);
    copy->file = file;
    return copy;
}

void XNode::moveAttributes(XNode *dest, XNode *src) {
    if (!dest || !src || dest == src)
        return;
    dest->takeAttributesFrom(*src);
}

void XNode::moveChildren(XNode *dest, XNode *src) {
    if (!dest || !src)
        return;
    std::vector<XNode *> taken;
    taken.swap(src->childList);
    for (XNode *child : taken)
        dest->addNode(child, true);
}

} // namespace orv
