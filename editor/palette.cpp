#include "editor/palette.h"

#include "editor/fields.h"
#include "model/out_item.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::Rect;
using controls::Size;
using controls::TextMeasure;
using text::Id;
using text::Load;

constexpr int kColumn = 124;
constexpr int kLeastHeight = 160;
constexpr int kScrollBar = 18;

/// A frame that scrolls its content by itself, so that the page need not grow as long as the catalogue.
class ScrollingBox : public controls::LayoutBox {
  public:
    ScrollingBox(controls::Frame& frame, controls::LayoutPtr content)
        : LayoutBox(true, true), frame_(frame), content_(std::move(content)) {}
    Size Minimum(const TextMeasure& measure) const override {
        return {content_->Minimum(measure).width + measure.Scale(kScrollBar), measure.Scale(kLeastHeight)};
    }
    void Place(const Rect& area, const TextMeasure& measure) override {
        frame_.SetBounds(area);
        controls::LayoutPage(frame_, *content_, measure);
    }

  private:
    controls::Frame& frame_;
    controls::LayoutPtr content_;
};

controls::Toolbar::Button ButtonFor(const model::ToolItem& entry) {
    controls::Toolbar::Button button;
    button.key = entry.Key();
    button.caption = entry.ItemText();
    button.picture = entry.ImageKey();
    button.tip = entry.TooltipText();
    button.enabled = entry.Supported();
    if (!button.enabled)
        button.tip += Load(Id::NotOffered);
    return button;
}

} // namespace

Palette::Palette(Context& context, controls::Frame& parent)
    : context_(context), lblPalette_(parent.Add<controls::Label>(L"lblPalette")),
      frame_(parent.Add<controls::Frame>(L"fraPalette")) {
    lblPalette_.SetCaption(Load(Id::PaletteHeading));
    lblPalette_.SetHeading(true);
    lblPalette_.SetElides(true);
    sections_.push_back(AddSection(model::item_category::kCodeRelated, L"tbrCodeRel", Load(Id::PaletteCodeRelated)));
    sections_.push_back(AddSection(model::item_category::kGlobal, L"tbrGlobal", Load(Id::PaletteGlobal)));
    sections_.push_back(AddSection(model::item_category::kMiscellaneous, L"tbrMisc", Load(Id::PaletteMiscellaneous)));
}

Palette::Section Palette::AddSection(std::int32_t category, const wchar_t* name, const std::wstring& heading) {
    Section section{category, frame_.Add<controls::Label>(std::wstring(L"lbl") + (name + 3)),
                    frame_.Add<controls::Toolbar>(name)};
    section.heading.SetCaption(heading);
    section.buttons.SetPalette(true);
    section.buttons.SetColumnLimit(kColumn);
    section.buttons.SetAccessibleName(section.heading.PlainCaption());
    section.buttons.SetHint(Load(Id::HintPalette));
    section.buttons.onActivate = [this](const controls::Toolbar::Button& button) {
        if (onTake)
            onTake(button.key);
    };
    return section;
}

void Palette::SetUp() {
    for (Section& section : sections_)
        Fill(section);
}

void Palette::SetUsable(bool usable, const std::wstring& reason) {
    for (Section& section : sections_)
        SetFieldUsable(section.buttons, Load(Id::HintPalette), true, usable, reason);
}

void Palette::Fill(Section& section) {
    std::vector<controls::Toolbar::Button> buttons;
    for (const model::ToolItem& entry : context_.catalogue())
        if (entry.ItemCategory() == section.category)
            buttons.push_back(ButtonFor(entry));
    section.buttons.SetButtons(std::move(buttons));
}

controls::LayoutPtr Palette::Layout() {
    std::vector<controls::LayoutPtr> boxes;
    for (Section& section : sections_) {
        boxes.push_back(Cell(section.heading, controls::Grow::Across));
        boxes.push_back(Cell(section.buttons, controls::Grow::Across));
    }
    return controls::Column(
        controls::Boxed(Cell(lblPalette_, controls::Grow::Across),
                        std::make_unique<ScrollingBox>(frame_, controls::Column(std::move(boxes), 4))),
        4);
}

} // namespace orv::editor
