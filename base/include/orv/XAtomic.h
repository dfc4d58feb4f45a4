// XAtomic.h: a std::atomic with value semantics.
//
//   static orv::XAtomic<bool> atomicFlagDebug;   // copyable, converts to bool
//   if (atomicFlagDebug) ...
//
// Copies go through load and store; every store is a sequentially consistent exchange.
#pragma once

#include <atomic>
#include <type_traits>

namespace orv {

template <typename T> class XAtomic {
public:
    XAtomic(T initial = T()) : value(initial) {}
    XAtomic(XAtomic const &other) : value(other.load()) {}
    XAtomic &operator=(XAtomic const &other) {
        store(other.load());
        return *this;
    }
    XAtomic &operator=(T newValue) {
        store(newValue);
        return *this;
    }

    operator T() const { return load(); }
    T load() const { return value.load(); }
    void store(T newValue) { value.exchange(newValue); }
    // Stores newValue and returns what was there before.
    T exchange(T newValue) { return value.exchange(newValue); }
    bool compareExchange(T &expected, T desired) {
        return value.compare_exchange_strong(expected, desired);
    }

    template <typename U = T,
              typename = std::enable_if_t<std::is_integral_v<U> && !std::is_same_v<U, bool>>>
    T fetchAdd(T delta) {
        return value.fetch_add(delta);
    }
    template <typename U = T,
              typename = std::enable_if_t<std::is_integral_v<U> && !std::is_same_v<U, bool>>>
    T fetchSub(T delta) {
        return value.fetch_sub(delta);
    }

private:
    std::atomic<T> value;
};

} // namespace orv
