#pragma once
// Settings of the selected item of a format. What an item's type has no use for is hidden; nothing else moves.
#include <cstdint>
#include <functional>

#include "controls/frame.h"
#include "controls/layout.h"
#include "editor/fields.h"
#include "editor/item_texts.h"
#include "model/out_item.h"
#include "model/tool_item.h"

namespace orv::editor {

class ItemPanel {
  public:
    /// Asked for anew by each handler; null when no item is selected.
    using ItemAccess = std::function<model::OutItem*()>;

    /// Adds a frame to `parent`.
    ItemPanel(Context& context, controls::Frame& parent, ItemAccess item);

    /// Lists, lengths and labels from the device description.
    void SetUp();
    /// Shows the item that is selected now, or says that there is none.
    void Fill();
    bool CommitPending();
    controls::LayoutPtr Layout();

    /// The code that is chosen in the panel; nothing without an item.
    const controls::ComboBox& CodeSelection() { return codeSel_.Box(); }
    /// The text of the user's own was changed for this item, and is not stored yet.
    bool IsTyping(const model::OutItem& item) { return &item == shown_ && userString_.Box().Pending(); }
    /// That text in displayed form.
    std::wstring UserText() { return userString_.Box().Text(); }

    /// What is shown of the item is another one now.
    std::function<void()> onShown;

  private:
    model::OutItem& Item() const;
    const model::ToolItem* Entry() const;

    ChoiceField Choice(controls::Frame& parent, const wchar_t* name,
                       model::Property<std::int32_t> model::OutItem::*member);
    ChoiceField SpecialChoice(controls::Frame& parent, const wchar_t* name, void (ItemPanel::*store)(std::int32_t));
    template <typename Number>
    NumberField Count(controls::Frame& parent, const wchar_t* name, model::Property<Number> model::OutItem::*member);
    MBField Bytes(controls::Frame& parent, const wchar_t* name, model::Property<std::wstring> model::OutItem::*member);

    void SetCaptions();
    void AddGoButton();
    void StoreType(std::int32_t data);
    void StoreCode(std::int32_t code);
    void StoreFormat(std::int32_t format);
    void StoreDevice(std::int32_t device);
    void GoToCode();
    void Changed();

    void SetUpChoices(device::ParameterAccess& access);
    void SetUpNumbers(device::ParameterAccess& access);
    void FillLists();
    void FillFormat();
    void FillValues();
    void ShowWhatApplies();
    void HideAll();
    void ShowNothing();
    void ShowLengthRule();
    /// A field behind a label that is as wide as all labels at the left.
    static controls::LayoutPtr Leading(controls::Label& label, controls::LayoutPtr field);
    controls::LayoutPtr CodeSlot();
    controls::LayoutPtr FormatSlot();
    controls::LayoutPtr CutSlot();

    static constexpr std::int32_t kFormatLength = 365;

    Context& context_;
    ItemAccess item_;
    bool filling_ = false;
    const model::OutItem* shown_ = nullptr; ///< compared alone: it may be gone
    device::ControlSetup lengthSetup_;

    // In the order in which they are read, which is the tab order.
    controls::Label& lblItem_;
    controls::Frame& fraItem_;
    controls::Label& lblNoItem_;
    ChoiceField type_;
    ChoiceField link_;
    ChoiceField align_;
    controls::Frame& fraItemAlign_;
    NumberField alignLength_;
    MBField alignFiller_;
    ChoiceField codeSel_;
    controls::Button& cmdGoItemCode_;
    controls::Frame& fraDiagsEvent_;
    ChoiceField diagsEvent_;
    controls::Frame& fraMiscString_;
    MBField userString_;
    controls::Frame& fraDataFormat_;
    ChoiceField format_;
    NumberField formatLen_;
    controls::Frame& fraCodeCutting_;
    ChoiceField codeCut_;
    controls::Frame& fraCodeCutSimple_;
    NumberField cutLeading_;
    NumberField cutTrailing_;
    controls::Frame& fraCodeCutPattern_;
    MBField cutPattern_;
    ChoiceField cutPatternMode_;
    controls::Frame& fraDeviceSel_;
    ChoiceField deviceSel_;
    ChoiceField scaleType_;
};

} // namespace orv::editor
