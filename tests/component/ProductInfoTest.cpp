// Product information through the registered classes: pictures, the factory flag, and releases of packages that are
// really installed.
#include <windows.h>
#include <gtest/gtest.h>

#include <olectl.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "ProductConstants.h"
#include "V5Strings.h"
#include "component/Client.h"
#include "component/MessageRecorder.h"
#include "component/Packages.h"
#include "component/WindowVisitor.h"

namespace v5::test {
namespace {

using namespace V5Strings;  // the enumerators of the contract

constexpr HRESULT kResourceNotFound = static_cast<HRESULT>(0x800A0146);  // run-time error 326

template <class Interface>
ComPtr<Interface> Create(REFCLSID clsid) {
    ComPtr<Interface> object;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
    return object;
}

ComPtr<_NimboStringsMain> CreateMain() {
    return Create<_NimboStringsMain>(__uuidof(NimboStringsMain));
}

std::wstring Release(MessageRecorder* irm, long kind) {
    BSTR text = nullptr;
    EXPECT_EQ(CreateMain()->GetVantorReleaseNumber(irm, static_cast<VantorReleaseEnum>(kind), &text), S_OK);
    EXPECT_NE(text, nullptr);
    return Taken(text);
}

std::wstring NotFound(std::wstring_view code, const wchar_t* tag = L"STR-0146") {
    return std::wstring(tag) + L": Cannot find installed product code for upgrade code '" + std::wstring(code) + L"'";
}

// ---- Pictures --------------------------------------------------------------------------------------------------

// Pictures and windows need a display, which the 32-bit run under Wine does not have.
bool HaveDisplay() {
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 1, 1);
    ReleaseDC(nullptr, screen);
    return bitmap != nullptr && DeleteObject(bitmap);
}

class Pictures : public testing::Test {
  protected:
    void SetUp() override {
        if (!HaveDisplay()) {
            GTEST_SKIP() << "this run has no display";
        }
    }
};

struct PictureFacts {
    short type = PICTYPE_NONE;
    long width = 0;
    long height = 0;
    WORD bitsPerPixel = 0;
    std::string pixels;  // the picture drawn on white
};

PictureFacts Examine(IPictureDisp* object) {
    PictureFacts facts;
    ComPtr<IPicture> picture;
    OLE_HANDLE handle = 0;
    if (object == nullptr || FAILED(object->QueryInterface(IID_PPV_ARGS(&picture)))) {
        ADD_FAILURE() << "no picture";
        return facts;
    }
    picture->get_Type(&facts.type);
    picture->get_Handle(&handle);
    auto* gdiHandle = reinterpret_cast<void*>(static_cast<ULONG_PTR>(handle));
    ICONINFO icon = {};
    if (facts.type == PICTYPE_ICON) {
        GetIconInfo(static_cast<HICON>(gdiHandle), &icon);
        gdiHandle = icon.hbmColor;
    }
    BITMAP bitmap = {};
    GetObjectW(gdiHandle, sizeof bitmap, &bitmap);
    facts.width = bitmap.bmWidth;
    facts.height = bitmap.bmHeight;
    facts.bitsPerPixel = bitmap.bmBitsPixel;

    BITMAPINFO format = {};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), bitmap.bmWidth, bitmap.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    facts.pixels.resize(static_cast<size_t>(bitmap.bmWidth * bitmap.bmHeight) * 4);
    const HDC dc = CreateCompatibleDC(nullptr);
    GetDIBits(dc, static_cast<HBITMAP>(gdiHandle), 0, static_cast<UINT>(bitmap.bmHeight), facts.pixels.data(), &format,
              DIB_RGB_COLORS);
    DeleteDC(dc);
    DeleteObject(icon.hbmColor);
    DeleteObject(icon.hbmMask);
    return facts;
}

