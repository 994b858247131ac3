#include "editor/code_def_page.h"

#include "editor/code_parts.h"
#include "editor/omissions.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using model::OutFormatConfig;
using text::Id;
using text::Load;

constexpr std::int32_t kNoReadText = 9;
constexpr std::int32_t kNoReadMessage = 14;
constexpr std::int32_t kMultipleReadMessage = 15;
constexpr std::int32_t kMultipleReadText = 16;
constexpr std::int32_t kGlobNoRead = 372;
constexpr std::int32_t kCodeID = 399;
constexpr std::int32_t kFirstCustomCodeID = 400;
constexpr std::int32_t kSymbology = 2;
constexpr std::int32_t kUserDefined = 2;
constexpr int kNoSuchIdentifier = 8;
constexpr std::size_t kCustomColumns = 3;

} // namespace

CodeDefPage::CodeDefPage(Context& context)
    : Page(context, L"fraCodeDef", Load(Id::NodeCodes)), combination_(context, frame_, [this] { Fill(); }),
      fraReadMessages_(frame_.Add<controls::Frame>(L"fraReadMessages")),
      noRead_(context, fraReadMessages_, L"cboNoReadMsg",
              [this](std::int32_t value) {
                  model::Store(context_.root().Codes(), &model::Codes::NoReadMessage, value);
                  EnableTexts();
              }),
      noReadText_(context, fraReadMessages_, L"mbeNoReadStr", controls::Widget::kNoIndex, false,
                  [this](const std::wstring& text) {
                      model::Store(context_.root().Codes(), &model::Codes::NoReadString, text);
                  }),
      multipleRead_(context, fraReadMessages_, L"cboMultiReadMsg",
                    [this](std::int32_t value) {
                        model::Store(context_.root().Codes(), &model::Codes::MultiReadMessage, value);
                        EnableTexts();
                    }),
      multipleReadText_(context, fraReadMessages_, L"mbeMultiReadStr", controls::Widget::kNoIndex, false,
                        [this](const std::wstring& text) {
                            model::Store(context_.root().Codes(), &model::Codes::MultiReadString, text);
                        }),
      globalNoRead_(
          context, fraReadMessages_, L"cboGlobNoRead",
          [this](std::int32_t value) { model::Store(context_.root(), &OutFormatConfig::GlobNoReadMsgType, value); }),
      codeID_(context, frame_, L"cboCodeID",
              [this](std::int32_t value) {
                  model::Store(context_.root(), &OutFormatConfig::CodeID, value);
                  EnableCustomFrame(value);
              }),
      fraCustomCodeID_(frame_.Add<controls::Frame>(L"fraCustomCodeID")) {
    AddMessages();
    AddIdentifiers();
    AddCustomBoxes();
    layout_ = MakeLayout();
}

void CodeDefPage::AddMessages() {
    fraReadMessages_.SetCaption(Load(Id::ReadMessages));
    fraReadMessages_.SetGroupBox(true);
    noRead_.Label().SetCaption(Load(Id::NoRead));
    noReadText_.Label().SetCaption(Load(Id::NoReadText));
    multipleRead_.Label().SetCaption(Load(Id::MultipleRead));
    multipleReadText_.Label().SetCaption(Load(Id::MultipleReadText));
    globalNoRead_.Label().SetCaption(Load(Id::GlobalNoRead));
}

void CodeDefPage::AddIdentifiers() {
    codeID_.Label().SetCaption(Load(Id::CodeIdentifier));
    fraCustomCodeID_.SetCaption(Load(Id::CustomIdentifiers));
    fraCustomCodeID_.SetGroupBox(true);
}

controls::LayoutPtr CodeDefPage::MakeLayout() {
    auto identifier = controls::Row(
        controls::Boxed(Cell(codeID_.Label()), Cell(codeID_.Box()), controls::Spring(controls::Grow::Across)));
    return controls::Column(controls::Boxed(combination_.Layout(), controls::Group(fraReadMessages_, MessageGrid()),
                                            std::move(identifier), controls::Group(fraCustomCodeID_, CustomGrid()),
                                            controls::Spring(controls::Grow::Down)));
}

controls::LayoutPtr CodeDefPage::MessageGrid() {
    auto grid = std::make_unique<controls::Grid>(5);
    const auto add = [&grid](ChoiceField& choice, MBField& text) {
        grid->Add(Cell(choice.Label())).Add(Cell(choice.Box())).Add(Cell(text.Label()));
        grid->Add(Cell(text.Box(), controls::Grow::Across)).Add(Cell(text.Names()));
    };
    add(noRead_, noReadText_);
    add(multipleRead_, multipleReadText_);
    grid->Add(Cell(globalNoRead_.Label())).Add(Cell(globalNoRead_.Box()));
    return grid;
}

void CodeDefPage::AddCustomBoxes() {
    for (int id = 0; id < model::kCustomCodeIDCount; ++id) {
        if (id == kNoSuchIdentifier)
            continue;
        auto field =
            std::make_unique<MBField>(context_, fraCustomCodeID_, L"mbeCustomCodeID", id, false,
                                      [this, id](const std::wstring& text) { context_.root().CustomCodeID(id, text); });
        field->Box().SetWidthInCharacters(8);
        field->Label().SetCaption(Load(Id::IdentifierPrefix) + std::to_wstring(id));
        boxes_.push_back({id, std::move(field), {}, {}});
    }
}

