// Parts of the C++ run-time, made for a library that is loaded into other people's programs. The compiler's own get
// along with threads by a thread library that makes a record and two handles for every thread it meets, and leaves
// those of all threads that are still there behind when the DLL is unloaded. These need nothing of the kind.
#include <windows.h>

#include <cxxabi.h>
#include <pthread.h>

#include <cstdlib>

namespace {

// Of something that one thread does at a time, or only once. Any other number is as kNotBegun.
enum Stage : signed char { kNotBegun, kBegun, kDone };

// The byte of the run-time's own objects that holds their stage here.
signed char& StageIn(void* object, size_t byte = 0) {
    return static_cast<signed char*>(object)[byte];
}

SRWLOCK g_lock = SRWLOCK_INIT;  // over all stages: work that has one is rare and short
CONDITION_VARIABLE g_changed = CONDITION_VARIABLE_INIT;

// Whether the caller is to do it; waits while another thread does.
bool Begin(signed char& stage) {
    AcquireSRWLockExclusive(&g_lock);
    while (stage == kBegun) {
        SleepConditionVariableSRW(&g_changed, &g_lock, INFINITE, 0);
    }
    const bool isOurs = stage != kDone;
    if (isOurs) {
        stage = kBegun;
    }
    ReleaseSRWLockExclusive(&g_lock);
    return isOurs;
}

void End(signed char& stage, Stage reached) {
    AcquireSRWLockExclusive(&g_lock);
    stage = reached;
    ReleaseSRWLockExclusive(&g_lock);
    WakeAllConditionVariable(&g_changed);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl*): the names that the compiler and the run-time call

extern "C" {

// The unwinder of 32 bit prepares its tables once, and looks into them one thread at a time; so does the allocator of
// exceptions, when memory is short, with its reserve. A mutex that is not initialised by a call starts
// as -1.
int pthread_once(pthread_once_t* once, void (*work)()) {
    if (Begin(StageIn(once))) {
        work();
        End(StageIn(once), kDone);
    }
    return 0;
}
int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
    StageIn(mutex) = kNotBegun;
    return 0;
}
int pthread_mutex_lock(pthread_mutex_t* mutex) {
    Begin(StageIn(mutex));
    return 0;
}
int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    End(StageIn(mutex), kNotBegun);
    return 0;
}
int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

// The start of the module's thread-local section, and the section's number among those of all modules: names of the
// C run-time's start-up code.
extern char* _tls_start;
extern ULONG _tls_index;

}  // extern "C"

namespace __cxxabiv1 {

extern "C" {

// Static variables of functions: Itanium C++ ABI, 3.3.3. The compiled code skips these calls once the first byte of the
// guard is not zero; the others are for the implementation.
constexpr size_t kGuardStage = 1;
int __cxa_guard_acquire(__guard* guard) {
    return Begin(StageIn(guard, kGuardStage)) ? 1 : 0;
}
void __cxa_guard_release(__guard* guard) noexcept {
    __atomic_store_n(reinterpret_cast<char*>(guard), 1, __ATOMIC_RELEASE);
    End(StageIn(guard, kGuardStage), kDone);
}
void __cxa_guard_abort(__guard* guard) noexcept {
    End(StageIn(guard, kGuardStage), kNotBegun);
}

}  // extern "C"

// The exceptions that a thread is handling: Itanium C++ ABI, 2.2.2. In the thread-local section of which the system
// makes every thread a copy, which it frees with the thread and with the module.
struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};
__attribute__((section(".tls$V5"))) static __cxa_eh_globals g_exceptions = {nullptr, 0};

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept {
    char** sections = nullptr;  // ThreadLocalStoragePointer of the thread environment block
#ifdef _WIN64
    asm("movq %%gs:0x58, %0" : "=r"(sections));
#else
    asm("movl %%fs:0x2C, %0" : "=r"(sections));
#endif
    const auto offset = reinterpret_cast<UINT_PTR>(&g_exceptions) - reinterpret_cast<UINT_PTR>(&_tls_start);
    return reinterpret_cast<__cxa_eh_globals*>(sections[_tls_index] + offset);
}
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
    return __cxa_get_globals();
}

}  // namespace __cxxabiv1

namespace __gnu_cxx {

// An exception that nobody catches. The run-time's own says its name on the standard error, which most of these
// programs lack, and brings along the 60 KB that it takes to spell a type's name.
void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx

// NOLINTEND(bugprone-reserved-identifier,cert-dcl*)