TEST_F(Pictures, BitmapsHaveTheirPublishedSizeAnd256Colours) {
    const struct {
        VantorBitmapEnum id;
        long width, height;
    } cases[] = {{VantorBitmap_Logo_256Color_60x61, 60, 61}, {VantorBitmap_Full_256Color_310x140, 310, 140}};
    for (const auto& test : cases) {
        ComPtr<IPictureDisp> picture;
        ASSERT_EQ(CreateMain()->LoadVantorBitmap(test.id, &picture), S_OK);
        const PictureFacts facts = Examine(picture.Get());
        EXPECT_EQ(facts.type, PICTYPE_BITMAP);
        EXPECT_EQ(facts.width, test.width);
        EXPECT_EQ(facts.height, test.height);
        EXPECT_EQ(facts.bitsPerPixel, 8);
    }
}

TEST_F(Pictures, IconsComeInTheSystemSizeAndDiffer) {
    std::set<std::string> drawn;
    for (long id = VantorIcons_Plain16x16Only; id <= VantorIcons_AuditDB; ++id) {
        ComPtr<IPictureDisp> picture;
        ASSERT_EQ(CreateMain()->LoadVantorIcon(static_cast<VantorIconsEnum>(id), &picture), S_OK) << id;
        const PictureFacts facts = Examine(picture.Get());
        const long side = id == VantorIcons_Plain16x16Only ? 16 : GetSystemMetrics(SM_CXICON);
        EXPECT_EQ(facts.type, PICTYPE_ICON) << id;
        EXPECT_EQ(facts.width, side) << id;
        EXPECT_EQ(facts.height, side) << id;
        EXPECT_TRUE(drawn.insert(facts.pixels).second) << id << " looks like another icon";
    }
}

TEST(PictureResources, IconGroupsHoldEverySizeOfADesktop) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    BSTR path = nullptr;
    ASSERT_EQ(QueryPathOfRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &path), S_OK);
    const HMODULE module = LoadLibraryExW(Taken(path).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    for (int id = VantorIcons_Plain16x16Only; id <= VantorIcons_AuditDB; ++id) {
        const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), RT_GROUP_ICON);
        ASSERT_NE(found, nullptr) << id;
        const auto* group = static_cast<const BYTE*>(LockResource(LoadResource(module, found)));
        constexpr size_t kHead = 6, kEntry = 14;  // the system's layout: width is an entry's first byte, 0 for 256
        std::vector<int> sides;
        for (size_t i = 0; i < group[4]; ++i) {
            sides.push_back(group[kHead + i * kEntry]);
        }
        const bool small = id == VantorIcons_Plain16x16Only;
        EXPECT_EQ(sides, small ? std::vector<int>{16} : (std::vector<int>{16, 32, 48, 0})) << id;
    }
    FreeLibrary(module);
}

TEST(PictureResources, UnknownIdentifiersAreErrors) {
    for (const long id : {0L, 100L, 198L, -1L, 0x10065L}) {
        ComPtr<IPictureDisp> picture;
        EXPECT_EQ(CreateMain()->LoadVantorBitmap(static_cast<VantorBitmapEnum>(id), &picture), kResourceNotFound) << id;
        EXPECT_EQ(picture.Get(), nullptr);
    }
    for (const long id : {101L, 197L, 204L, -198L}) {
        ComPtr<IPictureDisp> picture;
        EXPECT_EQ(CreateMain()->LoadVantorIcon(static_cast<VantorIconsEnum>(id), &picture), kResourceNotFound) << id;
    }
    const CallResult late = Call(CreateByName(L"V5Strings.NimboStringsMain").Get(), L"LoadVantorIcon", {7L});
    EXPECT_EQ(late.status, DISP_E_EXCEPTION);
    EXPECT_EQ(late.errorDescription, L"Resource with identifier '7' not found");
}

TEST_F(Pictures, IconIsThePlainSmallOneWhenNoneIsNamed) {
    const CallResult late = Call(CreateByName(L"V5Strings.NimboStringsMain").Get(), L"LoadVantorIcon");
    ASSERT_EQ(late.status, S_OK);
    ASSERT_EQ(late.value.vt, VT_DISPATCH);
    ComPtr<IPictureDisp> picture;
    ASSERT_EQ(late.value.pdispVal->QueryInterface(IID_PPV_ARGS(&picture)), S_OK);
    EXPECT_EQ(Examine(picture.Get()).width, 16);
}

