#pragma once
// Page of the codes root: settings of all codes.
#include <memory>
#include <vector>

#include "controls/combo_box.h"
#include "editor/fields.h"
#include "editor/page.h"

namespace orv::editor {

class CodeDefPage : public Page {
  public:
    explicit CodeDefPage(Context& context);
    bool CommitPending() override;

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

    void AddCustomBoxes();
    void AddHandlers();
    controls::LayoutPtr CustomGrid();
    void SetUpCustomBox(CustomBox& box);
    void FillCustomBox(CustomBox& box);
    void EnableCustomFrame(std::int32_t codeID);

    controls::Label& lblCodeID_;
    controls::ComboBox& cboCodeID_;
    controls::Label& lblGlobNoRead_;
    controls::ComboBox& cboGlobNoRead_;
    controls::Frame& fraCustomCodeID_;
    std::vector<CustomBox> boxes_;
};

} // namespace orv::editor
