// XTypeText.h: the text form of one value of each simple type, shared by the value
// handlers and the array dumps. Numbers go through the library's text stream.
#pragma once

#include "orv/QtToString.h"
#include "orv/XStringStream.h"
#include "orv/XTypeName.h"

#include <type_traits>

namespace orv::xtree {

template <typename T> void writeText(XStringStream &out, T const &value) {
    if constexpr (std::is_same_v<T, bool>)
        out << (value ? "true" : "false");
    else if constexpr (std::is_same_v<T, signed char>)
        out << static_cast<char>(value); // "int8" shows as a character
    else if constexpr (std::is_same_v<T, unsigned char>)
        out << static_cast<unsigned int>(value); // "uint8" as a number
    else if constexpr (std::is_arithmetic_v<T>)
        out << value;
    else if constexpr (std::is_same_v<T, QString>)
        out << value;
    else if constexpr (std::is_same_v<T, Vector2> || std::is_same_v<T, Vector3> ||
                       std::is_same_v<T, Vector4> || std::is_same_v<T, Matrix2> ||
                       std::is_same_v<T, Matrix3> || std::is_same_v<T, Matrix4>)
        out << value.toString();
    else
        out << qt::toString(value);
}

template <typename T> QString textOf(T const &value) {
    QString text;
    XStringStream out(&text);
    writeText(out, value);
    out.flush();
    return text;
}

} // namespace orv::xtree
