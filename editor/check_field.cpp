#include "editor/check_field.h"

#include "editor/fields.h"

namespace orv::editor {

CheckField::CheckField(Context& context, controls::Widget& parent, const std::wstring& name, int index, Store store)
    : box_(&parent.Add<controls::CheckBox>(name, index)) {
    box_->onClick = [&context, name, box = box_, store = std::move(store)] {
        context.Edit({name, L"_Click"}, [&] { store(box->Checked()); });
    };
}

void CheckField::SetUp(std::int32_t number, const device::ControlSetup& setup) {
    device::ControlSetup plain = setup;
    present_ = setup.present;
    plain.description.hasRange = false; // "0 to 1" says nothing of a check mark
    SetFieldUsable(*box_, FieldHint(box_->PlainCaption(), number, plain), plain.present, true, {});
}

} // namespace orv::editor
