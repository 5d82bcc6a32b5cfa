// What the component's benchmarks share: objects, late-bound calls that must succeed, and temporary files.
#pragma once

#include <windows.h>

// after windows.h, which it needs:
#include <comutil.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>
#include <vector>

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

inline void Check(bool isRight, const char* what) {
    Check(isRight ? S_OK : E_FAIL, what);
}

inline DISPID IdOf(IDispatch* object, const wchar_t* member) {
    auto* name = const_cast<wchar_t*>(member);
    DISPID id = 0;
    Check(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
    return id;
}

// Calls a method or gets a property. Arguments stand from the last one to the first.
inline _variant_t Invoke(IDispatch* object, DISPID id, VARIANT* arguments = nullptr, UINT count = 0) {
    DISPPARAMS parameters = {arguments, nullptr, count, 0};
    _variant_t answer;
    Check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                         &answer, nullptr, nullptr),
          "Invoke");
    return answer;
}

// By name, as a script does, with one argument or none.
inline _variant_t Call(IDispatch* object, const wchar_t* member) {
    return Invoke(object, IdOf(object, member));
}
inline _variant_t Call(IDispatch* object, const wchar_t* member, _variant_t argument) {
    return Invoke(object, IdOf(object, member), &argument, 1);
}

// The path of a new file, which is deleted in the end.
class TemporaryFile {
  public:
    TemporaryFile() {
        wchar_t folder[MAX_PATH], file[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        GetTempFileNameW(folder, L"v5b", 0, file);
        DeleteFileW(file);
        mPath = file;
    }
    ~TemporaryFile() { DeleteFileW(mPath.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& Path() const { return mPath; }

  private:
    std::wstring mPath;
};

}  // namespace v5::bench
