// What late-bound calls need to know of a dual interface's members. The descriptions are made from the contracts when
// the component is built (tools/build/WriteDispatchMembers.cpp): `DispatchMembers<Interface>::kAll`, in
// `<contract>Members.h`.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <concepts>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

namespace v5 {

// The most parameters of a member, without its result.
constexpr size_t kMostParameters = 10;

// How a parameter or result travels in a VARIANT.
struct DispatchType {
    VARTYPE type = VT_EMPTY;        // VT_EMPTY: no result
    const IID& (*iid)() = nullptr;  // of an interface pointer
};

struct DispatchParameter {
    const char* name;
    DispatchType type;
    bool byReference = false;
    bool optional = false;
    long defaultValue = 0;  // of an optional number or Boolean; a text's is the empty text, an object's none, and a
                            // VARIANT is marked as omitted
};

// A name's number for quick comparison, the same for capitals and small letters. Names are ASCII.
template <class Character>
constexpr std::uint32_t DispatchNameHash(const Character* name) {
    std::uint32_t hash = 2166136261;  // FNV-1a
    for (; *name != 0; ++name) {
        const bool isCapital = *name >= 'A' && *name <= 'Z';
        hash = (hash ^ static_cast<std::uint32_t>(*name + (isCapital ? 'a' - 'A' : 0))) * 16777619;
    }
    return hash;
}

struct DispatchMember {
    // Calls the method of `object`, a pointer to the interface itself: one VARIANT for each parameter, of its type, and
    // one for the result.
    using Call = HRESULT (*)(void* object, VARIANT* values);

    consteval DispatchMember(const char* itsName, DISPID itsId, WORD itsKind,
                             std::span<const DispatchParameter> itsParameters, DispatchType itsResult, Call itsCall)
        : name(itsName),
          nameHash(DispatchNameHash(itsName)),
          id(itsId),
          kind(itsKind),
          result(itsResult.type),
          parameters(itsParameters),
          call(itsCall) {
        if (parameters.size() > kMostParameters) {
            throw "kMostParameters is too small";  // stops the compiler
        }
    }

    const char* name;
    std::uint32_t nameHash;
    DISPID id;
    WORD kind;  // INVOKEKIND
    VARTYPE result;
    std::span<const DispatchParameter> parameters;
    Call call;
};

// Specialised for every dual interface.
template <class Interface>
struct DispatchMembers;

template <class Interface>
const IID& DispatchIid() {
    return __uuidof(Interface);
}

// The type that a C++ type of the contract has in a VARIANT.
template <class Value>
consteval DispatchType TypeInVariant() {
    if constexpr (std::is_same_v<Value, BSTR>) {
        return {VT_BSTR};
    } else if constexpr (std::is_same_v<Value, long> || std::is_enum_v<Value>) {
        return {VT_I4};
    } else if constexpr (std::is_same_v<Value, VARIANT_BOOL>) {
        return {VT_BOOL};
    } else if constexpr (std::is_same_v<Value, DATE>) {
        return {VT_DATE};
    } else if constexpr (std::is_same_v<Value, VARIANT>) {
        return {VT_VARIANT};
    } else {
        using Object = std::remove_pointer_t<Value>;
        static_assert(std::derived_from<Object, IUnknown>, "a type that late-bound calls do not know yet");
        // cppcheck-suppress returnDanglingLifetime ; DispatchIid is a variable template
        return {std::derived_from<Object, IDispatch> ? VARTYPE{VT_DISPATCH} : VARTYPE{VT_UNKNOWN},
                &DispatchIid<Object>};
    }
}

// A VARIANT as the method's parameter: what it holds, or for a parameter by reference the place where it holds it.
template <class Parameter>
Parameter FromVariant(VARIANT& value) {
    using Target = std::remove_pointer_t<Parameter>;
    if constexpr (std::is_same_v<Parameter, VARIANT*>) {
        return &value;
    } else if constexpr (std::is_same_v<Parameter, VARIANT>) {
        return value;  // lent
    } else if constexpr (std::is_pointer_v<Parameter> && !std::is_same_v<Parameter, BSTR> &&
                         !std::derived_from<Target, IUnknown>) {
        return static_cast<Parameter>(static_cast<void*>(&V_BYREF(&value)));
    } else {
        Parameter held;
        std::memcpy(&held, &V_BYREF(&value), sizeof held);
        return held;
    }
}

template <auto Method>
struct DispatchCall;

template <class Interface, class... Parameters, HRESULT (STDMETHODCALLTYPE Interface::*Method)(Parameters...)>
struct DispatchCall<Method> {
    static HRESULT Call(void* object, VARIANT* values) {
        return CallWith(object, values, std::index_sequence_for<Parameters...>());
    }

  private:
    template <size_t... at>
    static HRESULT CallWith(void* object, [[maybe_unused]] VARIANT* values, std::index_sequence<at...>) {
        return (static_cast<Interface*>(object)->*Method)(FromVariant<Parameters>(values[at])...);
    }
};

}  // namespace v5
