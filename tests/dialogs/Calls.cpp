#include "Calls.h"

#include "V5Strings.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5::test {

namespace {

ComPtr<_NimboStringsMain> Facade() {
    ComPtr<_NimboStringsMain> facade;
    EXPECT_EQ(CreateByName(L"V5Strings.NimboStringsMain").As(&facade), S_OK);
    return facade;
}

_bstr_t Bstr(const std::wstring& text) {
    return _bstr_t(text.c_str());
}

VARIANT_BOOL Bool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace

long AsyncMsgBox(const std::wstring& prompt, long buttons, const std::wstring& title, long timeout) {
    long result = -1;
    EXPECT_EQ(Facade()->AsyncMsgBox(Bstr(prompt), buttons, Bstr(title), 0, VARIANT_FALSE, timeout, &result), S_OK);
    return result;
}

double GetDateFromUser(const std::wstring& caption, double initial, bool dateOnly, bool minutesAlso,
                       bool dateCannotBeNull) {
    DATE result = -2;
    EXPECT_EQ(Facade()->GetDateFromUser(Bstr(caption), initial, Bool(dateOnly), Bool(minutesAlso),
                                        Bool(dateCannotBeNull), &result),
              S_OK);
    return result;
}

TimeAnswer GetTimeFromUser(const std::wstring& caption, double initial) {
    DATE result = -2;
    VARIANT_BOOL cancelled = 1;
    EXPECT_EQ(Facade()->GetTimeFromUser(Bstr(caption), initial, &cancelled, &result), S_OK);
    EXPECT_TRUE(cancelled == VARIANT_TRUE || cancelled == VARIANT_FALSE);
    return {result, cancelled == VARIANT_TRUE};
}

DahsAnswer GetDahsIdFromUser(long initial, bool allowSecondary, bool allowRemote) {
    long dahsID = -1;
    VARIANT_BOOL chosen = 1;
    EXPECT_EQ(Facade()->GetDahsIDFromUser4(initial, &dahsID, V5Strings::IgnoreEntriesWithBlankConnStrings,
                                           Bool(allowSecondary), Bool(allowRemote), &chosen),
              S_OK);
    return {chosen == VARIANT_TRUE, dahsID};
}

void ShowVantorAboutBox(const std::wstring& application) {
    EXPECT_EQ(Facade()->ShowVantorAboutBox(nullptr, Bstr(application)), S_OK);
}

void ShowVantorSupportInfo() {
    EXPECT_EQ(Facade()->ShowVantorSupportInfo(nullptr), S_OK);
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
    return Facade();
}

double DateOf(int year, int month, int day, int hour, int minute) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    double date = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&time, &date));
    return date;
}

}  // namespace v5::test
