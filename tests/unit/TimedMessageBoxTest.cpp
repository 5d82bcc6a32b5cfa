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
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"", L""},  // what fits is left as it is, blanks included
        {L"0123456789", L"0123456789"},
        {L" one two\r\n\r\nthree", L" one two\r\n\r\nthree"},
        {L"01234 67890", L"01234\r\n67890"},  // otherwise the blank at the break goes, and only that
        {L"0123456789 ab", L"0123456789\r\nab"},
        {L"aa bb cc dd ee ff", L"aa bb cc\r\ndd ee ff"},
        {L"aaaa  bbbbbbb", L"aaaa \r\nbbbbbbb"},
        {L"abcdefghij ", L"abcdefghij"},
        {L" abcdefghij", L"abcdefghij"},  // as do those at the start
        {L"   abcdefghijkl", L"abcdefghij\r\nkl"},
        {L"abcdefghijklmnopqrstuvw xy", L"abcdefghij\r\nklmnopqrst\r\nuvw xy"},
        {L" short\r\nabcdefghijkl\r\n\r\nx", L" short\r\nabcdefghij\r\nkl\r\n\r\nx"}};
    for (const auto& [prompt, wrapped] : cases) {
        EXPECT_EQ(Wrap(prompt, 10), wrapped);
    }
    EXPECT_EQ(Wrap(L"abc", 0), L"a\r\nb\r\nc");  // ends even where nothing fits
    constexpr wchar_t kPair[] = {0xD800, 0xDC00, 0xDBFF, 0xDFFF, 0};
    for (const int width : {1, 3}) {
        EXPECT_EQ(Wrap(kPair, width), std::wstring(kPair, 2) + L"\r\n" + (kPair + 2)) << "never cut in two";
    }
}

TEST(PromptWrap, NothingIsLostEveryLineFitsAndTimeGrowsWithLength) {
    std::wstring prompt(100'000, L'x');
    for (int i = 0; i < 400; ++i) {
        prompt += std::wstring(static_cast<size_t>(i * 7 % 90), L'x') + (i % 11 == 0 ? L"\r\n" : L" ");
    }
    size_t measured = 0;
    const std::wstring wrapped = WrapPrompt(prompt, kPromptLimit, [&](std::wstring_view text) {
        measured += text.size();
        return HundredTwipsEach(text);
    });
    EXPECT_LT(measured, prompt.size() * 100);
    EXPECT_LE(HundredTwipsEach(wrapped), kPromptLimit);
    EXPECT_EQ(std::count(wrapped.begin(), wrapped.end(), L'x'), std::count(prompt.begin(), prompt.end(), L'x'));
}

TEST(TimedMessageBox, ButtonsDefaultsAndEscape) {
    const struct {
        std::vector<MessageBoxResult> buttons;
        MessageBoxResult escape;
    } kinds[] = {{{Ok}, Ok},
                 {{Ok, Cancel}, Cancel},
                 {{Abort, Retry, Ignore}, None},
                 {{Yes, No, Cancel}, Cancel},
                 {{Yes, No}, None},
                 {{Retry, Cancel}, Cancel},
                 {{Ok}, Ok},
                 {{Ok}, Ok}};
    for (std::uint32_t style = 0; style < 0x400; ++style) {
        const TimedMessageBoxModel box(style | 0x50000, 0);  // other style bits do not matter
        const auto& [buttons, escape] = kinds[style & 7];
        const size_t preset = style >> 8;  // the first, where there are not so many
        EXPECT_EQ(std::vector(box.Buttons().begin(), box.Buttons().end()), buttons) << style;
        EXPECT_EQ(box.DefaultButton(), buttons[preset < buttons.size() ? preset : 0]) << style;
        EXPECT_EQ(box.EscapeButton(), escape) << style;
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
    std::wstring captions;
    for (const auto result : {Ok, Cancel, Abort, Retry, Ignore, Yes, No}) {
        EXPECT_EQ(ButtonOf(result).result, result);
        captions.append(ButtonOf(result).caption) += L'|';
    }
    EXPECT_EQ(captions, L"OK|Cancel|&Abort|&Retry|&Ignore|&Yes|&No|");
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
    constexpr TwipsSize kIcon{480, 480}, kButton{1125, 345};
    for (const std::uint32_t style : {0x00, 0x02, 0x04, 0x10, 0x12, 0x24}) {
        for (const TwipsSize text : {TwipsSize{200, 195}, {6000, 195}, {6000, 2000}, {200, 20000}}) {
            SCOPED_TRACE(std::to_string(style) + ", " + std::to_string(text.width) + "x" + std::to_string(text.height));
            const MessageBoxLayout box = LayOutMessageBox({style, 0}, text, kIcon, kButton, 10000);
            const bool hasIcon = style >= 0x10, isHigh = text.height > 10000;
            const auto count = static_cast<int>(box.buttons.size());
            const int row = count * 1125 + (count - 1) * 105, icon = hasIcon ? 720 : 0;
            EXPECT_EQ(box.client.width, std::max(icon + text.width, row) + 330);
            EXPECT_EQ(box.prompt.left, 165 + icon);
            EXPECT_EQ(box.prompt.top, hasIcon && text.height == 195 ? 165 + 142 : 165) << "beside the icon's middle";
            EXPECT_EQ(box.prompt.width, text.width);
            EXPECT_EQ(box.buttons[0].left, (box.client.width - row) / 2);
            EXPECT_EQ(box.buttons.back().left - box.buttons[0].left, (count - 1) * (1125 + 105));
            EXPECT_EQ(isHigh, box.client.height == 10000) << "a prompt higher than the screen gives way to the buttons";
            EXPECT_EQ(isHigh, box.prompt.height < text.height);
            EXPECT_EQ(box.client.height, 165 + std::max(box.prompt.height, hasIcon ? 480 : 0) + 165 + 345 + 165);
            EXPECT_EQ(box.buttons[0].top, box.client.height - 165 - 345);
        }
    }
}

}  // namespace v5
