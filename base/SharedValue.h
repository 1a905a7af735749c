// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>

// A small value that the main thread and the audio thread share without a lock. It behaves like a
// plain T in copies, conversions and arithmetic. Loads and stores are atomic; += and the like are a
// load and a store, so if two threads change the value at the same time, one change may be lost.
// There is no ordering with other values (relaxed).
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
