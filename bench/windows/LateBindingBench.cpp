// Late-bound calls, as scripts and macros make them, against the platform's own late binding of the same objects and
// against the scripting run-time's dictionary; and what they allocate.
#include <windows.h>
// after windows.h, which it needs:
#include <comutil.h>

#include <functional>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/SiteFile.h"
#include "bench/windows/Com.h"
#include "component/SiteFolder.h"

namespace v5::bench {
namespace {

constexpr int kCalls = 100'000;
constexpr int kRuns = 7;

// A member of an object, found once; called by Invoke with arguments from first to last.
class Member {
  public:
    Member(IDispatch* object, const wchar_t* name, std::vector<_variant_t> arguments = {})
        : mObject(object), mArguments(arguments.rbegin(), arguments.rend()) {
        auto* text = const_cast<wchar_t*>(name);
        Check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &mId), "GetIDsOfNames");
        Check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &mInfo), "GetTypeInfo");
        Check(object->QueryInterface(IidOf(*mInfo.Get()), reinterpret_cast<void**>(mInterface.GetAddressOf())),
              "the interface");
    }
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;

    _variant_t Invoke() {
        DISPPARAMS parameters = Parameters();
        _variant_t answer;
        Check(mObject->Invoke(mId, IID_NULL, LOCALE_USER_DEFAULT, kFlags, &parameters, &answer, nullptr, nullptr),
              "Invoke");
        return answer;
    }
    _variant_t InvokeByTypeInfo() {
        DISPPARAMS parameters = Parameters();
        _variant_t answer;
        Check(mInfo->Invoke(mInterface.Get(), mId, kFlags, &parameters, &answer, nullptr, nullptr),
              "ITypeInfo::Invoke");
        return answer;
    }
    void FindByTypeInfo(wchar_t** names, UINT count) {
        DISPID ids[4];
        Check(mInfo->GetIDsOfNames(names, count, ids), "ITypeInfo::GetIDsOfNames");
    }
    void Find(wchar_t** names, UINT count) {
        DISPID ids[4];
        Check(mObject->GetIDsOfNames(IID_NULL, names, count, LOCALE_USER_DEFAULT, ids), "GetIDsOfNames");
    }

  private:
    static constexpr WORD kFlags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

    static IID IidOf(ITypeInfo& info) {
        TYPEATTR* attributes = nullptr;
        Check(info.GetTypeAttr(&attributes), "GetTypeAttr");
        const IID iid = attributes->guid;
        info.ReleaseTypeAttr(attributes);
        return iid;
    }
    DISPPARAMS Parameters() { return {mArguments.data(), nullptr, static_cast<UINT>(mArguments.size()), 0}; }

    ComPtr<IDispatch> mObject;
    ComPtr<ITypeInfo> mInfo;
    ComPtr<IUnknown> mInterface;  // itself, whatever its type
    DISPID mId = 0;
    std::vector<_variant_t> mArguments;
};

template <class Work>
std::function<void()> Often(const Work& work) {
    return [work] {
        for (int i = 0; i < kCalls; ++i) {
            work();
        }
    };
}

void Compare(Table& table, const std::string& name, double goal, const std::function<void()>& ours,
             const std::function<void()>& peer) {
    table.Compare({.name = "late-bound " + name, .goal = goal, .runs = kRuns, .operations = kCalls}, ours, peer);
}

