#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "cli/fields.h"
#include "cli/values.h"
#include "fixture.h"
#include "host/sim/utf8.h"

namespace orv::cli::testing {
namespace {

using ::testing::HasSubstr;

DeviceChoice Choice(const std::string& file) {
    return {file, {}, 0, {}};
}

/// By full name.
std::map<std::wstring, std::wstring> AllValues(const std::string& path) {
    DeviceFile file(Choice(path));
    device::ParameterAccess access(file.State());
    std::map<std::wstring, std::wstring> values;
    for (const Section& section : AllSections(file.Model()))
        for (const FieldRef& field : section.fields)
            values[(section.name.empty() ? L"" : section.name + L".") + field.name] = FieldText(field, access);
    return values;
}

/// A value that no other field has, as far as its kind allows.
std::wstring Other(const std::wstring& name, const std::wstring& value, int count) {
    if (value == L"1" || value == L"0")
        return value == L"1" ? L"0" : L"1";
    if (!value.empty() && value.find_first_not_of(L"0123456789") == std::wstring::npos)
        return std::to_wstring((std::stol(value) + count % 7 + 1) % 100);
    return name.ends_with(L"AlignFiller") ? L"<$C8>" : L"v" + std::to_wstring(count) + L"<CR>";
}

TEST(Set, EveryFieldOfEveryClassFindsItsWayThroughTheFile) {
    const Folder folder;
    const std::string changed = folder.File("changed.json");
    std::map<std::wstring, std::wstring> expected = AllValues(SamplePath("conveyor.json"));
    ASSERT_GT(expected.size(), 500U);
    std::vector<std::string> arguments{"set", SamplePath("conveyor.json"), "--force", "-o", changed};
    int count = 0;
    for (auto& [name, value] : expected) {
        // Two rule others, and an identifier that the device never defined takes no text.
        if (name == L"Codes.Combination" || name == L"Codes.Expression" ||
            (name.starts_with(L"CustomCodeID") && value.empty()))
            continue;
        if (name.ends_with(L".Length"))
            value = L"0";
        else
            value = Other(name, value, ++count);
        arguments.push_back(sim::ToUtf8(name + L"=" + value));
    }
    const Result result = RunProgram(arguments);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(AllValues(changed), expected);
    EXPECT_EQ(RunProgram({"set", changed, "-o", changed, "Codes.Combination=0"}).status, 0);
    EXPECT_EQ(AllValues(changed)[L"Codes.Combination"], L"0");
}

TEST(Set, KnowsWhereEachFieldStandsOnTheDevice) {
    DeviceFile file(Choice(SamplePath("conveyor.json")));
    std::set<std::pair<std::int32_t, std::int32_t>> fields;
    for (const Section& section : AllSections(file.Model()))
        for (const FieldRef& field : section.fields) {
            const auto* custom = std::get_if<CustomCodeField>(&field.place);
            if (custom != nullptr && !file.Model().CustomCodeIDDefined(custom->index))
                continue;
            EXPECT_TRUE(fields.emplace(field.number, field.element).second) << field.number;
        }
    constexpr std::int32_t itemCount = 349; // follows from the items
    std::set<std::pair<std::int32_t, std::int32_t>> written;
    for (const device::MIBParameter& parameter : file.Model().Plan().writes) {
        const auto address = file.Store().FindName(parameter.entry);
        if (const std::int32_t number = file.Store().Parameter(*address).number; number != itemCount)
            written.emplace(number, address->element);
    }
    EXPECT_EQ(fields, written);
}

TEST(Set, ChangesWhatWasAskedForAndNothingElse) {
    const Folder folder;
    const std::string neat = folder.File("neat.json");
    const std::string changed = folder.File("changed.json");
    // A save puts fixed lengths right; from then on nothing moves by itself.
    ASSERT_EQ(RunProgram({"set", SamplePath("conveyor.json"), "-o", neat}).status, 0);
    const Result diff = RunProgram({"diff", SamplePath("conveyor.json"), neat});
    EXPECT_EQ(diff.status, 1);
    EXPECT_THAT(diff.out, HasSubstr("  70  1  /Codes/Slots/Length[1]         8   ->  0\n"));
    EXPECT_EQ(RunProgram({"plan", SamplePath("conveyor.json")}).out, RunProgram({"plan", neat}).out);

    ASSERT_EQ(RunProgram({"set", neat, "Codes(3).MinLength=4", "StandardFormat.Header=<STX>\"", "-o", changed}).status,
              0);
    const Result two = RunProgram({"diff", neat, changed});
    EXPECT_EQ(two.status, 1);
    EXPECT_EQ(two.out, "cluster 0, device 0\n"
                       "  3  2  /Codes/Slots/MinimumLength[2]  1              ->  4\n"
                       "  6  0  /OutputFormat/Header           \"CONV<Space>\"  ->  \"<STX><$22>\"\n");
    EXPECT_EQ(RunProgram({"set", changed, "-o", changed}).status, 0);
    EXPECT_EQ(RunProgram({"diff", changed, changed}).status, 0);
}

TEST(Set, KeepsAFixedLengthAsTheDeviceKeepsIt) {
    const Folder folder;
    const std::string changed = folder.File("changed.json");
    ASSERT_EQ(RunProgram({"set", SamplePath("conveyor.json"), "-o", changed, "Codes(2).Length=12"}).status, 0);
    sim::ParameterStore store = StoreOf(changed);
    EXPECT_EQ(device::ToInt32(store.Get(3, 1)), 12);
    EXPECT_EQ(device::ToInt32(store.Get(4, 1)), 12);
    EXPECT_EQ(device::ToInt32(store.Get(70, 1)), 0);
}

TEST(Set, RefusesWhatASaveWouldLoseAndWritesNothing) {
    const Folder folder;
    const std::string target = folder.File("target.json");
    const std::string source = folder.Write("source.json", ReadAll(SamplePath("conveyor.json")));
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"Codes(2).MinLength=4"}, "Codes(2).MinLength: \"4\" would become \"8\": the slot has a fixed Length"},
        {{"Codes.Combination=0", "Expression=1|2"},
         "Expression: \"1|2\" would become \"\": an expression counts only with Codes.Combination=2"},
        {{"Codes(2).Length=-1", "--force"}, "Codes(2).Length: \"-1\" would become \"0\""},
        {{"Codes(3).MinLength=4", "Heder=1"}, "Heder: there is no Heder"},
    };
    for (const auto& [words, reason] : cases) {
        std::vector<std::string> arguments{"set", source, "-o", target};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const Result result = RunProgram(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, HasSubstr("outfmt: " + source + ": " + reason));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(target)));
    }
    EXPECT_EQ(ReadAll(source), ReadAll(SamplePath("conveyor.json")));
    // The same in an order that makes sense.
    EXPECT_EQ(RunProgram({"set", source, "-o", source, "Codes(2).Length=0", "Codes(2).MinLength=4"}).status, 0);
    EXPECT_EQ(device::ToInt32(StoreOf(source).Get(3, 1)), 4);
}