// ---- Factory flag ----------------------------------------------------------------------------------------------

TEST(FactoryFlag, MachineOrUserValueIsExactlyOne) {
    const auto write = [](HKEY root, const wchar_t* text) {
        if (text == nullptr) {
            RegDeleteKeyValueW(root, L"Software\\Nimbo", L"Factory");
        } else {
            RegSetKeyValueW(root, L"Software\\Nimbo", L"Factory", REG_SZ, text,
                            static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
        }
    };
    const struct {
        const wchar_t* machine;
        const wchar_t* user;
        bool expected;
    } cases[] = {
        {nullptr, nullptr, false}, {L"1", nullptr, true},   {nullptr, L"1", true},   {L"0", L"1", true},
        {L"1", L"0", true},        {L"01", nullptr, false}, {L"01", L"true", false}, {L"", L"1 ", false},
    };
    for (const auto& test : cases) {
        write(HKEY_LOCAL_MACHINE, test.machine);
        write(HKEY_CURRENT_USER, test.user);
        VARIANT_BOOL flag = VARIANT_FALSE;
        EXPECT_EQ(CreateMain()->get_IsFactoryComputer(&flag), S_OK);
        EXPECT_EQ(flag, test.expected ? VARIANT_TRUE : VARIANT_FALSE);
    }
    const DWORD number = 1;  // not a text
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Nimbo", L"Factory", REG_DWORD, &number, sizeof number);
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(CreateMain()->get_IsFactoryComputer(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, L"Software\\Nimbo");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Nimbo");
}

// ---- Installed packages ----------------------------------------------------------------------------------------

class Packages : public testing::Test {
  protected:
    void SetUp() override {
        if (!HavePackages()) {
            GTEST_SKIP() << "the installer packages were not built (wixl is missing)";
        }
        if (!HaveInstaller()) {
            GTEST_SKIP() << "this system has no installer object";
        }
    }

    // What the installer keeps about an installed product. An empty value removes the attribute.
    static void SetAttribute(const std::wstring& productName, const wchar_t* attribute, const std::wstring& value) {
        const std::wstring products =
            L"Software\\Microsoft\\Windows\\CurrentVersion\\Installer\\UserData\\S-1-5-18\\Products";
        HKEY list = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, products.c_str(), 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY, &list), 0);
        wchar_t name[64];
        bool found = false;
        for (DWORD i = 0; !found && RegEnumKeyW(list, i, name, 64) == ERROR_SUCCESS; ++i) {
            HKEY properties = nullptr;
            const std::wstring key = std::wstring(name) + L"\\InstallProperties";
            if (RegOpenKeyExW(list, key.c_str(), 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY, &properties) != ERROR_SUCCESS) {
                continue;
            }
            wchar_t text[128] = {};
            DWORD size = sizeof text;
            RegGetValueW(properties, nullptr, L"DisplayName", RRF_RT_REG_SZ, nullptr, text, &size);
            found = productName == text;
            if (found && value.empty()) {
                RegDeleteValueW(properties, attribute);
            } else if (found) {
                RegSetValueExW(properties, attribute, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                               static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
            }
            RegCloseKey(properties);
        }
        RegCloseKey(list);
        EXPECT_TRUE(found);
    }
};

TEST_F(Packages, ReleaseNumbersWithAndWithoutTheMainProduct) {
    {
        const InstalledPackage main(L"main");
        const InstalledPackage support(L"support");
        const InstalledPackage web(L"web");
        const std::pair<long, const wchar_t*> cases[] = {
            {VantorRelease_Short, L"Release 5.3"},   {VantorRelease_Full, L"Release 5.3.12"},
            {VantorRelease_FullNoPrefix, L"5.3.12"}, {VantorRelease_SupportFiles, L"Common Files S12"},
            {VantorRelease_Web, L"VantorWeb ??"},    {3, L""},
        };
        MessageRecorder recorder;
        for (const auto& [kind, expected] : cases) {
            EXPECT_EQ(Release(&recorder, kind), expected) << kind;
        }
        EXPECT_TRUE(recorder.texts.empty());
        SetAttribute(L"Vantor 5.3.12", L"DisplayName", L"Vantor5");
        EXPECT_EQ(Release(&recorder, VantorRelease_Short), L"Release 5");
        SetAttribute(L"Vantor5", L"DisplayName", L"Vantor");
        EXPECT_EQ(Release(nullptr, VantorRelease_Full), L"Release Release ??");
    }
    MessageRecorder recorder;
    recorder.answer = E_FAIL;  // a sink that fails changes nothing
    EXPECT_EQ(Release(&recorder, VantorRelease_Full), L"");
    EXPECT_EQ(Release(&recorder, VantorRelease_Web), L"");
    EXPECT_EQ(Release(&recorder, 3), L"");
    EXPECT_EQ(recorder.texts,
              (std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain), NotFound(product::kUpgradeCodeWeb)}));
    EXPECT_EQ(recorder.types, (std::vector<long>{4, 4}));
}

