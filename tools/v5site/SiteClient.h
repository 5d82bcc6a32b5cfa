// The published classes DahsIniMain, DahsIniEntries and DahsIniEntry, as v5site uses them.
#pragma once

#include <windows.h>

#include <wrl/client.h>

#include <string>
#include <variant>
#include <vector>

#include "CommandLine.h"
#include "V5Strings.h"

namespace v5site {

// A value of one of the types that the classes' properties have.
using Value = std::variant<std::wstring, long, bool>;

struct Setting {
    const wchar_t* name;  // the property's
    Value value;
};

// A row of the table of entries.
struct EntryRow {
    long dahsID;
    std::wstring siteID, role, computerName, description;
    bool isRemote;
};

// The text of a string of the component's; null is the empty text.
std::wstring TextOf(BSTR text);

// What the user security of the chosen DAHS's site is read with.
struct SecuritySite {
    std::wstring siteID, languageId, configDatabase, alarmsDatabase;
};

class SiteClient {
  public:
    // Creates the configuration object. Throws Error when the component is not registered.
    SiteClient();

    // Reads the site file; false when there is none or no entry of it is usable.
    bool Read(const CommandLine& line);

    // Chooses the DAHS that the command line asks for; false when there is no such DAHS.
    bool Choose(const CommandLine& line);

    std::wstring FilePath() const;
    std::vector<std::wstring> Findings() const;
    std::vector<EntryRow> Entries() const;

    // The chosen DAHS.
    std::vector<Setting> Settings() const;
    std::vector<Setting> Folders() const;
    std::vector<Setting> Connections() const;
    SecuritySite Security() const;

  private:
    Microsoft::WRL::ComPtr<_DahsIniMain> mMain;
};

}  // namespace v5site
