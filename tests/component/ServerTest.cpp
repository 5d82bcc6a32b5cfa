// The DLL as a server: identity, lifetime, class objects.
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

}  // namespace v5::test
