// RawStringHandles.cpp: the registry of string handles written in raw arrays.
#include "tools/xtree/RawStringHandles.h"

#include "tools/thread/QtMutexLock.h"
#include <QtCore/QMutex>

#include <cstring>
#include <unordered_map>

namespace orv::xtree {

namespace {

// Handle to a copy that shares the string's data and so keeps the handle valid.
struct Registry {
    QMutex mutex;
    std::unordered_map<quintptr, QString> strings;
};

Registry &registry() {
    static Registry *const shared = new Registry; // lives as long as the handles do
    return *shared;
}

quintptr handleOf(QString const &text) {
    static_assert(sizeof(QString) == sizeof(quintptr), "a string is one handle");
    quintptr handle;
    std::memcpy(&handle, &text, sizeof handle);
    return handle;
}

// A process that writes raw string arrays without end must not grow without end: past
// this many strings the registry starts afresh, and older handles read as unknown.
size_t const MAX_KEPT = size_t(1) << 20;

} // namespace

void keepHandles(QString const *strings, quint64 count) {
    Registry &r = registry();
    QtMutexLock lock(&r.mutex);
    if (r.strings.size() + count > MAX_KEPT)
        r.strings.clear();
    for (quint64 i = 0; i < count; ++i)
        r.strings.emplace(handleOf(strings[i]), strings[i]);
}

bool stringOfHandle(quintptr handle, QString &out) {
    Registry &r = registry();
    QtMutexLock lock(&r.mutex);
    auto const found = r.strings.find(handle);
    if (found == r.strings.end())
        return false;
    out = found->second;
    return true;
}

} // namespace orv::xtree
