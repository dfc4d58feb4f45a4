// XVal.h: the owning, type-erased slot under each key of a tree, and XDestructor,
// the knowledge of how to destroy what the slot points to.
//
//   orv::XVal slot;
//   slot.setValMove(42);                      // type "int32"; the caller sets the category
//   int const *p = slot.value<int>();         // null for any other type
//
// Not synchronised: a slot belongs to the thread that owns its tree.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XTypeName.h"

#include <QtCore/QString>

#include <cstddef>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>

namespace orv {

class XTypeSupporter;

// Destroys one object (or one new[] block) whose static type only the code that made it
// knew. Copies refer to the same object: the owner sees to it that only one kills it.
class ORV_EXPORT XDestructor {
public:
    XDestructor();
    XDestructor(void *p, std::function<void()> destroy);
    XDestructor(XDestructor const &other);
    XDestructor &operator=(XDestructor const &other);
    // Drops the function, never the object.
    ~XDestructor();

    // Runs the function and forgets the object; with no object only traces. An empty
    // function is std::bad_function_call, as for any std::function.
    void kill();
    // Forgets the object without destroying it: ownership went elsewhere.
    void setNull() { p = nullptr; }
    void *pointer() const { return p; }

    // The two forms of destroy: delete, and delete[] for a block from new[].
    template <typename T> static XDestructor *forObject(T *object);
    template <typename T> static XDestructor *forArray(T *block);
    // A new T and its destructor in one allocation: kill() ends the T, deleting the
    // destructor frees both. Values are many and small; this halves their allocations.
    template <typename T, typename... Args>
    static XDestructor *withObject(T *&object, Args &&...args);

    // Frees the whole allocation also of a destructor made by withObject.
    static void operator delete(void *p) { ::operator delete(p); }

    // TEST and DEBUG trace lines of destruction.
    static bool flagDebug;

private:
    static void traceDestroy(bool block, QString const &type);

    void *p = nullptr;
    std::function<void()> destroy;
};

class ORV_EXPORT XVal {
public:
    static constexpr unsigned char SIMPLE = 1;
    static constexpr unsigned char TREE = 2;
    static constexpr unsigned char ARRAY = 3;
    static constexpr unsigned char LINK = 4;

    XVal();
    // Both take the value, type and category; the source keeps its type and category
    // but no value. Assignment destroys the value held before.
    XVal(XVal &&other) noexcept;
    XVal &operator=(XVal &&other) noexcept;
    XVal(XVal const &) = delete;
    XVal &operator=(XVal const &) = delete;
    virtual ~XVal();

    QString const &getType() const { return type; }
    void setType(QString const &name) { type = name; }
    unsigned char getCategory() const { return category; }
    void setCategory(unsigned char c) { category = c; }
    bool isType(QString const &name) const { return type == name; }
    bool isSimpleType() const { return category == SIMPLE; }
    bool isTree() const { return category == TREE; }
    bool isArray() const { return category == ARRAY; }
    bool isLink() const { return category == LINK; }
    // A null pMem is fatal.
    bool isSamePointer(void const *pMem) const;
    void *getPointer() const { return pVal; }

    // The first 32-bit word of the value; 0 (or no write) with an ERROR line when empty.
    unsigned int countElements() const;
    void setCountElements(unsigned int n);

    // "SIMPLE", "TREE", "ARRAY", "LINK" or "UNKNOWN-CATEGORY".
    static QString categoryToString(unsigned char c);
    // toStringExtended with the basic types.
    QString toString() const;
    // "type, text"; an array value ends the process (the supporter's arrayAsString).
    QString toStringExtended(XTypeSupporter const &s) const;
    void showExtended(unsigned int space, XTypeSupporter const &s) const;

    // Stores a copy of a simple value, or takes an XTree, XTreeArray or XLink by move,
    // and sets the type name. The new value is taken before the old one dies, so a
    // value may come from inside the one it replaces. The category is the caller's.
    template <typename T> void setValMove(T &&value);
    // The same for an object already on the heap (from new T): the slot owns it now.
    template <typename T> void setValPointer(T *fresh) {
        replaceWith(fresh, XDestructor::forObject(fresh), XTypeName<T>::name());
    }

    // The value as T, or null when the slot holds another type or nothing.
    template <typename T> T *value() {
        return pVal && type == XTypeName<T>::name() ? static_cast<T *>(pVal) : nullptr;
    }
    template <typename T> T const *value() const { return const_cast<XVal *>(this)->value<T>(); }

    static bool isDebug() { return flagDebug; }
    static void setDebug(bool on) { flagDebug = on; }
    static bool flagDebug;

private:
    void replaceWith(void *fresh, XDestructor *freshDestructor, QString const &name);

    QString type;
    void *pVal = nullptr;
    unsigned char category = SIMPLE;
    XDestructor *destructor = nullptr;
};

template <typename T> XDestructor *XDestructor::forObject(T *object) {
    return new XDestructor(object, [object] {
        if (!object)
            return;
        if (flagDebug)
            traceDestroy(false, XTypeName<T>::name());
        delete object;
    });
}

template <typename T> XDestructor *XDestructor::forArray(T *block) {
    return new XDestructor(block, [block] {
        if (!block)
            return;
        if (flagDebug)
            traceDestroy(true, XTypeName<T>::name());
        delete[] block;
    });
}

template <typename T, typename... Args>
XDestructor *XDestructor::withObject(T *&object, Args &&...args) {
    std::size_t constexpr offset = (sizeof(XDestructor) + alignof(T) - 1) / alignof(T) * alignof(T);
    void *const raw = ::operator new(offset + sizeof(T));
    T *made = nullptr;
    try {
        made = new (static_cast<char *>(raw) + offset) T(std::forward<Args>(args)...);
    } catch (...) {
        ::operator delete(raw);
        throw;
    }
    object = made;
    return new (raw) XDestructor(made, [made] {
        if (flagDebug)
            traceDestroy(false, XTypeName<T>::name());
        made->~T();
    });
}

template <typename T> void XVal::setValMove(T &&value) {
    using V = std::remove_cv_t<std::remove_reference_t<T>>;
    static_assert(XTypeName<V>::simple || std::is_rvalue_reference_v<T &&>,
                  "trees, arrays and links are stored by move");
    V *fresh = nullptr;
    XDestructor *const freshDestructor = XDestructor::withObject(fresh, std::forward<T>(value));
    replaceWith(fresh, freshDestructor, XTypeName<V>::name());
}

} // namespace orv
