#include "security/PrivilegeCheck.h"

#include <utility>

#include "ProductConstants.h"
#include "security/Scrambler.h"

namespace v5 {

namespace {

constexpr std::wstring_view kWrongPassword = L"The password you entered doesn't have privileges for this operation.";
constexpr std::wstring_view kMessageBoxTitle = L"Vantor Security";
constexpr std::int32_t kExclamationStyle = 48;

// Holds up whoever tries one password after the other.
constexpr std::uint32_t kPauseMilliseconds = 300;

static_assert(product::kScramblerKey.size() == kScramblerKeyLength);
static_assert(product::kMasterPassword24.size() == 24 && product::kMasterPassword37.size() == 37);

bool IsMasterPassword(std::wstring_view scrambled) {
    return scrambled == product::kMasterPassword24 || scrambled == product::kMasterPassword37;
}

}  // namespace

CheckResult PrivilegeCheck::Check(RestrictionID restriction, const PasswordOffer& offer) {
    CheckResult result;
    mSite.ReportFailures([&] {
        const PrivilegeLevel held = mLists.UserLevel();
        // A minimum that cannot be read refuses: the default may be below what is stored.
        bool isSufficient = false;
        mSite.ReportFailures([&] { isSufficient = IsSufficient(held, restriction, mMinimums.Read(restriction)); });
        if (isSufficient) {
            result.isAllowed = true;
        } else if (offer.allowed) {
            result = AskForPassword(restriction, offer.texts);
        }
    });
    return result;
}

CheckResult PrivilegeCheck::AskForPassword(RestrictionID restriction, const PasswordDialogTexts& texts) {
    SecurityHost& host = mSite.Host();
    CheckResult result;
    bool wasWrong = false;
    host.AskForPassword(texts, [&](SecretText typed) {
        result = Judge(restriction, std::move(typed));
        if (!result.isAllowed) {
            wasWrong = true;
            host.ShowMessageBox(kWrongPassword, kExclamationStyle, kMessageBoxTitle);
            host.Pause(kPauseMilliseconds);
        }
        return result.isAllowed;
    });
    if (wasWrong && !result.isAllowed) {
        host.Pause(kPauseMilliseconds);
    }
    return result;
}

// cppcheck-suppress passedByValue ; the password is handed over, and wiped here
CheckResult PrivilegeCheck::Judge(RestrictionID restriction, SecretText typed) {
    const SecretText scrambled = Scramble(typed.View(), product::kScramblerKey, mSite.Host().SystemCodePage());
    if (IsManualConfirmation(restriction) && scrambled.View() == mAlarmReset.Stored()) {
        return {.isAllowed = true};
    }
    const bool isMaster = IsMasterPassword(scrambled.View());
    return {.isAllowed = isMaster, .enteredMasterPassword = isMaster};
}

}  // namespace v5
