// XJson.h: reading and saving JSON files, showing JSON in the log, and swapping the
// quotation marks so that JSON can travel inside a quoted attribute.
//
//   QJsonObject settings = orv::XJson::load_from(path);   // {} and an ERROR line on failure
//   orv::XJson::print_object(0, QStringLiteral("settings"), settings);
//   QString attr = orv::XJson::encode_quotation_marks(text, QLatin1Char('\''));
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace orv {

// Stateless; parsing and writing are QJsonDocument's.
class ORV_EXPORT XJson {
public:
    // The top-level object; an empty one with an ERROR line when the file can't be
    // read or parsed or holds no object. An object without members logs too.
    static QJsonObject load_from(QString const &file);
    static QJsonObject load_from(QFileInfo const &fileInfo);
    // The same for a top-level array.
    static QJsonArray load_ar_from(QString const &file);

    // Qt's indented form; false with an ERROR line when the file can't be written.
    static bool save_as(QString const &file, QJsonObject const &object);
    static bool save_as(QFileInfo const &fileInfo, QJsonObject const &object);

    // Every `"` becomes c, and back: decoding also turns the c that were there before.
    static QString encode_quotation_marks(QString const &s, QChar c);
    static QString decode_quotation_marks(QString const &s, QChar c);

    // The value as INFO lines, nested members indented 4 blanks further.
    static void print_object(unsigned int indent, QString const &name, QJsonObject const &object);
    static void print_array(unsigned int indent, QString const &name, QJsonArray const &array);
    // Through the variant map: each member with the name of its variant type.
    static void print_object_vm(unsigned int indent, QString const &name,
                                QJsonObject const &object);
};

} // namespace orv
