#pragma once
// The control's own window: it carries the editor's windows and tells of sizes and clicks.
#include <functional>
#include <optional>

#include "controls/win32/clipboard.h"
#include "controls/win32/peer_host.h"
#include "editor/editor.h"

namespace orv::addon::com {

class ControlWindow {
  public:
    struct Hooks {
        std::function<void()> activate;   ///< a click, or the focus, reached the control
        std::function<bool(MSG&)> passOn; ///< a key that the editor has no use for
        std::function<void()> failed;     ///< shows the exception in flight, which must go no further
    };

    /// Editor and context outlive the window.
    ControlWindow(editor::Editor& editor, const platform::win32::ActivationContext& context, Hooks hooks);
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

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    std::optional<LRESULT> Find(WPARAM atom, LPARAM index) const;
    void Paint(HWND window) const;
    void Layout();

    editor::Editor& editor_;
    const platform::win32::ActivationContext& context_;
    Hooks hooks_;
    HWND window_ = nullptr;
    bool focusLost_ = false; ///< the focus went because the window was disabled
    controls::win32::SystemClipboard clipboard_;
    controls::win32::PeerHost peers_;
};

} // namespace orv::addon::com
