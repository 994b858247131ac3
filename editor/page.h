#pragma once
// One page of the editor.
#include <string>
#include <utility>
#include <vector>

#include "controls/frame.h"
#include "controls/layout.h"
#include "editor/context.h"

namespace orv::editor {

class Page {
  public:
    Page(Context& context, std::wstring name, std::wstring title);
    virtual ~Page() = default;
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    controls::Frame& Frame() { return frame_; }
    /// The values were read anew, perhaps from another device: what the description says is asked for again.
    void ForgetSetup() { setUp_ = false; }
    /// Fills the controls from object `index` (1-based; 0: what a root node shows), raising no event. Raises what the
    /// model raises for one that does not exist.
    void Open(int index);
    /// Line above the page once it is open.
    virtual std::wstring Caption(const std::wstring& nodeText) { return nodeText; }
    /// Stores what is still being typed; false when a handler failed, which was shown.
    virtual bool CommitPending() = 0;
    /// What the strip above the page says of the object shown: contradictions, what was not read, what is hidden.
    virtual std::vector<std::wstring> Remarks() { return {}; }
    /// Of the node that the page shows, or showed last.
    const std::wstring& Key() const { return key_; }
    void SetKey(const std::wstring& key) { key_ = key; }
    /// The frame has its bounds.
    void Layout(const controls::TextMeasure& measure);

  protected:
    /// Lists, lengths and labels from the device description.
    virtual void SetUp() = 0;
    virtual void Fill() = 0;
    /// The frame has its bounds, nothing on it has: for what takes the form that the width allows.
    virtual void BeforeLayout(const controls::TextMeasure& /*measure*/) {}
    /// Of the object shown, as Open was told.
    int Index() const { return index_; }
    void SetIndex(int index) { index_ = index; }

    Context& context_;
    controls::Frame& frame_;
    controls::LayoutPtr layout_;

  private:
    std::wstring key_;
    bool setUp_ = false;
    int index_ = 0;
};

/// CommitPending of several fields: all of them, whatever one answers.
template <typename... Fields>
bool CommitAll(Fields&... fields) {
    bool stored = true;
    ((stored = fields.CommitPending() && stored), ...);
    return stored;
}

} // namespace orv::editor
