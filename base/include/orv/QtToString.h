// QtToString.h: text forms of Qt values in orv::qt, as log lines and toString use them.
//
//   orv::qt::toString(QRect(1, 2, 3, 4));        // "1,2,3,4"
//   orv::qt::toString(QDate(2024, 1, 31));       // "2024/01/31"
//   orv::qt::toString(QVariant(true));           // "true"
//
// Real numbers are written the way the `$` formatter writes them.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QMargins>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringRef>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace orv::qt {

ORV_EXPORT QString toString(QDate const &date); // "yyyy/MM/dd"
ORV_EXPORT QString toString(QTime const &time); // "hh:mm:ss,zzz"
ORV_EXPORT QString toString(QDateTime const &dateTime, bool dateOnly = false);
ORV_EXPORT QString toString(QPoint const &p); // "x,y"
ORV_EXPORT QString toString(QPointF const &p);
ORV_EXPORT QString toString(QSize const &s); // "w,h"
ORV_EXPORT QString toString(QSizeF const &s);
ORV_EXPORT QString toString(QRect const &r); // "x,y,w,h"
ORV_EXPORT QString toString(QRectF const &r);
ORV_EXPORT QString toString(QMargins const &m); // "l,t,r,b"
ORV_EXPORT QString toString(QMarginsF const &m);
ORV_EXPORT QString to_string_rect_as_coord(QRect const &r); // "l,t,r,b"
ORV_EXPORT QString to_string_rect_as_coord(QRectF const &r);
// The text; "{nullptr}" when the view has no string.
ORV_EXPORT QString toString(QStringRef const &ref);
// Bytes as Latin-1 text and back, so that binary data survives; a null array is "nullptr".
ORV_EXPORT QString toString(QByteArray const &bytes);
ORV_EXPORT QString asString(QByteArray const &bytes);
ORV_EXPORT QByteArray fromString(QString const &text);
// "path, sz:size"; "[path]" for a directory, "[path:]" for a root, "fi ??? <path>" for
// a file that does not exist.
ORV_EXPORT QString toString(QFileInfo const &fileInfo);
ORV_EXPORT QString toString(QUrl const &url);
ORV_EXPORT QString toString(QDir const &dir);
// "{nullptr}" for an invalid variant; unsupported types log an ERROR and give
// "QVARIANT-TYPE-NOT-SUPPORTED".
ORV_EXPORT QString toString(QVariant const &v);
ORV_EXPORT QString variantTypeAsString(QVariant const &v);

} // namespace orv::qt
