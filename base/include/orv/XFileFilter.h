// XFileFilter.h: which files of a scanned directory a search looks at (name patterns,
// size, modification time, extension), the complete search description XFilter (file
// filter and content filter), and the counters of a search, XFindStats.
//
//   orv::XFileFilter filter;
//   filter.setPattern(QStringLiteral("*.cpp, *.h"), false);
//   filter.sizeArea = orv::XFileFilter::BETWEEN;      // 1000 <= size <= 2000
//   filter.size1 = 1000;
//   filter.size2 = 2000;
//   bool searched = filter.match(QFileInfo(path));
#pragma once

#include "orv/XAtomic.h"
#include "orv/XContentFilter.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <unordered_set>
#include <vector>

namespace orv {

// A plain value, read-only while a search runs, so threads may share one.
struct ORV_EXPORT XFileFilter {
    enum Area { NO_AREA = 0, BEFORE = 1, EQUAL = 2, BETWEEN = 3, AFTER = 4, MARK = 5 };

    // Cuts text at blanks, commas and semicolons and appends each pattern to the list
    // that negative selects; earlier entries stay.
    void setPattern(QString const &text, bool negative);
    // The patterns of one list joined with ",".
    QString pattern(bool negative) const;

    bool has_Pattern() const { return !patterns.empty(); }
    bool has_not_Pattern() const { return !negativePatterns.empty(); }
    bool has_TextFile_extensions() const { return !textExtensions.empty(); }
    bool has_size_filter() const { return sizeArea != NO_AREA; }
    bool has_time_filter() const { return timeArea != NO_AREA; }

    // Readings of the fields on their own. match() reads AFTER against the first value
    // where is_size_bigger and is_time_after take the second: two separate readings.
    bool is_size_smaller(quint64 v) const { return v < size1; }
    bool is_size_equals(quint64 v) const { return v == size1; }
    bool is_size_between(quint64 v) const { return size1 <= v && v <= size2; }
    bool is_size_bigger(quint64 v) const { return v > size2; }
    bool is_time_before(qint64 v) const { return v < time1; }
    bool is_time_equals(qint64 v) const { return v == time1; }
    bool is_time_between(qint64 v) const { return time1 <= v && v <= time2; }
    bool is_time_after(qint64 v) const { return v > time2; }

    // The lower-cased suffix is not empty and is in the extension set.
    bool isTextFile(QFileInfo const &fileInfo) const;
    // Size, time, extension, patterns, negative patterns, in this order.
    bool match(QFileInfo const &fileInfo) const;
    // The same on what a directory listing or a saved tree already knows.
    bool match(QString const &fileName, quint64 size, qint64 modifiedMs) const;

    // "{*.cpp*.h}~{*.bak}SIZE:{>= 1.000 & <=2.000}TIME:{...}"; empty with no test set.
    QString toString() const;
    static QString area_to_String(Area area);
    static QString area_to_String_operator(Area area);

    // Values that people type. A size is a number of bytes, whole or decimal, with an
    // optional unit: k, M, G, T (powers of 1000) or Ki, Mi, Gi, Ti (of 1024), each with
    // an optional "B", in any letter case: "1500", "10k", "2.5MB", "4KiB". A moment
    // is local time "2024-01-31", "2024-01-31 13:45" or "2024-01-31 13:45:10" ("T"
    // may stand for the blank, "/" for "-"), or "@" and seconds since 1970.
    // False, with the reason in error, for anything else or a value beyond 64 bits.
    static bool sizeFromText(QString const &text, quint64 &bytes, QString *error);
    static bool timeFromText(QString const &text, qint64 &msSinceEpoch, QString *error);

    // Wild-card patterns ("*" only, any letter case, a pattern without "*" tests the
    // ending), of which one must hold; and those of which none may hold.
    std::vector<QString> patterns;
    std::vector<QString> negativePatterns;
    // Milliseconds since 1970.
    qint64 time1 = 0;
    qint64 time2 = 0;
    Area timeArea = NO_AREA;
    quint64 size1 = 0;
    quint64 size2 = 0;
    Area sizeArea = NO_AREA;
    // Lower-case suffixes without the dot; empty: no restriction.
    std::unordered_set<QString> textExtensions;
};

// The counters of one search. Workers add to them at once; a copy reads one counter
// after the other, so it is no snapshot of one moment.
struct ORV_EXPORT XFindStats {
    XAtomic<quint64> filesTotal{0}; // files seen
    XAtomic<quint64> lines{0};      // file lines searched
    XAtomic<quint64> bytes{0};      // bytes seen
    XAtomic<quint64> hits{0};       // marks found
    XAtomic<quint64> files{0};      // files that passed the file filter

    void reset();
    // "files total:20.000, files :1.234, lines :..., bytes :12.34 MB, hits :56"
    QString toString() const;
};

namespace find {

// A complete search: which files, and what in them.
struct ORV_EXPORT XFilter {
    XFileFilter fileFilter;
    XContentFilter contentFilter;

    bool has_content_filter() const { return contentFilter.hasContents(); }
    bool isValid() const { return true; }
    explicit operator bool() const { return isValid(); }
    // "file: \"...\", content: \"...\"", or only the file part, or "" for no filter.
    QString toString(bool details = false) const;
};

} // namespace find
} // namespace orv