/// The conveyor sample, changed.
std::string Changed(const Folder& folder, const std::function<void(sim::DeviceDescription&)>& change) {
    sim::SystemDescription system = sim::LoadDescription(std::filesystem::u8path(SamplePath("conveyor.json")));
    change(system.devices.front());
    return folder.Write("source.json", sim::FormatDescription(system));
}
sim::ParameterDescription& Parameter(sim::DeviceDescription& device, std::int32_t number) {
    return *std::find_if(device.parameters.begin(), device.parameters.end(),
                         [number](const auto& parameter) { return parameter.number == number; });
}

TEST(Show, MarksWhatWasNotReadAndThePlanNamesIt) {
    const Folder folder;
    const std::string source = Changed(folder, [](auto& device) {
        Parameter(device, 7).values.at(0) = device::Value();
        Parameter(device, 82).values.at(0) = device::Value(Bytes());
    });
    EXPECT_THAT(RunProgram({"show", source}).out, ::testing::ContainsRegex("Terminator +not read"));
    EXPECT_THAT(RunProgram({"show", source, "--json"}).out, HasSubstr("\"Terminator\": null"));
    const Result plan = RunProgram({"plan", source});
    EXPECT_EQ(plan.err, source + ": /OutputFormat/Terminator (7) is left out: no value\n");
    EXPECT_EQ(plan.out.find("/OutputFormat/Terminator"), std::string::npos);
    EXPECT_THAT(plan.out, HasSubstr("/OutputFormat/CodeSeparator"));
}