// The boxes that a user sees.
class ProductBoxes : public Packages {
  protected:
    void SetUp() override {
        if (!HaveDisplay()) {
            GTEST_SKIP() << "this run has no display";
        }
        Packages::SetUp();
    }

    // The texts of a box's labels by control identifier, read while the box is shown.
    static std::map<int, std::wstring> TextsOf(const std::wstring& title, const std::function<HRESULT()>& show) {
        std::map<int, std::wstring> texts;
        WindowVisitor visitor(title, [&](HWND window) {
            for (HWND control = GetWindow(window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
                texts[GetDlgCtrlID(control)] = WindowText(control);
            }
        });
        EXPECT_EQ(show(), S_OK);
        EXPECT_TRUE(visitor.Visited());
        return texts;
    }

    static std::map<int, std::wstring> SupportTexts(IRaiseMsg* irm) {
        return TextsOf(L"Vantor Support Information", [&] { return CreateMain()->ShowVantorSupportInfo(irm); });
    }

    static std::wstring InstalledToday() {
        SYSTEMTIME now;
        GetLocalTime(&now);
        wchar_t text[64];
        wsprintfW(text, L"Installed %04d-%02d-%02d", now.wYear, now.wMonth, now.wDay);
        return text;
    }

    // The labels of the support box, in its order.
    enum Label { kSupportFiles = 401, kMain = 403, kWeb = 405, kOstra = 407, kEmail = 414 };
};

TEST_F(ProductBoxes, SupportBoxShowsWhatIsInstalledAndReportsTheRest) {
    const InstalledPackage main(L"main");
    MessageRecorder recorder;
    auto texts = SupportTexts(&recorder);
    EXPECT_EQ(texts[kMain], L"Vantor 5.3.12");
    EXPECT_EQ(texts[kMain + 1], InstalledToday());
    for (const int missing : {kSupportFiles, kWeb, kOstra}) {
        EXPECT_EQ(texts[missing] + texts[missing + 1], L"");
    }
    EXPECT_EQ(recorder.texts,
              (std::vector<std::wstring>{
                  NotFound(product::kUpgradeCodeSupportFiles), NotFound(product::kUpgradeCodeSupportFiles),
                  NotFound(product::kUpgradeCodeWeb), NotFound(product::kUpgradeCodeWeb),
                  NotFound(product::kUpgradeCodeOstra), NotFound(product::kUpgradeCodeOstraOlder),
                  NotFound(product::kUpgradeCodeOstraOlder)}));
}

TEST_F(ProductBoxes, SupportBoxWithAllPackagesAndWithHalfInstalledOnes) {
    const InstalledPackage support(L"support");
    const InstalledPackage web(L"web");
    const InstalledPackage older(L"ostra-older");
    SetAttribute(L"Ostra 1.9", L"InstallDate", L"20090102");
    SetAttribute(L"VantorWeb 2.1", L"InstallDate", L"20140230");
    MessageRecorder recorder;
    auto texts = SupportTexts(&recorder);
    EXPECT_EQ(texts[kSupportFiles], L"Common Files S12");
    EXPECT_EQ(texts[kSupportFiles + 1], InstalledToday());
    EXPECT_EQ(texts[kMain], L"");
    EXPECT_EQ(texts[kWeb], L"VantorWeb 2.1");
    EXPECT_EQ(texts[kWeb + 1], L"");  // no such day
    EXPECT_EQ(texts[kOstra], L"Ostra 1.9");
    EXPECT_EQ(texts[kOstra + 1], L"Installed 2009-01-02");
    EXPECT_EQ(recorder.texts,
              (std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain), NotFound(product::kUpgradeCodeMain),
                                         NotFound(product::kUpgradeCodeOstra)}));

    const InstalledPackage newer(L"ostra");
    texts = SupportTexts(nullptr);
    EXPECT_EQ(texts[kOstra], L"Ostra 2.0.4");
    EXPECT_EQ(texts[kOstra + 1], InstalledToday());
}

