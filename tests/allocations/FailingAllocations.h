// Makes an allocation fail: the program's operator new is replaced for that (FailingAllocations.cpp).
#pragma once

#include <cstddef>
#include <new>

namespace v5 {

// While it lives, the n-th allocation from now (counted from 1) by this thread throws std::bad_alloc; only that one.
class FailingAllocation {
  public:
    explicit FailingAllocation(size_t n);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // Whether the allocation was reached.
    bool HasFailed() const;
};

// Counts an allocation of this thread that another allocator makes: whether it is the one that has to fail.
bool MustAllocationFail() noexcept;

// Allocations that are alive, and all that were made.
long LiveAllocations();
long MadeAllocations();

// Runs `work(n)` for n = 1, 2, 3 … with the n-th allocation failing inside a FailingAllocation that `work` makes; it
// answers whether the failure was reached. Gives the number of failures.
template <class Work>
size_t FailEachAllocation(Work&& work) {
    constexpr size_t kFarTooMany = 100000;
    size_t n = 1;
    while (n < kFarTooMany && work(n)) {
        ++n;
    }
    return n - 1;
}

}  // namespace v5
