// Every dialog, shown again and again, leaves the process's graphics, window and kernel objects as they were.
#include <windows.h>

#include <cstdlib>
#include <iostream>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "security/frmGetPasswordFromUser.h"
#include "soak/Usage.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Dialog shown often";

// Shows a dialog `rounds` times, each time closed as soon as it stands there.
void Repeat(int rounds, const std::wstring& title, const std::function<void()>& show) {
    std::atomic<int> closed = 0;
    ModalCall call([&] {
        for (; closed < rounds; ++closed) {
            show();
        }
    });
    for (int i = 0; i < rounds; ++i) {
        EXPECT_EVENTUALLY((PostMessageW(FindDialog(title), WM_COMMAND, IDCANCEL, 0), closed > i));
    }
}

// How often each dialog is shown between two looks at the process.
int Rounds() {
    const char* wanted = std::getenv("V5_DIALOG_ROUNDS");
    return wanted != nullptr ? std::atoi(wanted) : 15;
}

struct Objects {
    int gdi = CountGdi();
    int user = CountUser();
    int handles = CountHandles();

    bool IsAbout(const Objects& before) const {
        const int slack = Rounds() / 3;  // far less than one object a round
        return gdi - before.gdi <= slack && user - before.user <= slack && handles - before.handles <= slack;
    }
};

std::ostream& operator<<(std::ostream& out, const Objects& objects) {
    return out << "gdi " << objects.gdi << ", user " << objects.user << ", handles " << objects.handles;
}

}  // namespace

TEST(Leaks, DialogsLeaveNothingBehind) {
    const SiteFolder site(SiteFile({{1, "NORTH", "Primary"}, {2, "NORTH", "Secondary"}}));
    const struct {
        std::string title;
        std::function<void()> show;
    } dialogs[] = {
        {"Message box", [] { AsyncMsgBox(L"Text", 0x31, L"Message box"); }},
        {"Date", [] { GetDateFromUser(L"Date", 0.0, false, true, false); }},
        {"Time", [] { GetTimeFromUser(L"Time", 0.5); }},
        {"Choose DAHS", [] { GetDahsIdFromUser(0); }},
        {"Password", [] { AskForPassword({}, [](const SecretText&) { return true; }); }},
        {"About Vantor", [] { ShowVantorAboutBox(L"Client"); }},
        {"Vantor Support Information", [] { ShowVantorSupportInfo(); }},
    };
    const ComPtr<IUnknown> loaded = LoadComponent();
    constexpr int kMostTries = 10;
    for (const auto& [title, show] : dialogs) {
        // The system fills caches of its own at first, up to a limit; a leak grows every time.
        Objects before;
        Objects after;
        for (int i = 0; i < kMostTries && (i == 0 || !after.IsAbout(before)); ++i) {
            before = Objects();
            Repeat(Rounds(), std::wstring(title.begin(), title.end()), show);
            after = Objects();
            std::cout << title << ", " << Rounds() << " times: " << before << "; then " << after << std::endl;
        }
        EXPECT_TRUE(after.IsAbout(before)) << title;
    }
}

}  // namespace v5::test
