// StringEnum_test.cpp: selection and entries from the text, index changes, the show
// lines, and the enumeration kept in a record attribute.
#include "orv/StringEnum.h"
#include "orv/XRecord.h"

#include "support/Test.h"

#include <tuple>

using orv::StringEnum;
using orv::XRecord;

TEST(StringEnum, LeadingNumberSelectsAnEntry) {
    using Entries = std::vector<QString>;
    // text, index, selected entry, entries
    std::tuple<char const *, int, char const *, Entries> const rows[] = {
        // clang-format off
        {"2,a,b,c", 2, "c", {"a", "b", "c"}}, {"0,red", 0, "red", {"red"}},
        {"a,b", -1, "", {"a", "b"}}, {"7,a,b", 7, "", {"a", "b"}}, {"", -1, "", {}},
        {"1", 1, "", {}}, {"1,,x", 1, "x", {"", "x"}},
    }; // clang-format on
    for (auto const &[text, index, selected, entries] : rows) {
        SCOPED_TRACE(text);
        StringEnum const e{QString(text)};
        EXPECT_EQ(e.index(), index);
        EXPECT_EQ(e.enumStr(), QString(selected));
        EXPECT_TRUE(e.isEnumString(selected));
        EXPECT_EQ(e.getVectorStrings(), entries);
        EXPECT_EQ(e.toString(), QString(text));
    }
    EXPECT_EQ(StringEnum(std::vector<QString>{"x", "y"}).toString(), QString("x,y"));
}

TEST(StringEnum, SetIndexReplacesOnlyALeadingNumber) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    StringEnum selected(QString("1,red,green,blue"));
    selected.setIndex(2);
    EXPECT_EQ(selected.toString(), QString("2,red,green,blue"));
    EXPECT_EQ(selected.enumStr(), QString("blue"));
    selected.setIndex(-1);
    EXPECT_TRUE(log.waitForText("StringEnum::setIndex, index:-1"));
    EXPECT_EQ(selected.toString(), QString("2,red,green,blue"));
    StringEnum unselected(QString("red,green"));
    unselected.setIndex(1);
    EXPECT_EQ(unselected.toString(), QString("red,green"));

    selected.show(2);
    EXPECT_TRUE(log.waitForText("StringEnum, size:3, index:2"));
    EXPECT_TRUE(log.waitForText("'green'"));
}

TEST(StringEnum, RecordKeepsTheWholeTextAndNeedsACommaToReadIt) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    StringEnum const def(QString("0,off,on"));
    XRecord r;
    r.setStringEnum("mode", StringEnum(QString("1,fast,slow")));
    EXPECT_EQ(r.getString("mode"), QString("1,fast,slow"));
    EXPECT_EQ(r.getStringEnum("mode", def).enumStr(), QString("slow"));
    EXPECT_EQ(r.getStringEnum("absent", def).toString(), def.toString());
    r.setString("word", "single");
    EXPECT_EQ(r.getStringEnum("word", def).toString(), def.toString());
    EXPECT_TRUE(log.waitForText("XRecord::getStringEnum, key:word, value:'single' ?"));
}
