#include "host/app/orvhost/log_pane.h"

#include <cstring>

#include <uxtheme.h>

namespace orv::host {
namespace {

constexpr std::size_t kMostRows = 10000;
constexpr int kSourceWidth = 64;

const wchar_t* NameOf(LogSource source) {
    switch (source) {
    case LogSource::Debug:
        return L"Debug";
    case LogSource::Device:
        return L"Device";
    case LogSource::Host:
        break;
    }
    return L"Host";
}

void AddColumn(HWND list, int index, const wchar_t* title) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = kSourceWidth;
    std::wstring text = title;
    column.pszText = text.data();
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

} // namespace

void LogPane::Create(HWND parent, int id) {
    list_ = CreateWindowExW(0, WC_LISTVIEWW, L"Log",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA |
                                LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                            0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Program(), nullptr);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    SetWindowTheme(list_, L"Explorer", nullptr);
    AddColumn(list_, 0, L"Source");
    AddColumn(list_, 1, L"Message");
}

void LogPane::SetFont(HFONT font, UINT dpi) {
    SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SendMessageW(list_, LVM_SETCOLUMNWIDTH, 0, Scale(kSourceWidth, dpi));
}

void LogPane::Move(const RECT& place) {
    MoveWindow(list_, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
    // Room for the scroll bar from the start, so that the message column does not need one of its own when it comes.
    const UINT dpi = GetDpiForWindow(list_);
    const int scroll = GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) + 2 * GetSystemMetricsForDpi(SM_CXEDGE, dpi);
    const int rest = place.right - place.left - scroll - Scale(kSourceWidth, dpi);
    SendMessageW(list_, LVM_SETCOLUMNWIDTH, 1, rest > 0 ? rest : 0);
}

void LogPane::Add(LogSource source, std::wstring text) {
    if (rows_.size() == kMostRows)
        rows_.pop_front();
    rows_.push_back({source, std::move(text)});
    if (list_ == nullptr)
        return;
    SendMessageW(list_, LVM_SETITEMCOUNT, rows_.size(), LVSICF_NOSCROLL);
    SendMessageW(list_, LVM_ENSUREVISIBLE, rows_.size() - 1, FALSE);
}

void LogPane::Clear() {
    rows_.clear();
    SendMessageW(list_, LVM_SETITEMCOUNT, 0, 0);
}

void LogPane::Notify(const NMHDR& header, LPARAM lparam) {
    if (header.hwndFrom != list_)
        return;
    switch (header.code) {
    case LVN_GETDISPINFOW:
        FillCell(reinterpret_cast<NMLVDISPINFOW*>(lparam)->item);
        return;
    case LVN_KEYDOWN:
        if (reinterpret_cast<NMLVKEYDOWN*>(lparam)->wVKey == 'C' && GetKeyState(VK_CONTROL) < 0)
            CopySelection();
        return;
    default:
        return;
    }
}

void LogPane::FillCell(LVITEMW& item) {
    const auto row = static_cast<std::size_t>(item.iItem);
    if ((item.mask & LVIF_TEXT) == 0 || row >= rows_.size() || item.cchTextMax <= 0)
        return;
    const wchar_t* const text = item.iSubItem == 0 ? NameOf(rows_[row].source) : rows_[row].text.c_str();
    lstrcpynW(item.pszText, text, item.cchTextMax);
}

void LogPane::CopySelection() {
    std::wstring text;
    LRESULT row = -1;
    while ((row = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0) {
        const Row& line = rows_[static_cast<std::size_t>(row)];
        text += std::wstring(NameOf(line.source)) + L"\t" + line.text + L"\r\n";
    }
    if (text.empty() || !OpenClipboard(list_))
        return;
    EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    if (const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes)) {
        std::memcpy(GlobalLock(memory), text.c_str(), bytes);
        GlobalUnlock(memory);
        if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr)
            GlobalFree(memory);
    }
    CloseClipboard();
}

} // namespace orv::host
