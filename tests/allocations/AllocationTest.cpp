// Every allocation of every call fails in turn, the library's own and those that the system makes for it: the client
// sees out of memory, the right answer, or what a member that never raises answers instead; nothing leaks, and the same
// call succeeds afterwards. The component is linked in, so that its allocations are this program's.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>
#include <ocidl.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>

#include "V5Msgs.h"
#include "V5Strings.h"
#include "allocations/FailingAllocations.h"
#include "com/Component.h"
#include "com/Guard.h"
#include "component/Client.h"
#include "component/EventRecorder.h"
#include "component/Members.h"
#include "component/SiteFolder.h"

STDAPI DllInstall(BOOL install, LPCWSTR commandLine);

namespace v5::test {

namespace {

// The system's allocator of automation texts, arrays and error information.
class SystemAllocations final : public IMallocSpy {
  public:
    virtual ~SystemAllocations() = default;
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return Fails() ? 0 : size; }
    STDMETHODIMP_(void*) PostAlloc(void* memory) override {
        live += memory != nullptr ? 1 : 0;
        return memory;
    }
    STDMETHODIMP_(void*) PreFree(void* memory, BOOL counted) override {
        live -= memory != nullptr && counted != FALSE ? 1 : 0;
        return memory;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* memory, SIZE_T size, void** old, BOOL) override {
        *old = memory;
        return Fails() ? 0 : size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(void*) PreGetSize(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int answer) override { return answer; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

    std::atomic<long> live = 0;
    bool mayFail = true;

  private:
    bool Fails() const { return mayFail && MustAllocationFail(); }
};
SystemAllocations systemAllocations;

constexpr char kSite[] =
    "[Dahs1]\r\nSiteID=SITE1\r\nDahsComputerName=das1\r\nVantorDir=$folder$\\V\r\nBackupDir=$folder$\\V\r\n"
    "SQLAlarms=Provider=p;alarms\r\nSQLConfig=config\r\nSQLData=data\r\nSQLDataShortTerm=short\r\nSQLRealtime=real\r\n";

// Whether the answer is what a member that never raises gives when memory is out; all others raise.
bool IsFallback(std::wstring_view member, const _variant_t& answer) {
    static constexpr std::pair<std::wstring_view, int> kNumbers[] = {
        {L"SecurityEnabledStatus", V5Strings::Enabled_Other},
        {L"GetUserPrivilegeLevel", V5Strings::PrivLevel_None},
        {L"GetMinPrivilegeLevelFor", V5Strings::PrivLevel_3Low}};
    static constexpr std::wstring_view kTexts[] = {L"CreateOrGetFootnote", L"GetVantorReleaseNumber",
                                                   L"GetCurrentUserName", L"GetWindowsUsername"};
    static constexpr std::wstring_view kFalse[] = {L"ReadVantorINI", L"ChooseDahs", L"Setup",
                                                   L"CheckUser",     L"SetManual",  L"GetSidsFor",
                                                   L"SetSidsFor",    L"SetMin",     L"IsSql"};
    const auto isOneOf = [&](const auto& names) {
        return std::any_of(std::begin(names), std::end(names), [&](auto name) { return member.starts_with(name); });
    };
    for (const auto& [name, number] : kNumbers) {
        if (member.starts_with(name)) {
            return V_VT(&answer) == VT_I4 && V_I4(&answer) == number;
        }
    }
    return isOneOf(kTexts) ? V_VT(&answer) == VT_BSTR && SysStringLen(V_BSTR(&answer)) == 0
                           : isOneOf(kFalse) && V_VT(&answer) == VT_BOOL && V_BOOL(&answer) == VARIANT_FALSE;
}

bool AreSame(const _variant_t& a, const _variant_t& b) {
    if (V_VT(&a) == (VT_ARRAY | VT_BSTR)) {
        LONG lastOfA = 0, lastOfB = -1;
        return V_VT(&b) == V_VT(&a) && SafeArrayGetUBound(V_ARRAY(&a), 1, &lastOfA) == S_OK &&
               SafeArrayGetUBound(V_ARRAY(&b), 1, &lastOfB) == S_OK && lastOfA == lastOfB;
    }
    return V_VT(&a) == V_VT(&b) && (V_VT(&a) == VT_DISPATCH || V_VT(&a) == VT_UNKNOWN || a == b);
}

// A call that is ready to be made: it allocates nothing itself.
using ReadyCall = std::function<HRESULT(VARIANT& answer)>;

class Allocations : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        const HMODULE automation = GetModuleHandleW(L"oleaut32.dll");  // the import library of 32 bit misses it
        reinterpret_cast<void(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(automation, "SetOaNoCache")))();
        ASSERT_EQ(CoRegisterMallocSpy(&systemAllocations), S_OK);
    }
    void TearDown() override {
        RecordProperty("calls", mCalls);
        RecordProperty("faults", mFaults);
        std::printf("%d calls, %d allocations failed\n", mCalls, mFaults);
    }

