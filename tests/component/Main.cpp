// The component tests reach V5Strings through its registration only, as any client does.
#include <windows.h>
#include <gtest/gtest.h>

#include <objbase.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = RUN_ALL_TESTS();
    CoUninitialize();
    return result;
}
