// Footnote: one mark with its text, both the client's to change.
#pragma once

#include <string>

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"

namespace v5 {

class Footnote final : public AutomationObject<Footnote, _Footnote, ::Footnote> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.Footnote";

    Footnote() = default;
    Footnote(std::wstring symbol, std::wstring_view text) : mSymbol(std::move(symbol)), mText(text) {}

    const std::wstring& Symbol() const { return mSymbol; }

    STDMETHODIMP get_Symbol(BSTR* Result) override { return Get(Result, mSymbol); }
    STDMETHODIMP put_Symbol(BSTR None) override {
        return Do([&] { mSymbol = View(None); });
    }
    STDMETHODIMP get_Text(BSTR* Result) override { return Get(Result, mText); }
    STDMETHODIMP put_Text(BSTR None) override {
        return Do([&] { mText = View(None); });
    }

  private:
    std::wstring mSymbol;
    std::wstring mText;
};

}  // namespace v5
