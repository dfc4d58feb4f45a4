// XMimeTypeExtensions.cpp: the built-in tables between file extensions and types.
//
// The two directions are separate tables on purpose: they order some extensions
// differently (jpg/jpeg, htm/html) and disagree on "jam" (audio/x-jam one way,
// text/jam the other).
#include "orv/XMimeType.h"

namespace orv {

namespace {

struct ExtensionRow {
    char const *extension;
    char const *type;
    char const *subType;
};

// Searched in this order; the first match wins.
ExtensionRow const TYPE_OF_EXTENSION[] = {
    {"jpg", "image", "jpeg"},
    {"jpeg", "image", "jpeg"},
    {"png", "image", "png"},
    {"gif", "image", "gif"},
    {"ico", "image", "x-icon"},
    {"svg", "image", "svg+xml"},
    {"bmp", "image", "bmp"},
    {"mp4", "video", "mp4"},
    {"mpeg", "video", "mpeg"},
    {"mgp", "video", "mpeg"},
    {"mpe", "video", "mpeg"},
    {"mov", "video", "quicktime"},
    {"qt", "video", "quicktime"},
    {"avi", "video", "x-msvideo"},
    {"mp3", "audio", "mpeg"},
    {"ogg", "audio", "ogg"},
    {"wav", "audio", "wav"},
    {"jam", "audio", "x-jam"},
    {"csv", "text", "comma-separated-values"},
    {"css", "text", "css"},
    {"htm", "text", "html"},
    {"html", "text", "html"},
    {"shtml", "text", "html"},
    {"js", "text", "javascript"},
    {"txt", "text", "plain"},
    {"c", "text", "plain"},
    {"h", "text", "plain"},
    {"cpp", "text", "plain"},
    {"hpp", "text", "plain"},
    {"c#", "text", "plain"},
    {"rtx", "text", "richtext"},
    {"xml", "text", "xml"},
    {"sgml", "text", "x-sgml"},
};

struct TypeRow {
    char const *mime;
    std::initializer_list<char const *> extensions;
};

TypeRow const EXTENSIONS_OF_TYPE[] = {
    {"image/jpeg", {"jpeg", "jpg"}},
    {"image/gif", {"gif"}},
    {"image/png", {"png"}},
    {"image/svg+xml", {"svg"}},
    {"image/bmp", {"bmp"}},
    {"image/x-icon", {"ico"}},
    {"video/mp4", {"mp4"}},
    {"video/mpeg", {"mpeg", "mgp", "mpe"}},
    {"video/quicktime", {"mov", "qt"}},
    {"video/x-msvideo", {"avi"}},
    {"audio/mpeg", {"mp3"}},
    {"audio/ogg", {"ogg"}},
    {"audio/wav", {"wav"}},
    {"text/comma-separated-values", {"csv"}},
    {"text/css", {"css"}},
    {"text/html", {"html", "htm", "shtml"}},
    {"text/javascript", {"js"}},
    {"text/plain", {"txt", "c", "h", "cpp", "hpp", "c#"}},
    {"text/richtext", {"rtx"}},
    {"text/xml", {"xml"}},
    {"text/jam", {"jam"}},
    {"text/x-sgml", {"sgml"}},
};

} // namespace

XMimeType XMimeType::fromFileExtension(QString const &ext) {
    for (ExtensionRow const &row : TYPE_OF_EXTENSION)
        if (ext == QLatin1String(row.extension))
            return XMimeType(QLatin1String(row.type), QLatin1String(row.subType));
    return mtDefault;
}

std::vector<QString> XMimeType::getFileExtensions() const {
    QString const mime = typeText + QLatin1Char('/') + subTypeText;
    for (TypeRow const &row : EXTENSIONS_OF_TYPE) {
        if (mime != QLatin1String(row.mime))
            continue;
        std::vector<QString> result;
        for (char const *extension : row.extensions)
            result.push_back(QLatin1String(extension));
        return result;
    }
    return {};
}

} // namespace orv
