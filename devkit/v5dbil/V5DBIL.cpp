// V5DBIL.dll: the devkit's database interface component.
#include "v5dbil/DatabaseInterface.h"

namespace v5 {

namespace {

constexpr ClassEntry kClasses[] = {
    {&CLSID_DatabaseInterface, devkit::DatabaseInterface::kProgId, L"V5 database interface (devkit)",
     &devkit::DatabaseInterface::Create},
};

}  // namespace

const Component& ThisComponent() {
    static const Component component{&LIBID_V5DBIL, 1, 0, kClasses};
    return component;
}

}  // namespace v5
