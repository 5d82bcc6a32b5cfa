// A client's message object that keeps what it is told.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <vector>

#include "V5Msgs.h"

namespace v5::test {

// Lives on the stack of a test: references are counted by nobody.
class MessageRecorder final : public IRaiseMsg {
  public:
    std::vector<std::wstring> texts;
    std::vector<long> types;
    HRESULT answer = S_OK;  // what the object answers to each message

    STDMETHODIMP RaiseMsg(long type, BSTR text) override {
        types.push_back(type);
        texts.emplace_back(text, SysStringLen(text));
        return answer;
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IRaiseMsg);
        *object = known ? static_cast<IRaiseMsg*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

}  // namespace v5::test