// A site of 99 entries, as scripts go through it, against a dictionary with as many objects.
void ForEach(Table& table, IDispatch* entries) {
    const auto dictionary = Create<IDispatch>(L"Scripting.Dictionary");
    std::vector<_variant_t> objects;
    for (long i = 0; i < 99; ++i) {
        const auto object = Create<IDispatch>(L"Scripting.Dictionary");
        objects.emplace_back(object.Get());
        Member(dictionary.Get(), L"Add", {i, object.Get()}).Invoke();
        Member(object.Get(), L"Add", {L"SiteID", L"SITE1"}).Invoke();
    }
    const auto byName = [](IDispatch* object, const wchar_t* name, VARIANT* argument) {
        auto* text = const_cast<wchar_t*>(name);
        DISPID id = 0;
        DISPPARAMS parameters = {argument, nullptr, argument != nullptr ? 1u : 0u, 0};
        _variant_t answer;
        Check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
        Check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                             &answer, nullptr, nullptr),
              "Invoke");
        return answer;
    };
    _variant_t key(L"SiteID");
    table.Compare(
        {.name = "late-bound for-each over 99 entries, a text of each / 99 of a dictionary",
         .goal = 0.5,
         .runs = 50,
         .operations = 99},
        [&] {
            const _variant_t all = byName(entries, L"NewEnum", nullptr);
            ComPtr<IEnumVARIANT> enumerator;
            Check(V_UNKNOWN(&all)->QueryInterface(IID_PPV_ARGS(&enumerator)), "the enumerator");
            _variant_t entry;
            while (enumerator->Next(1, &entry, nullptr) == S_OK) {
                Keep(byName(V_DISPATCH(&entry), L"SiteID", nullptr));
                entry.Clear();
            }
        },
        [&] {  // its enumerator gives the keys
            const _variant_t all = Member(dictionary.Get(), L"Keys").Invoke();
            for (long i = 0; i < 99; ++i) {
                _variant_t number(i);
                const _variant_t item = byName(dictionary.Get(), L"Item", &number);
                Keep(byName(V_DISPATCH(&item), L"Item", &key));
            }
        });
}

void LateBinding(Table& table) {
    const test::SiteFolder site(SiteFile("$folder$\\V"));
    const auto main = Create<IDispatch>(L"V5Strings.DahsIniMain");
    Member(main.Get(), L"ReadVantorINI", {0L}).Invoke();
    const auto list = Create<IDispatch>(L"V5Strings.FootnoteList");
    const auto dictionary = Create<IDispatch>(L"Scripting.Dictionary");
    Member(dictionary.Get(), L"Add", {L"a", L"b"}).Invoke();

    Member number(main.Get(), L"DahsID"), text(main.Get(), L"SiteID"),
        two(list.Get(), L"CreateOrGetFootnote", {_variant_t(static_cast<IDispatch*>(nullptr)), L"a"}),
        count(dictionary.Get(), L"Count"), exists(dictionary.Get(), L"Exists", {L"a"});
    Compare(table, "number / ITypeInfo::Invoke", 0.5, Often([&] { number.Invoke(); }),
            Often([&] { number.InvokeByTypeInfo(); }));
    Compare(table, "number / Scripting.Dictionary.Count", 0.5, Often([&] { number.Invoke(); }),
            Often([&] { count.Invoke(); }));
    Compare(table, "text / ITypeInfo::Invoke", 0.5, Often([&] { text.Invoke(); }),
            Often([&] { text.InvokeByTypeInfo(); }));
    Compare(table, "two arguments / ITypeInfo::Invoke", 0.7, Often([&] { two.Invoke(); }),
            Often([&] { two.InvokeByTypeInfo(); }));
    Compare(table, "two arguments / Scripting.Dictionary.Exists", 1.3, Often([&] { two.Invoke(); }),
            Often([&] { exists.Invoke(); }));

    wchar_t first[] = L"Problems", last[] = L"sqlconnectionstring_OSTRA", method[] = L"FindRedundantDasIDs",
            argument[] = L"LNGSecondaryDasID";
    wchar_t *firstName[] = {first}, *lastName[] = {last}, *named[] = {method, argument};
    const auto names = [&](const char* name, wchar_t** wanted, UINT wantedCount) {
        Compare(table, name, 0.1, Often([&, wanted, wantedCount] { number.Find(wanted, wantedCount); }),
                Often([&, wanted, wantedCount] { number.FindByTypeInfo(wanted, wantedCount); }));
    };
    names("name, the first member / ITypeInfo", firstName, 1);
    names("name, a late member in another case / ITypeInfo", lastName, 1);
    names("name with a named argument / ITypeInfo", named, 2);

    const _variant_t entries = Member(main.Get(), L"DahsEntries").Invoke();
    ForEach(table, V_DISPATCH(&entries));
}

const Benchmark registered("late", LateBinding);

}  // namespace
}  // namespace v5::bench
