// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>

// A small value that the main thread and the audio thread share without a lock. It behaves like a
// plain T: it copies, converts both ways and takes part in arithmetic. Each load and each store is
// whole; += and its sisters are a load and a store, so of two threads that change the value at
// once one may lose its change. There is no ordering with other values (relaxed).
template <typename T>
class SharedValue {
public:
    SharedValue(T start = T()) : value(start) {}
    SharedValue(const SharedValue& other) : value(T(other)) {}

    SharedValue& operator=(const SharedValue& other) { return *this = T(other); }
    SharedValue& operator=(T next) {
        value.store(next, std::memory_order_relaxed);
        return *this;
    }

    operator T() const { return value.load(std::memory_order_relaxed); }

    SharedValue& operator+=(T amount) { return *this = T(*this) + amount; }
    SharedValue& operator-=(T amount) { return *this = T(*this) - amount; }
    SharedValue& operator*=(T factor) { return *this = T(*this) * factor; }

private:
    static_assert(std::atomic<T>::is_always_lock_free);

    std::atomic<T> value;
};
