#include "footnotes/FootnoteList.h"

#include "com/AutomationCollection.h"

namespace v5 {

STDMETHODIMP FootnoteList::get_Count(long* Result) {
    return Get(Result, mBook.Count());
}

STDMETHODIMP FootnoteList::CreateOrGetFootnote(IRaiseMsg*, BSTR strText, BSTR* Result) {
    return ReturnQuietly(Result, L"", [&] { return SymbolOf(mBook.NumberOf(View(strText))); });
}

STDMETHODIMP FootnoteList::GetAllFootnotes(IDispatch** Result) {
    return Return(Result, [&] {
        auto all = MakeObject<AutomationCollection>();
        GuardedQuietly([&] {  // short of memory, the caller gets the footnotes so far
            for (std::int32_t number = 1; number <= mBook.Count(); ++number) {
                all->Append(ObjectOf(number));
            }
        });
        return all;
    });
}

std::wstring FootnoteList::SymbolOf(std::int32_t number) const {
    const auto index = static_cast<size_t>(number) - 1;
    return index < mObjects.size() ? mObjects[index]->Symbol() : FootnoteMark(number);
}

Footnote* FootnoteList::ObjectOf(std::int32_t number) {
    if (static_cast<size_t>(number) > mObjects.size()) {
        mObjects.push_back(MakeObject<Footnote>(FootnoteMark(number), mBook.Text(number)));
    }
    return mObjects[static_cast<size_t>(number) - 1].Get();
}

}  // namespace v5