// The mail program of a test: a script that writes the address it is given into a file.
class MailProgram {
  public:
    explicit MailProgram(bool registered) {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        script_ = std::wstring(folder) + L"v5mail.vbs";
        answer_ = std::wstring(folder) + L"v5mail.txt";
        DeleteFileW(answer_.c_str());
        WriteText(script_,
                  "Set files = CreateObject(\"Scripting.FileSystemObject\")\r\n"
                  "Set answer = files.CreateTextFile(WScript.Arguments(0), True)\r\n"
                  "answer.Write WScript.Arguments(1) & \"|\"\r\n");
        wchar_t old[512] = {};
        DWORD size = sizeof old;
        RegGetValueW(HKEY_CLASSES_ROOT, kKey, nullptr, RRF_RT_REG_SZ, nullptr, old, &size);
        previous_ = old;
        const std::wstring command = L"wscript.exe \"" + script_ + L"\" \"" + answer_ + L"\" \"%1\"";
        SetCommand(registered ? command : L"");
    }
    ~MailProgram() {
        SetCommand(previous_);
        DeleteFileW(script_.c_str());
        DeleteFileW(answer_.c_str());
    }
    MailProgram(const MailProgram&) = delete;
    MailProgram& operator=(const MailProgram&) = delete;

    // The address that the program was started with; waits for it, empty when none came.
    std::string Address() const {
        for (int i = 0; i < 200; ++i, Sleep(50)) {
            const std::string text = ReadText(answer_);
            if (!text.empty() && text.back() == '|') {
                return text.substr(0, text.size() - 1);
            }
        }
        return {};
    }

  private:
    static constexpr const wchar_t* kKey = L"mailto\\shell\\open\\command";

