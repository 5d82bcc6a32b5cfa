// The code page of the tests: Western European, a byte for each character.
#pragma once

#include "base/CodePage.h"

namespace v5 {

struct Latin1 : CodePage {
    std::int16_t CodeOf(wchar_t c) const override { return c < 256 ? static_cast<std::int16_t>(c) : L'?'; }
};

}  // namespace v5
