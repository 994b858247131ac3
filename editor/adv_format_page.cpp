#include "editor/adv_format_page.h"

#include "editor/node_key.h"
#include "editor/omissions.h"
#include "editor/output_segments.h"
#include "editor/transports_dialog.h"
#include "model/tree_labels.h"
#include "text/filled.h"

namespace orv::editor {
namespace {

using controls::Grow;
using controls::OutputStrip;
using model::AdvancedFormat;
using model::Store;
using text::Id;
using text::Load;

constexpr int kChoiceWidth = 120;
constexpr int kFrameWidth = 8;
constexpr int kFillerWidth = 7;
constexpr auto kNoIndex = controls::Widget::kNoIndex;
constexpr std::int32_t kHighestLevel = 3;

enum Parameter : std::int32_t {
    kTransports = 341,
    kAlignment = 342,
    kAlignLength = 343,
    kAlignFiller = 344,
    kHeader = 345,
    kTerminator = 346,
    kScale = 348,
};

} // namespace

AdvFormatPage::AdvFormatPage(Context& context)
    : Page(context, L"fraAdvFormat", Load(Id::PageAdvFormat)),
      lblTransports_(frame_.Add<controls::Label>(L"lblTransports")),
      txtTransports_(frame_.Add<controls::TextBox>(L"txtTransports")),
      cmdTransports_(frame_.Add<controls::Button>(L"cmdTransports")),
      globalScale_(context, frame_, L"cboGlobalScaleType",
                   [this](std::int32_t value) { Store(Format(), &AdvancedFormat::GlobalScaleType, value); }),
      header_(context, frame_, L"mbeAdvFmtHeader", kNoIndex, true,
              [this](const std::wstring& text) { Store(Format(), &AdvancedFormat::Header, text); }),
      terminator_(context, frame_, L"mbeAdvFmtTerminator", kNoIndex, true,
                  [this](const std::wstring& text) { Store(Format(), &AdvancedFormat::Terminator, text); }),
      align_(context, frame_, L"cboAlign",
             [this](std::int32_t value) { Store(Format(), &AdvancedFormat::Alignment, value); }),
      alignLength_(context, frame_, L"txtAlignLength",
                   [this](NumberField::Number value) {
                       Store(Format(), &AdvancedFormat::AlignLength, static_cast<std::int16_t>(value));
                       return true;
                   }),
      alignFiller_(context, frame_, L"mbeAlignFiller", kNoIndex, false,
                   [this](const std::wstring& text) { Store(Format(), &AdvancedFormat::AlignFiller, text); }),
      palette_(context, frame_), items_(context, frame_, [this]() -> model::AdvancedFormat& { return Format(); }),
      panel_(context, frame_, [this] { return SelectedItem(); }), output_(frame_.Add<OutputStrip>(L"advOutput")) {
    SetCaptions();
    AddHandlers();
    // The items take what there is.
    auto columns = controls::Row(controls::Boxed(palette_.Layout(), items_.Layout(), panel_.Layout()));
    layout_ = controls::Column(controls::Boxed(FormatLayout(), std::move(columns), Cell(output_, Grow::Across)), 6);
}

void AdvFormatPage::SetCaptions() {
    const std::pair<controls::Widget&, Id> captions[] = {
        {lblTransports_, Id::Transports},
        {globalScale_.Label(), Id::GlobalScale},
        {header_.Label(), Id::Header},
        {terminator_.Label(), Id::FormatTerminator},
        {align_.Label(), Id::FormatAlign},
        {alignLength_.Label(), Id::FormatWidth},
        {alignFiller_.Label(), Id::FormatFiller},
        {output_, Id::Output},
    };
    for (const auto& [widget, caption] : captions)
        widget.SetCaption(Load(caption));
    cmdTransports_.SetCaption(L"...");
    cmdTransports_.SetNarrow(true);
    cmdTransports_.SetAccessibleName(Load(Id::ChooseTransportsTip));
    txtTransports_.SetAccessibleName(Load(Id::HintTransports));
    output_.SetAccessibleName(Load(Id::FormatOutputName));
    alignFiller_.Box().SetWidthInCharacters(kFillerWidth);
    for (MBField* field : {&header_, &terminator_})
        field->Box().SetWidthInCharacters(kFrameWidth);
    for (ChoiceField* field : {&globalScale_, &align_})
        field->Box().SetWidth(kChoiceWidth);
}

void AdvFormatPage::AddHandlers() {
    cmdTransports_.onClick = [this] { ChooseFormatTransports(); };
    for (MBField* field : {&header_, &terminator_})
        field->Box().onShown = [this] { ShowOutput(); };
    palette_.onTake = [this](const std::wstring& key) { items_.Take(key); };
    items_.codes = &panel_.CodeSelection();
    items_.userText = [this](const model::OutItem& item) { return UserText(item); };
    items_.onLeave = [this] { return panel_.CommitPending(); };
    items_.onSelected = [this] {
        panel_.Fill();
        ShowOutput();
    };
    panel_.onShown = [this] {
        items_.Refresh();
        ShowOutput();
    };
}

controls::LayoutPtr AdvFormatPage::FormatLayout() {
    for (controls::Label* label : {&header_.Label(), &align_.Label()})
        label->SetWidest(lblTransports_.PlainCaption());
    auto transports =
        controls::Row(controls::Boxed(Cell(lblTransports_), Cell(txtTransports_, Grow::Across), Cell(cmdTransports_),
                                      Cell(globalScale_.Label()), Cell(globalScale_.Box())));
    std::vector<controls::LayoutPtr> frame;
    for (MBField* field : {&header_, &terminator_}) {
        frame.push_back(Cell(field->Label()));
        frame.push_back(Cell(field->Box(), Grow::Across));
        frame.push_back(Cell(field->Names()));
        frame.push_back(Cell(field->Count()));
    }
    auto alignment =
        controls::Row(controls::Boxed(Cell(align_.Label()), Cell(align_.Box()), Cell(alignLength_.Label()),
                                      Cell(alignLength_.Box()), Cell(alignFiller_.Label()), Cell(alignFiller_.Box()),
                                      Cell(alignFiller_.Names()), controls::Spring(Grow::Across)));
    return controls::Column(
        controls::Boxed(std::move(transports), controls::Row(std::move(frame)), std::move(alignment)), 6);
}

model::AdvancedFormat& AdvFormatPage::Format() const {
    return context_.root().AdvancedFormats().Item(Index());
}

model::OutItem* AdvFormatPage::SelectedItem() {
    const int selected = items_.Selected();
    if (selected == 0)
        return nullptr;
    model::OutItems& items = Format().OutItems();
    return selected <= items.Count() ? &items.Item(selected) : nullptr;
}

std::wstring AdvFormatPage::UserText(const model::OutItem& item) {
    if (panel_.IsTyping(item))
        return panel_.UserText();
    device::ParameterAccess access = context_.Access();
    return Displayed(access, item.StringText());
}

std::wstring AdvFormatPage::Caption(const std::wstring& /*nodeText*/) {
    return Load(Id::CaptionAdvFormat) + std::to_wstring(Index());
}

void AdvFormatPage::SetUp() {
    device::ParameterAccess access = context_.Access();
    const device::ControlSetup transports = access.SetupFor(kTransports);
    transportsPresent_ = transports.present;
    const std::wstring hint = FieldHint(Load(Id::HintTransports), kTransports, transports);
    for (controls::Widget* widget : std::initializer_list<controls::Widget*>{&txtTransports_, &cmdTransports_})
        SetFieldUsable(*widget, hint, transports.present, true, {});
    if (transports.present)
        cmdTransports_.SetToolTip(Load(Id::ChooseTransportsTip));
    globalScale_.SetUp(Load(Id::HintGlobalScale), kScale, access.SetupFor(kScale));
    header_.SetUp(Load(Id::HintFormatHeader), kHeader, access.SetupFor(kHeader));
    terminator_.SetUp(Load(Id::HintFormatTerminator), kTerminator, access.SetupFor(kTerminator));
    align_.SetUp(Load(Id::HintFormatAlign), kAlignment, access.SetupFor(kAlignment));
    alignLength_.SetUp(Load(Id::HintFormatWidth), kAlignLength, access.SetupFor(kAlignLength), 0, 32767);
    alignFiller_.SetUp(Load(Id::HintFormatFiller), kAlignFiller, access.SetupFor(kAlignFiller));
    palette_.SetUp();
    items_.SetUp();
    panel_.SetUp();
    FindHidden(access);
}

void AdvFormatPage::FindHidden(device::ParameterAccess& access) {
    hidden_.clear();
    for (const auto& row : model::OutItem::Fields())
        if (!access.SetupFor(row.parameter).present && access.ElementCount(row.parameter, kHighestLevel) > 0)
            hidden_ += (hidden_.empty() ? L"" : L", ") + std::to_wstring(row.parameter);
}

std::vector<std::wstring> AdvFormatPage::Remarks() {
    const AdvancedFormat& format = Format();
    Omissions omissions(context_.state);
    format.Save(omissions.Queue());
    std::vector<std::wstring> strips = omissions.Strips(context_.root(), &format);
    if (format.ItemCountIsRead() && format.MaxItemsCount() == 0)
        strips.insert(strips.begin(), Load(Id::NoItemsAdmitted));
    if (!hidden_.empty())
        strips.push_back(
            text::Filled(Id::HiddenItemValues,
                         {{L"list", hidden_}, {L"level", std::to_wstring(context_.state.current.accessLevel)}}));
    return strips;
}

void AdvFormatPage::Fill() {
    const Restoring filled([this] { filling_ = false; });
    filling_ = true;
    const AdvancedFormat& format = Format();
    ShowTransports();
    ShowField(globalScale_, format, &AdvancedFormat::GlobalScaleType);
    ShowField(header_, format, &AdvancedFormat::Header);
    ShowField(terminator_, format, &AdvancedFormat::Terminator);
    ShowField(align_, format, &AdvancedFormat::Alignment);
    ShowField(alignLength_, format, &AdvancedFormat::AlignLength);
    ShowField(alignFiller_, format, &AdvancedFormat::AlignFiller);
    palette_.SetUsable(format.ItemCountIsRead(), Load(Id::ReasonItemCount));
    items_.Fill(Index());
    filling_ = false;
    ShowOutput();
}

void AdvFormatPage::ShowTransports() {
    const bool unread = transportsPresent_ && IsUnread(Format(), &AdvancedFormat::Transports);
    txtTransports_.SetText(unread ? std::wstring() : Format().GetLabel());
}

void AdvFormatPage::ChooseFormatTransports() {
    context_.Handle(L"cmdTransports_Click", [this] {
        const int index = Index();
        if (!ChooseTransports(context_, index))
            return;
        ShowTransports();
        context_.setNodeText(FormatKey(index), model::NodeText(Format(), index));
        context_.changed();
    });
}

void AdvFormatPage::ShowOutput() {
    if (filling_)
        return;
    const model::OutFormatConfig& root = context_.root();
    std::vector<OutputStrip::Segment> segments;
    AppendContent(segments, header_.Box().Core());
    for (const model::OutItem& item : Format().OutItems())
        segments.push_back({OutputStrip::SegmentKind::Chip,
                            ItemChip(root, EntryOf(context_.catalogue(), item), item, UserText(item))});
    AppendContent(segments, terminator_.Box().Core());
    output_.SetSegments(std::move(segments));
}

bool AdvFormatPage::CommitPending() {
    const bool stored = CommitAll(header_, terminator_, alignLength_, alignFiller_);
    return panel_.CommitPending() && stored;
}

} // namespace orv::editor
