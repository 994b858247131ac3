#pragma once
// A row of tabs. What belongs to a tab is shown by the page, below the strip.
#include <functional>
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

/// More tabs than fit are scrolled by the window. While the focus is anywhere beside the strip or below, Ctrl+Tab and
/// Ctrl+Shift+Tab go from tab to tab (Form).
class TabStrip : public Widget {
  public:
    struct Tab {
        std::wstring key;
        std::wstring caption;
        bool operator==(const Tab&) const = default;
    };

    explicit TabStrip(std::wstring name, int index = kNoIndex);

    const std::vector<Tab>& Tabs() const { return tabs_; }
    /// The selection stays with its key where that is still there; else it is the first tab.
    void SetTabs(std::vector<Tab> tabs);
    /// 0-based; -1 while there is no tab.
    int Selected() const { return selected_; }
    void SetSelected(int tab);
    /// Empty without a tab.
    std::wstring SelectedKey() const;
    void SetCaptionOf(const std::wstring& key, std::wstring caption);

    /// Gesture: a click or an arrow. Asks onSelecting; raises onSelect when the selection changes.
    void Select(int tab);
    /// Gesture: round, in either direction.
    void Step(int by);
    KeyOutcome HandleKey(const KeyEvent& key) override;
    Size MinimumSize(const TextMeasure& measure) const override;

    /// False keeps the tab: a value that cannot be stored belongs to it.
    std::function<bool()> onSelecting;
    std::function<void(int tab)> onSelect;

  private:
    std::vector<Tab> tabs_;
    int selected_ = -1;
};

} // namespace orv::controls
