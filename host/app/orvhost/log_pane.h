#pragma once
// The pane that shows what happens: debug lines, traffic with the device, the host's own words.
#include <deque>
#include <string>

#include "host/app/orvhost/system.h"

namespace orv::host {

enum class LogSource { Debug, Device, Host };

class LogPane {
  public:
    void Create(HWND parent, int id);
    HWND Window() const { return list_; }
    void SetFont(HFONT font, UINT dpi);
    void Move(const RECT& place);
    void Add(LogSource source, std::wstring text);
    void Clear();
    /// Notifications of the list.
    void Notify(const NMHDR& header, LPARAM lparam);

  private:
    struct Row {
        LogSource source;
        std::wstring text;
    };
    void FillCell(LVITEMW& item);
    void CopySelection();

    HWND list_ = nullptr; // lives and dies with its parent
    std::deque<Row> rows_;
};

} // namespace orv::host
