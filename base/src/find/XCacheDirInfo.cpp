// XCacheDirInfo.cpp: the walked trees of the process, by the path they were asked for.
#include "orv/XDirInfo.h"

#include "orv/Log.h"

#include "tools/thread/QtMutexLock.h"

namespace orv {

void XCacheDirInfo::put(QString const &key, std::vector<QFileInfo> const &files) {
    QtMutexLock lock(&mutex);
    entries[key] = files;
}

void XCacheDirInfo::move(QString const &key, std::vector<QFileInfo> &&files) {
    QtMutexLock lock(&mutex);
    if (entries.count(key) == 0)
        entries.emplace(key, std::move(files));
}

std::vector<QFileInfo> XCacheDirInfo::get(QString const &key) const {
    QtMutexLock lock(&mutex);
    auto const it = entries.find(key);
    return it == entries.end() ? std::vector<QFileInfo>() : it->second;
}

bool XCacheDirInfo::containsKey(QString const &key) const {
    QtMutexLock lock(&mutex);
    return entries.count(key) != 0;
}

void XCacheDirInfo::deleteEntry(QString const &key) {
    if (key.isEmpty()) {
        ppError("XCacheDirInfo::deleteEntry, key is empty or null !");
        return;
    }
    QtMutexLock lock(&mutex);
    entries.erase(key);
}

quint64 XCacheDirInfo::countEntries() const {
    QtMutexLock lock(&mutex);
    return entries.size();
}

void XCacheDirInfo::clear() {
    QtMutexLock lock(&mutex);
    entries.clear();
}

void XCacheDirInfo::show(unsigned int indent) {
    QtMutexLock lock(&mutex);
    ppInfo(indent, "XCacheDirInfo, map entries:$", static_cast<quint64>(entries.size()));
    for (auto const &entry : entries)
        ppInfo(indent + 4, "elements [$] - key '$'", static_cast<quint64>(entry.second.size()),
               entry.first);
}

} // namespace orv
