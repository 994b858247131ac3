#include "editor/code_fields.h"

namespace orv::editor {

CheckField& CodeFields::Keep(std::unique_ptr<CheckField> field, const std::wstring& caption, std::int32_t parameter,
                             std::function<void(CheckField&, const model::CodeDef&)> show) {
    field->Box().SetCaption(caption);
    CheckField& added = *field;
    rows_.push_back({[this, &added, parameter] { added.SetUp(parameter, context_.Access().SetupFor(parameter)); },
                     [&added, show = std::move(show)](model::CodeDef& slot) { show(added, slot); }});
    checks_.push_back(std::move(field));
    return added;
}

CheckField& CodeFields::AddCheck(controls::Widget& parent, const wchar_t* name, text::Id caption,
                                 std::int32_t parameter, model::Property<bool> model::CodeDef::*member,
                                 std::function<void()> stored) {
    return Keep(std::make_unique<CheckField>(context_, parent, name, controls::Widget::kNoIndex,
                                             [this, member, stored = std::move(stored)](bool on) {
                                                 model::Store(slot_(), member, on);
                                                 if (stored)
                                                     stored();
                                             }),
                text::Load(caption), parameter,
                [member](CheckField& field, const model::CodeDef& slot) { ShowField(field, slot, member); });
}

CheckField& CodeFields::AddReadingMode(controls::Widget& parent, const wchar_t* name, std::int32_t parameter,
                                       int mode) {
    return Keep(std::make_unique<CheckField>(
                    context_, parent, name, mode,
                    [this, mode](bool on) { model::Store(slot_(), &model::CodeDef::MaxicodeEnable, mode, on); }),
                text::Load(text::Id::ReadingModeNumber) + std::to_wstring(mode), parameter,
                [mode](CheckField& field, const model::CodeDef& slot) {
                    const int cell = model::CellOf(&model::CodeDef::MaxicodeEnable) + mode;
                    if (field.Present() && slot.Marks().Has(cell))
                        field.ShowNothing();
                    else
                        field.Show(slot.MaxicodeEnable(mode));
                });
}

void CodeFields::SetUp() {
    for (const Row& row : rows_)
        row.setUp();
}

void CodeFields::Show(model::CodeDef& slot) {
    for (const Row& row : rows_)
        row.show(slot);
}

bool CodeFields::CommitPending() {
    bool stored = true;
    for (const auto& number : numbers_)
        stored = number->CommitPending() && stored;
    return stored;
}

} // namespace orv::editor
