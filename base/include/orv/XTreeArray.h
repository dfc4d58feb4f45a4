// XTreeArray.h: the homogeneous array of a tree: one raw block of elements of one
// type. Simple elements lie packed; XTree and XLink elements are real objects with the
// array as their parent.
//
//   orv::XTreeArray samples = orv::XTreeArray::create<float>(1 << 20);   // zeroed
//   samples.data<float>()[0] = 1.5f;
//   tree.setArray(QStringLiteral("samples"), std::move(samples));
#pragma once

#include "orv/XObject.h"
#include "orv/XTypeName.h"
#include "orv/XVal.h"

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace orv {

class XTree;

class ORV_EXPORT XTreeArray : public XObject {
public:
    XTreeArray();
    // Object part, type and category swapped; block and count taken, the source left
    // empty. Assignment releases what the target held.
    XTreeArray(XTreeArray &&other) noexcept;
    XTreeArray &operator=(XTreeArray &&other) noexcept;
    XTreeArray(XTreeArray const &) = delete;
    XTreeArray &operator=(XTreeArray const &) = delete;
    ~XTreeArray() override;
    void _deleteContents();

    // count value-initialised elements: zero numbers, identity matrices, empty trees.
    template <typename T> static XTreeArray create(quint64 count);
    template <typename T> static XTreeArray fromVector(std::vector<T> const &values);
    // Takes a block from new T[count]; what the array held before is released.
    template <typename T> void adopt(T *block, quint64 count);

    quint64 size() const { return count; }
    explicit operator bool() const { return count > 0; }
    QString const &type() const { return typeName; }
    bool isType(QString const &name) const { return typeName == name; }
    void *getArray() { return ar; }
    void const *getArray() const { return ar; }
    // The block as T, or null for another element type.
    template <typename T> T *data() {
        return typeName == XTypeName<T>::name() ? static_cast<T *>(ar) : nullptr;
    }
    template <typename T> T const *data() const {
        return const_cast<XTreeArray *>(this)->data<T>();
    }
    // Element i of an array of trees or of links; null for another category or out of range.
    XTree *treeAt(quint64 i);
    XLink *linkAt(quint64 i);

    unsigned char category() const override { return cat; }
    void setCategory(unsigned char c) { cat = c; }
    bool isCategorySimple() const { return cat == XVal::SIMPLE; }
    bool isCategoryTree() const { return cat == XVal::TREE; }
    bool isCategoryLink() const { return cat == XVal::LINK; }
    bool isCategoryArray() const { return cat == XVal::ARRAY; }
    // Trees and links get this array as parent (trees repair their own children).
    void setParentToChildren();

    // "XTreeArray<type>, category:c, elements:n".
    QString toString(XTypeSupporter const &s) const override;
    // Null, with three DEBUG lines: elements are reached through objectByKey.
    XTree *getTree(QString const &key) override;
    // The element at the decimal index key, for arrays of trees or links.
    XObject *objectByKey(QString const &key) override;
    // The decimal index of an element, or "".
    QString keyOf(XObject const *pChild) const override;
    void show(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
              qint64 index) const override;
    using XObject::toStream;

    // "type [count]".
    QString toStringExtended() const;
    // "key: type [count], <s.toString(array)>", and the same without the key.
    void showExtended(unsigned int space, QString const &key, XTypeSupporter const &s) const;
    void showExtended(unsigned int space, XTypeSupporter const &s) const;
    // "key: array of type [count]", then the first n elements shown as trees.
    void showTrees(unsigned int space, QString const &key, quint64 n,
                   XTypeSupporter const &s) const;
    void toStreamTrees(XStringStream &stream, unsigned int space, QString const &key, quint64 n,
                       XTypeSupporter const &s) const;
    void toStream_Extended(XStringStream &stream, unsigned int space, QString const &key,
                           XTypeSupporter const &s) const;

    static QString const str_XTreeArray;

private:
    friend class XTree;
    // One text line at an indentation: a log line, or a line of a stream.
    using LineSink = std::function<void(unsigned int space, QString const &text)>;

    static unsigned char categoryOf(QString const &elementType);
    // "key: type [count], <s.toString(array)>".
    QString extendedText(QString const &key, XTypeSupporter const &s) const;
    void treesLines(unsigned int space, QString const &key, quint64 n, XTypeSupporter const &s,
                    LineSink const &sink) const;

    void *ar = nullptr;
    QString typeName;
    XDestructor *destruct = nullptr;
    quint64 count = 0;
    unsigned char cat = XVal::SIMPLE;
};

template <typename T> XTreeArray XTreeArray::create(quint64 n) {
    XTreeArray array;
    array.adopt(new T[n](), n);
    return array;
}

template <typename T> XTreeArray XTreeArray::fromVector(std::vector<T> const &values) {
    static_assert(XTypeName<T>::simple, "trees and links are not copied");
    XTreeArray array;
    T *block = new T[values.size()];
    for (size_t i = 0; i < values.size(); ++i)
        block[i] = values[i];
    array.adopt(block, values.size());
    return array;
}

template <typename T> void XTreeArray::adopt(T *block, quint64 n) {
    _deleteContents();
    ar = block;
    destruct = XDestructor::forArray(block);
    count = n;
    typeName = XTypeName<T>::name();
    cat = categoryOf(typeName);
    setParentToChildren();
}

} // namespace orv
