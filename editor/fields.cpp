#include "editor/fields.h"

#include <algorithm>

#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

std::wstring FieldHint(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup) {
    std::wstring hint = meaning + Load(Id::HintParameter) + std::to_wstring(number);
    if (!setup.present)
        return hint + L": " + Load(Id::NotOnDevice);
    const device::Description& description = setup.description;
    if (description.maximumStringLength > 0)
        hint += Load(Id::HintUpTo) + std::to_wstring(description.maximumStringLength) + Load(Id::HintCharacters);
    else if (description.hasRange && description.choices.empty())
        hint += Load(Id::HintRange) + std::to_wstring(description.minimum) + Load(Id::HintTo) +
                std::to_wstring(description.maximum);
    return hint;
}

void DisableFor(controls::Widget& widget, const std::wstring& hint) {
    widget.SetHint(hint);
    widget.SetToolTip(hint);
    widget.SetEnabled(false);
}

void SetUpCombo(controls::ComboBox& box, const std::wstring& meaning, std::int32_t number,
                const device::ControlSetup& setup) {
    std::vector<controls::ComboBox::Entry> entries;
    for (const device::Choice& choice : setup.description.choices)
        entries.push_back({choice.label, choice.value});
    box.SetEntries(std::move(entries));
    box.SetAccessibleName(meaning);
    box.SetToolTip({});
    box.SetHint(FieldHint(meaning, number, setup));
    box.SetEnabled(true);
    if (!setup.present)
        DisableFor(box, box.Hint());
}

MBField::MBField(Context& context, controls::Widget& parent, const std::wstring& name, int index, bool counted,
                 Store store)
    : context_(context), name_(name), store_(std::move(store)),
      label_(&parent.Add<controls::Label>(L"lbl" + name.substr(3), index)),
      box_(&parent.Add<controls::MBEdit>(name, index)),
      names_(&parent.Add<controls::DropButton>(name + L"Names", index)) {
    if (counted)
        count_ = &parent.Add<controls::Label>(name + L"Count", index);
    box_->Attach(names_, count_);
    box_->onChange = [this] { context_.Handle(name_ + L"_Change", [this] { context_.changed(); }); };
    box_->onGotFocus = [this] { TellHostOfFocus(); };
    box_->onValidate = [this] {
        if (box_->Pending())
            context_.HandleInFocusChange(name_ + L"_Validate", [this] { StoreBytes(); });
        return true;
    };
}

void MBField::SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup) {
    const std::wstring hint = FieldHint(meaning, number, setup);
    box_->SetAccessibleName(meaning);
    box_->SetMaxLength(static_cast<std::size_t>(std::max(0, setup.description.maximumStringLength)));
    box_->SetHint(hint);
    box_->SetEnabled(setup.present);
    names_->SetEnabled(setup.present);
    box_->SetTooltips(setup.present);
    if (!setup.present)
        DisableFor(*box_, hint);
}

void MBField::Show(const std::wstring& text) {
    box_->SetData(context_.Access().StringToBytes(text));
}

void MBField::StoreBytes() {
    store_(context_.Access().BytesToString(box_->Data()));
    box_->MarkStored();
}

void MBField::TellHostOfFocus() {
    context_.Later([this] {
        const device::WindowHandle window = context_.windowOf ? context_.windowOf(*box_) : 0;
        if (window != 0)
            context_.Handle(name_ + L"_GotFocus", [&] { context_.state.Support().EditGotFocus(window); });
    });
}

bool MBField::CommitPending() {
    if (!box_->Pending())
        return true;
    return context_.Handle(name_ + L"_Validate", [this] { StoreBytes(); });
}

} // namespace orv::editor
