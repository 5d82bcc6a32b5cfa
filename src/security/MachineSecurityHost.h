// What the security rules need from the machine, all but the windows.
#pragma once

#include "platform/SystemClock.h"
#include "security/SecurityHost.h"

namespace v5 {

// The derived class adds the password prompt and the message box. COM must be initialised on the thread.
class MachineSecurityHost : public SecurityHost {
  public:
    std::unique_ptr<SiteDatabase> NewDatabase(MessageSink& messages) override;
    std::unique_ptr<Accounts> NewAccounts() override;
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) override;
    void Pause(std::uint32_t milliseconds) override;
    const Clock& LocalClock() const override { return mClock; }
    std::int16_t AnsiCode(wchar_t character) const override;

  private:
    SystemClock mClock;
};

}  // namespace v5
