#pragma once
// A container of widgets: group box, page or plain panel.
#include <memory>

#include "controls/widget.h"

namespace orv::controls {

/// Caption that marks a page; never drawn.
inline constexpr wchar_t kPageMark[] = L"<Page>";

class Frame : public Widget {
  public:
    explicit Frame(std::wstring name, int index = kNoIndex);

    bool IsPage() const { return Caption() == kPageMark; }
    /// A group box paints its border and, unless it is empty, its caption; others paint their background alone.
    bool IsGroupBox() const { return groupBox_; }
    void SetGroupBox(bool groupBox) { groupBox_ = groupBox; }

    /// A page's title for screen readers is its accessible name.
    bool PeersWanted() const override;

    /// Scrolling: the children stand on a content of at least this size, the bounds are a window onto it, less the
    /// scroll bars that are then needed (`bar` pixels thick).
    void SetContent(Size least, int bar);
    Size ContentSize() const { return content_; }
    /// The part of the bounds that shows content.
    Size View() const;
    bool ScrollsDown() const;
    bool ScrollsAcross() const;
    Point Scroll() const { return scroll_; }
    /// Gesture and programmatic alike; kept inside the content.
    void ScrollTo(Point position);
    /// Scrolls as little as shows the part of `descendant` whole, its top left corner first; in its own coordinates.
    void ScrollIntoView(const Widget& descendant, Rect part);

    Size MinimumSize(const TextMeasure& measure) const override;

  protected:
    Point ScrollPosition() const override { return scroll_; }
    bool KeepsPending() const override { return IsPage(); }

  private:
    bool groupBox_ = false;
    mutable bool wasShown_ = false; ///< noted when asked: peers are made right after a page is shown
    Size content_;
    int bar_ = 0;
    Point scroll_;
};

} // namespace orv::controls
