// Values as JSON text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Settings.h"

namespace v5site {

// The form of what --json prints; another number when a member changes its meaning.
inline constexpr int kJsonSchema = 1;

std::wstring JsonText(std::wstring_view text);
std::wstring JsonValue(const Value& value);

// An array or an object of finished JSON texts, one a line, indented by `depth` steps.
std::wstring JsonArray(const std::vector<std::wstring>& items, int depth);
std::wstring JsonObject(const std::vector<std::pair<std::wstring, std::wstring>>& members, int depth);
std::wstring JsonTexts(const std::vector<std::wstring>& texts, int depth);
std::wstring JsonSettings(const std::vector<Setting>& settings, int depth);

// What --json prints: an object that begins with the number of its form.
std::wstring JsonDocument(std::vector<std::pair<std::wstring, std::wstring>> members);

// What --json prints of a command that could not do its work: the exit status and the reasons.
std::wstring JsonFailure(int status, const std::vector<std::wstring>& messages);

}  // namespace v5site
