// A stand-in for the system's XML parser. Any operation can be made to fail, by its name.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "FakeSecurityHost.h"
#include "base/Text.h"

namespace v5 {

// A document in memory: the elements under the root, in text and back. Enough for what the rules write.
struct Node {
    std::wstring name, text;
    std::vector<std::pair<std::wstring, std::wstring>> attributes;
    bool removed = false;
};

class MemoryElement : public XmlElement {
  public:
    MemoryElement(std::shared_ptr<Node> node, FakeMachine& machine) : mNode(std::move(node)), m_(machine) {}
    std::wstring Text() const override {
        m_.Require("Text");
        return mNode->text;
    }
    void PutText(std::wstring_view text) override {
        m_.Require("SetText");
        mNode->text = text;
    }
    std::wstring Attribute(std::wstring_view name) const override {
        m_.Require("Attribute");
        for (const auto& [known, value] : mNode->attributes) {
            if (known == name) {
                return value;
            }
        }
        return {};
    }
    void PutAttribute(std::wstring_view name, std::wstring_view value) override {
        m_.Require("SetAttribute");
        mNode->attributes.emplace_back(name, value);
    }
    void Remove() override {
        m_.Require("Remove");
        mNode->removed = true;
    }

  private:
    std::shared_ptr<Node> mNode;
    FakeMachine& m_;
};

class MemoryDocument : public XmlDocument {
  public:
    MemoryDocument(std::wstring_view text, FakeMachine& machine) : m_(machine) {
        size_t at = text.find(L'>') + 1;  // behind <root>
        while ((at = text.find(L'<', at)) != std::wstring_view::npos && text[at + 1] != L'/') {
            if (text[at + 1] == L'!') {
                at = text.find(L"-->", at);
                continue;
            }
            auto node = std::make_shared<Node>();
            const size_t end = text.find(L'>', at);
            for (const std::wstring& word : Split(text.substr(at + 1, end - at - 1), L'|')) {
                const size_t equals = word.find(L'=');
                if (equals == std::wstring::npos) {
                    node->name = word;
                } else {
                    node->attributes.emplace_back(word.substr(0, equals), word.substr(equals + 1));
                }
            }
            at = text.find(L"</", end);
            node->text = text.substr(end + 1, at - end - 1);
            at = text.find(L'>', at);
            mNodes.push_back(std::move(node));
        }
    }
    std::vector<std::unique_ptr<XmlElement>> Select(std::wstring_view xpath) override {
        m_.Require("Select");
        const std::wstring_view name = xpath.substr(3, xpath.find(L'[') - 3);  // "/*/Name[@rid="1"]"
        std::vector<std::unique_ptr<XmlElement>> found;
        for (const auto& node : mNodes) {
            const bool hasRid =
                xpath.ends_with(L']') ? xpath.ends_with(L"\"" + node->attributes.at(0).second + L"\"]") : true;
            if (node->name == name && hasRid && !node->removed) {
                found.push_back(std::make_unique<MemoryElement>(node, m_));
            }
        }
        return found;
    }
    std::unique_ptr<XmlElement> Append(std::wstring_view name) override {
        m_.Require("Append");
        mNodes.push_back(std::make_shared<Node>());
        mNodes.back()->name = name;
        return std::make_unique<MemoryElement>(mNodes.back(), m_);
    }
    std::wstring Serialise() const override {
        m_.Require("Serialise");
        std::wstring text = L"<root>";
        for (const auto& node : mNodes) {
            if (node->removed) {
                continue;
            }
            text += L"<" + node->name;
            for (const auto& [name, value] : node->attributes) {
                text += L"|" + name + L"=" + value;
            }
            text += L">" + node->text + L"</" + node->name + L">";
        }
        return text + L"</root>";
    }

  private:
    FakeMachine& m_;
    std::vector<std::shared_ptr<Node>> mNodes;
};

}  // namespace v5
