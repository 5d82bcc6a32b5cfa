#include "SiteDiff.h"

#include <set>
#include <utility>

#include "PasswordMask.h"
#include "Settings.h"

namespace v5site {

namespace {

using Named = std::pair<std::wstring, std::wstring>;  // a setting's name, and its value for people

// All that programs get of the current DAHS.
std::vector<Named> EverythingOf(const v5::Site& site) {
    constexpr std::pair<v5::ConnectionForm, const wchar_t*> kForms[] = {
        {v5::ConnectionForm::OleDb, L""},
        {v5::ConnectionForm::OleDbNoninteractive, L"Noninteractive"},
        {v5::ConnectionForm::DotNet, L"_DotNet"},
        {v5::ConnectionForm::DotNetNoninteractive, L"Noninteractive_DotNet"}};
    constexpr std::pair<v5::AppCategory, const wchar_t*> kMasks[] = {{v5::AppCategory::Ios, L"AffinityMask_IOS"},
                                                                     {v5::AppCategory::Dr, L"AffinityMask_DR"},
                                                                     {v5::AppCategory::Dm, L"AffinityMask_DM"},
                                                                     {v5::AppCategory::Rg, L"AffinityMask_RG"},
                                                                     {v5::AppCategory::Dbe, L"AffinityMask_DBE"}};
    std::vector<Named> all;
    for (const auto& group : {SettingsOf(site), FoldersOf(site)}) {
        for (const Setting& setting : group) {
            all.emplace_back(setting.name, Display(setting.value));
        }
    }
    for (const auto& [form, suffix] : kForms) {
        for (const Setting& setting : ConnectionsOf(site.Current().entry->connectionStrings[form])) {
            all.emplace_back(std::wstring(L"SqlConnectionString_") + setting.name + suffix, Display(setting.value));
        }
    }
    for (const auto& [category, name] : kMasks) {
        all.emplace_back(name, std::to_wstring(site.Current().entry->affinityMasks[category]));
    }
    return all;
}

Difference Told(std::int32_t dahsID, const std::wstring& name, const std::wstring& first, const std::wstring& second) {
    Difference difference{dahsID, name, MaskPasswords(first), MaskPasswords(second)};
    if (difference.first == difference.second) {
        difference.second += L" (with another password)";
    }
    return difference;
}

}  // namespace

std::vector<Difference> Differences(v5::Site& first, v5::Site& second) {
    std::set<std::int32_t> ids;
    for (const v5::Site* site : {&first, &second}) {
        for (const v5::DahsEntryPtr& entry : *site->Entries()) {
            ids.insert(entry->dahsID);
        }
    }
    std::vector<Difference> differences;
    for (const std::int32_t id : ids) {
        const bool inFirst = first.Choose(id, false, false), inSecond = second.Choose(id, false, false);
        if (!inFirst || !inSecond) {
            constexpr const wchar_t* kWords[] = {L"not usable or not there", L"usable"};
            differences.push_back({id, L"", kWords[inFirst ? 1 : 0], kWords[inSecond ? 1 : 0]});
            continue;
        }
        const std::vector<Named> ofFirst = EverythingOf(first), ofSecond = EverythingOf(second);
        for (size_t i = 0; i < ofFirst.size(); ++i) {
            if (ofFirst[i].second != ofSecond[i].second) {
                differences.push_back(Told(id, ofFirst[i].first, ofFirst[i].second, ofSecond[i].second));
            }
        }
    }
    return differences;
}

}  // namespace v5site
