// A call into the system that failed, in terms that a user or a support engineer can be shown.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace v5 {

class SystemFailure : public std::exception {
  public:
    // `number`: an automation status, or the number that the failed object's error information carries.
    SystemFailure(std::int32_t number, std::wstring description)
        : number_(number), description_(std::move(description)) {}

    const char* what() const noexcept override { return "a system call failed"; }
    std::int32_t Number() const { return number_; }
    const std::wstring& Description() const { return description_; }

  private:
    std::int32_t number_;
    std::wstring description_;
};

}  // namespace v5
