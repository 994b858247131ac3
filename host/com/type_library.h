#pragma once
// The contracts' type library, embedded in the program's own file: nothing needs to be registered.
#include "host/com/owned.h"

namespace orv::host {

/// Description of one interface of the contracts; raises when the program's file carries no library.
ComPtr<ITypeInfo> DescriptionOf(REFIID iid);

} // namespace orv::host
