// What the security rules need from the machine, all but the windows.
#pragma once

#include "platform/AnsiCodePage.h"
#include "platform/SystemClock.h"
#include "security/SecurityHost.h"

namespace v5 {

// The derived class adds the password dialog and the message box. COM must be initialised on the thread.
class WindowsSecurityHost : public SecurityHost {
  public:
    std::unique_ptr<SiteDatabase> NewDatabase(MessageSink& messages) override;
    std::unique_ptr<Accounts> NewAccounts() override;
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) override;
    void Pause(std::uint32_t milliseconds) override;
    const Clock& LocalClock() const override { return mClock; }
    const CodePage& SystemCodePage() const override { return mCodePage; }

  private:
    SystemClock mClock;
    AnsiCodePage mCodePage;
};

}  // namespace v5
