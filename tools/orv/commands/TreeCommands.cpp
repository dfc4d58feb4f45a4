// TreeCommands.cpp: commands of the typed object tree: a tree file shown, or counted.
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XFileMapper.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XProgram.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

#include <map>

namespace {

using namespace orv;

// The plain form opens with the class name as a long string: an 8-byte length of a few
// bytes. The compressed form opens with a digest, whose first 8 bytes form so small a
// number about once in 2^53 files.
bool looksPlain(char const *bytes, quint64 size) {
    if (size < 8)
        return false;
    quint64 const nameLength = qFromBigEndian<quint64>(bytes);
    return nameLength > 0 && nameLength <= 1024 && nameLength <= size - 8;
}

// Counts by category, then by type; arrays by element type, with their elements.
struct Counts {
    std::map<QString, std::map<QString, quint64>> byCategory;
    quint64 elements = 0;

    void add(XTree const &tree) {
        for (auto const &[key, val] : tree.getMap()) {
            QString type = val.getType();
            if (auto const *array = val.isArray() ? val.value<XTreeArray>() : nullptr) {
                type = array->type() + QStringLiteral("[]");
                elements += array->size();
                for (quint64 i = 0; array->isCategoryTree() && i < array->size(); ++i)
                    add(*const_cast<XTreeArray *>(array)->treeAt(i));
            }
            ++byCategory[XVal::categoryToString(val.getCategory())][type];
            if (XTree const *child = val.isTree() ? val.value<XTree>() : nullptr)
                add(*child);
        }
    }
};

void showStats(XTree const &tree, quint64 fileSize) {
    Counts counts;
    counts.add(tree);
    for (auto const &[category, types] : counts.byCategory) {
        quint64 total = 0;
        for (auto const &entry : types)
            total += entry.second;
        ppInfo("$ $", category, total);
        for (auto const &[type, n] : types)
            ppInfo(4, "$ $", type, n);
    }
    ppInfo("array elements $", counts.elements);
    ppInfo("bytes $ (file $)", format1000(qint64(tree.calc_mem_size(XTypeSupporter::basicTypes()))),
           format1000(qint64(fileSize)));
}

int treeCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("file"))) {
        ppError("tree: missing --file");
        return EXIT_ORV_ARGUMENT;
    }
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    if (!QFileInfo(file).isFile()) {
        ppError("tree: file '$' not found", file);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    XFileMapper mapper(file);
    char *const bytes = mapper.mapReadOnly() ? mapper.mem() : nullptr;
    if (!bytes) {
        ppError("tree: '$' is empty or cannot be mapped", file);
        return EXIT_ORV_IO;
    }
    quint64 const size = mapper.length();
    bool const plain = looksPlain(bytes, size);
    XByteArray unpacked;
    if (!plain) {
        unpacked = XByteArray::unCompress(XByteArray::fromMem(bytes, size));
        if (unpacked.isEmpty())
            return EXIT_ORV_CHECKSUM;
    }
    XMemoryWrapper device = plain ? XMemoryWrapper(bytes, size, QIODevice::ReadOnly)
                                  : XMemoryWrapper(unpacked, QIODevice::ReadOnly);
    XTree tree;
    if (!tree.readFromDevice(device, XTypeSupporter::basicTypes())) {
        ppError("tree: '$' is damaged", file);
        return EXIT_ORV_PARSING;
    }
    ppInfo("tree '$', $ form, $ entries", file, plain ? "plain" : "compressed",
           quint64(tree.countChildren()));
    if (kernel.hasKey(QStringLiteral("stats"))) {
        showStats(tree, size);
        return EXIT_ORV_OK;
    }
    QString text;
    XStringStream stream(&text);
    tree.toStream(stream, XTypeSupporter::basicTypes(), 0, QString(), false, -1);
    stream.flush();
    for (QString const &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        ppInfo(line);
    return EXIT_ORV_OK;
}

ModuleTests const treeCommands{
    {TestContext::FnKernel(treeCommand), QStringLiteral("tree"),
     QStringLiteral("show a tree file, plain or compressed: --file F [--stats]"), true},
};

} // namespace
