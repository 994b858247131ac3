#pragma once
// What the editor's buttons ask of the component.
#include <cstddef>
#include <cstdint>
#include <string>

namespace orv::editor {

/// Implemented by the life cycle. Both may raise; the button's handler shows the error under its own name.
class Commands {
  public:
    virtual ~Commands() = default;
    /// The save entry. Lowers `interactive` itself when Editor::NoInteractive(); calls Editor::SetModified(false)
    /// when everything was written, Editor::SetSaveReport in any case. A failed commit was shown to the user
    /// already and returns normally.
    virtual void Save(bool interactive) = 0;
    virtual void CloseAddOn() = 0;
    /// Reads all values anew, whatever was changed. Raises what the host raises; nothing can be edited then until the
    /// next activation.
    virtual void ReadAgain() = 0;
    /// Around every handler: what it works on stays until it has returned, whatever happens while it shows a box.
    virtual void EnterHandler() {}
    virtual void LeaveHandler() {}
};

/// How far a save got.
struct SaveReport {
    bool complete = true;
    std::wstring stoppedAt; ///< entry that was refused; empty when the save failed before the first
    std::size_t written = 0;
    std::size_t total = 0;
    std::int32_t endError = 0;      ///< code with which the device refused to end the session; 0 when it did not
    std::wstring withoutPlace = {}; ///< what was not saved because the device contradicts itself
};

} // namespace orv::editor
