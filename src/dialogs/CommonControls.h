// Version 6 of the common controls for this module's windows, whatever manifest the client program has.
#pragma once

#include <windows.h>

namespace v5 {

// While it lives, windows that the calling thread creates take their control classes from common controls 6, as this
// module's own manifest (Dialogs.rc) asks. Without that manifest the client's controls are used: no failure.
class CommonControlsScope {
  public:
    CommonControlsScope();
    ~CommonControlsScope();
    CommonControlsScope(const CommonControlsScope&) = delete;
    CommonControlsScope& operator=(const CommonControlsScope&) = delete;

  private:
    HANDLE mContext;
    ULONG_PTR mCookie = 0;
    bool mActive = false;
};

}  // namespace v5
