#include <gtest/gtest.h>

#include <algorithm>

#include "base/Text.h"
#include "dialogs/PromptWrap.h"
#include "dialogs/TimedMessageBoxModel.h"

namespace v5 {

namespace {

using enum MessageBoxResult;

// Every character is 100 twips wide, so that a line of 63 is as long as a line may be.
int HundredTwipsEach(std::wstring_view text) {
    size_t widest = 0;
    for (const std::wstring& line : Split(text, L'\n')) {
        widest = std::max(widest, line.size() - (line.ends_with(L'\r') ? 1 : 0));
    }
    return static_cast<int>(widest) * 100;
}

std::wstring Wrap(std::wstring_view prompt, int characters) {
    return WrapPrompt(prompt, characters * 100, HundredTwipsEach);
}

}  // namespace

TEST(PromptWrap, BreaksAtBlanksOrInsideTooLongWords) {
    const struct {
        const wchar_t* prompt;
        const wchar_t* wrapped;
    } cases[] = {
        {L"", L""},
        {L"0123456789", L"0123456789"},                      // exactly the limit
        {L"one two\r\n\r\nthree", L"one two\r\n\r\nthree"},  // every line fits: unchanged
        {L"01234 67890", L"01234\r\n67890"},
        {L"0123456789 ab", L"0123456789\r\nab"},  // a blank right behind the limit
        {L"aa bb cc dd ee ff", L"aa bb cc\r\ndd ee ff"},
        {L"aaaa  bbbbbbb", L"aaaa \r\nbbbbbbb"},  // only the blank at the break goes
        {L" abcdefghij", L"abcdefghij"},          // a blank at the start of a line that must break
        {L"   abcdefghijkl", L"abcdefghij\r\nkl"},
        {L"abcdefghijklmnopqrstuvw xy", L"abcdefghij\r\nklmnopqrst\r\nuvw xy"},
        {L" short\r\nabcdefghijkl", L" short\r\nabcdefghij\r\nkl"},  // a line that fits is left as it is
        {L"abcdefghijkl\r\n\r\nx", L"abcdefghij\r\nkl\r\n\r\nx"},
        {L"abcdefghij ", L"abcdefghij"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Wrap(each.prompt, 10), each.wrapped);
    }
    EXPECT_EQ(Wrap(L"abc", 0), L"a\r\nb\r\nc");  // ends even where nothing fits
    constexpr wchar_t kPair[] = {0xD83D, 0xDE00, 0xD83D, 0xDE00, 0};
    EXPECT_EQ(Wrap(kPair, 3), std::wstring(kPair, 2) + L"\r\n" + (kPair + 2));  // never cut in two
}

TEST(PromptWrap, NothingIsLostAndEveryLineFits) {
    std::wstring prompt;
    for (int i = 0; i < 400; ++i) {
        prompt += std::wstring(static_cast<size_t>(i * 7 % 90), L'x') + (i % 11 == 0 ? L"\r\n" : L" ");
    }
    const std::wstring wrapped = Wrap(prompt, 63);
    EXPECT_LE(HundredTwipsEach(wrapped), kPromptLimit);
    EXPECT_EQ(std::count(wrapped.begin(), wrapped.end(), L'x'), std::count(prompt.begin(), prompt.end(), L'x'));
}

TEST(PromptWrap, LongPromptsAreMeasuredInTimeThatGrowsWithThem) {
    size_t measured = 0;
    const auto width = [&](std::wstring_view text) {
        measured += text.size();
        return HundredTwipsEach(text);
    };
    constexpr size_t kLength = 100000;
    EXPECT_EQ(WrapPrompt(std::wstring(kLength, L'x'), kPromptLimit, width).size(), kLength + kLength / 63 * 2);
    EXPECT_LT(measured, kLength * 100);
}

TEST(TimedMessageBox, ButtonsDefaultsAndEscape) {
    const struct {
        std::uint32_t style;
        std::vector<MessageBoxResult> buttons;
        MessageBoxResult preset;
        MessageBoxResult escape;
    } cases[] = {
        {0x000, {Ok}, Ok, Ok},
        {0x001, {Ok, Cancel}, Ok, Cancel},
        {0x002, {Abort, Retry, Ignore}, Abort, None},
        {0x003, {Yes, No, Cancel}, Yes, Cancel},
        {0x004, {Yes, No}, Yes, None},
        {0x005, {Retry, Cancel}, Retry, Cancel},
        {0x006, {Ok}, Ok, Ok},
        {0x007, {Ok}, Ok, Ok},
        {0x104, {Yes, No}, No, None},
        {0x202, {Abort, Retry, Ignore}, Ignore, None},
        {0x203, {Yes, No, Cancel}, Cancel, Cancel},
        {0x303, {Yes, No, Cancel}, Yes, Cancel},
        {0x204, {Yes, No}, Yes, None},            // there is no third button
        {0x50131, {Ok, Cancel}, Cancel, Cancel},  // other style bits do not matter
    };
    for (const auto& each : cases) {
        const TimedMessageBoxModel box(each.style, 0);
        EXPECT_EQ(std::vector(box.Buttons().begin(), box.Buttons().end()), each.buttons) << each.style;
        EXPECT_EQ(box.DefaultButton(), each.preset) << each.style;
        EXPECT_EQ(box.EscapeButton(), each.escape) << each.style;
    }
}

TEST(TimedMessageBox, IconsAndKeys) {
    const MessageBoxIcon icons[] = {MessageBoxIcon::None,        MessageBoxIcon::Critical,    MessageBoxIcon::Question,
                                    MessageBoxIcon::Exclamation, MessageBoxIcon::Information, MessageBoxIcon::None,
                                    MessageBoxIcon::None,        MessageBoxIcon::None};
    for (std::uint32_t bits = 0; bits < 8; ++bits) {
        EXPECT_EQ(TimedMessageBoxModel(bits << 4, 0).Icon(), icons[bits]);
    }
    std::wstring answering;
    for (wchar_t key = 1; key < 0x250; ++key) {
        if (TimedMessageBoxModel::ButtonForKey(key) != None) {
            answering += key;
        }
    }
    EXPECT_EQ(answering, L"ACIKNRYaciknry");
    EXPECT_EQ(TimedMessageBoxModel::ButtonForKey(L'n'), No);
    EXPECT_EQ(TimedMessageBoxModel::ButtonForKey(L'K'), Ok);
    for (const auto result : {Ok, Cancel, Abort, Retry, Ignore, Yes, No}) {
        EXPECT_EQ(ButtonOf(result).result, result);
    }
}

TEST(TimedMessageBox, Timeout) {
    for (const int never : {0, -1, -2147483647}) {
        TimedMessageBoxModel box(0, never);
        EXPECT_FALSE(box.HasTimeout());
        EXPECT_FALSE(box.Tick());
    }
    TimedMessageBoxModel box(0x104, 3);
    EXPECT_FALSE(box.Tick());
    EXPECT_FALSE(box.Tick());
    EXPECT_TRUE(box.Tick());
}

TEST(TimedMessageBox, LayoutByItsDesignSizes) {
    constexpr TwipsSize kIcon{480, 480};
    constexpr TwipsSize kButton{1125, 345};
    // Wide prompt beside an icon, two buttons.
    const MessageBoxLayout wide = LayOutMessageBox({0x24, 0}, {6000, 195}, kIcon, kButton, 10000);
    EXPECT_EQ(wide.client.width, 165 + 720 + 6000 + 165);
    EXPECT_EQ(wide.prompt, (TwipsRect{885, 165 + 142, 6000, 195}));
    EXPECT_EQ(wide.buttons[1].left - wide.buttons[0].left, 1125 + 105);
    EXPECT_EQ(wide.buttons[0].left, (7050 - 2355) / 2);
    // The same without icon is an icon column narrower.
    const MessageBoxLayout plain = LayOutMessageBox({0x04, 0}, {6000, 195}, kIcon, kButton, 10000);
    EXPECT_EQ(plain.client.width, wide.client.width - 720);
    EXPECT_EQ(plain.prompt, (TwipsRect{165, 165, 6000, 195}));
    // A short prompt: the button row and its margin decide.
    const MessageBoxLayout narrow = LayOutMessageBox({0x02, 0}, {200, 195}, kIcon, kButton, 10000);
    EXPECT_EQ(narrow.client.width, 3 * 1125 + 2 * 105 + 330);
    EXPECT_EQ(narrow.buttons.back().left + 1125, narrow.client.width - 165);
    // A prompt higher than the screen gives way to the buttons.
    const MessageBoxLayout high = LayOutMessageBox({0x00, 0}, {200, 20000}, kIcon, kButton, 10000);
    EXPECT_EQ(high.client.height, 10000);
    EXPECT_LE(high.prompt.top + high.prompt.height, high.buttons[0].top - 165);
}

}  // namespace v5
