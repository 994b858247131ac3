#pragma once
// Fixed or variable length of a code slot.
#include "controls/frame.h"
#include "controls/layout.h"
#include "editor/code_fields.h"
#include "editor/number_pair.h"

namespace orv::editor {

/// `fraLength`. The model keeps a fixed length as minimum = maximum (see CodeDef::SetLength), so the option chosen by
/// the user stays as clicked until the slot is shown again. Meant.
class CodeLength {
  public:
    CodeLength(Context& context, controls::Widget& page, CodeFields::Slot slot);
    CodeLength(const CodeLength&) = delete;
    CodeLength& operator=(const CodeLength&) = delete;

    controls::Frame& Frame() { return fraLength_; }
    controls::LayoutPtr Layout();
    void SetUp();
    /// What was being typed is dropped.
    void Show(const model::CodeDef& slot);
    bool CommitPending();

  private:
    void ChooseFixed();
    void ChooseVariable();
    void ShowLimits(const model::CodeDef& slot);
    void EnableNumbers();

    Context& context_;
    CodeFields::Slot slot_;
    controls::Frame& fraLength_;
    controls::OptionButton& optLengthFixed_;
    NumberField length_;
    controls::OptionButton& optLengthVariable_;
    NumberPair limits_;
    bool canBeFixed_ = true;
};

} // namespace orv::editor
