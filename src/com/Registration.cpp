#include "com/Registration.h"

#include <oaidl.h>
#include <oleauto.h>

#include <string>
#include <string_view>

#include "com/Component.h"
#include "com/Guard.h"
#include "com/Values.h"
#include "platform/Module.h"

namespace v5 {

namespace {

#ifdef _WIN64
constexpr const wchar_t* kOwnWidth = L"win64";
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
#else
constexpr const wchar_t* kOwnWidth = L"win32";
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
#endif

// The automation marshaller, for dual interfaces and for pure dispatch interfaces: identifiers fixed by Windows.
constexpr const wchar_t* kDualProxy = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kDispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

void CheckRegistry(LSTATUS result) {
    Check(HRESULT_FROM_WIN32(static_cast<DWORD>(result)));
}

std::wstring GuidText(REFGUID guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return text;
}

// The classes branch of one registry root; every path below is relative to it.
class ClassesKey {
  public:
    explicit ClassesKey(HKEY root, REGSAM view = 0) : mView(view) {
        CheckRegistry(
            RegCreateKeyExW(root, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS | view, nullptr, &mKey, nullptr));
    }
    ~ClassesKey() { RegCloseKey(mKey); }
    ClassesKey(const ClassesKey&) = delete;
    ClassesKey& operator=(const ClassesKey&) = delete;

