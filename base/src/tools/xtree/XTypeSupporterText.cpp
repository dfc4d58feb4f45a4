// XTypeSupporterText.cpp: the text forms of arrays: a short dump of numbers and bools,
// "int8" as hex, and the unfinished form of a whole array value.
#include "orv/ArrayTools.h"
#include "orv/Log.h"
#include "orv/XByteArray.h"
#include "orv/XProgram.h"
#include "orv/XTreeArray.h"
#include "orv/XTypeSupporter.h"
#include "tools/xtree/XTypeText.h"

namespace orv {

namespace {

// Up to 10 elements all, more as the first 5, "...", the last 5; each behind a blank.
template <typename T> QString elementsText(XTreeArray const &array) {
    auto const *elements = static_cast<T const *>(array.getArray());
    quint64 const n = array.size();
    QString text;
    XStringStream out(&text);
    for (quint64 i = 0; i < n; ++i) {
        if (n > 10 && i == 5) {
            out << "... ";
            i = n - 5;
        }
        xtree::writeText(out, elements[i]);
        out << ' ';
    }
    out.flush();
    return text;
}

// The older spellings the dumps also accept; those of the byte types only showArray.
QString canonicalName(QString const &type, bool byteSpellings) {
    if (type == QLatin1String("uint") || type == QLatin1String("unsigned int"))
        return XTypeName<unsigned int>::name();
    if (!byteSpellings)
        return type;
    if (type == QLatin1String("char") || type == QLatin1String("signed char"))
        return XTypeName<signed char>::name();
    if (type == QLatin1String("unsigned char") || type == QLatin1String("uchar"))
        return XTypeName<unsigned char>::name();
    return type;
}

// The dump of the element types the chain knows; false for the others.
bool dump(QString const &type, XTreeArray const &array, QString &text) {
    if (type == XTypeName<signed char>::name()) {
        QByteArray const bytes =
            XByteArray::fromMem(static_cast<char const *>(array.getArray()), array.size());
        text = ArrayTools::qByteArrayToString(bytes, 5, 5, false, true, false, 0, 0,
                                              QStringLiteral(","));
        return true;
    }
#define ORV_DUMP_OF(T)                                                                             \
    if (type == XTypeName<T>::name()) {                                                            \
        text = elementsText<T>(array);                                                             \
        return true;                                                                               \
    }
    ORV_DUMP_OF(bool)
    ORV_DUMP_OF(unsigned char)
    ORV_DUMP_OF(short)
    ORV_DUMP_OF(unsigned short)
    ORV_DUMP_OF(int)
    ORV_DUMP_OF(unsigned int)
    ORV_DUMP_OF(qint64)
    ORV_DUMP_OF(quint64)
    ORV_DUMP_OF(float)
    ORV_DUMP_OF(double)
#undef ORV_DUMP_OF
    return false;
}

} // namespace

QString XTypeSupporter::toString(XTreeArray const &array) const {
    QString text;
    dump(canonicalName(array.type(), false), array, text);
    return text;
}

bool XTypeSupporter::showArray(XTreeArray const &array, unsigned int space) const {
    QString text;
    if (!dump(canonicalName(array.type(), true), array, text)) {
        ppDebug(space, "XTypeSupporter::showArray, ar.type() '$'", array.type());
        return false;
    }
    ppDebug(space, text);
    return true;
}

QString XTypeSupporter::arrayAsString(XTreeArray const &array) const {
    if (!hasType(array.type()))
        return QString();
    // Only the opening "type [count] {" of this form was ever written; every way here
    // ends the program, which callers have come to know.
    exitApp(QStringLiteral("XTypeSupporter::arrayAsString"), 3);
}

} // namespace orv
