// The catalogue of item types, against the same table written out once more.
#include "model/catalogue.h"

#include <gtest/gtest.h>

#include "model/length_rule.h"
#include "model/tool_items.h"
#include "tests/model/fixture.h"

namespace orv::model {
namespace {

/// Lengths "dec/bin/hex/asc"; null: not number-formatted. Flags: "D" takes a device number, "S" is scaled.
struct Row {
    std::int32_t category;
    std::uint8_t type;
    const wchar_t* key;
    const wchar_t* caption;
    const wchar_t* lengths;
    const wchar_t* flags;
};

const Row kRows[] = {
    {0, 0, L"Code", L"Code", nullptr, L""},
    {0, 1, L"Length", L"Code length", L"3///", L""},
    {0, 2, L"ReadingsMask", L"Readings mask", L"/0..4//0..32", L""},
    {0, 3, L"CodeTotalReadings", L"Total readings count", L"3,4/1,2/2,4/", L""},
    {0, 4, L"CodePartialReadings", L"Partial readings count", L"3,4/1,2/2,4/", L"D"},
    {0, 5, L"XPos", L"X position", L"5/2//", L"S"},
    {0, 6, L"YPos", L"Y position", L"5/2//", L"S"},
    {0, 7, L"ZPos", L"Z position", L"5/2//", L"S"},
    {0, 8, L"CodeID", L"Code identifier", L"5/2//", L""},
    {0, 9, L"CodeDir", L"Code direction", L"5/2//", L""},
    {0, 10, L"CodeDist", L"Code distance", L"4///", L"S"},
    {0, 11, L"DecodeMode", L"Decode mode", L"4///", L""},
    {0, 12, L"DecodeTime", L"Decode time", L"*/*/*/", L""},
    {0, 13, L"DecodeScans", L"Decode scans number", L"*/*/*/", L""},
    {0, 14, L"AvgCodePos", L"Average code position", L"*/*/*/", L"S"},
    {0, 15, L"MinCodePos", L"Minimum code position", L"*/*/*/", L"S"},
    {0, 16, L"MaxCodePos", L"Maximum code position", L"*/*/*/", L"S"},
    {0, 17, L"InkSpread", L"Ink spread", L"3///", L""},
    {0, 18, L"Decodability", L"Decodability", L"3///", L""},
    {0, 19, L"EncoderValue", L"Encoder value", L"*/*/*/", L""},
    {0, 20, L"ReadingArm", L"Reading arm", L"2//1/", L""},
    {0, 21, L"StartSync", L"Start synch", L"3///", L""},
    {0, 22, L"StopSync", L"Stop synch", L"3///", L""},
    {0, 23, L"LaserNumber", L"Laser number", L"2//1/", L""},
    {0, 24, L"ReadingPersistence", L"Reading persistence", L"2//1/", L""},
    {0, 25, L"FocusPosition", L"Focus position", L"2//1/", L""},
    {0, 26, L"OscillatingAngle", L"Oscillating angle", L"2//1/", L""},
    {0, 27, L"CodeRejectReason", L"Code reject reason", L"3//2/", L""},
    {0, 28, L"QuietZoneDim", L"Quiet zone dimension", L"*/*/*/", L""},
    {0, 30, L"QualityIndex", L"Quality index", L"*/*/*/", L""},
    {1, 0, L"TotalReadingsMask", L"Total readings mask", L"/0..4//0..32", L""},
    {1, 1, L"FailureMask", L"Failure mask", L"/0..4//0..32", L""},
    {1, 2, L"ScannerStatus", L"Scanner status", L"/1/2/", L"D"},
    {1, 3, L"GlobTotalReadings", L"Total readings count", L"3,4/1,2/2,4/", L""},
    {1, 4, L"GlobPartialReadings", L"Partial readings count", L"3,4/1,2/2,4/", L"D"},
    {1, 5, L"PackIdentifier", L"Pack identifier", L"*/*/*/", L""},
    {1, 17, L"RejectedCodesCount", L"Rejected codes count", L"*/*/*/", L""},
    {1, 6, L"Hours", L"Hours", L"2///", L""},
    {1, 7, L"Minutes", L"Minutes", L"2///", L""},
    {1, 8, L"Seconds", L"Seconds", L"2///", L""},
    {1, 9, L"Day", L"Day", L"2///", L""},
    {1, 10, L"Month", L"Month", L"2///", L""},
    {1, 11, L"Year", L"Year", L"4///", L""},
    {1, 12, L"Checksum", L"Checksum", L"*/*/*/", L""},
    {1, 13, L"OtherInfo", L"Other info", L"*/*/*/", L""},
    {1, 14, L"MinCodeDist", L"Minimum code distance", L"4///", L"S"},
    {1, 15, L"MaxCodeDist", L"Maximum code distance", L"4///", L"S"},
    {1, 16, L"ReadingMode", L"Reading mode", L"4///", L""},
    {1, 18, L"PackDimension", L"Pack length", L"4///", L"S"},
    {1, 19, L"StartCounter", L"Start counter", L"*/*/*/", L""},
    {1, 20, L"StopCounter", L"Stop counter", L"*/*/*/", L""},
    {1, 21, L"ExitCounter", L"Exit counter", L"*/*/*/", L""},
    {1, 28, L"Diagnostics", L"Diagnostic bitmap", L"///0..4", L"D"},
    {1, 29, L"DiagnosticStats", L"Number of diagnostic events since last reset", L"*/*/*/", L"D"},
    {1, 22, L"TotalReadingPhases", L"Number of total reading phases", L"*/*/*/", L""},
    {1, 23, L"TotalWorkingHours", L"Number of working hours per scanner", L"*/*/*/", L"D"},
    {1, 24, L"TotalGoodReads", L"Number of total good readings", L"*/*/*/", L""},
    {1, 25, L"TotalNoReads", L"Number of total no readings", L"*/*/*/", L""},
    {1, 26, L"TotalMultiReads", L"Number of total multiple readings", L"*/*/*/", L""},
    {1, 27, L"TotalPartialReads", L"Number of total partial readings", L"*/*/*/", L""},
    {2, 0, L"MiscString", L"User defined string", nullptr, L""},
};

class CatalogueTest : public test::ModelTest {
  protected:
    void Fill() {
        root.Reload();
        FillCatalogue(items);
    }
    std::wstring Texts(const std::wstring& key) { return items.Item(key).ItemText(); }

