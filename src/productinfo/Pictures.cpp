#include "productinfo/Pictures.h"

#include <olectl.h>

#include <string>

#include "base/AutomationError.h"
#include "platform/Module.h"
#include "platform/SystemText.h"

namespace v5 {
namespace {

using Microsoft::WRL::ComPtr;

// A resource of this module as a handle that the caller owns. `side`: width and height in pixels, 0 for the system's
// default icon size or the bitmap's own.
HANDLE LoadPicture(int id, LPCWSTR resourceType, UINT imageType, int side, UINT flags) {
    const HINSTANCE module = ThisModule();
    const LPCWSTR name = MAKEINTRESOURCEW(id);
    if (id < 1 || id > 0xFFFF || FindResourceW(module, name, resourceType) == nullptr) {
        throw AutomationError::RunTime(326, L"Resource with identifier '" + std::to_wstring(id) + L"' not found");
    }
    SetLastError(ERROR_SUCCESS);
    const HANDLE image = LoadImageW(module, name, imageType, side, side, flags);
    if (image == nullptr) {
        const HRESULT reason = HRESULT_FROM_WIN32(GetLastError());  // S_OK when no graphics handle is left
        throw SystemError(FAILED(reason) ? reason : E_OUTOFMEMORY);
    }
    return image;
}

// The side of the only image of an icon group; 0 when the group offers a choice.
int OnlySide(int id) {
    struct Group {  // the head of an icon group resource and its first entry, as the system lays them out
        WORD reserved, type, count;
        BYTE width, height;
    };
    const HRSRC found = FindResourceW(ThisModule(), MAKEINTRESOURCEW(id), RT_GROUP_ICON);
    const HGLOBAL loaded = found ? LoadResource(ThisModule(), found) : nullptr;
    const auto* group = static_cast<const Group*>(loaded ? LockResource(loaded) : nullptr);
    return group != nullptr && group->count == 1 ? group->width : 0;
}

// A picture that owns the handle of its description.
ComPtr<IPictureDisp> MakePicture(PICTDESC& description) {
    ComPtr<IPictureDisp> picture;
    const HRESULT status = OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                                    reinterpret_cast<void**>(picture.GetAddressOf()));
    if (SUCCEEDED(status)) {
        return picture;
    }
    if (description.picType == PICTYPE_BITMAP) {
        DeleteObject(description.bmp.hbitmap);
    } else {
        DestroyIcon(description.icon.hicon);
    }
    throw SystemError(status);
}

}  // namespace

ComPtr<IPictureDisp> LoadBitmapPicture(int id) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = static_cast<HBITMAP>(LoadPicture(id, RT_BITMAP, IMAGE_BITMAP, 0, LR_CREATEDIBSECTION));
    return MakePicture(description);
}

ComPtr<IPictureDisp> LoadIconPicture(int id) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.picType = PICTYPE_ICON;
    const int side = OnlySide(id);
    description.icon.hicon = static_cast<HICON>(
        LoadPicture(id, RT_GROUP_ICON, IMAGE_ICON, side, side == 0 ? LR_DEFAULTSIZE : LR_DEFAULTCOLOR));
    return MakePicture(description);
}

}  // namespace v5
