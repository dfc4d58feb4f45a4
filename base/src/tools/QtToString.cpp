// QtToString.cpp: text forms of Qt values.
#include "orv/QtToString.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"

#include <QtCore/QLine>

namespace orv::qt {

QString toString(QDate const &date) { return date.toString(QStringLiteral("yyyy/MM/dd")); }

QString toString(QTime const &time) { return time.toString(QStringLiteral("hh:mm:ss,zzz")); }

QString toString(QDateTime const &dateTime, bool dateOnly) {
    return dateTime.toString(dateOnly ? QStringLiteral("yyyy/MM/dd")
                                      : QStringLiteral("yyyy/MM/dd hh:mm:ss,zzz"));
}

QString toString(QPoint const &p) { return xprintF("$,$", p.x(), p.y()); }
QString toString(QPointF const &p) { return xprintF("$,$", p.x(), p.y()); }
QString toString(QSize const &s) { return xprintF("$,$", s.width(), s.height()); }
QString toString(QSizeF const &s) { return xprintF("$,$", s.width(), s.height()); }

// In 64 bits: QRect::width() overflows for a rectangle that spans more than an int
// (one read from damaged bytes, say).
QString toString(QRect const &r) {
    return xprintF("$,$,$,$", r.x(), r.y(), qint64(r.right()) - r.left() + 1,
                   qint64(r.bottom()) - r.top() + 1);
}
QString toString(QRectF const &r) {
    return xprintF("$,$,$,$", r.x(), r.y(), r.width(), r.height());
}
QString toString(QMargins const &m) {
    return xprintF("$,$,$,$", m.left(), m.top(), m.right(), m.bottom());
}
QString toString(QMarginsF const &m) {
    return xprintF("$,$,$,$", m.left(), m.top(), m.right(), m.bottom());
}

QString to_string_rect_as_coord(QRect const &r) {
    return xprintF("$,$,$,$", r.left(), r.top(), r.right(), r.bottom());
}
QString to_string_rect_as_coord(QRectF const &r) {
    return xprintF("$,$,$,$", r.left(), r.top(), r.right(), r.bottom());
}

QString toString(QStringRef const &ref) {
    return ref.string() ? ref.toString() : QStringLiteral("{nullptr}");
}

QString toString(QByteArray const &bytes) { return asString(bytes); }

QString asString(QByteArray const &bytes) {
    return bytes.isNull() ? QStringLiteral("nullptr")
                          : QString::fromLatin1(bytes.constData(), bytes.size());
}

QByteArray fromString(QString const &text) { return text.toLatin1(); }

QString toString(QFileInfo const &fileInfo) {
    if (fileInfo.isRoot())
        return xprintF("[$:]", fileInfo.absoluteFilePath());
    if (fileInfo.isDir())
        return xprintF("[$]", fileInfo.absoluteFilePath());
    if (!fileInfo.exists())
        return xprintF("fi ??? <$>", fileInfo.filePath());
    return xprintF("$, sz:$", fileInfo.absoluteFilePath(), format1000(fileInfo.size()));
}

QString toString(QUrl const &url) { return url.path(); }

QString toString(QDir const &dir) { return dir.path(); }

namespace {

struct VariantName {
    int type;
    char const *name;
};

// QPolygon (71) and QVector2D/3D (82, 83) are Gui types: named, not converted.
VariantName const variantNames[] = {{QMetaType::Bool, "bool"},
                                    {QMetaType::Int, "int"},
                                    {QMetaType::UInt, "uint"},
                                    {QMetaType::LongLong, "longlong"},
                                    {QMetaType::ULongLong, "ulonglong"},
                                    {QMetaType::Double, "double"},
                                    {QMetaType::QChar, "char"},
                                    {QMetaType::QString, "string"},
                                    {QMetaType::QRect, "rect"},
                                    {QMetaType::QRectF, "rectF"},
                                    {QMetaType::QSize, "size"},
                                    {QMetaType::QSizeF, "sizeF"},
                                    {QMetaType::QLine, "line"},
                                    {QMetaType::QLineF, "lineF"},
                                    {QMetaType::QPoint, "point"},
                                    {QMetaType::QPointF, "pointF"},
                                    {QMetaType::Float, "float"},
                                    {71, "polygon"},
                                    {82, "vector2D"},
                                    {83, "vector3D"}};

template <typename T> QString numberOrError(QVariant const &v, char const *errorText) {
    bool ok = false;
    T value{};
    if constexpr (std::is_same_v<T, int>)
        value = v.toInt(&ok);
    else if constexpr (std::is_same_v<T, uint>)
        value = v.toUInt(&ok);
    else if constexpr (std::is_same_v<T, qlonglong>)
        value = v.toLongLong(&ok);
    else if constexpr (std::is_same_v<T, qulonglong>)
        value = v.toULongLong(&ok);
    else if constexpr (std::is_same_v<T, double>)
        value = v.toDouble(&ok);
    else
        value = v.toFloat(&ok);
    return ok ? xprintF("$", value) : QString::fromLatin1(errorText);
}

} // namespace

QString variantTypeAsString(QVariant const &v) {
    int const type = v.userType();
    for (VariantName const &n : variantNames)
        if (n.type == type)
            return QString::fromLatin1(n.name);
    return xprintF("unknown type:$", type);
}

QString toString(QVariant const &v) {
    if (!v.isValid())
        return QStringLiteral("{nullptr}");
    switch (v.userType()) {
    case QMetaType::Bool: return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::Int: return numberOrError<int>(v, "QVARIANT-PARSE-ERROR=INT");
    case QMetaType::UInt: return numberOrError<uint>(v, "QVARIANT-PARSE-ERROR=UINT");
    case QMetaType::LongLong: return numberOrError<qlonglong>(v, "QVARIANT-PARSE-ERROR=LONGLONG");
    case QMetaType::ULongLong:
        return numberOrError<qulonglong>(v, "QVARIANT-PARSE-ERROR=ULONGLONG");
    case QMetaType::Double: return numberOrError<double>(v, "QVARIANT-PARSE-ERROR=DOUBLE");
    case QMetaType::Float: return numberOrError<float>(v, "QVARIANT-PARSE-ERROR=FLOAT");
    case QMetaType::QChar: return QString(v.toChar());
    case QMetaType::QString: return v.toString();
    case QMetaType::QRect: return toString(v.toRect());
    case QMetaType::QRectF: return toString(v.toRectF());
    case QMetaType::QSize: return toString(v.toSize());
    case QMetaType::QSizeF: return toString(v.toSizeF());
    case QMetaType::QLine:
        return toString(v.toLine().p1()) + QLatin1Char(',') + toString(v.toLine().p2());
    case QMetaType::QLineF:
        return toString(v.toLineF().p1()) + QLatin1Char(',') + toString(v.toLineF().p2());
    case QMetaType::QPoint: return toString(v.toPoint());
    case QMetaType::QPointF: return toString(v.toPointF());
    case 71:
    case 82:
    case 83: return QString();
    default:
        ppError("::variantToString, type '$' actually not supported !",
                QString::fromLatin1(v.typeName()));
        return QStringLiteral("QVARIANT-TYPE-NOT-SUPPORTED");
    }
}

} // namespace orv::qt
