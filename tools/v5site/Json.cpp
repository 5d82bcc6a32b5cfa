#include "Json.h"

#include <array>
#include <cwchar>

namespace v5site {

namespace {

std::wstring Escaped(wchar_t c) {
    switch (c) {
        case L'"':
            return L"\\\"";
        case L'\\':
            return L"\\\\";
        case L'\n':
            return L"\\n";
        case L'\r':
            return L"\\r";
        case L'\t':
            return L"\\t";
        default:
            break;
    }
    if (c >= 0x20) {
        return {c};
    }
    std::array<wchar_t, 8> code{};
    static_cast<void>(std::swprintf(code.data(), code.size(), L"\\u%04X", static_cast<unsigned>(c)));
    return code.data();
}

std::wstring Block(wchar_t open, wchar_t close, const std::vector<std::wstring>& lines, int depth) {
    if (lines.empty()) {
        return {open, close};
    }
    const std::wstring indent(static_cast<size_t>(depth) * 2, L' ');
    std::wstring text(1, open);
    for (size_t i = 0; i < lines.size(); ++i) {
        text += (i == 0 ? L"\n  " : L",\n  ") + indent + lines[i];
    }
    return text + L"\n" + indent + close;
}

}  // namespace

std::wstring JsonText(std::wstring_view text) {
    std::wstring json = L"\"";
    for (const wchar_t c : text) {
        json += Escaped(c);
    }
    return json + L"\"";
}

std::wstring JsonValue(const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        return JsonText(*text);
    }
    if (const auto* number = std::get_if<long>(&value)) {
        return std::to_wstring(*number);
    }
    return std::get<bool>(value) ? L"true" : L"false";
}

std::wstring JsonArray(const std::vector<std::wstring>& items, int depth) {
    return Block(L'[', L']', items, depth);
}

std::wstring JsonObject(const std::vector<std::pair<std::wstring, std::wstring>>& members, int depth) {
    std::vector<std::wstring> lines;
    lines.reserve(members.size());
    for (const auto& [name, value] : members) {
        lines.push_back(JsonText(name) + L": " + value);
    }
    return Block(L'{', L'}', lines, depth);
}

std::wstring JsonSettings(const std::vector<Setting>& settings, int depth) {
    std::vector<std::pair<std::wstring, std::wstring>> members;
    members.reserve(settings.size());
    for (const Setting& setting : settings) {
        members.emplace_back(setting.name, JsonValue(setting.value));
    }
    return JsonObject(members, depth);
}

std::wstring JsonTexts(const std::vector<std::wstring>& texts, int depth) {
    std::vector<std::wstring> items;
    items.reserve(texts.size());
    for (const std::wstring& text : texts) {
        items.push_back(JsonText(text));
    }
    return JsonArray(items, depth);
}

std::wstring JsonDocument(std::vector<std::pair<std::wstring, std::wstring>> members) {
    members.insert(members.begin(), {L"schema", std::to_wstring(kJsonSchema)});
    return JsonObject(members, 0) + L"\n";
}

std::wstring JsonFailure(int status, const std::vector<std::wstring>& messages) {
    return JsonDocument({{L"status", std::to_wstring(status)}, {L"messages", JsonTexts(messages, 1)}});
}

}  // namespace v5site
