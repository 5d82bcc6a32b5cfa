#include "security/UtilityXMLDOMFunctions.h"

namespace v5 {

namespace {

constexpr size_t kMaxDocumentCharacters = size_t{4} * 1024 * 1024;

constexpr std::wstring_view kXmlWhiteSpace = L" \t\r\n";

// Drops `open`...`close` from the start of `text`; false when it does not start with `open`. What is never closed is
// dropped to the end: it is for the parser to refuse.
bool SkipConstruct(std::wstring_view& text, std::wstring_view open, std::wstring_view close) {
    if (!text.starts_with(open)) {
        return false;
    }
    const size_t end = text.find(close, open.size());
    text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + close.size());
    return true;
}

void SkipWhiteSpace(std::wstring_view& text) {
    const size_t start = text.find_first_not_of(kXmlWhiteSpace);
    text.remove_prefix(start == std::wstring_view::npos ? text.size() : start);
}

}  // namespace

std::unique_ptr<XmlElement> SelectFirst(XmlDocument& document, std::wstring_view xpath) {
    auto elements = document.Select(xpath);
    return elements.empty() ? nullptr : std::move(elements.front());
}

std::wstring_view TrimXml(std::wstring_view text) {
    SkipWhiteSpace(text);
    return text.substr(0, text.find_last_not_of(kXmlWhiteSpace) + 1);
}

bool IsSafeToParse(std::wstring_view text) {
    if (text.size() > kMaxDocumentCharacters) {
        return false;
    }
    do {
        SkipWhiteSpace(text);
    } while (SkipConstruct(text, L"<!--", L"-->") || SkipConstruct(text, L"<?", L"?>"));
    return !text.starts_with(L"<!");
}

}  // namespace v5
