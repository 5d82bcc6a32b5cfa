// finish-type-library LIBRARY.tlb [INTERFACE.METHOD.PARAMETER…]
//
// Does to a type library what the interface compiler does not do. Runs on the build machine.
//
// - The same definitions make the same bytes: the time of day that the compiler notes becomes that of no time.
// - A named by-reference text parameter gets the empty text as its default value. The compiler refuses to write such a
//   default, although the file format has it and automation clients honour it. The file ("MSFT" format) keeps every
//   default value in one table, and a parameter's default is an offset into it. So the method must have another
//   parameter whose default is the empty text already, and the new one shares its entry.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::uint32_t kMagic = 0x5446534D;  // "MSFT"
constexpr std::uint32_t kHeaderSize = 0x54;   // followed by one more word when kHasHelpDll is set
constexpr std::uint32_t kHasHelpDll = 0x100;  // in the header's flags
constexpr std::uint32_t kTypeRecordSize = 0x64;
constexpr std::uint32_t kFunctionHasDefaults = 0x1000;  // a table of defaults stands before the parameters
constexpr std::uint32_t kOptional = 0x10;               // PARAMFLAG_FOPT
constexpr std::uint32_t kHasDefault = 0x20;             // PARAMFLAG_FHASDEFAULT
constexpr std::uint32_t kNoDefault = 0xFFFFFFFF;
constexpr std::uint32_t kInlineValue = 0x80000000;  // the default is a small number, not an offset
constexpr std::uint16_t kText = 8;                  // VT_BSTR
enum Segment : std::uint32_t { Types = 0, Identifiers = 5, Names = 7, Values = 11, CustomData = 12 };
// The first words of the identifiers of custom data: when the library was made, in seconds and in a sentence.
constexpr std::uint32_t kMadeAt = 0xDE77BA63;
constexpr std::uint32_t kMadeSentence = 0xDE77BA65;

class TypeLibrary {
  public:
    explicit TypeLibrary(std::vector<char> bytes) : mBytes(std::move(bytes)) {
        if (Word(0) != kMagic) {
            throw std::runtime_error("not a type library");
        }
        mSegments = kHeaderSize + (Word(0x14) & kHasHelpDll ? 4 : 0) + 4 * TypeCount();
    }

    // Offset of the record of the named interface.
    std::uint32_t FindType(std::string_view name) const {
        for (std::uint32_t i = 0; i < TypeCount(); ++i) {
            const auto type = SegmentStart(Types) + i * kTypeRecordSize;
            if (NameAt(Word(type + 0x34)) == name) {
                return type;
            }
        }
        throw std::runtime_error("no such interface");
    }

    // Offset of the record of the named method of the interface at `type`.
    std::uint32_t FindMethod(std::uint32_t type, std::string_view name) const {
        const auto records = Word(type + 0x04) + 4;  // a word with the length of all records stands before them
        const auto functions = Word(type + 0x18) & 0xFFFF, variables = Word(type + 0x18) >> 16;
        const auto identifiers = records + Word(records - 4);
        const auto names = identifiers + 4 * (functions + variables);
        const auto offsets = names + 4 * (functions + variables);
        for (std::uint32_t i = 0; i < functions; ++i) {
            if (NameAt(Word(names + 4 * i)) == name) {
                return records + Word(offsets + 4 * i);
            }
        }
        throw std::runtime_error("no such method");
    }

    void GiveEmptyTextDefault(std::uint32_t method, std::string_view parameterName) {
        if ((Word(method + 0x10) & kFunctionHasDefaults) == 0) {
            throw std::runtime_error("the method has no defaults");
        }
        const auto count = Word(method + 0x14) & 0xFFFF;
        const auto parameters = method + (Word(method) & 0xFFFF) - 12 * count;
        const auto defaults = parameters - 4 * count;
        std::optional<std::uint32_t> emptyText, target;
        for (std::uint32_t i = 0; i < count; ++i) {
            if (IsEmptyText(Word(defaults + 4 * i))) {
                emptyText = Word(defaults + 4 * i);
            }
            if (NameAt(Word(parameters + 12 * i + 4)) == parameterName) {
                target = i;
            }
        }
        if (!target) {
            throw std::runtime_error("no such parameter");
        }
        if (!emptyText) {
            throw std::runtime_error("no other parameter of the method has an empty text as default");
        }
        SetWord(defaults + 4 * *target, *emptyText);
        const auto flags = parameters + 12 * *target + 8;
        SetWord(flags, Word(flags) | kOptional | kHasDefault);
    }

