#pragma once
// The widgets round the pages, and where they stand.
#include "controls/form.h"
#include "controls/layout.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "text/texts.h"

namespace orv::editor {

class Shell {
  public:
    /// Adds what comes before the pages in reading order. The form outlives the shell.
    explicit Shell(controls::Form& form);
    /// Adds what comes behind the pages, and what is never shown: hosts find the add-on's picture there.
    void AddBottom();

    /// Everything but the pages. Answers the area that the pages share.
    controls::Rect Layout(controls::Size client, const controls::TextMeasure& measure);

    controls::Form& form;
    controls::Tree& tvw;
    controls::Label& lblPage;
    controls::Label& lblDevice;
    controls::Label& lblTarget;               ///< the strip above the page: what is wrong, or not saved
    controls::Button* cmdReadAgain = nullptr; ///< beside the strip, while it offers that
    controls::Frame* fraDesign = nullptr;
    controls::Frame* picBottom = nullptr;
    controls::Label* lblHint = nullptr;
    controls::Button* cmdAbout = nullptr;
    controls::Button* cmdGuide = nullptr;
    controls::CheckBox* chkNoInteractive = nullptr;
    controls::Button* cmdOK = nullptr;
    controls::Button* cmdCancel = nullptr;
    controls::Button* cmdApply = nullptr;

  private:
    controls::Button* AddButton(const wchar_t* name, text::Id caption, text::Id tip);
    void AddButtons();
    void AddLayouts();
    controls::LayoutBox& ChooseBottom(int width, const controls::TextMeasure& measure);
    int LayoutBottom(controls::Size client, const controls::TextMeasure& measure);
    controls::Rect LayoutHead(const controls::Rect& right, const controls::TextMeasure& measure);

    controls::LayoutPtr wideBottom_;
    controls::LayoutPtr narrowBottom_;    ///< what decides in a row of its own
    controls::LayoutPtr narrowestBottom_; ///< and the check box in another
};

} // namespace orv::editor
