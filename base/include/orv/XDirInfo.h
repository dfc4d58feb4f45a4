// XDirInfo.h: the files of a directory tree with counters, the lists derived from them
// (text files by extension, files that pass an XFileFilter), the process-wide cache of
// walked trees, and the test whether a file's head reads as plain text.
//
//   orv::XDirInfo info;
//   info.scan_dir(QStringLiteral("/data/src"));          // walks, or takes the cache
//   orv::XFindStats stats = info.setup_filtered_files(filter, false);
//   for (QFileInfo const *file : info.get_view_filtered_files()) ...
//
// The cache never notices changes on disk: a second scan_dir of a path answers from it
// until the entry is deleted, the cache cleared, or the rescan flag set.
#pragma once

#include "orv/ArrayView.h"
#include "orv/XAtomic.h"
#include "orv/XFileFilter.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QMutex>
#include <QtCore/QString>

#include <map>
#include <unordered_set>
#include <vector>

namespace orv {

namespace find {
class DirLoopGuard;
}

// Directory path (as given, so "/a" and "/a/" are two entries) to the files a walk
// found there. Every operation locks; get() gives a copy for that reason.
class ORV_EXPORT XCacheDirInfo {
public:
    // Inserts or replaces.
    void put(QString const &key, std::vector<QFileInfo> const &files);
    // Inserts by moving; an existing entry stays, and files is then left untouched.
    void move(QString const &key, std::vector<QFileInfo> &&files);
    // Empty for an unknown key.
    std::vector<QFileInfo> get(QString const &key) const;
    bool containsKey(QString const &key) const;
    // An empty key logs an ERROR and changes nothing.
    void deleteEntry(QString const &key);
    quint64 countEntries() const;
    void clear();
    void show(unsigned int indent);

private:
    std::map<QString, std::vector<QFileInfo>> entries;
    // A plain mutex, taken on every thread: XMutexLocker would leave the main thread
    // unguarded against the workers.
    mutable QMutex mutex;
};

// The scanning thread owns the lists until the scan has ended; the counters and flags
// are atomic, so that another thread may show progress or cancel.
class ORV_EXPORT XDirInfo {
public:
    enum SORT_BY { NONE = 0, NAME = 1, SIZE = 2, DATE = 3 };
    // Any value other than ASCENDING is descending.
    enum SORT_DIRECTION { ASCENDING = 0, DESCENDING = 1 };

    XDirInfo() = default;
    // Counters, files and extensions are copied; the text list is built once more on the
    // copy's own files (its counters rising once more, as setupTextFiles does), and the
    // filtered list points into the copy's files in the same order.
    XDirInfo(XDirInfo const &other);
    XDirInfo &operator=(XDirInfo const &) = delete;

    // Walks dir, or takes its file list from the cache (counters stay 0 then). A walk
    // that was not cancelled goes into the cache, also the empty one of a missing dir.
    void scan_dir(QString const &dir);
    // Appends the entries of dir to the files, descending into folders when recursive
    // is set. A folder reached a second time through a symbolic link is skipped.
    void recursiveDirLoop(QDir const &dir, bool recursive);
    // The files whose lower-cased extension is in textExtensions, shuffled. Counters
    // are raised, never reset: a second call counts the files again.
    void setupTextFiles();
    // Points at the files filter matches; filesTotal, bytes and files of the result are set.
    XFindStats setup_filtered_files(XFileFilter const &filter, bool shuffle);
    ArrayView<QFileInfo const *> get_view_filtered_files() const { return filteredFiles; }
    // A new order at every call (a freshly seeded Mersenne Twister).
    void shuffle_filtered_files();
    bool isTextFile(QString const &fileName) const;
    std::vector<QString> get_text_extensions() const;
    bool isHiddenFiles() const { return hiddenFiles; }
    void setHiddenFiles(bool on) { hiddenFiles = on; }

    std::vector<QFileInfo> const &getFiles() const { return arFile; }
    std::vector<QFileInfo const *> const &getTextFiles() const { return textFiles; }
    // Folders the last walk could not list (unreadable, or gone meanwhile); they add
    // no entries and no message, as any folder that cannot be read.
    std::vector<QString> const &getUnreadableDirs() const { return unreadableDirs; }

    // Bytes of all files below dir, hidden ones included; -1 when dir does not exist.
    static qint64 count_bytes(QString const &dir, bool recursive);
    static qint64 count_bytes(QDir const &dir, bool recursive);
    // The files of dir alone (hidden ones too), sorted; NONE keeps the listing's order.
    static std::vector<QFileInfo> get_files_only(QString const &dir, SORT_BY sortBy,
                                                 SORT_DIRECTION direction);
    static std::vector<QFileInfo> get_files_only(QDir const &dir, SORT_BY sortBy,
                                                 SORT_DIRECTION direction);
    // Every entry of dir alone, folders first, then by name; hidden ones too.
    static std::vector<QFileInfo> get_flat_directory_info(QString const &dir);

    // "dirs:$, files:$, bytes:$, text files:$, text bytes:$"
    QString toString() const;
    void show_files(unsigned int indent) const;
    void show_filtered_files(unsigned int indent) const;
    void showTextFiles(unsigned int indent) const;

    // Not filled by scan_dir; for the application's own use.
    QString directoryName;
    XAtomic<int> countFiles{0};
    XAtomic<int> countTextFiles{0};
    // Rises with countTextFiles.
    XAtomic<int> countTextFilesAll{0};
    XAtomic<int> countDirs{0};
    // Files and folder entries (a folder's own size counts too).
    XAtomic<qint64> bytes{0};
    XAtomic<qint64> textBytes{0};
    // The next scan_dir drops the cached entry first, and clears the flag.
    XAtomic<bool> rescan{false};
    // Stops the walk at the next entry of each level.
    XAtomic<bool> cancel{false};
    // Lower-case, without the dot; the application fills it.
    std::unordered_set<QString> textExtensions;

    static XCacheDirInfo cacheDir;

private:
    void walk(QDir const &dir, QString const &canonical, bool recursive, find::DirLoopGuard &guard);
    void resetCounters();

    std::vector<QFileInfo> arFile;
    std::vector<QFileInfo const *> filteredFiles;
    std::vector<QFileInfo const *> textFiles;
    std::vector<QString> unreadableDirs;
    bool hiddenFiles = false;
};

// Whether the head of a file (its first 1024 bytes) reads as plain ASCII text: no
// control byte but backspace, tab, LF and CR, and no byte from 128 up, so that UTF-8
// and Latin-1 text count as binary; a head starting with "<!xml" or "<!DOCTYPE" is
// text whatever follows. Missing, empty or unreadable files give false.
ORV_EXPORT bool is_text_file(QFileInfo const &fileInfo);
ORV_EXPORT bool is_text_file(QString const &fileName);

} // namespace orv
