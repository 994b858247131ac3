#pragma once
// What a new file takes over from the one whose place it takes.

namespace orv::platform::posix {

/// Owner, extended attributes (the access list is one of them), rights. False when it cannot have one of them.
bool KeepAttributes(int from, int to);

} // namespace orv::platform::posix
