// Makes one call on a neighbour fail.
#pragma once

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/AutomationError.h"

namespace v5 {

// The operations of stand-ins: each asks here, by its name, whether it goes well. `failing` names the one that fails.
struct Operations {
    std::string failing;
    bool failsQuietly = false;  // what fails answers false or nothing instead of raising
    std::function<void(const char*)> onCall = [](const char*) {};  // before each operation; may throw
    std::vector<std::string> calls;

    bool Succeeds(const char* operation) {
        calls.emplace_back(operation);
        onCall(operation);
        return failing != operation;
    }
    void Require(const char* operation) {
        if (!Succeeds(operation) && !failsQuietly) {
            throw AutomationError(0x80004005, L"it broke");
        }
    }
    // What an operation answers.
    template <typename Value>
    Value Answer(const char* operation, const Value& value) {
        Require(operation);
        return failing == operation ? Value{} : value;
    }
};

// A way in which a call fails, and how messages describe it.
struct Failure {
    const char* name;
    std::function<void(Operations&, const char* operation)> fail;
    const wchar_t* description = L"";
};

// The ways in which any call fails, the first as the port says.
inline const Failure kFailures[] = {
    {"status", [](Operations& operations, const char* operation) { operations.failing = operation; },
     L"-2147467259, it broke"},
    {"an automation error", [](Operations&, const char*) { throw AutomationError::RunTime(53, L"File not found"); },
     L"53, File not found"},
    {"out of memory", [](Operations&, const char*) { throw std::bad_alloc(); }, L"7, Out of memory"},
    {"overflow", [](Operations&, const char*) { throw std::overflow_error("it broke"); }, L"6, Overflow"},
    {"any exception", [](Operations&, const char*) { throw std::runtime_error("it broke"); },
     L"5, Invalid procedure call or argument"},
    {"an exception of no class", [](Operations&, const char*) { throw 7; }, L"5, Invalid procedure call or argument"},
};

// Makes the n-th operation (from 0) fail while `work` runs. Gives its name, if it came so far.
inline std::string FailCall(Operations& operations, const Failure& failure, int n, const std::function<void()>& work) {
    std::string failed;
    operations.onCall = [&](const char* name) {
        operations.failing.clear();
        if (n-- == 0) {
            failed = name;
            failure.fail(operations, name);
        }
    };
    work();
    operations.onCall = [](const char*) {};
    operations.failing.clear();
    operations.failsQuietly = false;
    return failed;
}

}  // namespace v5
