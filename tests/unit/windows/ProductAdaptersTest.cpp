// The adapters behind product information, against the registry and the help viewer of this system.
#include <windows.h>
#include <gtest/gtest.h>

#include "base/AutomationError.h"
#include "com/LateBound.h"
#include "productinfo/HtmlHelpViewer.h"
#include "productinfo/WindowsRegistry.h"

namespace v5 {
namespace {

TEST(WindowsRegistry, ReadsTextsOfEveryLengthAndNothingElse) {
    constexpr const wchar_t* kKey = L"Software\\V5StringsTest";
    const auto write = [](const wchar_t* name, DWORD type, const std::wstring& text) {
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, type, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    };
    const WindowsRegistry registry;
    const auto read = [&](const wchar_t* name) { return registry.ReadText(RegistryRoot::CurrentUser, kKey, name); };
    for (const size_t length : {0, 1, 254, 255, 256, 257, 3000}) {
        const std::wstring text(length, L'x');
        write(L"Text", REG_SZ, text);
        EXPECT_EQ(read(L"Text"), text);
    }
    write(L"", REG_SZ, L"the default value");
    EXPECT_EQ(read(L""), L"the default value");
    SetEnvironmentVariableW(L"V5STRINGS_TEST", L"mail.exe");
    write(L"Expandable", REG_EXPAND_SZ, L"%V5STRINGS_TEST% \"%1\"");
    EXPECT_EQ(read(L"Expandable"), L"mail.exe \"%1\"");
    write(L"Bytes", REG_BINARY, L"1");
    EXPECT_EQ(read(L"Bytes"), std::nullopt);
    EXPECT_EQ(read(L"Missing"), std::nullopt);
    EXPECT_EQ(registry.ReadText(RegistryRoot::LocalMachine, L"Software\\No such key", L""), std::nullopt);
    RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
}

TEST(HtmlHelpViewer, IsTheSystemsOwnAndTakesNoFolderForAFile) {
    wchar_t folder[MAX_PATH], loaded[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring system = folder;
    HtmlHelpViewer viewer(nullptr);
    EXPECT_TRUE(viewer.FileExists(system + L"\\kernel32.dll"));
    EXPECT_FALSE(viewer.FileExists(system) || viewer.FileExists(system + L"\\no such file.chm"));
    ASSERT_EQ(GetModuleHandleW(L"hhctrl.ocx"), nullptr) << "must not be loaded before it is needed";
    viewer.Open(L"Z:\\no such folder\\VantorManual.chm");
    GetModuleFileNameW(GetModuleHandleW(L"hhctrl.ocx"), loaded, MAX_PATH);
    EXPECT_EQ(lstrcmpiW(loaded, (system + L"\\hhctrl.ocx").c_str()), 0);
}

TEST(LateBound, FailuresCarryTheStatus) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const auto statusOf = [](auto&& work) -> HRESULT {
        try {
            work();
            return S_OK;
        } catch (const AutomationError& error) {
            EXPECT_FALSE(error.Description().empty());
            return static_cast<HRESULT>(error.Status());
        }
    };
    EXPECT_EQ(statusOf([] { LateBound(L"V5Strings.NoSuchClass"); }), CO_E_CLASSSTRING);
    EXPECT_EQ(statusOf([] { LateBound(_variant_t(7L)); }), DISP_E_TYPEMISMATCH);
    {
        const LateBound dictionary(L"Scripting.Dictionary");
        dictionary.Call(L"Add", {L"key", L"text"});
        EXPECT_EQ(dictionary.CallText(L"Item", {L"key"}), L"text");
        EXPECT_EQ(dictionary.CallLong(L"Count"), 1);
        EXPECT_EQ(statusOf([&] { dictionary.CallLong(L"Item", {L"key"}); }), DISP_E_TYPEMISMATCH);
        EXPECT_EQ(statusOf([&] { dictionary.Call(L"NoSuchMember"); }), DISP_E_UNKNOWNNAME);
        EXPECT_NE(statusOf([&] { dictionary.Call(L"Add", {L"key", L"again"}); }), S_OK);
    }
    CoUninitialize();
}

}  // namespace
}  // namespace v5
