#include "com/Component.h"

#include <atomic>

#include "com/Guard.h"
#include "com/Values.h"
#include "platform/Module.h"

namespace v5 {

namespace {

std::atomic<long> g_uses = 0;

}  // namespace

ComPtr<ITypeLib> ComponentTypeLibrary() {
    ComPtr<ITypeLib> library;
    Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &library));
    return library;
}

void AddComponentUse() noexcept {
    ++g_uses;
}
void ReleaseComponentUse() noexcept {
    --g_uses;
}
bool IsComponentInUse() noexcept {
    return g_uses > 0;
}

}  // namespace v5
