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

void SetFieldUsable(controls::Widget& widget, const std::wstring& hint, bool present, bool usable,
                    const std::wstring& reason) {
    if (!present || !usable) {
        DisableFor(widget, present ? hint + L": " + reason : hint);
        return;
    }
    widget.SetHint(hint);
    widget.SetToolTip({});
    widget.SetEnabled(true);
}

std::wstring CaptionOf(const std::wstring& label) {
    std::wstring caption;
    for (wchar_t c : label)
        caption.append(c == L'&' ? 2 : 1, c);
    return caption;
}

void ShowCut(controls::Label& label, const std::wstring& text) {
    label.SetCaption(CaptionOf(text));
    label.SetToolTip(text);
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

ChoiceField::ChoiceField(Context& context, controls::Widget& parent, const std::wstring& name, Store store)
    : label_(&parent.Add<controls::Label>(L"lbl" + name.substr(3))), box_(&parent.Add<controls::ComboBox>(name)) {
    box_->onClick = [&context, name, box = box_, store = std::move(store)] {
        context.Edit({name, L"_Click"}, [&] { store(box->SelectedData()); });
    };
}

void ChoiceField::SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup) {
    SetUpCombo(*box_, meaning, number, setup);
    hint_ = box_->Hint();
    present_ = setup.present;
}

void ChoiceField::SetUsable(bool usable, const std::wstring& reason) {
    SetFieldUsable(*box_, hint_, present_, usable, reason);
}

void ChoiceField::SetVisible(bool visible) {
    label_->SetVisible(visible);
    box_->SetVisible(visible);
}

NumberField::NumberField(Context& context, controls::Widget& parent, const std::wstring& name, Store store)
    : context_(context), name_(name), store_(std::move(store)),
      label_(&parent.Add<controls::Label>(L"lbl" + name.substr(3))), box_(&parent.Add<controls::NumberBox>(name)) {
    box_->onChange = [this](Number) { context_.Handle({name_, L"_Change"}, [this] { context_.changed(); }); };
    box_->onAccept = [this](Number number) { return Accept(number); };
    box_->onStep = [this] {
        const Restoring stepped([this] { stepping_ = false; });
        stepping_ = true;
        box_->Commit();
    };
    box_->onRefused = [this] { Refuse(); };
}

bool NumberField::Accept(Number number) {
    bool taken = false;
    const auto store = [&] {
        taken = store_(number);
        if (taken)
            context_.changed();
    };
    // The focus may be on its way to another field, where no box may open.
    if (stepping_)
        context_.Handle({L"ud", std::wstring_view(name_).substr(3), L"_Change"}, store);
    else
        context_.HandleInFocusChange({name_, L"_Validate"}, store);
    return taken;
}

void NumberField::Refuse() {
    std::wstring right = std::to_wstring(box_->Least()) + Load(Id::HintTo) + std::to_wstring(box_->Greatest());
    // Between the numbers of a list there are others, which are not right.
    if (!box_->Allowed().empty()) {
        right.clear();
        for (const Number number : box_->Allowed())
            right += (right.empty() ? std::wstring() : Load(Id::HintRange)) + std::to_wstring(number);
    }
    context_.refuse(meaning_ + Load(Id::MustBe) + right);
}

void NumberField::SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup,
                        Number least, Number greatest) {
    device::ControlSetup limited = setup;
    device::Description& range = limited.description;
    if (range.hasRange && range.minimum <= greatest && range.maximum >= least) {
        least = std::max<Number>(least, range.minimum);
        greatest = std::min<Number>(greatest, range.maximum);
    }
    range.hasRange = true;
    range.minimum = static_cast<std::int32_t>(least);
    range.maximum = static_cast<std::int32_t>(greatest);
    meaning_ = meaning;
    box_->SetRange(least, greatest);
    box_->SetAccessibleName(meaning);
    hint_ = FieldHint(meaning, number, limited);
    present_ = setup.present;
    SetUsable(true);
}

void NumberField::SetUsable(bool usable, const std::wstring& reason) {
    if (!usable)
        box_->Revert(); // wrong text would stay behind where nobody can put it right
    SetFieldUsable(*box_, hint_, present_, usable, reason);
}

bool NumberField::CommitPending() {
    return !box_->Pending() || box_->Commit();
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
    box_->onChange = [this] { context_.Handle({name_, L"_Change"}, [this] { context_.changed(); }); };
    box_->onGotFocus = [this] { TellHostOfFocus(); };
    box_->onValidate = [this] {
        if (box_->Pending())
            context_.HandleInFocusChange({name_, L"_Validate"}, [this] { StoreBytes(); });
        return true;
    };
}

void MBField::SetUp(const std::wstring& meaning, std::int32_t number, const device::ControlSetup& setup) {
    hint_ = FieldHint(meaning, number, setup);
    present_ = setup.present;
    box_->SetAccessibleName(meaning);
    box_->SetMaxLength(static_cast<std::size_t>(std::max(0, setup.description.maximumStringLength)));
    SetUsable(true);
}

void MBField::SetUsable(bool usable, const std::wstring& reason) {
    const bool on = present_ && usable;
    names_->SetEnabled(on);
    box_->SetTooltips(on); // its tool tip is the value while there is no reason to give
    box_->SetHint(hint_);
    box_->SetEnabled(on);
    if (!on)
        DisableFor(*box_, present_ ? reason : hint_);
}

void MBField::Show(const std::wstring& text) {
    box_->SetData(context_.Access().StringToBytes(text));
}

void MBField::StoreBytes() {
    store_(context_.Access().BytesToString(box_->Data()));
    box_->MarkStored();
    context_.refreshStrip();
}

void MBField::TellHostOfFocus() {
    context_.Later([this] {
        const device::WindowHandle window = context_.windowOf ? context_.windowOf(*box_) : 0;
        if (window != 0)
            context_.Handle({name_, L"_GotFocus"}, [&] { context_.state.Support().EditGotFocus(window); });
    });
}

bool MBField::CommitPending() {
    if (!box_->Pending())
        return true;
    return context_.Handle({name_, L"_Validate"}, [this] { StoreBytes(); });
}

} // namespace orv::editor
