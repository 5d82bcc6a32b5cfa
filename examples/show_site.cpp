// The findings of reading the site file, and the settings of the current DAHS, in C++. See docs/using.md for the other
// classes.
#include <windows.h>
// after windows.h, which they need:
#include <comdef.h>
#include <wrl/client.h>

#include <cstdio>
#include <cwchar>

#include "V5Strings.h"

namespace {

using Microsoft::WRL::ComPtr;

void Check(HRESULT status) {
    if (FAILED(status)) {
        _com_raise_error(status);
    }
}

// The texts of an array that the library returned (VT_ARRAY|VT_BSTR, from 0), one a line.
void PrintTexts(const _variant_t& texts) {
    if (texts.vt != (VT_ARRAY | VT_BSTR)) {
        return;  // Empty: there is none
    }
    LONG last = -1;
    Check(SafeArrayGetUBound(texts.parray, 1, &last));
    for (LONG i = 0; i <= last; ++i) {
        _bstr_t text;
        Check(SafeArrayGetElement(texts.parray, &i, text.GetAddress()));
        std::wprintf(L"%ls\n", static_cast<const wchar_t*>(text));
    }
}

void ShowSite() {
    ComPtr<_DahsIniMain> ini;
    Check(CoCreateInstance(__uuidof(DahsIniMain), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_DahsIniMain), &ini));
    VARIANT_BOOL done = VARIANT_FALSE;
    Check(ini->ReadVantorINI(V5Strings::NotApplicable, &done));
    _variant_t findings;
    Check(ini->get_Problems(findings.GetAddress()));
    PrintTexts(findings);
    if (done != VARIANT_FALSE) {
        _variant_t settings;
        Check(ini->GetInfoArray(0, settings.GetAddress()));
        PrintTexts(settings);
    }
}

}  // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int status = 0;
    try {
        ShowSite();
    } catch (const _com_error& error) {
        std::wprintf(L"failed: 0x%08lX\n", static_cast<unsigned long>(error.Error()));
        status = 1;
    }
    CoUninitialize();
    return status;
}
