#pragma once
// One page of the editor.
#include <string>

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
    /// Fills the controls from the model, raising no event.
    void LoadModel();
    /// Stores what is still being typed; false when a handler failed, which was shown.
    virtual bool CommitPending() = 0;
    /// The frame has its bounds.
    void Layout(const controls::TextMeasure& measure);

  protected:
    /// Lists, lengths and labels from the device description.
    virtual void SetUp() = 0;
    virtual void Fill() = 0;

    Context& context_;
    controls::Frame& frame_;
    controls::LayoutPtr layout_;

  private:
    bool setUp_ = false;
};

} // namespace orv::editor
