#include "editor/shell.h"

#include <algorithm>

#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::Rect;
using controls::Size;
using controls::TextMeasure;
using text::Id;
using text::Load;

constexpr int kMargin = 8;
constexpr int kTreeWidth = 200;
constexpr int kRowGap = 6;
constexpr int kAddOnIcon = 101; ///< the component's own, which its host is given as well

} // namespace

Shell::Shell(controls::Form& owner)
    : form(owner), tvw(owner.Root().Add<controls::Tree>(L"tvw")),
      lblPage(owner.Root().Add<controls::Label>(L"lblPage")),
      lblDevice(owner.Root().Add<controls::Label>(L"lblDevice")),
      lblTarget(owner.Root().Add<controls::Label>(controls::Kind::WarningStrip, L"lblTarget")) {
    tvw.SetAccessibleName(Load(Id::TreeName));
    for (controls::Label* label : {&lblPage, &lblDevice, &lblTarget})
        label->SetElides(true);
    lblPage.SetHeading(true);
    cmdReadAgain = &owner.Root().Add<controls::Button>(L"cmdReadAgain");
    cmdReadAgain->SetCaption(Load(Id::ReadAgain));
    cmdReadAgain->SetToolTip(Load(Id::TipReadAgain));
    cmdReadAgain->SetHint(Load(Id::TipReadAgain));
    cmdReadAgain->SetNarrow(true);
    cmdReadAgain->SetReleases(true);
    cmdReadAgain->SetVisible(false);
}

void Shell::AddBottom() {
    fraDesign = &form.Root().Add<controls::Frame>(L"fraDesign");
    fraDesign->SetVisible(false);
    form.Root().Add<controls::Picture>(L"imgPicture", kAddOnIcon).SetVisible(false);
    picBottom = &form.Root().Add<controls::Frame>(L"picBottom");
    lblHint = &picBottom->Add<controls::Label>(controls::Kind::HintLine, L"lblHint");
    lblHint->SetElides(true);
    AddButtons();
    AddLayouts();
}

controls::Button* Shell::AddButton(const wchar_t* name, Id caption, Id tip) {
    auto& button = picBottom->Add<controls::Button>(name);
    button.SetCaption(Load(caption));
    button.SetToolTip(Load(tip));
    button.SetHint(Load(tip));
    return &button;
}

void Shell::AddButtons() {
    // First, though it stands behind them: what a page's last field holds is looked at when Tab leaves it, and the
    // buttons that release the focus would let it go unseen.
    chkNoInteractive = &picBottom->Add<controls::CheckBox>(L"chkNoInteractive");
    chkNoInteractive->SetCaption(Load(Id::NoInteractive));
    chkNoInteractive->SetAccessibleName(Load(Id::NoInteractive));
    chkNoInteractive->SetToolTip(Load(Id::TipNoInteractive));
    chkNoInteractive->SetHint(Load(Id::TipNoInteractive));
    cmdAbout = AddButton(L"cmdAbout", Id::ButtonAbout, Id::TipAbout);
    cmdGuide = AddButton(L"cmdGuide", Id::ButtonGuide, Id::TipGuide);
    cmdOK = AddButton(L"cmdOK", Id::ButtonOK, Id::TipOK);
    cmdCancel = AddButton(L"cmdCancel", Id::ButtonCancel, Id::TipCancel);
    cmdApply = AddButton(L"cmdApply", Id::ButtonApply, Id::TipApply);
    for (controls::Button* button : {cmdAbout, cmdGuide, cmdCancel})
        button->SetReleases(true);
}

void Shell::AddLayouts() {
    const auto spring = [] { return controls::Spring(controls::Grow::Across); };
    const auto hint = [this] { return Cell(*lblHint, controls::Grow::Across); };
    const auto check = [this] { return Cell(*chkNoInteractive); };
    const auto help = [this] { return controls::Row(controls::Boxed(Cell(*cmdAbout), Cell(*cmdGuide))); };
    const auto verdict = [this] {
        return controls::Row(controls::Boxed(Cell(*cmdOK), Cell(*cmdCancel), Cell(*cmdApply)));
    };
    wideBottom_ = controls::Column(
        controls::Boxed(hint(), controls::Row(controls::Boxed(help(), check(), spring(), verdict()))), kRowGap);
    narrowBottom_ = controls::Column(controls::Boxed(hint(), controls::Row(controls::Boxed(help(), check(), spring())),
                                                     controls::Row(controls::Boxed(spring(), verdict()))),
                                     kRowGap);
    narrowestBottom_ = controls::Column(
        controls::Boxed(hint(), check(), help(), controls::Row(controls::Boxed(spring(), verdict()))), kRowGap);
}

controls::LayoutBox& Shell::ChooseBottom(int width, const TextMeasure& measure) {
    // The full caption where there is room for it; the tool tip and the screen reader have it in any case. A second row
    // only where the short one is too wide, too, for the page needs the height.
    for (const Id caption : {Id::NoInteractive, Id::NoInteractiveShort}) {
        chkNoInteractive->SetCaption(Load(caption));
        if (wideBottom_->Minimum(measure).width <= width)
            return *wideBottom_;
    }
    return narrowBottom_->Minimum(measure).width <= width ? *narrowBottom_ : *narrowestBottom_;
}

int Shell::LayoutBottom(Size client, const TextMeasure& measure) {
    const int margin = measure.Scale(kMargin);
    const int width = std::max(0, client.width - 2 * margin);
    controls::LayoutBox& bottom = ChooseBottom(width, measure);
    const int height = bottom.Minimum(measure).height + 2 * margin;
    picBottom->SetBounds({0, client.height - height, client.width, height});
    bottom.Place({margin, margin, width, height - 2 * margin}, measure);
    return height;
}

Rect Shell::LayoutHead(const Rect& right, const TextMeasure& measure) {
    const int gap = measure.Scale(kMargin);
    const int line = measure.LineHeight();
    const int wanted = measure.Width(lblDevice.PlainCaption());
    const int device = std::min(wanted, (right.width - gap) / 2);
    lblPage.SetBounds({right.x, right.y, std::max(0, right.width - gap - device), line});
    lblDevice.SetBounds({right.Right() - device, right.y, device, line});
    // The strip keeps its line when it has nothing to say: a warning that moves the fields would be one more trap.
    const Rect strip{right.x, right.y + line + gap / 2, right.width, line + gap / 2};
    const int button = cmdReadAgain->Visible() ? cmdReadAgain->MinimumSize(measure).width + gap : 0;
    lblTarget.SetBounds({strip.x, strip.y, std::max(0, strip.width - button), strip.height});
    // As high as the strip and a little of the gaps round it: the page keeps its place.
    cmdReadAgain->SetBounds(
        {strip.Right() - button + gap, strip.y - gap / 4, std::max(0, button - gap), strip.height + gap / 2});
    const int top = strip.Bottom() + gap / 2;
    return {right.x, top, right.width, std::max(0, right.Bottom() - top)};
}

Rect Shell::Layout(Size client, const TextMeasure& measure) {
    form.Root().SetBounds({0, 0, client.width, client.height});
    const int margin = measure.Scale(kMargin);
    const int inner = std::max(0, client.height - LayoutBottom(client, measure));
    const int treeWidth = std::min(measure.Scale(kTreeWidth), client.width / 3);
    const int height = std::max(0, inner - 2 * margin);
    tvw.SetBounds({margin, margin, treeWidth, height});
    const int left = tvw.Bounds().Right() + margin;
    return LayoutHead({left, margin, std::max(0, client.width - left - margin), height}, measure);
}

} // namespace orv::editor
