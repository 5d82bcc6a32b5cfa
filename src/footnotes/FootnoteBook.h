// Footnote numbering for reports: one mark for each distinct text, in the order in which texts are first asked for.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace v5 {

// One footnote. Both texts are the client's to change; the book finds the footnote by the text it was asked for.
struct FootnoteRecord {
    std::wstring symbol;
    std::wstring text;
};

// The mark of the n-th footnote (from 1): dagger, double dagger, each of them doubled, then "[5]", "[6]" and so on.
std::wstring FootnoteMark(std::int32_t n);

class FootnoteBook {
  public:
    // The number of distinct footnotes so far.
    std::int32_t Count() const { return static_cast<std::int32_t>(footnotes_.size()); }

    // The footnote for exactly this text: case and blanks count, an empty text is a text. Created on the first request.
    // Throws std::bad_alloc, and the book is then as before.
    FootnoteRecord& CreateOrGet(std::wstring_view text);

    // All footnotes in the order in which they were created.
    const std::vector<std::shared_ptr<FootnoteRecord>>& All() const { return footnotes_; }

  private:
    struct TextHash {
        using is_transparent = void;  // look up without a copy of the text
        size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
    };

    std::vector<std::shared_ptr<FootnoteRecord>> footnotes_;
    std::unordered_map<std::wstring, FootnoteRecord*, TextHash, std::equal_to<>> byText_;
};

}  // namespace v5
