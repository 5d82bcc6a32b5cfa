// The type libraries against Released.tlb, the one that clients in the field were compiled against. What it holds never
// changes; what a later release adds goes to the end of its interface or enumeration, and into that file when it is
// out.
#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "component/TypeDescription.h"

namespace {

using namespace v5::test;

// One line for each thing that clients depend on: a type with its identifier, what it implements, a member, a value.
using Contract = std::set<std::wstring>;

std::wstring Text(REFGUID guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return text;
}

std::wstring TypeText(const TypeDescription& owner, const TYPEDESC& type) {
    return type.vt == VT_PTR           ? TypeText(owner, *type.lptdesc) + L'*'
           : type.vt == VT_USERDEFINED ? TypeDescription(owner.Referenced(type.hreftype)).Name()
                                       : std::to_wstring(type.vt);
}

// An empty text is not a null pointer: some clients pass it on as it is.
std::wstring ValueText(const VARIANT& value) {
    return std::to_wstring(V_VT(&value)) +
           (V_VT(&value) != VT_BSTR ? L' ' + std::to_wstring(V_VT(&value) == VT_BOOL ? V_BOOL(&value) : V_I4(&value))
            : V_BSTR(&value) == nullptr ? L" null"
                                        : L" '" + v5::test::Text(value) + L'\'');
}

std::wstring MemberText(const TypeDescription& owner, const FUNCDESC& function) {
    BSTR names[20] = {};  // of the member, and of its parameters; none for a property's new value
    UINT count = 0;
    owner.Info()->GetNames(function.memid, names, 20, &count);
    std::wstring text = Taken(names[0]) + L", kind " + std::to_wstring(function.invkind) + L", place " +
                        std::to_wstring(function.oVft / static_cast<SHORT>(sizeof(void*))) + L", gives " +
                        TypeText(owner, function.elemdescFunc.tdesc);
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        text += L"; " + Taken(names[i + 1]) + L' ' + TypeText(owner, element.tdesc) + L", flags " +
                std::to_wstring(element.paramdesc.wParamFlags);
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
            text += L" = " + ValueText(element.paramdesc.pparamdescex->varDefaultValue);
        }
    }
    return text;
}

void Describe(const TypeDescription& type, Contract& contract) {
    const std::wstring name = type.Name() + L' ';
    contract.insert(name + Text(type->guid) + L", kind " + std::to_wstring(type->typekind) + L", flags " +
                    std::to_wstring(type->wTypeFlags));
    for (UINT i = 0; i < type->cImplTypes; ++i) {
        INT flags = 0;
        type.Info()->GetImplTypeFlags(i, &flags);
        contract.insert(name + L"has " + TypeDescription(type.Implemented(i)).Name() + L", flags " +
                        std::to_wstring(flags));
    }
    const TypeDescription view(type.View());
    view.ForEachFunction([&](const FUNCDESC& function) {
        contract.insert(name + std::to_wstring(function.memid) + L' ' + MemberText(view, function));
    });
    for (UINT i = 0; i < type->cVars; ++i) {
        VARDESC* value = nullptr;
        type.Info()->GetVarDesc(i, &value);
        contract.insert(name + type.Name(value->memid) + L" = " + ValueText(*value->lpvarValue));
        type.Info()->ReleaseVarDesc(value);
    }
}

Contract Describe(ITypeLib& library) {
    Contract contract;
    TLIBATTR* attributes = nullptr;
    BSTR name = nullptr;
    library.GetLibAttr(&attributes);
    library.GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    contract.insert(L"library " + Taken(name) + L' ' + std::to_wstring(attributes->wMajorVerNum) + L'.' +
                    std::to_wstring(attributes->wMinorVerNum) + L' ' + Text(attributes->guid));
    library.ReleaseTLibAttr(attributes);
    ForEachType(library, [&](const TypeDescription& type) { Describe(type, contract); });
    return contract;
}

struct Library {
    const char* name;
    const wchar_t* path;
    SYSKIND system;
};

#ifdef _WIN64
constexpr SYSKIND kOwnSystem = SYS_WIN64;
#else
constexpr SYSKIND kOwnSystem = SYS_WIN32;
#endif

// Every copy of the library that is shipped, of both widths: automation reads either in either kind of process.
const Library kLibraries[] = {
    {"File64", L"build\\win64\\V5Strings.tlb", SYS_WIN64},
    {"File32", L"build\\win32\\V5Strings.tlb", SYS_WIN32},
    {"Resource64", L"build\\win64\\V5Strings.dll", SYS_WIN64},
    {"Resource32", L"build\\win32\\V5Strings.dll", SYS_WIN32},
    {"Registered", nullptr, kOwnSystem},
};

class ContractTest : public testing::TestWithParam<Library> {
  protected:
    void SetUp() override {
        const Library& library = GetParam();
        const HRESULT status =
            library.path == nullptr
                ? LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &mLibrary)
                : LoadTypeLibEx(std::filesystem::absolute(library.path).c_str(), REGKIND_NONE, &mLibrary);
        ASSERT_EQ(status, S_OK) << "not there; run the tests in the project's folder";
    }

    ComPtr<ITypeLib> mLibrary;
};

INSTANTIATE_TEST_SUITE_P(All, ContractTest, testing::ValuesIn(kLibraries),
                         [](const auto& library) { return std::string(library.param.name); });

TEST_P(ContractTest, IsTheReleasedOne) {
    ComPtr<ITypeLib> released;
    ASSERT_EQ(
        LoadTypeLibEx(std::filesystem::absolute(L"tests\\component\\Released.tlb").c_str(), REGKIND_NONE, &released),
        S_OK);
    const Contract ours = Describe(*mLibrary.Get()), theirs = Describe(*released.Get());
    EXPECT_GT(theirs.size(), 400U) << "the file describes too little";
    std::vector<std::wstring> differences;
    std::set_symmetric_difference(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                                  std::back_inserter(differences));
    EXPECT_EQ(differences, std::vector<std::wstring>());
}

TEST_P(ContractTest, IsMadeForItsWidth) {
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(mLibrary->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->syskind, GetParam().system);
    mLibrary->ReleaseTLibAttr(attributes);
}

// Help as an object browser shows it: a sentence for the library, every type and every member.
void ExpectSentence(const std::string& help, const std::string& about) {
    EXPECT_GE(help.size(), 8U) << about;
    EXPECT_TRUE(!help.empty() && help.back() == '.' && (isupper(help.front()) != 0)) << about << ": " << help;
    EXPECT_EQ(help.find("  "), std::string::npos) << about << ": " << help;
}

TEST_P(ContractTest, ExplainsEverythingInSentences) {
    BSTR help = nullptr;
    mLibrary->GetDocumentation(MEMBERID_NIL, nullptr, &help, nullptr, nullptr);
    const std::string libraryHelp = Narrow(Taken(help));
    EXPECT_NE(libraryHelp.find("Vantor 5"), std::string::npos) << libraryHelp;
    ForEachType(*mLibrary.Get(), [](const TypeDescription& type) {
        ExpectSentence(type.Help(), Narrow(type.Name()));
        const TypeDescription view(type.View());
        view.ForEachFunction([&](const FUNCDESC& function) {
            ExpectSentence(view.Help(function.memid), Narrow(type.Name() + L'.' + view.Name(function.memid)));
        });
    });
}

}  // namespace
