// Footnote numbering for reports: one number, and so one mark, for each distinct text, in the order in which texts are
// first asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace v5 {

// The mark of the n-th footnote (from 1): dagger, double dagger, each of them doubled, then "[5]", "[6]" and so on.
std::wstring FootnoteMark(std::int32_t n);

// Kept compact, because a report asks for its footnotes far more often than it adds one: a request touches one slot of
// the hash table and the text itself, both in storage that a hundred thousand footnotes share.
class FootnoteBook {
  public:
    // The number of distinct footnotes so far.
    std::int32_t Count() const { return static_cast<std::int32_t>(mEnds.size()); }

    // The number, from 1, of the footnote for exactly this text: case and blanks count, an empty text is a text. A text
    // that is asked for the first time takes the next number. Throws std::bad_alloc, and the book is then as before.
    std::int32_t NumberOf(std::wstring_view text);

    // The text of footnote `number`, 1 to Count(). Valid until the next NumberOf.
    std::wstring_view Text(std::int32_t number) const;

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::int32_t number = 0;  // 0: free
    };

    Slot& Find(std::wstring_view text, std::uint32_t hash);
    void Grow();

    std::wstring mTexts;        // all texts, one after the other
    std::vector<size_t> mEnds;  // where each text ends in mTexts
    std::vector<Slot> mSlots;   // open addressing; a power of two, at most seven eighths of them taken
};

}  // namespace v5