    ToolItems items{bench.state, root};
};

std::wstring Lengths(const ToolItem& item) {
    std::wstring all = item.AllowedFormatLen(0);
    for (int format = 1; format < 4; ++format)
        all += L'/' + item.AllowedFormatLen(format);
    return all;
}

TEST_F(CatalogueTest, HoldsEveryTypeInItsPlace) {
    Fill();
    FillCatalogue(items); // once more: it begins anew
    ASSERT_EQ(items.Count(), static_cast<std::int32_t>(std::size(kRows)));
    std::int32_t position = 0;
    for (const Row& row : kRows) {
        const ToolItem& item = items.Item(++position);
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.key)));
        EXPECT_EQ(item.Key(), row.key);
        EXPECT_EQ(&items.Item(row.key), &item);
        EXPECT_EQ(item.ItemCategory(), row.category);
        EXPECT_EQ(item.ItemType(), row.type);
        EXPECT_EQ(item.TooltipText(), row.caption);
        EXPECT_EQ(item.ImageKey(), row.key);
        EXPECT_EQ(item.DeviceDependent(), std::wstring(row.flags) == L"D");
        EXPECT_EQ(item.UseScaleType(), std::wstring(row.flags) == L"S");
        EXPECT_EQ(item.HasAllowedFormats(), row.lengths != nullptr);
        EXPECT_EQ(item.IsCode(), position == 1);
        if (row.lengths)
            EXPECT_EQ(Lengths(item), row.lengths);
        else
            EXPECT_EQ(test::ErrorOf([&] { item.AllowedFormatLen(0); }), 9);
    }
    EXPECT_EQ(items.Find(L"Type29"), nullptr);
    EXPECT_EQ(test::ErrorOf([&] { items.Item(1).AllowedFormatLen(-1); }), 9);
    EXPECT_EQ(test::ErrorOf([&] { items.Item(2).AllowedFormatLen(4); }), 9);
}

TEST_F(CatalogueTest, TheDeviceSaysWhatItSupportsAndWhatItCallsIt) {
    Set(370, std::wstring(L" 1  30 "));
    Set(371, std::wstring(L"0 17 29"));
    Fill();
    std::vector<std::wstring> unsupported;
    for (const ToolItem& item : items)
        if (!item.Supported())
            unsupported.push_back(item.Key());
    EXPECT_EQ(unsupported, (std::vector<std::wstring>{L"Length", L"QualityIndex", L"TotalReadingsMask",
                                                      L"RejectedCodesCount", L"DiagnosticStats"}));
    EXPECT_EQ(Texts(L"CodeTotalReadings"), L"Total readings");
    EXPECT_EQ(Texts(L"QuietZoneDim"), L"Quiet zone");
    EXPECT_EQ(Texts(L"PackIdentifier"), L"Parcel number");
    EXPECT_EQ(Texts(L"GlobPartialReadings"), L"Partial readings");
    EXPECT_EQ(Texts(L"MiscString"), L"User defined string");
    EXPECT_EQ(items.Item(L"PackIdentifier").TooltipText(), L"Pack identifier");
}

