// An XML document as the security rules use it: a port over the system's parser, and what is checked before parsing.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace v5 {

class XmlElement {
  public:
    virtual ~XmlElement() = default;

    // The text with every white space in it; TrimXml takes what surrounds it away.
    virtual std::wstring Text() const = 0;
    virtual void SetText(std::wstring_view text) = 0;

    // Empty when there is no such attribute.
    virtual std::wstring Attribute(std::wstring_view name) const = 0;
    virtual void SetAttribute(std::wstring_view name, std::wstring_view value) = 0;

    // Takes the element out of its document.
    virtual void Remove() = 0;
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

// Whether a stored text may be given to the parser: of a reasonable size (stored documents are a few thousand
// characters), and without a document type declaration, which can make a parser expand or fetch without end. A
// declaration can stand only before the root element, so that is where it is looked for.
bool IsSafeToParse(std::wstring_view text);

}  // namespace v5
