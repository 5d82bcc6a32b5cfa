// What the component's benchmarks share: a library for their lifetime, and calls that must succeed.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>

namespace v5::bench {

using Microsoft::WRL::ComPtr;

// Throws when a call has failed, so that no benchmark measures failures.
inline void Check(HRESULT status, const char* what) {
    if (FAILED(status)) {
        throw std::runtime_error(std::string(what) + " failed with status " + std::to_string(status));
    }
}

// A new object of a registered class. The first one starts the apartment, which lasts as long as the program.
template <class Interface>
ComPtr<Interface> Create(const wchar_t* progId) {
    static const HRESULT started = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Check(started, "CoInitializeEx");
    CLSID clsid;
    Check(CLSIDFromProgID(progId, &clsid), "CLSIDFromProgID");
    ComPtr<Interface> object;
    Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), "CoCreateInstance");
    return object;
}

}  // namespace v5::bench
