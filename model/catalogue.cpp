#include "model/catalogue.h"

#include "model/tool_items.h"

namespace orv::model {
namespace {

using namespace item_category;
using text::Id;

constexpr bool Yes = true;
constexpr bool No = false;

// Code-related type 29 is not here, on purpose, although there is a picture for it. The global types stand in the order
// in which they are shown.
// clang-format off
constexpr CatalogueEntry kCatalogue[] = {
    // category,    type, key,                caption,                     formats: lengths for Dec, Bin, Hex, Asc        device, scale
    {kCodeRelated,    0, L"Code",                Id::ItemCode,                No,  {L"", L"", L"", L""},                    No, No},
    {kCodeRelated,    1, L"Length",              Id::ItemLength,              Yes, {L"3", L"", L"", L""},                   No, No},
    {kCodeRelated,    2, L"ReadingsMask",        Id::ItemReadingsMask,        Yes, {L"", L"0..4", L"", L"0..32"},           No, No},
    {kCodeRelated,    3, L"CodeTotalReadings",   Id::ItemCodeTotalReadings,   Yes, {L"3,4", L"1,2", L"2,4", L""},           No, No},
    {kCodeRelated,    4, L"CodePartialReadings", Id::ItemCodePartialReadings, Yes, {L"3,4", L"1,2", L"2,4", L""},           Yes, No},
    {kCodeRelated,    5, L"XPos",                Id::ItemXPos,                Yes, {L"5", L"2", L"", L""},                  No, Yes},
    {kCodeRelated,    6, L"YPos",                Id::ItemYPos,                Yes, {L"5", L"2", L"", L""},                  No, Yes},
    {kCodeRelated,    7, L"ZPos",                Id::ItemZPos,                Yes, {L"5", L"2", L"", L""},                  No, Yes},
    {kCodeRelated,    8, L"CodeID",              Id::ItemCodeID,              Yes, {L"5", L"2", L"", L""},                  No, No},
    {kCodeRelated,    9, L"CodeDir",             Id::ItemCodeDir,             Yes, {L"5", L"2", L"", L""},                  No, No},
    {kCodeRelated,   10, L"CodeDist",            Id::ItemCodeDist,            Yes, {L"4", L"", L"", L""},                   No, Yes},
    {kCodeRelated,   11, L"DecodeMode",          Id::ItemDecodeMode,          Yes, {L"4", L"", L"", L""},                   No, No},
    {kCodeRelated,   12, L"DecodeTime",          Id::ItemDecodeTime,          Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kCodeRelated,   13, L"DecodeScans",         Id::ItemDecodeScans,         Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kCodeRelated,   14, L"AvgCodePos",          Id::ItemAvgCodePos,          Yes, {L"*", L"*", L"*", L""},                 No, Yes},
    {kCodeRelated,   15, L"MinCodePos",          Id::ItemMinCodePos,          Yes, {L"*", L"*", L"*", L""},                 No, Yes},
    {kCodeRelated,   16, L"MaxCodePos",          Id::ItemMaxCodePos,          Yes, {L"*", L"*", L"*", L""},                 No, Yes},
    {kCodeRelated,   17, L"InkSpread",           Id::ItemInkSpread,           Yes, {L"3", L"", L"", L""},                   No, No},
    {kCodeRelated,   18, L"Decodability",        Id::ItemDecodability,        Yes, {L"3", L"", L"", L""},                   No, No},
    {kCodeRelated,   19, L"EncoderValue",        Id::ItemEncoderValue,        Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kCodeRelated,   20, L"ReadingArm",          Id::ItemReadingArm,          Yes, {L"2", L"", L"1", L""},                  No, No},
    {kCodeRelated,   21, L"StartSync",           Id::ItemStartSync,           Yes, {L"3", L"", L"", L""},                   No, No},
    {kCodeRelated,   22, L"StopSync",            Id::ItemStopSync,            Yes, {L"3", L"", L"", L""},                   No, No},
    {kCodeRelated,   23, L"LaserNumber",         Id::ItemLaserNumber,         Yes, {L"2", L"", L"1", L""},                  No, No},
    {kCodeRelated,   24, L"ReadingPersistence",  Id::ItemReadingPersistence,  Yes, {L"2", L"", L"1", L""},                  No, No},
    {kCodeRelated,   25, L"FocusPosition",       Id::ItemFocusPosition,       Yes, {L"2", L"", L"1", L""},                  No, No},
    {kCodeRelated,   26, L"OscillatingAngle",    Id::ItemOscillatingAngle,    Yes, {L"2", L"", L"1", L""},                  No, No},
    {kCodeRelated,   27, L"CodeRejectReason",    Id::ItemCodeRejectReason,    Yes, {L"3", L"", L"2", L""},                  No, No},
    {kCodeRelated,   28, L"QuietZoneDim",        Id::ItemQuietZoneDim,        Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kCodeRelated,   30, L"QualityIndex",        Id::ItemQualityIndex,        Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,         0, L"TotalReadingsMask",   Id::ItemTotalReadingsMask,   Yes, {L"", L"0..4", L"", L"0..32"},           No, No},
    {kGlobal,         1, L"FailureMask",         Id::ItemFailureMask,         Yes, {L"", L"0..4", L"", L"0..32"},           No, No},
    {kGlobal,         2, L"ScannerStatus",       Id::ItemScannerStatus,       Yes, {L"", L"1", L"2", L""},                  Yes, No},
    {kGlobal,         3, L"GlobTotalReadings",   Id::ItemGlobTotalReadings,   Yes, {L"3,4", L"1,2", L"2,4", L""},           No, No},
    {kGlobal,         4, L"GlobPartialReadings", Id::ItemGlobPartialReadings, Yes, {L"3,4", L"1,2", L"2,4", L""},           Yes, No},
    {kGlobal,         5, L"PackIdentifier",      Id::ItemPackIdentifier,      Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        17, L"RejectedCodesCount",  Id::ItemRejectedCodesCount,  Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,         6, L"Hours",               Id::ItemHours,               Yes, {L"2", L"", L"", L""},                   No, No},
    {kGlobal,         7, L"Minutes",             Id::ItemMinutes,             Yes, {L"2", L"", L"", L""},                   No, No},
    {kGlobal,         8, L"Seconds",             Id::ItemSeconds,             Yes, {L"2", L"", L"", L""},                   No, No},
    {kGlobal,         9, L"Day",                 Id::ItemDay,                 Yes, {L"2", L"", L"", L""},                   No, No},
    {kGlobal,        10, L"Month",               Id::ItemMonth,               Yes, {L"2", L"", L"", L""},                   No, No},
    {kGlobal,        11, L"Year",                Id::ItemYear,                Yes, {L"4", L"", L"", L""},                   No, No},
    {kGlobal,        12, L"Checksum",            Id::ItemChecksum,            Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        13, L"OtherInfo",           Id::ItemOtherInfo,           Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        14, L"MinCodeDist",         Id::ItemMinCodeDist,         Yes, {L"4", L"", L"", L""},                   No, Yes},
    {kGlobal,        15, L"MaxCodeDist",         Id::ItemMaxCodeDist,         Yes, {L"4", L"", L"", L""},                   No, Yes},
    {kGlobal,        16, L"ReadingMode",         Id::ItemReadingMode,         Yes, {L"4", L"", L"", L""},                   No, No},
    {kGlobal,        18, L"PackDimension",       Id::ItemPackDimension,       Yes, {L"4", L"", L"", L""},                   No, Yes},
    {kGlobal,        19, L"StartCounter",        Id::ItemStartCounter,        Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        20, L"StopCounter",         Id::ItemStopCounter,         Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        21, L"ExitCounter",         Id::ItemExitCounter,         Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        28, L"Diagnostics",         Id::ItemDiagnostics,         Yes, {L"", L"", L"", L"0..4"},                Yes, No},
    {kGlobal,        29, L"DiagnosticStats",     Id::ItemDiagnosticStats,     Yes, {L"*", L"*", L"*", L""},                 Yes, No},
    {kGlobal,        22, L"TotalReadingPhases",  Id::ItemTotalReadingPhases,  Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        23, L"TotalWorkingHours",   Id::ItemTotalWorkingHours,   Yes, {L"*", L"*", L"*", L""},                 Yes, No},
    {kGlobal,        24, L"TotalGoodReads",      Id::ItemTotalGoodReads,      Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        25, L"TotalNoReads",        Id::ItemTotalNoReads,        Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        26, L"TotalMultiReads",     Id::ItemTotalMultiReads,     Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kGlobal,        27, L"TotalPartialReads",   Id::ItemTotalPartialReads,   Yes, {L"*", L"*", L"*", L""},                 No, No},
    {kMiscellaneous, 0, L"MiscString",          Id::ItemMiscString,          No,  {L"", L"", L"", L""},                    No, No},
};
// clang-format on

} // namespace

std::span<const CatalogueEntry> Catalogue() {
    return kCatalogue;
}

std::wstring CatalogueKey(std::int32_t category, std::int32_t type) {
    for (const CatalogueEntry& entry : kCatalogue)
        if (entry.category == category && entry.type == type)
            return entry.key;
    return {};
}

void FillCatalogue(ToolItems& items) {
    items.Clear();
    for (const CatalogueEntry& entry : kCatalogue) {
        const AllowedFormats formats{entry.lengths[0], entry.lengths[1], entry.lengths[2], entry.lengths[3]};
        items.Add(entry.key, entry.category, entry.type, text::Load(entry.caption), entry.deviceDependent,
                  entry.useScaleType, entry.hasFormats ? &formats : nullptr);
    }
}

} // namespace orv::model
