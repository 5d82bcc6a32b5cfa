#include "footnotes/FootnoteList.h"

#include "com/AutomationCollection.h"

namespace v5 {

STDMETHODIMP FootnoteList::get_Count(long* result) {
    return Return(result, [&] { return book_.Count(); });
}

STDMETHODIMP FootnoteList::CreateOrGetFootnote(IRaiseMsg*, BSTR text, BSTR* result) {
    return ReturnQuietly(result, L"", [&] { return SymbolOf(book_.NumberOf(View(text))); });
}

STDMETHODIMP FootnoteList::GetAllFootnotes(IDispatch** result) {
    return Return(result, [&] {
        auto all = MakeObject<AutomationCollection>();
        GuardedQuietly([&] {  // short of memory, the caller gets the footnotes so far
            for (std::int32_t number = 1; number <= book_.Count(); ++number) {
                all->Append(ObjectOf(number));
            }
        });
        return all;
    });
}

std::wstring FootnoteList::SymbolOf(std::int32_t number) const {
    const auto index = static_cast<size_t>(number) - 1;
    return index < objects_.size() ? objects_[index]->Symbol() : FootnoteMark(number);
}

Footnote* FootnoteList::ObjectOf(std::int32_t number) {
    if (static_cast<size_t>(number) > objects_.size()) {
        objects_.push_back(MakeObject<Footnote>(FootnoteMark(number), book_.Text(number)));
    }
    return objects_[static_cast<size_t>(number) - 1].Get();
}

}  // namespace v5
