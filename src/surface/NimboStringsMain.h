// NimboStringsMain: the facade through which the product's programs reach the shared dialogs, the release number, the
// pictures and the factory flag. It keeps nothing between calls.
#pragma once

#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"

namespace v5 {

class NimboStringsMain final : public AutomationObject<NimboStringsMain, _NimboStringsMain, ::NimboStringsMain> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Strings.NimboStringsMain";

    STDMETHODIMP AsyncMsgBox(BSTR Prompt, long Buttons, BSTR Title, long lngReserved, VARIANT_BOOL blnBeep,
                             long lngTimeout, long* Result) override;
    STDMETHODIMP ShowVantorAboutBox(IRaiseMsg* irm, BSTR AppTitle) override;
    STDMETHODIMP ShowVantorSupportInfo(IRaiseMsg* irm) override;
    STDMETHODIMP GetDateFromUser(BSTR Caption, DATE InitialDate, VARIANT_BOOL GetDateOnly, VARIANT_BOOL GetMinutesAlso,
                                 VARIANT_BOOL DateCannotBeNull, DATE* Result) override;
    STDMETHODIMP GetTimeFromUser(BSTR Caption, DATE InitialTime, VARIANT_BOOL* UserCancelled, DATE* Result) override;

    // Never raises: a failure is the empty text.
    STDMETHODIMP GetVantorReleaseNumber(IRaiseMsg* irm, VantorReleaseEnum lngReleaseType, BSTR* Result) override;

    STDMETHODIMP LoadVantorBitmap(VantorBitmapEnum BitmapID, IPictureDisp** Result) override;
    STDMETHODIMP LoadVantorIcon(VantorIconsEnum IconID, IPictureDisp** Result) override;
    STDMETHODIMP get_IsFactoryComputer(VARIANT_BOOL* Result) override;

    // The four never raise: a failure is False, with the initial DAHS as the selected one.
    STDMETHODIMP GetDahsIDFromUser(long lngInitialDahsID, long* lngUserSelectedDahsID, VARIANT_BOOL* Result) override;
    STDMETHODIMP GetDahsIDFromUser2(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                    DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL* Result) override;
    STDMETHODIMP GetDahsIDFromUser3(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                    DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL blnAllowSecondaryDas,
                                    VARIANT_BOOL* Result) override;
    STDMETHODIMP GetDahsIDFromUser4(long lngInitialDahsID, long* lngUserSelectedDahsID,
                                    DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL blnAllowSecondaryDas,
                                    VARIANT_BOOL blnAllowRemoteDas, VARIANT_BOOL* Result) override;
};

}  // namespace v5
