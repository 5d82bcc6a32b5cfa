#include "productinfo/AboutTexts.h"

#include "ProductConstants.h"
#include "productinfo/ReleaseNumber.h"

namespace v5 {

AboutTexts MakeAboutTexts(InstallerQueries& installer, MessageSink* sink, std::wstring_view appTitle) {
    return {.productName = std::wstring(appTitle),
            .copyright = std::wstring(product::kCopyright),
            .company = std::wstring(product::kCompanyName),
            .trademarkNotice = std::wstring(product::kTrademarkNotice),
            .release = ReleaseNumber(installer, sink, ReleaseKind::Full)};
}

}  // namespace v5
