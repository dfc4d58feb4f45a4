// XTypeName.h: the registered name of every type a tree value can hold, known at
// compile time, so that a store of a type without a name does not compile.
//
//   orv::XTypeName<int>::name();          // "int32"
//   orv::XTypeName<orv::XTree>::name();   // "XTree"
#pragma once

#include "orv/Matrix.h"
#include "orv/OrvGlobal.h"
#include "orv/Vector.h"

#include <QtCore/QMargins>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

namespace orv {

class XTree;
class XTreeArray;
class XLink;

// The 26 simple types in registration order, as (C++ type, type name) pairs.
#define ORV_XTREE_SIMPLE_TYPES(X)                                                                  \
    X(bool, bool)                                                                                  \
    X(signed char, int8)                                                                           \
    X(unsigned char, uint8)                                                                        \
    X(short, int16)                                                                                \
    X(unsigned short, uint16)                                                                      \
    X(int, int32)                                                                                  \
    X(unsigned int, uint32)                                                                        \
    X(qint64, int64)                                                                               \
    X(quint64, uint64)                                                                             \
    X(float, float)                                                                                \
    X(double, double)                                                                              \
    X(Vector2, Vector2)                                                                            \
    X(Vector3, Vector3)                                                                            \
    X(Vector4, Vector4)                                                                            \
    X(Matrix2, Matrix2)                                                                            \
    X(Matrix3, Matrix3)                                                                            \
    X(Matrix4, Matrix4)                                                                            \
    X(QMargins, QMargins)                                                                          \
    X(QMarginsF, QMarginsF)                                                                        \
    X(QPoint, QPoint)                                                                              \
    X(QPointF, QPointF)                                                                            \
    X(QRect, QRect)                                                                                \
    X(QRectF, QRectF)                                                                              \
    X(QSize, QSize)                                                                                \
    X(QSizeF, QSizeF)                                                                              \
    X(QString, QString)

// No primary definition: only registered types have a name.
template <typename T> struct XTypeName;

#define ORV_DECLARE_XTYPE_NAME(T, isSimple)                                                        \
    template <> struct ORV_EXPORT XTypeName<T> {                                                   \
        static constexpr bool simple = isSimple;                                                   \
        static QString const &name();                                                              \
    };
#define ORV_DECLARE_SIMPLE_XTYPE_NAME(T, N) ORV_DECLARE_XTYPE_NAME(T, true)
ORV_XTREE_SIMPLE_TYPES(ORV_DECLARE_SIMPLE_XTYPE_NAME)
ORV_DECLARE_XTYPE_NAME(XTree, false)
ORV_DECLARE_XTYPE_NAME(XTreeArray, false)
ORV_DECLARE_XTYPE_NAME(XLink, false)
#undef ORV_DECLARE_SIMPLE_XTYPE_NAME
#undef ORV_DECLARE_XTYPE_NAME

} // namespace orv
