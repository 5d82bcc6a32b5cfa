// The dialogs as their callers know them: members of the registered class NimboStringsMain.
#pragma once

#include <windows.h>

#include <string>

#include "Driver.h"
#include "component/Client.h"

namespace v5::test {

// Each call shows its dialog modally and returns its answer. They are made on the thread that ModalCall starts.
long AsyncMsgBox(const std::wstring& prompt, long buttons, const std::wstring& title, long timeout = 0);

double GetDateFromUser(const std::wstring& caption, double initial, bool dateOnly = false, bool minutesAlso = true,
                       bool dateCannotBeNull = true);

struct TimeAnswer {
    double time = -1;
    bool cancelled = false;
};
TimeAnswer GetTimeFromUser(const std::wstring& caption, double initial);

struct DahsAnswer {
    bool chosen = false;
    long dahsID = -1;
};
DahsAnswer GetDahsIdFromUser(long initial, bool allowSecondary = true, bool allowRemote = true);

void ShowVantorAboutBox(const std::wstring& application);
void ShowVantorSupportInfo();

// Every dialog, by its caption. The first two show the text "Salt & pepper".
struct AnyDialog {
    const wchar_t* title;
    std::function<void()> show;
};
std::vector<AnyDialog> AllDialogs();

// An object that keeps the component loaded. Otherwise each ModalCall loads it anew, with the system libraries it
// needs.
ComPtr<IUnknown> LoadComponent();

// The automation date of a day and time of day.
double DateOf(int year, int month, int day, int hour = 0, int minute = 0);

}  // namespace v5::test
