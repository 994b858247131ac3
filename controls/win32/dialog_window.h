#pragma once
// A dialog in a window of its own over the window that owns it.
#include "controls/dialog.h"
#include "controls/win32/peer_host.h"
#include "platform/win32/activation.h"
#include "platform/win32/modal.h"
#include "platform/win32/pump.h"

namespace orv::controls::win32 {

class DialogWindow {
  public:
    /// All of them outlive the object.
    DialogWindow(Dialog& dialog, const platform::win32::ActivationContext& context,
                 const platform::win32::ModalHooks& hooks, platform::win32::SystemPump& pump);
    ~DialogWindow();
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    /// Shows the dialog and returns when it was closed, the keyboard where it was before. Raises
    /// platform::WaitAbandoned when the pump was closed meanwhile.
    void Run();
    /// The window goes now and its owner comes back; Run notices when the stack has unwound to it.
    void Abandon();
    HWND Handle() const { return window_; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    platform::Wait RunModal();
    void Create();
    void Fit();
    void Layout();
    SIZE FrameFor(Size client) const;
    void PlaceOverOwner(SIZE size) const;
    void Limit(MINMAXINFO& limits) const;

    Dialog& dialog_;
    const platform::win32::ActivationContext& context_;
    const platform::win32::ModalHooks& hooks_;
    platform::win32::SystemPump& pump_;
    HWND owner_ = nullptr;
    HWND window_ = nullptr;
    bool disabledOwner_ = false;
    bool placed_ = false;
    SIZE least_{};
    PeerHost peers_;
};

} // namespace orv::controls::win32
