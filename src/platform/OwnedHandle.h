// Handles of the graphics system that end with their owner.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <type_traits>

#include "platform/SystemFunction.h"

namespace v5 {

struct FreeHandle {
    void operator()(HFONT font) const { DeleteObject(font); }
    void operator()(HICON icon) const { DestroyIcon(icon); }
    void operator()(HIMAGELIST images) const {
        SystemFunction<decltype(ImageList_Destroy)>(L"comctl32.dll", "ImageList_Destroy")(images);
    }
};

template <class Handle>
using OwnedHandle = std::unique_ptr<std::remove_pointer_t<Handle>, FreeHandle>;

}  // namespace v5
