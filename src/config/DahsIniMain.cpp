#include "config/DahsIniMain.h"

namespace v5 {

STDMETHODIMP DahsIniMain::get_Problems(VARIANT* result) {
    if (result != nullptr && mSite.Problems().empty()) {
        VariantInit(result);
        return S_OK;
    }
    return Return(result, [&] { return mSite.Problems(); });
}

STDMETHODIMP DahsIniMain::ReadVantorINI4(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL noninteractive,
                                         VARIANT_BOOL dotNet, DahsEntryOptionsEnum option, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        return mSite.Read(static_cast<AppCategory>(category), ToBool(noninteractive), ToBool(dotNet),
                          static_cast<BlankConnections>(option));
    });
}

STDMETHODIMP DahsIniMain::ChooseDahs3(long dahsID, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return mSite.Choose(dahsID, ToBool(noninteractive), ToBool(dotNet)); });
}

STDMETHODIMP DahsIniMain::ChooseDahs4(BSTR siteID, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false,
                         [&] { return mSite.ChooseSite(View(siteID), ToBool(noninteractive), ToBool(dotNet)); });
}

STDMETHODIMP DahsIniMain::SetupWithOneForcedDahsEntry(BSTR siteID, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return mSite.SetupForced(std::wstring(View(siteID))); });
}

STDMETHODIMP DahsIniMain::FindRedundantDasIDs(BSTR siteID, long initialDasID, long* primaryDasID,
                                              long* secondaryDasID) {
    if (primaryDasID == nullptr || secondaryDasID == nullptr) {
        return E_POINTER;
    }
    return Do([&] {
        const RedundantDasIds ids = mSite.FindRedundantDasIds(View(siteID), initialDasID);
        *primaryDasID = ids.primary;
        *secondaryDasID = ids.secondary;
    });
}

STDMETHODIMP DahsIniMain::GetDahsIDForSiteID(BSTR siteID, long* result) {
    return Return(result, [&] { return mSite.FindRedundantDasIds(View(siteID), 0).primary; });
}

STDMETHODIMP DahsIniMain::GetDahsIDForComputerName(BSTR, VARIANT_BOOL preferPrimaryDas, long* result) {
    // The computer is always the one that the process runs on, whatever name is passed: callers rely on it.
    return Return(result, [&] { return mSite.FindLocalDahsId(ToBool(preferPrimaryDas)); });
}

STDMETHODIMP DahsIniMain::GetInfoArray(long extraArrayEntries, VARIANT* result) {
    return Return(result, [&] { return mSite.InfoTexts(extraArrayEntries); });
}

}  // namespace v5
