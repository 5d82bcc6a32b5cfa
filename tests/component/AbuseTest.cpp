// Clients that get everything wrong: each member of each class must answer with a status, never take the process down,
// and leave nothing behind.
#include <windows.h>
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <functional>
#include <limits>
#include <map>
#include <process.h>
#include <thread>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/Members.h"
#include "component/Sink.h"

namespace v5::test {

namespace {

// Whether nothing of the DLL is held any more; COM may have unloaded it already.
bool ServerCanUnload() {
    const HMODULE library = GetModuleHandleW(L"V5Strings.dll");
    if (library == nullptr) {
        return true;
    }
    const auto canUnloadNow = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllCanUnloadNow")));
    return canUnloadNow() == S_OK;
}

// Runs `test` on an object of each class and its members, and expects that nothing of the object stays.
void ForEachClass(const std::function<void(IDispatch*, const PublishedClass&)>& test) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    const std::vector<PublishedClass> classes = PublishedClasses(*library.Get());
    EXPECT_GE(classes.size(), 10u);
    for (const PublishedClass& published : classes) {
        CLSID named;
        ComPtr<IDispatch> object;
        EXPECT_EQ(CLSIDFromProgID((L"V5Strings." + published.name).c_str(), &named), S_OK) << published.name;
        EXPECT_EQ(named, published.clsid) << published.name;
        EXPECT_EQ(CoCreateInstance(published.clsid, nullptr, CLSCTX_INPROC_SERVER, published.iid,
                                   reinterpret_cast<void**>(object.GetAddressOf())),
                  S_OK)
            << published.name;
        if (object) {
            test(object.Get(), published);
            object.Reset();
            EXPECT_TRUE(ServerCanUnload()) << published.name;
        }
    }
}

// The values of odd types that a script or a broken client can pass; none of them is a text, a number or a Boolean.
std::vector<_variant_t> UnfitValues() {
    _variant_t nothing, record, nullReference, array;
    V_VT(&nothing) = VT_NULL;
    V_VT(&nullReference) = VT_BYREF | VT_I4;
    V_VT(&array) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&array) = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    return {nothing, nullReference, array, _variant_t(DISP_E_BADINDEX, VT_ERROR)};
}

}  // namespace

TEST(Abuse, NullPointersForEveryOutputAreRefused) {
    int calls = 0;
    ForEachClass([&](IDispatch* object, const PublishedClass& published) {
        for (const PublishedMember& member : published.members) {
            if (member.ShowsWindow() && !member.HasOutput()) {
                continue;
            }
            const HRESULT status = CallByTable(object, member, Outputs::Null);
            ++calls;
            EXPECT_EQ(status, member.HasOutput() ? E_POINTER : S_OK) << published.name << "." << member.name;
        }
        void* none = nullptr;
        DISPID id = 0;
        wchar_t name[] = L"x", *names = name;
        EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
        EXPECT_EQ(object->QueryInterface(IID_IStream, &none), E_NOINTERFACE);
        EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
        EXPECT_EQ(object->GetTypeInfo(0, 0, nullptr), E_POINTER);
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER) << published.name;
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, 0, nullptr), E_POINTER) << published.name;
        EXPECT_EQ(object->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    });
    RecordProperty("calls", calls);
}

// What is wrong has one number and one text, those of the automation run-time, by both routes.
TEST(Abuse, EveryMemberAnswersAnyValueAlikeByBothRoutes) {
    static const std::map<long, std::wstring> kTexts = {{5, L"Invalid procedure call or argument"},
                                                        {7, L"Out of memory"},
                                                        {9, L"Subscript out of range"},
                                                        {326, L"Resource with identifier '"}};
    constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
    const std::pair<long, DATE> values[] = {{0, 1e300}, {-1, -657435.0}, {1, 2958466.0}, {LONG_MIN, kNoNumber}};
    int failures = 0;
    ForEachClass([&](IDispatch* object, const PublishedClass& published) {
        ComPtr<ISupportErrorInfo> support;
        ASSERT_EQ(object->QueryInterface(IID_PPV_ARGS(&support)), S_OK);
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(published.iid), S_OK) << published.name;
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPoint), S_FALSE) << published.name;
        for (const PublishedMember& member : published.members) {
            const bool isDateDialog = member.name == L"GetDateFromUser" || member.name == L"GetTimeFromUser";
            if (member.ShowsWindow() && !isDateDialog) {  // they are shown for no date, of course
                continue;
            }
            for (const auto& [number, date] : values) {
                std::vector<_variant_t> arguments;
                for (size_t i = 0; i < member.Arguments(); ++i) {
                    const VARTYPE type = member.parameters[i].type;
                    arguments.push_back(type == VT_BSTR   ? _variant_t(L"")
                                        : type == VT_DATE ? _variant_t(date, VT_DATE)
                                        : type == VT_I4   ? _variant_t(number)
                                        : type == VT_BOOL ? _variant_t(false)  // nobody is asked for a password
                                                          : _variant_t(static_cast<IDispatch*>(nullptr)));
                }
                SetErrorInfo(0, nullptr);
                const HRESULT early = CallByTable(object, member, Outputs::Real, number, date);
                ComPtr<IErrorInfo> info;
                BSTR description = nullptr;
                if (GetErrorInfo(0, &info) == S_OK) {
                    info->GetDescription(&description);
                }
                const std::wstring told = Taken(description);
                const CallResult late = Invoke(object, member.id, static_cast<WORD>(member.kind), arguments);
                EXPECT_EQ(FAILED(early), FAILED(late.status)) << published.name << "." << member.name;
                if (FAILED(early)) {
                    const auto text = kTexts.find(early - static_cast<long>(0x800A0000));
                    EXPECT_TRUE(text != kTexts.end() && late.errorDescription.starts_with(text->second))
                        << published.name << "." << member.name << " " << early << late.errorDescription;
                    EXPECT_EQ(late.errorNumber, early) << published.name << "." << member.name;
                    EXPECT_EQ(late.errorDescription, told);
                    EXPECT_EQ(late.errorSource, L"V5Strings." + published.name);
                    ++failures;
                }
                EXPECT_TRUE(FAILED(early) || !isDateDialog) << member.name;
            }
        }
    });
    EXPECT_GT(failures, 20);
}

