#include "footnotes/FootnoteBook.h"

#include <array>
#include <functional>

namespace v5 {

namespace {

constexpr std::array<std::wstring_view, 4> kDaggers = {L"\u2020", L"\u2021", L"\u2020\u2020", L"\u2021\u2021"};
constexpr size_t kFirstSlots = 64;

}  // namespace

std::wstring FootnoteMark(std::int32_t n) {
    const auto index = static_cast<size_t>(n) - 1;
    return index < kDaggers.size() ? std::wstring(kDaggers[index]) : L"[" + std::to_wstring(n) + L"]";
}

std::int32_t FootnoteBook::NumberOf(std::wstring_view text) {
    const auto hash = static_cast<std::uint32_t>(std::hash<std::wstring_view>()(text));
    if (!mSlots.empty()) {
        if (const Slot& known = Find(text, hash); known.number != 0) {
            return known.number;
        }
    }
    if (8 * mEnds.size() >= 7 * mSlots.size()) {
        Grow();
    }
    mEnds.push_back(mTexts.size() + text.size());
    try {
        mTexts.append(text);
    } catch (...) {
        mEnds.pop_back();
        throw;
    }
    Find(text, hash) = {hash, Count()};
    return Count();
}

std::wstring_view FootnoteBook::Text(std::int32_t number) const {
    const auto index = static_cast<size_t>(number) - 1;
    const size_t start = index == 0 ? 0 : mEnds[index - 1];
    return std::wstring_view(mTexts).substr(start, mEnds[index] - start);
}

// The slot of a text, or the free one where it belongs.
FootnoteBook::Slot& FootnoteBook::Find(std::wstring_view text, std::uint32_t hash) {
    const size_t mask = mSlots.size() - 1;
    size_t at = hash & mask;
    while (mSlots[at].number != 0 && (mSlots[at].hash != hash || Text(mSlots[at].number) != text)) {
        at = (at + 1) & mask;
    }
    return mSlots[at];
}

void FootnoteBook::Grow() {
    std::vector<Slot> slots(mSlots.empty() ? kFirstSlots : 2 * mSlots.size());
    const size_t mask = slots.size() - 1;
    for (const Slot& slot : mSlots) {
        if (slot.number != 0) {
            size_t at = slot.hash & mask;
            while (slots[at].number != 0) {
                at = (at + 1) & mask;
            }
            slots[at] = slot;
        }
    }
    mSlots.swap(slots);
}

}  // namespace v5
