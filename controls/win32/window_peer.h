#pragma once
// What all peers share: one window, subclassed, with the widget's common state mirrored into it.
#include "platform/win32/owned.h"

#include <memory>
#include <optional>

#include "controls/peer.h"
#include "controls/widget.h"

namespace orv::controls::win32 {

class PeerHost;

struct WindowSpec {
    const wchar_t* type;
    DWORD style = 0;
    DWORD extendedStyle = 0;
};

/// A gesture may end in the peer's own destruction (a button that closes the editor). So nothing is touched after
/// one, unless a Life taken before says that the peer is still there.
class WindowPeer : public Peer {
  public:
    ~WindowPeer() override;
    WindowPeer(const WindowPeer&) = delete;
    WindowPeer& operator=(const WindowPeer&) = delete;

    HWND Window() const { return window_; }
    Widget& Subject() const { return widget_; }

    void Mirror(Aspect aspect) override;
    void TakeFocus() override;
    std::uintptr_t WindowHandle() const override { return reinterpret_cast<std::uintptr_t>(window_); }

    // Notifications of the window, handed back to it by the frame it stands in.
    virtual void Command(WORD /*code*/) {}
    virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }
    virtual void Draw(const DRAWITEMSTRUCT& /*item*/) {}
    /// Background for a window that asks for colours.
    virtual HBRUSH Colour(HDC dc);

  protected:
    WindowPeer(PeerHost& host, Widget& widget, const WindowSpec& spec);

    using Life = std::weak_ptr<const int>;
    Life TakeLife() const { return life_; }

    /// Another window in the place of this one, with the focus if this one has it. It has only the common state.
    void Replace(const WindowSpec& spec);

    PeerHost& Host() const { return host_; }
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(window_, message, wparam, lparam);
    }
    template <typename T>
    LRESULT SendPointer(UINT message, WPARAM wparam, T* pointer) const {
        return SendMessageW(window_, message, wparam, reinterpret_cast<LPARAM>(pointer));
    }
    /// What the window's own class does.
    LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam);
    virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
    /// Size of the window for the widget's bounds.
    virtual Rect Placement() const { return widget_.WindowBounds(); }
    /// What the window's text is to be; the caption with its access key unless overridden.
    virtual std::wstring WindowText() const { return widget_.Caption(); }
    /// Whether the window's own text serves screen readers as its name.
    virtual bool NamedByText() const { return true; }
    /// Keys that the widget hands back reach the window's class.
    virtual bool UsesNativeKeys() const { return false; }
    /// Such a key has come.
    virtual LRESULT TakeKey(UINT message, WPARAM wparam, LPARAM lparam) { return Default(message, wparam, lparam); }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT HandleKeyMessage(UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT FocusGained(WPARAM wparam, LPARAM lparam);
    LRESULT FocusLost(WPARAM wparam, LPARAM lparam);
    void Open(const WindowSpec& spec);
    void Move(const Rect& place);
    void Close(HWND window);
    void MirrorName();

    PeerHost& host_;
    Widget& widget_;
    HWND window_ = nullptr;
    WNDPROC inner_ = nullptr; ///< what the window had before ours
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
};

} // namespace orv::controls::win32
