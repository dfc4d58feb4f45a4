// XNode.h: the element of the library's XML documents: a type, typed attributes (an
// XRecord), one text, owned ordered children and a pointer to the parent.
//
//   orv::XNode *root = orv::XNode::parseFile(QStringLiteral("config.xml"), nullptr, nullptr);
//   orv::XNode *db = root ? root->query(QStringLiteral("database@main")) : nullptr;
//   int port = db ? db->getInt(QStringLiteral("port"), 5432) : 5432;
//   delete root;                                // frees the whole tree
//
// Ownership runs downwards only: a node deletes its children, so a child deleted alone
// must be taken out of its parent first. A tree has no lock; one thread owns it.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XRecord.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStack>
#include <QtCore/QString>

#include <functional>
#include <vector>

namespace orv {

class XGenericTypes;
class XMem;
class XNode;
class XStringStream;
struct XNode_Parse_Control;

// The one way a tree gets custom node classes: parsing and copying ask it for each node.
class ORV_EXPORT XmlNodeCreator {
public:
    virtual ~XmlNodeCreator();
    // A plain XNode of that type; subclasses return their own classes for chosen types.
    virtual XNode *create(QString const &type) const;
    virtual void show(unsigned int indent) const;
    virtual QString toString() const;
};

// Positions for moveWithinStack.
enum STACKING { STACK_UP = 0, STACK_DOWN = 1, STACK_TOP = 2, STACK_BOTTOM = 3 };

// Forward over the children by index; != compares indexes only.
class ORV_EXPORT XNodeIterator {
public:
    XNodeIterator(int index, XNode const *node) : index(index), node(node) {}
    bool operator!=(XNodeIterator const &other) const { return index != other.index; }
    XNode const *operator*() const;
    XNodeIterator &operator++() {
        ++index;
        return *this;
    }

private:
    int index;
    XNode const *node;
};

class ORV_EXPORT XNode : public XRecord {
public:
    XNode();
    XNode(XNode const &) = delete;
    XNode &operator=(XNode const &) = delete;
    // Deletes every child, depth first.
    ~XNode() override;

    static XAtomic<bool> atomicFlagDebug;
    // Writes childless elements without attributes as <t></t> in place of <t/>.
    static XAtomic<bool> atomicWriteFullEmptyTags;

    // ---- Structure ----
    // A node by the creator (null: a plain XNode) of that type, named if name isn't empty.
    static XNode *createRoot(QString const &type, QString const &name, XmlNodeCreator *creator);
    // Null (a DEBUG line) for an empty type or a taken type-name pair; else the new child.
    virtual XNode *createNode(QString const &type, QString const &name, XmlNodeCreator *creator);
    // The first direct child of that type (and name, when given), or a new one.
    virtual XNode *getCreateNode(QString const &type, QString const &name, XmlNodeCreator *creator);
    // Appends and takes ownership; false (an ERROR line, the caller still owns it) for a
    // taken type-name pair, or with checkInside for a pointer already in the list.
    bool addNode(XNode *node, bool checkInside);
    void addNodes(std::vector<XNode *> const &nodes);
    // Before the child at index; index must name an existing child, so it can't append.
    void insertNodeAt(XNode *node, int index);
    // Replaces the pointer at index; the old child is neither freed nor detached.
    void setNodeAt(XNode *node, int index);
    // The taken node keeps its parent pointer.
    bool removeAt(int index, bool deleteNode);
    bool removeNode(XNode const *node, bool deleteNode);
    void removeNodes(std::vector<XNode *> const &nodes, bool deleteNode);
    void deleteChildren();
    bool swap(XNode *a, XNode *b);
    XNode *moveWithinStack(XNode *nChild, STACKING stacking);
    // The copy is a root; its file is this node's.
    XNode *deepCopy(XmlNodeCreator const *creator) const;
    static void moveAttributes(XNode *dest, XNode *src);
    static void moveChildren(XNode *dest, XNode *src);
    // Drops the child pointers without freeing them; attributes and text stay.
    void clear() override;

