#include "editor/code_options.h"

#include <algorithm>

namespace orv::editor {
namespace {

using model::CodeDef;
using text::Id;
using text::Load;

constexpr std::int32_t kFirstReadingMode = 3013;
constexpr int kNoPadding = 0;
constexpr std::size_t kReadingModeColumns = 2;

} // namespace

CodeOptions::CodeOptions(CodeFields& fields, controls::Widget& page)
    : fields_(fields), fraOptions_(page.Add<controls::Frame>(L"fraCodeOptions")) {
    fraOptions_.SetCaption(Load(Id::CodeOptions));
    fraOptions_.SetGroupBox(true);
    AddCheckDigit();
    controls::Frame& addon = AddPart(L"fraAddon", &CodeParts::addon);
    AddSingle(fields_.AddChoice(addon, L"cboAddon", Id::AddonCode, 32, &CodeDef::EANAddon));
    AddMatrix();
    AddPostal();
    controls::Frame& module = AddPart(L"fraModuleSize", &CodeParts::moduleSize);
    AddSingle(fields_.AddNumber(module, L"txtModuleSize", Id::ModuleSize, 3004, &CodeDef::ModuleSize));
    controls::Frame& rss = AddPart(L"fraRss", &CodeParts::rss);
    AddSingle(fields_.AddChoice(rss, L"cboRSSType", Id::RssType, 3012, &CodeDef::RssType));
    AddReadingModes();
}

controls::Frame& CodeOptions::AddPart(const wchar_t* name, bool CodeParts::*shown) {
    auto& frame = fraOptions_.Add<controls::Frame>(name);
    frame.SetVisible(false);
    parts_.push_back({&frame, shown, nullptr});
    return frame;
}

template <typename Field>
void CodeOptions::AddSingle(Field& field) {
    Part& part = parts_.back();
    part.layout = Group(*part.frame, Row(controls::Boxed(Cell(field.Label()), Cell(field.Box()))), kNoPadding);
}

void CodeOptions::AddCheckDigit() {
    checkDigit_ = &fields_.AddCheck(fraOptions_, L"chkCheckDigit", Id::CheckDigit, 5, &CodeDef::CheckDigit,
                                    [this] { EnableTypes(); });
    checkDigit_->Box().SetVisible(false);
    controls::Frame& type39 = AddPart(L"fraChkDgtType39", &CodeParts::code39Type);
    code39Type_ = &fields_.AddChoice(type39, L"cboChkDgtType39", Id::CheckDigitType, 527, &CodeDef::CheckDigitType39);
    AddSingle(*code39Type_);
    controls::Frame& typeIL = AddPart(L"fraChkDgtTypeIL", &CodeParts::interleavedType);
    interleavedType_ =
        &fields_.AddChoice(typeIL, L"cboChkDgtTypeIL", Id::CheckDigitType, 526, &CodeDef::CheckDigitType25IL);
    AddSingle(*interleavedType_);
    controls::Frame& codabar = AddPart(L"fraCodabar", &CodeParts::startStop);
    ChoiceField& start = fields_.AddChoice(codabar, L"cboStartCharTx", Id::StartCharacter, 382, &CodeDef::StartCharTX);
    ChoiceField& stop = fields_.AddChoice(codabar, L"cboStopCharTx", Id::StopCharacter, 383, &CodeDef::StopCharTX);
    auto grid = std::make_unique<controls::Grid>(2);
    grid->Add(Cell(start.Label())).Add(Cell(start.Box())).Add(Cell(stop.Label())).Add(Cell(stop.Box()));
    parts_.back().layout = Group(codabar, std::move(grid), kNoPadding);
}

void CodeOptions::AddMatrix() {
    controls::Frame& frame = AddPart(L"fraDatamatrix", &CodeParts::matrix);
    NumberField& columns = fields_.AddNumber(frame, L"txtDMCols", Id::MatrixColumns, 3002, &CodeDef::DMColumns);
    NumberField& rows = fields_.AddNumber(frame, L"txtDMRows", Id::MatrixRows, 3003, &CodeDef::DMRows);
    CheckField& rectangular =
        fields_.AddCheck(frame, L"chkDMRectangular", Id::MatrixRectangular, 3005, &CodeDef::DMRectangular);
    CheckField& fast =
        fields_.AddCheck(frame, L"chkDMFastImprove", Id::MatrixFastImprove, 3006, &CodeDef::DMFastImprove);
    auto grid = std::make_unique<controls::Grid>(4, 12);
    grid->Add(Cell(columns.Label())).Add(Cell(columns.Box())).Add(Cell(rows.Label())).Add(Cell(rows.Box()));
    auto checks = Row(controls::Boxed(Cell(rectangular.Box()), Cell(fast.Box())), 16);
    parts_.back().layout = Group(frame, Column(controls::Boxed(std::move(grid), std::move(checks))), kNoPadding);
}

void CodeOptions::AddPostal() {
    controls::Frame& frame = AddPart(L"fraPostal", &CodeParts::postal);
    ChoiceField& symbology =
        fields_.AddChoice(frame, L"cboPostalSymbology", Id::PostalSymbology, 3007, &CodeDef::PostalSymbology);
    ChoiceField& direction =
        fields_.AddChoice(frame, L"cboPostalDirection", Id::PostalDirection, 3008, &CodeDef::PostalDirection);
    NumberField& least =
        fields_.AddNumber(frame, L"txtPostalMinBarcount", Id::PostalMinBars, 3009, &CodeDef::PostalMinBarcount);
    NumberField& greatest =
        fields_.AddNumber(frame, L"txtPostalMaxBarcount", Id::PostalMaxBars, 3010, &CodeDef::PostalMaxBarcount);
    NumberField& distance =
        fields_.AddNumber(frame, L"txtPostalBarDistance", Id::PostalBarDistance, 3011, &CodeDef::PostalBarDistance);
    auto choices = std::make_unique<controls::Grid>(2);
    choices->Add(Cell(symbology.Label())).Add(Cell(symbology.Box()));
    choices->Add(Cell(direction.Label())).Add(Cell(direction.Box()));
    auto numbers = std::make_unique<controls::Grid>(4);
    numbers->Add(Cell(least.Label())).Add(Cell(least.Box()));
    numbers->Add(Cell(greatest.Label())).Add(Cell(greatest.Box()));
    numbers->Add(Cell(distance.Label())).Add(Cell(distance.Box()));
    parts_.back().layout = Group(frame, Column(controls::Boxed(std::move(choices), std::move(numbers))), kNoPadding);
}

void CodeOptions::AddReadingModes() {
    controls::Frame& frame = AddPart(L"fraMaxicode", &CodeParts::maxicode);
    auto grid = std::make_unique<controls::Grid>(kReadingModeColumns, 16);
    for (int mode = 0; mode < model::SevenFlags::kCount; ++mode)
        grid->Add(Cell(fields_.AddReadingMode(frame, L"chkMaxicodeEnable", kFirstReadingMode + mode, mode).Box()));
    parts_.back().layout = Group(frame, std::move(grid), kNoPadding);
}

controls::LayoutPtr CodeOptions::Take(bool CodeParts::*shown) {
    const auto part = std::find_if(parts_.begin(), parts_.end(), [shown](const Part& p) { return p.shown == shown; });
    return std::move(part->layout);
}

controls::LayoutPtr CodeOptions::Layout() {
    auto besideCheckDigit = Overlay(
        controls::Boxed(Take(&CodeParts::code39Type), Take(&CodeParts::interleavedType), Take(&CodeParts::startStop)));
    std::vector<controls::LayoutPtr> all;
    // In line with the first of what stands beside it, of which there may be two.
    auto check = controls::Column(controls::Boxed(controls::Spring(controls::Grow::None), Cell(checkDigit_->Box())), 3);
    all.push_back(Row(controls::Boxed(std::move(check), std::move(besideCheckDigit)), 16));
    for (Part& part : parts_)
        if (part.layout)
            all.push_back(std::move(part.layout));
    auto slot = Overlay(std::move(all));
    return Group(fraOptions_, Row(controls::Boxed(std::move(slot), controls::Spring(controls::Grow::Across))));
}

void CodeOptions::ShowParts(const CodeParts& parts) {
    bool any = parts.checkDigit;
    checkDigit_->Box().SetVisible(parts.checkDigit);
    for (const Part& part : parts_) {
        part.frame->SetVisible(parts.*part.shown);
        any = any || parts.*part.shown;
    }
    fraOptions_.SetVisible(any);
}

void CodeOptions::EnableTypes() {
    const bool checked = checkDigit_->Box().Checked();
    for (ChoiceField* type : {interleavedType_, code39Type_})
        type->SetUsable(checked, Load(Id::ReasonCheckDigit));
}

} // namespace orv::editor
