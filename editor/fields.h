#pragma once
// Fields of a page as the device description sets them up.
#include <cstdint>
#include <functional>
#include <string>

#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "device/parameter_access.h"
#include "editor/context.h"

namespace orv::editor {

/// "Header, parameter 6, up to 128 characters"; for a field that the device lacks the reason instead of the length.
std::wstring FieldHint(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup);

/// Entries from the parameter's choices; disabled with the reason when the device lacks it.
void SetUpCombo(controls::ComboBox& box, const std::wstring& meaning, std::int32_t number,
                const device::ControlSetup& setup);

/// Says, in hint and tool tip, why a field cannot be used, and disables it.
void DisableFor(controls::Widget& widget, const std::wstring& hint);

/// An edit box for bytes with the button and the label that belong to it: `name`, `name`Names and `name`Count.
class MBField {
  public:
    /// Stores the typed bytes, as text, in the model.
    using Store = std::function<void(const std::wstring&)>;

    /// Adds the label, the box, the button and, when `counted`, the count to `parent`. `changed` is raised for each
    /// change by the user, under the handler `name`_Change; `store` runs under `name`_Validate when the focus is
    /// lost or a commit is due, if something is pending. The context outlives the field.
    MBField(Context& context, controls::Widget& parent, const std::wstring& name, int index, bool counted, Store store);

    controls::Label& Label() { return *label_; }
    controls::MBEdit& Box() { return *box_; }
    controls::DropButton& Names() { return *names_; }
    controls::Label& Count() { return *count_; }

    void SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup);
    /// Shows a text of the model; never cuts it.
    void Show(const std::wstring& text);
    /// False when storing failed, which was shown; the value stays pending.
    bool CommitPending();

  private:
    void StoreBytes();
    void TellHostOfFocus();

    Context& context_;
    std::wstring name_;
    Store store_;
    controls::Label* label_;
    controls::MBEdit* box_;
    controls::DropButton* names_;
    controls::Label* count_ = nullptr;
};

} // namespace orv::editor
