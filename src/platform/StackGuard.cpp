// The stack protector's random value, which lies between a function's arrays and its return address. The compiler's
// run-time asks a cryptographic provider for it, which takes longer than all the rest of loading the DLL, unless there
// is a value already: here it gets one first.
#include <cstdint>
#include <cstdlib>

extern "C" std::uintptr_t __stack_chk_guard;  // NOLINT(bugprone-reserved-identifier,cert-dcl*): the run-time's own name

namespace {

// Before every other constructor, and not guarded itself: the value changes while it runs. A text that runs over ends
// at the value's zero byte. Without random numbers the value stays 0 and the run-time chooses it.
__attribute__((constructor(101), no_stack_protector)) void ChooseStackGuard() {
    std::uintptr_t guard = 0;
    for (size_t bits = 0; bits < sizeof(guard) * 8; bits += 32) {
        unsigned int random = 0;
        if (rand_s(&random) != 0) {  // the system's random numbers, which nobody can foretell
            return;
        }
        guard |= std::uintptr_t{random} << bits;
    }
    __stack_chk_guard = guard & ~std::uintptr_t{0xFF};
}

}  // namespace