    // `every`: 1 for each allocation, 2 for each second one and so on, where a call takes long.
    void Walk(const std::wstring& name, const std::function<ReadyCall()>& prepare, size_t every = 1) {
        _variant_t right;
        const HRESULT rightStatus = prepare()(right);
        ++mCalls;
        FailEachAllocation([&](size_t n) {
            if (n % every != 0) {
                return true;
            }
            const long live = LiveAllocations() + systemAllocations.live;
            bool reached = false;
            {
                const ReadyCall call = prepare();
                _variant_t answer, again;
                HRESULT status = S_OK;
                {
                    const FailingAllocation failing(n);
                    status = call(answer);
                    reached = failing.HasFailed();
                }
                const bool isRight = status == rightStatus && AreSame(answer, right);
                const bool isTold =
                    status == kOutOfMemory || status == E_OUTOFMEMORY || (status == S_OK && IsFallback(name, answer));
                EXPECT_TRUE(isRight || (reached && isTold))
                    << name << ": allocation " << n << ", status " << std::hex << status;
                EXPECT_TRUE(isRight || (call(again) == rightStatus && AreSame(again, right)))
                    << name << " afterwards: allocation " << n;
            }
            SetErrorInfo(0, nullptr);
            EXPECT_EQ(LiveAllocations() + systemAllocations.live, live) << name << " leaks: allocation " << n;
            mFaults += reached ? 1 : 0;
            return reached;
        });
    }

  private:
    int mCalls = 0, mFaults = 0;
};

ComPtr<IClassFactory> FactoryOf(REFCLSID clsid) {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(DllGetClassObject(clsid, IID_PPV_ARGS(&factory)), S_OK);
    return factory;
}

ComPtr<IDispatch> New(REFCLSID clsid) {
    ComPtr<IDispatch> object;
    EXPECT_EQ(FactoryOf(clsid)->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
    return object;
}

// What a late-bound client passes: each argument its own variable, which holds a text, or none at all.
struct Arguments {
    Arguments(const PublishedMember& member, bool isOmitted) : variables(member.Arguments()) {
        for (size_t i = 0; i < variables.size(); ++i) {
            const VARTYPE type = member.parameters[variables.size() - 1 - i].type;
            if (type == VT_BSTR) {
                variables[i] = L"SITE1";
            } else if (type != VT_UNKNOWN) {
                variables[i] = type == VT_BOOL ? L"0" : L"1";  // nobody is asked for a password
            }
            VARIANT reference{};
            V_VT(&reference) = isOmitted ? VT_ERROR : VT_BYREF | VT_VARIANT;
            isOmitted ? static_cast<void>(V_ERROR(&reference) = DISP_E_PARAMNOTFOUND)
                      : static_cast<void>(V_VARIANTREF(&reference) = &variables[i]);
            references.push_back(reference);
        }
    }
    std::vector<_variant_t> variables;
    std::vector<VARIANT> references;
};

ReadyCall ByName(const ComPtr<IDispatch>& object, const PublishedMember& member, bool isOmitted) {
    const auto arguments = std::make_shared<Arguments>(member, isOmitted);
    return [=, &member](VARIANT& answer) {
        auto* name = const_cast<wchar_t*>(member.name.c_str());
        DISPID id = 0, put = DISPID_PROPERTYPUT;
        const bool isPut = member.kind == INVOKE_PROPERTYPUT;
        DISPPARAMS parameters = {arguments->references.data(), isPut ? &put : nullptr,
                                 static_cast<UINT>(arguments->references.size()), isPut ? 1U : 0U};
        EXCEPINFO exception = {};
        HRESULT status = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
        if (status == S_OK) {
            status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(member.kind), &parameters,
                                    &answer, &exception, nullptr);
        }
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
        return status == DISP_E_EXCEPTION ? exception.scode : status;
    };
}

_variant_t Value(const ComPtr<IDispatch>& object, const wchar_t* member, const std::vector<_variant_t>& arguments) {
    return Invoke(object.Get(), IdOf(object.Get(), member), DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments).value;
}

