// The window of the about box.
#include "productinfo/BannerForm.h"
#include "productinfo/ProductBoxes.h"

namespace v5 {
namespace {

class AboutForm final : public BannerForm {
  public:
    explicit AboutForm(const AboutTexts& texts) : BannerForm(L"About Vantor"), mTexts(texts) {}

  protected:
    void CreateControls() override {
        AddBanner();
        AddText(kProductName, mTexts.productName);
        AddText(kRelease, mTexts.release);
        AddText(kCopyright, mTexts.copyright);
        AddText(kCompany, mTexts.company);
        AddText(kTrademarkNotice, mTexts.trademarkNotice);
        AddClose();
    }

    SIZE LayOut() override {
        PlaceBanner();
        Embolden(kProductName);
        int top = BannerHeight() + UnitsY(units::kMargin);
        top = PlaceText(kProductName, LeftMargin(), RightMargin(), top);
        top = PlaceText(kRelease, LeftMargin(), RightMargin(), top);
        top += UnitsY(units::kGroupGap);
        for (const int id : {kCompany, kCopyright, kTrademarkNotice}) {
            top = PlaceText(id, LeftMargin(), RightMargin(), top) + UnitsY(units::kGap) / 2;
        }
        return PlaceClose(top + UnitsY(units::kGroupGap));
    }

  private:
    enum TextId { kProductName = 401, kRelease, kCopyright, kCompany, kTrademarkNotice };

    const AboutTexts& mTexts;
};

}  // namespace

void ShowAboutBox(const AboutTexts& texts) {
    AboutForm(texts).ShowModal();
}

}  // namespace v5
