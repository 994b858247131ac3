#include "editor/code_def_page.h"

#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

constexpr std::int32_t kCodeID = 399;
constexpr std::int32_t kFirstCustomCodeID = 400;
constexpr std::int32_t kGlobNoRead = 372;
constexpr std::int32_t kSymbology = 2;
constexpr std::int32_t kUserDefined = 2;
constexpr int kNoSuchIdentifier = 8;
constexpr std::size_t kCustomColumns = 3;

} // namespace

CodeDefPage::CodeDefPage(Context& context)
    : Page(context, L"fraCodeDef", Load(Id::NodeCodes)), lblCodeID_(frame_.Add<controls::Label>(L"lblCodeID")),
      cboCodeID_(frame_.Add<controls::ComboBox>(L"cboCodeID")),
      lblGlobNoRead_(frame_.Add<controls::Label>(L"lblGlobNoRead")),
      cboGlobNoRead_(frame_.Add<controls::ComboBox>(L"cboGlobNoRead")),
      fraCustomCodeID_(frame_.Add<controls::Frame>(L"fraCustomCodeID")) {
    lblCodeID_.SetCaption(Load(Id::CodeIdentifier));
    lblGlobNoRead_.SetCaption(Load(Id::GlobalNoRead));
    fraCustomCodeID_.SetCaption(Load(Id::CustomIdentifiers));
    fraCustomCodeID_.SetGroupBox(true);
    AddCustomBoxes();
    AddHandlers();
    auto choices = std::make_unique<controls::Grid>(3);
    choices->Add(Cell(lblCodeID_)).Add(Cell(cboCodeID_)).Add(controls::Spring(controls::Grow::Across));
    choices->Add(Cell(lblGlobNoRead_)).Add(Cell(cboGlobNoRead_));
    layout_ = controls::Column(controls::Boxed(std::move(choices), controls::Group(fraCustomCodeID_, CustomGrid()),
                                               controls::Spring(controls::Grow::Down)));
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

void CodeDefPage::AddHandlers() {
    cboCodeID_.onClick = [this] {
        context_.Handle(L"cboCodeID_Click", [this] {
            const std::int32_t value = cboCodeID_.SelectedData();
            context_.root().CodeID(value);
            EnableCustomFrame(value);
            context_.changed();
        });
    };
    cboGlobNoRead_.onClick = [this] {
        context_.Handle(L"cboGlobNoRead_Click", [this] {
            context_.root().GlobNoReadMsgType(cboGlobNoRead_.SelectedData());
            context_.changed();
        });
    };
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
    device::ParameterAccess access = context_.Access();
    SetUpCombo(cboCodeID_, lblCodeID_.PlainCaption(), kCodeID, access.SetupFor(kCodeID));
    SetUpCombo(cboGlobNoRead_, lblGlobNoRead_.PlainCaption(), kGlobNoRead, access.SetupFor(kGlobNoRead));
    for (CustomBox& box : boxes_)
        SetUpCustomBox(box);
}

void CodeDefPage::SetUpCustomBox(CustomBox& box) {
    device::ParameterAccess access = context_.Access();
    std::wstring label = access.ValueLabel(kSymbology, box.identifier);
    if (label.empty())
        label = Load(Id::IdentifierPrefix) + std::to_wstring(box.identifier);
    box.meaning = Load(Id::CustomIdentifier) + L" " + label;
    box.setup = access.SetupFor(kFirstCustomCodeID + box.identifier);
    // A device's label is no caption of ours: its "&" marks no access key.
    std::wstring caption;
    for (wchar_t c : label)
        caption.append(c == L'&' ? 2 : 1, c);
    box.field->Label().SetCaption(caption);
    box.field->SetUp(box.meaning, kFirstCustomCodeID + box.identifier, box.setup);
}

void CodeDefPage::Fill() {
    model::OutFormatConfig& root = context_.root();
    cboCodeID_.SelectData(root.CodeID());
    cboGlobNoRead_.SelectData(root.GlobNoReadMsgType());
    for (CustomBox& box : boxes_)
        FillCustomBox(box);
    EnableCustomFrame(root.CodeID());
}

void CodeDefPage::FillCustomBox(CustomBox& box) {
    MBField& field = *box.field;
    const bool defined = context_.root().CustomCodeIDDefined(box.identifier);
    field.Show(context_.root().CustomCodeID(box.identifier));
    field.SetUsable(defined, box.meaning + L": " + Load(Id::NeverDefined));
}

void CodeDefPage::EnableCustomFrame(std::int32_t codeID) {
    fraCustomCodeID_.SetEnabled(codeID == kUserDefined);
}

bool CodeDefPage::CommitPending() {
    bool stored = true;
    for (CustomBox& box : boxes_)
        stored = box.field->CommitPending() && stored;
    return stored;
}

} // namespace orv::editor
