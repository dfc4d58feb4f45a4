// XJson_test.cpp: loading JSON files and the failure line for each kind of bad file,
// saving, quotation-mark swapping and the log form of objects and arrays.
#include "orv/XJson.h"

#include "support/Test.h"

#include <QtCore/QJsonDocument>

#include <functional>

using orv::XJson;
using orv::test::linesLoggedBy;

namespace {

QJsonObject objectOf(char const *json) { return QJsonDocument::fromJson(json).object(); }

} // namespace

TEST(XJson, LoadingBadFilesGivesEmptyValueAndNamesTheFault) {
    QTemporaryDir dir;
    struct Row {
        char const *content; // null: no file at all
        bool array;
        char const *line; // "%1" stands for the path
    };
    Row const rows[] = {
        {nullptr, false, "readJsonFile, cannot read <<<%1>>>"},
        {nullptr, true, "readJsonFile, cannot read <<<%1>>>"},
        {"{\"a\":", false, "Failed to parse text message as JSON object:%1, Error is:"},
        {"[1,]", true, "Failed to parse text message as JSON object:%1, Error is:"},
        {"", false, "Failed to parse text message as JSON object:%1, Error is:"},
        {"[1]", false, "Received JSON message that is not an object:%1"},
        {"{\"a\":1}", true, "Received JSON message that is not an array:%1"},
        {"{}", false, "obj.isEmpty! -  :%1"},
    };
    int n = 0;
    for (Row const &row : rows) {
        QString const name = QStringLiteral("f%1.json").arg(n++);
        QString const path =
            row.content ? orv::test::writeFile(dir, name, row.content) : dir.filePath(name);
        bool empty = false;
        std::vector<QString> const lines = linesLoggedBy(
            [&] {
                empty = row.array ? XJson::load_ar_from(path).isEmpty()
                                  : XJson::load_from(path).isEmpty();
            },
            orv::ERROR);
        SCOPED_TRACE(row.content ? row.content : "<missing>");
        EXPECT_TRUE(empty);
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_TRUE(lines[0].startsWith(QString::fromLatin1(row.line).arg(path)))
            << lines[0].toStdString();
    }
}

TEST(XJson, SavedObjectLoadsBackByNameAndByFileInfoAndAMissingFolderRefusesTheSave) {
    QTemporaryDir dir;
    QJsonObject const object = objectOf(R"({"n":1.5,"s":"x","o":{"a":[1,"b"]}})");
    QString const path = dir.filePath("out.json");
    ASSERT_TRUE(XJson::save_as(QFileInfo(path), object));
    EXPECT_EQ(orv::test::readFile(path), QJsonDocument(object).toJson());
    EXPECT_EQ(XJson::load_from(path), object);
    EXPECT_EQ(
        linesLoggedBy([&] { EXPECT_EQ(XJson::load_from(QFileInfo(path)), object); }, orv::DEBUG),
        std::vector<QString>{"XJson::load_from, fi: '" + path + "'"});
    EXPECT_EQ(XJson::load_ar_from(orv::test::writeFile(dir, "ar.json", "[1, {\"a\": 2}]")).size(),
              2);

    QString const missing = dir.filePath("no/such/dir/out.json");
    bool saved = true;
    EXPECT_EQ(linesLoggedBy([&] { saved = XJson::save_as(missing, object); }, orv::ERROR),
              std::vector<QString>{"json_stuff::save_as, 1, cannot write to '" + missing + "'"});
    EXPECT_FALSE(saved);
}

TEST(XJson, QuotationMarksSwapBothWays) {
    QChar const c = QLatin1Char('\'');
    EXPECT_EQ(XJson::encode_quotation_marks("a\"b", c), QStringLiteral("a'b"));
    EXPECT_EQ(XJson::decode_quotation_marks("a'b", c), QStringLiteral("a\"b"));
    // A mark that was there before comes back as a quotation mark too.
    EXPECT_EQ(XJson::decode_quotation_marks(XJson::encode_quotation_marks("it's \"x\"", c), c),
              QStringLiteral("it\"s \"x\""));
}

TEST(XJson, PrintWalksNestedValuesInKeyOrderAndSaysWhenEmpty) {
    QJsonObject const nested =
        objectOf(R"({"z":true,"a":{"k":"v"},"l":[1,"two",null],"m":[{"q":2},[3]]})");
    QJsonObject const typed = objectOf(R"({"b":false,"d":2.5,"l":["x",4],"s":"t"})");
    using Lines = std::vector<QString>;
    // Arrays of simple values take one line; unnamed elements print without a heading;
    // the variant-map form names each type.
    std::pair<std::function<void()>, Lines> const rows[] = {
        {[&] { XJson::print_object(2, QStringLiteral("root"), nested); },
         {"root", "a", "k:v", "l [3] {1, two, }", "m [2]", "q:2", " [1] {3}", "z:true"}},
        {[&] { XJson::print_object_vm(0, "vm", typed); },
         {"vm", "b:(bool):false", "d:(double):2.5", "l [2] {x, 4}", "s:(QString):t"}},
        {[] { XJson::print_object(0, QString(), QJsonObject()); }, {"QJsonObject, EMPTY"}},
        {[] { XJson::print_object_vm(0, QString(), QJsonObject()); }, {"QJsonObject, EMPTY"}},
        {[] { XJson::print_object(0, "named", QJsonObject()); }, {"named"}},
        {[] { XJson::print_array(0, "e", QJsonArray()); }, {"e [0] {}"}},
    };
    for (auto const &[print, expected] : rows)
        EXPECT_EQ(linesLoggedBy(print, orv::INFO), expected);
}
