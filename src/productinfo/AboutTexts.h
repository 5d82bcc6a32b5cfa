// The texts of the about box.
#pragma once

#include <string>
#include <string_view>

#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

struct AboutTexts {
    std::wstring productName;  // the calling program's title, unchanged
    std::wstring copyright;
    std::wstring company;
    std::wstring trademarkNotice;
    std::wstring release;  // "Release 5.3.12"; empty when the main product is not installed
};

// `sink` (null: nobody listens) gets STR-0146 when the main product is not installed. Never throws for what the
// installer does.
AboutTexts MakeAboutTexts(InstallerQueries& installer, MessageSink* sink, std::wstring_view appTitle);

}  // namespace v5
