#pragma once
// One page with a widget of every kind, able and unable, that tells what happens to it.
#include <functional>
#include <string>
#include <string_view>

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/form.h"
#include "controls/layout.h"
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/simple_widgets.h"
#include "controls/tab_strip.h"
#include "controls/toolbar.h"
#include "controls/tree.h"

namespace orv::gallery {

class GalleryPage {
  public:
    /// One line an event: name of what happened, then its numbers or bytes.
    using Say = std::function<void(std::wstring_view line)>;

    /// The form outlives the page.
    GalleryPage(controls::Form& form, Say say);
    /// The size at which nothing is cut off, laid out.
    controls::Size Layout(const controls::TextMeasure& measure);
    const controls::PictureList& Items() const { return *items_; }
    const controls::Toolbar& Palette() const { return *palette_; }
    const controls::Toolbar& CodeTypes() const { return *codeTypes_; }

  private:
    controls::MBEdit& AddEdit(controls::Frame& frame, const std::wstring& name);
    controls::LayoutPtr EditRow(controls::Frame& frame, controls::MBEdit& edit);
    controls::LayoutPtr Fields(controls::Frame& parent);
    controls::LayoutPtr Numbers(controls::Frame& parent);
    controls::LayoutPtr Choices(controls::Frame& parent);
    controls::LayoutPtr Buttons(controls::Frame& parent);
    controls::LayoutPtr Lists(controls::Frame& parent);
    controls::LayoutPtr Types(controls::Frame& parent);
    controls::LayoutPtr ItemsAndPalette(controls::Frame& parent);
    controls::LayoutPtr Strips(controls::Frame& parent);
    void FillItems();
    void Insert(const std::wstring& key, int gap);
    void Move(int item, int to);
    void Delete(int item);
    void Event(const std::wstring& what, int number) const { say_(what + L" " + std::to_wstring(number)); }

    controls::Form& form_;
    Say say_;
    std::vector<controls::PictureList::Row> rows_;
    controls::PictureList* items_ = nullptr;
    controls::Toolbar* palette_ = nullptr;
    controls::Toolbar* codeTypes_ = nullptr;
    controls::LayoutPtr content_;
};

} // namespace orv::gallery
