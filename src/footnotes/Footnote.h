// Footnote: one mark with its text, both the client's to change.
#pragma once

#include <string>

#include "V5Strings.h"
#include "com/AutomationObject.h"

namespace v5 {

class Footnote final : public AutomationObject<Footnote, _Footnote, ::Footnote> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.Footnote";

    Footnote() = default;
    Footnote(std::wstring symbol, std::wstring_view text) : symbol_(std::move(symbol)), text_(text) {}

    const std::wstring& Symbol() const { return symbol_; }

    STDMETHODIMP get_Symbol(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(symbol_); });
    }
    STDMETHODIMP put_Symbol(BSTR symbol) override {
        return Do([&] { symbol_ = View(symbol); });
    }
    STDMETHODIMP get_Text(BSTR* result) override {
        return Return(result, [&] { return std::wstring_view(text_); });
    }
    STDMETHODIMP put_Text(BSTR text) override {
        return Do([&] { text_ = View(text); });
    }

  private:
    std::wstring symbol_;
    std::wstring text_;
};

}  // namespace v5
