// Breaks a message box's prompt into lines that fit.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace v5 {

// The width of a text in the box's font, in twips (1/1440 inch); of several lines, the widest counts.
using TextWidth = std::function<int(std::wstring_view)>;

// `prompt` unchanged if it is at most `limit` twips wide, else with every longer line (lines end with CR LF) broken
// at its last blank before which the text fits. The blank at a break is dropped, so is a blank at the start of a line
// that must be broken. A first word that does not fit by itself is cut between characters; a piece holds at least one
// character, however narrow the limit.
std::wstring WrapPrompt(std::wstring_view prompt, int limit, const TextWidth& width);

}  // namespace v5
