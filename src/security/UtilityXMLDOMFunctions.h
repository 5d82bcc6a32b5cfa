// An XML document as the security rules use it: a port over the system's parser, and what is checked before parsing.
#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace v5 {

// Whether a document can hold `text` and give it back unchanged: only the characters of XML 1.0 (section 2.2: no
// control characters but tab and line feed, no U+FFFE and U+FFFF, no half surrogate pairs), and no carriage return,
// which parsers read as a line feed (section 2.11).
bool IsXmlText(std::wstring_view text);

// Thrown for a text that is not IsXmlText: parsers drop or replace what they cannot hold without a word.
class NoXmlText : public std::exception {
  public:
    const char* what() const noexcept override { return "the text has a character that XML cannot hold"; }
};

class XmlElement {
  public:
    virtual ~XmlElement() = default;

    // The text with every white space in it; TrimXml takes what surrounds it away.
    virtual std::wstring Text() const = 0;

    // Empty when there is no such attribute.
    virtual std::wstring Attribute(std::wstring_view name) const = 0;

    // Both throw NoXmlText, before anything is changed.
    void SetText(std::wstring_view text);
    void SetAttribute(std::wstring_view name, std::wstring_view value);

    // Takes the element out of its document.
    virtual void Remove() = 0;

  protected:
    virtual void PutText(std::wstring_view text) = 0;
    virtual void PutAttribute(std::wstring_view name, std::wstring_view value) = 0;
};

// A well-formed document. What the rules do not touch (unknown elements, comments, white space) stays as it is.
// Members throw AutomationError when the parser fails.
class XmlDocument {
  public:
    virtual ~XmlDocument() = default;

    // The elements that an XPath selects, in document order.
    virtual std::vector<std::unique_ptr<XmlElement>> Select(std::wstring_view xpath) = 0;

    // A new last element under the root.
    virtual std::unique_ptr<XmlElement> Append(std::wstring_view name) = 0;

    virtual std::wstring Serialise() const = 0;
};

// The first element that `xpath` selects; null when there is none.
std::unique_ptr<XmlElement> SelectFirst(XmlDocument& document, std::wstring_view xpath);

// `text` without the white space of XML (blanks, tabs, line breaks) around it.
std::wstring_view TrimXml(std::wstring_view text);

// The longest text that is given to the parser, in UTF-16 units: a thousand changes a day for forty years. It protects
// against hostile input, no more.
inline constexpr std::size_t kMaxDocumentCharacters = std::size_t{64} * 1024 * 1024;

// Whether a stored text may be given to the parser: not too long, and a root element first, after comments and
// processing instructions only. So no document type declaration, which can make a parser expand or fetch without end,
// can reach it: a declaration stands before the root element or nowhere.
bool IsSafeToParse(std::wstring_view text);

}  // namespace v5
