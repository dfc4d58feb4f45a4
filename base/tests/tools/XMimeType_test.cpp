// XMimeType_test.cpp: the extension tables in both directions, parsing and printing
// of MIME texts, and the shared scratch type.
#include "orv/XMimeType.h"

#include "support/Test.h"

#include <vector>

using namespace orv;

namespace {

struct TypeRow {
    char const *mime;
    std::vector<QString> extensions; // in the order getFileExtensions gives them
};

// Every type of the built-in table with its extensions; jam is apart (see below).
// clang-format off
std::vector<TypeRow> const TYPES = {
    {"image/jpeg", {"jpeg", "jpg"}}, {"image/png", {"png"}}, {"image/gif", {"gif"}},
    {"image/x-icon", {"ico"}}, {"image/svg+xml", {"svg"}}, {"image/bmp", {"bmp"}},
    {"video/mp4", {"mp4"}}, {"video/mpeg", {"mpeg", "mgp", "mpe"}},
    {"video/quicktime", {"mov", "qt"}},
    {"video/x-msvideo", {"avi"}}, {"audio/mpeg", {"mp3"}}, {"audio/ogg", {"ogg"}},
    {"audio/wav", {"wav"}}, {"text/comma-separated-values", {"csv"}}, {"text/css", {"css"}},
    {"text/html", {"html", "htm", "shtml"}}, {"text/javascript", {"js"}},
    {"text/plain", {"txt", "c", "h", "cpp", "hpp", "c#"}}, {"text/richtext", {"rtx"}},
    {"text/xml", {"xml"}}, {"text/x-sgml", {"sgml"}}};
// clang-format on

} // namespace

TEST(XMimeType, EveryExtensionGivesItsTypeAndTheTypeGivesItBack) {
    for (TypeRow const &row : TYPES) {
        SCOPED_TRACE(row.mime);
        XMimeType const byText = XMimeType::fromString(row.mime);
        EXPECT_EQ(byText.getFileExtensions(), row.extensions);
        EXPECT_EQ(byText.getFileExtension(), row.extensions.front());
        for (QString const &ext : row.extensions) {
            XMimeType const byExtension = XMimeType::fromFileExtension(ext);
            EXPECT_EQ(byExtension.toString(), QString(row.mime)) << ext.toStdString();
            EXPECT_FALSE(byExtension.isDefault());
        }
    }
}

TEST(XMimeType, QtImagesAreTheImageTypesQtReadsAsItComes) {
    for (char const *mime :
         {"image/jpeg", "image/png", "image/gif", "image/bmp", "image/x-icon", "image/svg+xml"})
        EXPECT_TRUE(XMimeType::fromString(mime).isQtImage()) << mime;
    for (char const *mime : {"video/mp4", "text/plain", "application/octet-stream", "image/tiff"})
        EXPECT_FALSE(XMimeType::fromString(mime).isQtImage()) << mime;
    EXPECT_TRUE(orv::is_qt_image_ext("PNG", true));
    EXPECT_FALSE(orv::is_qt_image_ext("PNG", false));
    EXPECT_FALSE(orv::is_qt_image_ext("", true));
}

TEST(XMimeType, JamIsAudioOneWayAndTextTheOther) {
    EXPECT_EQ(XMimeType::fromFileExtension("jam").toString(), QString("audio/x-jam"));
    EXPECT_TRUE(XMimeType(QString("audio"), QString("x-jam")).getFileExtensions().empty());
    EXPECT_EQ(XMimeType(QString("text"), QString("jam")).getFileExtensions(),
              std::vector<QString>{"jam"});
}

TEST(XMimeType, UnknownExtensionsAndNamesGiveTheDefault) {
    for (char const *ext : {"xyz", "", "tar.gz"}) {
        XMimeType const mime = XMimeType::fromFileExtension(ext);
        EXPECT_TRUE(mime.isDefault()) << ext;
        EXPECT_TRUE(mime.isApplication() && mime.isSubType_octet_stream());
        EXPECT_TRUE(mime.getFileExtensions().empty());
    }
    for (QString const &name : {QString("noext"), QString(), QString("archive.xyz")})
        EXPECT_TRUE(XMimeType::fromFile(name).isDefault()) << name.toStdString();
    EXPECT_FALSE(XMimeType::fromFile(QString("noext")).hasURL());
    EXPECT_TRUE(XMimeType().getFileExtension().isEmpty());
}

