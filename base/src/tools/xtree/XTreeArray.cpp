// XTreeArray.cpp: the array of a tree: its block, its elements as places in the tree,
// and its text forms.
#include "orv/XTreeArray.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"
#include "orv/XTypeSupporter.h"

namespace orv {

namespace {

// A decimal index as arrays' keys are; false for anything else.
bool indexOf(QString const &key, quint64 &index) {
    bool ok = false;
    index = key.toULongLong(&ok, 10);
    return ok;
}

} // namespace

XTreeArray::XTreeArray() = default;

XTreeArray::XTreeArray(XTreeArray &&other) noexcept { *this = std::move(other); }

XTreeArray &XTreeArray::operator=(XTreeArray &&other) noexcept {
    if (this == &other)
        return *this;
    // What the target held is released: it would otherwise be lost.
    _deleteContents();
    _swapObject(std::move(other));
    typeName.swap(other.typeName);
    std::swap(cat, other.cat);
    ar = other.ar;
    destruct = other.destruct;
    count = other.count;
    other.ar = nullptr;
    other.destruct = nullptr;
    other.count = 0;
    setParentToChildren();
    return *this;
}

XTreeArray::~XTreeArray() { _deleteContents(); }

void XTreeArray::_deleteContents() {
    if (destruct && ar) {
        ppTest("XTreeArray::_deleteContents, delete []array");
        destruct->kill();
    }
    delete destruct;
    destruct = nullptr;
    ar = nullptr;
    count = 0;
}

unsigned char XTreeArray::categoryOf(QString const &elementType) {
    if (elementType == XTree::str_XTree)
        return XVal::TREE;
    if (elementType == XLink::str_XLink)
        return XVal::LINK;
    return XVal::SIMPLE;
}

XTree *XTreeArray::treeAt(quint64 i) {
    return cat == XVal::TREE && i < count ? static_cast<XTree *>(ar) + i : nullptr;
}

XLink *XTreeArray::linkAt(quint64 i) {
    return cat == XVal::LINK && i < count ? static_cast<XLink *>(ar) + i : nullptr;
}

void XTreeArray::setParentToChildren() {
    for (quint64 i = 0; i < count && cat == XVal::TREE; ++i) {
        treeAt(i)->setParent(this);
        treeAt(i)->set_parent_recursive();
    }
    for (quint64 i = 0; i < count && cat == XVal::LINK; ++i)
        linkAt(i)->setParent(this);
}

QString XTreeArray::toString(XTypeSupporter const &) const {
    return xprintF("XTreeArray<$>, category:$, elements:$", typeName,
                   static_cast<unsigned int>(cat), count);
}

XTree *XTreeArray::getTree(QString const &) {
    for (int i = 0; i < 3; ++i)
        ppDebug("XTreeArray::getTree, AHA");
    return nullptr;
}

XObject *XTreeArray::objectByKey(QString const &key) {
    if (key.isEmpty())
        return nullptr;
    if (cat == XVal::SIMPLE) {
        ppError("XTreeArray::objectByKey, wrong type <$>", typeName);
        return nullptr;
    }
    quint64 index = 0;
    if (!indexOf(key, index))
        return nullptr;
    if (index >= count) {
        ppError("XTreeArray::objectByKey, index:$ out of range 0-$", index, count);
        return nullptr;
    }
    if (cat == XVal::TREE)
        return treeAt(index);
    if (typeName != XLink::str_XLink) {
        ppError("XTreeArray::getPointerAt, wrong type<$>, expected <$>", typeName,
                XLink::str_XLink);
        return nullptr;
    }
    return linkAt(index);
}

QString XTreeArray::keyOf(XObject const *pChild) const {
    ORV_ASSERT_PTR(pChild);
    // Elements lie in one block: the index follows from the address.
    auto const indexIn = [&](auto const *first) -> QString {
        auto const *child = static_cast<decltype(first)>(pChild);
        if (child < first || child >= first + count)
            return QString();
        return QString::number(static_cast<quint64>(child - first));
    };
    if (cat == XVal::TREE && dynamic_cast<XTree const *>(pChild))
        return indexIn(static_cast<XTree const *>(ar));
    if (cat == XVal::LINK && dynamic_cast<XLink const *>(pChild))
        return indexIn(static_cast<XLink const *>(ar));
    return QString();
}

void XTreeArray::show(XTypeSupporter const &, unsigned int space, QString const &, bool,
                      qint64) const {
    ppDebug(space, "XTreeArray, type:<$>, size:$", typeName, count);
}

QString XTreeArray::toStringExtended() const { return xprintF("$ [$]", typeName, count); }

QString XTreeArray::extendedText(QString const &key, XTypeSupporter const &s) const {
    return xprintF("$: $ [$], $", key, typeName, count, s.toString(*this));
}

void XTreeArray::showExtended(unsigned int space, QString const &key,
                              XTypeSupporter const &s) const {
    ppDebug(space, extendedText(key, s));
}

void XTreeArray::showExtended(unsigned int space, XTypeSupporter const &s) const {
    ppDebug(space, "$ [$], $", typeName, count, s.toString(*this));
}

void XTreeArray::treesLines(unsigned int space, QString const &key, quint64 n,
                            XTypeSupporter const &s, LineSink const &sink) const {
    sink(space, xprintF("$: array of $ [$]", key, typeName, count));
    for (quint64 i = 0; i < n && i < count && cat == XVal::TREE; ++i)
        static_cast<XTree const *>(ar)[i].lines(s, space + 4, QString(), false,
                                                static_cast<qint64>(i), sink);
}

void XTreeArray::showTrees(unsigned int space, QString const &key, quint64 n,
                           XTypeSupporter const &s) const {
    treesLines(space, key, n, s, [](unsigned int at, QString const &text) { ppDebug(at, text); });
}

void XTreeArray::toStreamTrees(XStringStream &stream, unsigned int space, QString const &key,
                               quint64 n, XTypeSupporter const &s) const {
    treesLines(space, key, n, s, [&stream](unsigned int at, QString const &text) {
        stream << xspace(at) << text << '\n';
    });
}

void XTreeArray::toStream_Extended(XStringStream &stream, unsigned int space, QString const &key,
                                   XTypeSupporter const &s) const {
    stream << xspace(space) << extendedText(key, s) << '\n';
}

} // namespace orv
