#include "config/DahsIniMain.h"

namespace v5 {

STDMETHODIMP DahsIniMain::get_Problems(VARIANT* Result) {
    if (Result != nullptr && mSite.Problems().empty()) {
        VariantInit(Result);
        return S_OK;
    }
    return Return(Result, [&] { return mSite.Problems(); });
}

STDMETHODIMP DahsIniMain::ReadVantorINI4(AppCategoryForProcessorAffinityEnum lngSetCpuAffinity,
                                         VARIANT_BOOL blnIsNoninteractiveProcess,
                                         VARIANT_BOOL blnUseDotNetConnectionStrings,
                                         DahsEntryOptionsEnum lngConnStringOption, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        return mSite.Read(static_cast<AppCategory>(lngSetCpuAffinity), ToBool(blnIsNoninteractiveProcess),
                          ToBool(blnUseDotNetConnectionStrings), static_cast<BlankConnections>(lngConnStringOption));
    });
}

STDMETHODIMP DahsIniMain::ChooseDahs3(long lngDahsID, VARIANT_BOOL blnIsNoninteractiveProcess,
                                      VARIANT_BOOL blnUseDotNetConnectionStrings, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        return mSite.Choose(lngDahsID, ToBool(blnIsNoninteractiveProcess), ToBool(blnUseDotNetConnectionStrings));
    });
}

STDMETHODIMP DahsIniMain::ChooseDahs4(BSTR strSiteID, VARIANT_BOOL blnIsNoninteractiveProcess,
                                      VARIANT_BOOL blnUseDotNetConnectionStrings, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] {
        return mSite.ChooseSite(View(strSiteID), ToBool(blnIsNoninteractiveProcess),
                                ToBool(blnUseDotNetConnectionStrings));
    });
}

STDMETHODIMP DahsIniMain::SetupWithOneForcedDahsEntry(BSTR strSiteID, VARIANT_BOOL* Result) {
    return ReturnQuietly(Result, false, [&] { return mSite.SetupForced(std::wstring(View(strSiteID))); });
}

STDMETHODIMP DahsIniMain::FindRedundantDasIDs(BSTR strSiteID, long lngInitialDasID, long* lngPrimaryDasID,
                                              long* lngSecondaryDasID) {
    if (lngPrimaryDasID == nullptr || lngSecondaryDasID == nullptr) {
        return E_POINTER;
    }
    return Do([&] {
        const RedundantDasIds ids = mSite.FindRedundantDasIds(View(strSiteID), lngInitialDasID);
        *lngPrimaryDasID = ids.primary;
        *lngSecondaryDasID = ids.secondary;
    });
}

STDMETHODIMP DahsIniMain::GetDahsIDForSiteID(BSTR strSiteID, long* Result) {
    return Return(Result, [&] { return mSite.FindRedundantDasIds(View(strSiteID), 0).primary; });
}

STDMETHODIMP DahsIniMain::GetDahsIDForComputerName(BSTR, VARIANT_BOOL blnPreferPrimaryDas, long* Result) {
    // The computer is always the one that the process runs on, whatever name is passed: callers rely on it.
    return Return(Result, [&] { return mSite.FindLocalDahsId(ToBool(blnPreferPrimaryDas)); });
}

STDMETHODIMP DahsIniMain::GetInfoArray(long lngExtraArrayEntries, VARIANT* Result) {
    return Return(Result, [&] { return mSite.InfoTexts(lngExtraArrayEntries); });
}

}  // namespace v5
