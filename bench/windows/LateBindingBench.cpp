// Late-bound calls, as scripts and macros make them, against the platform's own late binding of the same objects and
// against the scripting run-time's dictionary; and what they allocate.
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
        : mObject(object), mId(IdOf(object, name)), mArguments(arguments.rbegin(), arguments.rend()) {
        Check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &mInfo), "GetTypeInfo");
        Check(object->QueryInterface(IidOf(*mInfo.Get()), reinterpret_cast<void**>(mInterface.GetAddressOf())),
              "the interface");
    }
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;

    _variant_t Invoke() {
        return bench::Invoke(mObject.Get(), mId, mArguments.data(), static_cast<UINT>(mArguments.size()));
    }
    _variant_t InvokeByTypeInfo() {
        DISPPARAMS parameters = {mArguments.data(), nullptr, static_cast<UINT>(mArguments.size()), 0};
        constexpr WORD kFlags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
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
    static IID IidOf(ITypeInfo& info) {
        TYPEATTR* attributes = nullptr;
        Check(info.GetTypeAttr(&attributes), "GetTypeAttr");
        const IID iid = attributes->guid;
        info.ReleaseTypeAttr(attributes);
        return iid;
    }

    ComPtr<IDispatch> mObject;
    DISPID mId;
    ComPtr<ITypeInfo> mInfo;
    ComPtr<IUnknown> mInterface;  // itself, whatever its type
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
    const _variant_t key(L"SiteID");
    table.Compare(
        {.name = "late-bound for-each over 99 entries, a text of each / 99 of a dictionary",
         .goal = 0.5,
         .runs = 50,
         .operations = 99},
        [&] {
            const _variant_t all = Call(entries, L"NewEnum");
            ComPtr<IEnumVARIANT> enumerator;
            Check(V_UNKNOWN(&all)->QueryInterface(IID_PPV_ARGS(&enumerator)), "the enumerator");
            _variant_t entry;
            while (enumerator->Next(1, &entry, nullptr) == S_OK) {
                Keep(Call(V_DISPATCH(&entry), L"SiteID"));
                entry.Clear();
            }
        },
        [&] {  // its enumerator gives the keys
            Keep(Call(dictionary.Get(), L"Keys"));
            for (long i = 0; i < 99; ++i) {
                const _variant_t item = Call(dictionary.Get(), L"Item", i);
                Keep(Call(V_DISPATCH(&item), L"Item", key));
            }
        });
}

void LateBinding(Table& table) {
    const test::SiteFolder site(SiteFile("$folder$\\V"));
    const auto main = Create<IDispatch>(L"V5Strings.DahsIniMain");
    Call(main.Get(), L"ReadVantorINI", 0L);
    const auto list = Create<IDispatch>(L"V5Strings.FootnoteList");
    const auto dictionary = Create<IDispatch>(L"Scripting.Dictionary");
    Member(dictionary.Get(), L"Add", {L"a", L"b"}).Invoke();

    Member number(main.Get(), L"DahsID"), text(main.Get(), L"SiteID"),
        two(list.Get(), L"CreateOrGetFootnote", {_variant_t(static_cast<IDispatch*>(nullptr)), L"a"}),
        count(dictionary.Get(), L"Count"), exists(dictionary.Get(), L"Exists", {L"a"});
    const auto invoke = [](Member& member) { return Often([&] { member.Invoke(); }); };
    const auto byTypeInfo = [](Member& member) { return Often([&] { member.InvokeByTypeInfo(); }); };
    Compare(table, "number / ITypeInfo::Invoke", 0.5, invoke(number), byTypeInfo(number));
    Compare(table, "number / Scripting.Dictionary.Count", 0.5, invoke(number), invoke(count));
    Compare(table, "text / ITypeInfo::Invoke", 0.5, invoke(text), byTypeInfo(text));
    Compare(table, "two arguments / ITypeInfo::Invoke", 0.7, invoke(two), byTypeInfo(two));
    Compare(table, "two arguments / Scripting.Dictionary.Exists", 1.3, invoke(two), invoke(exists));

    const auto names = [&](const char* name, std::vector<const wchar_t*> wanted) {
        auto** const first = const_cast<wchar_t**>(wanted.data());
        const auto size = static_cast<UINT>(wanted.size());
        Compare(table, name, 0.1, Often([&, first, size] { number.Find(first, size); }),
                Often([&, first, size] { number.FindByTypeInfo(first, size); }));
    };
    names("name, the first member / ITypeInfo", {L"Problems"});
    names("name, a late member in another case / ITypeInfo", {L"sqlconnectionstring_OSTRA"});
    names("name with a named argument / ITypeInfo", {L"FindRedundantDasIDs", L"LNGSecondaryDasID"});

    const _variant_t entries = Call(main.Get(), L"DahsEntries");
    ForEach(table, V_DISPATCH(&entries));
}

const Benchmark registered("late", LateBinding);

}  // namespace
}  // namespace v5::bench
