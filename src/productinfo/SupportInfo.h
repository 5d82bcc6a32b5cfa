// What a user who calls for support is asked for: the installed packages with their releases and dates, and how to
// reach support.
#pragma once

#include <string>
#include <string_view>

#include "productinfo/RegistryReader.h"
#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

struct SupportPackage {
    std::wstring release;    // the installed product's name
    std::wstring installed;  // "Installed 2014-03-05", or empty
};

struct SupportInfo {
    SupportPackage supportFiles{L"Common Files", L""};
    SupportPackage main{L"Vantor", L""};
    SupportPackage web;
    SupportPackage ostra;
    std::wstring company;
    std::wstring phone;
    std::wstring email;
    bool emailIsLink = false;  // a mail program is registered
};

// Reads all of it. A package that is not installed has empty texts, and `sink` (null: nobody listens) gets STR-0146
// for each query that missed it; a query that fails leaves the text above. Never throws for what the ports do.
SupportInfo ReadSupportInfo(InstallerQueries& installer, const RegistryReader& registry, MessageSink* sink);

// The "mailto:" address of a support request whose subject names the installed release.
std::wstring SupportMailAddress(std::wstring_view email, std::wstring_view vantorRelease);

// An installer's date for display: digits (YYYYMMDD) become YYYY-MM-DD, other text stays. Empty when the result is
// no date of the calendar: year, month and day between "-", "/" or ".", or month, day, year or day, month, year.
std::wstring DisplayDate(std::wstring_view installDate);

}  // namespace v5
