// XSearchRun.cpp: the search over a tree: the walk on a pool thread, the file filter,
// then the files shared out one by one to workers that each own a copy of the content
// filter (its cursor is per evaluation), while the calling thread reports progress.
#include "orv/XSearchRun.h"

#include "find/FileBytes.h"
#include "orv/Log.h"
#include "orv/XLineReaderDA.h"
#include "orv/XThreadPool.h"

#include <QtCore/QThread>

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace orv::find {

namespace {

// Runs jobs on a private pool and lets the caller wait in steps. Completion is told
// through a std::mutex: Qt's own hand-over is invisible to race checkers.
class JobGroup {
public:
    explicit JobGroup(int threads) { pool.setMaxThreadCount(std::max(1, threads)); }

    void start(std::function<void()> job) {
        {
            std::lock_guard<std::mutex> lock(mutex);
            ++running;
        }
        pool.start([this, job = std::move(job)] {
            job();
            std::lock_guard<std::mutex> lock(mutex);
            if (--running == 0)
                idle.notify_all();
        });
    }

    // Calls tick every intervalMs until all jobs have ended.
    void wait(int intervalMs, std::function<void()> const &tick) {
        std::unique_lock<std::mutex> lock(mutex);
        while (!idle.wait_for(lock, std::chrono::milliseconds(intervalMs),
                              [this] { return running == 0; })) {
            lock.unlock();
            if (tick)
                tick();
            lock.lock();
        }
        lock.unlock();
        // The runners may still be on their way out of the pool.
        pool.waitForDone();
    }

private:
    XThreadPool pool;
    std::mutex mutex;
    std::condition_variable idle;
    int running = 0;
};

quint64 fileLines(XLineReaderDA const &reader) {
    return reader.countLines() ? quint64(reader.lineInfos().back().lineNumber) + 1 : 0;
}

} // namespace

// What one worker keeps from file to file: its own filter (the cursor is per
// evaluation), its read buffer and its line list.
struct XSearchRun::Worker {
    XContentFilter filter;
    FileBytes bytes;
    std::vector<XContentFilter::LineHits> lineHits;
};

XSearchRun::XSearchRun(XFilter f) : filter(std::move(f)) {}

XSearchRun::~XSearchRun() = default;

void XSearchRun::setProgressListener(std::function<void(Progress const &)> l, int intervalMs) {
    listener = std::move(l);
    listenerIntervalMs = std::max(1, intervalMs);
}

void XSearchRun::cancel() {
    cancelled = true;
    info.cancel = true;
}

XSearchRun::Progress XSearchRun::progress() const {
    Progress p;
    p.scanning = scanning;
    p.filesFound = p.scanning ? quint64(std::max(0, int(info.countFiles))) : findStats.files.load();
    p.filesDone = filesDone;
    p.bytesDone = bytesDone;
    p.hits = findStats.hits;
    return p;
}

bool XSearchRun::run(QString const &dir) {
    cancelled = false;
    filesDone = 0;
    bytesDone = 0;
    findStats.reset();
    files.clear();
    fileResults.clear();
    int const threadCount = threads > 0 ? threads : std::max(1, QThread::idealThreadCount());
    JobGroup jobs(threadCount);
    auto const tick = [this] {
        if (listener)
            listener(progress());
    };

    scanning = true;
    jobs.start([this, &dir] {
        info.scan_dir(dir);
        XFindStats const filtered = info.setup_filtered_files(filter.fileFilter, false);
        findStats.filesTotal = filtered.filesTotal.load();
        findStats.bytes = filtered.bytes.load();
        findStats.files = filtered.files.load();
    });
    jobs.wait(listenerIntervalMs, tick);
    scanning = false;
    if (cancelled)
        return false;

    ArrayView<QFileInfo const *> const view = info.get_view_filtered_files();
    files.assign(view.begin(), view.end());
    std::sort(files.begin(), files.end(),
              [](QFileInfo const *a, QFileInfo const *b) { return a->filePath() < b->filePath(); });
    fileResults.resize(files.size());
    for (size_t i = 0; i < files.size(); ++i) {
        fileResults[i].path = files[i]->filePath();
        fileResults[i].size = quint64(files[i]->size());
    }
    if (!filter.has_content_filter())
        return true;

    std::atomic<size_t> next{0};
    int const workers = int(std::min<size_t>(size_t(threadCount), files.size()));
    for (int w = 0; w < workers; ++w)
        jobs.start([this, &next] {
            Worker worker{filter.contentFilter, {}, {}};
            for (size_t i = next++; i < files.size() && !cancelled; i = next++)
                searchFile(worker, i);
        });
    jobs.wait(listenerIntervalMs, tick);
    return !cancelled;
}

void XSearchRun::searchFile(Worker &worker, size_t index) {
    FileResult &result = fileResults[index];
    // An empty file has no lines.
    if (result.size != 0 && !worker.bytes.load(result.path, result.size)) {
        ppWarning("XSearchRun, cannot read <$>", result.path);
        result.unreadable = true;
    } else if (result.size != 0) {
        searchBytes(worker, result);
        findStats.lines.fetchAdd(result.lines);
        findStats.hits.fetchAdd(result.hits);
    }
    worker.bytes.release();
    bytesDone += result.size;
    ++filesDone;
}

void XSearchRun::searchBytes(Worker &worker, FileResult &result) const {
    char const *data = worker.bytes.mem();
    quint64 const size = worker.bytes.length();
    XContentFilter &filter = worker.filter;
    if (filter.findLines(data, size, worker.lineHits, result.lines)) {
        // Without a line table: only the lines that hold a term were cut out.
        for (XContentFilter::LineHits const &line : worker.lineHits)
            result.hits += line.marks.size();
        result.binary = XLineReaderDA::looksBinary(data, size);
        if (result.hits != 0 && (!result.binary || linesOfBinary))
            result.hitLines = hitLines(worker.lineHits);
        return;
    }
    // Every line must be looked at here (file scope, regular expressions, "~a" alone),
    // so the line table is built, unless no term occurs in the file at all.
    if (!filter.mayMatch(data, size))
        return;
    XLineReaderDA reader(worker.bytes, maxLineLength, true);
    XRamLayer const layer = filter.find(0, reader);
    result.lines = fileLines(reader);
    result.hits = layer.size();
    result.binary = layer.is_binary_file();
    if (result.hits != 0 && (!result.binary || linesOfBinary))
        result.hitLines = hitLines(reader, layer);
}

} // namespace orv::find
