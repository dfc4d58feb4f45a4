// XGenericTypes.h: the schema of a document, itself XML under an element
// <XGenericTypes>: per described type the children it may have (<Child>) and its
// attributes with defaults, limits, tooltips and combo lists (<Attr>).
//
//   orv::XGenericTypeCreator creator;
//   orv::XNode *doc = orv::XNode::parseFile(QStringLiteral("scene.xml"), &creator, nullptr);
//   orv::XGenericTypes *schema = doc ? doc->getXGenericTypes() : nullptr;
//   bool consistent = schema && schema->checkDescription();
//
// The classes only read named attributes of the tree; parse with XGenericTypeCreator, or
// the <Child> and <Attr> elements come as plain nodes and stay unseen.
#pragma once

#include "orv/XNode.h"

#include <QtCore/QSet>

#include <functional>
#include <vector>

namespace orv {

// An allowed child type and its bounds: "type", "countMin", "countMax".
class ORV_EXPORT Child : public XNode {
public:
    QString getTheType() const { return getString(QStringLiteral("type"), QString()); }
    // "*" and "n" mean 0xFFFFFFFF; a missing key gives 0.
    unsigned int countMin() const;
    unsigned int countMax() const;
    // "theType '$', countMin:$, countMax:$"
    QString toString() const override;
    QString realTypeAsString() const override { return QStringLiteral("Child"); }
};

// One attribute of a described type. Getters give "" for an absent key.
class ORV_EXPORT Attr : public XNode {
public:
    bool hasCombo() const { return hasAttribute(QStringLiteral("combo")); }
    QString getCombo() const { return getString(QStringLiteral("combo"), QString()); }
    void setCombo(QString const &s) { setString(QStringLiteral("combo"), s); }
    bool hasDefault() const { return hasAttribute(QStringLiteral("default")); }
    QString getDefault() const { return getString(QStringLiteral("default"), QString()); }
    void setDefault(QString const &s) { setString(QStringLiteral("default"), s); }
    bool hasMax() const { return hasAttribute(QStringLiteral("get_max")); }
    QString getMax() const { return getString(QStringLiteral("get_max"), QString()); }
    void setMax(QString const &s) { setString(QStringLiteral("get_max"), s); }
    bool hasMin() const { return hasAttribute(QStringLiteral("get_min")); }
    QString getMin() const { return getString(QStringLiteral("get_min"), QString()); }
    void setMin(QString const &s) { setString(QStringLiteral("get_min"), s); }
    QString toolTip() const { return getString(QStringLiteral("toolTip"), QString()); }
    void setToolTip(QString const &s) { setString(QStringLiteral("toolTip"), s); }
    void setLabel(QString const &s) { setString(QStringLiteral("label"), s); }
    bool isReadOnly() const { return isBool(QStringLiteral("readOnly"), false); }
    void setReadOnly(bool on) { setBool(QStringLiteral("readOnly"), on); }
    using XRecord::isEnabled;
    bool isEnabled() const { return isBool(QStringLiteral("enabled"), true); }
    bool isUserDefined() const {
        return isString(QStringLiteral("type"), QStringLiteral("userDefined"));
    }
    QString getName() const override { return XNode::getName(); }
    // The type this attribute belongs to.
    QString getParentType() const { return parent() ? parent()->getType() : QString(); }
    QString realTypeAsString() const override { return QStringLiteral("Attr"); }
};

// A view of one described type; the pointers refer into the schema tree.
class ORV_EXPORT Scheme {
public:
    // False (a warning) for null; otherwise takes n's Child and Attr children.
    bool fromNode(XNode const *n);
    bool isValid() const;
    XNode const *owner() const { return nOwner; }
    QString pathIconBig() const;
    QString pathIconSmall() const;
    // Sets every attribute's default on n, "" for those without one.
    void defaultiesToNode(XNode *n) const;
    void show(unsigned int indent) const;

    std::vector<Child *> const &getChildren() const { return children; }
    std::vector<Attr *> const &getAttributes() const { return attributes; }

private:
    XNode const *nOwner = nullptr;
    std::vector<Child *> children;
    std::vector<Attr *> attributes;
};

// The schema element; each child describes the type named by its own element type.
class ORV_EXPORT XGenericTypes : public XNode {
public:
    std::vector<QString> getAllTypes() const;
    // Child 0; none is fatal.
    XNode *getTheRootNode();
    // Empty when the query finds nothing.
    Scheme getScheme(QString const &typeQuery);
    bool hasChildType(QString const &type) const;
    // A <Child> of the described type at parentQuery allows childType.
    bool checkTypeRelation(QString const &parentQuery, QString const &childType);
    // Every <Child> names a described type; false (a warning) at the first that doesn't.
    bool checkDescription();
    // Every <Attr>'s "type" ("string" when absent) is known; false (an ERROR) otherwise.
    bool checkTypes(QSet<QString> const &known);
    bool checkTypes(std::function<bool(QString const &)> callBack);
    // Every way the tree below document breaks this schema, one text per finding, each
    // opened by the element's query path: undescribed types, children that aren't
    // allowed or occur too often or too rarely, undescribed attributes (the reserved
    // "name", "enabled", "visible", "NID" and "_pointer" aside), numbers of a numeric
    // type outside their limits, and values outside their combo list. A schema element
    // inside the document isn't checked itself. Empty: the document conforms.
    std::vector<QString> checkDocument(XNode const *document);
    // "XGenericTypes [count]{type,type,...}"
    QString toString() const override;
    QString realTypeAsString() const override { return QStringLiteral("XGenericTypes"); }
};

// Pass it when parsing a schema: Child, Attr and XGenericTypes get their classes.
class ORV_EXPORT XGenericTypeCreator : public XmlNodeCreator {
public:
    XNode *create(QString const &type) const override;
    QString toString() const override;
};

} // namespace orv
