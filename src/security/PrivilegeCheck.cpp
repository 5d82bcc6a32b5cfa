#include "security/PrivilegeCheck.h"

#include "ProductConstants.h"

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
    mSite.Guard([&] {
        const PrivilegeLevel held = mLists.UserLevel();
        if (IsSufficient(held, restriction, mMinimums.Get(restriction))) {
            result.isAllowed = true;
        } else if (offer.allowed) {
            result = AskForPassword(restriction, offer);
        }
    });
    return result;
}

CheckResult PrivilegeCheck::AskForPassword(RestrictionID restriction, const PasswordOffer& offer) {
    SecurityHost& host = mSite.Host();
    const auto prompt = host.NewPasswordPrompt();
    if (!offer.message.empty()) {
        prompt->SetMessage(offer.message);
    }
    if (!offer.title.empty()) {
        prompt->SetWindowTitle(offer.title);
    }
    bool wasWrong = false;
    while (auto typed = prompt->Ask()) {
        const CheckResult result = Judge(restriction, std::move(*typed));
        if (result.isAllowed) {
            return result;
        }
        wasWrong = true;
        host.ShowMessageBox(kWrongPassword, kExclamationStyle, kMessageBoxTitle);
        host.Pause(kPauseMilliseconds);
    }
    if (wasWrong) {
        host.Pause(kPauseMilliseconds);
    }
    return {};
}

// cppcheck-suppress passedByValue ; the password is handed over, and wiped here
CheckResult PrivilegeCheck::Judge(RestrictionID restriction, SecretText typed) {
    const SecretText scrambled = Scramble(typed.View(), product::kScramblerKey, mSite.Host());
    if (IsManualConfirmation(restriction) && scrambled.View() == mAlarmReset.Stored()) {
        return {.isAllowed = true};
    }
    const bool isMaster = IsMasterPassword(scrambled.View());
    return {.isAllowed = isMaster, .enteredMasterPassword = isMaster};
}

}  // namespace v5
