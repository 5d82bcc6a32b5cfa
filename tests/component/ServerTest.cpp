// The DLL as a server: identity, lifetime, class objects.
#include "V5Strings.h"
#include "component/Client.h"

namespace v5::test {

TEST(Server, ObjectsKeepTheRulesOfIdentityAndAggregation) {
    const ComPtr<IDispatch> object = CreateByName(L"V5Strings.NimboErrorNumbers");
    ASSERT_TRUE(object);
    ComPtr<IUnknown> first, second;
    ComPtr<ISupportErrorInfo> errors;
    ASSERT_EQ(object.As(&first), S_OK);
    ASSERT_EQ(object.As(&errors), S_OK);
    ASSERT_EQ(errors.As(&second), S_OK);
    EXPECT_EQ(first.Get(), second.Get());
    void* none = object.Get();
    EXPECT_EQ(object->QueryInterface(IID_IStream, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);

    CLSID clsid;
    ASSERT_EQ(CLSIDFromProgID(L"V5Strings.NimboErrorNumbers", &clsid), S_OK);
    EXPECT_EQ(CoCreateInstance(clsid, first.Get(), CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&second)), CLASS_E_NOAGGREGATION);
}

namespace {

// The DLL that serves the class, as a client's process has loaded it.
HMODULE LoadedServer() {
    return GetModuleHandleW(L"V5Strings.dll");
}

template <class Function>
Function EntryPoint(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(LoadedServer(), name)));
}

}  // namespace

TEST(Server, MayBeUnloadedOnlyWhenNothingIsHeld) {
    ComPtr<IDispatch> object = CreateByName(L"V5Strings.NimboErrorNumbers");
    ASSERT_TRUE(object);
    const auto canUnloadNow = EntryPoint<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
    const auto getClassObject = EntryPoint<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    ASSERT_TRUE(canUnloadNow != nullptr && getClassObject != nullptr);
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "an object is held";
    ComPtr<IProvideClassInfo> facet;
    ASSERT_EQ(object.As(&facet), S_OK);
    object.Reset();
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "an interface of an object is held";
    facet.Reset();
    EXPECT_EQ(canUnloadNow(), S_OK);

    ComPtr<IClassFactory> factory;
    ASSERT_EQ(getClassObject(__uuidof(NimboErrorNumbers), IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "the server is locked";
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(canUnloadNow(), S_FALSE) << "an object is held";
    object.Reset();
    factory.Reset();
    EXPECT_EQ(canUnloadNow(), S_OK);

    // Nothing is left behind by what fails.
    void* none = nullptr;
    EXPECT_EQ(getClassObject(IID_IUnknown, IID_PPV_ARGS(&factory)), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(getClassObject(__uuidof(NimboErrorNumbers), IID_IStream, &none), E_NOINTERFACE);
    EXPECT_EQ(getClassObject(__uuidof(NimboErrorNumbers), IID_IUnknown, nullptr), E_POINTER);
    ASSERT_EQ(getClassObject(__uuidof(NimboErrorNumbers), IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &none), E_NOINTERFACE);
    factory.Reset();
    EXPECT_EQ(canUnloadNow(), S_OK);
}

}  // namespace v5::test
