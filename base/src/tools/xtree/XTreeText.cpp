// XTreeText.cpp: the text forms of a tree: one-line summaries and the indented listing
// that goes to the log (show) or to a stream.
#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"

#include <QtCore/QStringList>

namespace orv {

namespace {

QString plainValues(XTree_View const &view, XTypeSupporter const &s) {
    QStringList pairs;
    for (XTree_View::Entry const &entry : view.values)
        pairs << QLatin1Char('{') + *entry.first + QLatin1Char(':') +
                     entry.second->toStringExtended(s) + QLatin1Char('}');
    return pairs.join(QStringLiteral(", "));
}

} // namespace

QString XTree::toString(XTypeSupporter const &s) const {
    QString text = getTypeAsString();
    if (text != str_XTree)
        text += QStringLiteral("(XTree)");
    XTree_View const view = treeView();
    if (!view.trees.empty())
        text += xprintF("(SubTrees:$)", static_cast<quint64>(view.trees.size()));
    if (!view.values.empty())
        text += QStringLiteral(", ") + plainValues(view, s);
    return text;
}

QString XTree::toStringExtended(XTypeSupporter const &s) const {
    QString text;
    for (auto const &[key, val] : map) {
        QString const value = s.isTreeType(val.getType()) && val.isTree() && val.getPointer()
                                  ? static_cast<XTree const *>(val.getPointer())
                                        ->toString(XTypeSupporter::basicTypes())
                                  : val.toStringExtended(s);
        text += QStringLiteral("{") + key + QStringLiteral(": '") + value + QStringLiteral("'} ");
    }
    return text;
}

void XTree::lines(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
                  qint64 index, XTreeArray::LineSink const &sink) const {
    QString head;
    if (!name.isEmpty())
        head += name + QLatin1Char(' ');
    if (index >= 0)
        head += QString::asprintf("[%03d] ", static_cast<int>(index));
    head += arrow ? QStringLiteral("->") : QStringLiteral("+");
    head += QLatin1Char(' ') + getTypeAsString();
    if (getTypeAsString() != str_XTree)
        head += QStringLiteral("(XTree)");
    XTree_View const view = treeView();
    sink(space, head + plainValues(view, s));
    for (XTree_View::Entry const &entry : view.trees)
        if (entry.second->getPointer())
            static_cast<XTree const *>(entry.second->getPointer())
                ->lines(s, space + 4, *entry.first, false, -1, sink);
    for (XTree_View::Entry const &entry : view.arrays) {
        auto const *array = static_cast<XTreeArray const *>(entry.second->getPointer());
        if (!array)
            continue;
        QString const &key = *entry.first;
        if (s.isTreeType(array->type()))
            array->treesLines(space + 4, key, array->size(), s, sink);
        else if (!array->isCategoryLink())
            sink(space + 4, array->extendedText(key, s));
        else
            sink(space + 4, xprintF("$ [$] XLinks =>>>", key, array->size()));
    }
}

void XTree::show(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
                 qint64 index) const {
    lines(s, space, name, arrow, index,
          [](unsigned int at, QString const &text) { ppDebug(at, text); });
}

void XTree::toStream(XStringStream &stream, XTypeSupporter const &s, unsigned int space,
                     QString const &name, bool arrow, qint64 index) const {
    lines(s, space, name, arrow, index, [&stream](unsigned int at, QString const &text) {
        stream << xspace(at) << text << '\n';
    });
}

} // namespace orv
