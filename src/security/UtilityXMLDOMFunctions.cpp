#include "security/UtilityXMLDOMFunctions.h"

#include <cstdint>

namespace v5 {

namespace {

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

bool IsXmlText(std::wstring_view text) {
    for (size_t i = 0; i < text.size(); ++i) {
        // Code units as the numbers that they are: wchar_t has 32 bits on other systems.
        const auto unit = static_cast<std::uint32_t>(text[i]);
        const bool isLead = unit >= 0xD800 && unit <= 0xDBFF;
        if (isLead && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            ++i;
        } else if ((unit < L' ' && unit != L'\t' && unit != L'\n') || (unit >= 0xD800 && unit <= 0xDFFF) ||
                   unit == 0xFFFE || unit == 0xFFFF) {
            return false;
        }
    }
    return true;
}

void XmlElement::SetText(std::wstring_view text) {
    if (!IsXmlText(text)) {
        throw NoXmlText();
    }
    PutText(text);
}

void XmlElement::SetAttribute(std::wstring_view name, std::wstring_view value) {
    if (!IsXmlText(value)) {
        throw NoXmlText();
    }
    PutAttribute(name, value);
}

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
    return text.starts_with(L'<') && !text.starts_with(L"<!");
}

}  // namespace v5
