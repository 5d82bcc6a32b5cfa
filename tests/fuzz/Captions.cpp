// The caption filter and the prompt's line breaks.
#include <algorithm>

#include "dialogs/PromptWrap.h"
#include "dialogs/TimeFields.h"
#include "fuzz/Fuzz.h"

namespace {

// Ten twips a character; of several lines the widest counts.
int Width(std::wstring_view text) {
    size_t widest = 0;
    for (size_t from = 0, end = 0; end != text.npos; from = end + 2) {
        end = text.find(L"\r\n", from);
        widest = std::max(widest, std::min(end, text.size()) - from);
    }
    return static_cast<int>(widest) * 10;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    const int limit = (2 + input.Take<std::uint8_t>() % 64) * 10;  // at least a surrogate pair
    const std::wstring text = input.Text();

    const std::wstring caption = v5::FilterCaption(text);
    const size_t open = caption.find(L"{{");
    Require(open == std::wstring::npos || caption.find(L"}}", open + 2) == std::wstring::npos, "no span is left");

    const std::wstring wrapped = v5::WrapPrompt(text, limit, Width);
    Require(Width(wrapped) <= limit, "every line fits");
    Require(Width(text) > limit || wrapped == text, "a prompt that fits is unchanged");
    return 0;
}
