#include "FailingAllocations.h"

#include <atomic>
#include <cstdlib>

namespace {

thread_local size_t left = 0;  // until the failure; 0: none is due
thread_local bool hasFailed = false;
std::atomic<long> live = 0;
std::atomic<long> made = 0;

}  // namespace

namespace v5 {

FailingAllocation::FailingAllocation(size_t n) {
    hasFailed = false;
    left = n;
}
FailingAllocation::~FailingAllocation() {
    left = 0;
}
bool FailingAllocation::HasFailed() const {
    return hasFailed;
}
bool MustAllocationFail() noexcept {
    if (left == 0 || --left != 0) {
        return false;
    }
    hasFailed = true;
    return true;
}
long LiveAllocations() {
    return live;
}
long MadeAllocations() {
    return made;
}

}  // namespace v5

void* operator new(std::size_t size) {
    void* memory = v5::MustAllocationFail() ? nullptr : std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++live;
    ++made;
    return memory;
}
void operator delete(void* memory) noexcept {
    live -= memory != nullptr ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
