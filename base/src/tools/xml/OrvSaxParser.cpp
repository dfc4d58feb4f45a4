// OrvSaxParser.cpp: the tree that the scanner's hooks build, and INCLUDE elements.
#include "tools/xml/OrvSaxParser.h"

#include "orv/EnvVariables.h"
#include "orv/FileHelpers.h"
#include "orv/Log.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace orv {

namespace {

struct Trail {
    std::vector<QString> files;
    XNode_Parse_Control *control = nullptr;
};

thread_local Trail trail;

QString canonical(QString const &path) {
    QString const c = QFileInfo(path).canonicalFilePath();
    return c.isEmpty() ? QFileInfo(path).absoluteFilePath() : c;
}

QString const *findValue(AbstractSaxHelper::AttributeList const &list, QLatin1String key) {
    for (auto const &entry : list)
        if (entry.first == key)
            return &entry.second;
    return nullptr;
}

} // namespace

bool IncludeTrail::contains(QString const &path) {
    QString const c = canonical(path);
    return std::find(trail.files.begin(), trail.files.end(), c) != trail.files.end();
}

XNode_Parse_Control *IncludeTrail::outermostControl() { return trail.control; }

IncludeTrail::IncludeTrail(QString const &path, XNode_Parse_Control *control) {
    if (trail.files.empty())
        trail.control = control;
    trail.files.push_back(canonical(path));
}

IncludeTrail::~IncludeTrail() {
    trail.files.pop_back();
    if (trail.files.empty())
        trail.control = nullptr;
}

OrvSaxParser::OrvSaxParser(XmlNodeCreator const *creator, XNode_Parse_Control *control)
    : nodeCreator(creator ? creator : &plainCreator), control(control) {}

OrvSaxParser::~OrvSaxParser() = default;

void OrvSaxParser::inspectText(QString const &text, int depth) {
    int const index = depth - 1;
    if (index < 0)
        ppWarning("OrvSaxParser::inspectText, depth:$", depth);
    // After an INCLUDE with text, which pushes nothing, the index is one past the stack.
    else if (index >= stackNodes.size())
        ppWarning("OrvSaxParser::inspectText, depth:$ > stackNodes.size():$", depth,
                  stackNodes.size());
    else
        stackNodes[index]->setText(text.trimmed());
}

bool OrvSaxParser::inspectTypeAttribs(QString const &type,
                                      std::map<QString, QString> const &attributes, int depth) {
    AttributeList const list(attributes.begin(), attributes.end());
    return inspectTag(type, list, depth);
}

bool OrvSaxParser::inspectTag(QString const &type, AttributeList const &attributes, int depth) {
    // A second top-level element finds the first root here and becomes its child.
    while (stackNodes.size() > depth - 1) {
        nCurrent = stackNodes.pop();
        currentDepth = stackDepths.pop();
    }
    if (!stackNodes.isEmpty()) {
        nCurrent = stackNodes.top();
        currentDepth = stackDepths.top();
    }
    if (type == QLatin1String("INCLUDE"))
        return include(attributes);
    // A chain of top-level elements would nest without bound; recursive walks of the
    // tree (freeing it among them) need the same bound as nested tags.
    int const nodeDepth = nCurrent ? currentDepth + 1 : 0;
    if (nodeDepth > MAX_DEPTH) {
        ppDebug("OrvSaxParser::inspectTypeAttribs, tree deeper than $", MAX_DEPTH);
        return false;
    }

    XNode *node = nodeCreator->create(type);
    if (!node) {
        ppError("OrvSaxParser::inspectTypeAttribs, ((($))), no node made for <$>", getFile(), type);
        return false;
    }
    // Added before its attributes are stored: parsed children escape the uniqueness rule.
    if (nCurrent && !nCurrent->addNode(node, false)) {
        delete node;
        return false;
    }
    stackNodes.push(node);
    stackDepths.push(nodeDepth);
    if (!nRoot) {
        nRoot = node;
        node->setFile(getFile());
    }
    nCurrent = node;
    currentDepth = nodeDepth;
    for (auto const &entry : attributes) {
        if (entry.first.isEmpty()) {
            ppError("OrvSaxParser::inspectTypeAttribs, ((($))), key == '' - problems", getFile());
            return false;
        }
        // Only a "$" can change a value; the rest need no copy through the replacer.
        node->setString(entry.first, entry.second.contains(QLatin1Char('$'))
                                         ? replaceEnv(entry.second)
                                         : entry.second);
    }
    return true;
}

void OrvSaxParser::includeProblem(QString const &text) {
    XNode_Parse_Control *target = IncludeTrail::outermostControl();
    if (!target)
        target = control;
    if (target)
        target->includeProblems.push_back(text);
}

// What goes wrong with an include is logged and noted, and the document goes on without it.
bool OrvSaxParser::include(AttributeList const &attributes) {
    QString const *fileValue = findValue(attributes, QLatin1String("file"));
    QString const rel = replaceEnv(fileValue ? *fileValue : QString());
    if (!nCurrent) {
        ppError("OrvSaxParser::inspectTypeAttribs, ((($))), <INCLUDE> before any element",
                getFile());
        includeProblem(QStringLiteral("include '%1' stands before any element").arg(rel));
        return true;
    }
    // Relative to the including file; an absolute path stands as it is.
    QString const base = XNode::rootOf(nCurrent)->getFile();
    QString path = rel;
    if (QFileInfo(rel).isRelative())
        path =
            getDirPath(base).isEmpty() ? QFileInfo(rel).absoluteFilePath() : getAbsPath(base, rel);
    if (!QFileInfo(path).isFile()) {
        ppDebug("XNode::inspectTypeAttribs, file '$' does not exist", path);
        includeProblem(QStringLiteral("include '%1' does not exist").arg(path));
        return true;
    }
    if (IncludeTrail::contains(path)) {
        ppError("XNode::inspectTypeAttribs, include loop: '$' is already being read", path);
        includeProblem(QStringLiteral("include loop: '%1' includes itself").arg(path));
        return true;
    }
    XNode *included = XNode::parseFile(path, nodeCreator, nullptr);
    if (!included) {
        includeProblem(QStringLiteral("include '%1' cannot be parsed").arg(path));
        return true;
    }
    QString const *flag = findValue(attributes, QLatin1String("includeRoot"));
    bool const keepRoot = !flag || *flag == QLatin1String("true") || *flag == QLatin1String("1") ||
                          *flag == QLatin1String("True");
    if (keepRoot) {
        if (!nCurrent->addNode(included, false))
            delete included;
        return true;
    }
    // Each accepted child leaves the included root before the root is freed.
    std::vector<XNode *> refused;
    for (XNode *child : included->children())
        if (!nCurrent->addNode(child, true))
            refused.push_back(child);
    included->children().swap(refused);
    delete included;
    return true;
}

} // namespace orv