    std::vector<XNode *> &children() { return childList; }
    std::vector<XNode *> const &children() const { return childList; }
    XNodeIterator begin() const { return XNodeIterator(0, this); }
    XNodeIterator end() const { return XNodeIterator(size(), this); }

    // ---- Reading ----
    XNode *nodeAt(unsigned int index);
    XNode const *nodeAt(unsigned int index) const;
    int size() const { return static_cast<int>(childList.size()); }
    int countChildren() const { return size(); }
    int sizeRecursive(bool includeSelf) const;
    bool hasChildren() const { return !childList.empty(); }
    bool isRoot() const { return parentNode == nullptr; }
    XNode *parent() const { return parentNode; }
    XNode *root();
    XNode const *root() const;
    // Null-safe: the root above node, null for null.
    static XNode *rootOf(XNode const *node);
    int getDepth() const;

    QString getType() const { return type; }
    void setType(QString const &t) { type = t; }
    bool isType(QString const &t) const { return type == t; }
    bool isSameType(XNode const *other) const { return other && type == other->type; }
    QString getText() const { return text; }
    void setText(QString const &t) { text = t; }
    bool hasText() const { return !text.isEmpty(); }
    // With a line feed in s, carriage returns and each line's leading blanks are ignored.
    bool isText(QString const &s) const;
    // "type" or "type@name".
    bool isTypeName(QString const &s) const;

    int indexOf(XNode const *node) const;
    int indexOfParent() const;
    int childNumber() const;
    bool containsNode(XNode const *node) const;
    bool containsNodeRecursive(XNode const *node) const;
    bool containsNode_Name(QString const &name) const;
    bool hasChildWithName(QString const &name) const { return containsNode_Name(name); }
    bool containsNode_Type_Name(QString const &type, QString const &name) const;
    bool checkRangeWithinChildren(int i) const { return i >= 0 && i < size(); }
    XNode *nodeAfter(XNode const *nChild, bool sameType) const;
    XNode *nodeBefore(XNode const *nChild, bool sameType) const;
    std::vector<XNode *> children_by_Type(QString const &type) const;
    bool getChildrenAttribute(QString const &key, std::vector<QString> &values) const;
    QString getStringBottomUp(QString const &key, QString const &def) const;
    // This node at the bottom, the root on top.
    QStack<XNode *> getStackToRoot();
    // Indexes from this node up; the top is the index directly under the root.
    void getNodePosition(QStack<int> &positions) const;
    // Consumes the stack from this node down; null for an index out of range.
    XNode *nodeFromStackPos(QStack<int> &positions);
    // Depth first over the descendants (children at depth 0); a false from fn skips
    // the node's subtree and its later siblings.
    void iterateTree(std::function<bool(XNode *, unsigned int depth)> fn);
    // Text, then each attribute's key and value in key order; children too if recursive.
    QString getMD5(bool recursive) const;
    // Runs after parsing; here it asks every child in turn and stops at the first false.
    virtual bool initializeContents();
    // A unique "name" among the children, counted up from base.
    QString createUniqueName(QString const &base) const;
    // True (a warning) when two children of one node share type and name, at any depth.
    virtual bool checkDuplicateNames() const;

    // ---- IDs and the run-time pointer ----
    bool hasID() const { return hasAttribute(QStringLiteral("NID")); }
    qint64 ID() const { return getLong(QStringLiteral("NID"), -1); }
    bool isID(qint64 id) const { return hasID() && ID() == id; }
    // Unique among siblings: false (a warning) when a sibling has it.
    bool setID(qint64 id);
    XNode *nodeFromID(qint64 id) const;
    std::vector<XNode *> nodesFromIDs() const;
    int nodesFromIDs(std::vector<XNode *> &nodes) const;
    void *pointer() const;
    void set_pointer(void *p);
    void remove_all_pointer();

