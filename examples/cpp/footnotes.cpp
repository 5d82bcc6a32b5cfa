// Marks values of a report with footnotes, keeps a log meanwhile, listens to the messages of a security object, and
// shows what a failing call looks like.
//
//   footnotes LOGFILE
#include <V5Strings.hpp>

#include <cstdio>

namespace {

std::wstring LogPath(const char* argument) {
    const std::string text = argument;
    return {text.begin(), text.end()};
}

void Mark(const v5strings::FootnoteList& footnotes, const wchar_t* value, const wchar_t* text) {
    // The marks are daggers, which not every console shows.
    const std::wstring mark = footnotes.CreateOrGetFootnote(nullptr, text);
    std::printf("%ls: mark %04X\n", value, static_cast<unsigned>(mark.front()));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::puts("usage: footnotes LOGFILE");
        return 2;
    }
    try {
        const v5strings::Apartment apartment;
        const v5strings::LogFileClass log;
        if (!log.StartLog(LogPath(arguments[1]), L"Footnotes", false, true)) {
            std::printf("no log: %ls\n", log.LogError().c_str());
        }
        const v5strings::FootnoteList footnotes;
        Mark(footnotes, L"112.4", L"Calibration in progress");
        Mark(footnotes, L" 98.0", L"Substituted value");
        Mark(footnotes, L"110.9", L"Calibration in progress");
        log.WriteToLog(L"Marked " + std::to_wstring(footnotes.Count()) + L" kinds of values");
        log.StopLog();

        for (const v5strings::Footnote& footnote : footnotes.GetAllFootnotes()) {
            std::printf("footnote: %ls\n", footnote.Text().c_str());
        }

        const v5strings::NimboSecurity security;  // set up for no site: it says so
        {
            const auto listening = security.OnMessage(
                [](long type, const std::wstring& text) { std::printf("message %ld: %ls\n", type, text.c_str()); });
            security.EnableSecurity();
        }
        security.EnableSecurity();  // nobody listens any more

        v5strings::DahsIniMain site;
        site.SetupWithOneForcedDahsEntry(L"SITE1");
        for (const v5strings::DahsIniEntry& entry : site.DahsEntries()) {
            std::printf("entry %ld: %ls\n", entry.DahsID(), entry.SiteID().c_str());
        }

        const v5strings::DahsIniEntries entries;  // of no site file: it holds nothing
        std::printf("entries: %ld\n", entries.Count());
        entries.Item0(0);
    } catch (const v5strings::Error& error) {
        std::printf("error %ld from %ls: %ls\n", error.Number(), error.Source().c_str(), error.Description().c_str());
    }
}
