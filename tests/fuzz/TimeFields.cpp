// Keys, steps and half-typed texts in the hour, minute and AM/PM fields.
#include "dialogs/TimeFields.h"
#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    using v5::TimePart;
    using v5::fuzz::Require;
    v5::fuzz::Input input(data, size);
    v5::TimeFields fields(input.Take<std::uint8_t>() % 24, input.Take<std::uint8_t>() % 60, size % 2 == 0);
    v5::FieldText shown;
    for (const wchar_t c : input.Text()) {
        const auto part = static_cast<TimePart>(static_cast<unsigned>(c) % 3);
        switch (static_cast<unsigned>(c) / 3 % 5) {
            case 0:
                fields.Step(part, (static_cast<unsigned>(c) & 64u) != 0);
                break;
            case 1:
                fields.SetUse24Hour(!fields.Use24Hour());
                break;
            case 2:
                fields.Leave(part);
                break;
            case 3:
                if (part != TimePart::AmPm) {
                    fields.SetText(part, std::wstring(1, c));
                }
                break;
            default:
                shown.text = fields.Text(part);
                shown.start = shown.text.empty() ? 0 : static_cast<unsigned>(c) % (shown.text.size() + 1);
                shown.end = shown.text.size();
                shown = fields.Type(part, shown, c);
                Require(shown.start <= shown.end && shown.end <= shown.text.size(), "the caret is in the text");
        }
        Require(fields.Hour() >= 0 && fields.Hour() < 24 && fields.Minute() >= 0 && fields.Minute() < 60,
                "the fields always stand for a time of day");
    }
    return 0;
}
