#pragma once
// The control's own window: it carries the editor's windows and tells of sizes and clicks.
#include <functional>
#include <vector>

#include "controls/win32/clipboard.h"
#include "controls/win32/dialog_window.h"
#include "controls/win32/peer_host.h"
#include "editor/editor.h"
#include "platform/win32/system_services.h"

namespace orv::addon::com {

class ControlWindow {
  public:
    struct Hooks {
        std::function<void()> activate;   ///< a click, or the focus, reached the control
        std::function<bool(MSG&)> passOn; ///< a key that the editor has no use for
        std::function<void()> failed;     ///< shows the exception in flight, which must go no further
    };

    /// Editor and services outlive the window.
    ControlWindow(editor::Editor& editor, platform::win32::SystemServices& services, Hooks hooks);
    ~ControlWindow();
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    /// Hidden at first. Raises the system's error.
    void Create(HWND parent, const RECT& position);
    void Destroy();
    HWND Handle() const { return window_; }
    void Place(const RECT& position, const RECT* clip);
    /// Own visibility and enabled state, whatever the parents are.
    void Show(bool visible);
    bool Shown() const;
    void Enable(bool enabled);
    bool HasFocus() const;
    void TakeFocus();
    bool TranslateKey(MSG& message) { return peers_.TranslateKey(message); }
    /// What a box belongs to: the innermost open dialog, else the window that the control stands in.
    HWND BoxOwner() const;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void RunDialog(controls::Dialog& dialog);
    void Paint(HWND window) const;
    void Layout();

    editor::Editor& editor_;
    platform::win32::SystemServices& services_;
    Hooks hooks_;
    HWND window_ = nullptr;
    bool focusLost_ = false; ///< the focus went because the window was disabled
    controls::win32::SystemClipboard clipboard_;
    controls::win32::PeerHost peers_;
    std::vector<controls::win32::DialogWindow*> dialogs_; ///< open, outermost first
};

} // namespace orv::addon::com
