#pragma once
// Everything under a key of the registry as lines of text, to be compared.
#include <string>
#include <vector>

#include "platform/win32/owned.h"

namespace orv::tests {

/// A line a key and a value, with type and data, in the registry's order made alphabetical.
std::vector<std::wstring> RegistryTree(HKEY root, const std::wstring& path);

} // namespace orv::tests
