#include "dialogs/TimedMessageBoxModel.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"

namespace v5 {

namespace {

using enum MessageBoxResult;

constexpr std::uint32_t kButtonMask = 0x7;
constexpr std::uint32_t kIconMask = 0x70;
constexpr std::uint32_t kDefaultMask = 0x300;

constexpr MessageBoxButton kButtons[] = {
    {Ok, L"OK", L'K'},          {Cancel, L"Cancel", L'C'}, {Abort, L"&Abort", L'A'}, {Retry, L"&Retry", L'R'},
    {Ignore, L"&Ignore", L'I'}, {Yes, L"&Yes", L'Y'},      {No, L"&No", L'N'},
};

constexpr MessageBoxResult kOkOnly[] = {Ok};
constexpr MessageBoxResult kOkCancel[] = {Ok, Cancel};
constexpr MessageBoxResult kAbortRetryIgnore[] = {Abort, Retry, Ignore};
constexpr MessageBoxResult kYesNoCancel[] = {Yes, No, Cancel};
constexpr MessageBoxResult kYesNo[] = {Yes, No};
constexpr MessageBoxResult kRetryCancel[] = {Retry, Cancel};

// By the style's button bits.
constexpr std::span<const MessageBoxResult> kButtonSets[] = {kOkOnly, kOkCancel,    kAbortRetryIgnore, kYesNoCancel,
                                                             kYesNo,  kRetryCancel, kOkOnly,           kOkOnly};

}  // namespace

const MessageBoxButton& ButtonOf(MessageBoxResult result) {
    return kButtons[static_cast<int>(result) - 1];
}

TimedMessageBoxModel::TimedMessageBoxModel(std::uint32_t style, std::int32_t timeout)
    : mStyle(style), mTimeout(std::max(timeout, 0)), mButtons(kButtonSets[style & kButtonMask]) {}

MessageBoxIcon TimedMessageBoxModel::Icon() const {
    switch (mStyle & kIconMask) {
        case 0x10:
            return MessageBoxIcon::Critical;
        case 0x20:
            return MessageBoxIcon::Question;
        case 0x30:
            return MessageBoxIcon::Exclamation;
        case 0x40:
            return MessageBoxIcon::Information;
        default:
            return MessageBoxIcon::None;
    }
}

MessageBoxResult TimedMessageBoxModel::DefaultButton() const {
    const std::uint32_t bits = mStyle & kDefaultMask;
    const size_t index = bits == 0x100 ? 1 : bits == 0x200 ? 2 : 0;
    return mButtons[index < mButtons.size() ? index : 0];
}

MessageBoxResult TimedMessageBoxModel::EscapeButton() const {
    if (std::find(mButtons.begin(), mButtons.end(), Cancel) != mButtons.end()) {
        return Cancel;
    }
    return mButtons.size() == 1 ? Ok : None;
}

MessageBoxResult TimedMessageBoxModel::ButtonForKey(wchar_t key) {
    const auto* found = std::find_if(std::begin(kButtons), std::end(kButtons),
                                     [&](const auto& each) { return each.key == ToUpper(key); });
    return found == std::end(kButtons) ? None : found->result;
}

bool TimedMessageBoxModel::Tick() {
    return HasTimeout() && ++mTicks >= mTimeout;
}

MessageBoxLayout LayOutMessageBox(const TimedMessageBoxModel& box, TwipsSize prompt, TwipsSize icon, TwipsSize button,
                                  int highest) {
    MessageBoxLayout layout;
    const int iconColumn = box.Icon() == MessageBoxIcon::None ? 0 : kIconColumn;
    const int iconHeight = iconColumn == 0 ? 0 : icon.height;
    const auto count = static_cast<int>(box.Buttons().size());
    const int row = count * button.width + (count - 1) * kButtonGap;
    const int buttonArea = button.height + 2 * kMessageBoxMargin;
    const int promptHeight = std::min(prompt.height, highest - kMessageBoxMargin - buttonArea);
    const int textArea = std::max(promptHeight, iconHeight);

    layout.client.width = std::max(row, iconColumn + prompt.width) + 2 * kMessageBoxMargin;
    layout.client.height = kMessageBoxMargin + textArea + buttonArea;
    layout.icon = {kMessageBoxMargin, kMessageBoxMargin, icon.width, icon.height};
    layout.prompt = {kMessageBoxMargin + iconColumn, kMessageBoxMargin + std::max(0, (iconHeight - promptHeight) / 2),
                     prompt.width, promptHeight};
    int left = (layout.client.width - row) / 2;
    for (int i = 0; i < count; ++i) {
        layout.buttons.push_back(
            {left, layout.client.height - kMessageBoxMargin - button.height, button.width, button.height});
        left += button.width + kButtonGap;
    }
    return layout;
}

}  // namespace v5
