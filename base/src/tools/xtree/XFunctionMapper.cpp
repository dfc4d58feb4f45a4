// XFunctionMapper.cpp: the five handlers of every built-in type: a value's payload out
// and in, an array's elements out and in (raw block or element by element), and text.
#include "orv/Log.h"
#include "orv/XDataStream.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"
#include "orv/XVal.h"
#include "tools/xtree/RawStringHandles.h"
#include "tools/xtree/XTypeText.h"

#include <limits>
#include <type_traits>

namespace orv {

namespace {

template <typename T>
constexpr bool isFloatGeometry =
    std::is_same_v<T, Vector2> || std::is_same_v<T, Vector3> || std::is_same_v<T, Vector4> ||
    std::is_same_v<T, Matrix2> || std::is_same_v<T, Matrix3> || std::is_same_v<T, Matrix4>;

// Raw elements are the memory of the values; the file form fixes these sizes.
static_assert(sizeof(Vector2) == 8 && sizeof(Vector3) == 12 && sizeof(Vector4) == 16 &&
              sizeof(Matrix2) == 16 && sizeof(Matrix3) == 36 && sizeof(Matrix4) == 64 &&
              sizeof(QPoint) == 8 && sizeof(QSize) == 8 && sizeof(QPointF) == 16 &&
              sizeof(QSizeF) == 16 && sizeof(QRect) == 16 && sizeof(QMargins) == 16 &&
              sizeof(QRectF) == 32 && sizeof(QMarginsF) == 32 && sizeof(QString) == 8);

// Vectors and matrices are their float components, each streamed as a float is.
template <typename T> float *componentsOf(T &value) {
    if constexpr (std::is_same_v<T, Vector2> || std::is_same_v<T, Vector3> ||
                  std::is_same_v<T, Vector4>)
        return &value.x;
    else
        return value.m;
}

// The scalar form, and (with the two differences below) the element form of arrays.
template <typename T> void writeOne(XDataStream &s, T const &value, bool element) {
    if constexpr (std::is_same_v<T, signed char>)
        s.writeNumber(static_cast<qint32>(value)); // 4 bytes, while the reader takes 1
    else if constexpr (std::is_arithmetic_v<T>)
        s.writeNumber(value);
    else if constexpr (std::is_same_v<T, QString>)
        element ? static_cast<void>(s << value) : s.write_UTF8_String(value);
    else if constexpr (isFloatGeometry<T>)
        for (float const *c = componentsOf(const_cast<T &>(value)), *end = c + sizeof(T) / 4;
             c != end; ++c)
            s.writeNumber(*c);
    else
        s << value;
}

template <typename T> void readOne(XDataStream &s, T &value, bool element) {
    if constexpr (std::is_same_v<T, signed char>) {
        char c = 0;
        if (s.canRead(1) && s.readBigData(&c, 1) == 1)
            value = static_cast<signed char>(c);
        else
            ppError("xRead<char>");
    } else if constexpr (std::is_arithmetic_v<T>) {
        s.readNumber(value);
    } else if constexpr (std::is_same_v<T, QString>) {
        value = element ? s.readQtString() : s.readString();
    } else if constexpr (isFloatGeometry<T>) {
        for (float *c = componentsOf(value), *end = c + sizeof(T) / 4; c != end; ++c)
            s.readNumber(*c);
    } else {
        s >> value;
    }
}

// The fewest bytes one element takes in the element-by-element form.
template <typename T> constexpr quint64 elementWireSize() {
    if constexpr (std::is_same_v<T, QString>)
        return 4;
    else if constexpr (std::is_same_v<T, float> || isFloatGeometry<T>)
        return sizeof(T) * 2; // each float goes as a double
    else
        return sizeof(T);
}

template <typename T> void writeValue(XDataStream &s, XVal const &val) {
    writeOne(s, *static_cast<T const *>(val.getPointer()), false);
}

template <typename T> void readValue(XDataStream &s, XVal &val) {
    T value{};
    readOne(s, value, false);
    val.setValMove(std::move(value));
}

template <typename T> bool writeElements(XDataStream &s, XTreeArray const &array) {
    T const *elements = static_cast<T const *>(array.getArray());
    quint64 const count = array.size();
    if (XDataStream::atomicConsiderByteOrder) {
        for (quint64 i = 0; i < count; ++i)
            writeOne(s, elements[i], true);
        return true;
    }
    if constexpr (std::is_same_v<T, QString>)
        xtree::keepHandles(elements, count);
    quint64 const bytes = count * sizeof(T);
    if (bytes && s.writeBigData(reinterpret_cast<char const *>(elements), bytes) !=
                     static_cast<qint64>(bytes)) {
        ppError("writeXArray problems writing $ bytes", bytes);
        return false;
    }
    return true;
}

// Raw strings are handles: only those this process wrote are followed.
void resolveHandles(XDataStream &s, QString *strings, quint64 count) {
    if (count == 0)
        return;
    std::vector<quintptr> handles(count);
    s.readBigData(reinterpret_cast<char *>(handles.data()), count * sizeof(quintptr));
    quint64 foreign = 0;
    for (quint64 i = 0; i < count; ++i)
        if (!xtree::stringOfHandle(handles[i], strings[i]))
            ++foreign;
    if (foreign)
        ppError("readTheElements<QString>, $ string handles not written by this process", foreign);
}

template <typename T> void readRawElements(XDataStream &s, T *elements, quint64 count) {
    QString const &name = XTypeName<T>::name();
    quint64 const bytes = count * sizeof(T);
    qint64 const r = bytes ? s.readBigData(reinterpret_cast<char *>(elements), bytes) : 0;
    if (r == -1)
        ppError("readTheElements<$>, r == -1", name);
    else if (static_cast<quint64>(r) != bytes)
        ppError("readTheElements<$>, r != sz, $ != $", name, r, bytes);
    if constexpr (std::is_same_v<T, bool>) {
        // Any byte but 0 or 1 would be an invalid bool.
        auto *raw = reinterpret_cast<unsigned char *>(elements);
        for (quint64 i = 0; i < count; ++i)
            raw[i] = raw[i] != 0;
    }
}

template <typename T> bool readElements(XDataStream &s, XVal &val, quint64 count) {
    bool const byElement = XDataStream::atomicConsiderByteOrder;
    quint64 const unit = byElement ? elementWireSize<T>() : sizeof(T);
    if (count > std::numeric_limits<quint64>::max() / unit || !s.canRead(count * unit))
        return false;
    T *elements = new T[count];
    if (byElement)
        for (quint64 i = 0; i < count; ++i)
            readOne(s, elements[i], true);
    else if constexpr (std::is_same_v<T, QString>)
        resolveHandles(s, elements, count);
    else
        readRawElements(s, elements, count);
    XTreeArray array;
    array.adopt(elements, count);
    val.setValMove(std::move(array));
    return true;
}

template <typename T> QString valueText(XVal const &val) {
    return xtree::textOf(*static_cast<T const *>(val.getPointer()));
}

} // namespace

XFunctionMapper &XFunctionMapper::instance() {
    static XFunctionMapper *const mapper = new XFunctionMapper; // read until process end
    return *mapper;
}

XFunctionMapper::Handlers const *XFunctionMapper::find(QString const &name) const {
    auto const found = table.find(name);
    return found == table.end() ? nullptr : &found->second;
}

template <typename T> void XFunctionMapper::addFunction() {
    QString const &name = XTypeName<T>::name();
    if (table.count(name)) {
        ppError("XFunctionMapper::addFunction, function <$> already present", name);
        return;
    }
    table.emplace(name, Handlers{writeValue<T>, readValue<T>, writeElements<T>, readElements<T>,
                                 valueText<T>, sizeof(T)});
}

#define ORV_INSTANTIATE_ADD_FUNCTION(T, N) template void XFunctionMapper::addFunction<T>();
ORV_XTREE_SIMPLE_TYPES(ORV_INSTANTIATE_ADD_FUNCTION)
#undef ORV_INSTANTIATE_ADD_FUNCTION

} // namespace orv
