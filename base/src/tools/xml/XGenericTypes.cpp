// XGenericTypes.cpp: reading a schema tree: finding it in a document, the views of
// its described types, and the consistency checks.
#include "orv/XGenericTypes.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"

#include <QtCore/QStringList>

namespace orv {

namespace {

unsigned int readCount(XNode const &node, QString const &key) {
    QString const value = node.getString(key, QString());
    if (value == QLatin1String("*") || value == QLatin1String("n"))
        return 0xFFFFFFFFu;
    return value.toUInt();
}

QLatin1String const hintCreator("Did you forget to add a proper 'XmlNodeCreator' instance ?");

} // namespace

unsigned int Child::countMin() const { return readCount(*this, QStringLiteral("countMin")); }
unsigned int Child::countMax() const { return readCount(*this, QStringLiteral("countMax")); }

QString Child::toString() const {
    return xprintF("theType '$', countMin:$, countMax:$", getTheType(), countMin(), countMax());
}

XGenericTypes *XNode::getXGenericTypes() {
    XNode *top = root();
    if (top->isType(QStringLiteral("XGenericTypes"))) {
        auto *types = dynamic_cast<XGenericTypes *>(top);
        if (!types) {
            ppWarning("XNode::getXGenericTypes, we found <XGenericTypes> but its not the right C++ "
                      "type.");
            ppWarning(QString(hintCreator));
        }
        return types;
    }
    XNode *found = top->query(QStringLiteral("XGenericTypes"));
    if (!found) {
        ppWarning("XNode::getXGenericTypes, we do not have <XGenericTypes> tag under root node !");
        return nullptr;
    }
    auto *types = dynamic_cast<XGenericTypes *>(found);
    if (!types) {
        ppWarning("XNode::getXGenericTypes, *we found /<XGenericTypes> but its not the right C++ "
                  "type.");
        ppWarning(QString(hintCreator));
    }
    return types;
}

bool Scheme::fromNode(XNode const *n) {
    if (!n) {
        ppWarning("Scheme::from_node, n == nullptr");
        return false;
    }
    nOwner = n;
    children.clear();
    attributes.clear();
    for (XNode *child : n->children()) {
        if (auto *c = dynamic_cast<Child *>(child))
            children.push_back(c);
        else if (auto *a = dynamic_cast<Attr *>(child))
            attributes.push_back(a);
    }
    return true;
}

bool Scheme::isValid() const {
    if (!nOwner) {
        ppWarning("Scheme::isValid, nOwner == nullptre");
        return false;
    }
    if (!children.empty() || !attributes.empty())
        return true;
    ppWarning("Scheme::isValid,  no <Child> and no <Attr> ?");
    return false;
}

QString Scheme::pathIconBig() const {
    return nOwner ? nOwner->getString(QStringLiteral("iconBig"), QString()) : QString();
}

QString Scheme::pathIconSmall() const {
    if (!nOwner) {
        ppWarning("Scheme::pathIconSmall, <<Scheme:nullptr>>");
        return QString();
    }
    return nOwner->pathResource(QStringLiteral("icon"), QString());
}

void Scheme::defaultiesToNode(XNode *n) const {
    if (!nOwner) {
        ppWarning("<<Scheme:nullptr>>");
        return;
    }
    if (!n) {
        ppWarning("<<Scheme:$, n == nullptr>>", nOwner->getType());
        return;
    }
    for (Attr const *attr : attributes)
        n->setString(attr->getName(), attr->getDefault());
}

void Scheme::show(unsigned int indent) const {
    if (!nOwner) {
        ppInfo(indent, "<<Scheme:nullptr>>");
        return;
    }
    ppInfo(indent, "<<Scheme:$>>", nOwner->getType());
    ppInfo(indent, "icon   :'$'", nOwner->getString(QStringLiteral("icon"), QString()));
    ppInfo(indent, "iconBig:'$'", pathIconBig());
    ppInfo(indent, "<Child> objects:$", children.size());
    for (Child const *child : children)
        ppInfo(indent + 4, "child:$", child->toString());
    ppInfo(indent, "<Attr> objects:$", attributes.size());
    for (Attr const *attr : attributes)
        ppInfo(indent + 4, "attr:$", attr->toStringForQTreeView());
}

std::vector<QString> XGenericTypes::getAllTypes() const {
    std::vector<QString> types;
    for (XNode const *child : children())
        types.push_back(child->getType());
    return types;
}

XNode *XGenericTypes::getTheRootNode() {
    XNode *n = size() > 0 ? children()[0] : nullptr;
    ORV_ASSERT_PTR(n);
    return n;
}

Scheme XGenericTypes::getScheme(QString const &typeQuery) {
    Scheme scheme;
    if (XNode const *found = query(typeQuery))
        scheme.fromNode(found);
    return scheme;
}

bool XGenericTypes::hasChildType(QString const &type) const {
    for (XNode const *child : children())
        if (child->isType(type))
            return true;
    return false;
}

bool XGenericTypes::checkTypeRelation(QString const &parentQuery, QString const &childType) {
    XNode const *described = query(parentQuery);
    if (!described)
        return false;
    for (XNode const *child : described->children())
        if (child->isType(QStringLiteral("Child")) &&
            child->isString(QStringLiteral("type"), childType))
            return true;
    return false;
}

bool XGenericTypes::checkDescription() {
    std::vector<QString> const all = getAllTypes();
    QSet<QString> const known(all.begin(), all.end());
    for (XNode const *described : children()) {
        Scheme scheme;
        scheme.fromNode(described);
        for (Child const *child : scheme.getChildren())
            if (!known.contains(child->getTheType())) {
                ppWarning("XGenericTypes::checkDescription, Child type <$> not found within "
                          "<XGenericTypes>...</XGenericTypes>",
                          child->getTheType());
                return false;
            }
    }
    return true;
}

bool XGenericTypes::checkTypes(QSet<QString> const &known) {
    return checkTypes([&known](QString const &type) { return known.contains(type); });
}

bool XGenericTypes::checkTypes(std::function<bool(QString const &)> callBack) {
    ORV_ASSERT_PTR(callBack);
    for (XNode const *described : children()) {
        Scheme scheme;
        scheme.fromNode(described);
        for (Attr const *attr : scheme.getAttributes()) {
            QString const type = attr->getString(QStringLiteral("type"), QStringLiteral("string"));
            if (!callBack(type)) {
                ppError("XGenericTypes::checkTypes, unknown type '$'", type);
                return false;
            }
        }
    }
    return true;
}

QString XGenericTypes::toString() const {
    QStringList types;
    for (QString const &type : getAllTypes())
        types << type;
    return xprintF("XGenericTypes [$]{", size()) + types.join(QLatin1Char(',')) + QLatin1Char('}');
}

XNode *XGenericTypeCreator::create(QString const &type) const {
    XNode *node = nullptr;
    if (type == QLatin1String("Child"))
        node = new Child;
    else if (type == QLatin1String("Attr"))
        node = new Attr;
    else if (type == QLatin1String("XGenericTypes"))
        node = new XGenericTypes;
    else
        node = new XNode;
    node->setType(type);
    return node;
}

QString XGenericTypeCreator::toString() const {
    return QStringLiteral("XGenericTypeCreator (Child, Attr, XGenericTypes)");
}

} // namespace orv
