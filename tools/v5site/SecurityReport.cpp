#include "SecurityReport.h"

#include <algorithm>

#include "Json.h"
#include "PasswordMask.h"
#include "SecurityClient.h"
#include "base/Text.h"
#include "security/Levels.h"

namespace v5site {

namespace {

std::wstring Display(const NamedNumber& value) {
    const std::wstring number = std::to_wstring(value.number);
    return value.name.empty() ? number : number + L"  " + value.name;
}

// Who holds a level, and whether it suffices for a restriction.
struct Holder {
    std::wstring who;
    v5::PrivilegeLevel level;
    std::wstring names;
    bool may;
};

std::vector<Holder> Holders(const SecurityFacts& facts, long restriction) {
    const auto minimum = std::find_if(facts.minimums.begin(), facts.minimums.end(),
                                      [&](const Minimum& each) { return each.restriction.number == restriction; });
    std::vector<Holder> holders = {{L"everybody", v5::level::kNone, L"", false},
                                   {L"level 1 list", v5::level::k1, facts.lists[0], false},
                                   {L"level 2 list", v5::level::k2, facts.lists[1], false},
                                   {L"administrators (Windows authentication)", v5::level::kOSAdmin, L"", false},
                                   {L"level 3 list", v5::level::k3High, facts.lists[2], false},
                                   {L"alarm-reset password", v5::level::kManualConfirmation, L"", false},
                                   {L"master password", v5::level::kMaster, L"", false}};
    for (Holder& holder : holders) {
        holder.may = minimum != facts.minimums.end() &&
                     v5::IsSufficient(holder.level, static_cast<v5::RestrictionID>(restriction),
                                      static_cast<v5::PrivilegeLevel>(minimum->level.number));
    }
    return holders;
}

std::wstring MayLines(const SecurityFacts& facts, long restriction) {
    std::wstring text = L"\nWho may do what restriction " + std::to_wstring(restriction) + L" guards\n";
    for (const Holder& holder : Holders(facts, restriction)) {
        text += (holder.may ? L"  yes  " : L"  no   ") + holder.who +
                (holder.names.empty() ? L"" : L": " + holder.names) + L"\n";
    }
    return text;
}

std::wstring Lines(const SecurityFacts& facts, const CommandLine& line) {
    std::wstring text = L"Security    " + Display(facts.status) + L"\n" +  //
                        L"User        " + facts.user + L", level " + Display(facts.userLevel) + L"\n";
    for (size_t i = 0; i < std::size(facts.lists); ++i) {
        text += L"Level " + std::to_wstring(i + 1) + L"     " +
                (facts.lists[i].empty() ? L"(nobody)" : facts.lists[i]) + L"\n";
    }
    size_t width = 0;
    for (const Minimum& minimum : facts.minimums) {
        width = std::max(width, minimum.restriction.name.size());
    }
    text += L"\nMinimum levels\n";
    for (const Minimum& minimum : facts.minimums) {
        text += L"  " + std::to_wstring(minimum.restriction.number) + L"  " + Padded(minimum.restriction.name, width) +
                L"  " + Display(minimum.level) + L"\n";
    }
    if (!facts.isTrailRead) {
        return text + L"\nChanges unknown: the event log could not be read\n";
    }
    constexpr size_t kPage = 20;
    const auto page = static_cast<size_t>(line.page.value_or(1));
    const size_t count = facts.changes.size(), end = line.all ? count : count - std::min(count, (page - 1) * kPage),
                 first = line.all ? 0 : end - std::min(end, kPage);
    const std::wstring such = line.user || !line.since.empty() ? L"such " : L"";
    text += count == 0                   ? L"\nNo " + such + L"changes in the whole event log\n"
            : first == 0 && end == count ? L"\nAll " + such + L"changes\n"
            : first == end               ? L"\nNo such page\n"
                           : L"\nChanges " + std::to_wstring(first + 1) + L" to " + std::to_wstring(end) + L" of " +
                                 std::to_wstring(count) + L" (--page " + std::to_wstring(page + 1) +
                                 L" for earlier ones, --all for all)\n";
    for (size_t i = first; i < end; ++i) {
        const Change& change = facts.changes[i];
        text += L"  " + change.time + L"  " + change.tag + L"  " + change.text + L"\n";
    }
    return text;
}

std::wstring JsonNamed(const NamedNumber& value, int depth) {
    return JsonSettings({{L"number", value.number}, {L"name", value.name}}, depth);
}

std::wstring Json(const v5::Site& site, const SecurityFacts& facts, std::optional<long> may) {
    std::vector<std::wstring> minimums, changes, holders;
    for (const Holder& holder : may ? Holders(facts, *may) : std::vector<Holder>()) {
        holders.push_back(JsonSettings(
            {{L"who", holder.who}, {L"level", long{holder.level}}, {L"names", holder.names}, {L"may", holder.may}}, 2));
    }
    for (const Minimum& minimum : facts.minimums) {
        minimums.push_back(JsonSettings({{L"restriction", minimum.restriction.number},
                                         {L"name", minimum.restriction.name},
                                         {L"level", minimum.level.number},
                                         {L"levelName", minimum.level.name}},
                                        2));
    }
    for (const Change& change : facts.changes) {
        changes.push_back(JsonSettings({{L"time", change.time}, {L"tag", change.tag}, {L"text", change.text}}, 2));
    }
    return JsonDocument(
        {{L"site", JsonText(site.Current().entry->siteID)},
         {L"status", JsonNamed(facts.status, 1)},
         {L"user", JsonText(facts.user)},
         {L"userLevel", JsonNamed(facts.userLevel, 1)},
         {L"lists",
          JsonSettings({{L"level1", facts.lists[0]}, {L"level2", facts.lists[1]}, {L"level3", facts.lists[2]}}, 1)},
         {L"minimums", JsonArray(minimums, 1)},
         {L"changesRead", facts.isTrailRead ? L"true" : L"false"},
         {L"changes", JsonArray(changes, 1)},
         {L"may", JsonArray(holders, 1)},
         {L"messages", JsonTexts(facts.messages, 1)}});
}

}  // namespace

Report ShowSecurity(const CommandLine& line, const v5::Site& site) {
    SecurityFacts facts = ReadSecurity(site, line.may);
    std::erase_if(facts.changes, [&](const Change& change) {
        return change.time < line.since ||
               (line.user && v5::FindIgnoreCase(change.text, L"by '" + *line.user + L"'") == std::wstring::npos);
    });
    for (std::wstring& message : facts.messages) {
        message = MaskPasswords(message);
    }
    for (Change& change : facts.changes) {
        change.text = MaskPasswords(change.text);
    }
    Report report;
    report.errors = MessageLines(facts.messages);
    if (!facts.isOpen) {
        report.status = NoDahs;
        report.output = line.json ? JsonFailure(report.status, facts.messages) : L"";
        return report;
    }
    report.status = facts.messages.empty() && facts.isTrailRead ? Fine : Problems;
    report.output = line.json ? Json(site, facts, line.may)
                              : L"Site        " + site.Current().entry->siteID + L"\n" + Lines(facts, line);
    if (line.may && !line.json) {
        report.output += MayLines(facts, *line.may);
    }
    return report;
}

}  // namespace v5site
