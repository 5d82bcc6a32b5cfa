// Every dialog, shown again and again, leaves the process's graphics, window and kernel objects as they were.
#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <iostream>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "soak/Usage.h"

namespace v5::test {

namespace {

// How often each dialog is shown between two looks at the process.
int Rounds() {
    const char* wanted = std::getenv("V5_DIALOG_ROUNDS");
    return wanted != nullptr ? std::atoi(wanted) : 15;
}

// Shows a dialog many times, each time closed as soon as it stands there.
void Repeat(const AnyDialog& dialog) {
    std::atomic<int> closed = 0;
    ModalCall call([&] {
        for (; closed < Rounds(); ++closed) {
            dialog.show();
        }
    });
    for (int i = 0; i < Rounds(); ++i) {
        EXPECT_EVENTUALLY((PostMessageW(FindDialog(dialog.title), WM_COMMAND, IDCANCEL, 0), closed > i));
    }
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
    const ComPtr<IUnknown> loaded = LoadComponent();
    constexpr int kMostTries = 10;
    for (const AnyDialog& dialog : AllDialogs()) {
        // The system fills caches of its own at first, up to a limit; a leak grows every time.
        Objects before, after;
        for (int i = 0; i < kMostTries && (i == 0 || !after.IsAbout(before)); ++i) {
            before = Objects();
            Repeat(dialog);
            after = Objects();
            std::cout << Narrow(dialog.title) << ", " << Rounds() << " times: " << before << "; then " << after
                      << std::endl;
        }
        EXPECT_TRUE(after.IsAbout(before)) << dialog.title;
    }
}

}  // namespace v5::test