    static void SetCommand(const std::wstring& command) {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t)));
    }
    static void WriteText(const std::wstring& path, const std::string& text) {
        std::ofstream(std::filesystem::path(path), std::ios::binary) << text;
    }
    static std::string ReadText(const std::wstring& path) {
        std::ifstream file(std::filesystem::path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::wstring script_, answer_, previous_;
};

TEST_F(ProductBoxes, KeyboardStartsTheSupportMail) {
    const InstalledPackage main(L"main");
    const MailProgram mail(true);
    std::string address;
    WindowVisitor visitor(L"Vantor Support Information", [&](HWND window) {
        PostMessageW(GetDlgItem(window, IDCANCEL), WM_KEYDOWN, VK_TAB, 0);  // from Close to the link
        PostMessageW(GetDlgItem(window, kEmail), WM_KEYDOWN, VK_RETURN, 0);
        address = mail.Address();
        EXPECT_TRUE(IsWindowVisible(window));
    });
    EXPECT_EQ(CreateMain()->ShowVantorSupportInfo(nullptr), S_OK);
    ASSERT_TRUE(visitor.Visited());
    const std::wstring_view email = product::kSupportEmail;
    EXPECT_EQ(address, "mailto:" + std::string(email.begin(), email.end()) +
                           "?subject=support%20request%20(Vantor%205%2E3%2E12)");
}

TEST_F(ProductBoxes, AddressIsPlainTextWithoutAMailProgram) {
    const MailProgram none(false);
    wchar_t className[32] = {};
    WindowVisitor visitor(L"Vantor Support Information",
                          [&](HWND window) { GetClassNameW(GetDlgItem(window, kEmail), className, 32); });
    EXPECT_EQ(CreateMain()->ShowVantorSupportInfo(nullptr), S_OK);
    EXPECT_TRUE(visitor.Visited());
    EXPECT_STREQ(className, L"Static");
}

TEST_F(ProductBoxes, AboutBoxShowsTitleAndRelease) {
    const auto show = [](MessageRecorder* irm, const wchar_t* title) {
        return TextsOf(L"About Vantor", [&] { return CreateMain()->ShowVantorAboutBox(irm, _bstr_t(title)); });
    };
    constexpr int kProductName = 401;
    constexpr int kRelease = 402;
    MessageRecorder recorder;
    auto texts = show(&recorder, L"Report Generator & Editor");
    EXPECT_EQ(texts[kProductName], L"Report Generator & Editor");
    EXPECT_EQ(texts[kRelease], L"");
    EXPECT_EQ(recorder.texts, std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain)});

    const InstalledPackage main(L"main");
    texts = show(nullptr, L"");
    EXPECT_EQ(texts[kProductName], L"");
    EXPECT_EQ(texts[kRelease], L"Release 5.3.12");
}

// ---- Help ------------------------------------------------------------------------------------------------------

class Help : public ProductBoxes {
  protected:
    // What the user is told, and by which icon.
    static std::wstring ShowHelp(IRaiseMsg* irm) {
        constexpr int kText = 0xFFFF;  // the system's identifiers in a message box
        std::wstring text;
        WindowVisitor visitor(L"Vantor", [&](HWND window) { text = WindowText(GetDlgItem(window, kText)); });
        EXPECT_EQ(Create<_NimboHelp>(__uuidof(NimboHelp))->ShowHelp(irm, 0), S_OK);
        EXPECT_TRUE(visitor.Visited());
        return text;
    }
};

TEST_F(Help, MissingProductIsReportedToTheSinkAndToTheUser) {
    const wchar_t* const told =
        L"Cannot find path for Vantor help file 'VantorManual.chm'. Vantor help may not be installed. [STR-0168]";
    MessageRecorder recorder;
    EXPECT_EQ(ShowHelp(&recorder), told);
    EXPECT_EQ(recorder.texts,
              (std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain, L"STR-0165"),
                                         L"Cannot find component path for Vantor help file. Vantor help may not be "
                                         L"installed. [STR-0167]"}));
    EXPECT_EQ(ShowHelp(nullptr), told);
}

// Wine's installer object has no ComponentPath: the failure of the real call must reach the user.
TEST_F(Help, FailureOfTheInstallerIsShownWithItsNumber) {
    const ComPtr<IDispatch> installer = CreateByName(L"WindowsInstaller.Installer");
    DISPID id = DISPID_UNKNOWN;
    wchar_t member[] = L"ComponentPath";
    wchar_t* name = member;
    const HRESULT status = installer->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(status)) {
        GTEST_SKIP() << "this system's installer knows component paths";
    }
    const InstalledPackage main(L"main");
    MessageRecorder recorder;
    const std::wstring told = ShowHelp(&recorder);
    EXPECT_EQ(told.find(L"[STR-0171] " + std::to_wstring(status) + L", "), 0u);
    EXPECT_TRUE(recorder.texts.empty());
}

}  // namespace
}  // namespace v5::test