TEST(CatalogueWithoutNames, TheCaptionStandsInWhereTheDeviceHasNoName) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    auto& device = system.devices.front();
    test::Parameter(device, 355).details.choices.clear();
    std::erase_if(device.parameters, [](const auto& parameter) { return parameter.number == 356; });
    for (auto& count : test::Parameter(device, 349).values)
        count = std::int16_t{0};
    test::Bench bench(system, {}, 0);
    bench.Open(3);
    OutFormatConfig root(bench.state);
    root.Reload();
    ToolItems items(bench.state, root);
    FillCatalogue(items);
    ASSERT_EQ(items.Count(), static_cast<std::int32_t>(std::size(kRows)));
    std::size_t row = 0;
    for (const ToolItem& item : items)
        EXPECT_EQ(item.ItemText(), kRows[row++].caption);
}

TEST_F(CatalogueTest, AnItemBeginsWithItsFirstAllowedFormat) {
    Fill();
    constexpr std::int32_t kAsIs = 77;
    const struct {
        const wchar_t* key;
        std::int32_t format;
        std::uint8_t length;
    } cases[] = {
        {L"Length", 0, 3},      {L"ReadingsMask", 1, 0},    {L"ScannerStatus", 1, 1},
        {L"Diagnostics", 3, 0}, {L"DecodeTime", 0, 0},      {L"CodeTotalReadings", 0, 3},
        {L"Code", kAsIs, 88},   {L"MiscString", kAsIs, 88}, {L"XPos", 0, 5},
    };
    for (const auto& c : cases) {
        std::int32_t format = kAsIs;
        std::uint8_t length = 88;
        items.Item(c.key).GetDefaultFormatAndLen(format, length);
        EXPECT_EQ(format, c.format) << testing::PrintToString(std::wstring(c.key));
        EXPECT_EQ(length, c.length) << testing::PrintToString(std::wstring(c.key));
    }
    const AllowedFormats formats[] = {{}, {L"", L"", L"12..16", L"3"}};
    ToolItem& none = items.Add(L"none", 2, 9, L"caption", true, true, &formats[0]);
    ToolItem& hex = items.Add(L"hex", 2, 9, L"caption", true, true, &formats[1], L"picture");
    std::int32_t format = kAsIs;
    std::uint8_t length = 88;
    none.GetDefaultFormatAndLen(format, length);
    EXPECT_EQ(format, kAsIs);
    EXPECT_EQ(length, 88);
    EXPECT_EQ(none.AllowedFormatLen(0), L"");
    hex.GetDefaultFormatAndLen(format, length);
    EXPECT_EQ(format, 2);
    EXPECT_EQ(length, 12);
    EXPECT_EQ(hex.ImageKey(), L"picture");
    EXPECT_TRUE(hex.Supported());
    EXPECT_EQ(test::ErrorOf([&] { items.Add(L"hex", 2, 9, L"", false, false); }), 5);
}

TEST(LengthRule, AllowsWhatItsTextSays) {
    const struct {
        const wchar_t* text;
        std::vector<std::uint8_t> allowed;
        std::vector<std::uint8_t> refused;
    } cases[] = {
        {L"", {}, {0, 1, 255}},
        {L"3", {3}, {0, 2, 4, 33}},
        {L"0..4", {0, 1, 4}, {5, 255}},
        {L"0..32", {0, 32}, {33}},
        {L"12..16", {12, 14, 16}, {11, 17, 1}},
        {L"3,4", {3, 4}, {0, 2, 5, 34}},
        {L"1,20,3", {1, 3, 20}, {0, 2, 19}},
        {L"*", {0, 1, 255}, {}},
        {L"200..999", {200, 255}, {199}},
    };
    for (const auto& c : cases) {
        const LengthRule rule = ParseLengthRule(c.text);
        for (const std::uint8_t length : c.allowed)
            EXPECT_TRUE(rule.Allows(length)) << testing::PrintToString(std::wstring(c.text)) << int{length};
        for (const std::uint8_t length : c.refused)
            EXPECT_FALSE(rule.Allows(length)) << testing::PrintToString(std::wstring(c.text)) << int{length};
    }
}

} // namespace
} // namespace orv::model
