#pragma once
// What this component enters into the registry.
#include <string>

#include "addon/com/registration_table.h"

namespace orv::addon::com {

inline constexpr wchar_t kProgId[] = L"OrvOutFormat.AddOnControl";

/// For a component in the file `path`. Relative to a root of classes.
RegistrationTable ComponentTable(const std::wstring& path);

/// What of it the file `path` may take away under `root`: what leads to that file and nothing that another copy of the
/// component goes by.
RegistrationTable OwnEntries(const std::wstring& path, HKEY root);

/// The classes of the machine and of the user; either may be missing. The keys close with the object.
class ClassesRoots {
  public:
    ClassesRoots();
    RegistrationRoots View() const { return {machine_.Get(), user_.Get()}; }

  private:
    platform::win32::OwnedKey machine_;
    platform::win32::OwnedKey user_;
};

} // namespace orv::addon::com
