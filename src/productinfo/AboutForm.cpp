// The window of the about box.
#include "productinfo/BannerForm.h"
#include "productinfo/ProductBoxes.h"

namespace v5 {
namespace {

class AboutForm final : public BannerForm {
  public:
    explicit AboutForm(const AboutTexts& texts) : BannerForm(L"About Vantor"), texts_(texts) {}

  protected:
    void CreateControls() override {
        AddBanner();
        AddText(kProductName, texts_.productName);
        AddText(kRelease, texts_.release);
        AddText(kCopyright, texts_.copyright);
        AddText(kCompany, texts_.company);
        AddText(kTrademarkNotice, texts_.trademarkNotice);
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

    const AboutTexts& texts_;
};

}  // namespace

void ShowAboutBox(const AboutTexts& texts) {
    AboutForm(texts).ShowModal();
}

}  // namespace v5
