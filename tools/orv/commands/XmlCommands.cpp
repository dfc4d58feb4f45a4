// XmlCommands.cpp: the xml command: parse a document with its includes, summarize it,
// and on request show it, query it, check it against a schema and save it.
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XGenericTypes.h"
#include "orv/XNode.h"
#include "orv/XProgram.h"
#include "orv/parsing/SaxParser.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <memory>

namespace {

using namespace orv;

// Files from this size on get progress lines while they are read.
qint64 const PROGRESS_FROM_BYTES = 4 * 1000 * 1000;

struct TreeCounts {
    qint64 elements = 0;
    qint64 attributes = 0;
    int depth = 0;
};

TreeCounts countTree(XNode *root) {
    TreeCounts counts{1, root->countAttributes(), 0};
    root->iterateTree([&counts](XNode *n, unsigned int depth) {
        ++counts.elements;
        counts.attributes += n->countAttributes();
        counts.depth = std::max(counts.depth, static_cast<int>(depth) + 1);
        return true;
    });
    return counts;
}

// The listeners run on this (the GUI) thread at once, so lines come while parsing.
void addProgressLines(XNode_Parse_Control &control, QString const &file) {
    auto lastShown = std::make_shared<int>(-10);
    control.listeners.addListener([lastShown, file](XNode_Parse_Control &c) {
        int const percent = c.percent;
        if (percent < *lastShown + 10 || percent >= 100)
            return;
        *lastShown = percent;
        Logger::printToCout(QStringLiteral("xml: reading %1: %2 % (%3 of %4)")
                                .arg(file)
                                .arg(percent)
                                .arg(formatBytes(double(c.bytesRead.load())),
                                     formatBytes(double(c.bytesTotal.load()))));
    });
}

// Every finding of the schema at path on root; the schema's own consistency first.
int checkSchema(XNode *root, QString const &path) {
    XGenericTypeCreator const creator;
    std::unique_ptr<XNode> schemaDoc(XNode::parseFile(path, &creator, nullptr));
    if (!schemaDoc) {
        ppError("xml: cannot read the schema '$'", path);
        return QFileInfo(path).isFile() ? EXIT_ORV_PARSING : EXIT_ORV_FILE_NOT_FOUND;
    }
    XGenericTypes *schema = schemaDoc->getXGenericTypes();
    if (!schema) {
        ppError("xml: '$' holds no <XGenericTypes> element", path);
        return EXIT_ORV_XML;
    }
    std::vector<QString> findings;
    if (!schema->checkDescription())
        findings.push_back(QStringLiteral("the schema names a <Child> type it doesn't describe"));
    std::vector<QString> const document = schema->checkDocument(root);
    findings.insert(findings.end(), document.begin(), document.end());
    for (QString const &finding : findings)
        ppError("xml: schema: $", finding);
    if (findings.empty()) {
        ppInfo("xml: the document conforms to '$'", path);
        return EXIT_ORV_OK;
    }
    ppError("xml: $ schema finding(s)", static_cast<qint64>(findings.size()));
    return EXIT_ORV_XML;
}

int xmlCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("file"))) {
        ppError("xml: missing --file");
        return EXIT_ORV_ARGUMENT;
    }
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    QFileInfo const info(file);
    if (!info.isFile()) {
        ppError("xml: file '$' not found", file);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    XNode_Parse_Control control;
    if (info.size() >= PROGRESS_FROM_BYTES)
        addProgressLines(control, file);
    std::unique_ptr<XNode> root(XNode::parseFile(info, nullptr, &control));
    if (!root) {
        ppError("xml: cannot parse '$'", file);
        return EXIT_ORV_PARSING;
    }
    TreeCounts const counts = countTree(root.get());
    ppInfo("xml: $: $ elements, $ attributes, depth $, $, $ ms", file, counts.elements,
           counts.attributes, counts.depth, formatBytes(double(info.size())),
           QString::number(double(control.time_consumption()) / 1000.0, 'f', 1));

    int status = EXIT_ORV_OK;
    for (QString const &problem : control.includeProblems)
        ppError("xml: $", problem);
    if (!control.includeProblems.empty())
        status = EXIT_ORV_XML;
    if (kernel.hasKey(QStringLiteral("show")))
        root->showContents(0, INFO, nullptr);
    if (kernel.hasKey(QStringLiteral("query"))) {
        QString const path = kernel.getString(QStringLiteral("query"), QString());
        XNode const *found = root->query(path);
        if (found) {
            ppInfo(found->allAsString(0).trimmed());
        } else {
            ppError("xml: query '$' finds nothing", path);
            status = std::max(status, int(EXIT_ORV_GENERAL));
        }
    }
    if (kernel.hasKey(QStringLiteral("schema"))) {
        int const checked =
            checkSchema(root.get(), kernel.getString(QStringLiteral("schema"), QString()));
        status = std::max(status, checked);
    }
    if (kernel.hasKey(QStringLiteral("save"))) {
        QString const out = kernel.getString(QStringLiteral("save"), QString());
        if (!root->saveNodeToXml(out, QString())) {
            ppError("xml: cannot save to '$'", out);
            return EXIT_ORV_IO;
        }
        ppInfo("xml: saved to '$'", out);
    }
    return status;
}

ModuleTests const xmlCommands{
    {TestContext::FnKernel(xmlCommand), QStringLiteral("xml"),
     QStringLiteral("parse an XML document: --file F [--show] [--query P] [--schema S] "
                    "[--save OUT]"),
     true},
};

} // namespace