TEST(Set, AnExpressionGivesNoGroupAStringThatWasNotRead) {
    const Folder folder;
    const std::string source =
        Changed(folder, [](auto& device) { Parameter(device, 17).values.at(0) = device::Value(); });
    const Result result = RunProgram({"set", source, "-o", source, "Expression=1|2&[3]&4"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("/Codes/Groups/NoReadString[0] (17) is left out"));
    EXPECT_EQ(StoreOf(source).Get(17, 0), device::Value());
}

TEST(Set, TakesAValueBehindTheOneThatCannotBeRead) {
    const Folder folder;
    const std::string source = Changed(folder, [](auto& device) {
        Parameter(device, 3002).type = device::WireType::Int16;
        for (device::Value& value : Parameter(device, 3002).values)
            value = std::int16_t{0};
        Parameter(device, 3002).values.at(2) = std::int16_t{300};
    });
    const Result result = RunProgram({"set", source, "-o", source, "Codes(3).RssType=2"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(device::ToInt32(StoreOf(source).Get(3012, 2)), 2);
}

TEST(Set, RefusesLimitsOfASlotWhoseFixedLengthStays) {
    const Folder folder;
    const std::string source = Changed(folder, [](auto& device) { Parameter(device, 4).level = 3; });
    const std::string target = folder.File("target.json");
    for (const char* assignment : {"Codes(2).MinLength=4", "Codes(2).Length=0"})
        EXPECT_EQ(RunProgram({"set", source, "--level", "2", "-o", target, assignment}).status, 2) << assignment;
}

TEST(Set, WritesToStandardOutputWhatItWouldWriteIntoTheFile) {
    const Folder folder;
    const std::string changed = folder.File("changed.json");
    const std::vector<std::string> set = {"set", SamplePath("tiny.json"), "StandardFormat.Header=x", "-o"};
    std::vector<std::string> arguments = set;
    arguments.push_back(changed);
    ASSERT_EQ(RunProgram(arguments).status, 0);
    arguments.back() = "-";
    const Result result = RunProgram(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, ReadAll(std::filesystem::u8path(changed)));
    EXPECT_FALSE(std::filesystem::exists("-"));
}

TEST(Set, TakesTheLevelOnlyForItself) {
    const Folder folder;
    const std::string changed = folder.File("f\xC3\xBCr \xE4\xB8\xAD.json"); // a name beyond the system's code page
    ASSERT_EQ(
        RunProgram({"set", SamplePath("tiny.json"), "--level", "1", "StandardFormat.Header=x", "-o", changed}).status,
        0);
    EXPECT_EQ(sim::LoadDescription(std::filesystem::u8path(changed)).accessLevel, 3);
    EXPECT_THAT(RunProgram({"show", changed}).out, HasSubstr("Header         \"x\""));
    const Result above =
        RunProgram({"set", SamplePath("tiny.json"), "--level", "1", "Codes(1).MinLength=5", "-o", changed});
    EXPECT_EQ(above.status, 2);
    EXPECT_THAT(above.err, HasSubstr("Codes(1).MinLength: parameter 3 is above the current access level"));
}

} // namespace
} // namespace orv::cli::testing
