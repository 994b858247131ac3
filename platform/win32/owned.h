#pragma once
// Owning types for the system's handles: closed on every way out.
#include <utility>

#include "platform/win32/system.h"

namespace orv::platform::win32 {

/// `Close` is a callable type; a zero handle owns nothing.
template <typename Handle, typename Close>
class Owned {
  public:
    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
    Owned& operator=(Owned&& other) noexcept {
        if (this != &other)
            Reset(std::exchange(other.handle_, Handle{}));
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Handle{}; }
    Handle Release() { return std::exchange(handle_, Handle{}); }
    void Reset(Handle handle = {}) {
        if (Handle old = std::exchange(handle_, handle))
            Close{}(old);
    }

  private:
    Handle handle_{};
};

struct CloseByHandle {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
struct CloseWindow {
    // A window may have gone with its parent before its owner does.
    void operator()(HWND window) const {
        if (IsWindow(window))
            DestroyWindow(window);
    }
};
struct CloseGdi {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct CloseModule {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
struct CloseMenu {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
struct CloseKey {
    void operator()(HKEY key) const { RegCloseKey(key); }
};

using OwnedHandle = Owned<HANDLE, CloseByHandle>;
using OwnedWindow = Owned<HWND, CloseWindow>;
using OwnedFont = Owned<HFONT, CloseGdi>;
using OwnedBrush = Owned<HBRUSH, CloseGdi>;
using OwnedBitmap = Owned<HBITMAP, CloseGdi>;
using OwnedModule = Owned<HMODULE, CloseModule>;
using OwnedMenu = Owned<HMENU, CloseMenu>;
using OwnedKey = Owned<HKEY, CloseKey>;

/// The device context of a window for as long as it is needed.
class WindowDc {
  public:
    explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc() { ReleaseDC(window_, dc_); }
    HDC Get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

/// An object selected into a device context, the former one put back at the end.
class Selected {
  public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;
    ~Selected() { SelectObject(dc_, former_); }

  private:
    HDC dc_;
    HGDIOBJ former_;
};

} // namespace orv::platform::win32
