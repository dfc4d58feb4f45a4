// XTree.h: the library's in-memory document of typed values: an ordered map from
// keys to values (numbers, geometry, strings, child trees, arrays, links), with a path
// language, a binary file form (plain or compressed) and text forms.
//
//   orv::XTree doc;
//   doc.set(QStringLiteral("count"), 7);                          // "int32"
//   doc.addTree(QStringLiteral("a")).set(QStringLiteral("x"), 1.5);
//   doc.saveAsFile(path, orv::XTypeSupporter::basicTypes());
//   orv::XTree back = orv::XTree::load(path, orv::XTypeSupporter::basicTypes());
//
// A tree belongs to one thread at a time and crosses threads by move. Subclasses name
// themselves through getTypeAsString, and a file loads only into the same kind of tree.
#pragma once

#include "orv/MD5.h"
#include "orv/XByteArray.h"
#include "orv/XMem.h"
#include "orv/XNullDevice.h"
#include "orv/XObject.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"
#include "orv/XVal.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <map>
#include <type_traits>
#include <utility>
#include <vector>

class QIODevice;

namespace orv {

class XDataStream;

// A snapshot of one tree sorted by kind, each list in map order. Valid while the tree
// is not changed.
struct XTree_View {
    using Entry = std::pair<QString const *, XVal *>;
    std::vector<Entry> trees;
    std::vector<Entry> arrays;
    std::vector<Entry> links;
    std::vector<Entry> values;
};

class ORV_EXPORT XTree : public XObject {
public:
    XTree();
    // Both swap object part, entries and filename, then repair the parents of the
    // target: a move-assignment hands the target's old entries to the source.
    XTree(XTree &&other) noexcept;
    XTree &operator=(XTree &&other) noexcept;
    XTree(XTree const &) = delete;
    XTree &operator=(XTree const &) = delete;
    ~XTree() override;
    // The swap without the parent repair.
    void _swap(XTree &&other);

    QString toString(XTypeSupporter const &s) const override;
    unsigned char category() const override;
    XTree *getTree(QString const &key) override { return getPointer<XTree>(key); }
    XObject *objectByKey(QString const &key) override;
    QString keyOf(XObject const *pChild) const override;
    void show(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
              qint64 index) const override;
    void toStream(XStringStream &stream, XTypeSupporter const &s, unsigned int space,
                  QString const &name, bool arrow, qint64 index) const override;

    // "XTree"; a subclass returns its own name, which heads its files.
    virtual QString getTypeAsString() const;
    virtual QString getType() const;

    // Entries; the filename stays.
    void clear();
    bool isEmpty() const { return map.empty(); }
    // All entries, not only trees.
    size_t countChildren() const { return map.size(); }
    explicit operator bool() const { return !map.empty(); }
    bool isValid() const { return !map.empty(); }
    bool containsKey(QString const &key) const { return map.count(key) != 0; }
    std::map<QString, XVal> const &getMap() const { return map; }
    // False with a WARN line for a missing key.
    bool erase(QString const &key);
    // A missing key is logged and then inserted with an empty value, also by the const
    // form; found, when given, tells.
    XVal &getVal(QString const &key, bool *found = nullptr);
    XVal &getVal(QString const &key, bool *found = nullptr) const;

    // Typed stores: a copy of a simple value (category SIMPLE), or a tree or array by
    // move; each replaces what the key held. The tree and array forms return the
    // stored object.
    template <typename T> void set(QString const &key, T const &value);
    void setString(QString const &key, QString const &value) { set(key, value); }
    XTree &setTree(QString const &key, XTree &&tree);
    XTree &addTree(QString const &key) { return setTree(key, XTree()); }
    XTreeArray &setArray(QString const &key, XTreeArray &&array);
    // The value under key, or dflt when it is missing or of another type.
    template <typename T> T get(QString const &key, T const &dflt) const;
    // The stored bool; dflt for another type, and (as it stands) whenever the key exists
    // while the debug switch is on.
    bool isFlag(QString const &key, bool dflt) const;

    QString const &getFilename() const { return filename; }
    void setFilename(QString const &path) { filename = path; }
    bool isBoundToFile(bool checkExists) const;
    bool isPureXTree() const;

    // The array under key, or a shared empty one with an ERROR line.
    XTreeArray &get_tree_array(QString const &key);
    // The bytes of the array under key, and the bytes stored as an "int8" array.
    XByteArray get_XByteArray(QString const &key);
    void set_XByteArray(QString const &key, XByteArray const &bytes);

    // The object under key as T (XTree, XTreeArray, XLink or XObject), or null with a
    // line when the key is missing or holds another kind.
    template <typename T> T *getPointer(QString const &key);
    // File-path grammar: "/" the root, ".." the parent, a name a key, a number an array
    // index; "" is this tree. Null, with a line, when the walk fails.
    XObject *pointerFromPath(QString const &path);

    // Stores a resolved link to path; false with an ERROR line when path leads nowhere.
    bool setLink(QString const &key, QString const &path);
    // A null pTree is fatal.
    void setLink(QString const &key, XTree *pTree);
    // All links of the tree, array elements too: URLs from pointers, pointers from URLs.
    void pointer_to_URL();
    void URL_to_pointer();
    // Makes every object's parent right again; needed after every move.
    void set_parent_recursive();
    XTree_View treeView() const;
    // Only XLink: the links in map order, descending in place.
    template <typename T> std::vector<T *> get_by_type(bool recursive, bool includeArrayElements);
    void showLinks(unsigned int space);

