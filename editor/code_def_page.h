#pragma once
// Page of the codes root: settings of all codes.
#include <memory>
#include <vector>

#include "editor/code_combination.h"
#include "editor/fields.h"
#include "editor/page.h"

namespace orv::editor {

class CodeDefPage : public Page {
  public:
    explicit CodeDefPage(Context& context);
    bool CommitPending() override;
    std::vector<std::wstring> Remarks() override;

  protected:
    void SetUp() override;
    void Fill() override;

  private:
    struct CustomBox {
        int identifier;
        std::unique_ptr<MBField> field;
        std::wstring meaning;
        device::ControlSetup setup;
    };

    void AddMessages();
    void AddIdentifiers();
    void AddCustomBoxes();
    controls::LayoutPtr MakeLayout();
    controls::LayoutPtr MessageGrid();
    controls::LayoutPtr CustomGrid();
    void SetUpMessages();
    void SetUpCustomBox(CustomBox& box);
    void FillCustomBox(CustomBox& box);
    void EnableTexts();
    void EnableCustomFrame(std::int32_t codeID);

    CodeCombination combination_;
    controls::Frame& fraReadMessages_;
    ChoiceField noRead_;
    MBField noReadText_;
    ChoiceField multipleRead_;
    MBField multipleReadText_;
    ChoiceField globalNoRead_;
    ChoiceField codeID_;
    controls::Frame& fraCustomCodeID_;
    std::vector<CustomBox> boxes_;
};

} // namespace orv::editor
