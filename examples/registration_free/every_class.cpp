// Creates every class with nothing registered: by its identifier, by its programmatic identifier, and late bound, which
// needs the type library.
#include <V5Strings.hpp>

#include <cstdio>

namespace {

// Counts what does not work.
int failures = 0;

void Tell(const char* what, const wchar_t* name, HRESULT status) {
    if (FAILED(status)) {
        std::printf("%ls: cannot %s, status %08lX\n", name, what, static_cast<unsigned long>(status));
        ++failures;
    }
}

template <class Wrapper>
void TryClass(const wchar_t* name) {
    try {
        const Wrapper object;
        CLSID clsid{};
        Tell("find the programmatic identifier", name,
             CLSIDFromProgID((std::wstring(L"V5Strings.") + name).c_str(), &clsid));
        Microsoft::WRL::ComPtr<IDispatch> late;
        Tell("create it by name", name,
             CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch),
                              reinterpret_cast<void**>(late.GetAddressOf())));
        Microsoft::WRL::ComPtr<ITypeInfo> type;
        Tell("get its type information", name, object.Pointer()->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type));
        std::printf("%ls\n", name);
    } catch (const v5strings::Error& error) {
        Tell("create it", name, error.Status());
    }
}

// Reads a property as a script does.
void CallLateBound() {
    const v5strings::FootnoteList list;
    list.CreateOrGetFootnote(nullptr, L"Substituted value");
    IDispatch* dispatch = list.Pointer();
    wchar_t name[] = L"Count";
    wchar_t* names[] = {name};
    DISPID id = 0;
    DISPPARAMS none{};
    VARIANT count{};
    Tell("find a member of", L"FootnoteList", dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
    Tell("call a member of", L"FootnoteList",
         dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &count, nullptr, nullptr));
    std::printf("footnotes, late bound: %ld\n", V_I4(&count));
}

}  // namespace

int main() {
    const v5strings::Apartment apartment;
    TryClass<v5strings::NimboStringsMain>(L"NimboStringsMain");
    TryClass<v5strings::LogFileClass>(L"LogFileClass");
    TryClass<v5strings::NimboErrorNumbers>(L"NimboErrorNumbers");
    TryClass<v5strings::DahsIniMain>(L"DahsIniMain");
    TryClass<v5strings::DahsIniEntries>(L"DahsIniEntries");
    TryClass<v5strings::DahsIniEntry>(L"DahsIniEntry");
    TryClass<v5strings::NimboSecurity>(L"NimboSecurity");
    TryClass<v5strings::NimboHelp>(L"NimboHelp");
    TryClass<v5strings::FootnoteList>(L"FootnoteList");
    TryClass<v5strings::Footnote>(L"Footnote");
    if (failures == 0) {
        CallLateBound();
    }
    return failures == 0 ? 0 : 1;
}
