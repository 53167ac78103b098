// A number that no other prepared frame of the process carries: a drawer that keeps buffers per
// object compares it to know whether it uploaded this very frame (a set's address and its own
// counter may come back with a new object at the same place). Any thread.
#pragma once

#include <atomic>

class DataSerial_cls {
public:
    static long long Next() {
        static std::atomic<long long> sSerial{0};
        return sSerial.fetch_add(1, std::memory_order_relaxed) + 1;
    }
};
