// What the product asks of the Windows Installer, and the look-ups that the release number, the support information
// and the help launcher share.
#pragma once

#include <string>
#include <string_view>

#include "base/AutomationError.h"
#include "base/MessageSink.h"

namespace v5 {

// Port: the Windows Installer. Every member throws AutomationError when the installer is missing or refuses.
class InstallerQueries {
  public:
    virtual ~InstallerQueries() = default;

    // The code of the first installed product, in the installer's order, that belongs to an upgrade code; empty when
    // there is none. All codes are GUIDs in braces, upper case.
    virtual std::wstring RelatedProduct(std::wstring_view upgradeCode) = 0;

    // An attribute of an installed product, such as "InstalledProductName".
    virtual std::wstring ProductInfo(std::wstring_view productCode, std::wstring_view attribute) = 0;

    // The path of the key file of an installed component; empty when the product does not hold it.
    virtual std::wstring ComponentPath(std::wstring_view productCode, std::wstring_view componentCode) = 0;
};

// The first product that the installer relates to the upgrade code; empty when there is none, and then `sink` (null:
// nobody listens) gets "<tag>: Cannot find installed product code for upgrade code '<code>'". Throws AutomationError.
std::wstring FirstRelatedProduct(InstallerQueries& installer, MessageSink* sink, std::wstring_view tag,
                                 std::wstring_view upgradeCode);

// Name and install date (as the installer keeps it, YYYYMMDD) of the first product related to the upgrade code; empty
// with the message STR-0146 when there is none. Both throw AutomationError.
std::wstring InstalledProductName(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode);
std::wstring InstallDate(InstallerQueries& installer, MessageSink* sink, std::wstring_view upgradeCode);

}  // namespace v5
