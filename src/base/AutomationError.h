// A failure on its way to an automation client: the status, and words for a person.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace v5 {

class AutomationError : public std::exception {
  public:
    // `status` is an automation status code (HRESULT) with the failure bit set.
    AutomationError(std::uint32_t status, std::wstring description)
        : mStatus(status), mDescription(std::move(description)) {}

    // An error of the automation run-time, by its number (5 invalid procedure call, 9 subscript out of range …).
    // Such numbers travel in the control facility, 0x800Annnn, and reach script clients as plain numbers.
    static AutomationError RunTime(std::uint16_t number, std::wstring description) {
        return {kControlFacility | number, std::move(description)};
    }

    std::uint32_t Status() const { return mStatus; }
    const std::wstring& Description() const { return mDescription; }

    // The number as automation clients see it: the bare number of a run-time error, otherwise the whole status.
    std::int32_t Number() const {
        return static_cast<std::int32_t>((mStatus & 0xFFFF0000u) == kControlFacility ? mStatus & 0xFFFFu : mStatus);
    }

    const char* what() const noexcept override { return "automation error"; }

  private:
    static constexpr std::uint32_t kControlFacility = 0x800A0000u;

    std::uint32_t mStatus;
    std::wstring mDescription;
};

// The exception that is being handled, as clients are told of it. One that is no AutomationError counts as the
// run-time's own, by its kind and never by its text, which is for programmers: 7 out of memory (also for a size that
// nothing can have), 6 overflow, 5 invalid procedure call for any other. Call it from a catch block only. Throws
// std::bad_alloc.
AutomationError CurrentError();

// The same as "<number>, <description>", as messages to people quote it.
std::wstring CurrentFailureText();

}  // namespace v5
