// XTreePath.cpp: places in a tree: the path language, links and their resolution, and
// the parent pointers that make paths right.
#include "orv/Log.h"
#include "orv/Tokenizer.h"
#include "orv/XError.h"
#include "orv/XTree.h"

namespace orv {

namespace {

// The last step of a path inside an array: an element by its decimal index.
XObject *elementAt(XTreeArray &array, QString const &token) {
    bool isNumber = false;
    quint64 const index = token.toULongLong(&isNumber, 10);
    if (!isNumber) {
        ppError("XTreeArray::getPointer, index:'$' must be a number 0...$", token,
                static_cast<qint64>(array.size()) - 1);
        return nullptr;
    }
    if (index >= array.size()) {
        ppError("XTreeArray::getPointer, index:$ out of range 0...$", index,
                static_cast<qint64>(array.size()) - 1);
        return nullptr;
    }
    // Indexed by what the elements are; values packed in the block are no objects.
    if (array.isCategoryTree())
        return array.treeAt(index);
    if (array.isCategoryLink())
        return array.linkAt(index);
    ppError("XTreeArray::objectByKey, wrong type <$>", array.type());
    return nullptr;
}

} // namespace

XObject *XTree::pointerFromPath(QString const &path) {
    Tokenizer tokens(path, QStringLiteral("/"), true);
    if (atomicFlagDebug)
        ppDebug("XTree::pointerFromPath<$>, q: '$'", getType(), path);
    XObject *current = this;
    unsigned int const n = tokens.size();
    for (unsigned int i = 0; i < n && current; ++i) {
        QString const token = tokens[i];
        bool const last = i + 1 == n;
        if (token == QLatin1String("/")) {
            if (i == 0)
                current = current->rootObject();
            continue; // a "/" further on is skipped, a trailing one yields current
        }
        if (token == QLatin1String("..")) {
            current = current->parent();
            continue;
        }
        if (!last) {
            current = current->objectByKey(token);
            continue;
        }
        if (auto *tree = dynamic_cast<XTree *>(current))
            return tree->getPointer<XObject>(token);
        if (auto *array = dynamic_cast<XTreeArray *>(current))
            return elementAt(*array, token);
        // A link has no keys of its own.
        ppError("LAST TOKEN, PROBLEMS !");
        return nullptr;
    }
    return current;
}

bool XTree::setLink(QString const &key, QString const &path) {
    XObject *const target = pointerFromPath(path);
    if (!target) {
        ppError("XTree::setLink, path '$' not found", path);
        return false;
    }
    auto *link = new XLink(target);
    link->setURL(path);
    XVal &slot = map[key];
    slot.setValPointer(link);
    slot.setCategory(XVal::LINK);
    link->setParent(this);
    return true;
}

void XTree::setLink(QString const &key, XTree *pTree) {
    ORV_ASSERT_PTR(pTree);
    auto *link = new XLink(pTree);
    link->setURL(pTree->path());
    XVal &slot = map[key];
    slot.setValPointer(link);
    slot.setCategory(XVal::LINK);
    link->setParent(this);
}

template <>
std::vector<XLink *> XTree::get_by_type<XLink>(bool recursive, bool includeArrayElements) {
    std::vector<XLink *> links;
    for (auto &entry : map) {
        XVal &val = entry.second;
        if (!val.getPointer())
            continue;
        if (val.isType(XLink::str_XLink) && val.isLink()) {
            links.push_back(static_cast<XLink *>(val.getPointer()));
        } else if (val.isTree() && recursive) {
            std::vector<XLink *> const inner = static_cast<XTree *>(val.getPointer())
                                                   ->get_by_type<XLink>(true, includeArrayElements);
            links.insert(links.end(), inner.begin(), inner.end());
        } else if (val.isArray()) {
            auto *array = static_cast<XTreeArray *>(val.getPointer());
            for (quint64 i = 0; includeArrayElements && i < array->size() && array->linkAt(i); ++i)
                links.push_back(array->linkAt(i));
            for (quint64 i = 0; recursive && i < array->size() && array->treeAt(i); ++i) {
                std::vector<XLink *> const inner =
                    array->treeAt(i)->get_by_type<XLink>(true, includeArrayElements);
                links.insert(links.end(), inner.begin(), inner.end());
            }
        }
    }
    return links;
}

void XTree::pointer_to_URL() {
    for (XLink *link : get_by_type<XLink>(true, true))
        link->pointer_to_URL();
}

void XTree::URL_to_pointer() {
    for (XLink *link : get_by_type<XLink>(true, true))
        link->URL_to_pointer(this);
}

void XTree::set_parent_recursive() {
    for (auto &entry : map) {
        XVal &val = entry.second;
        if (!val.getPointer())
            continue;
        if (val.isTree()) {
            auto *child = static_cast<XTree *>(val.getPointer());
            child->setParent(this);
            child->set_parent_recursive();
        } else if (val.isLink()) {
            static_cast<XLink *>(val.getPointer())->setParent(this);
        } else if (val.isArray()) {
            auto *array = static_cast<XTreeArray *>(val.getPointer());
            if (array->size() == 0)
                continue;
            array->setParent(this);
            if (array->isCategoryTree() || array->isCategoryLink()) {
                void *ar = array->getArray();
                ORV_ASSERT_PTR(ar);
                array->setParentToChildren();
            }
        }
    }
}

XTree_View XTree::treeView() const {
    XTree_View view;
    for (auto &entry : map) {
        XTree_View::Entry const item{&entry.first, &entry.second};
        switch (entry.second.getCategory()) {
        case XVal::TREE: view.trees.push_back(item); break;
        case XVal::ARRAY: view.arrays.push_back(item); break;
        case XVal::LINK: view.links.push_back(item); break;
        default: view.values.push_back(item);
        }
    }
    return view;
}

void XTree::showLinks(unsigned int space) {
    std::vector<XLink *> const links = get_by_type<XLink>(true, true);
    ppDebug(space, "XTree::showLinks, link's:$", static_cast<quint64>(links.size()));
    for (size_t i = 0; i < links.size(); ++i)
        if (links[i]->object())
            ppDebug(space, "XTree::showLinks, ln[$], path: '$'", static_cast<quint64>(i),
                    links[i]->object()->path());
        else
            ppDebug(space, "XTree::showLinks, ln[$], object() == nullptr!",
                    static_cast<quint64>(i));
}

} // namespace orv