controls::LayoutPtr CodeDefPage::CustomGrid() {
    // Down each column, as the boxes are numbered; the tab order is the same.
    auto grid = std::make_unique<controls::Grid>(3 * kCustomColumns);
    const std::size_t rows = (boxes_.size() + kCustomColumns - 1) / kCustomColumns;
    for (std::size_t i = 0; i < rows * kCustomColumns; ++i) {
        const std::size_t at = i % kCustomColumns * rows + i / kCustomColumns;
        if (at >= boxes_.size()) {
            grid->Skip().Skip().Skip();
            continue;
        }
        MBField& field = *boxes_[at].field;
        grid->Add(Cell(field.Label())).Add(Cell(field.Box(), controls::Grow::Across)).Add(Cell(field.Names()));
    }
    return grid;
}

void CodeDefPage::SetUp() {
    combination_.SetUp();
    SetUpMessages();
    for (CustomBox& box : boxes_)
        SetUpCustomBox(box);
    layout_ = MakeLayout(); // another device may have other combinations
}

void CodeDefPage::SetUpMessages() {
    device::ParameterAccess access = context_.Access();
    noRead_.SetUp(Load(Id::HintNoReadMessage), kNoReadMessage, access.SetupFor(kNoReadMessage));
    noReadText_.SetUp(Load(Id::HintNoReadText), kNoReadText, access.SetupFor(kNoReadText));
    multipleRead_.SetUp(Load(Id::HintMultipleReadMessage), kMultipleReadMessage, access.SetupFor(kMultipleReadMessage));
    multipleReadText_.SetUp(Load(Id::HintMultipleReadText), kMultipleReadText, access.SetupFor(kMultipleReadText));
    globalNoRead_.SetUp(globalNoRead_.Label().PlainCaption(), kGlobNoRead, access.SetupFor(kGlobNoRead));
    codeID_.SetUp(codeID_.Label().PlainCaption(), kCodeID, access.SetupFor(kCodeID));
}

void CodeDefPage::SetUpCustomBox(CustomBox& box) {
    device::ParameterAccess access = context_.Access();
    std::wstring label = access.ValueLabel(kSymbology, box.identifier);
    if (label.empty())
        label = Load(Id::IdentifierPrefix) + std::to_wstring(box.identifier);
    box.meaning = Load(Id::CustomIdentifier) + L" " + label;
    box.setup = access.SetupFor(kFirstCustomCodeID + box.identifier);
    box.field->Label().SetCaption(CaptionOf(label));
    box.field->SetUp(box.meaning, kFirstCustomCodeID + box.identifier, box.setup);
}

void CodeDefPage::Fill() {
    using model::Codes;
    const OutFormatConfig& root = context_.root();
    combination_.Fill();
    ShowField(noRead_, root.Codes(), &Codes::NoReadMessage);
    ShowField(noReadText_, root.Codes(), &Codes::NoReadString);
    ShowField(multipleRead_, root.Codes(), &Codes::MultiReadMessage);
    ShowField(multipleReadText_, root.Codes(), &Codes::MultiReadString);
    ShowField(globalNoRead_, root, &OutFormatConfig::GlobNoReadMsgType);
    ShowField(codeID_, root, &OutFormatConfig::CodeID);
    EnableTexts();
    for (CustomBox& box : boxes_)
        FillCustomBox(box);
    EnableCustomFrame(root.CodeID());
}

void CodeDefPage::FillCustomBox(CustomBox& box) {
    MBField& field = *box.field;
    const OutFormatConfig& root = context_.root();
    const bool unread = root.Marks().Has(OutFormatConfig::CustomCodeCell(box.identifier));
    field.Show(unread ? std::wstring() : root.CustomCodeID(box.identifier));
    field.SetUsable(root.CustomCodeIDDefined(box.identifier),
                    box.meaning + L": " + Load(unread ? Id::IdentifierNotRead : Id::NeverDefined));
}

std::vector<std::wstring> CodeDefPage::Remarks() {
    const OutFormatConfig& root = context_.root();
    Omissions omissions(context_.state);
    root.SaveCodeSettings(omissions.Queue());
    return omissions.Strips(root);
}

void CodeDefPage::EnableTexts() {
    const model::Codes& codes = context_.root().Codes();
    noReadText_.SetUsable(UsesNoReadText(codes), Load(Id::HintNoReadText) + L": " + Load(Id::ReasonNoReadText));
    multipleReadText_.SetUsable(UsesMultipleReadText(codes),
                                Load(Id::HintMultipleReadText) + L": " + Load(Id::ReasonMultipleReadText));
}

void CodeDefPage::EnableCustomFrame(std::int32_t codeID) {
    fraCustomCodeID_.SetEnabled(codeID == kUserDefined);
}

bool CodeDefPage::CommitPending() {
    bool stored = CommitAll(noReadText_, multipleReadText_);
    for (CustomBox& box : boxes_)
        stored = box.field->CommitPending() && stored;
    return stored;
}

} // namespace orv::editor
