#pragma once
// Page of the formats root: which kind of format is in use, the standard format, and what the advanced ones hold.
#include <memory>

#include "controls/output_strip.h"
#include "controls/picture_list.h"
#include "editor/fields.h"
#include "editor/page.h"
#include "text/texts.h"

namespace orv::editor {

class FormatDefPage : public Page {
  public:
    explicit FormatDefPage(Context& context);
    bool CommitPending() override;
    std::vector<std::wstring> Remarks() override;

  protected:
    void SetUp() override;
    void Fill() override;

  private:
    using StringProperty = model::Property<std::wstring> model::StandardFormat::*;

    std::unique_ptr<MBField> AddField(const wchar_t* name, text::Id caption, StringProperty property);
    void AddFormatKind();
    void AddOverview();
    controls::LayoutPtr StandardFields();
    void ChooseKind(const wchar_t* handler, bool advanced);
    void ShowOutput();
    void ShowOverview();
    void OpenFormat(int position);

    bool kindPresent_ = false;
    controls::Frame& fraFormatKind_;
    controls::OptionButton& optStdFormat_;
    controls::OptionButton& optAdvFormat_;
    controls::Frame& fraStdFormat_;
    std::unique_ptr<MBField> header_;
    std::unique_ptr<MBField> separator_;
    std::unique_ptr<MBField> terminator_;
    controls::OutputStrip& output_;
    controls::Frame& fraAdvFormats_;
    controls::PictureList& plsFormats_;
    controls::Button& cmdExport_;
};

} // namespace orv::editor
