// OrvSaxParser.h: the scanner subclass that builds an XNode tree, resolves INCLUDE
// elements and replaces `$(NAME)` variables in attribute values. Private to parsing.
#pragma once

#include "orv/XNode.h"
#include "orv/parsing/SaxParser.h"

#include <QtCore/QStack>

namespace orv {

class OrvSaxParser : public SaxParser {
public:
    // creator null: plain XNodes. control: where include problems are recorded.
    OrvSaxParser(XmlNodeCreator const *creator, XNode_Parse_Control *control);
    // Deletes nothing: the caller takes root() or deletes it.
    ~OrvSaxParser() override;

    void inspectText(QString const &text, int depth) override;
    bool inspectTypeAttribs(QString const &type, std::map<QString, QString> const &attributes,
                            int depth) override;

    XNode *root() const { return nRoot; }

protected:
    bool inspectTag(QString const &type, AttributeList const &attributes, int depth) override;

private:
    bool include(AttributeList const &attributes);
    void includeProblem(QString const &text);

    XNode *nRoot = nullptr;
    XNode *nCurrent = nullptr;
    QStack<XNode *> stackNodes;
    // Depths in the tree of the nodes on stackNodes and of nCurrent. They differ from the
    // tag depths: each further top-level element goes under the previous one.
    QStack<int> stackDepths;
    int currentDepth = 0;
    XmlNodeCreator const *nodeCreator;
    XmlNodeCreator const plainCreator;
    XNode_Parse_Control *control;
};

// The files being read on this thread, outermost first, so that a file that includes
// itself (at any depth) is refused instead of read forever.
class IncludeTrail {
public:
    // Whether path (an existing file) is being read on this thread.
    static bool contains(QString const &path);
    // The control of the outermost parse on this thread; null outside parseFile.
    static XNode_Parse_Control *outermostControl();
    // Enters path for the life of the object; the first entry on a thread names control.
    IncludeTrail(QString const &path, XNode_Parse_Control *control);
    ~IncludeTrail();
    IncludeTrail(IncludeTrail const &) = delete;
    IncludeTrail &operator=(IncludeTrail const &) = delete;
};

} // namespace orv