    void ForgetWhenMade() {
        constexpr std::uint32_t entrySize = 12;  // offsets of the identifier and of the value, and a word
        const auto start = SegmentStart(CustomData), end = start + Word(mSegments + 16 * CustomData + 4);
        for (auto entry = start; entry + entrySize <= end; entry += entrySize) {
            const auto identifier = Word(SegmentStart(Identifiers) + Word(entry));
            const auto value = SegmentStart(Values) + Word(entry + 4) + 2;  // behind its type
            if (identifier == kMadeAt) {
                SetWord(value, 0);
            } else if (identifier == kMadeSentence) {
                ForgetTimeIn(value + 4, Word(value));
            }
        }
    }

    const std::vector<char>& Bytes() const { return mBytes; }

  private:
    std::uint32_t TypeCount() const { return Word(0x20); }
    std::uint32_t SegmentStart(Segment segment) const { return Word(mSegments + 16 * segment); }

    // In "… at Thu Jan  1 00:00:00 1970\n", as ctime writes it.
    void ForgetTimeIn(std::uint32_t text, std::uint32_t length) {
        constexpr std::string_view noTime = "Thu Jan  1 00:00:00 1970\n";
        if (length < noTime.size() || text + length > mBytes.size()) {
            throw std::runtime_error("damaged type library");
        }
        std::memcpy(&mBytes[text + length - noTime.size()], noTime.data(), noTime.size());
    }

    bool IsEmptyText(std::uint32_t value) const {
        if (value == kNoDefault || (value & kInlineValue) != 0) {
            return false;
        }
        const auto entry = SegmentStart(Values) + value;  // 16-bit type, then 32-bit length, not aligned
        return (Word(entry) & 0xFFFF) == kText && Word(entry + 2) == 0;
    }

    // A name record: two words, a word whose low byte is the length, then the letters.
    std::string NameAt(std::uint32_t offset) const {
        if (offset == kNoDefault) {
            return {};
        }
        const auto record = SegmentStart(Names) + offset;
        const auto length = Word(record + 8) & 0xFF;
        if (record + 12 + length > mBytes.size()) {
            throw std::runtime_error("damaged type library");
        }
        return {&mBytes[record + 12], length};
    }

    std::uint32_t Word(std::uint32_t offset) const {  // build machine and file are both little-endian
        std::uint32_t value = 0;
        if (offset + sizeof value > mBytes.size()) {
            throw std::runtime_error("damaged type library");
        }
        std::memcpy(&value, &mBytes[offset], sizeof value);
        return value;
    }
    void SetWord(std::uint32_t offset, std::uint32_t value) { std::memcpy(&mBytes.at(offset), &value, sizeof value); }

    std::vector<char> mBytes;
    std::uint32_t mSegments = 0;
};

void GiveEmptyTextDefault(TypeLibrary& library, const std::string& target) {
    const auto first = target.find('.'), second = target.find('.', first + 1);
    if (second == std::string::npos) {
        throw std::runtime_error("the parameter is not given as INTERFACE.METHOD.PARAMETER");
    }
    const auto type = library.FindType(target.substr(0, first));
    const auto method = library.FindMethod(type, target.substr(first + 1, second - first - 1));
    library.GiveEmptyTextDefault(method, target.substr(second + 1));
}

void Run(const std::string& path, const std::vector<std::string>& targets) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot be read");
    }
    TypeLibrary library({std::istreambuf_iterator<char>(in), {}});
    library.ForgetWhenMade();
    for (const auto& target : targets) {
        GiveEmptyTextDefault(library, target);
    }
    std::ofstream out(path, std::ios::binary);
    out.write(library.Bytes().data(), static_cast<std::streamsize>(library.Bytes().size()));
    if (!out.flush()) {
        throw std::runtime_error("cannot be written");
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        static_cast<void>(
            std::fputs("usage: finish-type-library LIBRARY.tlb [INTERFACE.METHOD.PARAMETER...]\n", stderr));
        return EXIT_FAILURE;
    }
    try {
        Run(argv[1], {argv + 2, argv + argc});
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "%s: %s\n", argv[1], error.what()));
        return EXIT_FAILURE;
    }
}
