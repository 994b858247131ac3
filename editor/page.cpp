#include "editor/page.h"

#include <utility>

namespace orv::editor {

Page::Page(Context& context, std::wstring name, std::wstring title)
    : context_(context), frame_(context.form.Root().Add<controls::Frame>(std::move(name))) {
    frame_.SetCaption(controls::kPageMark);
    frame_.SetVisible(false);
    frame_.SetAccessibleName(std::move(title));
}

void Page::Open(int index) {
    const bool another = std::exchange(index_, index) != index;
    if (!setUp_) {
        SetUp();
        setUp_ = true;
    }
    Fill();
    // What was scrolled to for one object may be empty for the next one; so may what the focus has passed over on its
    // way from a field that is gone.
    if (another)
        frame_.ScrollTo({});
}

void Page::Layout(const controls::TextMeasure& measure) {
    BeforeLayout(measure);
    if (layout_)
        controls::LayoutPage(frame_, *layout_, measure);
}

} // namespace orv::editor
