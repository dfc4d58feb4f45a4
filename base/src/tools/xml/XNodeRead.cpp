// XNodeRead.cpp: questions a tree answers without changing its shape: lookups,
// positions, walks, IDs, the run-time pointer, digests and the printed forms.
#include "orv/XNode.h"

#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/MD5.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/StringText.h"
#include "orv/XError.h"

#include <QtCore/QSet>

#include <cstdlib>

namespace orv {

XNode *XNode::nodeAt(unsigned int index) {
    return const_cast<XNode *>(static_cast<XNode const *>(this)->nodeAt(index));
}

XNode const *XNode::nodeAt(unsigned int index) const {
    if (index >= childList.size()) {
        ppDebug("XNode::nodeAt, $ out of range 0-$", index, size());
        return nullptr;
    }
    return childList[index];
}

int XNode::sizeRecursive(bool includeSelf) const {
    int count = includeSelf ? 1 : 0;
    for (XNode const *child : childList)
        count += child->sizeRecursive(true);
    return count;
}

XNode *XNode::rootOf(XNode const *node) {
    if (!node)
        return nullptr;
    while (node->parentNode)
        node = node->parentNode;
    return const_cast<XNode *>(node);
}

XNode *XNode::root() { return rootOf(this); }
XNode const *XNode::root() const { return rootOf(this); }

int XNode::getDepth() const {
    int depth = 0;
    for (XNode const *n = parentNode; n; n = n->parentNode)
        ++depth;
    return depth;
}

namespace {

// Carriage returns go, and after each line feed the blanks that open the next line.
QString withoutLineIndent(QString const &s) {
    QString out;
    out.reserve(s.size());
    bool lineStart = false;
    for (QChar const c : s) {
        if (c == QLatin1Char('\r'))
            continue;
        if (lineStart && c.isSpace() && c != QLatin1Char('\n'))
            continue;
        lineStart = c == QLatin1Char('\n');
        out.append(c);
    }
    return out;
}

} // namespace

bool XNode::isText(QString const &s) const {
    if (text.isEmpty() || s.isEmpty())
        return false;
    if (!s.contains(QLatin1Char('\n')))
        return text == s;
    return withoutLineIndent(text) == s;
}

bool XNode::isTypeName(QString const &s) const {
    if (!s.contains(QLatin1Char('@')))
        return isType(s);
    QStringList const toks = s.split(QLatin1Char('@'), Qt::SkipEmptyParts);
    if (toks.size() != 2) {
        ppDebug("XNode::isTypeName, toks.size() != 2");
        return false;
    }
    return isType(toks[0]) && isName(toks[1]);
}

int XNode::indexOf(XNode const *node) const {
    for (size_t i = 0; i < childList.size(); ++i)
        if (childList[i] == node)
            return static_cast<int>(i);
    return -1;
}

int XNode::indexOfParent() const { return parentNode ? parentNode->indexOf(this) : -1; }

int XNode::childNumber() const { return std::max(indexOfParent(), 0); }

bool XNode::containsNode(XNode const *node) const { return indexOf(node) >= 0; }

bool XNode::containsNodeRecursive(XNode const *node) const {
    for (XNode const *child : childList)
        if (child == node || child->containsNodeRecursive(node))
            return true;
    return false;
}

bool XNode::containsNode_Name(QString const &name) const {
    for (XNode const *child : childList)
        if (child->isName(name))
            return true;
    return false;
}

bool XNode::containsNode_Type_Name(QString const &t, QString const &name) const {
    for (XNode const *child : childList)
        if (child->isType(t) && child->isName(name))
            return true;
    return false;
}

XNode *XNode::nodeAfter(XNode const *nChild, bool sameType) const {
    ORV_ASSERT_PTR(nChild);
    int const index = indexOf(nChild);
    if (index < 0)
        return nullptr;
    for (size_t i = static_cast<size_t>(index) + 1; i < childList.size(); ++i)
        if (!sameType || childList[i]->isSameType(nChild))
            return childList[i];
    return nullptr;
}

XNode *XNode::nodeBefore(XNode const *nChild, bool sameType) const {
    ORV_ASSERT_PTR(nChild);
    for (int i = indexOf(nChild) - 1; i >= 0; --i)
        if (!sameType || childList[static_cast<size_t>(i)]->isSameType(nChild))
            return childList[static_cast<size_t>(i)];
    return nullptr;
}

std::vector<XNode *> XNode::children_by_Type(QString const &t) const {
    std::vector<XNode *> found;
    for (XNode *child : childList)
        if (child->isType(t))
            found.push_back(child);
    return found;
}

bool XNode::getChildrenAttribute(QString const &key, std::vector<QString> &values) const {
    bool any = false;
    for (XNode const *child : childList)
        if (child->hasAttribute(key)) {
            values.push_back(child->getString(key, QString()));
            any = true;
        }
    return any;
}

QString XNode::getStringBottomUp(QString const &key, QString const &def) const {
    for (XNode const *n = this; n; n = n->parentNode)
        if (n->hasAttribute(key))
            return n->getString(key, def);
    return def;
}

QStack<XNode *> XNode::getStackToRoot() {
    QStack<XNode *> stack;
    for (XNode *n = this; n; n = n->parentNode)
        stack.push(n);
    return stack;
}

void XNode::getNodePosition(QStack<int> &positions) const {
    positions.clear();
    for (XNode const *n = this; n->parentNode; n = n->parentNode)
        positions.push(n->indexOfParent());
}

XNode *XNode::nodeFromStackPos(QStack<int> &positions) {
    XNode *n = this;
    while (!positions.isEmpty()) {
        int const index = positions.pop();
        if (!n->checkRangeWithinChildren(index))
            return nullptr;
        n = n->childList[static_cast<size_t>(index)];
    }
    return n;
}

void XNode::iterateTree(std::function<bool(XNode *, unsigned int)> fn) {
    std::function<void(XNode *, unsigned int)> walk = [&](XNode *node, unsigned int depth) {
        for (XNode *child : node->childList) {
            if (!fn(child, depth))
                return;
            walk(child, depth + 1);
        }
    };
    walk(this, 0);
}

namespace {

void feedMD5(MD5 &md5, XNode const &node, bool recursive) {
    if (node.hasText())
        md5.updateString(node.getText());
    for (auto const &entry : node.getAttributes()) {
        md5.updateString(entry.first);
        md5.updateString(entry.second);
    }
    if (recursive)
        for (XNode const *child : node.children())
            feedMD5(md5, *child, true);
}

} // namespace

QString XNode::getMD5(bool recursive) const {
    MD5 md5;
    feedMD5(md5, *this, recursive);
    return md5.finalize().toString();
}

bool XNode::initializeContents() {
    for (XNode *child : childList)
        if (!child->initializeContents())
            return false;
    return true;
}

QString XNode::createUniqueName(QString const &base) const {
    ppDebug("XNode::createUniqueName, strBaseName:'$'", base);
    QString candidate = base;
    for (int attempt = 0; attempt < 1000000 && containsNode_Name(candidate); ++attempt)
        candidate = createNextNumberString(candidate);
    return candidate;
}

bool XNode::checkDuplicateNames() const {
    QSet<QString> seen;
    for (XNode const *child : childList) {
        if (child->hasName()) {
            QString const key = child->type + QLatin1Char('@') + child->getName();
            if (seen.contains(key)) {
                ppWarning("XNode::checkDuplicateNames - '$' already exists !", key);
                return true;
            }
            seen.insert(key);
        }
        if (child->hasChildren() && child->checkDuplicateNames())
            return true;
    }
    return false;
}

bool XNode::setID(qint64 id) {
    if (parentNode)
        for (XNode const *sibling : parentNode->childList)
            if (sibling != this && sibling->isID(id)) {
                ppWarning("XNode::setID, id:$ already present !", id);
                return false;
            }
    setLong(QStringLiteral("NID"), id);
    return true;
}

XNode *XNode::nodeFromID(qint64 id) const {
    for (XNode *child : childList)
        if (child->isID(id))
            return child;
    return nullptr;
}

std::vector<XNode *> XNode::nodesFromIDs() const {
    std::vector<XNode *> nodes;
    nodesFromIDs(nodes);
    return nodes;
}

int XNode::nodesFromIDs(std::vector<XNode *> &nodes) const {
    int count = 0;
    for (XNode *child : childList)
        if (child->hasID()) {
            nodes.push_back(child);
            ++count;
        }
    return count;
}

void *XNode::pointer() const {
    return reinterpret_cast<void *>(static_cast<quintptr>(getULong(QStringLiteral("_pointer"), 0)));
}

void XNode::set_pointer(void *p) {
    if (p)
        setULong(QStringLiteral("_pointer"), reinterpret_cast<quintptr>(p));
    else
        removeAttrib(QStringLiteral("_pointer"));
}

void XNode::remove_all_pointer() {
    XNode *top = root();
    top->removeAttrib(QStringLiteral("_pointer"));
    top->iterateTree([](XNode *n, unsigned int) {
        n->removeAttrib(QStringLiteral("_pointer"));
        return true;
    });
}

void XNode::showContents(unsigned int indent, unsigned int level, KeyValueText fn) const {
    KeyValueText const &print = fn ? fn : kvAsString;
    QString line = QLatin1Char('<') + type + QLatin1Char('>') + xprintF(" [$]", size());
    if (hasAttributes()) {
        QStringList parts;
        for (auto const &entry : getAttributes())
            parts << (entry.first.endsWith(QLatin1String("64"))
                          ? entry.first + QStringLiteral(": '") + base64_decode(entry.second) +
                                QLatin1Char('\'')
                          : print(entry.first, entry.second));
        line += QStringLiteral(" {") + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    if (hasText())
        line += QStringLiteral(" \"") + text + QLatin1Char('"');
    ppLog(level, indent, line);
    for (XNode const *child : childList)
        child->showContents(indent + 4, level, fn);
}

void XNode::show_pure_console(unsigned int indent) const {
    QString line =
        createSpace(indent) + QLatin1Char('<') + type + QLatin1Char('>') + xprintF(" [$]", size());
    if (hasAttributes()) {
        QStringList parts;
        for (auto const &entry : getAttributes())
            parts << entry.first + QStringLiteral(": '") + entry.second + QLatin1Char('\'');
        line += QStringLiteral(" {") + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    if (hasText())
        line += QStringLiteral(" \"") + text + QLatin1Char('"');
    Logger::printToCout(line);
    for (XNode const *child : childList)
        child->show_pure_console(indent + 4);
}

QString XNode::toStringForQTreeView() const {
    QString label = type;
    for (auto const &entry : getAttributes())
        label += QStringLiteral(", ") + entry.first + QStringLiteral("='") + entry.second +
                 QLatin1Char('\'');
    if (hasText())
        label += QStringLiteral(", {") + text.trimmed() + QLatin1Char('}');
    return label;
}

XNodeInfoCollector::~XNodeInfoCollector() = default;

XNodeInfoCollectorStandard XNodeInfoCollectorStandard::collectorStandard;

QString XNodeInfoCollectorStandard::toString() {
    return node ? node->toStringForQTreeView() : QString();
}

void CHECK_NODE(QString const &file, XNode *node, QString const &line) {
    if (node)
        return;
    Logger::printToCout(QStringLiteral("CHECK_NODE, node == NULL: ") + file + QLatin1Char(' ') +
                        line);
    Logger::quit();
    xSleep(200);
    std::exit(1);
}

} // namespace orv
