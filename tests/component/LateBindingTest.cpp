// What every class does for late-bound clients: finding members, arguments in all their forms, values given back, and
// errors. The classes used are those that need no site: one forced DAHS entry, and a footnote.
#include <windows.h>
#include <gtest/gtest.h>

#include "V5Strings.h"
#include "component/Client.h"

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
    _variant_t script(888L);
    const Case cases[] = {
        {"the default looks up by number", {888L}, {}, S_OK},
        {"position", {1L, False()}, {}, S_OK},
        {"left out by a comma", {888L, Omitted()}, {}, S_OK},
        {"named", {1L}, {{L"blnDahsID", False()}}, S_OK},
        {"all named, in another order", {}, {{L"blnDahsID", False()}, {L"lngIndex1", 1L}}, S_OK},
        {"names without regard to case", {}, {{L"LNGINDEX1", 888L}}, S_OK},
        {"numeric text", {L"888"}, {}, S_OK},
        {"a double, rounded", {888.4}, {}, S_OK},
        {"a script's variable", {ByReference(script)}, {}, S_OK},
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

TEST_F(LateBindingTest, GivesInOutArgumentsBackInTheCallersType) {
    _variant_t empty, text(L"12"), number(5.5);
    long typed = 7;
    short small = 7;
    BSTR words = SysAllocString(L"3");
    struct Case {
        const char* name;
        _variant_t argument;
    };
    const Case cases[] = {
        {"an empty variable", ByReference(empty)},         {"a variable with text", ByReference(text)},
        {"a variable with a number", ByReference(number)}, {"a Long", ByReference(VT_I4, &typed)},
        {"an Integer", ByReference(VT_I2, &small)},        {"a String", ByReference(VT_BSTR, &words)}};
    for (const Case& c : cases) {
        _variant_t secondary(99L);
        EXPECT_EQ(Call(mMain.Get(), L"FindRedundantDasIDs", {L"ab", 0L, c.argument, ByReference(secondary)}).status,
                  S_OK)
            << c.name;
        EXPECT_EQ(secondary, _variant_t(0L)) << c.name;
    }
    for (const _variant_t& variable : {empty, text, number}) {
        EXPECT_EQ(variable, _variant_t(888L));
    }
    EXPECT_EQ(typed, 888);
    EXPECT_EQ(small, 888);
    EXPECT_EQ(Taken(words), L"888");

    // An expression is taken as it is; what would be given back is dropped.
    EXPECT_EQ(Call(mMain.Get(), L"FindRedundantDasIDs", {L"ab", 0L, 1L, 2L}).status, S_OK);
    // What cannot go in is refused before the call.
    _variant_t unfit(L"none");
    EXPECT_EQ(Call(mMain.Get(), L"FindRedundantDasIDs", {L"ab", 0L, ByReference(unfit), 2L}).status,
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Text(unfit), L"none");
}

TEST_F(LateBindingTest, TellsWhatWentWrongAndWhere) {
    const CallResult late = Call(mEntries.Get(), L"Item", {99L});
    EXPECT_EQ(late.status, DISP_E_EXCEPTION);
    EXPECT_LT(late.errorNumber, 0);
    EXPECT_EQ(late.errorSource, L"V5Strings.DahsIniEntries");
    EXPECT_FALSE(late.errorDescription.empty());

    ComPtr<_DahsIniEntries> early;
    ComPtr<ISupportErrorInfo> support;
    ComPtr<IErrorInfo> info;
    ASSERT_EQ(mEntries.As(&early), S_OK);
    ASSERT_EQ(early.As(&support), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_DahsIniEntries)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPoint), S_FALSE);
    _DahsIniEntry* entry = nullptr;
    EXPECT_EQ(early->Item(99, VARIANT_TRUE, &entry), late.errorNumber);
    EXPECT_EQ(entry, nullptr);
    ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
    BSTR description = nullptr, source = nullptr;
    info->GetDescription(&description);
    info->GetSource(&source);
    EXPECT_EQ(Taken(description), late.errorDescription);
    EXPECT_EQ(Taken(source), late.errorSource);
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

// Script engines and object browsers ask an object for its own description.
TEST(LateBinding, DescribesItself) {
    const ComPtr<IDispatch> object = CreateByName(L"V5Strings.NimboErrorNumbers");
    ASSERT_TRUE(object);
    UINT count = 0;
    EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(object->GetTypeInfo(1, LOCALE_NEUTRAL, &info), DISP_E_BADINDEX);
    const auto guidOf = [](ITypeInfo* type) {
        TYPEATTR* attributes = nullptr;
        type->GetTypeAttr(&attributes);
        const GUID guid = attributes->guid;
        type->ReleaseTypeAttr(attributes);
        return guid;
    };
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_NEUTRAL, &info), S_OK);
    EXPECT_EQ(guidOf(info.Get()), __uuidof(_NimboErrorNumbers));
    ComPtr<IProvideClassInfo> provider;
    ASSERT_EQ(object.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    EXPECT_EQ(guidOf(info.Get()), __uuidof(NimboErrorNumbers));
}

}  // namespace

}  // namespace v5::test
