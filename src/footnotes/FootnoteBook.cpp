#include "footnotes/FootnoteBook.h"

#include <array>

namespace v5 {

namespace {

constexpr std::array<std::wstring_view, 4> kDaggers = {L"\u2020", L"\u2021", L"\u2020\u2020", L"\u2021\u2021"};

}  // namespace

std::wstring FootnoteMark(std::int32_t n) {
    const auto index = static_cast<size_t>(n) - 1;
    return index < kDaggers.size() ? std::wstring(kDaggers[index]) : L"[" + std::to_wstring(n) + L"]";
}

FootnoteRecord& FootnoteBook::CreateOrGet(std::wstring_view text) {
    if (const auto known = byText_.find(text); known != byText_.end()) {
        return *known->second;
    }
    auto footnote = std::make_shared<FootnoteRecord>(FootnoteMark(Count() + 1), std::wstring(text));
    footnotes_.push_back(footnote);
    try {
        byText_.emplace(text, footnote.get());
    } catch (...) {
        footnotes_.pop_back();
        throw;
    }
    return *footnote;
}

}  // namespace v5
