// XFileFilter_test.cpp: the file filter's fields alone and together with their
// boundaries, its two readings of AFTER, its text form, the counters' text, and sizes
// and dates as people type them (and mistype them).
#include "orv/XFileFilter.h"

#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>

#include <tuple>

using namespace orv;

namespace {

qint64 const T = QDateTime(QDate(2024, 1, 31), QTime(12, 0)).toMSecsSinceEpoch();

XFileFilter sizes(XFileFilter::Area area, quint64 s1, quint64 s2 = 0) {
    XFileFilter f;
    f.sizeArea = area;
    f.size1 = s1;
    f.size2 = s2;
    return f;
}

XFileFilter times(XFileFilter::Area area, qint64 t1, qint64 t2 = 0) {
    XFileFilter f;
    f.timeArea = area;
    f.time1 = t1;
    f.time2 = t2;
    return f;
}

XFileFilter named(char const *patterns, char const *negative = "",
                  std::initializer_list<char const *> extensions = {}) {
    XFileFilter f;
    f.setPattern(QString::fromUtf8(patterns), false);
    f.setPattern(QString::fromUtf8(negative), true);
    for (char const *e : extensions)
        f.textExtensions.insert(QString::fromUtf8(e));
    return f;
}

TEST(XFileFilter, SetPatternCutsAtBlanksCommasAndSemicolonsAndAddsUp) {
    XFileFilter f;
    f.setPattern(QStringLiteral(" *.cpp, *.h ;*.txt"), false);
    f.setPattern(QString(), false);
    EXPECT_EQ(f.pattern(false), QStringLiteral("*.cpp,*.h,*.txt"));
    f.setPattern(QStringLiteral("*.md"), false);
    f.setPattern(QStringLiteral("*.bak"), true);
    EXPECT_EQ(f.patterns.size(), 4u);
    EXPECT_EQ(f.pattern(true), QStringLiteral("*.bak"));
}

// One row per field and boundary: the filter, a file's name, size and time, the verdict.
TEST(XFileFilter, MatchTestsEachFieldAtItsBoundaries) {
    std::tuple<char const *, XFileFilter, char const *, quint64, qint64, bool> const rows[] = {
        {"no test at all", XFileFilter(), "any", 5, T, true},
        {"size before 100: 99", sizes(XFileFilter::BEFORE, 100), "f", 99, T, true},
        {"size before 100: 100", sizes(XFileFilter::BEFORE, 100), "f", 100, T, false},
        {"size equal", sizes(XFileFilter::EQUAL, 100), "f", 100, T, true},
        {"size not equal", sizes(XFileFilter::EQUAL, 100), "f", 101, T, false},
        {"size between, low end", sizes(XFileFilter::BETWEEN, 10, 20), "f", 10, T, true},
        {"size between, high end", sizes(XFileFilter::BETWEEN, 10, 20), "f", 20, T, true},
        {"size between, above", sizes(XFileFilter::BETWEEN, 10, 20), "f", 21, T, false},
        {"size between, below", sizes(XFileFilter::BETWEEN, 10, 20), "f", 9, T, false},
        {"size after 100 (size2 200): 101", sizes(XFileFilter::AFTER, 100, 200), "f", 101, T, true},
        {"size after 100: 100", sizes(XFileFilter::AFTER, 100), "f", 100, T, false},
        {"size mark: no test", sizes(XFileFilter::MARK, 100), "f", 1, T, true},
        {"time before T: T", times(XFileFilter::BEFORE, T), "f", 1, T, true},
        {"time before T: T+1", times(XFileFilter::BEFORE, T), "f", 1, T + 1, false},
        {"time equal", times(XFileFilter::EQUAL, T), "f", 1, T, true},
        {"time not equal", times(XFileFilter::EQUAL, T), "f", 1, T - 1, false},
        {"time between, ends", times(XFileFilter::BETWEEN, T, T + 10), "f", 1, T + 10, true},
        {"time between, after", times(XFileFilter::BETWEEN, T, T + 10), "f", 1, T + 11, false},
        {"time after T: T", times(XFileFilter::AFTER, T), "f", 1, T, true},
        {"time after T: T-1", times(XFileFilter::AFTER, T), "f", 1, T - 1, false},
        {"extension cpp: A.CPP", named("", "", {"cpp"}), "A.CPP", 1, T, true},
        {"extension cpp: README", named("", "", {"cpp"}), "README", 1, T, false},
        {"extension cpp: a.cpp.bak", named("", "", {"cpp"}), "a.cpp.bak", 1, T, false},
        {"pattern, any letter case", named("*.txt"), "NOTES.TXT", 1, T, true},
        {"second pattern holds", named("*.h,*.cpp"), "main.cpp", 1, T, true},
        {"no pattern holds", named("*.h,*.cpp"), "main.c", 1, T, false},
        {"a pattern without * tests the ending", named("main.c"), "domain.c", 1, T, true},
        {"negative pattern", named("", "*.bak"), "x.bak", 1, T, false},
        {"positive and negative", named("*.txt", "old*"), "old.txt", 1, T, false},
        {"all tests pass", named("*.txt", "old*", {"txt"}), "new.txt", 1, T, true},
    };
    for (auto const &[what, filter, name, size, time, match] : rows) {
        SCOPED_TRACE(what);
        EXPECT_EQ(filter.match(QString::fromUtf8(name), size, time), match);
    }
    // The helpers are the other reading: AFTER against the second value.
    XFileFilter const after = sizes(XFileFilter::AFTER, 100, 200);
    EXPECT_FALSE(after.is_size_bigger(101));
    EXPECT_TRUE(after.is_size_bigger(201));
    EXPECT_TRUE(times(XFileFilter::AFTER, 0, T).is_time_after(T + 1));
}

TEST(XFileFilter, MatchReadsAFilesNameSizeAndTime) {
    QTemporaryDir dir;
    QString const path = test::writeFile(dir, QStringLiteral("n.txt"), QByteArray(150, 'x'));
    XFileFilter f = named("*.txt", "", {"txt"});
    f.sizeArea = XFileFilter::BETWEEN;
    f.size1 = 150;
    f.size2 = 150;
    f.timeArea = XFileFilter::AFTER;
    f.time1 = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    EXPECT_TRUE(f.match(QFileInfo(path)));
    f.time1 += 1000;
    std::vector<QString> const lines =
        test::linesLoggedBy([&] { EXPECT_FALSE(f.match(QFileInfo(path))); });
    EXPECT_EQ(lines, std::vector<QString>{QStringLiteral("negative")});
}

// The text forms: the filter's parts joined without separators, the counters, the whole filter.
TEST(XFileFilter, TextForms) {
    XFindStats stats;
    stats.filesTotal = 20000;
    stats.files = 1234;
    stats.lines = 1000000;
    stats.bytes = 1500000;
    stats.hits = 7;
    QString const full = stats.toString();
    stats.reset();
    find::XFilter filter;
    QString const empty = filter.toString();
    filter.fileFilter.setPattern(QStringLiteral("*.txt"), false);
    QString const files = filter.toString();
    EXPECT_FALSE(filter.has_content_filter());
    ASSERT_TRUE(filter.contentFilter.createSymbols(QStringLiteral("fox"), false));
    EXPECT_TRUE(filter.has_content_filter());
    std::pair<QString, char const *> const rows[] = {
        {named("*.cpp,*.h", "*.bak").toString(), "{*.cpp*.h}~{*.bak}"},
        {sizes(XFileFilter::BETWEEN, 1000, 2000).toString(), "SIZE:{>= 1.000 & <=2.000}"},
        {sizes(XFileFilter::AFTER, 5000).toString(), "SIZE:{> 5.000}"},
        {sizes(XFileFilter::BEFORE, 0, 7).toString(), "SIZE:{< , 7}"},
        {times(XFileFilter::AFTER, T).toString(), "TIME:{> 2024/01/31 12:00:00,000}"},
        {XFileFilter().toString(), ""},
        {XFileFilter::area_to_String(XFileFilter::BETWEEN), "BETWEEN"},
        {XFileFilter::area_to_String_operator(XFileFilter::MARK), "<.>"},
        {XFileFilter::area_to_String(XFileFilter::Area(9)), "UNKNOWN"},
        {full, "files total:20.000, files :1.234, lines :1.000.000, bytes :1.50 MB, hits :7"},
        {stats.toString(), "files total:0, files :0, lines :0, bytes :0.00 KB, hits :0"},
        {empty, ""},
        {files, "file: \"{*.txt}\""},
        {filter.toString(), "file: \"{*.txt}\", content: \"scope:Paragraph, pattern 'fox'\""},
    };
    for (auto const &[text, expected] : rows)
        EXPECT_EQ(text, QString::fromUtf8(expected));
    EXPECT_TRUE(filter.isValid());
}

// Typed values: each text with the bytes or milliseconds it gives, or the start of the
// reason it is refused.
TEST(XFileFilter, SizesAndDatesFromTextAndWhyTheyAreRefused) {
    std::tuple<char const *, bool, quint64, char const *> const sizeRows[] = {
        {"1500", true, 1500, ""},
        {" 10k ", true, 10000, ""},
        {"2.5MB", true, 2500000, ""},
        {"4KiB", true, 4096, ""},
        {"1 gib", true, quint64(1) << 30, ""},
        {"18446744073709551615", true, ~quint64(0), ""},
        {"18446744073709551616", false, 0, "beyond 64 bits"},
        {"20000000T", false, 0, "beyond 64 bits"},
        {"1.5", false, 0, "a number of bytes is whole"},
        {"", false, 0, "is no size"},
        {"-5", false, 0, "is no size"},
        {"5x", false, 0, "is no size"},
        {"k", false, 0, "is no size"},
        {"1.k", false, 0, "is no size"},
        {"1kk", false, 0, "is no size"},
        {"\xd9\xa3", false, 0, "is no size"}, // an Arabic-Indic three is no ASCII digit
    };
    for (auto const &[text, ok, expected, reason] : sizeRows) {
        SCOPED_TRACE(text);
        quint64 bytes = 0;
        QString error;
        EXPECT_EQ(XFileFilter::sizeFromText(QString::fromUtf8(text), bytes, &error), ok);
        EXPECT_EQ(bytes, expected);
        EXPECT_TRUE(error.contains(QString::fromUtf8(reason))) << error.toStdString();
    }
    qint64 const day = QDateTime(QDate(2024, 1, 31), QTime(0, 0)).toMSecsSinceEpoch();
    std::tuple<char const *, bool, qint64> const timeRows[] = {
        {"2024-01-31", true, day},
        {"2024/1/31", true, day},
        {"2024-01-31 12:00", true, T},
        {"2024-01-31T12:00:00", true, T},
        {"@86400", true, 86400000},
        {"@-1", true, -1000},
        {"@99999999999999999", false, 0},
        {"@", false, 0},
        {"@ 5", false, 0},
        {"2024-02-30", false, 0},
        {"2024-01-31 25:00", false, 0},
        {"yesterday", false, 0},
        {"", false, 0},
    };
    for (auto const &[text, ok, expected] : timeRows) {
        SCOPED_TRACE(text);
        qint64 ms = 0;
        QString error;
        EXPECT_EQ(XFileFilter::timeFromText(QString::fromUtf8(text), ms, &error), ok);
        EXPECT_EQ(ms, expected);
        EXPECT_EQ(error.isEmpty(), ok) << error.toStdString();
    }
}

} // namespace
