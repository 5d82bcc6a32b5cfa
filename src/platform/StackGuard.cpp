// What the compiler's stack protector and its checked copies (_FORTIFY_SOURCE) call. The compiler's own run-time asks a
// cryptographic provider for the random value, which takes longer than all the rest of loading the DLL and leaves
// handles behind each time.
#include <windows.h>

#include <cstdint>

extern "C" {

BOOLEAN NTAPI SystemFunction036(void* buffer, ULONG size);  // RtlGenRandom, under the name that advapi32 exports

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl*): the names that the compiler calls

// Lies between a function's arrays and its return address; a value that an attacker cannot know. This one, of no
// meaning, holds only until there is a random one.
std::uintptr_t __stack_chk_guard = static_cast<std::uintptr_t>(0x595E9FBD94FDA700);

// Ends the program at once, without running handlers that a damaged stack could direct.
[[noreturn]] void __stack_chk_fail() {
    asm volatile("int $0x29" : : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));  // __fastfail, which these headers lack
    __builtin_unreachable();
}

// A copy that would have run over its target.
__attribute__((noreturn)) void __chk_fail() {
    __stack_chk_fail();
}

// NOLINTEND(bugprone-reserved-identifier,cert-dcl*)

}  // extern "C"

namespace {

// Before every other constructor, and not guarded itself: the value changes while it runs.
__attribute__((constructor(101), no_stack_protector)) void ChooseStackGuard() {
    std::uintptr_t random = 0;
    if (SystemFunction036(&random, sizeof(random)) != FALSE) {
        __stack_chk_guard = random & ~std::uintptr_t{0xFF};  // a text that runs over ends at the zero byte
    }
}

}  // namespace
