// XJson.cpp: JSON files in and out through QJsonDocument, and their log form.
#include "orv/XJson.h"

#include "orv/Log.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <algorithm>

namespace orv {

namespace {

// The parsed document; the failure lines of reading and parsing are logged here,
// the ones about the kind of top-level value by the caller.
bool readDocument(QString const &file, QJsonDocument &document) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        ppError("readJsonFile, cannot read <<<$>>>", file);
        return false;
    }
    QJsonParseError error;
    document = QJsonDocument::fromJson(in.readAll(), &error);
    if (error.error != QJsonParseError::NoError) {
        ppError("Failed to parse text message as JSON object:$, Error is:$", file,
                error.errorString());
        return false;
    }
    return true;
}

QString simpleText(QJsonValue const &value) { return value.toVariant().toString(); }

bool isNested(QJsonValue const &value) { return value.isObject() || value.isArray(); }

QString replaced(QString s, QChar from, QChar to) { return s.replace(from, to); }

} // namespace

QJsonObject XJson::load_from(QString const &file) {
    QJsonDocument document;
    if (!readDocument(file, document))
        return QJsonObject();
    if (!document.isObject()) {
        ppError("Received JSON message that is not an object:$", file);
        return QJsonObject();
    }
    QJsonObject const object = document.object();
    if (object.isEmpty())
        ppError("obj.isEmpty! -  :$", file);
    return object;
}

QJsonObject XJson::load_from(QFileInfo const &fileInfo) {
    ppDebug("XJson::load_from, fi: '$'", fileInfo.absoluteFilePath());
    return load_from(fileInfo.absoluteFilePath());
}

QJsonArray XJson::load_ar_from(QString const &file) {
    QJsonDocument document;
    if (!readDocument(file, document))
        return QJsonArray();
    if (!document.isArray()) {
        ppError("Received JSON message that is not an array:$", file);
        return QJsonArray();
    }
    return document.array();
}

bool XJson::save_as(QString const &file, QJsonObject const &object) {
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly)) {
        ppError("json_stuff::save_as, 1, cannot write to '$'", file);
        return false;
    }
    if (out.write(QJsonDocument(object).toJson()) < 0) {
        ppError("json_stuff::save_as, 2, cannot write to '$'", file);
        return false;
    }
    return true;
}

bool XJson::save_as(QFileInfo const &fileInfo, QJsonObject const &object) {
    return save_as(fileInfo.absoluteFilePath(), object);
}

QString XJson::encode_quotation_marks(QString const &s, QChar c) {
    return replaced(s, QLatin1Char('"'), c);
}

QString XJson::decode_quotation_marks(QString const &s, QChar c) {
    return replaced(s, c, QLatin1Char('"'));
}

void XJson::print_object(unsigned int indent, QString const &name, QJsonObject const &object) {
    if (object.isEmpty() && name.isEmpty()) {
        ppInfo(indent, QStringLiteral("QJsonObject, EMPTY"));
        return;
    }
    if (!name.isEmpty())
        ppInfo(indent, name);
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.value().isObject())
            print_object(indent + 4, it.key(), it.value().toObject());
        else if (it.value().isArray())
            print_array(indent + 4, it.key(), it.value().toArray());
        else
            ppInfo(indent, "$:$", it.key(), simpleText(it.value()));
    }
}

void XJson::print_array(unsigned int indent, QString const &name, QJsonArray const &array) {
    if (std::none_of(array.begin(), array.end(), isNested)) {
        QStringList texts;
        for (QJsonValue const &value : array)
            texts << simpleText(value);
        ppInfo(indent, "$ [$] {$}", name, array.size(), texts.join(QStringLiteral(", ")));
        return;
    }
    ppInfo(indent, "$ [$]", name, array.size());
    for (QJsonValue const &value : array) {
        if (value.isObject())
            print_object(indent + 4, QString(), value.toObject());
        else if (value.isArray())
            print_array(indent + 4, QString(), value.toArray());
        else
            ppInfo(indent + 4, simpleText(value));
    }
}

void XJson::print_object_vm(unsigned int indent, QString const &name, QJsonObject const &object) {
    if (object.isEmpty() && name.isEmpty()) {
        ppInfo(indent, QStringLiteral("QJsonObject, EMPTY"));
        return;
    }
    if (!name.isEmpty())
        ppInfo(indent, name);
    QVariantMap const map = object.toVariantMap();
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (it.value().type() == QVariant::List) {
            QStringList texts;
            for (QVariant const &element : it.value().toList())
                texts << element.toString();
            ppInfo(indent, "$ [$] {$}", it.key(), texts.size(), texts.join(QStringLiteral(", ")));
        } else {
            ppInfo(indent, "$:($):$", it.key(), it.value().typeName(), it.value().toString());
        }
    }
}

} // namespace orv
