#include "controls/win32/rich_view.h"

#include <algorithm>
#include <cstring>

#include "controls/mb_edit_rtf.h"

namespace orv::controls::win32 {
namespace {

/// A line break in a box that has one line only.
constexpr wchar_t kBreakMark = L'\x00B6';
/// More characters than these are shown by one stream; fewer are put in place and coloured, run by run.
constexpr std::size_t kPatch = 64;
constexpr UINT kUtf16 = 1200;

struct Source {
    const std::string& text;
    std::size_t at = 0;
};

DWORD CALLBACK Read(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) {
    Source& source = *reinterpret_cast<Source*>(cookie);
    const std::size_t count = std::min(static_cast<std::size_t>(wanted), source.text.size() - source.at);
    std::memcpy(buffer, source.text.data() + source.at, count);
    source.at += count;
    *given = static_cast<LONG>(count);
    return 0;
}

CHARRANGE RangeOf(std::size_t from, std::size_t to) {
    return {static_cast<LONG>(from), static_cast<LONG>(to)};
}

CHARFORMAT2W FormatOf(HWND window) {
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    SendMessageW(window, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
    return format;
}

} // namespace

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
            // A scroll bar may have come or gone without being drawn.
            RedrawWindow(view_.window_, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_NOERASE | (view_.several_ ? RDW_FRAME : 0));
        }
        view_.showing_ = outer_;
    }

  private:
    RichView& view_;
    bool outer_;
    LPARAM mask_ = 0;
};

void RichView::Use(HWND window, bool several) {
    window_ = window;
    several_ = several;
    text_.clear();
    cells_.clear();
    known_ = true;
    const Quiet quiet(*this);
    SetWindowTextW(window_, L"");
}

void RichView::ShowText(const std::wstring& text, std::span<const ShadowCell> cells, CHARRANGE selection) {
    std::wstring shown = text;
    if (!several_)
        std::replace(shown.begin(), shown.end(), TokenText::kLineBreak, kBreakMark);
    const std::size_t shorter = known_ ? std::min(shown.size(), text_.size()) : 0;
    const auto same = [&](std::size_t mine, std::size_t other) {
        return text_[mine] == shown[other] && cells_[mine] == cells[other];
    };
    std::size_t head = 0;
    while (head < shorter && same(head, head))
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head && same(text_.size() - tail - 1, shown.size() - tail - 1))
        ++tail;
    const std::size_t oldEnd = text_.size() - tail;
    const std::size_t newEnd = shown.size() - tail;
    if (known_ && head == oldEnd && head == newEnd)
        return ShowSelection(selection);
    text_ = std::move(shown);
    cells_.assign(cells.begin(), cells.end());
    const Quiet quiet(*this);
    if (known_ && newEnd - head <= kPatch)
        Patch(head, oldEnd, newEnd);
    else
        Fill();
    Select(selection);
    known_ = true;
}

void RichView::Patch(std::size_t from, std::size_t oldEnd, std::size_t newEnd) {
    Select(RangeOf(from, oldEnd));
    if (from == newEnd)
        Send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    // What goes in takes the colour of what it replaces, or of the caret behind the run before.
    for (std::size_t start = from, end = from; start < newEnd; start = end) {
        end = EndOfRun(start, newEnd);
        ColourSelection(IsToken(start));
        Send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text_.substr(start, end - start).c_str()));
    }
}

void RichView::Fill() {
    if (Stream())
        return;
    SetWindowTextW(window_, text_.c_str());
    Colour(0, text_.size());
}

bool RichView::Stream() {
    CHARFORMAT2W format = FormatOf(window_);
    constexpr LONG kTwipsOfHalfPoint = 10;
    const std::string rich = RichText(text_, cells_,
                                      {.face = format.szFaceName,
                                       .halfPoints = static_cast<int>(format.yHeight / kTwipsOfHalfPoint),
                                       .bold = (format.dwEffects & CFE_BOLD) != 0,
                                       .italic = (format.dwEffects & CFE_ITALIC) != 0,
                                       .text = colours_.text,
                                       .token = colours_.token});
    Source source{rich};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&source), 0, &Read};
    Send(EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    if (format.yHeight % kTwipsOfHalfPoint != 0) {
        format.dwMask = CFM_SIZE;
        Send(EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
    }
    return stream.dwError == 0 && Length() == text_.size();
}

void RichView::ShowColours(const ViewColours& colours) {
    if (colours == colours_)
        return;
    colours_ = colours;
    Recolour();
}

void RichView::ShowFont(HFONT font) {
    const Quiet quiet(*this);
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    Recolour(); // the font comes with the colour of the system
}

void RichView::Recolour() {
    const Quiet quiet(*this);
    Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(colours_.back));
    const CHARRANGE kept = Selection();
    if (text_.size() > kPatch)
        Fill();
    else
        Colour(0, text_.size());
    Select(kept);
}

void RichView::Colour(std::size_t from, std::size_t to) {
    for (std::size_t start = from, end = from; start < to; start = end) {
        end = EndOfRun(start, to);
        Select(RangeOf(start, end));
        ColourSelection(IsToken(start));
    }
}

std::size_t RichView::EndOfRun(std::size_t start, std::size_t end) const {
    std::size_t at = start + 1;
    while (at < end && IsToken(at) == IsToken(start))
        ++at;
    return at;
}

void RichView::ColourSelection(bool token) {
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.crTextColor = token ? colours_.token : colours_.text;
    Send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

void RichView::ShowSelection(CHARRANGE selection) {
    const CHARRANGE present = Selection();
    if (present.cpMin == selection.cpMin && present.cpMax == selection.cpMax)
        return;
    const Quiet quiet(*this);
    Select(selection);
}

CHARRANGE RichView::Selection() const {
    CHARRANGE range{};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
}

std::size_t RichView::Length() const {
    GETTEXTLENGTHEX length{GTL_NUMCHARS | GTL_PRECISE, kUtf16};
    return static_cast<std::size_t>(Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length)));
}

std::wstring RichView::Present() const {
    std::wstring text(Length() + 1, L'\0');
    GETTEXTEX get{};
    get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    get.codepage = kUtf16;
    const LRESULT count = Send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(count));
    return text;
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
    // The last character of a line has its right end on the next one.
    return left.y == right.y && 2 * point.x > left.x + right.x ? position + 1 : position;
}

} // namespace orv::controls::win32
