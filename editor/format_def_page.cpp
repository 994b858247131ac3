#include "editor/format_def_page.h"

#include "editor/export_command.h"
#include "editor/node_key.h"
#include "editor/omissions.h"
#include "editor/output_segments.h"
#include "model/tree_labels.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::OutputStrip;
using model::StandardFormat;
using text::Id;
using text::Load;

constexpr std::int32_t kAdvanced = 330;
constexpr std::int32_t kHeader = 6;
constexpr std::int32_t kTerminator = 7;
constexpr std::int32_t kSeparator = 82;

/// What was never read is left out.
std::wstring OverviewText(const model::AdvancedFormat& format) {
    const bool unread = IsUnread(format, &model::AdvancedFormat::Transports);
    std::wstring text = unread ? std::wstring() : format.GetLabel() + L"   ";
    if (format.ItemsAreRead()) {
        const std::int32_t items = format.OutItems().Count();
        text += std::to_wstring(items) + Load(items == 1 ? Id::AdvFormatOneItem : Id::AdvFormatItems);
    }
    return !unread && format.Transports() == 0 ? text + Load(Id::AdvFormatNotSent) : text;
}

} // namespace

FormatDefPage::FormatDefPage(Context& context)
    : Page(context, L"fraFormatDef", Load(Id::NodeFormats)),
      fraFormatKind_(frame_.Add<controls::Frame>(L"fraFormatKind")),
      optStdFormat_(fraFormatKind_.Add<controls::OptionButton>(L"optStdFormat")),
      optAdvFormat_(fraFormatKind_.Add<controls::OptionButton>(L"optAdvFormat")),
      fraStdFormat_(frame_.Add<controls::Frame>(L"fraStdFormat")),
      header_(AddField(L"mbeHeader", Id::Header, &StandardFormat::Header)),
      separator_(AddField(L"mbeSeparator", Id::Separator, &StandardFormat::CodeSeparator)),
      terminator_(AddField(L"mbeTerminator", Id::Terminator, &StandardFormat::Terminator)),
      output_(fraStdFormat_.Add<OutputStrip>(L"stdOutput")),
      fraAdvFormats_(frame_.Add<controls::Frame>(L"fraAdvFormats")),
      plsFormats_(fraAdvFormats_.Add<controls::PictureList>(L"plsFormats")),
      cmdExport_(fraAdvFormats_.Add<controls::Button>(L"cmdExport")) {
    AddFormatKind();
    fraStdFormat_.SetCaption(Load(Id::StandardFormatFrame));
    fraStdFormat_.SetGroupBox(true);
    output_.SetCaption(Load(Id::Output));
    output_.SetAccessibleName(Load(Id::OutputStripName));
    AddOverview();
    auto kinds = controls::Row(
        controls::Boxed(Cell(optStdFormat_), Cell(optAdvFormat_), controls::Spring(controls::Grow::Across)), 24);
    auto standard = controls::Column(controls::Boxed(StandardFields(), Cell(output_, controls::Grow::Across)));
    auto overview = controls::Column(
        controls::Boxed(Cell(plsFormats_, controls::Grow::Both),
                        controls::Row(controls::Boxed(controls::Spring(controls::Grow::Across), Cell(cmdExport_)))));
    layout_ = controls::Column(controls::Boxed(controls::Group(fraFormatKind_, std::move(kinds), 2),
                                               controls::Group(fraStdFormat_, std::move(standard)),
                                               controls::Group(fraAdvFormats_, std::move(overview))));
    ShowOutput();
}

controls::LayoutPtr FormatDefPage::StandardFields() {
    auto fields = std::make_unique<controls::Grid>(4);
    for (MBField* field : {header_.get(), separator_.get(), terminator_.get()}) {
        field->Box().onShown = [this] { ShowOutput(); };
        fields->Add(Cell(field->Label())).Add(Cell(field->Box(), controls::Grow::Across));
        fields->Add(Cell(field->Names())).Add(Cell(field->Count()));
    }
    return fields;
}

