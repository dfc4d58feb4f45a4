// XEventListener.h: the library's signal, a keyed list of functions fired in key order.
//
//   orv::XEventListener<void(int)> progress;
//   unsigned int key = progress.addListener([](int percent) { ... });
//   progress.fireEvent(50);
//   progress.removeListener(key);
//
// The list is guarded by an XMutexLocker, so a fire on the main thread never
// waits for a worker. The lock is held while listeners run: a listener must
// not add to or remove from its own list from a worker thread.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XMutexLocker.h"

#include <QtCore/QMutex>

#include <functional>
#include <map>

namespace orv {

class ORV_EXPORT AbstractXEventListener {
public:
    virtual ~AbstractXEventListener();
    void enable(bool on) { enabled = on; }
    bool isEnabled() const { return enabled; }

private:
    XAtomic<bool> enabled{false};
};

namespace listener {
// Accepts both XEventListener<void(int)> and XEventListener<std::function<void(int)>>.
template <typename F> struct FunctionOf { using type = std::function<F>; };
template <typename Signature> struct FunctionOf<std::function<Signature>> {
    using type = std::function<Signature>;
};
} // namespace listener

template <typename F> class XEventListener : public AbstractXEventListener {
public:
    using Function = typename listener::FunctionOf<F>::type;

    XEventListener() { enable(true); }
    XEventListener(XEventListener const &) = delete;
    XEventListener &operator=(XEventListener const &) = delete;

    // Stores f under the key lastKey + 1 and returns that key.
    unsigned int addListener(Function f) {
        XMutexLocker lock(&mutex);
        auto inserted = mapListeners.emplace(lastKey + 1, std::move(f));
        if (inserted.second)
            ++lastKey;
        return lastKey;
    }

    // Returns whether a listener had that key.
    bool removeListener(unsigned int key) {
        XMutexLocker lock(&mutex);
        return mapListeners.erase(key) > 0;
    }

    void clear() {
        XMutexLocker lock(&mutex);
        mapListeners.clear();
    }

    size_t size() const {
        XMutexLocker lock(&mutex);
        return mapListeners.size();
    }

    // Calls a copy of every listener in ascending key order; no-op while disabled.
    template <typename... Args> void fireEvent(Args &&...args) {
        if (!isEnabled())
            return;
        XMutexLocker lock(&mutex);
        // Looked up by key each round: a listener on the main thread may change the map.
        for (auto it = mapListeners.begin(); it != mapListeners.end();) {
            unsigned int key = it->first;
            Function function = it->second;
            function(args...);
            it = mapListeners.upper_bound(key);
        }
    }

    // The list moves with its owner (AtomicBits moves its listeners).
    void takeListenersFrom(XEventListener &other) {
        if (&other == this)
            return;
        XMutexLocker lockOther(&other.mutex);
        XMutexLocker lock(&mutex);
        mapListeners = std::move(other.mapListeners);
        lastKey = other.lastKey;
        other.mapListeners.clear();
    }

private:
    std::map<unsigned int, Function> mapListeners;
    unsigned int lastKey = 0;
    mutable QMutex mutex;
};

} // namespace orv
