// A stand-in for the system's XML parser. Any operation can be made to fail, by its name.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "FailCall.h"
#include "security/UtilityXMLDOMFunctions.h"

namespace v5 {

// An element under the root, written <name|attribute=value>text</name>.
struct Node {
    std::wstring name, attributes, text;
    bool removed = false;
};

struct MemoryElement : XmlElement {
    std::shared_ptr<Node> mNode;
    Operations& m_;

    MemoryElement(std::shared_ptr<Node> node, Operations& machine) : mNode(std::move(node)), m_(machine) {}
    std::wstring Text() const override { return m_.Answer("Text", mNode->text); }
    void PutText(std::wstring_view text) override {
        m_.Require("SetText");
        mNode->text = text;
    }
    std::wstring Attribute(std::wstring_view name) const override {
        m_.Require("Attribute");
        const std::wstring mark = L"|" + std::wstring(name) + L"=", &all = mNode->attributes;
        const size_t at = all.find(mark);
        return at == all.npos ? L"" : all.substr(at + mark.size(), all.find(L'|', at + 1) - at - mark.size());
    }
    void PutAttribute(std::wstring_view name, std::wstring_view value) override {
        m_.Require("SetAttribute");
        mNode->attributes.append(L"|").append(name).append(L"=").append(value);
    }
    void Remove() override {
        m_.Require("Remove");
        mNode->removed = true;
    }
};

// A document in memory: the elements under the root, in text and back. Enough for what the rules write.
struct MemoryDocument : XmlDocument {
    Operations& m_;
    std::vector<std::shared_ptr<Node>> mNodes;

    MemoryDocument(std::wstring_view text, Operations& machine) : m_(machine) {
        size_t at = text.find(L'>') + 1;  // behind <root>
        while ((at = text.find(L'<', at)) != text.npos && text[at + 1] != L'/') {
            if (text[at + 1] == L'!') {
                at = text.find(L"-->", at);
                continue;
            }
            const size_t end = text.find(L'>', at), close = text.find(L"</", end);
            const std::wstring tag(text.substr(at + 1, end - at - 1));
            const size_t bar = std::min(tag.find(L'|'), tag.size());
            const std::wstring inside(text.substr(end + 1, close - end - 1));
            mNodes.push_back(std::make_shared<Node>(Node{tag.substr(0, bar), tag.substr(bar), inside}));
            at = text.find(L'>', close);
        }
    }
    std::vector<std::unique_ptr<XmlElement>> Select(std::wstring_view xpath) override {
        m_.Require("Select");
        const size_t filter = std::min(xpath.find(L'['), xpath.size());  // "/*/Name[@rid="1"]"
        std::vector<std::unique_ptr<XmlElement>> found;
        for (const auto& node : mNodes) {
            const bool isAsked =
                filter == xpath.size() || xpath.substr(filter) == L"[@rid=\"" + node->attributes.substr(5) + L"\"]";
            if (node->name == xpath.substr(3, filter - 3) && isAsked && !node->removed) {
                found.push_back(std::make_unique<MemoryElement>(node, m_));
            }
        }
        return found;
    }
    std::unique_ptr<XmlElement> Append(std::wstring_view name) override {
        m_.Require("Append");
        mNodes.push_back(std::make_shared<Node>(Node{std::wstring(name), L"", L""}));
        return std::make_unique<MemoryElement>(mNodes.back(), m_);
    }
    std::wstring Serialise() const override {
        m_.Require("Serialise");
        std::wstring text = L"<root>";
        for (const auto& node : mNodes) {
            if (!node->removed) {
                text += L"<" + node->name + node->attributes + L">" + node->text + L"</" + node->name + L">";
            }
        }
        return text + L"</root>";
    }
};

}  // namespace v5
