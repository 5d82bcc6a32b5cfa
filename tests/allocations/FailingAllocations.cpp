#include "FailingAllocations.h"

#include <atomic>
#include <malloc.h>
#include <new>

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

namespace {

constexpr std::align_val_t kUsual{__STDCPP_DEFAULT_NEW_ALIGNMENT__};

void* Allocate(std::size_t size, std::align_val_t alignment = kUsual) noexcept {
    const auto bytes = static_cast<std::size_t>(alignment);
    if (v5::MustAllocationFail()) {
        return nullptr;
    }
    void* const memory = _aligned_malloc(size, bytes);
    live += memory != nullptr ? 1 : 0;
    made += memory != nullptr ? 1 : 0;
    return memory;
}
void* OrThrow(void* memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void Free(void* memory) noexcept {
    live -= memory != nullptr ? 1 : 0;
    _aligned_free(memory);
}

}  // namespace

// All forms: the library's own would otherwise stand in for those left out.
using Nothrow = std::nothrow_t;
using Size = std::size_t;
using Align = std::align_val_t;

// clang-format off
void* operator new(Size size) { return OrThrow(Allocate(size)); }
void* operator new[](Size size) { return OrThrow(Allocate(size)); }
void* operator new(Size size, Align alignment) { return OrThrow(Allocate(size, alignment)); }
void* operator new[](Size size, Align alignment) { return OrThrow(Allocate(size, alignment)); }
void* operator new(Size size, const Nothrow&) noexcept { return Allocate(size); }
void* operator new[](Size size, const Nothrow&) noexcept { return Allocate(size); }
void* operator new(Size size, Align alignment, const Nothrow&) noexcept { return Allocate(size, alignment); }
void* operator new[](Size size, Align alignment, const Nothrow&) noexcept { return Allocate(size, alignment); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, Size) noexcept { Free(memory); }
void operator delete[](void* memory, Size) noexcept { Free(memory); }
void operator delete(void* memory, const Nothrow&) noexcept { Free(memory); }
void operator delete[](void* memory, const Nothrow&) noexcept { Free(memory); }
void operator delete(void* memory, Align) noexcept { Free(memory); }
void operator delete[](void* memory, Align) noexcept { Free(memory); }
void operator delete(void* memory, Size, Align) noexcept { Free(memory); }
void operator delete[](void* memory, Size, Align) noexcept { Free(memory); }
void operator delete(void* memory, Align, const Nothrow&) noexcept { Free(memory); }
void operator delete[](void* memory, Align, const Nothrow&) noexcept { Free(memory); }
// clang-format on
