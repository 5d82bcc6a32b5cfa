#include "Calls.h"

#include "V5Strings.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5::test {

namespace {

_variant_t Ask(const wchar_t* member, const std::vector<_variant_t>& arguments) {
    const CallResult result = Call(CreateByName(L"V5Strings.NimboStringsMain").Get(), member, arguments);
    EXPECT_EQ(result.status, S_OK) << member;
    return result.value;
}

}  // namespace

long AsyncMsgBox(const std::wstring& prompt, long buttons, const std::wstring& title, long timeout) {
    return Ask(L"AsyncMsgBox", {prompt.c_str(), buttons, title.c_str(), 0L, false, timeout});
}

double GetDateFromUser(const std::wstring& caption, double initial, bool dateOnly, bool minutesAlso,
                       bool dateCannotBeNull) {
    return Ask(L"GetDateFromUser",
               {caption.c_str(), _variant_t(initial, VT_DATE), dateOnly, minutesAlso, dateCannotBeNull});
}

TimeAnswer GetTimeFromUser(const std::wstring& caption, double initial) {
    VARIANT_BOOL cancelled = 1;
    const double time =
        Ask(L"GetTimeFromUser", {caption.c_str(), _variant_t(initial, VT_DATE), ByReference(VT_BOOL, &cancelled)});
    EXPECT_TRUE(cancelled == VARIANT_TRUE || cancelled == VARIANT_FALSE);
    return {time, cancelled == VARIANT_TRUE};
}

DahsAnswer GetDahsIdFromUser(long initial, bool allowSecondary, bool allowRemote) {
    long dahsID = -1;
    const bool chosen = Ask(L"GetDahsIDFromUser4", {initial, ByReference(VT_I4, &dahsID),
                                                    static_cast<long>(V5Strings::IgnoreEntriesWithBlankConnStrings),
                                                    allowSecondary, allowRemote});
    return {chosen, dahsID};
}

void ShowVantorAboutBox(const std::wstring& application) {
    Ask(L"ShowVantorAboutBox", {_variant_t(static_cast<IDispatch*>(nullptr)), application.c_str()});
}

void ShowVantorSupportInfo() {
    Ask(L"ShowVantorSupportInfo", {_variant_t(static_cast<IDispatch*>(nullptr))});
}

std::vector<AnyDialog> AllDialogs() {
    return {
        {L"Message box", [] { AsyncMsgBox(L"Salt & pepper", 0x31, L"Message box"); }},
        {L"About Vantor", [] { ShowVantorAboutBox(L"Salt & pepper"); }},
        {L"Date", [] { GetDateFromUser(L"Date", 0.0, false, true, false); }},
        {L"Time", [] { GetTimeFromUser(L"Time", 0.5); }},
        {L"Choose DAHS", [] { GetDahsIdFromUser(0); }},
        {L"Password", [] { AskForPassword({}, [](const SecretText&) { return true; }); }},
        {L"Vantor Support Information", [] { ShowVantorSupportInfo(); }},
    };
}

ComPtr<IUnknown> LoadComponent() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    return CreateByName(L"V5Strings.NimboStringsMain");
}

double DateOf(int year, int month, int day, int hour, int minute) {
    const auto word = [](int value) { return static_cast<WORD>(value); };
    SYSTEMTIME time{word(year), word(month), 0, word(day), word(hour), word(minute), 0, 0};
    double date = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&time, &date));
    return date;
}

}  // namespace v5::test
