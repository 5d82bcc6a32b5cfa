#include "base/AutomationError.h"

#include <new>

namespace v5 {

std::wstring CurrentFailureText() {
    try {
        throw;
    } catch (const AutomationError& error) {
        return std::to_wstring(error.Number()) + L", " + error.Description();
    } catch (const std::bad_alloc&) {
        return L"7, Out of memory";
    } catch (...) {
        return L"5, Invalid procedure call or argument";
    }
}

}  // namespace v5
