// Product information through the registered classes: pictures, the factory flag, and releases of packages that are
// really installed.
#include <windows.h>
#include <gtest/gtest.h>

#include <olectl.h>

#include <algorithm>
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
#include "dialogs/Driver.h"

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

struct PictureFacts {
    short type = PICTYPE_NONE;
    long width = 0;
    long height = 0;
    WORD bitsPerPixel = 0;
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

    DeleteObject(icon.hbmColor);
    DeleteObject(icon.hbmMask);
    return facts;
}

TEST(Pictures, BitmapsHaveTheirPublishedSizeAnd256Colours) {
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

TEST(Pictures, IconsComeInTheSystemSize) {
    for (long id = VantorIcons_Plain16x16Only; id <= VantorIcons_AuditDB; ++id) {
        ComPtr<IPictureDisp> picture;
        ASSERT_EQ(CreateMain()->LoadVantorIcon(static_cast<VantorIconsEnum>(id), &picture), S_OK) << id;
        const PictureFacts facts = Examine(picture.Get());
        const long side = id == VantorIcons_Plain16x16Only ? 16 : GetSystemMetrics(SM_CXICON);
        EXPECT_EQ(facts.type, PICTYPE_ICON) << id;
        EXPECT_EQ(facts.width, side) << id;
        EXPECT_EQ(facts.height, side) << id;
    }
}

TEST(Pictures, AShortageOfGraphicsHandlesIsAnErrorAndLeavesNothing) {
    const auto main = CreateMain();
    std::vector<HBRUSH> taken;
    const auto takeAll = [&] {
        size_t count = 0;
        for (HBRUSH brush = nullptr; (brush = CreateSolidBrush(RGB(1, 2, 3))) != nullptr; ++count) {
            taken.push_back(brush);
        }
        return count;
    };
    takeAll();
    for (const bool icon : {false, true}) {
        size_t left = 0;
        for (bool loaded = false; !loaded && left < 50; ++left) {
            for (size_t i = 0; i < left; ++i) {
                DeleteObject(taken.back());
                taken.pop_back();
            }
            ComPtr<IPictureDisp> picture;
            const HRESULT status = icon ? main->LoadVantorIcon(VantorIcons_AuditDB, &picture)
                                        : main->LoadVantorBitmap(VantorBitmap_Logo_256Color_60x61, &picture);
            loaded = picture.Get() != nullptr;
            EXPECT_EQ(SUCCEEDED(status), loaded) << icon << " with " << left;
            picture.Reset();
            EXPECT_EQ(takeAll(), left);
        }
        EXPECT_GT(left, 1U) << "there was no shortage";
    }
    std::for_each(taken.begin(), taken.end(), DeleteObject);
}

TEST(PictureResources, IconGroupsHoldEverySizeOfADesktop) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    BSTR path = nullptr;
    ASSERT_EQ(QueryPathOfRegTypeLib(LIBID_V5Strings, 1, 0, LOCALE_NEUTRAL, &path), S_OK);
    const HMODULE module = LoadLibraryExW(Taken(path).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    std::set<std::string> groups;
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
        EXPECT_TRUE(groups.emplace(group, group + SizeofResource(module, found)).second) << id << " is another icon";
        EXPECT_EQ(sides, small ? std::vector<int>{16} : (std::vector<int>{16, 32, 48, 64})) << id;
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

// ---- Factory flag ----------------------------------------------------------------------------------------------

// Which values count is tested in unit/; here, that both places are looked at.
TEST(FactoryFlag, IsSetForTheMachineOrForTheUser) {
    constexpr const wchar_t* kKey = L"Software\\Nimbo";
    const auto flag = [] {
        VARIANT_BOOL isFactory = VARIANT_FALSE;
        EXPECT_EQ(CreateMain()->get_IsFactoryComputer(&isFactory), S_OK);
        return isFactory;
    };
    EXPECT_EQ(flag(), VARIANT_FALSE);
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        RegSetKeyValueW(root, kKey, L"Factory", REG_SZ, L"1", 2 * sizeof(wchar_t));
        EXPECT_EQ(flag(), VARIANT_TRUE);
        RegDeleteKeyW(root, kKey);
    }
}

// ---- Installed packages ----------------------------------------------------------------------------------------

TEST(Packages, ReleaseNumbersWithAndWithoutTheMainProduct) {
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
        EXPECT_EQ(Release(nullptr, VantorRelease_Full), L"Release 5.3.12");
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
class ProductBoxes : public testing::Test {
  protected:
    // Has `show` show a box, and looks at it meanwhile.
    static void Visit(const std::wstring& title, const std::function<HRESULT()>& show,
                      const std::function<void(const Dialog&)>& look) {
        HRESULT status = E_FAIL;
        ModalCall call([&] { status = show(); });
        const Dialog box(title);
        look(box);
        PostMessageW(box.Window(), WM_COMMAND, IDCANCEL, 0);
        call.Wait();
        EXPECT_EQ(status, S_OK);
    }
    static void VisitSupportBox(const std::function<void(const Dialog&)>& look, IRaiseMsg* irm = nullptr) {
        const auto show = [&] { return CreateMain()->ShowVantorSupportInfo(irm); };
        Visit(L"Vantor Support Information", show, look);
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
    const InstalledPackage support(L"support");
    const InstalledPackage web(L"web");
    const InstalledPackage older(L"ostra-older");
    MessageRecorder recorder;
    const auto releases = [](const std::map<int, std::wstring>& byLabel) {
        return [=](const Dialog& box) {
            for (const auto& [label, release] : byLabel) {
                EXPECT_EQ(box.Text(label), release);
                EXPECT_EQ(box.Text(label + 1), release.empty() ? L"" : InstalledToday());
            }
        };
    };
    VisitSupportBox(
        releases(
            {{kSupportFiles, L"Common Files S12"}, {kMain, L""}, {kWeb, L"VantorWeb 2.1"}, {kOstra, L"Ostra 1.9"}}),
        &recorder);
    EXPECT_EQ(recorder.texts,
              (std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain), NotFound(product::kUpgradeCodeMain),
                                         NotFound(product::kUpgradeCodeOstra)}));
    const InstalledPackage main(L"main");
    const InstalledPackage newer(L"ostra");
    VisitSupportBox(releases({{kMain, L"Vantor 5.3.12"}, {kOstra, L"Ostra 2.0.4"}}));
}

// The mail program of a test: a script that writes the address it is given into a file.
class MailProgram {
  public:
    explicit MailProgram(bool registered) {
        std::ofstream(mScript, std::ios::binary) << "Set files = CreateObject(\"Scripting.FileSystemObject\")\r\n"
                                                    "Set answer = files.CreateTextFile(WScript.Arguments(0), True)\r\n"
                                                    "answer.Write WScript.Arguments(1) & \"|\"\r\n";
        wchar_t old[512] = {};
        DWORD size = sizeof old;
        RegGetValueW(HKEY_CLASSES_ROOT, kKey, nullptr, RRF_RT_REG_SZ, nullptr, old, &size);
        mPrevious = old;
        SetCommand(registered ? L"wscript.exe \"" + mScript.wstring() + L"\" \"" + mAnswer.wstring() + L"\" \"%1\""
                              : L"");
    }
    ~MailProgram() {
        SetCommand(mPrevious);
        std::filesystem::remove(mScript);
        std::filesystem::remove(mAnswer);
    }
    MailProgram(const MailProgram&) = delete;
    MailProgram& operator=(const MailProgram&) = delete;

    // The address that the program was started with; waits for it, empty when none came.
    std::string Address() const {
        std::string text;
        for (int i = 0; i < 200 && !text.ends_with('|'); ++i, Sleep(50)) {
            std::ifstream file(mAnswer, std::ios::binary);
            text.assign(std::istreambuf_iterator<char>(file), {});
        }
        return text.substr(0, text.find('|'));
    }

  private:
    static constexpr const wchar_t* kKey = L"mailto\\shell\\open\\command";

    static void SetCommand(const std::wstring& command) {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t)));
    }

    const std::filesystem::path mScript = std::filesystem::temp_directory_path() / "v5mail.vbs";
    const std::filesystem::path mAnswer = std::filesystem::temp_directory_path() / "v5mail.txt";
    std::wstring mPrevious;
};

