#pragma once
// One advanced format: its transports, its frame, and its items.
#include "controls/output_strip.h"
#include "controls/text_box.h"
#include "editor/fields.h"
#include "editor/item_list.h"
#include "editor/item_panel.h"
#include "editor/page.h"
#include "editor/palette.h"

namespace orv::editor {

class AdvFormatPage : public Page {
  public:
    explicit AdvFormatPage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override;
    std::vector<std::wstring> Remarks() override;

  protected:
    void SetUp() override;
    void Fill() override;

  private:
    model::AdvancedFormat& Format() const;
    /// Null when no item is selected.
    model::OutItem* SelectedItem();
    std::wstring UserText(const model::OutItem& item);
    void SetCaptions();
    void AddHandlers();
    void ChooseFormatTransports();
    void ShowTransports();
    void ShowOutput();
    controls::LayoutPtr FormatLayout();

    void FindHidden(device::ParameterAccess& access);

    bool filling_ = false;
    bool transportsPresent_ = false;
    std::wstring hidden_; ///< numbers of the item parameters that the level hides

    // In the order in which they are read, which is the tab order.
    controls::Label& lblTransports_;
    controls::TextBox& txtTransports_;
    controls::Button& cmdTransports_;
    ChoiceField globalScale_;
    MBField header_;
    MBField terminator_;
    ChoiceField align_;
    NumberField alignLength_;
    MBField alignFiller_;
    Palette palette_;
    ItemList items_;
    ItemPanel panel_;
    controls::OutputStrip& output_;
};

} // namespace orv::editor
