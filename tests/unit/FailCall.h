// Makes one call on a neighbour fail.
#pragma once

#include <functional>
#include <string>

#include "FakeSecurityHost.h"

namespace v5 {

// A way in which a call fails, and how messages describe it.
struct Failure {
    const char* name;
    std::function<void(FakeMachine&, const char* operation)> fail;
    const wchar_t* description = L"";
};

// Makes the n-th call on the machine (from 0) fail while `work` runs. Gives the name of that call, if it came so far.
inline std::string FailCall(FakeMachine& machine, const Failure& failure, int n, const std::function<void()>& work) {
    std::string failed;
    machine.onCall = [&](const char* name) {
        machine.failing.clear();
        if (n-- == 0) {
            failed = name;
            failure.fail(machine, name);
        }
    };
    work();
    machine.onCall = [](const char*) {};
    machine.failing.clear();
    machine.failsQuietly = false;
    return failed;
}

}  // namespace v5
