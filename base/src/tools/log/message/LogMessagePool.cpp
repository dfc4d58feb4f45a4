// LogMessagePool.cpp: the free list of text messages. The logger thread gives back
// what it has written and the logging threads take from it, so that in steady
// logging a message costs no heap block: the object, its time block and its text
// buffer are all used again.
#include "orv/LogMessage.h"

#include "orv/LogAttachment.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <typeinfo>
#include <vector>

namespace orv {

namespace {

// Messages move between a thread's own cache and the shared list in bunches, so
// that the shared list's mutex is taken once per bunch and not once per message.
constexpr size_t bunch = 64;
// What the shared list keeps at most; a burst beyond it is freed.
constexpr size_t sharedLimit = 8192;
// A larger text buffer is freed rather than kept for the next message.
constexpr int keptTextCapacity = 256;

struct SharedList {
    std::mutex mutex;
    std::vector<LogMessageString *> messages;
    // The list's size, read without the mutex to skip an empty list cheaply.
    std::atomic<size_t> size{0};
};

// Never destroyed: threads may still give messages back while the process ends.
SharedList &shared() {
    static SharedList *list = new SharedList();
    return *list;
}

// Moves the count oldest messages of from to the shared list; what the list has no
// room for is freed. The newest stay, as they are the likeliest still in the cache.
void giveToShared(std::vector<LogMessageString *> &from, size_t count) {
    SharedList &list = shared();
    size_t moved = 0;
    {
        std::lock_guard<std::mutex> lock(list.mutex);
        moved = std::min(count, sharedLimit - std::min(sharedLimit, list.messages.size()));
        list.messages.insert(list.messages.end(), from.begin(), from.begin() + moved);
        list.size.store(list.messages.size(), std::memory_order_relaxed);
    }
    for (size_t i = moved; i < count; ++i)
        delete from[i];
    from.erase(from.begin(), from.begin() + count);
}

void takeFromShared(std::vector<LogMessageString *> &to) {
    SharedList &list = shared();
    if (list.size.load(std::memory_order_relaxed) == 0)
        return;
    std::lock_guard<std::mutex> lock(list.mutex);
    size_t const count = std::min(bunch, list.messages.size());
    to.insert(to.end(), list.messages.end() - count, list.messages.end());
    list.messages.resize(list.messages.size() - count);
    list.size.store(list.messages.size(), std::memory_order_relaxed);
}

// Set once the thread's cache is gone: a message logged by a later thread-exit
// handler is then simply allocated and freed.
thread_local bool cacheGone = false;

struct Cache {
    std::vector<LogMessageString *> messages;
    ~Cache() {
        giveToShared(messages, messages.size());
        cacheGone = true;
    }
};

thread_local Cache cache;

} // namespace

LogMessageString *LogMessageString::obtain() {
    if (!cacheGone) {
        std::vector<LogMessageString *> &mine = cache.messages;
        if (mine.empty())
            takeFromShared(mine);
        if (!mine.empty()) {
            LogMessageString *msg = mine.back();
            mine.pop_back();
            msg->stampNow();
            return msg;
        }
    }
    return new LogMessageString();
}

void LogMessageString::recycle(LogMessage *msg) {
    // Subclasses may hold more than a text: they go the usual way.
    if (msg == nullptr || cacheGone || typeid(*msg) != typeid(LogMessageString)) {
        delete msg;
        return;
    }
    auto *used = static_cast<LogMessageString *>(msg);
    // Cleared here, where the message is still in this core's cache: the atomic
    // store of the level word would otherwise wait for its transfer to the taker.
    used->clearForReuse();
    // A buffer shared with a copy, or a big one, is let go; resize keeps the capacity.
    if (!used->text.isDetached() || used->text.capacity() > keptTextCapacity)
        used->text.clear();
    else
        used->text.resize(0);
    std::vector<LogMessageString *> &mine = cache.messages;
    mine.push_back(used);
    if (mine.size() >= 2 * bunch)
        giveToShared(mine, bunch);
}

} // namespace orv
