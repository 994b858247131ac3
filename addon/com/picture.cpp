#include "addon/com/picture.h"

#include "addon/com/failure.h"
#include "addon/resources/ids.h"
#include "platform/win32/module.h"

namespace orv::addon::com {

ComPtr<IPictureDisp> MakePicture() {
    const auto icon = static_cast<HICON>(
        LoadImageW(platform::win32::OwnModule(), MAKEINTRESOURCEW(IDI_ADDON), IMAGE_ICON, 32, 32, LR_DEFAULTCOLOR));
    if (!icon)
        throw SystemError(HRESULT_FROM_WIN32(GetLastError()));
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = icon;
    ComPtr<IPictureDisp> picture;
    const HRESULT result = OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.PutVoid());
    if (FAILED(result)) {
        DestroyIcon(icon);
        throw SystemError(result);
    }
    return picture;
}

} // namespace orv::addon::com
