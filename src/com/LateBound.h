// An object of another component that is known by its programmatic identifier and called by the names of its members.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <wrl/client.h>

#include <initializer_list>
#include <string>

namespace v5 {

// What a late-bound call has raised; its texts end with it.
struct Raised : EXCEPINFO {
    Raised() : EXCEPINFO{} {}
    ~Raised() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
};

// IDispatch::Invoke of a member known by its identifier, the arguments in the order of its declaration. `result` may be
// null. Throws std::bad_alloc.
HRESULT InvokeInOrder(IDispatch& object, DISPID id, WORD flags, std::initializer_list<_variant_t> arguments,
                      VARIANT* result, Raised& raised);

class LateBound {
  public:
    // A new object. Throws AutomationError when the component is not registered or cannot be created.
    explicit LateBound(const wchar_t* progId);

    // An object that a late-bound call has returned. Throws AutomationError (type mismatch) when `object` is none.
    explicit LateBound(const _variant_t& object);

    // Calls a method or reads a property, the arguments in the order of its declaration. Throws AutomationError with
    // the number and description of the object's own error information where it gives one.
    _variant_t Call(const wchar_t* member, std::initializer_list<_variant_t> arguments = {}) const;

    // The same, the answer as text or as a whole number. Throws also when the answer cannot be converted.
    std::wstring CallText(const wchar_t* member, std::initializer_list<_variant_t> arguments = {}) const;
    long CallLong(const wchar_t* member, std::initializer_list<_variant_t> arguments = {}) const;

  private:
    Microsoft::WRL::ComPtr<IDispatch> mObject;
};

}  // namespace v5
