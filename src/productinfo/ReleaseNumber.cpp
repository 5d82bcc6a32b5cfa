#include "productinfo/ReleaseNumber.h"

#include <algorithm>
#include <string_view>

#include "ProductConstants.h"

namespace v5 {
namespace {

struct KindRule {
    ReleaseKind kind;
    std::wstring_view upgradeCode;
    std::wstring_view fallback;  // the text when the product's name says nothing about its release
};

constexpr KindRule kRules[] = {
    {ReleaseKind::Short, product::kUpgradeCodeMain, L"Release ??"},
    {ReleaseKind::Full, product::kUpgradeCodeMain, L"Release ??"},
    {ReleaseKind::FullNoPrefix, product::kUpgradeCodeMain, L"??"},
    {ReleaseKind::SupportFiles, product::kUpgradeCodeSupportFiles, {}},  // its name is its release
    {ReleaseKind::Web, product::kUpgradeCodeWeb, L"VantorWeb ??"},
};

const KindRule* FindRule(ReleaseKind kind) {
    for (const KindRule& rule : kRules) {
        if (rule.kind == kind) {
            return &rule;
        }
    }
    return nullptr;
}

std::wstring ProductNameOrEmpty(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode) {
    try {
        return InstalledProductName(installer, sink, upgradeCode);
    } catch (...) {
        return {};
    }
}

// A name without a digit leaves the fallback, which then gets the prefix once more: "Release Release ??". Callers
// have always seen it so.
std::wstring MainProductRelease(const KindRule& rule, const std::wstring& name) {
    const size_t digit = name.find_first_of(L"0123456789");
    std::wstring text = digit == std::wstring::npos ? std::wstring(rule.fallback) : name.substr(digit);
    if (rule.kind == ReleaseKind::Short) {
        text.resize(std::min(text.rfind(L'.'), text.size()));
    }
    return rule.kind == ReleaseKind::FullNoPrefix ? text : L"Release " + text;
}

}  // namespace

std::wstring ReleaseNumber(InstallerQueries& installer, MessageSink* sink, ReleaseKind kind) {
    const KindRule* rule = FindRule(kind);
    if (!rule) {
        return {};
    }
    std::wstring name = ProductNameOrEmpty(installer, sink, rule->upgradeCode);
    if (name.empty()) {
        return {};
    }
    switch (kind) {
        case ReleaseKind::SupportFiles:
            return name;
        case ReleaseKind::Web:
            return std::wstring(rule->fallback);
        default:
            return MainProductRelease(*rule, name);
    }
}

}  // namespace v5