    void Write(const std::wstring& path, std::wstring_view value, const wchar_t* name = nullptr) const {
        const std::wstring text(value);
        CheckRegistry(RegSetKeyValueW(mKey, path.c_str(), name, REG_SZ, text.c_str(),
                                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
    }

    bool Exists(const std::wstring& path) const {
        HKEY found = nullptr;
        if (RegOpenKeyExW(mKey, path.c_str(), 0, KEY_READ | mView, &found) != ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(found);
        return true;
    }

    std::wstring Read(const std::wstring& path) const {
        wchar_t text[512];
        DWORD size = sizeof(text);
        const LSTATUS result = RegGetValueW(mKey, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
        return result == ERROR_SUCCESS ? text : std::wstring();
    }

    void DeleteTree(const std::wstring& path) const {
        const LSTATUS result = RegDeleteTreeW(mKey, path.c_str());
        if (result != ERROR_FILE_NOT_FOUND && result != ERROR_PATH_NOT_FOUND) {
            CheckRegistry(result);
        }
    }

    // Deletes a key that holds no other key any more.
    void DeleteWhenEmpty(const std::wstring& path) const {
        DWORD children = 0;
        HKEY found = nullptr;
        if (RegOpenKeyExW(mKey, path.c_str(), 0, KEY_READ | mView, &found) != ERROR_SUCCESS) {
            return;
        }
        const LSTATUS result = RegQueryInfoKeyW(found, nullptr, nullptr, nullptr, &children, nullptr, nullptr, nullptr,
                                                nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(found);
        if (result == ERROR_SUCCESS && children == 0) {
            DeleteTree(path);
        }
    }

  private:
    HKEY mKey = nullptr;
    REGSAM mView;
};

// Whether the DLL of the other width has the class registered: it shares the programmatic identifier with us.
bool OtherWidthHasClass(HKEY root, const std::wstring& clsid) {
    BOOL emulated = FALSE;
    const bool is64BitSystem = sizeof(void*) == 8 || (IsWow64Process(GetCurrentProcess(), &emulated) && emulated);
    return is64BitSystem && ClassesKey(root, kOtherView).Exists(L"CLSID\\" + clsid + L"\\InprocServer32");
}

struct TypeLibraryKeys {
    TypeLibraryKeys()
        : library(GuidText(*ThisComponent().libraryId)),
          version(std::to_wstring(ThisComponent().libraryMajor) + L"." + std::to_wstring(ThisComponent().libraryMinor)),
          libraryKey(L"TypeLib\\" + library),
          versionKey(libraryKey + L"\\" + version),
          languageKey(versionKey + L"\\0"),
          widthKey(languageKey + L"\\" + kOwnWidth) {}

    std::wstring library, version, libraryKey, versionKey, languageKey, widthKey;
};

void WriteClass(const ClassesKey& classes, const ClassEntry& entry, const TypeLibraryKeys& keys) {
    const std::wstring clsid = GuidText(*entry.clsid);
    const std::wstring key = L"CLSID\\" + clsid;
    classes.Write(key, entry.description);
    classes.Write(key + L"\\InprocServer32", ModulePath());
    classes.Write(key + L"\\InprocServer32", L"Apartment", L"ThreadingModel");
    classes.Write(key + L"\\ProgID", entry.progId);
    classes.Write(key + L"\\TypeLib", keys.library);
    classes.Write(key + L"\\Version", keys.version);
    classes.Write(key + L"\\Programmable", L"");
    classes.Write(entry.progId, entry.description);
    classes.Write(std::wstring(entry.progId) + L"\\CLSID", clsid);
}

void WriteTypeLibrary(const ClassesKey& classes, ITypeLib& library, const TypeLibraryKeys& keys) {
    BSTR description = nullptr;
    Check(library.GetDocumentation(MEMBERID_NIL, nullptr, &description, nullptr, nullptr));
    classes.Write(keys.versionKey, TakeText(description));
    classes.Write(keys.versionKey + L"\\FLAGS", L"0");
    classes.Write(keys.widthKey, ModulePath());
}

// Calls `visit(key, name, isDual)` for every interface of the library that clients reach through marshalling.
template <class Visitor>
void ForEachInterface(ITypeLib& library, Visitor visit) {
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> type;
        TYPEATTR* attributes = nullptr;
        Check(library.GetTypeInfo(i, &type));
        Check(type->GetTypeAttr(&attributes));
        const bool isInterface = attributes->typekind == TKIND_DISPATCH;
        const bool isDual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        const GUID iid = attributes->guid;
        type->ReleaseTypeAttr(attributes);
        if (isInterface) {
            BSTR name = nullptr;
            Check(type->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr));
            visit(L"Interface\\" + GuidText(iid), TakeText(name), isDual);
        }
    }
}

// An interface that another library has registered before us is that library's to keep.
bool BelongsToOther(const ClassesKey& classes, const std::wstring& key, const TypeLibraryKeys& keys) {
    const std::wstring owner = classes.Read(key + L"\\TypeLib");
    return !owner.empty() && owner != keys.library;
}

void WriteInterfaces(const ClassesKey& classes, ITypeLib& library, const TypeLibraryKeys& keys) {
    ForEachInterface(library, [&](const std::wstring& key, const std::wstring& name, bool isDual) {
        if (!BelongsToOther(classes, key, keys)) {
            classes.Write(key, name);
            classes.Write(key + L"\\ProxyStubClsid32", isDual ? kDualProxy : kDispatchProxy);
            classes.Write(key + L"\\TypeLib", keys.library);
            classes.Write(key + L"\\TypeLib", keys.version, L"Version");
        }
    });
}

void RemoveEverything(HKEY root) {
    const ClassesKey classes(root);
    const TypeLibraryKeys keys;
    for (const ClassEntry& entry : ThisComponent().classes) {
        const std::wstring clsid = GuidText(*entry.clsid);
        classes.DeleteTree(L"CLSID\\" + clsid);
        if (!OtherWidthHasClass(root, clsid)) {
            classes.DeleteTree(entry.progId);
        }
    }
    ForEachInterface(*ComponentTypeLibrary().Get(), [&](const std::wstring& key, const std::wstring&, bool) {
        if (!BelongsToOther(classes, key, keys)) {
            classes.DeleteTree(key);
        }
    });
    classes.DeleteTree(keys.widthKey);
    classes.DeleteWhenEmpty(keys.languageKey);
    if (!classes.Exists(keys.languageKey)) {
        classes.DeleteTree(keys.versionKey);
    }
    classes.DeleteWhenEmpty(keys.libraryKey);
    for (const wchar_t* branch : {L"CLSID", L"Interface", L"TypeLib"}) {  // a user's own may have come with us
        classes.DeleteWhenEmpty(branch);
    }
}

}  // namespace

HRESULT Registration::Register() const noexcept {
    const HRESULT status = Guarded(IID_NULL, L"", [this] {
        const ClassesKey classes(mRoot);
        const TypeLibraryKeys keys;
        const ComPtr<ITypeLib> library = ComponentTypeLibrary();
        for (const ClassEntry& entry : ThisComponent().classes) {
            WriteClass(classes, entry, keys);
        }
        WriteTypeLibrary(classes, *library.Get(), keys);
        WriteInterfaces(classes, *library.Get(), keys);
    });
    if (FAILED(status)) {
        Unregister();
    }
    return status;
}

HRESULT Registration::Unregister() const noexcept {
    return Guarded(IID_NULL, L"", [this] { RemoveEverything(mRoot); });
}

}  // namespace v5
