// XTypeSupporter.cpp: the dispatch of values, arrays and trees to their readers and
// writers: the handler table for built-in simple types, the supporter's own code for
// trees, links and arrays of them.
#include "orv/XTypeSupporter.h"

#include "orv/Log.h"
#include "orv/XDataStream.h"
#include "orv/XError.h"
#include "orv/XTree.h"
#include "orv/XTreeArray.h"
#include "orv/XVal.h"

#include <limits>
#include <mutex>

namespace orv {

namespace {

// A count the device can't hold at the given bytes per element is damage.
bool countFits(XDataStream &stream, quint64 count, quint64 unit) {
    return count <= std::numeric_limits<quint64>::max() / unit && stream.canRead(count * unit);
}

} // namespace

XTypeSupporter::XTypeSupporter() : NameAble(QStringLiteral("Standard")) {
    // Filled once, by whichever supporter comes first, also when two threads race.
    static std::once_flag filled;
    std::call_once(filled, [] {
        XFunctionMapper &mapper = XFunctionMapper::instance();
#define ORV_ADD_FUNCTION(T, N) mapper.addFunction<T>();
        ORV_XTREE_SIMPLE_TYPES(ORV_ADD_FUNCTION)
#undef ORV_ADD_FUNCTION
    });
}

XTypeSupporter::~XTypeSupporter() = default;

XTypeSupporter const &XTypeSupporter::basicTypes() {
    static XTypeSupporter const *const types = new XTypeSupporter; // never destroyed
    return *types;
}

bool XTypeSupporter::writeVal(XDataStream &stream, XVal const &val) const {
    // A moved-from slot keeps its type but has nothing to write.
    if (!val.getPointer())
        return false;
    QString const &type = val.getType();
    if (XFunctionMapper::Handlers const *handlers = stream.handlersOf(type)) {
        handlers->write(stream, val);
        return true;
    }
    if (val.isTree())
        return writeTree(stream, val);
    if (isLink(type)) {
        auto *link = static_cast<XLink *>(val.getPointer());
        // The sizing pass of a file save asks every link, one without target too (which
        // says so); other writes ask only those they write.
        bool const current = (stream.refreshLinks || link->isValid()) && link->pointer_to_URL();
        if (!current) {
            // As it always was: nothing is written, and a reader loses step here.
            ppError("XTypeSupporter::writeVal, >>> LINK problem");
            return true;
        }
        stream.write_UTF8_String(link->url());
        return true;
    }
    if (val.isArray()) {
        auto const *array = static_cast<XTreeArray const *>(val.getPointer());
        stream << array->type();
        stream.writeCount(array->size());
        return writeArray(stream, *array);
    }
    return false;
}

bool XTypeSupporter::readVal(XDataStream &stream, QString const &type, XVal &val) const {
    if (XFunctionMapper::Handlers const *handlers = stream.handlersOf(type)) {
        handlers->read(stream, val);
        return true;
    }
    if (typeSet.isTypeTree(type)) {
        readTree(stream, val, type);
        return true;
    }
    if (isLink(type)) {
        val.setValPointer(new XLink(stream.readString()));
        return true;
    }
    if (type == XTreeArray::str_XTreeArray) {
        QString const elementType = stream.readQtString();
        qint64 count = 0;
        stream.readNumber(count);
        return readArray(stream, elementType, static_cast<quint64>(count), val);
    }
    return false;
}

bool XTypeSupporter::writeTree(XDataStream &stream, XVal const &val) const {
    if (!val.isType(XTree::str_XTree))
        return false;
    static_cast<XTree const *>(val.getPointer())->writeToStream(stream);
    return true;
}

bool XTypeSupporter::readTree(XDataStream &stream, XVal &val, QString const &type) const {
    if (type != XTree::str_XTree)
        return false;
    // Read in place: a move would repair the parents of the whole subtree once per level.
    auto *tree = new XTree;
    val.setValPointer(tree);
    tree->readFromStream(stream);
    return true;
}

bool XTypeSupporter::writeArray(XDataStream &stream, XTreeArray const &array) const {
    QString const &type = array.type();
    if (XFunctionMapper::Handlers const *handlers = stream.handlersOf(type))
        if (handlers->writeArray(stream, array))
            return true;
    if (type.isEmpty()) {
        ppError("XTypeSupporter::writeArray, NO TYPE ?");
        return true;
    }
    if (typeSet.isTypeTree(type)) {
        auto const *trees = static_cast<XTree const *>(array.getArray());
        for (quint64 i = 0; i < array.size(); ++i)
            trees[i].writeToStream(stream);
        return true;
    }
    if (array.category() == XVal::LINK) {
        // The URL fields as they stand: XTree::pointer_to_URL refreshes them, and the
        // sizing pass of a file save (whose tree is not const), not a plain write.
        auto *links = static_cast<XLink *>(const_cast<void *>(array.getArray()));
        for (quint64 i = 0; i < array.size(); ++i) {
            if (stream.refreshLinks)
                links[i].pointer_to_URL();
            stream.write_UTF8_String(links[i].url());
        }
        return true;
    }
    return false;
}

bool XTypeSupporter::readArray(XDataStream &stream, QString const &type, quint64 count,
                               XVal &val) const {
    if (XFunctionMapper::Handlers const *handlers = stream.handlersOf(type))
        if (handlers->readArray(stream, val, count))
            return true;
    if (isLink(type)) {
        if (!countFits(stream, count, 8)) // a URL takes at least its length field
            return false;
        auto *links = new XLink[count];
        for (quint64 i = 0; i < count; ++i)
            links[i].setURL(stream.readString());
        auto *array = new XTreeArray;
        array->adopt(links, count);
        val.setValPointer(array);
        return true;
    }
    if (typeSet.isTypeTree(type) && countFits(stream, count, 4)) // a body takes its count field
        return readTreeArray(stream, type, val, static_cast<unsigned int>(count));
    return false;
}

bool XTypeSupporter::readTreeArray(XDataStream &stream, QString const &type, XVal &val,
                                   unsigned int count) const {
    if (type != XTree::str_XTree || !countFits(stream, count, 4))
        return false;
    auto *trees = new XTree[count];
    for (unsigned int i = 0; i < count; ++i)
        trees[i].readFromStream(stream);
    auto *array = new XTreeArray;
    array->adopt(trees, count);
    val.setValPointer(array);
    return true;
}

QString XTypeSupporter::val_simpleType_as_String(XVal const &val) const {
    ORV_ASSERT(!val.isArray() && !val.isTree());
    XFunctionMapper::Handlers const *handlers = XFunctionMapper::instance().find(val.getType());
    return handlers && val.getPointer() ? handlers->toString(val) : QString();
}

} // namespace orv
