#pragma once
// A rich-edit window as a mere view: shows a coloured text and a selection, and says where a point falls in it.
#include "platform/win32/system.h"

#include <span>
#include <string>
#include <vector>

#include <richedit.h>

#include "controls/mb_edit_text.h"

namespace orv::controls::win32 {

struct ViewColours {
    COLORREF back = 0;
    COLORREF text = 0;
    COLORREF token = 0;
    bool operator==(const ViewColours&) const = default;
};

class RichView {
  public:
    /// Another window, empty and with its font; `several` lines or one, which shows line breaks as a mark.
    void Use(HWND window, bool several);
    /// Patches the window's text where it differs, tokens in their colour, and selects.
    void ShowText(const std::wstring& text, std::span<const ShadowCell> cells, CHARRANGE selection);
    void ShowColours(const ViewColours& colours);
    const ViewColours& Colours() const { return colours_; }
    void ShowFont(HFONT font);
    void ShowSelection(CHARRANGE selection);
    /// Border between characters that is nearest to a point of the client area.
    std::size_t PositionAt(POINT point) const;
    /// What the window itself has selected at present.
    CHARRANGE Selection() const;
    /// What the window reports now is our own doing.
    bool Showing() const { return showing_; }

    /// The characters that were put into the window, one for each of the text, and those that it has.
    const std::wstring& Shown() const { return text_; }
    std::wstring Present() const;
    /// Somebody else changed the window: the next text is shown whole.
    void Forget() { known_ = false; }

  private:
    class Quiet;
    void Patch(std::size_t from, std::size_t oldEnd, std::size_t newEnd);
    void Fill();
    bool Stream();
    void Recolour();
    void Colour(std::size_t from, std::size_t to);
    void ColourSelection(bool token);
    void Select(CHARRANGE range) { Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range)); }
    /// End of the run of tokens, or of printable characters, that begins at `start`.
    std::size_t EndOfRun(std::size_t start, std::size_t end) const;
    bool IsToken(std::size_t at) const { return cells_[at].tokenLength > 1; }
    std::size_t Length() const;
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(window_, message, wparam, lparam);
    }

    HWND window_ = nullptr;
    bool several_ = false;
    bool known_ = true;
    std::wstring text_;
    std::vector<ShadowCell> cells_;
    ViewColours colours_;
    bool showing_ = false;
};

} // namespace orv::controls::win32
