// What a process has in use, counted so that a leak shows: also on systems that do not keep the counts themselves.
#pragma once

#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <vector>

namespace v5::test {

// The entries in use of the process's table of graphics objects, for systems that do not count them.
inline int CountGdiTable() {
    struct Entry {
        ULONG64 object;
        ULONG owner;
        USHORT unique;
        UCHAR type;
        UCHAR flags;
        ULONG64 user;
    };
    constexpr size_t kTableOffset = sizeof(void*) == 8 ? 0xF8 : 0x94;  // GdiSharedHandleTable
    constexpr size_t kEntries = 0x4000;
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process, nullptr);
    const auto* block = reinterpret_cast<const char*>(process.PebBaseAddress);
    const auto* table = *reinterpret_cast<const Entry* const*>(block + kTableOffset);
    if (table == nullptr) {  // a process without graphics
        return 0;
    }
    return static_cast<int>(std::count_if(table, table + kEntries, [](const Entry& entry) { return entry.type != 0; }));
}

inline int CountGdi() {
    const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    return counted != 0 ? static_cast<int>(counted) : CountGdiTable();
}

// Objects have numbers out of one table: of many new ones, at least one has a number above all that are in use.
template <typename Create, typename Destroy>
int HighestNumber(Create create, Destroy destroy) {
    std::vector<decltype(create())> objects(64);
    int highest = 0;
    for (auto& object : objects) {
        object = create();
        highest = std::max(highest, static_cast<int>(LOWORD(reinterpret_cast<UINT_PTR>(object))));
    }
    std::for_each(objects.begin(), objects.end(), destroy);
    return highest;
}

inline int CountUser() {
    const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return counted != 0 ? static_cast<int>(counted) : HighestNumber(CreateMenu, DestroyMenu);
}

inline int CountHandles() {
    DWORD counted = 0;
    GetProcessHandleCount(GetCurrentProcess(), &counted);
    const auto create = [] { return CreateEventW(nullptr, FALSE, FALSE, nullptr); };
    constexpr int kHandleStep = 4;
    return counted != 0 ? static_cast<int>(counted) : HighestNumber(create, CloseHandle) / kHandleStep;
}

// The bytes of all live blocks in all heaps of the process.
inline long long CountHeapBytes() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 8);
    heaps.resize(std::min<size_t>(heaps.size(), GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data())));
    long long bytes = 0;
    for (const HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heap);
        while (HeapWalk(heap, &entry) != FALSE) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? static_cast<long long>(entry.cbData) : 0;
        }
        HeapUnlock(heap);
    }
    return bytes;
}

}  // namespace v5::test
