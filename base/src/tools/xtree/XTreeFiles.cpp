// XTreeFiles.cpp: the tree as bytes: the body in a stream, the file with its header,
// memory maps, memory blocks, the compressed form and Base64.
#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XDataStream.h"
#include "orv/XFile.h"
#include "orv/XFileMapper.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XTree.h"

namespace orv {

namespace {

// Appends what is written to a growing block, so that a tree goes to memory in one pass
// (a file is sized by a dry run instead). The tree's own writes reach the block
// directly; this device serves the writes that go through QIODevice.
class AppendDevice : public QIODevice {
public:
    explicit AppendDevice(XMem &block) : block(block) { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(char const *data, qint64 n) override {
        block.append_raw_data(data, static_cast<quint64>(n));
        return n;
    }

private:
    XMem &block;
};

// Mappings from this size on give their pages back as the stream passes them, so that a
// file of many GiB costs little memory; for smaller ones that costs more than it saves.
quint64 const RELEASE_BEHIND_FROM = quint64(256) << 20;

// A first guess of the form's size from the top level and the sizes of the children,
// for the capacity of a growing block: growing by doubling would copy the bytes over
// and over. Capacity only: a guess too high costs address space, not memory.
quint64 sizeGuess(XTree const &tree) {
    quint64 const perEntry = 32;
    quint64 guess = 64;
    for (auto const &entry : tree.getMap()) {
        XVal const &val = entry.second;
        guess += perEntry;
        if (XTree const *child = val.isTree() ? val.value<XTree>() : nullptr)
            guess += perEntry * child->countChildren();
        if (XTreeArray const *array = val.isArray() ? val.value<XTreeArray>() : nullptr) {
            XFunctionMapper::Handlers const *h = XFunctionMapper::instance().find(array->type());
            guess += array->size() * (h ? h->elementSize : perEntry);
        }
    }
    return guess;
}

} // namespace

XRamInfo XRamInfo::ramInfoFromTree(XTree const &tree, XTypeSupporter const &s, bool withDigest) {
    XNullDevice device(withDigest);
    tree.writeToDevice(device, s);
    device.finalizeWriting();
    device.close();
    return device.ramInfo();
}

void XTree::writeToStream(XDataStream &stream) const {
    stream.writeNumber(static_cast<qint32>(map.size()));
    for (auto const &[key, val] : map)
        stream.writeEntry(key, val);
}

void XTree::readFromStream(XDataStream &stream) {
    if (!stream.enterTree())
        return;
    qint32 count = 0;
    if (stream.canRead(sizeof count))
        stream.readNumber(count);
    if (count < 0) {
        ppError("XTree::readFromStream, entry count:$ is negative", count);
        stream.setStatus(QDataStream::ReadCorruptData);
    } else if (!stream.canRead(static_cast<quint64>(count))) {
        count = 0; // more entries than bytes: the count is damaged
    }
    for (qint32 i = 0; i < count; ++i) {
        QString key = stream.readString();
        // Files hold their keys in order: the value is read in place at the end of the
        // map. A repeated key keeps the last value.
        XVal *slot = nullptr;
        if (map.empty() || map.rbegin()->first < key) {
            slot = &map.emplace_hint(map.end(), std::move(key), XVal())->second;
        } else {
            slot = &map[key];
            *slot = XVal();
        }
        bool const ok = stream.readVal(*slot);
        // Every object gets its parent here, so that a whole file needs no second walk.
        if (XObject *object = objectOf(*slot))
            object->setParent(this);
        // Past the end every further value fails too: one failed value ends the body.
        if (!ok && stream.status() != QDataStream::Ok)
            break;
    }
    stream.leaveTree();
}

bool XTree::writeToDevice(QIODevice &device, XTypeSupporter const &s) const {
    XDataStream stream(&device, s);
    stream.write_UTF8_String(getTypeAsString());
    writeToStream(stream);
    return stream.status() == QDataStream::Ok;
}

bool XTree::readFromDevice(QIODevice &device, XTypeSupporter const &s) {
    clear();
    XDataStream stream(&device, s);
    QString const header = stream.readString();
    if (header != getTypeAsString()) {
        ppError("XTree::readFromDevice, TYPE warning, we are <$> but should be <$>",
                getTypeAsString(), header);
        return false;
    }
    // The body sets every parent as it reads; links resolve only once every object
    // exists, and a file without links skips that walk.
    readFromStream(stream);
    if (stream.linksRead)
        URL_to_pointer();
    // A value cut at the very end reads as zeros without a word: say it here.
    if (stream.status() != QDataStream::Ok)
        ppError("XTree::readFromDevice, damaged body, stream status:$", int(stream.status()));
    return stream.status() == QDataStream::Ok && stream.countReadFailures() == 0;
}

XDataStream &operator<<(XDataStream &stream, XTree const &tree) {
    tree.writeToStream(stream);
    return stream;
}

XDataStream &operator>>(XDataStream &stream, XTree &tree) {
    tree.readFromStream(stream);
    return stream;
}

quint64 XTree::calc_mem_size(XTypeSupporter const &s) const {
    return XRamInfo::ramInfoFromTree(*this, s, false).size;
}

XRamInfo XTree::createRamInfo(XTypeSupporter const &s, bool md5) const {
    return XRamInfo::ramInfoFromTree(*this, s, md5);
}

MD5 XTree::calc_MD5(XTypeSupporter const &s) const { return createRamInfo(s, true).md5; }

QString XTree::calc_MD5Sum(XTypeSupporter const &s) const {
    return calc_MD5(s).hexdigest(true, true);
}

XMem XTree::createMem(XTypeSupporter const &s) const {
    XMem block;
    if (map.empty()) {
        ppDebug("XTree::createMem - Tree empty ?");
        return block;
    }
    block.reserve(sizeGuess(*this));
    AppendDevice device(block);
    XDataStream stream(&device, s);
    stream.appendTarget = &block;
    stream.write_UTF8_String(getTypeAsString());
    writeToStream(stream);
    return block;
}

XByteArray XTree::createByteArray(XTypeSupporter const &s) const {
    if (map.empty())
        return XByteArray();
    XMem const block = createMem(s);
    return XByteArray(block.mem(), static_cast<int>(block.size()));
}

void XTree::copy(XTree *target, XTypeSupporter const &s) const {
    XMem block = createMem(s);
    // An empty tree has no bytes to read: the copy is empty without a header warning.
    if (block.isEmpty()) {
        target->clear();
        return;
    }
    XMemoryWrapper device(block, QIODevice::ReadOnly);
    target->readFromDevice(device, s);
}

XTree XTree::create_copy(XTypeSupporter const &s) const {
    XTree twin;
    if (map.empty())
        ppWarning("XTree::create_copy - empty tree");
    else
        copy(&twin, s);
    return twin;
}

// Base64 of the compressed bytes themselves: read as UTF-8 text they would lose bytes
// (and Qt 5 stops such text at the first 0).
QString XTree::create_string_base64(XTypeSupporter const &) const {
    XTypeSupporter const &basic = XTypeSupporter::basicTypes();
    XByteArray const packed = XByteArray::compress(createMem(basic).createByteArray());
    return QString::fromLatin1(packed.toBase64());
}

XTree XTree::create_tree_from_base64(QString const &text, XTypeSupporter const &) {
    XTree tree;
    tree.read_from_compressed_bytes(XByteArray(QByteArray::fromBase64(text.toLatin1())),
                                    XTypeSupporter::basicTypes());
    return tree;
}

bool XTree::loadFromFile(QString const &path, XTypeSupporter const &s) {
    if (!fileExists(path)) {
        ppError("XTree::loadFromFile, file '$' does not exist !", path);
        return false;
    }
    XFileMapper file(path);
    // An empty file maps to nothing: the same failure as a map refused.
    char *const mapped = file.mapReadWrite() ? file.mem() : nullptr;
    if (!mapped) {
        ppError("XTree::loadFromFile, file mapper to file '$', mapReadWrite() failed !", path);
        return false;
    }
    XMemoryWrapper device(mapped, file.length(), QIODevice::ReadWrite);
    device.setReleaseBehind(file.length() >= RELEASE_BEHIND_FROM);
    readFromDevice(device, s);
    return true;
}

XTree XTree::load(QString const &path, XTypeSupporter const &s) {
    XTree tree;
    tree.loadFromFile(path, s);
    tree.setFilename(path);
    return tree;
}

XTree XTree::load(XMem &mem, XTypeSupporter const &s) {
    XTree tree;
    if (!mem.mem())
        return tree;
    XMemoryWrapper device(mem, QIODevice::ReadOnly);
    tree.readFromDevice(device, s);
    return tree;
}

bool XTree::saveAsFile(QString const &path, XTypeSupporter const &s) {
    // The file gets exactly the size of the binary form, counted before a byte is stored.
    // The count meets every link and brings its URL up to date: a walk of its own for
    // that would cost as much as the count.
    XNullDevice counter(false);
    XDataStream sizing(&counter, s);
    sizing.refreshLinks = true;
    sizing.write_UTF8_String(getTypeAsString());
    writeToStream(sizing);
    quint64 const size = counter.ramInfo().size;
    XFileMapper file(path);
    if (!file.mapReadWrite()) {
        ppError("XTree::saveAsFile, file mapper to file '$', mapReadWrite() failed !", path);
        return false;
    }
    if (!file.resize(size)) {
        ppError("XTree::saveAsFile, file mapper to file '$', resize:$ failed !", path,
                format1000(static_cast<qint64>(size)));
        return false;
    }
    char *const mapped = file.mem();
    if (!mapped) {
        ppError("XTree::saveAsFile, file mapper to file '$', mapReadWrite() failed !", path);
        return false;
    }
    XMemoryWrapper device(mapped, size, QIODevice::WriteOnly);
    device.setReleaseBehind(size >= RELEASE_BEHIND_FROM);
    writeToDevice(device, s);
    filename = path;
    return true;
}

bool XTree::save(XTypeSupporter const &s) {
    if (filename.isEmpty()) {
        ppError("XTree::save, object is not bound to a valid filename");
        return false;
    }
    return saveAsFile(filename, s);
}

XByteArray XTree::write_to_compressed_bytes(XTypeSupporter const &s) const {
    return XByteArray::compress(createByteArray(s));
}

bool XTree::read_from_compressed_bytes(XByteArray const &bytes, XTypeSupporter const &s) {
    XByteArray plain = XByteArray::unCompress(bytes);
    XMemoryWrapper device(plain, QIODevice::ReadOnly);
    readFromDevice(device, s);
    return true;
}

bool XTree::save_as_compressed_file(QString const &path, XTypeSupporter const &s) const {
    if (write_to_compressed_bytes(s).saveToFile(path, 0))
        return true;
    ppError("XTree::save_as_compressed_file, problems");
    return false;
}

bool XTree::save_as_compressed_file(QFileInfo const &file, XTypeSupporter const &s) const {
    return save_as_compressed_file(file.absoluteFilePath(), s);
}

bool XTree::load_from_compressed_file(QString const &path, XTypeSupporter const &s) {
    XByteArray bytes;
    if (!bytes.loadFromFile(path, 0)) {
        ppError("XTree::load_from_compressed_file, problems");
        return false;
    }
    return read_from_compressed_bytes(bytes, s);
}

bool XTree::load_from_compressed_file(QFileInfo const &file, XTypeSupporter const &s) {
    return load_from_compressed_file(file.absoluteFilePath(), s);
}

} // namespace orv
