// The type libraries against Released.tlb, the one that clients in the field were compiled against. What it holds never
// changes; what a later release adds goes to the end of its interface or enumeration, and into that file when it is
// out.
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "V5Strings.h"
#include "component/Client.h"

namespace {

using v5::test::ComPtr;
using v5::test::Narrow;
using v5::test::Taken;

// One line for each thing that clients depend on: "member _NimboHelp 1 1 method ShowHelp(…)", "value …", "class …".
using Contract = std::set<std::string>;

std::string Text(REFGUID guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, 39);
    return Narrow(text);
}

// A type description with its attributes and names at hand.
class Type {
  public:
    explicit Type(ComPtr<ITypeInfo> info) : mInfo(std::move(info)) { mInfo->GetTypeAttr(&mAttributes); }
    ~Type() { mInfo->ReleaseTypeAttr(mAttributes); }
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;

    const TYPEATTR* operator->() const { return mAttributes; }
    ITypeInfo* Info() const { return mInfo.Get(); }
    std::string Name(MEMBERID member = MEMBERID_NIL) const {
        BSTR name = nullptr;
        mInfo->GetDocumentation(member, &name, nullptr, nullptr, nullptr);
        return Narrow(Taken(name));
    }
    std::string Help(MEMBERID member = MEMBERID_NIL) const {
        BSTR help = nullptr;
        mInfo->GetDocumentation(member, nullptr, &help, nullptr, nullptr);
        return Narrow(Taken(help));
    }
    ComPtr<ITypeInfo> Referenced(HREFTYPE reference) const {
        ComPtr<ITypeInfo> info;
        mInfo->GetRefTypeInfo(reference, &info);
        return info;
    }
    ComPtr<ITypeInfo> Implemented(UINT index) const {
        HREFTYPE reference = 0;
        mInfo->GetRefTypeOfImplType(index, &reference);
        return Referenced(reference);
    }

  private:
    ComPtr<ITypeInfo> mInfo;
    TYPEATTR* mAttributes = nullptr;
};

std::string TypeName(const Type& owner, const TYPEDESC& type) {
    static const std::map<VARTYPE, std::string> kNames = {
        {VT_BSTR, "String"},     {VT_I4, "Long"},          {VT_BOOL, "Boolean"},      {VT_DATE, "Date"},
        {VT_VARIANT, "Variant"}, {VT_UNKNOWN, "IUnknown"}, {VT_DISPATCH, "IDispatch"}};
    if (type.vt == VT_USERDEFINED) {
        return Type(owner.Referenced(type.hreftype)).Name();
    }
    if (type.vt == VT_PTR) {
        const std::string name = TypeName(owner, *type.lptdesc);
        return type.lptdesc->vt == VT_USERDEFINED && name.find("Enum") == std::string::npos ? name : name + "*";
    }
    const auto name = kNames.find(type.vt);
    return name == kNames.end() ? "type " + std::to_string(type.vt) : name->second;
}

std::string DefaultText(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_I4:
            return std::to_string(V_I4(&value));
        case VT_BOOL:
            return V_BOOL(&value) == VARIANT_TRUE ? "True" : V_BOOL(&value) == VARIANT_FALSE ? "False" : "neither";
        case VT_BSTR:  // an empty text, not a null pointer: some clients pass it on as it is
            return V_BSTR(&value) == nullptr ? "null" : '"' + Narrow(v5::test::Text(value)) + '"';
        default:
            return "default of type " + std::to_string(V_VT(&value));
    }
}

std::string ParameterText(const Type& owner, const ELEMDESC& element, const std::string& name) {
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool isReference = (flags & PARAMFLAG_FOUT) != 0;
    std::string text = isReference ? "ref " + name + ' ' + TypeName(owner, *element.tdesc.lptdesc)
                                   : name + ' ' + TypeName(owner, element.tdesc);
    if ((flags & PARAMFLAG_FIN) == 0) {
        text = "out only " + text;
    }
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) {
        text += " = " + DefaultText(element.paramdesc.pparamdescex->varDefaultValue);
    }
    return (flags & PARAMFLAG_FOPT) != 0 ? '[' + text + ']' : text;
}

std::string MemberText(const Type& owner, const FUNCDESC& function) {
    static const std::map<INVOKEKIND, std::string> kKinds = {
        {INVOKE_FUNC, "method"}, {INVOKE_PROPERTYGET, "get"}, {INVOKE_PROPERTYPUT, "let"}};
    constexpr UINT kMost = 20;
    BSTR found[kMost] = {};
    UINT count = 0;
    owner.Info()->GetNames(function.memid, found, kMost, &count);
    std::vector<std::string> names;  // of the member, and of its parameters
    std::transform(found, found + count, std::back_inserter(names), [](BSTR name) { return Narrow(Taken(name)); });
    std::string parameters, result;
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        if ((element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            result = ' ' + TypeName(owner, *element.tdesc.lptdesc);
            continue;
        }
        // Automation does not tell the name of a property's new value; ours is the one that is written down.
        const auto named = static_cast<size_t>(i) + 1;
        const std::string name = function.invkind == INVOKE_PROPERTYPUT ? "None"
                                 : named < names.size()                 ? names[named]
                                                                        : "unnamed";
        parameters += (parameters.empty() ? "" : ", ") + ParameterText(owner, element, name);
    }
    return kKinds.at(function.invkind) + ' ' + names.at(0) + '(' + parameters + ')' + result;
}

