// The window of the about box.
#include <string>
#include <utility>

#include "ProductConstants.h"
#include "productinfo/BannerForm.h"
#include "productinfo/ProductBoxes.h"
#include "productinfo/ReleaseNumber.h"

namespace v5 {
namespace {

class AboutForm final : public BannerForm {
  public:
    AboutForm(std::wstring_view appTitle, std::wstring release)
        : BannerForm(L"About Vantor"), mAppTitle(appTitle), mRelease(std::move(release)) {}

  protected:
    void CreateControls() override {
        AddBanner();
        AddText(lblProductName, mAppTitle);
        AddText(lblVantorRelease, mRelease);
        AddText(lblCopyright, std::wstring(product::kCopyright));
        AddText(lblCompany, std::wstring(product::kCompanyName));
        AddText(lblTrademarkNotice, std::wstring(product::kTrademarkNotice));
        AddClose();
    }

    SIZE LayOut() override {
        PlaceBanner();
        Embolden(lblProductName);
        int top = BannerHeight() + UnitsY(units::kMargin);
        top = PlaceText(lblProductName, LeftMargin(), RightMargin(), top);
        top = PlaceText(lblVantorRelease, LeftMargin(), RightMargin(), top);
        top += UnitsY(units::kGroupGap);
        for (const int id : {lblCompany, lblCopyright, lblTrademarkNotice}) {
            top = PlaceText(id, LeftMargin(), RightMargin(), top) + UnitsY(units::kGap) / 2;
        }
        return PlaceClose(top + UnitsY(units::kGroupGap));
    }

  private:
    enum TextId { lblProductName = 401, lblVantorRelease, lblCopyright, lblCompany, lblTrademarkNotice };

    const std::wstring mAppTitle;
    const std::wstring mRelease;
};

}  // namespace

void ShowAboutBox(InstallerQueries& installer, MessageSink* sink, std::wstring_view appTitle) {
    AboutForm(appTitle, ReleaseNumber(installer, sink, ReleaseKind::Full)).ShowModal();
}

}  // namespace v5
