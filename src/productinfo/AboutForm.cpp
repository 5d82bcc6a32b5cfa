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
        AddText(lblProductName, mTexts.productName);
        AddText(lblVantorRelease, mTexts.release);
        AddText(lblCopyright, mTexts.copyright);
        AddText(lblCompany, mTexts.company);
        AddText(lblTrademarkNotice, mTexts.trademarkNotice);
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

    const AboutTexts& mTexts;
};

}  // namespace

void ShowAboutBox(const AboutTexts& texts) {
    AboutForm(texts).ShowModal();
}

}  // namespace v5
