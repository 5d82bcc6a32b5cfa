// The DLL as a file: what it exports, and what it needs. Both widths are looked at, whichever runs the tests.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
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
        bytes_.assign(std::istreambuf_iterator<char>(file), {});
        const auto* dos = At<IMAGE_DOS_HEADER>(0);
        if (dos == nullptr || dos->e_magic != IMAGE_DOS_SIGNATURE) {
            return;
        }
        headers_ = static_cast<size_t>(dos->e_lfanew);
        const auto* header = At<IMAGE_NT_HEADERS32>(headers_);
        machine_ = header->FileHeader.Machine;
        directories_ = machine_ == IMAGE_FILE_MACHINE_AMD64
                           ? At<IMAGE_NT_HEADERS64>(headers_)->OptionalHeader.DataDirectory
                           : header->OptionalHeader.DataDirectory;
    }

    WORD Machine() const { return machine_; }
    size_t Size() const { return bytes_.size(); }

    // Address space layout randomisation, no executable data … (IMAGE_DLLCHARACTERISTICS_…). The field lies at the same
    // place in both widths.
    WORD Characteristics() const { return At<IMAGE_NT_HEADERS32>(headers_)->OptionalHeader.DllCharacteristics; }

    // The sections' access rights (IMAGE_SCN_…).
    std::vector<DWORD> SectionRights() const {
        std::vector<DWORD> rights;
        for (WORD i = 0; i < SectionCount(); ++i) {
            rights.push_back(Section(i)->Characteristics);
        }
        return rights;
    }

    std::set<std::string> Exports() const {
        std::set<std::string> names;
        const auto* exports =
            InMemory<IMAGE_EXPORT_DIRECTORY>(directories_[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
        const auto* addresses = InMemory<DWORD>(exports->AddressOfNames);
        for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
            names.insert(InMemory<char>(addresses[i]));
        }
        return names;
    }

    std::set<std::string> ImportedLibraries() const {
        std::set<std::string> names;
        DWORD address = directories_[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (;; address += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
            const auto* descriptor = InMemory<IMAGE_IMPORT_DESCRIPTOR>(address);
            if (descriptor->Name == 0) {
                return names;
            }
            names.insert(InMemory<char>(descriptor->Name));
        }
    }

  private:
    template <class T>
    const T* At(size_t offset) const {
        return offset + sizeof(T) <= bytes_.size() ? reinterpret_cast<const T*>(&bytes_[offset]) : nullptr;
    }

    WORD SectionCount() const { return At<IMAGE_NT_HEADERS32>(headers_)->FileHeader.NumberOfSections; }
    const IMAGE_SECTION_HEADER* Section(WORD index) const {
        const size_t first = headers_ + offsetof(IMAGE_NT_HEADERS32, OptionalHeader) +
                             At<IMAGE_NT_HEADERS32>(headers_)->FileHeader.SizeOfOptionalHeader;
        return At<IMAGE_SECTION_HEADER>(first + index * sizeof(IMAGE_SECTION_HEADER));
    }

    // What the loader would put at the address, relative to the image's base.
    template <class T>
    const T* InMemory(DWORD address) const {
        for (WORD i = 0; i < SectionCount(); ++i) {
            const auto* section = Section(i);
            if (address >= section->VirtualAddress && address < section->VirtualAddress + section->SizeOfRawData) {
                return At<T>(address - section->VirtualAddress + section->PointerToRawData);
            }
        }
        return nullptr;
    }

    std::vector<char> bytes_;
    size_t headers_ = 0;
    WORD machine_ = 0;
    const IMAGE_DATA_DIRECTORY* directories_ = nullptr;
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
    const Image image(GetParam().path);
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
