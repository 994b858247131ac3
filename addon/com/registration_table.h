#pragma once
// A piece of the registry as data: it can be written, checked and taken back.
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/owned.h"

namespace orv::addon::com {

/// A text value; an empty name is the key's default value.
struct RegistryEntry {
    std::wstring key; ///< relative to the root
    std::wstring name;
    std::wstring value;
};

/// The text value that stands there now, with places for the environment filled in.
std::optional<std::wstring> ReadValue(HKEY root, const std::wstring& key, const std::wstring& name = {},
                                      REGSAM view = 0);

class RegistrationTable {
  public:
    explicit RegistrationTable(std::vector<RegistryEntry> entries) : entries_(std::move(entries)) {}

    const std::vector<RegistryEntry>& Entries() const { return entries_; }
    /// Every entry stands under `root` with its value.
    bool Applied(HKEY root) const;
    /// At least one of the keys is there, whatever it says.
    bool Present(HKEY root) const;
    /// Writes what is missing or different and reads it back. ERROR_SUCCESS, or why not; then everything is as before.
    LSTATUS Apply(HKEY root) const;
    /// Deletes the values, then each key that is left empty, its emptied parents included; what others have put there
    /// stays. Nothing there to delete is a success.
    LSTATUS Undo(HKEY root) const;

  private:
    std::vector<RegistryEntry> entries_;
};

enum class Scope { None, Machine, User };

/// Where a registration may go. An empty root is not available.
struct RegistrationRoots {
    HKEY machine = nullptr;
    HKEY user = nullptr;
};

/// Machine-wide, or for the user where the machine's part may not be written. A registration of the user's that would
/// hide the machine's goes. `scope` says where it ended up.
LSTATUS Register(const RegistrationTable& table, const RegistrationRoots& roots, Scope& scope);
/// From both, each by itself: `own` says what of the table one may take away under a root.
LSTATUS Unregister(const std::function<RegistrationTable(HKEY root)>& own, const RegistrationRoots& roots);

} // namespace orv::addon::com