    // Whole-tree operations; each takes the type supporter.
    quint64 calc_mem_size(XTypeSupporter const &s) const;
    XRamInfo createRamInfo(XTypeSupporter const &s, bool md5) const;
    MD5 calc_MD5(XTypeSupporter const &s) const;
    QString calc_MD5Sum(XTypeSupporter const &s) const;
    // The file's bytes in memory; empty for an empty tree.
    XMem createMem(XTypeSupporter const &s) const;
    XByteArray createByteArray(XTypeSupporter const &s) const;
    void copy(XTree *target, XTypeSupporter const &s) const;
    XTree create_copy(XTypeSupporter const &s) const;
    // Always with the basic types, whatever s is.
    QString create_string_base64(XTypeSupporter const &s) const;
    static XTree create_tree_from_base64(QString const &text, XTypeSupporter const &s);

    // Header and body. Reading empties the tree first; a header of another class leaves
    // it empty with an ERROR line. The result (not needed by the classic callers, who
    // learn from the tree) is false for a header, a value or a byte that could not be read.
    bool writeToDevice(QIODevice &device, XTypeSupporter const &s) const;
    bool readFromDevice(QIODevice &device, XTypeSupporter const &s);
    // The body alone.
    void writeToStream(XDataStream &stream) const;
    void readFromStream(XDataStream &stream);

    // True once the file is mapped, whatever its contents gave (see readFromDevice).
    bool loadFromFile(QString const &path, XTypeSupporter const &s);
    // A new tree bound to path whether or not it loaded.
    static XTree load(QString const &path, XTypeSupporter const &s);
    static XTree load(XMem &mem, XTypeSupporter const &s);
    // Writes into a memory map sized by a dry run; the tree is then bound to path.
    bool saveAsFile(QString const &path, XTypeSupporter const &s);
    bool save(XTypeSupporter const &s);

    // The compressed file: a 16-byte digest, then qCompress of the plain bytes. A bad
    // digest loads as an empty tree with a true result.
    XByteArray write_to_compressed_bytes(XTypeSupporter const &s) const;
    bool read_from_compressed_bytes(XByteArray const &bytes, XTypeSupporter const &s);
    bool save_as_compressed_file(QString const &path, XTypeSupporter const &s) const;
    bool save_as_compressed_file(QFileInfo const &file, XTypeSupporter const &s) const;
    bool load_from_compressed_file(QString const &path, XTypeSupporter const &s);
    bool load_from_compressed_file(QFileInfo const &file, XTypeSupporter const &s);

    // "{key: 'text'} " per entry.
    QString toStringExtended(XTypeSupporter const &s) const;

    // Only move-assignment looks at it; the trace lines hang on XObject's switch.
    static bool flagDebug;
    static QString const str_XTree;

protected:
    // Empties this tree, then swaps the entries only.
    virtual void _move(XTree &other);

private:
    friend class XTreeArray;

    XVal *findVal(QString const &key) const;
    // The tree, array or link a slot holds, as an object; null for simple values.
    static XObject *objectOf(XVal const &slot);
    static void logPointerMiss(int reason, QString const &key, QString const &type,
                               QString const &want);
    // The lines of show and toStream, to a log or a stream.
    void lines(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
               qint64 index, XTreeArray::LineSink const &sink) const;

    // Mutable because the const getVal inserts, as it always did.
    mutable std::map<QString, XVal> map;
    QString filename;
};

template <>
ORV_EXPORT std::vector<XLink *> XTree::get_by_type<XLink>(bool recursive,
                                                          bool includeArrayElements);

ORV_EXPORT XDataStream &operator<<(XDataStream &stream, XTree const &tree);
ORV_EXPORT XDataStream &operator>>(XDataStream &stream, XTree &tree);

template <typename T> void XTree::set(QString const &key, T const &value) {
    static_assert(XTypeName<T>::simple, "trees and arrays go in by setTree and setArray");
    XVal &slot = map[key];
    slot.setValMove(value);
    slot.setCategory(XVal::SIMPLE);
}

template <typename T> T XTree::get(QString const &key, T const &dflt) const {
    XVal const *slot = findVal(key);
    T const *p = slot ? slot->value<T>() : nullptr;
    return p ? *p : dflt;
}

template <typename T> T *XTree::getPointer(QString const &key) {
    static_assert(std::is_same_v<T, XTree> || std::is_same_v<T, XTreeArray> ||
                      std::is_same_v<T, XLink> || std::is_same_v<T, XObject>,
                  "objects of a tree are trees, arrays and links");
    XVal *slot = findVal(key);
    if (!slot) {
        logPointerMiss(0, key, QString(), QString());
        return nullptr;
    }
    QString const &want = [] {
        if constexpr (std::is_same_v<T, XObject>)
            return XObject::str_XObject;
        else
            return XTypeName<T>::name();
    }();
    if (slot->isType(XLink::str_XLink) && !std::is_same_v<T, XLink>) {
        logPointerMiss(1, key, slot->getType(), want);
        return nullptr;
    }
    if (slot->isType(XTreeArray::str_XTreeArray) && !std::is_same_v<T, XTreeArray> &&
        !std::is_same_v<T, XObject>) {
        logPointerMiss(2, key, slot->getType(), want);
        return nullptr;
    }
    // Only links and arrays were refused by name; a value of another category would be
    // read as T.
    unsigned char const c = slot->getCategory();
    bool const fits = std::is_same_v<T, XObject>      ? (c == XVal::TREE || c == XVal::ARRAY)
                      : std::is_same_v<T, XTree>      ? c == XVal::TREE
                      : std::is_same_v<T, XTreeArray> ? c == XVal::ARRAY
                                                      : c == XVal::LINK;
    if (!fits || !slot->getPointer()) {
        logPointerMiss(3, key, slot->getType(), want);
        return nullptr;
    }
    if constexpr (std::is_same_v<T, XObject>)
        return objectOf(*slot);
    else
        return static_cast<T *>(slot->getPointer());
}

} // namespace orv
