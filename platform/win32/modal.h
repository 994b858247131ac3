#pragma once
// What a modal box needs to know of the control that shows it.
#include <functional>

#include "platform/win32/system.h"

namespace orv::platform::win32 {

struct ModalHooks {
    /// The window that the box belongs to; none when empty.
    std::function<HWND()> owner;
    /// True before a box opens, false after it has closed: the control passes it on to its frame.
    std::function<void(bool open)> modal;
};

/// Brackets one modal box.
class ModalScope {
  public:
    explicit ModalScope(const ModalHooks& hooks) : hooks_(hooks) {
        if (hooks_.modal)
            hooks_.modal(true);
    }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    ~ModalScope() {
        if (!hooks_.modal)
            return;
        try {
            hooks_.modal(false);
        } catch (...) {
            // The box has its answer; a frame that fails to wake up must not take it away.
        }
    }

  private:
    const ModalHooks& hooks_;
};

inline HWND OwnerOf(const ModalHooks& hooks) {
    const HWND owner = hooks.owner ? hooks.owner() : nullptr;
    return owner != nullptr && IsWindow(owner) ? owner : nullptr;
}

} // namespace orv::platform::win32
