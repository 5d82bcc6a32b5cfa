// FootnoteList: hands out footnote marks while a report is rendered, one for each different text.
#pragma once

#include <vector>

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "footnotes/Footnote.h"
#include "footnotes/FootnoteBook.h"

namespace v5 {

class FootnoteList final : public AutomationObject<FootnoteList, _FootnoteList, ::FootnoteList> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.FootnoteList";

    STDMETHODIMP get_Count(long* Result) override;
    STDMETHODIMP CreateOrGetFootnote(IRaiseMsg* irm, BSTR strText, BSTR* Result) override;
    STDMETHODIMP GetAllFootnotes(IDispatch** Result) override;

  private:
    std::wstring SymbolOf(std::int32_t number) const;
    Footnote* ObjectOf(std::int32_t number);

    FootnoteBook mBook;

    // The footnotes that a client has seen as objects, the first ones of the book: such an object is the footnote from
    // then on, its symbol included.
    std::vector<ComPtr<Footnote>> mObjects;
};

}  // namespace v5
