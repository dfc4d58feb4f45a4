// XMimeType.cpp: parsing, printing and the process-wide scratch type.
#include "orv/XMimeType.h"

#include "orv/FileHelpers.h"
#include "orv/Log.h"
#include "orv/Tokenizer.h"
#include "orv/XStringStream.h"

namespace orv {

XMimeType const XMimeType::mtDefault(QStringLiteral("application"), QStringLiteral("octet-stream"));

XMimeType::XMimeType(QString const &type, QString const &subType)
    : typeText(type), subTypeText(subType) {}

XMimeType XMimeType::fromString(QString const &s) {
    XMimeType result;
    if (s.isEmpty()) {
        ppError("XMimeType::fromString, strMime.length == 0");
        return result;
    }
    Tokenizer tokens(s, QStringLiteral("/"), false);
    if (tokens.size() == 0) {
        ppTest("XMimeType::fromString - no token ?");
        return result;
    }
    result.typeText = tokens[0];
    if (tokens.size() == 1)
        return result;
    // A "/" inside a parameter value cuts it off: later tokens are not looked at.
    QString const rest = tokens[1].trimmed();
    int const semicolon = rest.indexOf(QLatin1Char(';'));
    if (semicolon < 0) {
        result.subTypeText = rest;
    } else {
        result.subTypeText = rest.left(semicolon);
        result.record.fromString(rest.mid(semicolon + 1), true, false);
    }
    return result;
}

XMimeType XMimeType::fromFile(QString const &file) {
    if (file.isEmpty()) {
        ppWarning("XMimeType::fromFile, strFile == ''");
        return mtDefault;
    }
    if (!file.contains(QLatin1Char('.'))) {
        ppDebug("XMimeType::fromFile, strFile does not contain '.'");
        return mtDefault;
    }
    XMimeType result = fromFileExtension(orv::getFileExtension(file, true));
    result.urlText = file;
    return result;
}

XMimeType XMimeType::fromFile(QFileInfo const &fileInfo) {
    return fromFile(fileInfo.absoluteFilePath());
}

QString XMimeType::getFileExtension() const {
    std::vector<QString> const extensions = getFileExtensions();
    return extensions.empty() ? QString() : extensions.front();
}

void XMimeType::setFileExtension(QString const &ext) {
    record.setString(QStringLiteral("fileExension"), ext);
}

bool XMimeType::isMime(QString const &mime) const {
    return mime == typeText + QLatin1Char('/') + subTypeText;
}

void XMimeType::setOrvMime() {
    typeText = QStringLiteral("application");
    subTypeText = QStringLiteral("x-orv");
}

void XMimeType::clear() {
    typeText.clear();
    subTypeText.clear();
    record.clear();
    urlText.clear();
}

QString XMimeType::toString() const {
    if (typeText.isEmpty())
        return QString();
    QString text = typeText + QLatin1Char('/') + subTypeText;
    if (record.hasAttributes()) {
        QStringList pairs;
        for (auto const &entry : record.getAttributes())
            pairs << entry.first + QStringLiteral("=\"") + entry.second + QLatin1Char('"');
        text += QLatin1Char(';') + pairs.join(QLatin1Char(';'));
    }
    if (!urlText.isEmpty())
        text += QStringLiteral(" {") + urlText + QLatin1Char('}');
    return text;
}

void XMimeType::show(unsigned int indent) const {
    if (typeText.isEmpty()) {
        ppInfo(indent, "XMimeType - empty !");
        return;
    }
    if (subTypeText.isEmpty()) {
        ppInfo(indent, "XMimeType, type only:  '$'", typeText);
        return;
    }
    ppInfo(indent, "$/$", typeText, subTypeText);
    for (auto const &entry : record.getAttributes())
        ppInfo(indent + 2, "$ = '$'", entry.first, entry.second);
}

XMimeType &XMimeTypeMap::get() {
    static XMimeType single;
    return single;
}

} // namespace orv