void DescribeMembers(const Type& view, Contract& contract) {
    const std::string name = view.Name();
    for (UINT i = 0; i < view->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        view.Info()->GetFuncDesc(i, &function);
        contract.insert("member " + name + ' ' + std::to_string(i + 1) + ' ' + std::to_string(function->memid) + ' ' +
                        MemberText(view, *function));
        if (view->typekind == TKIND_INTERFACE) {  // the order of the list is the order of the virtual functions
            constexpr size_t kInherited = 7;      // IUnknown's three and IDispatch's four
            EXPECT_EQ(static_cast<size_t>(function->oVft), (kInherited + i) * sizeof(void*)) << name << ' ' << i;
        }
        view.Info()->ReleaseFuncDesc(function);
    }
}

void DescribeInterface(const Type& type, Contract& contract) {
    const bool isDual = (type->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    contract.insert("interface " + type.Name() + ' ' + Text(type->guid) + (isDual ? " dual" : " dispatch only"));
    if (isDual) {
        DescribeMembers(Type(type.Implemented(static_cast<UINT>(-1))), contract);
    } else {
        DescribeMembers(type, contract);
    }
}

void DescribeEnumeration(const Type& type, Contract& contract) {
    for (UINT i = 0; i < type->cVars; ++i) {
        VARDESC* value = nullptr;
        type.Info()->GetVarDesc(i, &value);
        contract.insert("value " + type.Name() + ' ' + type.Name(value->memid) + ' ' +
                        std::to_string(V_I4(value->lpvarValue)));
        type.Info()->ReleaseVarDesc(value);
    }
}

void DescribeClass(const Type& type, Contract& contract) {
    std::string line = "class " + type.Name() + ' ' + Text(type->guid);
    for (UINT i = 0; i < type->cImplTypes; ++i) {
        INT flags = 0;
        type.Info()->GetImplTypeFlags(i, &flags);
        const bool isSource = (flags & IMPLTYPEFLAG_FSOURCE) != 0;
        const std::string name = Type(type.Implemented(i)).Name();
        line += (isSource ? " source " : " ") + name;
        EXPECT_EQ((flags & IMPLTYPEFLAG_FDEFAULT) != 0, i == 0 || isSource) << line;
    }
    EXPECT_EQ(type->wTypeFlags & (TYPEFLAG_FCANCREATE | TYPEFLAG_FHIDDEN), TYPEFLAG_FCANCREATE) << line;
    contract.insert(line);
}

Contract Describe(ITypeLib& library) {
    Contract contract;
    TLIBATTR* attributes = nullptr;
    BSTR name = nullptr;
    library.GetLibAttr(&attributes);
    library.GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    contract.insert("library " + Narrow(Taken(name)) + ' ' + std::to_string(attributes->wMajorVerNum) + '.' +
                    std::to_string(attributes->wMinorVerNum) + ' ' + Text(attributes->guid));
    library.ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library.GetTypeInfo(i, &info);
        const Type type(info);
        switch (type->typekind) {
            case TKIND_DISPATCH:
                DescribeInterface(type, contract);
                break;
            case TKIND_ENUM:
                DescribeEnumeration(type, contract);
                break;
            case TKIND_COCLASS:
                DescribeClass(type, contract);
                break;
            default:
                ADD_FAILURE() << type.Name() << " is none of the published kinds";
        }
    }
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
    std::vector<std::string> differences;
    std::set_symmetric_difference(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                                  std::back_inserter(differences));
    EXPECT_EQ(differences, std::vector<std::string>());
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
    for (UINT i = 0; i < mLibrary->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        mLibrary->GetTypeInfo(i, &info);
        const Type type(info);
        ExpectSentence(type.Help(), type.Name());
        const bool isDual = (type->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        const Type view(isDual ? type.Implemented(static_cast<UINT>(-1)) : info);
        for (UINT f = 0; f < view->cFuncs; ++f) {
            FUNCDESC* function = nullptr;
            view.Info()->GetFuncDesc(f, &function);
            ExpectSentence(view.Help(function->memid), type.Name() + '.' + view.Name(function->memid));
            view.Info()->ReleaseFuncDesc(function);
        }
    }
}

TEST(ContractHeader, AgreesWithTheTypeLibrary) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    const std::pair<const GUID&, const char*> expected[] = {
        {__uuidof(_DahsIniMain), "_DahsIniMain"},
        {__uuidof(DahsIniMain), "DahsIniMain"},
        {__uuidof(IRaiseMsg), "IRaiseMsg"},
        {__uuidof(__NimboSecurity), "__NimboSecurity"},
    };
    for (const auto& [guid, name] : expected) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfoOfGuid(guid, &info), S_OK) << name;
        EXPECT_EQ(Type(info).Name(), name);
    }
    using namespace V5Strings;  // the published enumerations
    static_assert(SID_OccurEdit_GetToDateTitle == SID_AlarmEdit_GetToDateTitle && Unknown == -1 && standalone == 0);
}

}  // namespace
