// A stand-in for urlmon.dll in 32-bit Wine, which on a 64-bit-only system has no sockets: its own urlmon.dll, and MSXML
// that needs it, then do not load. Documents that are parsed from memory call none of these.
#include <windows.h>

#include <urlmon.h>

STDAPI CoInternetCombineUrlEx(IUri*, LPCWSTR, DWORD, IUri**, DWORD_PTR) {
    return E_NOTIMPL;
}
STDAPI CoInternetCombineIUri(IUri*, IUri*, DWORD, IUri**, DWORD_PTR) {
    return E_NOTIMPL;
}
STDAPI CreateAsyncBindCtx(DWORD, IBindStatusCallback*, IEnumFORMATETC*, IBindCtx**) {
    return E_NOTIMPL;
}
STDAPI CreateIUriBuilder(IUri*, DWORD, DWORD_PTR, IUriBuilder**) {
    return E_NOTIMPL;
}
STDAPI CreateUri(LPCWSTR, DWORD, DWORD_PTR, IUri**) {
    return E_NOTIMPL;
}
STDAPI CreateURLMoniker(LPMONIKER, LPCWSTR, LPMONIKER*) {
    return E_NOTIMPL;
}
STDAPI CreateURLMonikerEx(LPMONIKER, LPCWSTR, LPMONIKER*, DWORD) {
    return E_NOTIMPL;
}
STDAPI CreateURLMonikerEx2(LPMONIKER, IUri*, LPMONIKER*, DWORD) {
    return E_NOTIMPL;
}
STDAPI RegisterBindStatusCallback(LPBC, IBindStatusCallback*, IBindStatusCallback**, DWORD) {
    return E_NOTIMPL;
}
