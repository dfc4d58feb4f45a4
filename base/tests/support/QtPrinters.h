// QtPrinters.h: readable GoogleTest failure output for Qt text types.
// Found by argument-dependent lookup, so they live in Qt's (global) namespace.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringRef>

#include <ostream>

inline void PrintTo(QString const &text, std::ostream *os) {
    *os << '"' << text.toUtf8().constData() << '"';
}

inline void PrintTo(QStringRef const &text, std::ostream *os) { PrintTo(text.toString(), os); }

inline void PrintTo(QStringList const &list, std::ostream *os) {
    *os << '{';
    for (int i = 0; i < list.size(); ++i) {
        *os << (i ? ", " : "");
        PrintTo(list[i], os);
    }
    *os << '}';
}

inline void PrintTo(QByteArray const &bytes, std::ostream *os) {
    *os << '"' << bytes.toHex(' ').constData() << "\" (hex)";
}
