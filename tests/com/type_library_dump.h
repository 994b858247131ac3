#pragma once
// What of a type library compiled callers and scripts rely on, as lines of text.
#include <string>
#include <vector>

#include "platform/win32/system.h"

#include <oaidl.h>

namespace orv::tests {

/// Raises std::runtime_error where the library cannot be walked to its end. Every line is whole by itself, so that two
/// dumps can be compared as sets.
std::vector<std::string> DumpTypeLibrary(ITypeLib& library);

/// "{09CF7BEB-...}"
std::string GuidText(REFGUID id);

} // namespace orv::tests
