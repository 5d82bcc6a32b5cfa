#include "config/DahsIniMain.h"

namespace v5 {

STDMETHODIMP DahsIniMain::get_Problems(VARIANT* result) {
    if (result != nullptr && site_.Problems().empty()) {
        VariantInit(result);
        return S_OK;
    }
    return Return(result, [&] { return site_.Problems(); });
}

STDMETHODIMP DahsIniMain::ReadVantorINI4(AppCategoryForProcessorAffinityEnum category, VARIANT_BOOL noninteractive,
                                         VARIANT_BOOL dotNet, DahsEntryOptionsEnum option, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        return site_.Read(static_cast<AppCategory>(category), ToBool(noninteractive), ToBool(dotNet),
                          static_cast<BlankConnections>(option));
    });
}

STDMETHODIMP DahsIniMain::ChooseDahs3(long dahsId, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return site_.Choose(dahsId, ToBool(noninteractive), ToBool(dotNet)); });
}

STDMETHODIMP DahsIniMain::ChooseDahs4(BSTR siteId, VARIANT_BOOL noninteractive, VARIANT_BOOL dotNet,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false,
                         [&] { return site_.ChooseSite(View(siteId), ToBool(noninteractive), ToBool(dotNet)); });
}

STDMETHODIMP DahsIniMain::SetupWithOneForcedDahsEntry(BSTR siteId, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return site_.SetupForced(std::wstring(View(siteId))); });
}

STDMETHODIMP DahsIniMain::FindRedundantDasIDs(BSTR siteId, long initialDasId, long* primaryDasId,
                                              long* secondaryDasId) {
    if (primaryDasId == nullptr || secondaryDasId == nullptr) {
        return E_POINTER;
    }
    return Do([&] {
        const RedundantDasIds ids = site_.FindRedundantDasIds(View(siteId), initialDasId);
        *primaryDasId = ids.primary;
        *secondaryDasId = ids.secondary;
    });
}

STDMETHODIMP DahsIniMain::GetDahsIDForSiteID(BSTR siteId, long* result) {
    return Return(result, [&] { return site_.FindRedundantDasIds(View(siteId), 0).primary; });
}

STDMETHODIMP DahsIniMain::GetDahsIDForComputerName(BSTR, VARIANT_BOOL preferPrimaryDas, long* result) {
    // The computer is always the one that the process runs on, whatever name is passed: callers rely on it.
    return Return(result, [&] { return site_.FindLocalDahsId(ToBool(preferPrimaryDas)); });
}

STDMETHODIMP DahsIniMain::GetInfoArray(long extraArrayEntries, VARIANT* result) {
    return Return(result, [&] { return site_.InfoTexts(extraArrayEntries); });
}

}  // namespace v5