// An object in a state in which most members have something to say.
ComPtr<IDispatch> Ready(const std::wstring& name, REFCLSID clsid) {
    if (name.starts_with(L"DahsIniEntr")) {
        const ComPtr<IDispatch> main = Ready(L"DahsIniMain", CLSID_DahsIniMain);
        const ComPtr<IDispatch> entries(V_DISPATCH(&static_cast<const VARIANT&>(Value(main, L"DahsEntries", {}))));
        return name == L"DahsIniEntries" ? entries
                                         : V_DISPATCH(&static_cast<const VARIANT&>(Value(entries, L"Item0", {0L})));
    }
    ComPtr<IDispatch> object = New(clsid);
    if (name == L"DahsIniMain") {
        Value(object, L"ReadVantorINI", {0L});
    } else if (name == L"FootnoteList") {
        Value(object, L"CreateOrGetFootnote", {_variant_t(), L"a text"});
    }
    return object;
}

DWORD Keys(const wchar_t* path) {
    HKEY key = nullptr;
    DWORD keys = 0;
    RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key);
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
    RegCloseKey(key);
    return keys;
}

}  // namespace

TEST_F(Allocations, OfEveryMember) {
    const SiteFolder site(kSite);
    const ComPtr<ITypeLib> library = ComponentTypeLibrary();  // held: the system reads it but once
    const std::vector<PublishedClass> classes = PublishedClasses(*library.Get());
    for (const PublishedClass& published : classes) {
        Walk(published.name, [&] {
            return [factory = FactoryOf(published.clsid)](VARIANT& answer) {
                V_VT(&answer) = VT_DISPATCH;
                return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&V_DISPATCH(&answer)));
            };
        });
        for (const PublishedMember& member : published.members) {
            for (const bool isOmitted : {false, true}) {
                if (!member.ShowsWindow()) {
                    Walk(member.name,
                         [&] { return ByName(Ready(published.name, published.clsid), member, isOmitted); });
                }
            }
        }
    }
}

// A late-bound call makes no allocation of the library's that the same call by the table does not make.
TEST_F(Allocations, OfALateBoundCallThereAreNoMore) {
    const auto made = [](const auto& call) {  // at the least: some calls fill caches
        long least = LONG_MAX;
        for (int i = 0; i < 5; ++i) {
            const long before = MadeAllocations();
            call();
            least = std::min(least, MadeAllocations() - before);
        }
        return least;
    };
    const SiteFolder site(kSite);
    for (const PublishedClass& published : PublishedClasses(*ComponentTypeLibrary().Get())) {
        const ComPtr<IDispatch> object = Ready(published.name, published.clsid);
        ComPtr<IUnknown> table;
        ASSERT_EQ(object->QueryInterface(published.iid, reinterpret_cast<void**>(table.GetAddressOf())), S_OK);
        for (const PublishedMember& member : published.members) {
            if (member.ShowsWindow()) {
                continue;
            }
            const size_t count = member.Arguments();
            std::array<_variant_t, 20> results;
            std::array<VARIANT, 20> arguments{};
            for (size_t i = 0; i < count; ++i) {
                const MemberParameter& parameter = member.parameters[count - 1 - i];
                V_VT(&arguments[i]) = parameter.type == VT_UNKNOWN ? VARTYPE{VT_DISPATCH} : parameter.type;
                if (parameter.isReference) {
                    V_VT(&arguments[i]) = VT_BYREF | VT_VARIANT;
                    V_VARIANTREF(&arguments[i]) = &results[i];
                }
            }
            DISPID put = DISPID_PROPERTYPUT;
            const UINT puts = member.kind == INVOKE_PROPERTYPUT ? 1 : 0;
            DISPPARAMS parameters = {arguments.data(), &put, static_cast<UINT>(count), puts};
            const auto late = [&] {
                _variant_t answer;
                return object->Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(member.kind),
                                      &parameters, &answer, nullptr, nullptr);
            };
            const auto early = [&] { return CallByTable(table.Get(), member, Outputs::Real); };
            EXPECT_EQ(FAILED(late()), FAILED(early())) << published.name << "." << member.name;
            EXPECT_LE(made(late), made(early)) << published.name << "." << member.name;
        }
    }
}

