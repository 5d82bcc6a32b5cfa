#include "security/MsxmlDocument.h"

#include <windows.h>

#include <msxml2.h>

#include "com/Guard.h"
#include "com/Values.h"

namespace v5 {

namespace {

// MSXML2.DOMDocument.6.0, and 3.0 for a machine without it.
constexpr CLSID kParsers[] = {
    {0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}},
    {0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}},
};

// IXMLDOMDocument2, which the import libraries lack.
constexpr IID kDocument2 = {0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

class MsxmlElement : public XmlElement {
  public:
    explicit MsxmlElement(ComPtr<IXMLDOMElement> element) : mElement(std::move(element)) {}

    std::wstring Text() const override {
        BSTR text = nullptr;
        Check(mElement->get_text(&text));
        return TakeText(text);
    }
    void PutText(std::wstring_view text) override { Check(mElement->put_text(ToBstr(text))); }

    std::wstring Attribute(std::wstring_view name) const override {
        _variant_t value;
        Check(mElement->getAttribute(ToBstr(name), &value));
        return value.vt == VT_BSTR ? std::wstring(View(value.bstrVal)) : std::wstring();
    }
    void PutAttribute(std::wstring_view name, std::wstring_view value) override {
        Check(mElement->setAttribute(ToBstr(name), _variant_t(ToBstr(value))));
    }

    void Remove() override {
        ComPtr<IXMLDOMNode> parent;
        Check(mElement->get_parentNode(&parent));
        if (parent) {
            Check(parent->removeChild(mElement.Get(), nullptr));
        }
    }

  private:
    ComPtr<IXMLDOMElement> mElement;
};

class MsxmlDocument : public XmlDocument {
  public:
    explicit MsxmlDocument(ComPtr<IXMLDOMDocument2> document) : mDocument(std::move(document)) {}

    std::vector<std::unique_ptr<XmlElement>> Select(std::wstring_view xpath) override {
        ComPtr<IXMLDOMNodeList> nodes;
        Check(mDocument->selectNodes(ToBstr(xpath), &nodes));
        Require(nodes);
        std::vector<std::unique_ptr<XmlElement>> elements;
        ComPtr<IXMLDOMNode> node;
        while (Next(*nodes.Get(), node)) {
            ComPtr<IXMLDOMElement> element;
            Check(node->QueryInterface(IID_IXMLDOMElement, &element));
            elements.push_back(std::make_unique<MsxmlElement>(std::move(element)));
        }
        return elements;
    }

    std::unique_ptr<XmlElement> Append(std::wstring_view name) override {
        ComPtr<IXMLDOMElement> root, element;
        Check(mDocument->get_documentElement(&root));
        Require(root);
        Check(mDocument->createElement(ToBstr(name), &element));
        Require(element);
        Check(root->appendChild(element.Get(), nullptr));
        return std::make_unique<MsxmlElement>(std::move(element));
    }

    std::wstring Serialise() const override {
        BSTR text = nullptr;
        Check(mDocument->get_xml(&text));
        return TakeText(text);
    }

  private:
    static bool Next(IXMLDOMNodeList& nodes, ComPtr<IXMLDOMNode>& node) {
        const HRESULT status = nodes.nextNode(&node);
        Check(status);  // the end is S_FALSE; a list that breaks off is no shorter list
        return status == S_OK && node;
    }

    ComPtr<IXMLDOMDocument2> mDocument;
};

ComPtr<IXMLDOMDocument2> NewParser() {
    ComPtr<IXMLDOMDocument2> parser;
    HRESULT status = E_FAIL;
    for (const CLSID& clsid : kParsers) {
        status = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, kDocument2, &parser);
        if (SUCCEEDED(status)) {
            break;
        }
    }
    Check(status);
    return parser;
}

void Restrict(IXMLDOMDocument2& parser) {
    Check(parser.put_async(VARIANT_FALSE));
    Check(parser.put_resolveExternals(VARIANT_FALSE));
    Check(parser.put_validateOnParse(VARIANT_FALSE));
    Check(parser.put_preserveWhiteSpace(VARIANT_TRUE));
    Check(parser.setProperty(ToBstr(L"SelectionLanguage"), _variant_t(L"XPath")));
    // A parser that does not know this property is given no document type either: see IsSafeToParse.
    parser.setProperty(ToBstr(L"ProhibitDTD"), _variant_t(true));
}

}  // namespace

std::unique_ptr<XmlDocument> ParseWithMsxml(std::wstring_view text) {
    ComPtr<IXMLDOMDocument2> parser = NewParser();
    Restrict(*parser.Get());
    VARIANT_BOOL parsed = VARIANT_FALSE;
    Check(parser->loadXML(ToBstr(text), &parsed));
    return ToBool(parsed) ? std::make_unique<MsxmlDocument>(std::move(parser)) : nullptr;
}

}  // namespace v5
