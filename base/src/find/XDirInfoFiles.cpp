// XDirInfoFiles.cpp: questions about one directory without a walk's state (its bytes,
// its files sorted, its entries), and the plain-text test of a file's head.
#include "orv/XDirInfo.h"

#include "find/DirLoopGuard.h"
#include "orv/Log.h"
#include "orv/XFileMapper.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cstring>

namespace orv {

using find::DirLoopGuard;

namespace {

QDir::Filters const everyEntry = QDir::AllDirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot;

qint64 bytesBelow(QDir const &dir, QString const &canonical, bool recursive, DirLoopGuard &guard) {
    qint64 sum = 0;
    for (QFileInfo const &entry : dir.entryInfoList(everyEntry)) {
        if (!entry.isDir()) {
            sum += entry.size();
            continue;
        }
        QString const path = DirLoopGuard::childPath(canonical, entry);
        if (recursive && guard.enter(path))
            sum += bytesBelow(QDir(entry.filePath()), path, true, guard);
    }
    return sum;
}

} // namespace

qint64 XDirInfo::count_bytes(QString const &dir, bool recursive) {
    return count_bytes(QDir(dir), recursive);
}

qint64 XDirInfo::count_bytes(QDir const &dir, bool recursive) {
    if (!dir.exists())
        return -1;
    DirLoopGuard guard;
    QString const canonical = DirLoopGuard::rootPath(dir);
    guard.enter(canonical);
    return bytesBelow(dir, canonical, recursive, guard);
}

std::vector<QFileInfo> XDirInfo::get_files_only(QString const &dir, SORT_BY sortBy,
                                                SORT_DIRECTION direction) {
    return get_files_only(QDir(dir), sortBy, direction);
}

std::vector<QFileInfo> XDirInfo::get_files_only(QDir const &dir, SORT_BY sortBy,
                                                SORT_DIRECTION direction) {
    std::vector<QFileInfo> files;
    for (QFileInfo const &entry : dir.entryInfoList(everyEntry, QDir::DirsFirst))
        if (!entry.isDir())
            files.push_back(entry);
    bool const ascending = direction == ASCENDING;
    auto const sortWith = [&](auto key) {
        std::sort(files.begin(), files.end(), [&](QFileInfo const &a, QFileInfo const &b) {
            return ascending ? key(a, b) : key(b, a);
        });
    };
    switch (sortBy) {
    case NAME:
        sortWith([](QFileInfo const &a, QFileInfo const &b) {
            return QString::compare(a.fileName(), b.fileName(), Qt::CaseInsensitive) < 0;
        });
        break;
    case SIZE:
        sortWith([](QFileInfo const &a, QFileInfo const &b) { return a.size() < b.size(); });
        break;
    case DATE:
        sortWith([](QFileInfo const &a, QFileInfo const &b) {
            return a.lastModified() < b.lastModified();
        });
        break;
    case NONE: break;
    }
    return files;
}

std::vector<QFileInfo> XDirInfo::get_flat_directory_info(QString const &dir) {
    QFileInfoList const entries = QDir(dir).entryInfoList(everyEntry, QDir::DirsFirst | QDir::Name);
    return std::vector<QFileInfo>(entries.begin(), entries.end());
}

bool is_text_file(QFileInfo const &fileInfo) {
    QString const name = fileInfo.filePath();
    if (!fileInfo.exists()) {
        ppDebug("file_tools::is_text_file, <<<$>>> does not exist", name);
        return false;
    }
    if (!fileInfo.isFile()) {
        ppDebug("file_tools::is_text_file, <<<$>>> ist not a file", name);
        return false;
    }
    if (fileInfo.size() == 0) {
        ppDebug("file_tools::is_text_file, <<<$>>> file length == 0", name);
        return false;
    }
    XFileMapper file(fileInfo);
    char const *head = file.mapReadOnly() ? file.mem() : nullptr;
    if (!head) {
        ppDebug("file_tools::is_text_file, <<<$>>> cannot open", name);
        return false;
    }
    size_t const n = size_t(std::min<quint64>(file.length(), 1024));
    auto const startsWith = [&](char const *text) {
        return std::strncmp(head, text, std::strlen(text)) == 0;
    };
    if (n >= 9 && (startsWith("<!xml") || startsWith("<!DOCTYPE")))
        return true;
    for (size_t i = 0; i < n; ++i) {
        // Signed on purpose: every byte from 128 up is below 8 as well, so non-ASCII
        // text fails here too.
        signed char const c = static_cast<signed char>(head[i]);
        if (c < 8 || c == 11 || c == 12 || (c >= 14 && c <= 31))
            return false;
    }
    return true;
}

bool is_text_file(QString const &fileName) {
    return !fileName.isEmpty() && is_text_file(QFileInfo(fileName));
}

} // namespace orv
