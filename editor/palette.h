#pragma once
// What items can be added to a format: the catalogue in three sections, to take from by keyboard, double click or drag.
#include <functional>
#include <string>

#include "controls/frame.h"
#include "controls/layout.h"
#include "controls/toolbar.h"
#include "editor/context.h"

namespace orv::editor {

class Palette {
  public:
    /// Adds a heading and a scrolling frame to `parent`.
    Palette(Context& context, controls::Frame& parent);

    /// Fills the sections from the catalogue.
    void SetUp();
    /// Off with the reason, or on again.
    void SetUsable(bool usable, const std::wstring& reason);
    controls::LayoutPtr Layout();

    /// Key of an item that was chosen without a place to put it.
    std::function<void(const std::wstring& key)> onTake;

  private:
    struct Section {
        std::int32_t category;
        controls::Label& heading;
        controls::Toolbar& buttons;
    };

    Section AddSection(std::int32_t category, const wchar_t* name, const std::wstring& heading);
    void Fill(Section& section);

    Context& context_;
    controls::Label& lblPalette_;
    controls::Frame& frame_;
    std::vector<Section> sections_;
};

} // namespace orv::editor
