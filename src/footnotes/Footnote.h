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

    STDMETHODIMP get_Symbol(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(mSymbol); });
    }
    STDMETHODIMP put_Symbol(BSTR symbol) override {
        return Do([&] { mSymbol = View(symbol); });
    }
    STDMETHODIMP get_Text(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(mText); });
    }
    STDMETHODIMP put_Text(BSTR text) override {
        return Do([&] { mText = View(text); });
    }

  private:
    std::wstring mSymbol;
    std::wstring mText;
};

}  // namespace v5
