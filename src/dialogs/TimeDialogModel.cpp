#include "dialogs/TimeDialogModel.h"

#include "base/Dates.h"

namespace v5 {

namespace {

TimeFields InitialFields(const TimeDialogSettings& settings) {
    const CivilDateTime time = FromAutomationDate(settings.DateTimeValue);
    return {time.hour, time.minute, settings.Use24HourFormat, FilterCaption(L"AM"), FilterCaption(L"PM")};
}

}  // namespace

std::wstring FilterCaption(std::wstring_view caption) {
    constexpr std::wstring_view kOpen = L"{{";
    constexpr std::wstring_view kClose = L"}}";
    std::wstring text(caption);
    for (size_t open = text.find(kOpen); open != std::wstring::npos; open = text.find(kOpen)) {
        const size_t close = text.find(kClose, open + kOpen.size());
        if (close == std::wstring::npos) {
            break;
        }
        text.erase(open, close + kClose.size() - open);
    }
    return text;
}

TimeDialogModel::TimeDialogModel(const TimeDialogSettings& settings) : mTime(InitialFields(settings)) {}

void TimeDialogModel::SetUse24Hour(bool use24Hour) {
    if (use24Hour != mTime.Use24Hour()) {
        mTime.SetUse24Hour(use24Hour);
    }
}

double TimeDialogModel::DateTimeValue() const {
    CivilDateTime answer;
    answer.hour = mTime.Hour();
    answer.minute = mTime.Minute();
    return ToAutomationDate(answer);
}

}  // namespace v5
