// Pictures of this module's resources as automation picture objects.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

namespace v5 {

// The bitmap resource `id`. Throws AutomationError: run-time error 326 when this module has no such bitmap.
Microsoft::WRL::ComPtr<IPictureDisp> LoadBitmapPicture(int id);

// The icon group resource `id`, in the system's icon size (32 pixels at 96 DPI) or, for a group that holds only one
// size, in that one. Throws AutomationError: run-time error 326 when this module has no such icon.
Microsoft::WRL::ComPtr<IPictureDisp> LoadIconPicture(int id);

}  // namespace v5
