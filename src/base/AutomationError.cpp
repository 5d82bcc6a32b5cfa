#include "base/AutomationError.h"

#include <new>
#include <stdexcept>

namespace v5 {

AutomationError CurrentError() {
    try {
        throw;
    } catch (const AutomationError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return AutomationError::RunTime(7, L"Out of memory");
    } catch (const std::length_error&) {
        return AutomationError::RunTime(7, L"Out of memory");
    } catch (const std::overflow_error&) {
        return AutomationError::RunTime(6, L"Overflow");
    } catch (...) {
        return AutomationError::RunTime(5, L"Invalid procedure call or argument");
    }
}

std::wstring CurrentFailureText() {
    const AutomationError error = CurrentError();
    return std::to_wstring(error.Number()) + L", " + error.Description();
}

}  // namespace v5
