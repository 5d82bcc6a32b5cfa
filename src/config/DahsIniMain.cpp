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
                                         VARIANT_BOOL dot_net, DahsEntryOptionsEnum option, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] {
        return site_.Read(static_cast<AppCategory>(category), ToBool(noninteractive), ToBool(dot_net),
                          static_cast<BlankConnections>(option));
    });
}

STDMETHODIMP DahsIniMain::ChooseDahs3(long dahs_id, VARIANT_BOOL noninteractive, VARIANT_BOOL dot_net,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return site_.Choose(dahs_id, ToBool(noninteractive), ToBool(dot_net)); });
}

STDMETHODIMP DahsIniMain::ChooseDahs4(BSTR site_id, VARIANT_BOOL noninteractive, VARIANT_BOOL dot_net,
                                      VARIANT_BOOL* result) {
    return ReturnQuietly(result, false,
                         [&] { return site_.ChooseSite(View(site_id), ToBool(noninteractive), ToBool(dot_net)); });
}

STDMETHODIMP DahsIniMain::SetupWithOneForcedDahsEntry(BSTR site_id, VARIANT_BOOL* result) {
    return ReturnQuietly(result, false, [&] { return site_.SetupForced(std::wstring(View(site_id))); });
}

STDMETHODIMP DahsIniMain::FindRedundantDasIDs(BSTR site_id, long initial_das_id, long* primary_das_id,
                                              long* secondary_das_id) {
    if (primary_das_id == nullptr || secondary_das_id == nullptr) {
        return E_POINTER;
    }
    return Do([&] {
        const RedundantDasIds ids = site_.FindRedundantDasIds(View(site_id), initial_das_id);
        *primary_das_id = ids.primary;
        *secondary_das_id = ids.secondary;
    });
}

STDMETHODIMP DahsIniMain::GetDahsIDForSiteID(BSTR site_id, long* result) {
    return Return(result, [&] { return site_.FindRedundantDasIds(View(site_id), 0).primary; });
}

STDMETHODIMP DahsIniMain::GetDahsIDForComputerName(BSTR, VARIANT_BOOL prefer_primary_das, long* result) {
    // The computer is always the one that the process runs on, whatever name is passed: callers rely on it.
    return Return(result, [&] { return site_.FindLocalDahsId(ToBool(prefer_primary_das)); });
}

STDMETHODIMP DahsIniMain::GetInfoArray(long extra_array_entries, VARIANT* result) {
    return Return(result, [&] { return site_.InfoTexts(extra_array_entries); });
}

}  // namespace v5
