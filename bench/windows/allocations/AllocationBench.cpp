// How often late-bound calls allocate: the component's own object files in a program that counts.
#include <algorithm>
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
long Count(const std::function<void()>& call) {
    call();
    const long before = MadeAllocations();
    call();
    return MadeAllocations() - before;
}

// What calling a member by Invoke allocates besides what the member itself does. `arguments` from first to last.
void Compare(Table& table, const std::string& name, IDispatch* object, const wchar_t* member,
             std::vector<VARIANT> arguments, const std::function<void()>& byVtable) {
    std::reverse(arguments.begin(), arguments.end());
    const DISPID id = IdOf(object, member);
    const long late = Count([&] { Invoke(object, id, arguments.data(), static_cast<UINT>(arguments.size())); });
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
        const _variant_t nobody(static_cast<IDispatch*>(nullptr));
        long primary = 0, secondary = 0;
        const auto variable = [](long& value) {
            VARIANT result;
            V_VT(&result) = VT_BYREF | VT_I4;
            V_I4REF(&result) = &value;
            return result;
        };
        Compare(table, "no argument", main.Get(), L"DahsID", {}, [&] { Check(main->get_DahsID(&primary), "DahsID"); });
        Compare(table, "two arguments", list.Get(), L"CreateOrGetFootnote", {nobody, textArgument}, [&] {
            BSTR mark = nullptr;
            Check(list->CreateOrGetFootnote(nullptr, text, &mark), "CreateOrGetFootnote");
            SysFreeString(mark);
        });
        Compare(table, "four arguments, two in/out", main.Get(), L"FindRedundantDasIDs",
                {textArgument, none, variable(primary), variable(secondary)},
                [&] { Check(main->FindRedundantDasIDs(text, 0, &primary, &secondary), "FindRedundantDasIDs"); });
        Compare(table, "six arguments", security.Get(), L"CheckUserPrivilegeLevelEx",
                {number, no, textArgument, textArgument, textArgument, no}, [&] {
                    BSTR message = SysAllocString(text);
                    VARIANT_BOOL master = VARIANT_FALSE, allowed = VARIANT_FALSE;
                    Check(security->CheckUserPrivilegeLevelEx(V5Strings::RID_IOSW_EnterDebugMode, VARIANT_FALSE,
                                                              &message, text, text, &master, &allowed),
                          "CheckUserPrivilegeLevelEx");
                    SysFreeString(message);
                });
    }
    CoUninitialize();
}

const Benchmark registered("late", Allocations);

}  // namespace
}  // namespace v5::bench
