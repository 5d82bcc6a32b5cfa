// What the timed message box shows and answers, without its window. Styles and results are those of the system's
// message box.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace v5 {

enum class MessageBoxResult : std::int16_t { None = 0, Ok = 1, Cancel, Abort, Retry, Ignore, Yes, No };

enum class MessageBoxIcon { None, Critical, Question, Exclamation, Information };

struct TimedMessageBoxSettings {
    std::wstring Prompt;
    std::wstring Title;         // the window's caption
    std::uint32_t Buttons = 0;  // button set (mask 7), icon (mask 0x70) and default button (mask 0x300)
    std::int32_t Timeout = 0;   // seconds after which the default button is pressed; below 1: never
    bool beep = false;          // play the icon's system sound first
    bool hasOwner = true;       // belong to the caller's window; else stand alone
};

struct MessageBoxButton {
    MessageBoxResult result;
    std::wstring_view caption;  // with a mnemonic where the system's box has one
    wchar_t key;                // the character that presses it, in upper case
};

// The wording of a result's button.
const MessageBoxButton& ButtonOf(MessageBoxResult result);

class TimedMessageBoxModel {
  public:
    TimedMessageBoxModel(std::uint32_t style, std::int32_t timeout);

    MessageBoxIcon Icon() const;

    // The buttons from left to right.
    std::span<const MessageBoxResult> Buttons() const { return mButtons; }

    // The button that Enter and the time-out press.
    MessageBoxResult DefaultButton() const;

    // The answer of Esc and of the window's close box: Cancel if there is such a button, OK if that is the only one;
    // otherwise None, and the box stays.
    MessageBoxResult EscapeButton() const;

    // The answer that a typed character gives, whether its button is shown or not; None for every other character.
    static MessageBoxResult ButtonForKey(wchar_t key);

    // Whether the box counts at all.
    bool HasTimeout() const { return mTimeout > 0; }

    // Counts one second; true when the time is up.
    bool Tick();

  private:
    std::uint32_t mStyle;
    std::int32_t mTimeout;
    std::int32_t mTicks = 0;
    std::span<const MessageBoxResult> mButtons;
};

// The design sizes of the box, in twips.
inline constexpr int kPromptLimit = 6300;      // widest prompt line
inline constexpr int kMessageBoxMargin = 165;  // left and top of icon and prompt, and around the button row
inline constexpr int kIconColumn = 720;        // what the icon adds to the width
inline constexpr int kButtonGap = 105;

struct TwipsSize {
    int width = 0;
    int height = 0;
};

struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const TwipsRect&) const = default;
};

struct MessageBoxLayout {
    TwipsSize client;
    TwipsRect icon;
    TwipsRect prompt;
    std::vector<TwipsRect> buttons;  // in the order of TimedMessageBoxModel::Buttons()
};

// Lays the box out around a wrapped prompt. A prompt lower than the icon is centred on it, the button row is centred
// in the box. The client area is no higher than `highest`: the prompt gives way, the buttons stay in reach.
MessageBoxLayout LayOutMessageBox(const TimedMessageBoxModel& box, TwipsSize prompt, TwipsSize icon, TwipsSize button,
                                  int highest);

}  // namespace v5
