// Mime.cpp: the fixed table from file extensions to content types that the small
// servers answer with.
#include "orv/HttpHeader.h"

namespace orv {

Mime::Mime()
    : table{{QStringLiteral("htm"), QStringLiteral("text/html")},
            {QStringLiteral("html"), QStringLiteral("text/html")},
            {QStringLiteral("css"), QStringLiteral("text/html")},
            {QStringLiteral("txt"), QStringLiteral("text/html")},
            {QStringLiteral("ico"), QStringLiteral("image/x-icon")},
            {QStringLiteral("gif"), QStringLiteral("image/gif")},
            {QStringLiteral("png"), QStringLiteral("image/png")},
            {QStringLiteral("jpg"), QStringLiteral("image/jpeg")},
            {QStringLiteral("jpeg"), QStringLiteral("image/jpeg")},
            {QStringLiteral("zip"), QStringLiteral("application/zip")},
            {QStringLiteral("gz"), QStringLiteral("application/x-gzip")}} {}

QString const &Mime::operator[](QString const &ext) const {
    auto const it = table.find(ext);
    return it == table.end() ? dfltType : it->second;
}

QString Mime::mimeToExtension(QString const &type) const {
    for (auto const &entry : table)
        if (entry.second == type)
            return entry.first;
    return QString();
}

} // namespace orv
