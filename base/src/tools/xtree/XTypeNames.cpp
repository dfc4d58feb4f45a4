// XTypeNames.cpp: the one spelling of every type name of the tree, shared by the type
// set, the handler table and every stored value.
#include "orv/XObject.h"
#include "orv/XTree.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeName.h"
#include "tools/platform/OrvPlatform.h"

#include <type_traits>
#include <typeinfo>

namespace orv {

// Function-local statics: a name is ready whenever the first caller asks, whichever
// file's static initialisation runs first.
#define ORV_DEFINE_XTYPE_NAME(T, text)                                                             \
    QString const &XTypeName<T>::name() {                                                          \
        static QString const name = text;                                                          \
        return name;                                                                               \
    }
#define ORV_DEFINE_SIMPLE_XTYPE_NAME(T, N) ORV_DEFINE_XTYPE_NAME(T, spelling<T>(QStringLiteral(#N)))

namespace {

// "bool" is the demangled name of the type, as the registry always spelt it.
template <typename T> QString spelling(QString const &listed) {
    // The listed literal when the system's name agrees: literals are shared without a
    // reference count, and every value copies its type name a few times.
    if constexpr (std::is_same_v<T, bool>) {
        QString const demangled = platform::demangle(typeid(bool).name());
        return demangled == listed ? listed : demangled;
    } else {
        return listed;
    }
}

} // namespace

ORV_XTREE_SIMPLE_TYPES(ORV_DEFINE_SIMPLE_XTYPE_NAME)
ORV_DEFINE_XTYPE_NAME(XTree, QStringLiteral("XTree"))
ORV_DEFINE_XTYPE_NAME(XTreeArray, QStringLiteral("XTreeArray"))
ORV_DEFINE_XTYPE_NAME(XLink, QStringLiteral("XLink"))

#undef ORV_DEFINE_SIMPLE_XTYPE_NAME
#undef ORV_DEFINE_XTYPE_NAME

QString const XObject::str_XObject = QStringLiteral("XObject");
QString const XLink::str_XLink = XTypeName<XLink>::name();
QString const XTree::str_XTree = XTypeName<XTree>::name();
QString const XTreeArray::str_XTreeArray = XTypeName<XTreeArray>::name();

} // namespace orv
