// treefile_fuzz.cpp: loads arbitrary bytes as a tree file (the first byte picks the array
// form), walks what loaded through paths and text forms, and checks that a tree that
// loaded cleanly writes bytes that load back to the same bytes.
#include "FuzzCheck.h"
#include "orv/XDataStream.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"

#include <QtCore/QBuffer>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace orv;

void quiet(QtMsgType, QMessageLogContext const &, QString const &) {}

// What writes differently from what it read: an "int8" value (4 bytes out, 1 in), the
// same by element, and a link whose target's path doesn't lead back to it (none at all,
// the root's empty path, keys with "/" or ".." in them): it loads unresolved, and an
// unresolved link writes nothing.
bool rereadable(XTree &tree, XTree &root) {
    for (auto const &[key, val] : tree.getMap()) {
        if (val.isType(XTypeName<signed char>::name()))
            return false;
        if (XLink const *link = val.value<XLink>()) {
            XObject const *target = link->object();
            QString const path = target ? target->path() : QString();
            if (path.isEmpty() || root.pointerFromPath(path) != target)
                return false;
        }
        XTreeArray *array = const_cast<XVal &>(val).value<XTreeArray>();
        if (array && XDataStream::atomicConsiderByteOrder &&
            array->isType(XTypeName<signed char>::name()))
            return false;
        // Not unreadable, but writing a raw string array keeps its strings for the rest of
        // the process, and the leak checker would scan them again after every input.
        if (array && !XDataStream::atomicConsiderByteOrder &&
            array->isType(XTypeName<QString>::name()))
            return false;
        for (quint64 i = 0; array && i < array->size() && array->treeAt(i); ++i)
            if (!rereadable(*array->treeAt(i), root))
                return false;
        if (XTree *child = const_cast<XVal &>(val).value<XTree>();
            child && !rereadable(*child, root))
            return false;
    }
    return true;
}

// The whole file form, also of an empty tree.
QByteArray fileOf(XTree const &tree) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    tree.writeToDevice(buffer, XTypeSupporter::basicTypes());
    return bytes;
}

bool load(QByteArray bytes, XTree &tree) {
    XMemoryWrapper device(bytes.data(), quint64(bytes.size()), QIODevice::ReadOnly);
    return tree.readFromDevice(device, XTypeSupporter::basicTypes());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    static bool const setUp = [] {
        qInstallMessageHandler(quiet);
        XDataStream::setFailurePauseMs(0);
        return true;
    }();
    (void)setUp;
    if (size == 0)
        return 0;
    XDataStream::atomicConsiderByteOrder = (data[0] & 1) != 0;
    XTypeSupporter const &types = XTypeSupporter::basicTypes();
    XTree tree;
    bool const clean = load(
        QByteArray(reinterpret_cast<char const *>(data) + 1, static_cast<int>(size - 1)), tree);

    QString text;
    XStringStream stream(&text);
    tree.toStream(stream, types, 0, QString(), false, -1);
    for (auto const &entry : tree.getMap())
        tree.pointerFromPath(QStringLiteral("/%1/0/..").arg(entry.first));

    if (clean && rereadable(tree, tree)) {
        QByteArray const once = fileOf(tree);
        XTree again;
        check(load(once, again));
        check(fileOf(again) == once);
    }
    return 0;
}
