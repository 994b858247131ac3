#pragma once
#include "addon/com/com_ptr.h"
#include "platform/win32/system.h"

#include <ocidl.h>
#include <olectl.h>

namespace orv::addon::com {

/// The add-on's icon for the host.
ComPtr<IPictureDisp> MakePicture();

} // namespace orv::addon::com
