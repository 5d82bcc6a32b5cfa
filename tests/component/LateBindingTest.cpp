// What every class does for late-bound clients: finding members, arguments in all their forms, values given back, and
// errors. The classes used are those that need no site: one forced DAHS entry, and a footnote.
#include <windows.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/Members.h"

namespace v5::test {

namespace {

_variant_t Omitted() {
    return _variant_t(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
}

_variant_t False() {
    return _variant_t(false);
}

class LateBindingTest : public testing::Test {
  protected:
    void SetUp() override {
        mMain = CreateByName(L"V5Strings.DahsIniMain");
        ASSERT_TRUE(mMain);
        ASSERT_EQ(Call(mMain.Get(), L"SetupWithOneForcedDahsEntry", {L"AB"}).status, S_OK);
        mEntries = V_DISPATCH(&static_cast<const _variant_t&>(Get(mMain.Get(), L"DahsEntries")));
        ASSERT_TRUE(mEntries);
    }

    ComPtr<IDispatch> mMain, mEntries;
};

TEST_F(LateBindingTest, TakesArgumentsInEveryForm) {
    struct Case {
        const char* name;
        std::vector<_variant_t> positional;
        std::vector<NamedArgument> named;
        HRESULT status;
        UINT badArgument = kNoArgument;
    };
    short small = 888;
    _variant_t omitted = Omitted();
    const Case cases[] = {
        {"the default looks up by number", {888L}, {}, S_OK},
        {"position", {1L, False()}, {}, S_OK},
        {"left out by a comma", {888L, Omitted()}, {}, S_OK},
        {"left out by a variable", {888L, ByReference(omitted)}, {}, S_OK},
        {"named", {1L}, {{L"blnDahsID", False()}}, S_OK},
        {"all named, in another order", {}, {{L"blnDahsID", False()}, {L"lngIndex1", 1L}}, S_OK},
        {"numeric text", {L"888"}, {}, S_OK},
        {"a double, rounded", {888.4}, {}, S_OK},
        {"a typed variable", {ByReference(VT_I2, &small)}, {}, S_OK},
        {"nothing at all", {}, {}, DISP_E_BADPARAMCOUNT},
        {"the required one left out", {Omitted(), False()}, {}, DISP_E_PARAMNOTOPTIONAL, 1},
        {"only the optional one named", {}, {{L"blnDahsID", False()}}, DISP_E_BADPARAMCOUNT},
        {"one too many", {1L, False(), 3L}, {}, DISP_E_BADPARAMCOUNT},
        {"given twice", {1L}, {{L"lngIndex1", 1L}}, DISP_E_PARAMNOTFOUND},
        {"an unknown name", {1L}, {{L"blnOther", False()}}, DISP_E_UNKNOWNNAME},
        {"words for a number", {L"first", False()}, {}, DISP_E_TYPEMISMATCH, 1},
        {"too large", {1e10}, {}, DISP_E_OVERFLOW, 0},
        {"an object for a Boolean", {1L, _variant_t(mMain.Get())}, {}, DISP_E_TYPEMISMATCH, 0},
    };
    for (const Case& c : cases) {
        const CallResult result = Call(mEntries.Get(), L"Item", c.positional, c.named);
        EXPECT_EQ(result.status, c.status) << c.name;
        EXPECT_EQ(V_VT(&result.value), c.status == S_OK ? VT_DISPATCH : VT_EMPTY) << c.name;
        EXPECT_EQ(result.badArgument, c.badArgument) << c.name;
    }
}

// A client's variable of any type, with the number 7 in it, as the platform converts it there and back.
struct Variable {
    explicit Variable(VARTYPE type) {
        V_VT(&holder) = VT_BSTR;
        V_BSTR(&holder) = SysAllocString(L"7");
        if (FAILED(VariantChangeType(&holder, &holder, 0, type))) {
            holder.Clear();
            V_VT(&holder) = type;  // a type that takes no numbers: with nothing in it
        }
    }
    ~Variable() { V_VT(&holder) = V_VT(&holder) == VT_BSTR ? VT_BSTR : VT_EMPTY; }
    _variant_t Reference() {
        const bool isDecimal = V_VT(&holder) == VT_DECIMAL;  // which takes the whole of the VARIANT
        return ByReference(V_VT(&holder), isDecimal ? static_cast<void*>(&holder) : &V_BYREF(&holder));
    }
    long Number() const {
        VARIANT held = holder;  // borrowed; a decimal has overwritten its own type
        _variant_t number;
        V_VT(&held) = V_VT(&held) == VT_EMPTY ? static_cast<VARTYPE>(VT_DECIMAL) : V_VT(&held);
        EXPECT_EQ(VariantChangeType(&number, &held, 0, VT_I4), S_OK) << V_VT(&held);
        return V_I4(&number);
    }
    _variant_t holder;
};

TEST_F(LateBindingTest, GivesInOutArgumentsBackInTheCallersType) {
    constexpr VARTYPE kNumbers[] = {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4,  VT_INT,  VT_UINT,
                                    VT_I8, VT_UI8, VT_R4, VT_R8,  VT_CY, VT_DATE, VT_BSTR, VT_DECIMAL};
    constexpr VARTYPE kOthers[] = {VT_DISPATCH, VT_UNKNOWN, VT_ERROR, VT_ARRAY | VT_I4, VT_RECORD};
    const auto find = [&](const _variant_t& primary, const _variant_t& secondary) {
        return Call(mMain.Get(), L"FindRedundantDasIDs", {L"ab", 0L, primary, secondary}).status;
    };
    for (const VARTYPE type : kNumbers) {  // the answers are 888, too much for a byte, and 0
        Variable primary(type), secondary(type);
        const bool isByte = type == VT_I1 || type == VT_UI1;
        EXPECT_EQ(find(primary.Reference(), secondary.Reference()), isByte ? DISP_E_OVERFLOW : S_OK) << type;
        EXPECT_EQ(primary.Number(), isByte ? 7 : 888) << type;
        EXPECT_EQ(secondary.Number(), 0) << type;
    }
    for (const VARTYPE type : kOthers) {  // what cannot go in or come back is refused before the call
        Variable primary(VT_I4), unfit(type);
        EXPECT_EQ(find(primary.Reference(), unfit.Reference()), DISP_E_TYPEMISMATCH) << type;
        EXPECT_EQ(primary.Number(), 7) << type;
    }
    for (_variant_t variable : {_variant_t(), _variant_t(L"12"), _variant_t(5.5)}) {  // a script's takes any type
        EXPECT_EQ(find(ByReference(variable), 2L), S_OK) << "an expression is taken as it is";
        EXPECT_EQ(variable, _variant_t(888L));
    }
    _variant_t unfit(L"none"), omitted = Omitted();
    EXPECT_EQ(find(ByReference(unfit), 2L), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Text(unfit), L"none");
    EXPECT_EQ(find(ByReference(omitted), 2L), DISP_E_PARAMNOTOPTIONAL) << "a variable may be marked as omitted";

    const ComPtr<IDispatch> security = CreateByName(L"V5Strings.NimboSecurity");
    Variable text(VT_BSTR), number(VT_I4);
    const auto lists = [&](Variable& variable) {
        return Call(security.Get(), L"GetSidsForPrivilegeLevels", {L"", L"", variable.Reference()}).status;
    };
    EXPECT_EQ(lists(text), S_OK);
    EXPECT_EQ(lists(number), DISP_E_TYPEMISMATCH) << "a list of accounts is no number";
}

TEST_F(LateBindingTest, EnumeratesForEach) {
    const CallResult result = Invoke(mEntries.Get(), DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
    ASSERT_EQ(result.status, S_OK);
    ASSERT_EQ(V_VT(&result.value), VT_UNKNOWN);
    ComPtr<IEnumVARIANT> enumerator;
    ASSERT_EQ(V_UNKNOWN(&result.value)->QueryInterface(IID_PPV_ARGS(&enumerator)), S_OK);
    mMain.Reset();
    mEntries.Reset();  // the enumerator alone must keep the entries alive
    _variant_t entry, none;
    ULONG fetched = 0;
    ASSERT_EQ(enumerator->Next(1, &entry, &fetched), S_OK);
    EXPECT_EQ(Get(V_DISPATCH(&entry), L"DahsID"), _variant_t(888L));
    EXPECT_EQ(enumerator->Next(1, &none, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
}

TEST(LateBinding, PutsAndGetsProperties) {
    const ComPtr<IDispatch> footnote = CreateByName(L"V5Strings.Footnote");
    ASSERT_TRUE(footnote);
    const DISPID text = IdOf(footnote.Get(), L"tEXT");
    EXPECT_EQ(Text(Get(footnote.Get(), L"Text")) + Text(Get(footnote.Get(), L"Symbol")), L"");
    EXPECT_EQ(Invoke(footnote.Get(), text, DISPATCH_PROPERTYPUT, {L"valve"}).status, S_OK);
    EXPECT_EQ(Text(Get(footnote.Get(), L"Text")), L"valve");
    EXPECT_EQ(Invoke(footnote.Get(), text, DISPATCH_PROPERTYPUT, {12L}).status, S_OK);
    EXPECT_EQ(Text(Get(footnote.Get(), L"Text")), L"12");
    EXPECT_EQ(Invoke(footnote.Get(), text, DISPATCH_PROPERTYPUT, {}).status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Invoke(footnote.Get(), text, DISPATCH_PROPERTYGET, {1L}).status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Invoke(footnote.Get(), 77, DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(IdOf(footnote.Get(), L"Colour"), DISPID_UNKNOWN);

    // Early-bound: a null text is the empty text, and a text that comes back is never null.
    ComPtr<_Footnote> early;
    ASSERT_EQ(footnote.As(&early), S_OK);
    EXPECT_EQ(early->put_Text(nullptr), S_OK);
    BSTR got = nullptr;
    EXPECT_EQ(early->get_Text(&got), S_OK);
    EXPECT_NE(got, nullptr);
    EXPECT_EQ(Taken(got), L"");
}

TEST(LateBinding, TakesAnyObjectOrNoneAsMessageSink) {
    const ComPtr<IDispatch> list = CreateByName(L"V5Strings.FootnoteList");
    ASSERT_TRUE(list);
    const _variant_t nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(Call(list.Get(), L"CreateOrGetFootnote", {nothing, L"a"}).status, S_OK);
    EXPECT_EQ(Call(list.Get(), L"CreateOrGetFootnote", {_variant_t(), L"b"}).status, S_OK);
    const CallResult refused = Call(list.Get(), L"CreateOrGetFootnote", {_variant_t(list.Get()), L"c"});
    EXPECT_EQ(refused.status, DISP_E_TYPEMISMATCH) << "it is not a message sink";
    EXPECT_EQ(refused.badArgument, 1U);
    EXPECT_EQ(Get(list.Get(), L"Count"), _variant_t(2L));
}

// Every name of every member and parameter, in any case, is found as the platform finds it in the type library.
TEST(LateBinding, FindsNamesAsThePlatformDoes) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    size_t names = 0;
    for (const PublishedClass& published : PublishedClasses(*library.Get())) {
        const ComPtr<IDispatch> object = CreateByName((L"V5Strings." + published.name).c_str());
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfoOfGuid(published.iid, &info), S_OK);
        FUNCDESC* function = nullptr;
        for (UINT i = 0; info->GetFuncDesc(i, &function) == S_OK; ++i) {
            BSTR texts[16] = {};
            DISPID ours[16] = {}, platforms[16] = {};
            UINT count = 0;
            info->GetNames(function->memid, texts, 16, &count);
            for (UINT k = 0; k < count; ++k) {
                i % 2 != 0 ? _wcsupr(texts[k]) : _wcslwr(texts[k]);
            }
            if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) {  // IDispatch's own
                EXPECT_EQ(object->GetIDsOfNames(IID_NULL, texts, count, 0, ours),
                          info->GetIDsOfNames(texts, count, platforms));
                EXPECT_TRUE(std::equal(ours, ours + count, platforms)) << published.name << " " << texts[0];
                names += count;
            }
            for (UINT k = 0; k < count; ++k) {
                SysFreeString(texts[k]);
            }
            info->ReleaseFuncDesc(function);
        }
    }
    EXPECT_GT(names, 200u);
}

// Script engines and object browsers ask an object for its own description.
TEST(LateBinding, DescribesItself) {
    const ComPtr<IDispatch> object = CreateByName(L"V5Strings.NimboErrorNumbers");
    ASSERT_TRUE(object);
    UINT count = 0;
    EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(object->GetTypeInfo(1, LOCALE_NEUTRAL, &info), DISP_E_BADINDEX);
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_NEUTRAL, &info), S_OK);
    EXPECT_EQ(TypeDescription(info)->guid, __uuidof(_NimboErrorNumbers));
    ComPtr<IProvideClassInfo> provider;
    ASSERT_EQ(object.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    EXPECT_EQ(TypeDescription(info)->guid, __uuidof(NimboErrorNumbers));
}

}  // namespace

}  // namespace v5::test