std::unique_ptr<MBField> FormatDefPage::AddField(const wchar_t* name, Id caption, StringProperty property) {
    auto field = std::make_unique<MBField>(
        context_, fraStdFormat_, name, controls::Widget::kNoIndex, true,
        [this, property](const std::wstring& text) { model::Store(context_.root().StandardFormat(), property, text); });
    field->Label().SetCaption(Load(caption));
    return field;
}

void FormatDefPage::AddFormatKind() {
    optStdFormat_.SetCaption(Load(Id::OptStandard));
    optAdvFormat_.SetCaption(Load(Id::OptAdvanced));
    optStdFormat_.onClick = [this] { ChooseKind(L"optStdFormat_Click", false); };
    optAdvFormat_.onClick = [this] { ChooseKind(L"optAdvFormat_Click", true); };
}

void FormatDefPage::AddOverview() {
    fraAdvFormats_.SetCaption(Load(Id::AdvFormatsFrame));
    fraAdvFormats_.SetGroupBox(true);
    plsFormats_.SetAccessibleName(fraAdvFormats_.PlainCaption());
    plsFormats_.SetEmptyText(Load(Id::AdvFormatsNone));
    plsFormats_.onActivate = [this](int position) {
        context_.Handle(L"plsFormats_DblClick", [&] { OpenFormat(position); });
    };
    cmdExport_.SetCaption(Load(Id::ButtonExport));
    cmdExport_.SetHint(Load(Id::HintExport));
    cmdExport_.onClick = [this] {
        context_.Handle(L"cmdExport_Click", [this] {
            if (CommitPending())
                ExportFormats(context_);
        });
    };
}

void FormatDefPage::ChooseKind(const wchar_t* handler, bool advanced) {
    context_.Handle(handler, [this, advanced] {
        model::Store(context_.root(), &model::OutFormatConfig::Advanced, advanced);
        context_.changed();
        context_.rebuildTree();
        ShowOverview();
    });
}

void FormatDefPage::SetUp() {
    device::ParameterAccess access = context_.Access();
    const device::ControlSetup kind = access.SetupFor(kAdvanced);
    kindPresent_ = kind.present;
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
    const model::OutFormatConfig& root = context_.root();
    const bool unread = kindPresent_ && IsUnread(root, &model::OutFormatConfig::Advanced);
    optAdvFormat_.SetChosen(!unread && root.Advanced());
    optStdFormat_.SetChosen(!unread && !root.Advanced());
    ShowField(*header_, root.StandardFormat(), &StandardFormat::Header);
    ShowField(*separator_, root.StandardFormat(), &StandardFormat::CodeSeparator);
    ShowField(*terminator_, root.StandardFormat(), &StandardFormat::Terminator);
    ShowOverview();
}

void FormatDefPage::ShowOverview() {
    const model::OutFormatConfig& root = context_.root();
    const bool inUse = model::ShowsFormats(root);
    std::vector<controls::PictureList::Row> rows;
    for (const model::AdvancedFormat& format : root.AdvancedFormats())
        rows.push_back({FormatKey(format.Index()), {}, OverviewText(format), {}, !inUse});
    plsFormats_.SetRows(std::move(rows));
    plsFormats_.SetHint(Load(inUse ? Id::HintAdvFormats : Id::HintAdvFormatsUnused));
}

void FormatDefPage::OpenFormat(int position) {
    // Only a format that is in use has a node to go to.
    if (model::ShowsFormats(context_.root()))
        context_.jumpTo(FormatKey(position));
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

std::vector<std::wstring> FormatDefPage::Remarks() {
    Omissions omissions(context_.state);
    context_.root().SaveFormatSettings(omissions.Queue());
    return omissions.Strips(context_.root());
}

bool FormatDefPage::CommitPending() {
    return CommitAll(*header_, *separator_, *terminator_);
}

} // namespace orv::editor