TEST_F(ProductBoxes, KeyboardStartsTheSupportMail) {
    const InstalledPackage main(L"main");
    const MailProgram mail(true);
    std::string address;
    VisitSupportBox([&](const Dialog& box) {
        box.Keys({VK_TAB, VK_RETURN});  // from Close to the link
        address = mail.Address();
        EXPECT_TRUE(IsWindowVisible(box.Window()));
    });
    const std::wstring_view email = product::kSupportEmail;
    EXPECT_EQ(address, "mailto:" + std::string(email.begin(), email.end()) +
                           "?subject=support%20request%20(Vantor%205%2E3%2E12)");
}

TEST_F(ProductBoxes, AddressIsPlainTextWithoutAMailProgram) {
    const MailProgram none(false);
    VisitSupportBox([](const Dialog& box) {
        wchar_t className[32] = {};
        GetClassNameW(box.Control(kEmail), className, 32);
        EXPECT_STREQ(className, L"Static");
    });
}

TEST_F(ProductBoxes, AboutBoxShowsTitleAndRelease) {
    const auto expect = [](IRaiseMsg* irm, const wchar_t* title, const wchar_t* release) {
        constexpr int kProductName = 401;
        constexpr int kRelease = 402;
        Visit(
            L"About Vantor", [&] { return CreateMain()->ShowVantorAboutBox(irm, _bstr_t(title)); },
            [&](const Dialog& box) {
                EXPECT_EQ(box.Text(kProductName), title);
                EXPECT_EQ(box.Text(kRelease), release);
            });
    };
    MessageRecorder recorder;
    expect(&recorder, L"Report Generator & Editor", L"");
    EXPECT_EQ(recorder.texts, std::vector<std::wstring>{NotFound(product::kUpgradeCodeMain)});
    const InstalledPackage main(L"main");
    expect(nullptr, L"", L"Release 5.3.12");
}

// ---- Help ------------------------------------------------------------------------------------------------------

class Help : public ProductBoxes {
  protected:
    // What the user is told.
    static std::wstring ShowHelp(IRaiseMsg* irm) {
        constexpr int kText = 0xFFFF;  // the system's identifiers in a message box
        std::wstring text;
        Visit(
            L"Vantor", [&] { return Create<_NimboHelp>(__uuidof(NimboHelp))->ShowHelp(irm, 0); },
            [&](const Dialog& box) { text = box.Text(kText); });
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

}  // namespace
}  // namespace v5::test
