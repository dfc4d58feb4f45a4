// XmlShape.h: a tree in one line, so that a table row can state the whole expected
// tree: type, [key=value,...], "text", then (children).
#pragma once

#include "orv/XNode.h"

#include <QtCore/QStringList>

#include <memory>

namespace orv::test {

inline QString shape(XNode const *n) {
    if (!n)
        return QStringLiteral("null");
    QString s = n->getType();
    QStringList attributes;
    for (auto const &entry : n->getAttributes())
        attributes << entry.first + QLatin1Char('=') + entry.second;
    if (!attributes.isEmpty())
        s += QLatin1Char('[') + attributes.join(QLatin1Char(',')) + QLatin1Char(']');
    if (n->hasText())
        s += QLatin1Char('"') + n->getText() + QLatin1Char('"');
    if (n->hasChildren()) {
        QStringList children;
        for (XNode const *child : n->children())
            children << shape(child);
        s += QLatin1Char('(') + children.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return s;
}

inline std::unique_ptr<XNode> parsed(QString const &xml) {
    return std::unique_ptr<XNode>(XNode::parseString(xml, nullptr));
}

} // namespace orv::test
