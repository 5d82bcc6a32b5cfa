// Functions of those Windows libraries that are loaded when they are first needed, not with this module: most clients
// never open a dialog, and such libraries take long to load.
#pragma once

#include <windows.h>

namespace v5 {

// The address of a function of a library that lies in the system folder; nowhere else is looked. The library stays
// loaded, since its windows and threads may outlive the call. Throws AutomationError when there is no such library or
// function.
FARPROC FindSystemFunction(const wchar_t* library, const char* name);

// The same, to be called: SystemFunction<decltype(timeGetTime)>(L"winmm.dll", "timeGetTime")(). `Function` is a
// function type with its calling convention.
template <class Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(FindSystemFunction(library, name)));
}

}  // namespace v5
