// Describes the members of a contract's dual interfaces for late-bound calls (see src/com/DispatchMember.h).
//
//   write-dispatch-members CONTRACT.idl CONTRACTMembers.h
//
// reads the interfaces of CONTRACT.idl, written as they are in this project: each derives from IDispatch, each member
// gives its attributes before HRESULT, each parameter before its type. Whatever else it meets in an interface, it
// refuses.
#include <cctype>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

std::string ReadContract(const char* path) {
    std::ifstream file(path);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.empty()) {
        throw std::runtime_error("cannot be read");
    }
    return std::regex_replace(text, std::regex(R"re(helpstring\("[^"]*"\)|//[^\n]*)re"), "");  // both may hold any sign
}

// Calls `use` with each match; what lies between them may only be blank.
template <class Use>
void ForEach(const std::string& text, const std::regex& pattern, const Use& use) {
    for (std::sregex_iterator match(text.begin(), text.end(), pattern); match != std::sregex_iterator(); ++match) {
        use(*match);
    }
    const std::string rest = std::regex_replace(text, pattern, "");
    if (rest.find_first_not_of(" \t\r\n") != std::string::npos) {
        throw std::runtime_error("not understood: " + rest);
    }
}

bool Has(const std::string& attributes, const char* word) {
    return std::regex_search(attributes, std::regex(std::string("\\b") + word + "\\b"));
}

// The value in brackets behind an attribute; empty when there is none.
std::string ValueOf(const std::string& attributes, const char* word) {
    std::smatch found;
    const std::regex pattern(std::string("\\b") + word + R"re(\(([^)]*)\))re");
    return std::regex_search(attributes, found, pattern) ? found[1].str() : std::string();
}

struct Member {
    std::string parameters;  // their descriptions, none for a member without parameters
    std::string result = "{}";
};

Member ReadParameters(const std::string& text) {
    static const std::regex pattern(R"re(\[([^\]]*)\]\s*(\w+)\s*(\**)\s*(\w+)\s*(?:,|$))re");
    Member member;
    ForEach(text, pattern, [&](const std::smatch& match) {
        const std::string attributes = match[1], stars = match[3], name = match[4];
        const bool isOut = Has(attributes, "out");
        const std::string type = "TypeInVariant<" + match[2].str() + stars.substr(isOut ? 1 : 0) + ">()";
        if (Has(attributes, "retval")) {
            member.result = type;
            return;
        }
        const std::string value = ValueOf(attributes, "defaultvalue");
        const bool isNumber = !value.empty() && value != "\"\"";
        const bool isNamed = isNumber && std::isalpha(static_cast<unsigned char>(value[0])) != 0;
        member.parameters += "        {\"" + name + "\", " + type + ", " + (isOut ? "true" : "false") + ", " +
                             (Has(attributes, "optional") ? "true" : "false") + ", " +
                             (isNamed ? match[2].str() + "::" : "") + (isNumber ? value : "0") + "},\n";
    });
    return member;
}

std::string Describe(const std::string& name, const std::string& body) {
    static const std::regex pattern(R"re(\[([^\]]*)\]\s*HRESULT\s+(\w+)\s*\(([^;]*)\)\s*;)re");
    std::ostringstream parameters, members;
    int count = 0;
    ForEach(body, pattern, [&](const std::smatch& match) {
        const std::string attributes = match[1], member = match[2];
        const bool isGet = Has(attributes, "propget"), isPut = Has(attributes, "propput");
        const std::string method = (isGet ? "get_" : isPut ? "put_" : "") + member;
        const Member read = ReadParameters(match[3]);
        if (!read.parameters.empty()) {
            parameters << "    static constexpr DispatchParameter k" << method << "[] = {\n"
                       << read.parameters << "    };\n";
        }
        members << "        {\"" << member << "\", " << ValueOf(attributes, "id") << ", "
                << (isGet   ? "INVOKE_PROPERTYGET"
                    : isPut ? "INVOKE_PROPERTYPUT"
                            : "INVOKE_FUNC")
                << ", " << (read.parameters.empty() ? "{}" : "k" + method) << ", " << read.result << ", &DispatchCall<&"
                << name << "::" << method << ">::Call},\n";
        ++count;
    });
    std::ostringstream text;
    text << "template <>\nstruct DispatchMembers<" << name << "> {\n"
         << parameters.str() << "    static constexpr std::array<DispatchMember, " << count << "> kAll";
    count == 0 ? text << "{};\n};\n\n" : text << " = {{\n" << members.str() << "    }};\n};\n\n";
    return text.str();
}

void Write(const char* contract, const std::string& output) {
    const std::string text = ReadContract(contract);
    const std::string name = output.substr(output.find_last_of('/') + 1);
    std::ofstream file(output);
    file << "// Made from the contract; see com/DispatchMember.h.\n#pragma once\n\n#include <array>\n\n#include \""
         << std::regex_replace(name, std::regex("Members\\.h$"), ".h") << "\"\n#include \"com/DispatchMember.h\"\n\n"
         << "namespace v5 {\n\n";
    static const std::regex pattern(R"re(\binterface\s+(\w+)\s*:\s*IDispatch\s*\{([^}]*)\})re");
    for (std::sregex_iterator match(text.begin(), text.end(), pattern); match != std::sregex_iterator(); ++match) {
        file << Describe((*match)[1], (*match)[2]);
    }
    file << "}  // namespace v5\n";
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + output);
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 3) {
            throw std::runtime_error("usage: write-dispatch-members CONTRACT.idl CONTRACTMembers.h");
        }
        Write(argv[1], argv[2]);
        return 0;
    } catch (const std::exception& error) {
        static_cast<void>(
            std::fprintf(stderr, "%s: %s\n", argc > 1 ? argv[1] : "write-dispatch-members", error.what()));
        return 1;
    }
}
