#pragma once
// Fields of a page as the device description sets them up.
#include <cstdint>
#include <functional>
#include <string>

#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "controls/simple_widgets.h"
#include "device/parameter_access.h"
#include "editor/context.h"
#include "model/field.h"

namespace orv::editor {

/// "Header, parameter 6, up to 128 characters"; for a field that the device lacks the reason instead of the length.
std::wstring FieldHint(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup);

/// Entries from the parameter's choices; disabled with the reason when the device lacks it.
void SetUpCombo(controls::ComboBox& box, const std::wstring& meaning, std::int32_t number,
                const device::ControlSetup& setup);

/// Says, in hint and tool tip, why a field cannot be used, and disables it.
void DisableFor(controls::Widget& widget, const std::wstring& hint);

/// Off with the reason behind the hint's own words, or on again if the device has the parameter.
void SetFieldUsable(controls::Widget& widget, const std::wstring& hint, bool present, bool usable,
                    const std::wstring& reason);

/// A device's label as a caption: its "&" marks no access key.
std::wstring CaptionOf(const std::wstring& label);

/// A text of any length, data as well, on a label that cuts it: the tool tip is the whole.
void ShowCut(controls::Label& label, const std::wstring& text);

/// A list with its label: `cbo…` and `lbl…`.
class ChoiceField {
  public:
    using Store = std::function<void(std::int32_t)>;

    /// Adds both to `parent`. A choice by the user is stored under the handler `name`_Click. The context outlives the
    /// field.
    ChoiceField(Context& context, controls::Widget& parent, const std::wstring& name, Store store);

    controls::Label& Label() { return *label_; }
    controls::ComboBox& Box() { return *box_; }

    /// `meaning` is for screen readers and the hint line.
    void SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup);
    /// A value that the list lacks is shown under its own number.
    void Show(std::int32_t value) { box_->SelectData(value); }
    /// No choice: the value was never read.
    void ShowNothing() { box_->SetSelected(-1); }
    bool Present() const { return present_; }
    void SetVisible(bool visible);
    /// Off with the reason, or on again if the device has the parameter.
    void SetUsable(bool usable, const std::wstring& reason = {});

  private:
    std::wstring hint_; ///< while it can be used
    bool present_ = false;
    controls::Label* label_;
    controls::ComboBox* box_;
};

/// A number with its label: `txt…`, whose arrows are `ud…` to whoever reads an error, and `lbl…`.
class NumberField {
  public:
    using Number = controls::NumberBox::Number;
    /// Stores the number in the model. False keeps the focus, and the number pending; the store beeps itself.
    using Store = std::function<bool(Number)>;

    /// Adds both to `parent`. A typed number is stored under `name`_Validate when the focus is lost or a commit is
    /// due, one stepped to at once under `ud…_Change`. The context outlives the field.
    NumberField(Context& context, controls::Widget& parent, const std::wstring& name, Store store);

    controls::Label& Label() { return *label_; }
    controls::NumberBox& Box() { return *box_; }

    /// The range is the parameter's; without one that of the type, `least` to `greatest`. A parameter's range that
    /// reaches beyond the type is cut to it.
    void SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup, Number least,
               Number greatest);
    void Show(Number value) { box_->SetValue(value); }
    /// No number: the value was never read.
    void ShowNothing() { box_->SetUnknown(); }
    bool Present() const { return present_; }
    /// Off with the reason, or on again if the device has the parameter.
    void SetUsable(bool usable, const std::wstring& reason = {});
    bool CommitPending();
    /// Says what the number must be.
    void Refuse();

  private:
    bool Accept(Number number);

    Context& context_;
    std::wstring name_;
    std::wstring meaning_;
    std::wstring hint_; ///< while it can be used
    bool present_ = false;
    Store store_;
    bool stepping_ = false;
    controls::Label* label_;
    controls::NumberBox* box_;
};

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
    /// The value was never read.
    void ShowNothing() { box_->SetData({}); }
    bool Present() const { return present_; }
    /// Box and button; off with the reason, or on again if the device has the parameter.
    void SetUsable(bool usable, const std::wstring& reason = {});
    /// Label, box, button and count.
    /// False when storing failed, which was shown; the value stays pending.
    bool CommitPending();

  private:
    void StoreBytes();
    void TellHostOfFocus();

    Context& context_;
    std::wstring name_;
    Store store_;
    std::wstring hint_; ///< while it can be used
    bool present_ = false;
    controls::Label* label_;
    controls::MBEdit* box_;
    controls::DropButton* names_;
    controls::Label* count_ = nullptr;
};

/// Whether a property was never read.
template <typename Class, typename T>
bool IsUnread(const Class& object, model::Property<T> Class::*member) {
    return object.Marks().Any() && object.Marks().Has(model::CellOf(member));
}

/// Shows a property; nothing where it was never read although the device has it.
template <typename Field, typename Class, typename T>
void ShowField(Field& field, const Class& object, model::Property<T> Class::*member) {
    if (field.Present() && IsUnread(object, member))
        field.ShowNothing();
    else
        field.Show((object.*member)());
}

} // namespace orv::editor
