// XNodeSave.cpp: the text form that the parser reads again. Nothing is escaped, so a
// value holding a quote comes back shorter, and a leaf with text ends without a line feed.
#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XFile.h"
#include "orv/XMem.h"
#include "orv/XNode.h"
#include "orv/XStringStream.h"

#include <cstring>

namespace orv {

namespace {

QLatin1Char const LF('\n');
// Keys and values together, after which a long attribute list goes on on a new line.
int const FOLD_AFTER = 141;

} // namespace

void XNode::appendToStream(XStringStream &stream, XNode const &node, int indent) {
    unsigned int const space = static_cast<unsigned int>(std::max(indent, 0));
    stream << xspace(space) << '<' << node.type;
    std::map<QString, QString> const &attributes = node.getAttributes();
    if (!attributes.empty()) {
        stream << ' ';
        int count = 0;
        size_t left = attributes.size();
        for (auto const &entry : attributes) {
            --left;
            stream << entry.first << "=\"" << entry.second << "\" ";
            count += entry.first.size() + entry.second.size();
            if (count >= FOLD_AFTER && left > 0) {
                stream << LF << xspace(space + 8);
                count = 0;
            }
        }
    }
    if (node.childList.empty()) {
        if (node.hasText())
            stream << '>' << node.text << "</" << node.type << '>';
        else if (attributes.empty() && atomicWriteFullEmptyTags)
            stream << "></" << node.type << '>';
        else
            stream << "/>" << LF;
        return;
    }
    stream << '>' << LF;
    if (node.hasText())
        stream << node.text;
    for (XNode const *child : node.childList)
        appendToStream(stream, *child, indent + 4);
    stream << xspace(space) << "</" << node.type << '>' << LF;
}

QString XNode::allAsString(unsigned int indent) const {
    QString text;
    {
        XStringStream stream(&text);
        appendToStream(stream, *this, static_cast<int>(indent));
    }
    return text;
}

QString XNode::saveNodeToString(XNode const &node, QString const &) { return node.allAsString(0); }

void XNode::saveNodeToQByteArray(XNode const &node, QByteArray &bytes) {
    bytes.append(node.allAsString(0).toLatin1());
}

void XNode::saveNodeToXMem(XNode const &node, XMem &mem, unsigned int minSize) {
    QString const text = node.allAsString(0);
    if (minSize != 0 && minSize > static_cast<unsigned int>(text.size())) {
        QByteArray const latin1 = text.toLatin1();
        mem.reAlloc(minSize);
        std::memcpy(mem.mem(), latin1.constData(), static_cast<size_t>(latin1.size()));
        return;
    }
    mem.setString(text);
}

bool XNode::saveNodeToXml(QFileInfo const &fileInfo, QString const &comment) const {
    return saveNodeToXml(fileInfo.absoluteFilePath(), comment);
}

bool XNode::saveNodeToXml(QString const &name, QString const &comment) const {
    // Absolute, so that a bare file name still has a folder to make.
    QString const path = QFileInfo(name).absoluteFilePath();
    if (atomicFlagDebug)
        ppDebug("XNode::saveNodeToXml, path '$'", path);
    if (!mkDirPath(path, false)) {
        ppError("XNode::saveNodeToXml, cannot mkDirPath path for file '$'", path);
        return false;
    }
    FileWriter writer(path);
    if (!writer.isOpen()) {
        ppError("XNode::saveNodeToXml, cannot write file '$'", path);
        return false;
    }
    QString text;
    {
        XStringStream stream(&text);
        stream << "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>" << LF;
        if (!comment.isEmpty())
            stream << "<!--" << LF << comment << LF << "-->" << LF << LF;
        appendToStream(stream, *this, 0);
    }
    QByteArray const bytes = text.toUtf8();
    writer.write(bytes);
    // A failed write closes the writer: that is the one sign of a short file.
    bool const written = writer.isOpen();
    writer.close();
    if (!written)
        ppError("XNode::saveNodeToXml, cannot write file '$'", path);
    return written;
}

} // namespace orv
