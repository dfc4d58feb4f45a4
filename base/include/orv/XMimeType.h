// XMimeType.h: a parsed MIME type (type, subtype, parameters, the file it belongs
// to) and its conversion from and to file extensions.
//
//   orv::XMimeType mime = orv::XMimeType::fromFile("shot.PNG");   // image/png {shot.PNG}
//   mime.getFileExtension();                                        // "png"
//   orv::XMimeType::fromString("text/plain; charset=utf-8").parameter().getString("charset", "");
#pragma once

#include "orv/FileHelpers.h"
#include "orv/OrvGlobal.h"
#include "orv/XRecord.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <map>
#include <vector>

namespace orv {

class ORV_EXPORT XMimeType {
public:
    XMimeType() = default;
    XMimeType(QString const &type, QString const &subType);

    // application/octet-stream: what unknown extensions and names without one give.
    static XMimeType const mtDefault;

    // Never fails hard: an empty or slash-less text gives an empty type.
    static XMimeType fromString(QString const &s);
    // By the lower-cased extension, with the url set to the file.
    static XMimeType fromFile(QString const &file);
    static XMimeType fromFile(QFileInfo const &fileInfo);
    static XMimeType fromFileExtension(QString const &ext);

    QString getFileExtension() const;
    std::vector<QString> getFileExtensions() const;
    void setFileExtension(QString const &ext);

    QString type() const { return typeText; }
    QString subType() const { return subTypeText; }
    QString url() const { return urlText; }
    void setURL(QString const &url) { urlText = url; }
    XRecord &parameter() { return record; }
    XRecord parameter() const { return record; }

    bool hasType() const { return !typeText.isEmpty(); }
    bool hasSubType() const { return !subTypeText.isEmpty(); }
    bool hasURL() const { return !urlText.isEmpty(); }
    bool hasParameter() const { return record.hasAttributes(); }

    bool isType(QString const &type) const { return typeText == type; }
    bool isSubType(QString const &subType) const { return subTypeText == subType; }
    // Against "type/subType".
    bool isMime(QString const &mime) const;

    bool isText() const { return isType(QStringLiteral("text")); }
    bool isImage() const { return isType(QStringLiteral("image")); }
    bool isAudio() const { return isType(QStringLiteral("audio")); }
    bool isVideo() const { return isType(QStringLiteral("video")); }
    bool isApplication() const { return isType(QStringLiteral("application")); }
    bool isMultipart() const { return isType(QStringLiteral("multipart")); }
    bool isSubType_gif() const { return isSubType(QStringLiteral("gif")); }
    bool isSubType_jpeg() const { return isSubType(QStringLiteral("jpeg")); }
    bool isSubType_mp4() const { return isSubType(QStringLiteral("mp4")); }
    bool isSubType_mpeg() const { return isSubType(QStringLiteral("mpeg")); }
    bool isSubType_png() const { return isSubType(QStringLiteral("png")); }
    bool isSubType_octet_stream() const { return isSubType(QStringLiteral("octet-stream")); }
    bool isSubType_xorv() const { return isSubType(QStringLiteral("x-orv")); }
    bool isAudioMP3() const { return isAudio() && isSubType_mpeg(); }
    bool isDefault() const { return *this == mtDefault; }
    // By the first extension of the type: whether Qt can read such files as images.
    bool isQtImage() const { return is_qt_image_ext(getFileExtension(), true); }
    // The library's own tree files: application/x-orv.
    bool isOrvMime() const { return isApplication() && isSubType_xorv(); }
    void setOrvMime();

    void clear();
    // Type and subtype only; parameters and url don't count.
    bool operator==(XMimeType const &other) const {
        return typeText == other.typeText && subTypeText == other.subTypeText;
    }
    bool operator!=(XMimeType const &other) const { return !(*this == other); }

    // type/subType;key="value";... {url}; empty for an empty type.
    QString toString() const;
    void show(unsigned int indent) const;

private:
    QString typeText;
    QString subTypeText;
    XRecord record;
    QString urlText;
};

// A map of MIME types; get() is one process-wide scratch value, not an entry.
class ORV_EXPORT XMimeTypeMap {
public:
    // Shared by all callers without a lock.
    static XMimeType &get();

private:
    std::map<QString, XMimeType> types;
};

} // namespace orv
