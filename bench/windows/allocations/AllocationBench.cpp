// How often late-bound calls allocate: the component's own object files in a program that counts.
#include <windows.h>
// after windows.h, which it needs:
#include <comutil.h>

#include <functional>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/windows/Com.h"
#include "unit/FailingAllocations.h"

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object);

namespace v5::bench {
namespace {

template <class Interface>
ComPtr<Interface> New(REFCLSID clsid) {
    ComPtr<IClassFactory> factory;
    ComPtr<Interface> object;
    Check(DllGetClassObject(clsid, IID_PPV_ARGS(&factory)), "DllGetClassObject");
    Check(factory->CreateInstance(nullptr, __uuidof(Interface), reinterpret_cast<void**>(object.GetAddressOf())),
          "CreateInstance");
    return object;
}

// The allocations of one call, after one that may fill caches.
long Count(const std::function<HRESULT()>& call) {
    Check(call(), "the call");
    const long before = MadeAllocations();
    Check(call(), "the call");
    return MadeAllocations() - before;
}

// What calling a member by Invoke allocates besides what the member itself does. `arguments` from first to last.
void Compare(Table& table, const std::string& name, IDispatch* object, const wchar_t* member,
             std::vector<VARIANT> arguments, const std::function<HRESULT()>& byVtable) {
    auto* text = const_cast<wchar_t*>(member);
    DISPID id = 0;
    Check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
    const std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    const long late = Count([&] {
        DISPPARAMS parameters = {const_cast<VARIANT*>(reversed.data()), nullptr, static_cast<UINT>(reversed.size()), 0};
        _variant_t answer;
        return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                              &answer, nullptr, nullptr);
    });
    table.Add({.name = "late-bound allocations of our own: " + name + " / one", .goal = 0, .unit = "allocs"},
              static_cast<double>(late - Count(byVtable)), 1);
}

void Allocations(Table& table) {
    Check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    {
        const auto main = New<_DahsIniMain>(__uuidof(DahsIniMain));
        const auto list = New<_FootnoteList>(__uuidof(FootnoteList));
        const auto security = New<_NimboSecurity>(__uuidof(NimboSecurity));
        const _bstr_t text(L"S1");
        const _variant_t textArgument(text), number(250L), none(0L), no(false);
        _variant_t nobody;
        V_VT(&nobody) = VT_DISPATCH;
        V_DISPATCH(&nobody) = nullptr;
        long primary = 0, secondary = 0;
        const auto variable = [](long& value) {
            VARIANT result;
            V_VT(&result) = VT_BYREF | VT_I4;
            V_I4REF(&result) = &value;
            return result;
        };
        Compare(table, "no argument", main.Get(), L"DahsID", {}, [&] { return main->get_DahsID(&primary); });
        Compare(table, "two arguments", list.Get(), L"CreateOrGetFootnote", {nobody, textArgument}, [&] {
            BSTR mark = nullptr;
            const HRESULT status = list->CreateOrGetFootnote(nullptr, text, &mark);
            SysFreeString(mark);
            return status;
        });
        Compare(table, "four arguments, two in/out", main.Get(), L"FindRedundantDasIDs",
                {textArgument, none, variable(primary), variable(secondary)},
                [&] { return main->FindRedundantDasIDs(text, 0, &primary, &secondary); });
        Compare(table, "six arguments", security.Get(), L"CheckUserPrivilegeLevelEx",
                {number, no, textArgument, textArgument, textArgument, no}, [&] {
                    BSTR message = SysAllocString(L"S1");
                    VARIANT_BOOL master = VARIANT_FALSE, allowed = VARIANT_FALSE;
                    const HRESULT status = security->CheckUserPrivilegeLevelEx(
                        V5Strings::RID_IOSW_EnterDebugMode, VARIANT_FALSE, &message, text, text, &master, &allowed);
                    SysFreeString(message);
                    return status;
                });
    }
    CoUninitialize();
}

const Benchmark registered("late", Allocations);

}  // namespace
}  // namespace v5::bench
