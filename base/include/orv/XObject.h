// XObject.h: the base of everything that has a place in a tree (a parent, a path),
// and XLink, a reference from one place of a tree to another that survives saving.
//
//   tree.setLink(QStringLiteral("toB"), QStringLiteral("/a/b"));   // an XLink under "toB"
//   orv::XObject *b = tree.pointerFromPath(QStringLiteral("/a/b"));
//   b->path();                                                     // "/a/b"
//
// Parents are raw pointers: after a tree moves, XTree::set_parent_recursive repairs them.
#pragma once

#include "orv/AtomicBits.h"
#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"

#include <QtCore/QString>

namespace orv {

class XStringStream;
class XTree;
class XTypeSupporter;

class ORV_EXPORT XObject {
public:
    XObject();
    // Copies take the word and the parent pointer.
    XObject(XObject const &other);
    XObject &operator=(XObject const &other);
    virtual ~XObject();

    // "XObject".
    virtual QString toString(XTypeSupporter const &s) const;
    virtual unsigned char category() const;
    // Null here: only trees hold trees.
    virtual XTree *getTree(QString const &key);
    // The child object under key (a tree, an array, a link, an array element), or null.
    virtual XObject *objectByKey(QString const &key);
    // The key under which child hangs here, or "".
    virtual QString keyOf(XObject const *child) const;
    // The keys from the root down to this, each behind a "/"; "" for a root.
    virtual QString path() const;
    virtual void show(XTypeSupporter const &s, unsigned int space, QString const &name, bool arrow,
                      qint64 index) const;
    virtual void toStream(XStringStream &stream, XTypeSupporter const &s, unsigned int space,
                          QString const &name, bool arrow, qint64 index) const;

    // Swaps word and parent.
    void _swapObject(XObject &&other);

    XObject *parent() { return pParent; }
    XObject const *parent() const { return pParent; }
    // A null parent is fatal; a parent is never cleared through this call.
    void setParent(XObject *parent);
    AtomicBits &word() { return bits; }
    AtomicBits const &word() const { return bits; }

    XObject *rootObject();
    XObject const *rootObject() const;
    bool isRoot() const { return pParent == nullptr; }
    // The number of ancestors.
    unsigned int level() const;
    // The same questions of a pointer that may be null: null, true and 0 for null.
    static XObject *rootObject(XObject *object);
    static bool isRoot(XObject const *object);
    static unsigned int level(XObject const *object);
    // A null pOther is fatal; this itself is the same root, with a WARN line.
    bool hasSameRoot(XObject *pOther);

    static bool is_debug() { return atomicFlagDebug; }
    static void set_debug(bool on) { atomicFlagDebug = on; }
    // The debug switch of the whole tree family.
    static XAtomic<bool> atomicFlagDebug;
    static QString const str_XObject;

private:
    AtomicBits bits;
    XObject *pParent = nullptr;
};

// A link holds a live pointer (null while unresolved) and the target's path as text:
// files keep the text, and loading resolves it once the whole tree exists.
class ORV_EXPORT XLink : public XObject {
public:
    XLink();
    explicit XLink(QString const &url);
    explicit XLink(XObject *object);
    // Both swap object part, pointer and URL with the source.
    XLink(XLink &&other) noexcept;
    XLink &operator=(XLink &&other) noexcept;
    ~XLink() override;

    // "XLink".
    QString toString(XTypeSupporter const &s) const override;
    unsigned char category() const override;

    bool isValid() const { return pObject != nullptr; }
    explicit operator bool() const { return isValid(); }
    XObject *object() { return pObject; }
    XObject const *object() const { return pObject; }
    void setObject(XObject *object) { pObject = object; }
    QString const &url() const { return urlText; }
    void setURL(QString const &url) { urlText = url; }

    // url = the target's path; false with a DEBUG line (url kept) without a target.
    bool pointer_to_URL();
    // Looks the url up from owner (from its root when it starts with "/"); false with a
    // WARN line for an empty or unknown url, the pointer then untouched. A null owner is
    // fatal.
    bool URL_to_pointer(XTree *pTreeSomeOwner);

    static QString const str_XLink;

private:
    void swapLink(XLink &other);

    XObject *pObject = nullptr;
    QString urlText;
};

} // namespace orv