TEST(XMimeType, FileNameIsLowerCasedAndBecomesTheUrl) {
    XMimeType const png = XMimeType::fromFile(QString("shots/a.PNG"));
    EXPECT_TRUE(png.isImage() && png.isSubType_png());
    EXPECT_EQ(png.url(), QString("shots/a.PNG"));
    EXPECT_EQ(png.toString(), QString("image/png {shots/a.PNG}"));
    XMimeType const abs = XMimeType::fromFile(QFileInfo("b.Mp3"));
    EXPECT_TRUE(abs.isAudioMP3());
    EXPECT_EQ(abs.url(), QFileInfo("b.Mp3").absoluteFilePath());
}

TEST(XMimeType, ParsesTypeSubtypeAndParameters) {
    struct Row {
        char const *text, *type, *subType;
        int parameters;
        char const *printed;
    } const rows[] = {
        // clang-format off
        {"text/plain; charset=utf-8", "text", "plain", 1, "text/plain;charset=\"utf-8\""},
        {"text/plain;a=1;b = \"x y\"", "text", "plain", 2, "text/plain;a=\"1\";b=\"x y\""},
        {"text", "text", "", 0, "text/"}, {" image/ png ", " image", "png", 0, " image/png"},
        // Only the first two pieces count: a "/" in a value cuts it off.
        {"a/b;x=1/2", "a", "b", 1, "a/b;x=\"1\""}, {"", "", "", 0, ""}, {"/", "", "", 0, ""},
    }; // clang-format on
    for (Row const &row : rows) {
        SCOPED_TRACE(row.text);
        XMimeType const mime = XMimeType::fromString(row.text);
        EXPECT_EQ(mime.type(), QString(row.type));
        EXPECT_EQ(mime.subType(), QString(row.subType));
        EXPECT_EQ(mime.parameter().countAttributes(), row.parameters);
        EXPECT_EQ(mime.hasParameter(), row.parameters > 0);
        EXPECT_EQ(mime.toString(), QString(row.printed));
    }
    EXPECT_EQ(
        XMimeType::fromString("text/plain; charset=utf-8").parameter().getString("charset", ""),
        QString("utf-8"));
}

TEST(XMimeType, EqualityLooksAtTypeAndSubtypeOnly) {
    XMimeType a = XMimeType::fromString("text/html; charset=latin1");
    a.setURL("index.html");
    EXPECT_EQ(a, XMimeType::fromFileExtension("htm"));
    EXPECT_NE(a, XMimeType::fromFileExtension("txt"));
    EXPECT_TRUE(a.isMime("text/html"));
    a.clear();
    EXPECT_FALSE(a.hasType() || a.hasSubType() || a.hasURL() || a.hasParameter());
    EXPECT_TRUE(a.toString().isEmpty());
}

TEST(XMimeType, OwnTreeTypeStoresTheExtensionAndTheMapHoldsOneSharedValue) {
    XMimeType &mime = XMimeTypeMap::get();
    mime.clear();
    mime.setOrvMime();
    EXPECT_TRUE(mime.isOrvMime() && mime.isSubType_xorv());
    EXPECT_EQ(mime.toString(), QString("application/x-orv"));
    mime.setFileExtension("tree");
    EXPECT_EQ(mime.parameter().getString("fileExension", ""), QString("tree"));
    EXPECT_EQ(XMimeTypeMap::get().toString(), QString("application/x-orv;fileExension=\"tree\""));
    XMimeTypeMap::get() = XMimeType::fromFileExtension("gif");
    EXPECT_TRUE(mime.isSubType_gif());
    XMimeTypeMap::get().clear();
}