TEST(Abuse, WrongArgumentsAreRefusedByEveryMember) {
    int calls = 0;
    const std::vector<_variant_t> unfit = UnfitValues();
    ForEachClass([&](IDispatch* object, const PublishedClass& published) {
        for (const PublishedMember& member : published.members) {
            const auto flags = static_cast<WORD>(member.kind);
            const size_t most = member.Arguments();
            const auto call = [&](size_t count, const _variant_t& value) {
                ++calls;
                return Invoke(object, member.id, flags, std::vector<_variant_t>(count, value)).status;
            };
            for (size_t count = most + 1; count < most + 4; ++count) {
                EXPECT_EQ(call(count, L"x"), DISP_E_BADPARAMCOUNT) << published.name << "." << member.name;
            }
            if (most == 0) {
                continue;
            }
            for (const _variant_t& value : unfit) {
                if (V_VT(&value) == VT_NULL && member.ShowsWindow()) {
                    continue;  // no message sink is a good message sink
                }
                const HRESULT status = call(most, value);
                EXPECT_TRUE(FAILED(status)) << published.name << "." << member.name << " " << V_VT(&value);
            }
            const HRESULT withItself = call(most, _variant_t(object));
            EXPECT_TRUE(FAILED(withItself)) << published.name << "." << member.name;
            if (!member.ShowsWindow()) {
                for (size_t count = 0; count < most; ++count) {
                    call(count, _variant_t());  // too few, or the rest optional: any status
                }
            }
        }
        for (const DISPID id : {-2, -100, 0, 1000, INT_MAX, INT_MIN}) {
            EXPECT_EQ(Invoke(object, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND)
                << published.name << " " << id;
        }
        for (const DISPID id : {-1, 7, INT_MAX, INT_MIN}) {  // an argument's name that no parameter has
            _variant_t value(1L);
            DISPID named = id;
            DISPPARAMS parameters = {&value, &named, 1, 1};
            for (const PublishedMember& member : published.members) {
                EXPECT_TRUE(FAILED(object->Invoke(member.id, IID_NULL, 0, static_cast<WORD>(INVOKE_FUNC), &parameters,
                                                  nullptr, nullptr, nullptr)));
            }
        }
        EXPECT_EQ(IdOf(object, L"NoSuchMember"), DISPID_UNKNOWN);
    });
    RecordProperty("calls", calls);
}

// The collection of footnotes is late-bound only, with a late binding of its own.
TEST(Abuse, WrongArgumentsAreAnsweredByTheCollection) {
    const ComPtr<IDispatch> list = CreateByName(L"V5Strings.FootnoteList");
    Call(list.Get(), L"CreateOrGetFootnote", {_variant_t(), L"a"});
    const _variant_t all = Call(list.Get(), L"GetAllFootnotes").value;
    IDispatch* collection = V_DISPATCH(&all);
    ASSERT_NE(collection, nullptr);
    EXPECT_TRUE(FAILED(collection->Invoke(0, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr)));
    EXPECT_TRUE(FAILED(collection->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr)));
    EXPECT_EQ(collection->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    std::vector<_variant_t> values = UnfitValues();
    values.insert(values.end(), {_variant_t(), L"", L"no key", -1L, 0L, 2L, 1e300, _variant_t(list.Get())});
    for (DISPID id = -8; id < 12; ++id) {
        for (const int kind : {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT}) {
            for (size_t count = 0; count < 7; ++count) {
                for (const _variant_t& value : values) {
                    Invoke(collection, id, static_cast<WORD>(kind), std::vector<_variant_t>(count, value));
                }
            }
        }
    }

    EXPECT_EQ(Get(list.Get(), L"Count"), _variant_t(1L)) << "the list is its own";
}

namespace {

// A security object set up on a database that nobody can read or write, so that every member reports something.
struct LockedSite {
    DatabaseFile file;
    ComPtr<_NimboSecurity> security;
    Listener handler;
    std::unique_ptr<OtherProgram> other;

    LockedSite() {
        CreateByName(L"V5Strings.NimboSecurity").As(&security);
        EXPECT_TRUE(SetUp(security.Get()));
        other = std::make_unique<OtherProgram>(file.Path());
        EXPECT_EQ(other->Execute("BEGIN EXCLUSIVE"), SQLITE_OK);
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        DWORD cookie = 0;
        security.As(&container);
        container->FindConnectionPoint(DIID___NimboSecurity, &point);
        EXPECT_EQ(point->Advise(&handler, &cookie), S_OK);
    }
    bool SetUp(_NimboSecurity* object) const {
        VARIANT_BOOL done = VARIANT_FALSE;
        const _bstr_t login((file.WindowsLogin() + L";Connect Timeout=0").c_str()), none(L"");
        EXPECT_EQ(object->Setup(_bstr_t(L"S1"), _bstr_t(L"EN"), login, none, none, VARIANT_TRUE, &done), S_OK);
        return done != VARIANT_FALSE;
    }
};

}  // namespace

TEST(Abuse, AHandlerMayDoAnythingDuringAnEvent) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    std::vector<PublishedMember> members;
    for (const PublishedClass& published : PublishedClasses(*library.Get())) {
        if (published.clsid == __uuidof(NimboSecurity)) {
            members = published.members;
        }
    }
    ASSERT_EQ(members.size(), 21u);
    struct Deed {
        const char* name;
        std::function<void(LockedSite&)> work;
    };
    const Deed deeds[] = {
        {"sets up again", [](LockedSite& site) { site.SetUp(site.security.Get()); }},
        {"tears down and releases",
         [](LockedSite& site) {
             if (site.security) {
                 site.security->Teardown();
                 _NimboSecurity* last = site.security.Detach();
                 EXPECT_GE(last->Release(), 2u) << "the event and the member under way each hold the object";
             }
         }},
    };
    int events = 0;
    for (const PublishedMember& member : members) {
        for (const Deed& deed : deeds) {
            {
                LockedSite site;
                int depth = 0;
                site.handler.onEvent = [&] {
                    if (++depth == 1) {
                        deed.work(site);
                    }
                    --depth;
                    return S_OK;
                };
                EXPECT_EQ(CallByTable(site.security.Get(), member, Outputs::Real), S_OK)
                    << member.name << " " << deed.name;
                events += site.handler.events;
            }
            EXPECT_TRUE(ServerCanUnload()) << member.name << " " << deed.name;
        }
    }
    EXPECT_GT(events, 50) << "the database was not locked";
}

