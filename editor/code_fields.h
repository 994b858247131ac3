#pragma once
// Fields of the code page that edit one property of the slot each.
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "editor/check_field.h"
#include "editor/fields.h"
#include "model/code_def.h"
#include "text/texts.h"

namespace orv::editor {

class CodeFields {
  public:
    /// Asked for anew by each handler.
    using Slot = std::function<model::CodeDef&()>;

    /// The context outlives the fields.
    CodeFields(Context& context, Slot slot) : context_(context), slot_(std::move(slot)) {}
    CodeFields(const CodeFields&) = delete;
    CodeFields& operator=(const CodeFields&) = delete;

    Context& TheContext() { return context_; }
    model::CodeDef& TheSlot() { return slot_(); }

    /// Captions are what the fields are called, too. `parameter` sets the field up.
    template <typename T>
    ChoiceField& AddChoice(controls::Widget& parent, const wchar_t* name, text::Id caption, std::int32_t parameter,
                           model::Property<T> model::CodeDef::*member) {
        auto field = std::make_unique<ChoiceField>(context_, parent, name, [this, member](std::int32_t value) {
            model::Store(slot_(), member, static_cast<T>(value));
        });
        field->Label().SetCaption(text::Load(caption));
        ChoiceField& added = *field;
        rows_.push_back({[this, &added, parameter] {
                             added.SetUp(added.Label().PlainCaption(), parameter,
                                         context_.Access().SetupFor(parameter));
                         },
                         [&added, member](model::CodeDef& slot) { ShowField(added, slot, member); }});
        choices_.push_back(std::move(field));
        return added;
    }

    template <typename T>
    NumberField& AddNumber(controls::Widget& parent, const wchar_t* name, text::Id caption, std::int32_t parameter,
                           model::Property<T> model::CodeDef::*member) {
        auto field = std::make_unique<NumberField>(context_, parent, name, [this, member](NumberField::Number number) {
            model::Store(slot_(), member, static_cast<T>(number));
            return true;
        });
        field->Label().SetCaption(text::Load(caption));
        NumberField& added = *field;
        rows_.push_back({[this, &added, parameter] {
                             added.SetUp(added.Label().PlainCaption(), parameter, context_.Access().SetupFor(parameter),
                                         0, std::numeric_limits<T>::max());
                         },
                         [&added, member](model::CodeDef& slot) { ShowField(added, slot, member); }});
        numbers_.push_back(std::move(field));
        return added;
    }

    /// `stored` is called behind each click that was stored.
    CheckField& AddCheck(controls::Widget& parent, const wchar_t* name, text::Id caption, std::int32_t parameter,
                         model::Property<bool> model::CodeDef::*member, std::function<void()> stored = {});
    /// The reading mode `mode` of MaxiCode.
    CheckField& AddReadingMode(controls::Widget& parent, const wchar_t* name, std::int32_t parameter, int mode);

    void SetUp();
    /// What was being typed is dropped.
    void Show(model::CodeDef& slot);
    bool CommitPending();

  private:
    struct Row {
        std::function<void()> setUp;
        std::function<void(model::CodeDef&)> show;
    };

    CheckField& Keep(std::unique_ptr<CheckField> field, const std::wstring& caption, std::int32_t parameter,
                     std::function<void(CheckField&, const model::CodeDef&)> show);

    Context& context_;
    Slot slot_;
    std::vector<Row> rows_;
    std::vector<std::unique_ptr<ChoiceField>> choices_;
    std::vector<std::unique_ptr<NumberField>> numbers_;
    std::vector<std::unique_ptr<CheckField>> checks_;
};

} // namespace orv::editor
