#pragma once
// The groups of the combination expression, one tab each.
#include <cstdint>
#include <memory>

#include "controls/check_list.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "editor/fields.h"
#include "editor/page.h"
#include "model/group.h"
#include "text/texts.h"

namespace orv::editor {

class GroupPage : public Page {
  public:
    explicit GroupPage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override;
    std::vector<std::wstring> Remarks() override;

  protected:
    void SetUp() override;
    /// Index 0, the root of all groups, shows the first one. Without any group the page is disabled.
    void Fill() override;

  private:
    using StringProperty = model::Property<std::wstring> model::Group::*;

    std::unique_ptr<MBField> AddField(const wchar_t* name, text::Id caption, StringProperty property);
    void Name();
    void Arrange();
    void AddHandlers();
    model::Groups& Groups() { return context_.root().Codes().Groups(); }
    model::Group& Shown() { return Groups().Item(Index()); }
    void FillTabs();
    void FillCodes();
    void ShowGroup();
    void ShowNothing();
    void ShowExpression();
    std::wstring UnlistedReferences();
    void OnTab(int tab);
    void OnCheck(int row, bool checked);
    void GoToCode(int row);
    /// Runs `action` on the group shown, then shows it under its new texts.
    template <typename Action>
    void Change(const wchar_t* handler, Action action);

    controls::TabStrip& tbs_;
    controls::Label& lblCodes_;
    controls::CheckList& lvwCodes_;
    controls::Button& cmdGoGrpCode_;
    controls::Frame& fraJoin_;
    controls::OptionButton& optOR_;
    controls::OptionButton& optXOR_;
    controls::CheckBox& chkOptional_;
    std::unique_ptr<MBField> noRead_;
    std::unique_ptr<MBField> multipleRead_;
    controls::Label& lblUnlisted_;
    controls::Label& lblExpression_;
    controls::TextBox& txtExpression_;
};

} // namespace orv::editor