// In a process of its own: COM keeps the apartment that it makes for such clients, and what that holds.
TEST(Abuse, AnObjectWorksFromAMultithreadedApartment) {
    constexpr wchar_t kInside[] = L"V5_MULTITHREADED_CLIENT";
    if (GetEnvironmentVariableW(kInside, nullptr, 0) == 0) {
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        SetEnvironmentVariableW(kInside, L"1");
        EXPECT_EQ(_wspawnl(_P_WAIT, program, L"v5component", L"--gtest_filter=Abuse.AnObject*", nullptr), 0);
        SetEnvironmentVariableW(kInside, nullptr);
        return;
    }
    std::thread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        {
            const ComPtr<IDispatch> late = CreateByName(L"V5Strings.FootnoteList");
            ComPtr<_FootnoteList> early;
            ASSERT_TRUE(late);
            EXPECT_EQ(Text(Call(late.Get(), L"CreateOrGetFootnote", {_variant_t(), L"a"}).value), L"\u2020");
            EXPECT_EQ(Get(late.Get(), L"Count"), _variant_t(1L));
            ASSERT_EQ(late.As(&early), S_OK) << "compiled clients reach it through the type library's marshalling";
            long count = 0;
            EXPECT_EQ(early->get_Count(&count), S_OK);
            EXPECT_EQ(count, 1);
        }
        CoUninitialize();
    }).join();
}

TEST(Abuse, TwoHundredThreadsEachWorkWithTheirOwnObjects) {
    constexpr int kThreads = 200;
    constexpr int kRounds = 5;
    std::atomic<int> done = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&done, number] {
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
            const std::wstring site = L"SITE" + std::to_wstring(number);
            for (int round = 0; round < kRounds; ++round) {
                const ComPtr<IDispatch> main = CreateByName(L"V5Strings.DahsIniMain");
                const ComPtr<IDispatch> list = CreateByName(L"V5Strings.FootnoteList");
                const ComPtr<IDispatch> security = CreateByName(L"V5Strings.NimboSecurity");
                Call(main.Get(), L"SetupWithOneForcedDahsEntry", {site.c_str()});
                Call(list.Get(), L"CreateOrGetFootnote", {_variant_t(), site.c_str()});
                Call(security.Get(), L"GetUserPrivilegeLevel");
                const _variant_t name = Get(main.Get(), L"SiteID");
                done += Text(name) == site && Get(list.Get(), L"Count") == _variant_t(1L) ? 1 : 0;
            }
            CoUninitialize();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(done, kThreads * kRounds);
    EXPECT_TRUE(ServerCanUnload());
}

}  // namespace v5::test
