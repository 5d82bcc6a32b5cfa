// The DLL as a file: what it exports, and what it needs. Both widths are looked at, whichever runs the tests.
#include <windows.h>
// after windows.h, which it needs:
#include <dbghelp.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

// A DLL's file, read without loading it.
class Image {
  public:
    explicit Image(const char* path) {
        std::ifstream file(path, std::ios::binary);
        mBytes.assign(std::istreambuf_iterator<char>(file), {});
        mHeaders = mBytes.empty() ? nullptr : ImageNtHeader(mBytes.data());
    }

    WORD Machine() const { return mHeaders != nullptr ? mHeaders->FileHeader.Machine : WORD{0}; }
    size_t Size() const { return mBytes.size(); }

    // Address space layout randomisation, no executable data … (IMAGE_DLLCHARACTERISTICS_…). The field lies at the same
    // place in both widths.
    WORD Characteristics() const { return mHeaders->OptionalHeader.DllCharacteristics; }

    // The sections' access rights (IMAGE_SCN_…).
    std::vector<DWORD> SectionRights() const {
        std::vector<DWORD> rights;
        const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(mHeaders);
        for (WORD i = 0; i < mHeaders->FileHeader.NumberOfSections; ++i) {
            rights.push_back(section[i].Characteristics);
        }
        return rights;
    }

    std::set<std::string> Exports() {
        std::set<std::string> names;
        const auto* exports = Directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
        const auto* addresses = InMemory<DWORD>(exports->AddressOfNames);
        for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
            names.insert(InMemory<char>(addresses[i]));
        }
        return names;
    }

    std::set<std::string> ImportedLibraries() {
        std::set<std::string> names;
        const auto* descriptor = Directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
        for (; descriptor->Name != 0; ++descriptor) {
            names.insert(InMemory<char>(descriptor->Name));
        }
        return names;
    }

  private:
    template <class T>
    const T* Directory(USHORT entry) {
        ULONG size = 0;
        return static_cast<const T*>(ImageDirectoryEntryToData(mBytes.data(), FALSE, entry, &size));
    }

    // What the loader would put at the address, relative to the image's base.
    template <class T>
    const T* InMemory(DWORD address) {
        return static_cast<const T*>(ImageRvaToVa(mHeaders, mBytes.data(), address, nullptr));
    }

    std::vector<char> mBytes;
    IMAGE_NT_HEADERS* mHeaders = nullptr;
};

struct Build {
    const char* path;
    WORD machine;
};

class ImageTest : public testing::TestWithParam<Build> {};

INSTANTIATE_TEST_SUITE_P(Builds, ImageTest,
                         testing::Values(Build{"build/win64/V5Strings.dll", IMAGE_FILE_MACHINE_AMD64},
                                         Build{"build/win32/V5Strings.dll", IMAGE_FILE_MACHINE_I386}),
                         [](const auto& build) {
                             return build.param.machine == IMAGE_FILE_MACHINE_AMD64 ? "win64" : "win32";
                         });

TEST_P(ImageTest, ExportsTheEntryPointsAndNeedsWindowsOnly) {
    Image image(GetParam().path);
    ASSERT_EQ(image.Machine(), GetParam().machine) << "run the tests in the project's folder";
    const std::set<std::string> entryPoints = {"DllCanUnloadNow", "DllGetClassObject", "DllInstall",
                                               "DllRegisterServer", "DllUnregisterServer"};
    EXPECT_EQ(image.Exports(), entryPoints);
    EXPECT_LE(image.Size(), size_t{1} << 20) << "the DLL has grown beyond 1 MB";
    char system[MAX_PATH];
    ASSERT_NE(GetSystemDirectoryA(system, MAX_PATH), 0U);
    for (const std::string& library : image.ImportedLibraries()) {
        EXPECT_NE(GetFileAttributesA((system + ("\\" + library)).c_str()), INVALID_FILE_ATTRIBUTES)
            << library << " is not a part of Windows";
    }
    EXPECT_EQ(image.ImportedLibraries().count("KERNEL32.dll"), 1U) << "the list of imports cannot be read";
}

TEST_P(ImageTest, IsHardened) {
    const Image image(GetParam().path);
    WORD wanted = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
    if (GetParam().machine == IMAGE_FILE_MACHINE_AMD64) {
        wanted |= IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA;
    }
    EXPECT_EQ(image.Characteristics() & wanted, wanted);
    EXPECT_GE(image.SectionRights().size(), 4u);
    for (const DWORD rights : image.SectionRights()) {
        EXPECT_FALSE((rights & IMAGE_SCN_MEM_WRITE) != 0 && (rights & IMAGE_SCN_MEM_EXECUTE) != 0)
            << "code that can be written";
    }
}

}  // namespace
