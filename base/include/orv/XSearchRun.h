// XSearchRun.h: a whole search over a directory tree, step after step: the walk
// (XDirInfo, with its cache), the file filter, then the content filter over every file
// that passed, on a pool of worker threads. The results come per file in path order,
// each hit with the file line it lies on.
//
//   orv::find::XFilter filter;
//   filter.contentFilter.createSymbols(QStringLiteral("fox{i} & ~dog"), false);
//   filter.fileFilter.setPattern(QStringLiteral("*.txt"), false);
//   orv::find::XSearchRun search(filter);
//   search.run(QStringLiteral("/data/texts"));
//   for (auto const &file : search.results())
//       for (orv::find::XHitLine const &hit : file.hitLines)
//           ppInfo(hit.toString(file.path));                 // "path:line:offset:text"
#pragma once

#include "orv/XDirInfo.h"
#include "orv/XFileFilter.h"

#include <QtCore/QString>

#include <atomic>
#include <functional>
#include <vector>

namespace orv {

class XLineReaderDA;

namespace find {

// One hit with its file line, as line-oriented tools print it.
struct ORV_EXPORT XHitLine {
    quint64 line = 0;  // file line, from 1
    qint64 offset = 0; // byte offset of the hit in the file
    QString text;      // the whole file line, without its line end
    // "path:line:offset:text"
    QString toString(QString const &path) const;
};

// One entry per mark of hits, in file order (a layer holds them term by term). Marks
// of one line share its text.
ORV_EXPORT std::vector<XHitLine> hitLines(XLineReaderDA const &reader, XRamLayer const &hits);
// The same from the lines XContentFilter::findLines gave.
ORV_EXPORT std::vector<XHitLine> hitLines(std::vector<XContentFilter::LineHits> const &lines);

// One run at a time; cancel() and the progress counters serve other threads.
class ORV_EXPORT XSearchRun {
public:
    struct FileResult {
        QString path;
        quint64 size = 0;
        quint64 lines = 0;       // file lines; 0 for a file passed over whole
                                 // (no term in it where the expression needs one)
        quint64 hits = 0;        // marks
        bool binary = false;     // the head holds control bytes
        bool unreadable = false; // could not be opened (gone, no permission)
        // Empty for a binary file unless setLinesOfBinaryFiles(true).
        std::vector<XHitLine> hitLines;
    };
    struct Progress {
        bool scanning = true;   // still walking: filesFound counts what the walk saw
        quint64 filesFound = 0; // then: the files that passed the file filter
        quint64 filesDone = 0;
        quint64 bytesDone = 0;
        quint64 hits = 0;
    };

    explicit XSearchRun(XFilter filter);
    ~XSearchRun();
    XSearchRun(XSearchRun const &) = delete;
    XSearchRun &operator=(XSearchRun const &) = delete;

    // 0 (the default): one per processor.
    void setThreadCount(int count) { threads = count; }
    // Lines longer than this are searched in pieces in file scope.
    void setMaxLineLength(quint64 length) { maxLineLength = length; }
    void setLinesOfBinaryFiles(bool on) { linesOfBinary = on; }
    // Called on the thread of run() every intervalMs while it runs.
    void setProgressListener(std::function<void(Progress const &)> listener, int intervalMs);
    // The walk's settings (hidden files, rescan, text extensions) before run().
    XDirInfo &dirInfo() { return info; }

    // Walks dir, filters and searches; blocks until done. Without a content filter the
    // files that pass the file filter are the result, unopened. False when cancelled.
    bool run(QString const &dir);
    // From any thread: the walk and the search stop soon.
    void cancel();

    XFindStats const &stats() const { return findStats; }
    // Every file that passed the file filter, sorted by path.
    std::vector<FileResult> const &results() const { return fileResults; }
    // Folders the walk could not list.
    std::vector<QString> const &unreadableDirs() const { return info.getUnreadableDirs(); }
    Progress progress() const;

private:
    struct Worker;
    void searchFile(Worker &worker, size_t index);
    void searchBytes(Worker &worker, FileResult &result) const;

    XFilter filter;
    XDirInfo info;
    XFindStats findStats;
    std::vector<QFileInfo const *> files;
    std::vector<FileResult> fileResults;
    std::function<void(Progress const &)> listener;
    int listenerIntervalMs = 250;
    int threads = 0;
    quint64 maxLineLength = 1 << 20;
    bool linesOfBinary = false;
    std::atomic<bool> cancelled{false};
    std::atomic<bool> scanning{false};
    std::atomic<quint64> filesDone{0};
    std::atomic<quint64> bytesDone{0};
};

} // namespace find
} // namespace orv
