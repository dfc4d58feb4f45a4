// XNodeParse.cpp: trees read from files, resources and memory, the read-modify-write
// transaction on a file, and merging a file into an existing node.
#include "orv/GuiThread.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/OrvTime.h"
#include "orv/XMem.h"
#include "orv/XMemFile.h"
#include "orv/XNode.h"
#include "tools/xml/OrvSaxParser.h"

#include <QtCore/QFile>
#include <QtCore/QTextStream>

namespace orv {

namespace {

// Only a control the caller passed in is watched; a local one is gone before a posted
// call could run.
void postListeners(XNode_Parse_Control *control) {
    if (control && control->listeners.isEnabled())
        qt::run_in_Gui_Thread([control] { control->listeners.fireEvent(*control); }, 0);
}

QString readResource(QString const &path, bool &opened) {
    QFile file(path);
    opened = file.open(QIODevice::ReadOnly);
    if (!opened)
        return QString();
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    return stream.readAll();
}

// A text in memory: the root's file is ":MEMORY". A text without any element gives null.
XNode *parseMemory(QString const &xml, XmlNodeCreator const *creator, char const *failText) {
    XNode_Parse_Control control;
    control.listeners.enable(false);
    OrvSaxParser parser(creator, &control);
    parser.setBuffer(xml);
    if (!parser.parse(control)) {
        ppError(failText);
        delete parser.root();
        return nullptr;
    }
    XNode *root = parser.root();
    if (root)
        root->setFile(QStringLiteral(":MEMORY"));
    return root;
}

} // namespace

XNode *XNode::parseFile(QFileInfo const &fileInfo, XmlNodeCreator const *creator,
                        XNode_Parse_Control *control) {
    if (!fileInfo.exists()) {
        ppError("XNode::parseFile <<<$>>> does not exist", fileInfo.filePath());
        return nullptr;
    }
    if (!fileInfo.isFile()) {
        ppError("XNode::parseFile <<<$>>> not a file", fileInfo.filePath());
        return nullptr;
    }
    return parseFile(fileInfo.absoluteFilePath(), creator, control);
}

XNode *XNode::parseFile(QString const &path, XmlNodeCreator const *creator,
                        XNode_Parse_Control *control) {
    if (path.isEmpty()) {
        ppError("XNode::parseFile, s.length() == 0 !, no file ?");
        return nullptr;
    }
    XNode_Parse_Control local;
    local.listeners.enable(false);
    XNode_Parse_Control &ctl = control ? *control : local;
    ctl.reset();
    ctl.timeStart = getMicroseconds();

    QString text;
    QString fullPath = path;
    if (path.startsWith(QLatin1Char(':'))) {
        Logger::printToCout(QStringLiteral("XNode_parse::parseFile, RESOURCE:'%1'").arg(path));
        bool opened = false;
        text = readResource(path, opened);
        if (!opened) {
            ppError("XNode::parseFile, problems opening '$'", path);
            return nullptr;
        }
    } else {
        bool const drive = path.size() > 2 && path.at(1) == QLatin1Char(':');
        if (!drive && !path.startsWith(QLatin1Char('/')))
            fullPath = QFileInfo(path).absoluteFilePath();
        if (fullPath.contains(QLatin1Char('$'))) {
            ppDebug("XNode::parseFile, DOLLAR signes where not resolved!");
            return nullptr;
        }
    }
    if (text.isEmpty()) {
        if (QFileInfo(fullPath).isFile())
            text = XMemFile::fromFile(fullPath);
        if (text.isEmpty()) {
            ppError("XNode::parseFile,  file '$' does not exist", fullPath);
            return nullptr;
        }
    }

    IncludeTrail const entered(fullPath, &ctl);
    OrvSaxParser parser(creator, &ctl);
    parser.setBuffer(text);
    parser.setFile(fullPath);
    bool const ok = parser.parse(ctl);
    XNode *root = parser.root();
    ctl.timeLast = getMicroseconds();
    if (ok && !ctl.cancelled) {
        ctl.percent = 100;
        ctl.result = root;
        postListeners(control);
        return root;
    }
    if (ok) {
        ppWarning("XNode::parseFile, cancelled");
        if (root) {
            ppWarning(4, "XNode::parseFile, delete node, return nullptr");
            delete root;
        }
        return nullptr;
    }
    ppError("XNode::parseFile,2, cannot parse file '$'", fullPath);
    ctl.percent = 100;
    if (root) {
        ppDebug("XNode::parseFile,3, delete nRoot ( partial parsed stuff )");
        delete root;
    }
    postListeners(control);
    return nullptr;
}

XNode *XNode::parseString(QString const &xml, XmlNodeCreator const *creator) {
    if (xml.isEmpty()) {
        ppError("XNode::parseString, strXmlInMemory.length() == 0");
        return nullptr;
    }
    return parseMemory(xml, creator, "XNode::parseString, cannot parse memory !");
}

XNode *XNode::parseQByteArray(QByteArray const &bytes, XmlNodeCreator const *creator) {
    if (bytes.isEmpty()) {
        ppError("XNode::parseQByteArray, ar.size() == 0");
        return nullptr;
    }
    return parseMemory(QString::fromUtf8(bytes), creator,
                       "XNode::parseQByteArray, cannot parse memory !");
}

XNode *XNode::parseXMem(XMem const &mem, XmlNodeCreator const *creator) {
    return parseString(mem.get_string(), creator);
}

bool XNode::transact(QFileInfo const &fileInfo, std::function<bool(XNode *)> fn) {
    return transact(fileInfo.absoluteFilePath(), std::move(fn));
}

bool XNode::transact(QString const &path, std::function<bool(XNode *)> fn) {
    ppDebug("XNode::transact <$>", path);
    if (!fn) {
        ppError("XNode::transact, callback not set for file '$'", path);
        return false;
    }
    XNode *root = parseFile(path, nullptr, nullptr);
    if (!root) {
        ppError("XNode::transact, couldn't parse file '$'", path);
        return false;
    }
    if (!fn(root)) {
        ppError("XNode::transact, failed for '$'", path);
        delete root;
        return false;
    }
    bool const saved = root->saveNodeToXml(path, QString());
    ppDebug("XNode::~transact <$> successful:$", path, saved);
    delete root;
    return saved;
}

bool XNode::parseCustomType(QString const &path, XmlNodeCreator &creator) {
    XNode *n = parseFile(path, &creator, nullptr);
    ppDebug("XNode::parseCustomType, i am a <$>", type);
    if (!n)
        return false;
    ppDebug("XNode::parseCustomType, n is a <$>", n->type);
    if (n->type != type) {
        ppWarning("XNode::parseCustomType, different types");
        delete n;
        return false;
    }
    file = n->file;
    // The loaded root's type goes into the text field; its own text is lost.
    text = n->type;
    moveAttributes(this, n);
    moveChildren(this, n);
    delete n;
    return true;
}

} // namespace orv
