#pragma once
// A rich-edit window as a mere view: shows a coloured text and a selection, and says where a point falls in it.
#include "platform/win32/system.h"

#include <span>
#include <string>
#include <vector>

#include <richedit.h>

#include "controls/mb_edit_core.h"

namespace orv::controls::win32 {

class RichView {
  public:
    explicit RichView(HWND window) : window_(window) {}
    /// Patches the window's text where it differs, tokens in their colour.
    void ShowText(const std::wstring& text, std::span<const ShadowCell> cells);
    /// Colours of the system anew; `enabled` dims all of it.
    void ShowColours(bool enabled);
    void ShowSelection(std::size_t start, std::size_t length);
    /// Border between characters that is nearest to a point of the client area.
    std::size_t PositionAt(POINT point) const;
    /// What the window itself has selected at present.
    CHARRANGE Selection() const;
    /// What the window reports now is our own doing.
    bool Showing() const { return showing_; }

  private:
    class Quiet;
    void Colour(std::size_t from, std::size_t to);
    void ColourRun(std::size_t from, std::size_t to, bool token);
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(window_, message, wparam, lparam);
    }

    HWND window_;
    std::wstring text_;
    std::vector<ShadowCell> cells_;
    bool enabled_ = true;
    bool showing_ = false;
};

} // namespace orv::controls::win32
