// Where a rule reports a problem in words: the caller's message object, seen from the rules.
#pragma once

#include <string_view>

namespace v5 {

// Message types that this library sends.
inline constexpr long kMessageTypeProblem = 4;
inline constexpr long kMessageTypeRefused = 12292;  // a change that the user has no privilege for

class MessageSink {
  public:
    virtual ~MessageSink() = default;

    // Reports one message. Never throws: a sink that fails does not disturb the work that reports to it.
    virtual void RaiseMessage(long type, std::wstring_view text) = 0;
};

}  // namespace v5
