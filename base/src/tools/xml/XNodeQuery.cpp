// XNodeQuery.cpp: the path language over a tree, the path of a node, and the file
// references of a document resolved against the directory of its root's file.
#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XFile.h"
#include "orv/XNode.h"

#include <QtCore/QStringList>

namespace orv {

namespace {

// One step down: the first child of the type, and of the name after "@" if given.
XNode *stepDown(XNode const *n, QString const &step) {
    QString type = step;
    QString name;
    if (step.contains(QLatin1Char('@'))) {
        QStringList const toks = step.split(QLatin1Char('@'), Qt::SkipEmptyParts);
        if (toks.size() != 2) {
            ppDebug("query_by_oneToken - wrong token '$'", step);
            return nullptr;
        }
        type = toks[0];
        name = toks[1];
    }
    for (XNode *child : n->children())
        if (child->isType(type) && (name.isEmpty() || child->isName(name)))
            return child;
    return nullptr;
}

} // namespace

XNode *XNode::queryFrom(XNode *node, QString const &path) {
    if (!node) {
        QStringList const toks = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        ppWarning("query_by_tokenizer_first_tok, xmlParent == nullptr");
        ppWarning(4, "absolute:$", path.startsWith(QLatin1Char('/')));
        for (QString const &tok : toks)
            ppWarning(4, "token:'$'", tok);
        return nullptr;
    }
    return node->query(path);
}

XNode const *XNode::query(QString const &path) const {
    return const_cast<XNode *>(this)->query(path);
}

// An absolute path's first step stands for the root and isn't compared with it.
XNode *XNode::query(QString const &path) {
    if (path.isEmpty())
        return this;
    QStringList const toks = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    XNode *n = this;
    int i = 0;
    if (path.startsWith(QLatin1Char('/'))) {
        XNode *top = root();
        if (toks.isEmpty())
            return top;
        if (toks.size() == 1)
            return isTypeName(toks[0]) ? this : top;
        n = top;
        i = 1;
    }
    for (; i < toks.size(); ++i) {
        if (toks[i] == QLatin1String("..")) {
            // Climbing above the root ends the walk rather than going on from nowhere.
            n = n->parentNode;
            if (!n) {
                ppDebug("::query_by_tokenizer, xmlParent == nullptr");
                return nullptr;
            }
            continue;
        }
        n = stepDown(n, toks[i]);
        if (!n)
            return nullptr;
    }
    return n;
}

QString XNode::getQuery() const {
    QStringList steps;
    for (XNode const *n = this; n; n = n->parentNode)
        steps.prepend(n->hasName() ? n->type + QLatin1Char('@') + n->getName() : n->type);
    return QLatin1Char('/') + steps.join(QLatin1Char('/'));
}

void XNode::setFile(QString const &path) {
    XNode *top = root();
    ORV_ASSERT_PTR(top);
    top->file = path;
}

QString XNode::getFile() const { return root()->file; }

QDir XNode::getDir() const { return QFileInfo(getFile()).absoluteDir(); }

QString XNode::absolutePath(QString const &path) const {
    return QFileInfo(path).isRelative() ? getDir().filePath(path) : path;
}

QString XNode::buildResourcePath(QString const &path) const {
    QString const rel = getDir().relativeFilePath(path);
    return rel.contains(QLatin1String("..")) ? QDir::cleanPath(absolutePath(path)) : rel;
}

QString XNode::pathResource(QString const &key, QString const &def) const {
    QString const value = getString(key, QString());
    if (value.isEmpty())
        return def;
    QString const path = absolutePath(value);
    return fileExists(path) || def.isEmpty() ? path : def;
}

void XNode::setPathResource(QString const &key, QString const &path, bool force) {
    QString const rel = getDir().relativeFilePath(path);
    if (!force && rel.contains(QLatin1String("..")))
        return;
    setString(key, rel);
}

bool XNode::isResourceFile() const { return getFile() == QLatin1String(":RESOURCE"); }

} // namespace orv
