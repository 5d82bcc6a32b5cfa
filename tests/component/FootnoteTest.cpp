// FootnoteList, Footnote and the collection that GetAllFootnotes returns.
#include "V5Strings.h"
#include "component/Client.h"

namespace v5::test {
namespace {

struct FootnoteTest : testing::Test {
    ComPtr<_FootnoteList> list;

    void SetUp() override {
        ASSERT_EQ(CoCreateInstance(CLSID_FootnoteList, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&list)), S_OK);
    }
    std::wstring Mark(const wchar_t* text) {  // null: no text at all
        BSTR mark = nullptr;
        EXPECT_EQ(list->CreateOrGetFootnote(nullptr, _bstr_t(text), &mark), S_OK);
        EXPECT_NE(mark, nullptr);
        return Taken(mark);
    }
    long Count() {
        long count = -1;
        EXPECT_EQ(list->get_Count(&count), S_OK);
        return count;
    }
    ComPtr<IDispatch> All() {
        ComPtr<IDispatch> all;
        EXPECT_EQ(list->GetAllFootnotes(&all), S_OK);
        return all;
    }
};

ComPtr<_Footnote> FootnoteIn(const _variant_t& item) {
    ComPtr<_Footnote> footnote;
    EXPECT_EQ(V_VT(&item), VT_DISPATCH);
    EXPECT_EQ(V_DISPATCH(&item)->QueryInterface(IID_PPV_ARGS(&footnote)), S_OK);
    return footnote;
}

std::wstring TextOf(_Footnote* footnote) {
    BSTR text = nullptr;
    EXPECT_EQ(footnote->get_Text(&text), S_OK);
    return Taken(text);
}

TEST_F(FootnoteTest, CollectionIsFreshOverTheListsOwnObjects) {
    EXPECT_EQ(Get(All().Get(), L"Count"), _variant_t(0L));
    EXPECT_EQ(Mark(L"a"), L"\u2020");
    EXPECT_EQ(Mark(L"b"), L"\u2021");
    const ComPtr<IDispatch> first = All();
    EXPECT_EQ(Mark(L""), L"\u2020\u2020");
    EXPECT_EQ(Mark(nullptr), L"\u2020\u2020") << "a null text is the empty text";
    const ComPtr<IDispatch> second = All();
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_EQ(Get(first.Get(), L"Count"), _variant_t(2L));
    EXPECT_EQ(Get(second.Get(), L"Count"), _variant_t(3L));
    EXPECT_EQ(Call(first.Get(), L"Remove", {1L}).status, S_OK);
    EXPECT_EQ(Count(), 3);

    const ComPtr<_Footnote> b = FootnoteIn(Call(second.Get(), L"Item", {2L}).value);
    EXPECT_EQ(TextOf(b.Get()), L"b");
    EXPECT_EQ(FootnoteIn(Call(first.Get(), L"Item", {1L}).value).Get(), b.Get());
    EXPECT_EQ(b->put_Text(_bstr_t(L"changed")), S_OK);
    EXPECT_EQ(b->put_Symbol(_bstr_t(L"*")), S_OK);
    EXPECT_EQ(TextOf(FootnoteIn(Call(All().Get(), L"Item", {2L}).value).Get()), L"changed");
    EXPECT_EQ(Mark(L"b"), L"*") << "the list finds it by the text it was asked for";
    EXPECT_EQ(Mark(L"changed"), L"\u2021\u2021");

    list.Reset();
    EXPECT_EQ(TextOf(b.Get()), L"changed") << "a footnote outlives its list";
}

TEST_F(FootnoteTest, CollectionTakesAndGivesItemsAsTheRunTimesOwnDoes) {
    const ComPtr<IDispatch> all = All();
    const _variant_t none(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
    EXPECT_EQ(Call(all.Get(), L"Add", {L"two", L"Two"}).status, S_OK);
    EXPECT_EQ(Call(all.Get(), L"Add", {L"one", none, 1L}).status, S_OK);
    EXPECT_EQ(Call(all.Get(), L"Add", {3L, L"Three", none, L"tWO"}).status, S_OK);
    EXPECT_EQ(Call(all.Get(), L"Add", {L"after one", none, none, 1.4}).status, S_OK);
    const wchar_t* order[] = {L"one", L"after one", L"two"};
    for (long i = 0; i < 3; ++i) {
        EXPECT_EQ(Text(Invoke(all.Get(), DISPID_VALUE, DISPATCH_PROPERTYGET, {i + 1}).value), order[i]);
    }
    EXPECT_EQ(Call(all.Get(), L"item", {L"three"}).value, _variant_t(3L));

    const struct {
        const wchar_t* member;
        std::vector<_variant_t> arguments;
        int error;
    } failures[] = {
        {L"Item", {0L}, 9},          {L"Item", {5L}, 9},
        {L"Item", {-1L}, 9},         {L"Item", {L"four"}, 5},
        {L"Item", {L"1"}, 5},        {L"Remove", {5L}, 9},
        {L"Add", {1L, L"TWO"}, 457}, {L"Add", {1L, 7L}, 13},
        {L"Add", {1L, none, 9L}, 9}, {L"Add", {1L, none, 1L, 1L}, 5},
    };
    for (const auto& row : failures) {
        const CallResult result = Call(all.Get(), row.member, row.arguments);
        EXPECT_EQ(result.status, DISP_E_EXCEPTION);
        EXPECT_EQ(result.errorNumber, static_cast<long>(0x800A0000u | static_cast<unsigned>(row.error)));
        EXPECT_NE(result.errorDescription, L"");
    }
    EXPECT_EQ(Get(all.Get(), L"Count"), _variant_t(4L)) << "a failed call changes nothing";
    EXPECT_EQ(Call(all.Get(), L"Item").status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(IdOf(all.Get(), L"Clear"), DISPID_UNKNOWN);
}

TEST_F(FootnoteTest, CollectionEnumerates) {
    Mark(L"a");
    Mark(L"b");
    Mark(L"c");
    const ComPtr<IDispatch> all = All();
    const CallResult started = Invoke(all.Get(), DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
    ASSERT_EQ(V_VT(&started.value), VT_UNKNOWN);
    ComPtr<IEnumVARIANT> enumerator;
    ASSERT_EQ(V_UNKNOWN(&started.value)->QueryInterface(IID_PPV_ARGS(&enumerator)), S_OK);
    VARIANT items[4] = {};
    ULONG fetched = 0;
    EXPECT_EQ(enumerator->Skip(1), S_OK);
    EXPECT_EQ(enumerator->Next(4, items, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(TextOf(FootnoteIn(_variant_t(items[1], false)).Get()), L"c");
    VariantClear(&items[0]);
    EXPECT_EQ(enumerator->Reset(), S_OK);
    ComPtr<IEnumVARIANT> copy;
    EXPECT_EQ(enumerator->Clone(&copy), S_OK);
    EXPECT_EQ(copy->Next(1, items, nullptr), S_OK);
    EXPECT_EQ(TextOf(FootnoteIn(_variant_t(items[0], false)).Get()), L"a");
}

}  // namespace
}  // namespace v5::test
