// XDirInfo.cpp: the walk over a directory tree, its cache entry, and the lists of text
// files and of filtered files derived from the files found.
#include "orv/XDirInfo.h"

#include "find/DirLoopGuard.h"
#include "orv/FileHelpers.h"
#include "orv/Log.h"
#include "orv/StringFormat.h"

#include <algorithm>
#include <random>

namespace orv {

using find::DirLoopGuard;

XCacheDirInfo XDirInfo::cacheDir;

namespace {

void shuffled(std::vector<QFileInfo const *> &list) {
    std::random_device seed;
    std::mt19937 generator(seed());
    std::shuffle(list.begin(), list.end(), generator);
}

} // namespace

XDirInfo::XDirInfo(XDirInfo const &other)
    : directoryName(other.directoryName), countFiles(other.countFiles),
      countTextFiles(other.countTextFiles), countTextFilesAll(other.countTextFilesAll),
      countDirs(other.countDirs), bytes(other.bytes), textBytes(other.textBytes),
      rescan(other.rescan), cancel(other.cancel), textExtensions(other.textExtensions),
      arFile(other.arFile), unreadableDirs(other.unreadableDirs), hiddenFiles(other.hiddenFiles) {
    setupTextFiles();
    // The filtered list would otherwise point into the source's files and die with it.
    filteredFiles.reserve(other.filteredFiles.size());
    for (QFileInfo const *file : other.filteredFiles)
        filteredFiles.push_back(arFile.data() + (file - other.arFile.data()));
}

void XDirInfo::resetCounters() {
    countFiles = 0;
    countTextFiles = 0;
    countTextFilesAll = 0;
    countDirs = 0;
    bytes = 0;
    textBytes = 0;
}

void XDirInfo::scan_dir(QString const &dir) {
    cancel = false;
    arFile.clear();
    filteredFiles.clear();
    textFiles.clear();
    unreadableDirs.clear();
    resetCounters();
    if (rescan.exchange(false))
        cacheDir.deleteEntry(dir);
    if (cacheDir.containsKey(dir)) {
        arFile = cacheDir.get(dir);
        ppDebug("XDirInfo::scan_dir, <<<$>>> from cache", dir);
        return;
    }
    recursiveDirLoop(QDir(dir), true);
    if (!cancel)
        cacheDir.put(dir, arFile);
}

void XDirInfo::recursiveDirLoop(QDir const &dir, bool recursive) {
    DirLoopGuard guard;
    QString const canonical = DirLoopGuard::rootPath(dir);
    guard.enter(canonical);
    walk(dir, canonical, recursive, guard);
}

void XDirInfo::walk(QDir const &dir, QString const &canonical, bool recursive,
                    DirLoopGuard &guard) {
    QDir::Filters filters = QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot;
    if (hiddenFiles)
        filters |= QDir::Hidden;
    QFileInfoList const entries = dir.entryInfoList(filters);
    if (entries.isEmpty() && (!dir.exists() || !QFileInfo(dir.path()).isReadable()))
        unreadableDirs.push_back(dir.path());
    for (QFileInfo const &entry : entries) {
        if (cancel)
            return;
        if (recursive && entry.isDir()) {
            QString const path = DirLoopGuard::childPath(canonical, entry);
            if (!guard.enter(path))
                continue;
            bytes.fetchAdd(entry.size());
            countDirs.fetchAdd(1);
            walk(QDir(entry.filePath()), path, true, guard);
            continue;
        }
        countFiles.fetchAdd(1);
        bytes.fetchAdd(entry.size());
        arFile.push_back(entry);
    }
}

void XDirInfo::setupTextFiles() {
    textFiles.clear();
    for (QFileInfo const &file : arFile) {
        if (textExtensions.count(file.suffix().toLower()) == 0)
            continue;
        textFiles.push_back(&file);
        countTextFiles.fetchAdd(1);
        countTextFilesAll.fetchAdd(1);
        textBytes.fetchAdd(file.size());
    }
    shuffled(textFiles);
}

XFindStats XDirInfo::setup_filtered_files(XFileFilter const &filter, bool shuffle) {
    ppDebug("XDirInfo::setup_filtered_files, arFile:$", static_cast<quint64>(arFile.size()));
    filteredFiles.clear();
    XFindStats stats;
    quint64 seen = 0;
    for (QFileInfo const &file : arFile) {
        seen += quint64(file.size());
        if (filter.match(file))
            filteredFiles.push_back(&file);
    }
    stats.bytes = seen;
    stats.filesTotal = arFile.size();
    stats.files = filteredFiles.size();
    if (shuffle)
        shuffled(filteredFiles);
    return stats;
}

void XDirInfo::shuffle_filtered_files() { shuffled(filteredFiles); }

bool XDirInfo::isTextFile(QString const &fileName) const {
    return textExtensions.count(getFileExtension(fileName, true)) != 0;
}

std::vector<QString> XDirInfo::get_text_extensions() const {
    return std::vector<QString>(textExtensions.begin(), textExtensions.end());
}

QString XDirInfo::toString() const {
    return xprintF("dirs:$, files:$, bytes:$, text files:$, text bytes:$", format1000(countDirs),
                   format1000(countFiles), format1000(bytes), format1000(countTextFiles),
                   format1000(textBytes));
}

void XDirInfo::show_files(unsigned int indent) const {
    ppDebug(indent, "files:$", static_cast<quint64>(arFile.size()));
    for (QFileInfo const &file : arFile)
        ppDebug(indent + 4, file.filePath());
}

void XDirInfo::show_filtered_files(unsigned int indent) const {
    ppDebug(indent, "filtered files:$", static_cast<quint64>(filteredFiles.size()));
    for (QFileInfo const *file : filteredFiles)
        ppDebug(indent + 4, file->filePath());
    ppDebug(indent, "~filtered files:$", static_cast<quint64>(filteredFiles.size()));
}

void XDirInfo::showTextFiles(unsigned int indent) const {
    ppDebug(indent, "DirInfo, textFiles:$", static_cast<quint64>(textFiles.size()));
    for (size_t i = 0; i < textFiles.size(); ++i)
        ppDebug(indent + 4, "[$] => $", static_cast<quint64>(i), textFiles[i]->filePath());
}

} // namespace orv
