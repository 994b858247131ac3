#include "controls/win32/rich_view.h"

#include <algorithm>

#include "controls/win32/colours.h"

namespace orv::controls::win32 {

/// While the view changes the window: no notifications, no drawing in between.
class RichView::Quiet {
  public:
    explicit Quiet(RichView& view) : view_(view), outer_(view.showing_) {
        view_.showing_ = true;
        if (outer_)
            return;
        mask_ = view_.Send(EM_SETEVENTMASK, 0, 0);
        view_.Send(WM_SETREDRAW, FALSE);
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() {
        if (!outer_) {
            view_.Send(WM_SETREDRAW, TRUE);
            view_.Send(EM_SETEVENTMASK, 0, mask_);
            InvalidateRect(view_.window_, nullptr, FALSE);
        }
        view_.showing_ = outer_;
    }

  private:
    RichView& view_;
    bool outer_;
    LPARAM mask_ = 0;
};

void RichView::ShowText(const std::wstring& text, std::span<const ShadowCell> cells) {
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(text.size(), text_.size()));
    const auto same = [&](std::size_t mine, std::size_t other) {
        return text_[mine] == text[other] && cells_[mine] == cells[other];
    };
    std::ptrdiff_t head = 0;
    while (head < shorter && same(static_cast<std::size_t>(head), static_cast<std::size_t>(head)))
        ++head;
    std::ptrdiff_t tail = 0;
    while (tail < shorter - head &&
           same(text_.size() - static_cast<std::size_t>(tail) - 1, text.size() - static_cast<std::size_t>(tail) - 1))
        ++tail;
    const auto from = static_cast<std::size_t>(head);
    const std::size_t oldEnd = text_.size() - static_cast<std::size_t>(tail);
    const std::size_t newEnd = text.size() - static_cast<std::size_t>(tail);
    if (from == oldEnd && from == newEnd)
        return;
    const Quiet quiet(*this);
    CHARRANGE range{static_cast<LONG>(from), static_cast<LONG>(oldEnd)};
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    Send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.substr(from, newEnd - from).c_str()));
    text_ = text;
    cells_.assign(cells.begin(), cells.end());
    Colour(from, newEnd);
}

void RichView::ShowColours(bool enabled) {
    enabled_ = enabled;
    const Quiet quiet(*this);
    Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE)));
    Colour(0, text_.size());
}

void RichView::Colour(std::size_t from, std::size_t to) {
    const CHARRANGE kept = Selection();
    for (std::size_t start = from; start < to;) {
        const bool token = cells_[start].tokenLength > 1;
        std::size_t end = start + 1;
        while (end < to && (cells_[end].tokenLength > 1) == token)
            ++end;
        ColourRun(start, end, token);
        start = end;
    }
    CHARRANGE restored = kept;
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&restored));
}

void RichView::ColourRun(std::size_t from, std::size_t to, bool token) {
    CHARRANGE range{static_cast<LONG>(from), static_cast<LONG>(to)};
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.crTextColor = !enabled_ ? GetSysColor(COLOR_GRAYTEXT)
                         : token   ? TokenColour(GetSysColor(COLOR_WINDOW))
                                   : GetSysColor(COLOR_WINDOWTEXT);
    Send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

void RichView::ShowSelection(std::size_t start, std::size_t length) {
    CHARRANGE range{static_cast<LONG>(start), static_cast<LONG>(start + length)};
    const CHARRANGE present = Selection();
    if (present.cpMin == range.cpMin && present.cpMax == range.cpMax)
        return;
    const Quiet quiet(*this);
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

CHARRANGE RichView::Selection() const {
    CHARRANGE range{};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
}

std::size_t RichView::PositionAt(POINT point) const {
    POINTL where{point.x, point.y};
    const LRESULT hit = Send(EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&where));
    const auto position = std::min(static_cast<std::size_t>(std::max<LRESULT>(hit, 0)), text_.size());
    if (position == text_.size())
        return position;
    POINTL left{};
    POINTL right{};
    Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&left), static_cast<LPARAM>(position));
    Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&right), static_cast<LPARAM>(position + 1));
    return 2 * point.x > left.x + right.x ? position + 1 : position;
}

} // namespace orv::controls::win32
