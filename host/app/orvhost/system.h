#pragma once
// The system's headers in the order that they need, and owners for what they hand out.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <olectl.h>

#undef MessageBox

#include <string>
#include <utility>

namespace orv::host {

/// Owner of a handle; `Free` is the function that gives it back.
template <typename Handle, auto Free>
class Owned {
  public:
    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Owned() {
        if (handle_ != Handle{})
            Free(handle_);
    }
    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Handle{}; }
    void Reset() { *this = Owned(); }
    /// The owner has lost it: the system has taken it over or has destroyed it.
    void Forget() { handle_ = Handle{}; }

  private:
    Handle handle_{};
};

using OwnedWindow = Owned<HWND, &DestroyWindow>;
using OwnedFont = Owned<HFONT, &DeleteObject>;
using OwnedBitmap = Owned<HBITMAP, &DeleteObject>;
using OwnedMemoryDc = Owned<HDC, &DeleteDC>;
using OwnedMenu = Owned<HMENU, &DestroyMenu>;
using OwnedAccelerators = Owned<HACCEL, &DestroyAcceleratorTable>;
using OwnedModule = Owned<HMODULE, &FreeLibrary>;

inline HINSTANCE Program() {
    return GetModuleHandleW(nullptr);
}

inline int Scale(int value, UINT dpi) {
    return MulDiv(value, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
}

/// Registers a window class of this program; a second time does nothing.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, HBRUSH background, UINT style = 0);

/// `window` as it is. Raises std::runtime_error with the system's words when it was not made.
HWND Made(HWND window);

/// The system's message font.
OwnedFont MessageFont(UINT dpi);

std::wstring WindowText(HWND window);

} // namespace orv::host
