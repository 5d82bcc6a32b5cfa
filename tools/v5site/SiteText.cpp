#include "SiteText.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>

#include "base/Text.h"
#include "config/IniFile.h"
#include "config/SiteFile.h"

namespace v5site {

namespace {

using v5::EqualsIgnoreCase;

constexpr std::wstring_view kMasks = L"AffinityMasks";

constexpr std::wstring_view kOnByDefault[] = {L"HDR", L"TraceEnabled", L"LogFlushEnabled"};
constexpr std::wstring_view kOffByDefault[] = {L"RedundantDasSyncStagingEnabled", L"RedundantDasSyncCompareEnabled",
                                               L"RedundantDASSyncMergeEnabled"};

bool IsOneOf(std::wstring_view word, std::span<const std::wstring_view> words) {
    return std::any_of(words.begin(), words.end(), [&](auto other) { return EqualsIgnoreCase(word, other); });
}

std::wstring Quoted(std::wstring_view text) {
    return L"'" + std::wstring(text) + L"'";
}

// How many letters must be changed, added, dropped or swapped with their neighbour to make one word the other, case
// ignored (optimal string alignment distance).
size_t Distance(std::wstring_view from, std::wstring_view to) {
    const std::wstring a = v5::ToLower(from), b = v5::ToLower(to);
    std::vector<std::vector<size_t>> steps(a.size() + 1, std::vector<size_t>(b.size() + 1));
    std::iota(steps[0].begin(), steps[0].end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        steps[i][0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t changed = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
            }
        }
    }
    return steps[a.size()][b.size()];
}

// The word that is meant by a misspelt one; empty when none is near.
std::wstring_view Meant(std::wstring_view word, std::span<const std::wstring_view> words) {
    constexpr size_t kLongest = 64;  // of a misspelt name: longer ones are no names
    std::wstring_view nearest;
    size_t least = std::min<size_t>(word.size() / 3, 3) + 1;
    for (const std::wstring_view candidate : words) {
        const size_t distance = word.size() > kLongest ? least : Distance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::wstring DidYouMean(std::wstring_view word) {
    return word.empty() ? L"" : L" (did you mean " + Quoted(word) + L"?)";
}

// The number at the end of a name like "Dahs12" or "dash 7", in which the word before it is meant to be Dahs; else 0.
std::int32_t MeantDahs(std::wstring_view name) {
    size_t digits = name.size();
    while (digits > 0 && name[digits - 1] >= L'0' && name[digits - 1] <= L'9') {
        --digits;
    }
    constexpr size_t kMostDigits = 9;
    std::wstring word(name.substr(0, digits));
    std::erase_if(word, [](wchar_t c) { return c == L' ' || c == L'_' || c == L'-'; });
    const std::wstring_view number = name.substr(digits);
    const bool isMeant = word.size() < 8 && Distance(word, L"Dahs") <= 1;
    return isMeant && !number.empty() && number.size() <= kMostDigits ? std::stoi(std::wstring(number)) : 0;
}

// What programs make of a switch's value, when that is not what it says; else empty.
std::wstring SwitchRemark(std::wstring_view key, std::wstring_view value) {
    constexpr std::wstring_view kWords[] = {L"TRUE", L"YES", L"FALSE", L"NO", L"FASLE"};
    constexpr std::wstring_view kOn[] = {L"ON", L"Y", L"ENABLED", L"ENABLE", L"T", L"JA", L"SI", L"OUI"};
    constexpr std::wstring_view kOff[] = {L"OFF", L"N", L"DISABLED", L"DISABLE", L"F", L"NEIN", L"NON"};
    const bool isOn = IsOneOf(key, kOnByDefault);
    if ((!isOn && !IsOneOf(key, kOffByDefault)) || value.empty() || v5::SwitchFromText(value)) {
        return {};
    }
    const std::wstring_view meant = IsOneOf(value, kOn) ? L"YES" : IsOneOf(value, kOff) ? L"NO" : Meant(value, kWords);
    return Quoted(value) + L" is neither YES nor NO, and counts as " + (isOn ? L"YES" : L"NO") + DidYouMean(meant);
}

// The remark on the name of a section that programs do not look at; empty for names that are meant for others.
std::wstring SectionRemark(std::wstring_view name) {
    const std::wstring_view masks[] = {kMasks};
    const std::int32_t meant = MeantDahs(name);
    if (meant >= 1 && meant <= v5::kMaxDahsId) {
        return L"programs do not look at this section" + DidYouMean(L"[Dahs" + std::to_wstring(meant) + L"]");
    }
    if (meant != 0 || EqualsIgnoreCase(name, L"Dahs0")) {
        return L"programs do not look at this section: DAHSes have the numbers 1 to 99";
    }
    const std::wstring_view mask = Meant(name, masks);
    return mask.empty() ? std::wstring() : L"programs do not look at this section" + DidYouMean(L"[AffinityMasks]");
}

// Where the number of the DAHS begins that a finding is about: "…', DAHS 3: …" or "…: DAHS3 in …"; npos when it names
// none.
size_t AfterDahs(std::wstring_view finding) {
    for (const std::wstring_view before : {L"', DAHS ", L": DAHS"}) {
        if (const size_t at = finding.find(before); at != std::wstring_view::npos) {
            return at + before.size();
        }
    }
    return std::wstring_view::npos;
}

}  // namespace

SiteText::SiteText(std::wstring text) : mText(std::move(text)) {
    const wchar_t lineEnd = v5::LineEndOf(mText);
    std::wstring_view rest = mText;
    mSections.push_back({});
    for (size_t number = 1; !rest.empty(); ++number) {
        const std::wstring_view line = v5::TakeIniLine(rest, lineEnd);
        std::wstring_view name, value;
        if (v5::IsIniHeader(line, name)) {
            mSections.push_back({number, name, {}});
        } else if (v5::IsIniSetting(line, name, value)) {
            mSections.back().lines.push_back({number, Kind::Setting, name, value});
        } else if (!line.empty() && line.front() != L';') {
            mSections.back().lines.push_back({number, Kind::Stray, line, {}});
        }
    }
}

const SiteText::Section* SiteText::FindSection(std::wstring_view name) const {
    const auto found = std::find_if(mSections.begin() + 1, mSections.end(),
                                    [&](const Section& section) { return EqualsIgnoreCase(section.name, name); });
    return found == mSections.end() ? nullptr : &*found;
}

size_t SiteText::LineOf(std::wstring_view finding) const {
    const std::int32_t dahsID = DahsOf(finding);
    const Section* section = dahsID == 0 ? nullptr : FindSection(L"Dahs" + std::to_wstring(dahsID));
    if (section == nullptr) {
        return 0;
    }
    // The finding names its key in quotes after the identifier, some together with the value.
    const std::wstring_view about = finding.substr(AfterDahs(finding));
    for (const Line& line : section->lines) {
        const std::wstring quoted = L": '" + std::wstring(line.key), missing = L" for " + Quoted(line.key);
        const bool isNamed = v5::FindIgnoreCase(about, quoted + L"'") != std::wstring_view::npos ||
                             v5::FindIgnoreCase(about, quoted + L"=") != std::wstring_view::npos ||
                             v5::FindIgnoreCase(about, missing) != std::wstring_view::npos ||
                             (about.find(L": Computer name '") != std::wstring_view::npos &&
                              EqualsIgnoreCase(line.key, L"DahsComputerName"));
        if (line.kind == Kind::Setting && !line.key.empty() && isNamed) {
            return line.number;
        }
    }
    return section->number;
}

std::vector<Remark> SiteText::Remarks() const {
    std::vector<Remark> remarks;
    for (const Section& section : mSections) {
        const auto add = [&](size_t line, std::wstring_view key, std::wstring text) {
            remarks.push_back({line, std::wstring(section.name), std::wstring(key), std::move(text)});
        };
        const bool isMasks = EqualsIgnoreCase(section.name, kMasks);
        if (section.number == 0) {
            for (const Line& line : section.lines) {
                add(line.number, line.key, L"this line stands before the first section, and programs ignore it");
            }
            continue;
        }
        if (v5::SiteSections().Find(section.name) == v5::IniNames::kNone) {
            if (std::wstring text = SectionRemark(section.name); !text.empty()) {
                add(section.number, L"", std::move(text));
            }
            continue;
        }
        if (const Section* first = FindSection(section.name); first != &section) {
            add(section.number, L"",
                L"programs look at the first section of this name, in line " + std::to_wstring(first->number));
            continue;
        }
        const auto keys = isMasks ? v5::AffinityMaskKeys() : v5::DahsKeys();
        const auto hasKey = [&](const Line& line, std::wstring_view key) {
            return line.kind == Kind::Setting && EqualsIgnoreCase(line.key, key);
        };
        if (!isMasks && std::none_of(section.lines.begin(), section.lines.end(), [&](const Line& line) {
                return hasKey(line, L"SiteID") && !line.value.empty();
            })) {
            add(section.number, L"SiteID", L"the section has no 'SiteID', so programs ignore all of it");
        }
        for (const Line& line : section.lines) {
            const auto first = [&] {
                return std::find_if(section.lines.begin(), section.lines.end(),
                                    [&](const Line& other) { return hasKey(other, line.key); })
                    ->number;
            };
            if (line.kind == Kind::Stray) {
                add(line.number, L"",
                    line.key.front() == L'[' ? L"a section's name needs a ']' behind it"
                                             : L"this line has no '=', and programs ignore it");
            } else if (!IsOneOf(line.key, keys)) {
                add(line.number, line.key, L"there is no such key" + DidYouMean(Meant(line.key, keys)));
            } else if (first() != line.number) {
                add(line.number, line.key,
                    L"programs take the first line of this key, line " + std::to_wstring(first()));
            } else if (isMasks && !line.value.empty() && !v5::AffinityMaskFromText(line.value)) {
                add(line.number, line.key, Quoted(line.value) + L" is no number, and counts as 0: any processor");
            } else if (std::wstring text = SwitchRemark(line.key, v5::Trim(line.value)); !text.empty()) {
                add(line.number, line.key, std::move(text));
            }
        }
    }
    return remarks;
}

std::vector<std::int32_t> SiteText::DahsIds() const {
    std::vector<std::int32_t> ids;
    for (std::int32_t id = 1; id <= v5::kMaxDahsId; ++id) {
        if (FindSection(L"Dahs" + std::to_wstring(id)) != nullptr) {
            ids.push_back(id);
        }
    }
    return ids;
}

std::int32_t DahsOf(std::wstring_view finding) {
    std::int32_t number = 0;
    for (const wchar_t c : finding.substr(std::min(AfterDahs(finding), finding.size()))) {
        if (c < L'0' || c > L'9' || number > v5::kMaxDahsId) {
            break;
        }
        number = number * 10 + static_cast<std::int32_t>(c - L'0');
    }
    return number;
}

}  // namespace v5site
