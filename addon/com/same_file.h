#pragma once
#include <string>

namespace orv::addon::com {

/// Whether two paths mean one file: in another case or spelling, by its short name, over a link, in quotes. A file that
/// is no longer there is told by its path.
bool SameFile(const std::wstring& a, const std::wstring& b);

} // namespace orv::addon::com