    // ---- Printing ----
    QString realTypeAsString() const override { return QStringLiteral("XNode"); }
    // One log line per node: "<type> [children] {attributes} "text"", children indented.
    void showContents(unsigned int indent, unsigned int level, KeyValueText fn) const override;
    virtual void show_pure_console(unsigned int indent) const;
    // "type, key='value', ..., {text}"
    virtual QString toStringForQTreeView() const;

    // ---- Query and resources ----
    // Steps "type", "type@name" and "..", joined by "/"; a leading "/" starts at the root.
    XNode *query(QString const &path);
    XNode const *query(QString const &path) const;
    // Null-safe query: a null node logs a warning and gives null.
    static XNode *queryFrom(XNode *node, QString const &path);
    // "/type@name/type/..." from the root to this node.
    QString getQuery() const;
    // Relative references resolve against the directory of the root's file.
    QDir getDir() const;
    QString absolutePath(QString const &path) const;
    QString buildResourcePath(QString const &path) const;
    QString pathResource(QString const &key, QString const &def) const;
    void setPathResource(QString const &key, QString const &path, bool force);
    bool isResourceFile() const;
    // Only the root's file counts: its absolute path, ":MEMORY" or a ":" resource.
    void setFile(QString const &path);
    QString getFile() const;

    // ---- Saving (no character is escaped) ----
    bool saveNodeToXml(QString const &path, QString const &comment) const;
    bool saveNodeToXml(QFileInfo const &fileInfo, QString const &comment) const;
    static void appendToStream(XStringStream &stream, XNode const &node, int indent);
    static QString saveNodeToString(XNode const &node, QString const &unused);
    // Latin-1: characters beyond it are lost.
    static void saveNodeToQByteArray(XNode const &node, QByteArray &bytes);
    static void saveNodeToXMem(XNode const &node, XMem &mem, unsigned int minSize);
    QString allAsString(unsigned int indent) const;

    // ---- Parsing (the caller owns the root; null on failure) ----
    static XNode *parseFile(QFileInfo const &fileInfo, XmlNodeCreator const *creator,
                            XNode_Parse_Control *control);
    static XNode *parseFile(QString const &path, XmlNodeCreator const *creator,
                            XNode_Parse_Control *control);
    static XNode *parseString(QString const &xml, XmlNodeCreator const *creator);
    static XNode *parseQByteArray(QByteArray const &bytes, XmlNodeCreator const *creator);
    static XNode *parseXMem(XMem const &mem, XmlNodeCreator const *creator);
    // Parses path, lets fn change the tree and saves it back when fn gives true.
    static bool transact(QString const &path, std::function<bool(XNode *)> fn);
    static bool transact(QFileInfo const &fileInfo, std::function<bool(XNode *)> fn);
    // Merges the file's root into this node if its type is this node's.
    virtual bool parseCustomType(QString const &path, XmlNodeCreator &creator);
    // The schema of this document, or null with the reason in the log.
    virtual XGenericTypes *getXGenericTypes();

private:
    XNode const *directChild(QString const &type, QString const &name) const;

    std::vector<XNode *> childList;
    QString type;
    XNode *parentNode = nullptr;
    QString text;
    QString file;
};

// Gathers facts about one node for display.
class ORV_EXPORT XNodeInfoCollector {
public:
    virtual ~XNodeInfoCollector();
    virtual void collectXNodeContents() {}
    virtual QString toString() = 0;
    virtual void setNode(XNode const *node) = 0;
};

class ORV_EXPORT XNodeInfoCollectorStandard : public XNodeInfoCollector {
public:
    static XNodeInfoCollectorStandard collectorStandard;
    QString toString() override;
    void setNode(XNode const *n) override { node = n; }

private:
    XNode const *node = nullptr;
};

// Ends the process (exit 1) when node is null: for preconditions a caller must keep.
ORV_EXPORT void CHECK_NODE(QString const &file, XNode *node, QString const &line);

} // namespace orv
