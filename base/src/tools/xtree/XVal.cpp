// XVal.cpp: the owning value slot and its destructor object.
#include "orv/XVal.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XTree.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"

namespace orv {

bool XDestructor::flagDebug = false;
bool XVal::flagDebug = false;

XDestructor::XDestructor() = default;

XDestructor::XDestructor(void *p, std::function<void()> destroy)
    : p(p), destroy(std::move(destroy)) {}

XDestructor::XDestructor(XDestructor const &other) = default;

XDestructor &XDestructor::operator=(XDestructor const &other) = default;

XDestructor::~XDestructor() {
    if (flagDebug)
        ppDebug("XDestructor::~XDestructor");
}

void XDestructor::kill() {
    if (!p) {
        if (flagDebug)
            ppDebug("XDestructor::kill, p == nullptr");
        return;
    }
    if (flagDebug)
        ppDebug("XDestructor::kill, call destroy()");
    destroy();
    p = nullptr;
}

void XDestructor::traceDestroy(bool block, QString const &type) {
    if (block)
        ppTest("...destroy Array of type '$'", type);
    else
        ppTest("...destroy Object of type '$'", type);
}

XVal::XVal() {
    if (flagDebug)
        ppDebug("XVal::XVal");
}

XVal::XVal(XVal &&other) noexcept
    : type(other.type), pVal(other.pVal), category(other.category), destructor(other.destructor) {
    if (flagDebug)
        ppDebug("XVal::XVal - MOVE");
    other.pVal = nullptr;
    other.destructor = nullptr;
}

XVal &XVal::operator=(XVal &&other) noexcept {
    if (this == &other)
        return *this;
    if (flagDebug)
        ppDebug("XVal::operator= MOVE");
    // Everything of the source is taken before the old value dies: the source may live
    // inside that value (a descendant moved into its ancestor's slot).
    XDestructor *const old = destructor;
    type = other.type;
    pVal = other.pVal;
    category = other.category;
    destructor = other.destructor;
    other.pVal = nullptr;
    other.destructor = nullptr;
    if (old) {
        if (flagDebug)
            ppDebug("XVal::operator= MOVE - destruct !");
        old->kill();
        delete old;
    }
    return *this;
}

XVal::~XVal() {
    if (flagDebug)
        ppDebug("XVal::~XVal, destruction start_global");
    if (destructor) {
        if (flagDebug)
            ppDebug("XVal::~XVal, DESTRUCT");
        if (pVal)
            destructor->kill();
        delete destructor;
    }
    if (flagDebug)
        ppDebug("XVal::~XVal, destruction finished");
}

void XVal::replaceWith(void *fresh, XDestructor *freshDestructor, QString const &name) {
    XDestructor *const old = destructor;
    bool const hadValue = pVal != nullptr;
    pVal = fresh;
    destructor = freshDestructor;
    type = name;
    if (old) {
        if (flagDebug)
            ppDebug("XVal::setValMove, destruc ????");
        if (hadValue)
            old->kill();
        delete old;
    }
}

bool XVal::isSamePointer(void const *pMem) const {
    ORV_ASSERT_PTR(pMem);
    return pVal == pMem;
}

unsigned int XVal::countElements() const {
    if (!pVal) {
        ppError("XVal::countElements, pVal == nullptr");
        return 0;
    }
    return *static_cast<unsigned int const *>(pVal);
}

void XVal::setCountElements(unsigned int n) {
    if (!pVal) {
        ppError("XVal::setCountElements, pVal == nullptr");
        return;
    }
    *static_cast<unsigned int *>(pVal) = n;
}

QString XVal::categoryToString(unsigned char c) {
    switch (c) {
    case SIMPLE: return QStringLiteral("SIMPLE");
    case TREE: return QStringLiteral("TREE");
    case ARRAY: return QStringLiteral("ARRAY");
    case LINK: return QStringLiteral("LINK");
    default: return QStringLiteral("UNKNOWN-CATEGORY");
    }
}

QString XVal::toString() const { return toStringExtended(XTypeSupporter::basicTypes()); }

QString XVal::toStringExtended(XTypeSupporter const &s) const {
    if (!pVal)
        return QStringLiteral("pVal == nullptr");
    QString text = type + QStringLiteral(", ");
    if (category == ARRAY)
        return text + s.arrayAsString(*static_cast<XTreeArray const *>(pVal));
    if (category == TREE)
        return text + QStringLiteral("XTREE?");
    if (category != SIMPLE) {
        ppError("XVal::toStringExtended - wrong place her, category:$",
                static_cast<unsigned int>(category));
        return text;
    }
    QString const value = s.val_simpleType_as_String(*this);
    if (value.isEmpty())
        return text + xprintF("XTypeSupporter@$<$> not supported!", s.getName(), type);
    return text + value;
}

void XVal::showExtended(unsigned int space, XTypeSupporter const &s) const {
    if (!pVal)
        return;
    if (category == TREE)
        static_cast<XTree const *>(pVal)->show(s, space, QString(), false, -1);
    else if (category == ARRAY)
        static_cast<XTreeArray const *>(pVal)->showExtended(space + 4, s);
}

} // namespace orv
