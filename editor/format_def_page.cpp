#include "editor/format_def_page.h"

#include "editor/output_segments.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::OutputStrip;
using text::Id;
using text::Load;

constexpr std::int32_t kAdvanced = 330;
constexpr std::int32_t kHeader = 6;
constexpr std::int32_t kTerminator = 7;
constexpr std::int32_t kSeparator = 82;

} // namespace

FormatDefPage::FormatDefPage(Context& context)
    : Page(context, L"fraFormatDef", Load(Id::NodeFormats)),
      fraFormatKind_(frame_.Add<controls::Frame>(L"fraFormatKind")),
      optStdFormat_(fraFormatKind_.Add<controls::OptionButton>(L"optStdFormat")),
      optAdvFormat_(fraFormatKind_.Add<controls::OptionButton>(L"optAdvFormat")),
      fraStdFormat_(frame_.Add<controls::Frame>(L"fraStdFormat")),
      header_(AddField(L"mbeHeader", Id::Header,
                       [this](const std::wstring& text) { context_.root().StandardFormat().Header(text); })),
      separator_(AddField(L"mbeSeparator", Id::Separator,
                          [this](const std::wstring& text) { context_.root().StandardFormat().CodeSeparator(text); })),
      terminator_(AddField(L"mbeTerminator", Id::Terminator,
                           [this](const std::wstring& text) { context_.root().StandardFormat().Terminator(text); })),
      output_(fraStdFormat_.Add<OutputStrip>(L"stdOutput")) {
    AddFormatKind();
    fraStdFormat_.SetCaption(Load(Id::StandardFormatFrame));
    fraStdFormat_.SetGroupBox(true);
    output_.SetCaption(Load(Id::Output));
    output_.SetAccessibleName(Load(Id::OutputStripName));
    auto fields = std::make_unique<controls::Grid>(4);
    for (MBField* field : {header_.get(), separator_.get(), terminator_.get()}) {
        field->Box().onShown = [this] { ShowOutput(); };
        fields->Add(Cell(field->Label())).Add(Cell(field->Box(), controls::Grow::Across));
        fields->Add(Cell(field->Names())).Add(Cell(field->Count()));
    }
    auto kinds = controls::Row(
        controls::Boxed(Cell(optStdFormat_), Cell(optAdvFormat_), controls::Spring(controls::Grow::Across)), 24);
    auto standard = controls::Column(controls::Boxed(std::move(fields), Cell(output_, controls::Grow::Across)));
    layout_ = controls::Column(controls::Boxed(controls::Group(fraFormatKind_, std::move(kinds), 2),
                                               controls::Group(fraStdFormat_, std::move(standard)),
                                               controls::Spring(controls::Grow::Down)));
    ShowOutput();
}

std::unique_ptr<MBField> FormatDefPage::AddField(const wchar_t* name, Id caption, MBField::Store store) {
    auto field =
        std::make_unique<MBField>(context_, fraStdFormat_, name, controls::Widget::kNoIndex, true, std::move(store));
    field->Label().SetCaption(Load(caption));
    return field;
}

void FormatDefPage::AddFormatKind() {
    optStdFormat_.SetCaption(Load(Id::OptStandard));
    optAdvFormat_.SetCaption(Load(Id::OptAdvanced));
    optStdFormat_.onClick = [this] { ChooseKind(L"optStdFormat_Click", false); };
    optAdvFormat_.onClick = [this] { ChooseKind(L"optAdvFormat_Click", true); };
}

void FormatDefPage::ChooseKind(const wchar_t* handler, bool advanced) {
    context_.Handle(handler, [this, advanced] {
        context_.root().Advanced(advanced);
        context_.changed();
        context_.rebuildTree();
    });
}

void FormatDefPage::SetUp() {
    device::ParameterAccess access = context_.Access();
    const device::ControlSetup kind = access.SetupFor(kAdvanced);
    for (controls::OptionButton* option : {&optStdFormat_, &optAdvFormat_}) {
        option->SetHint(FieldHint(Load(Id::HintFormatKind), kAdvanced, kind));
        option->SetToolTip(kind.present ? std::wstring() : option->Hint());
        option->SetEnabled(kind.present);
    }
    header_->SetUp(Load(Id::HintHeader), kHeader, access.SetupFor(kHeader));
    separator_->SetUp(Load(Id::HintSeparator), kSeparator, access.SetupFor(kSeparator));
    terminator_->SetUp(Load(Id::HintTerminator), kTerminator, access.SetupFor(kTerminator));
}

void FormatDefPage::Fill() {
    model::OutFormatConfig& root = context_.root();
    (root.Advanced() ? optAdvFormat_ : optStdFormat_).SetChosen(true);
    header_->Show(root.StandardFormat().Header());
    separator_->Show(root.StandardFormat().CodeSeparator());
    terminator_->Show(root.StandardFormat().Terminator());
}

void FormatDefPage::ShowOutput() {
    const OutputStrip::Segment code{OutputStrip::SegmentKind::Chip, Load(Id::OutputCode)};
    std::vector<OutputStrip::Segment> segments;
    AppendContent(segments, header_->Box().Core());
    segments.push_back(code);
    AppendContent(segments, separator_->Box().Core());
    segments.push_back(code);
    AppendContent(segments, terminator_->Box().Core());
    output_.SetSegments(std::move(segments));
}

bool FormatDefPage::CommitPending() {
    bool stored = true;
    for (MBField* field : {header_.get(), separator_.get(), terminator_.get()})
        stored = field->CommitPending() && stored;
    return stored;
}

} // namespace orv::editor
