#pragma once
// One code slot: whether it is used, its symbology and the options of that.
#include "controls/toolbar.h"
#include "editor/code_fields.h"
#include "editor/code_length.h"
#include "editor/code_options.h"
#include "editor/page.h"

namespace orv::editor {

class CodePage : public Page {
  public:
    explicit CodePage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override;
    std::vector<std::wstring> Remarks() override;

  protected:
    void SetUp() override;
    void Fill() override;
    void BeforeLayout(const controls::TextMeasure& measure) override;

  private:
    /// A string of this code alone, in a frame of its own.
    struct LocalString {
        LocalString(CodePage& page, controls::Widget& parent, const wchar_t* frameName, const wchar_t* boxName,
                    text::Id caption, model::Property<std::wstring> model::CodeDef::*member);
        controls::LayoutPtr Layout();
        void Show(bool visible, bool used, const std::wstring& reason);

        controls::Frame& frame;
        MBField field;
        std::wstring meaning;
    };

    /// Raises 91 for one that does not exist.
    model::CodeDef& Slot();
    void SetUpToolbar();
    std::vector<controls::Toolbar::Button> SymbologyButtons();
    void ChooseSymbology(const controls::Toolbar::Button& button);
    std::wstring ButtonOf(const model::CodeDef& slot) const;
    void ShowParts(const model::CodeDef& slot);
    void ShowStrings(const model::CodeDef& slot);

    controls::Toolbar& tbrCodeType_;
    int buttonWidth_ = 0;
    controls::Frame& fraLocalStrings_;
    bool offersNoRead_ = false; ///< with the present combination, whatever the slot
    bool offersMultipleRead_ = false;
    bool offersStrings_ = false;
    LocalString noRead_;
    LocalString multipleRead_;
    CodeLength length_;
    CodeFields fields_;
    CodeOptions options_;
};

} // namespace orv::editor
