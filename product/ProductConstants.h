// What the maker's installer packages and branding decide: every fixed code and text that is not behaviour.
//
// The values here are development values. A release build takes its own copy of this header, with the same names and
// the maker's values, from a folder outside this tree: `cmake --preset win64 -DV5_PRODUCT_DIR=<folder>`. What each
// value must be is explained in docs/constants.md.
#pragma once

#include <string_view>

namespace v5::product {

// Windows Installer codes, in the form the installer compares: braces, upper case. An upgrade code stays the same over
// all releases of a package; the Ostra product changed its code once, and installations of the older one are still
// in the field.
inline constexpr std::wstring_view kUpgradeCodeMain = L"{94067A52-3333-49C7-AC84-417C9EEB59DD}";
inline constexpr std::wstring_view kUpgradeCodeSupportFiles = L"{DD360021-08FE-4A0B-9CB2-06CF30A2CEC4}";
inline constexpr std::wstring_view kUpgradeCodeWeb = L"{C52E1356-D8AB-4EF4-92E5-104A19A39AAB}";
inline constexpr std::wstring_view kUpgradeCodeOstra = L"{04514CAE-88F8-4111-AAAB-C8AAB9DF02CF}";
inline constexpr std::wstring_view kUpgradeCodeOstraOlder = L"{91276421-314D-4B5B-BACF-E00F4080B7FC}";

// The installer component of the main product whose key file is the help file, and that file's name as messages
// quote it.
inline constexpr std::wstring_view kHelpComponentCode = L"{48F4855A-A97A-44FE-B6C1-E3C66D871947}";
inline constexpr std::wstring_view kHelpFileName = L"VantorManual.chm";

// Branding: the about box and the support information box.
inline constexpr std::wstring_view kCompanyName = L"Nimbo Environmental Systems, Inc.";
inline constexpr std::wstring_view kCopyright =
    L"Copyright \u00A9 1996\u20132014 Nimbo Environmental Systems, Inc. All rights reserved.";
inline constexpr std::wstring_view kTrademarkNotice =
    L"Vantor and the Vantor logo are trademarks of Nimbo Environmental Systems, Inc.";
inline constexpr std::wstring_view kSupportPhone = L"+1 (201) 555-0142";
inline constexpr std::wstring_view kSupportEmail = L"support@nimbo.example";

// Security: the scrambler's key (6 characters) and the scrambled forms of the two master passwords (24 and 37 digits).
// A new key needs new master values, and makes every stored alarm-reset password invalid.
inline constexpr std::wstring_view kScramblerKey = L"m4&Zt!";
inline constexpr std::wstring_view kMasterPassword24 = L"217219266416736471701530";
inline constexpr std::wstring_view kMasterPassword37 = L"7375247431764762744452047361008241653";

}  // namespace v5::product
