#include "model/save_concerns.h"

#include <algorithm>

#include "text/texts.h"

namespace orv::model {
namespace {

constexpr std::int32_t kCodeIDDisabled = 0;
constexpr std::int32_t kCodeIdentifierItem = 8;
constexpr std::int32_t kMaxiCode = 18;

bool SendsCodeIdentifier(const OutItem& item) {
    return item.ItemCategory() == item_category::kCodeRelated && item.CodeRelType() == kCodeIdentifierItem;
}

/// Whether the slot is in use does not matter here, on purpose.
bool LacksReadingMode(const CodeDef& code) {
    if (code.CodeType() != kMaxiCode)
        return false;
    for (int mode = 0; mode < SevenFlags::kCount; ++mode)
        if (code.MaxicodeEnable(mode) || code.Marks().Has(CellOf(&CodeDef::MaxicodeEnable) + mode))
            return false; // one that was not read may be on
    return true;
}

} // namespace

std::vector<SaveConcern> SaveConcerns(const OutFormatConfig& root) {
    std::vector<SaveConcern> concerns;
    const bool isRead = !root.Marks().Has(CellOf(&OutFormatConfig::CodeID));
    if (root.Advanced() && root.CodeID() == kCodeIDDisabled && isRead)
        for (const AdvancedFormat& format : root.AdvancedFormats())
            for (const OutItem& item : format.OutItems())
                if (SendsCodeIdentifier(item))
                    concerns.push_back({SaveConcern::Rule::CodeIdentifier, format.Index(), item.Index(), 0});
    for (const CodeDef& code : root.Codes())
        if (LacksReadingMode(code))
            concerns.push_back({SaveConcern::Rule::ReadingMode, 0, 0, code.Index()});
    return concerns;
}

std::wstring SaveQuestion(const std::vector<SaveConcern>& concerns) {
    using text::Id;
    if (concerns.empty())
        return {};
    // One question a save: the rule of the reading modes takes the other's place, and names the first code only.
    const auto mode = std::find_if(concerns.begin(), concerns.end(), [](const SaveConcern& concern) {
        return concern.rule == SaveConcern::Rule::ReadingMode;
    });
    if (mode != concerns.end())
        return text::Load(Id::ConcernReadingMode) + std::to_wstring(mode->code) + L". " + text::Load(Id::SaveAnyway);
    return text::Load(Id::ConcernCodeIdentifier) + text::Load(Id::SaveAnyway);
}

} // namespace orv::model