TEST_F(Allocations, OfSecurityWithADatabase) {
    wchar_t folder[MAX_PATH], file[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"v5a", 0, file);
    DeleteFileW(file);
    const _bstr_t text(L"S1"), none(L""),
        login((std::wstring(L"Integrated Security=SSPI;Data Source=") + file).c_str());
    const ComPtr<ITypeLib> library = ComponentTypeLibrary();
    const auto setup = [&](const ComPtr<IDispatch>& object, VARIANT& answer) {
        V_VT(&answer) = VT_BOOL;
        return static_cast<_NimboSecurity*>(object.Get())
            ->Setup(text, text, login, none, text, VARIANT_TRUE, &V_BOOL(&answer));
    };
    Walk(L"Setup",
         [&] { return [&, object = New(CLSID_NimboSecurity)](VARIANT& answer) { return setup(object, answer); }; });
    const ComPtr<IDispatch> object = New(CLSID_NimboSecurity);
    _variant_t done;
    setup(object, done);
    ASSERT_EQ(V_BOOL(&done), VARIANT_TRUE);
    Value(object, L"EnableSecurity", {});
    systemAllocations.mayFail = false;  // Wine's XML parser does not survive it
    for (const PublishedClass& published : PublishedClasses(*library.Get())) {
        for (const PublishedMember& member : published.members) {
            // Switched off, or without its database, it has little to say.
            static const std::set<std::wstring> kLeftOut = {L"Setup", L"Teardown", L"DisableSecurity"};
            if (published.clsid == CLSID_NimboSecurity && !kLeftOut.contains(member.name)) {
                Walk(member.name, [&] { return ByName(object, member, false); });
            }
        }
    }
    systemAllocations.mayFail = true;
    Value(object, L"Teardown", {});
    DeleteFileW(file);
}

// Listening, and what goes past the automation members.
TEST_F(Allocations, OfEventsAndEnumerators) {
    struct Client {
        ComPtr<IDispatch> security = New(CLSID_NimboSecurity), site = Ready(L"DahsIniEntries", CLSID_DahsIniEntries);
        EventRecorder listener{security.Get(), DIID___NimboSecurity};
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        ComPtr<IEnumVARIANT> entries;
        Client() {
            security.As(&container);
            container->FindConnectionPoint(DIID___NimboSecurity, &point);
            V_UNKNOWN(&static_cast<const VARIANT&>(Value(site, L"NewEnum", {})))
                ->QueryInterface(IID_PPV_ARGS(&entries));
        }
    };
    const SiteFolder folder(kSite);
    const std::pair<const wchar_t*, std::function<HRESULT(Client&)>> deeds[] = {
        {L"Advise",
         [](Client& c) {
             DWORD cookie = 0;
             return c.point->Advise(&c.listener, &cookie);
         }},
        {L"RaiseMsg",
         [text = _bstr_t(L"a message that needs some room")](Client& c) {
             ComPtr<IRaiseMsg> messages;
             c.security.As(&messages);
             return messages->RaiseMsg(4, text);
         }},
        {L"EnumConnectionPoints",
         [](Client& c) { return c.container->EnumConnectionPoints(ComPtr<IEnumConnectionPoints>().GetAddressOf()); }},
        {L"EnumConnections",
         [](Client& c) { return c.point->EnumConnections(ComPtr<IEnumConnections>().GetAddressOf()); }},
        {L"GetClassInfo",
         [](Client& c) {
             ComPtr<IProvideClassInfo> info;
             c.security.As(&info);
             return info->GetClassInfo(ComPtr<ITypeInfo>().GetAddressOf());
         }},
        {L"entries, Clone", [](Client& c) { return c.entries->Clone(ComPtr<IEnumVARIANT>().GetAddressOf()); }},
    };
    for (const auto& [name, make] : deeds) {
        Walk(name, [&, &make = make] {
            return [&make, client = std::make_shared<Client>()](VARIANT&) { return make(*client); };
        });
    }
    const PublishedMember members[] = {{L"Add", 0, INVOKE_FUNC, 0, {{VT_BSTR}, {VT_BSTR}}, false},
                                       {L"Item", 0, INVOKE_FUNC, 0, {{VT_I4}}, false},
                                       {L"Remove", 0, INVOKE_FUNC, 0, {{VT_I4}}, false},
                                       {L"_NewEnum", 0, INVOKE_FUNC, 0, {}, false}};
    for (const PublishedMember& member : members) {
        Walk(member.name, [&] {
            const _variant_t all = Value(Ready(L"FootnoteList", CLSID_FootnoteList), L"GetAllFootnotes", {});
            return ByName(ComPtr<IDispatch>(V_DISPATCH(&all)), member, false);
        });
    }
}

TEST_F(Allocations, OfRegistration) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\V5Allocations", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &key, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key), ERROR_SUCCESS);
    for (const BOOL install : {TRUE, FALSE}) {
        Walk(
            install ? L"registering" : L"unregistering",
            [&] {
                EXPECT_EQ(DllInstall(!install, L"user"), S_OK);
                return [=](VARIANT&) {
                    const HRESULT status = DllInstall(install, L"user");
                    EXPECT_TRUE(install == FALSE || status == S_OK || Keys(L"Software\\Classes") == 0)
                        << "a half registration";
                    return status;
                };
            },
            7);  // each undoes and repeats a registration
    }
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(key, nullptr);
    RegCloseKey(key);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\V5Allocations");
}

}  // namespace v5::test
