#include <nlohmann/json.hpp>

#include "cli/output_stream.h"
#include "fixture.h"
#include "model/format_export.h"
#include "model/save_concerns.h"
#include "text/version.h"

namespace orv::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

TEST(Show, PrintsEveryPartWithItsFieldsAndWhatTheyMean) {
    const std::string out = RunProgram({"show", SamplePath("conveyor.json")}).out;
    for (const char* part :
         {"Sorter head: cluster 0, device 0, access level 3\n", "\nSettings\n  Advanced", "\nCodes\n  Combination",
          "(1 OR 2) AND ([3])", "\nCodes(1)  1 - ", "\nCodes(5)  5 - (None)  (not in use)\n", "\nGroups(2)  2 - [3]\n",
          "\nStandardFormat  (not in use)\n", "\nAdvancedFormats(4)  4 - (None)\n",
          "\nAdvancedFormats(1).OutItems(5)  "})
        EXPECT_THAT(out, HasSubstr(part));
    EXPECT_THAT(out, Not(HasSubstr(" \n")));
    const std::string low = RunProgram({"show", SamplePath("conveyor.json"), "--level", "1"}).out;
    EXPECT_THAT(low, HasSubstr("above the access level"));
    EXPECT_THAT(out, Not(HasSubstr("above the access level")));
}

TEST(Show, WritesJsonWithNumbersAndNames) {
    const Result result = RunProgram({"show", "--json", SamplePath("conveyor.json")});
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["Advanced"], true);
    EXPECT_EQ(json["CustomCodeID"].size(), 19U);
    EXPECT_EQ(json["Codes"]["Expression"], "1|2&[3]");
    EXPECT_EQ(json["Codes"]["slots"].size(), 10U);
    EXPECT_EQ(json["Codes"]["slots"][1]["Length"], 8);
    EXPECT_EQ(json["Codes"]["slots"][1]["MaxicodeEnable"].size(), 7U);
    EXPECT_FALSE(json["Codes"]["slots"][1]["symbology"].get<std::string>().empty());
    EXPECT_EQ(json["Groups"][1]["NoReadString"], "G2?<CR>");
    EXPECT_EQ(json["StandardFormat"]["Header"], "CONV<Space>");
    EXPECT_EQ(json["AdvancedFormats"][0]["Transports"], 1);
    EXPECT_EQ(json["AdvancedFormats"][2]["transportNames"].size(), 3U); // 4226 has three bits
    EXPECT_FALSE(json["AdvancedFormats"][0]["OutItems"][0]["typeKey"].get<std::string>().empty());
}

TEST(Check, PrintsEveryConcernOnALine) {
    const Result none = RunProgram({"check", SamplePath("tiny.json")});
    EXPECT_EQ(none.out, "no concerns\n");
    EXPECT_EQ(none.status, 0);
    const Folder folder;
    const std::string file = folder.File("worries.json");
    ASSERT_EQ(
        RunProgram({"set", SamplePath("conveyor.json"), "-o", file, "Advanced=1", "CodeID=0", "Codes(6).CodeType=18",
                    "Codes(6).MaxicodeEnable(2)=0", "Codes(6).MaxicodeEnable(3)=0", "Codes(6).MaxicodeEnable(4)=0",
                    "AdvancedFormats(2).OutItems(1).ItemCategory=0", "AdvancedFormats(2).OutItems(1).CodeRelType=8"})
            .status,
        0);
    const Result some = RunProgram({"check", file});
    EXPECT_EQ(some.status, 1);
    EXPECT_THAT(some.out, HasSubstr("AdvancedFormats(2).OutItems(1): Code Identifier is globally disabled"));
    EXPECT_THAT(some.out, HasSubstr("Codes(6): At least one Mode Reading must be enabled for code 6.\n"));
    DeviceFile opened({file, {}, 0, {}});
    EXPECT_EQ(static_cast<std::size_t>(std::count(some.out.begin(), some.out.end(), '\n')),
              model::SaveConcerns(opened.Model()).size());
}

TEST(Export, WritesTheModelsBytes) {
    const Folder folder;
    const std::string file = folder.File("formats.txt");
    DeviceFile opened({SamplePath("conveyor.json"), {}, 0, {}});
    const std::string expected = model::FormatStructure(opened.Model(), opened.State());
    ASSERT_THAT(expected, HasSubstr("Format #1\r\n"));
    EXPECT_EQ(RunProgram({"export", SamplePath("conveyor.json"), "-o", "-"}).out, expected);
    EXPECT_EQ(RunProgram({"export", SamplePath("conveyor.json"), "-o", file}).status, 0);
    EXPECT_EQ(ReadAll(std::filesystem::u8path(file)), expected);
    const Result nowhere = RunProgram({"export", SamplePath("tiny.json"), "-o", folder.File("no/such/folder.txt")});
    EXPECT_EQ(nowhere.status, 3);
    EXPECT_THAT(nowhere.err, HasSubstr("folder.txt: the file cannot be written: "));
}

TEST(PlanCommand, ListsEachWriteUnderItsNumber) {
    const std::string out = RunProgram({"plan", SamplePath("tiny.json")}).out;
    EXPECT_THAT(out, StartsWith("number  element  entry"));
    EXPECT_THAT(out, HasSubstr("\n   330        0  /OutputFormat/Advanced  "));
    EXPECT_THAT(out, HasSubstr("\"NOREAD<CR>\"\n"));
    DeviceFile opened({SamplePath("tiny.json"), {}, 0, {}});
    EXPECT_EQ(static_cast<std::size_t>(std::count(out.begin(), out.end(), '\n')),
              opened.Model().Plan().writes.size() + 1);
    EXPECT_LT(RunProgram({"plan", SamplePath("tiny.json"), "--level", "1"}).out.size(), out.size());
}

TEST(DiffCommand, TellsOfDevicesAndParametersThatAreInOneFileOnly) {
    sim::SystemDescription system = sim::LoadDescription(SamplePath("tiny.json"));
    system.devices.push_back(system.devices[0]);
    system.devices[1].device = 3;
    sim::ParameterDescription& first = system.devices[0].parameters[0];
    first.path = L"/Renamed";
    const Folder folder;
    const std::string other = folder.File("other.json");
    sim::SaveDescription(system, std::filesystem::u8path(other));
    const Result result = RunProgram({"diff", SamplePath("tiny.json"), other});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "cluster 0, device 0\n"
                          "  1  0  /Codes/Slots/Enabled  1         ->  (absent)\n"
                          "  1  0  /Renamed              (absent)  ->  1\n"
                          "cluster 0, device 3: only in the second file\n");
    EXPECT_EQ(RunProgram({"diff", other, other}).out, "");
}

TEST(Failures, AreOneLineWithTheStatusOfTheirKind) {
    const Folder folder;
    const std::string broken = folder.Write("broken.json", "{ not json\n");
    const std::string tiny = SamplePath("tiny.json");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string line;
    };
    const Case cases[] = {
        {{"show", folder.File("none.json")}, 3, "outfmt: " + folder.File("none.json") + ": /: the file cannot be read"},
        {{"plan", broken}, 3, "outfmt: " + broken + ": /: "},
        {{"diff", tiny, broken}, 3, "outfmt: " + broken + ": /: "},
        {{"show", SamplePath("tunnel.json"), "--device", "9"},
         2,
         "there is no device 9 in cluster 1; the file has: cluster 1 device 0, cluster 1 device 1, "},
        {{"show", tiny, "--cluster", "4"}, 2, "there is no device 0 in cluster 4"},
        {{"show", tiny, "--level", "7"}, 2, "--level"},
        {{"show"}, 2, "FILE"},
        {{}, 2, "subcommand"},
        {{"frobnicate"}, 2, "frobnicate"},
        {{"export", tiny}, 2, "--output"},
        {{"set", tiny, "-o", folder.File("no/such/folder.json"), "CodeID=1"}, 3, "cannot be written"},
        {{"apply", tiny, "--to", "example.org:99"}, 2, "numeric address or localhost"},
        {{"apply", tiny, "--to", "127.0.0.1"}, 2, "--to wants HOST:PORT"},
        {{"apply", tiny, "--to", "127.0.0.1:70000"}, 2, "--to wants HOST:PORT"},
    };
    for (const Case& c : cases) {
        const Result result = RunProgram(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.line;
        EXPECT_THAT(result.err, HasSubstr(c.line));
        EXPECT_THAT(result.err, StartsWith("outfmt: "));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

/// Nothing that came from outside may act upon the terminal, or fill it.
TEST(Failures, ShowForeignTextByNameAndCut) {
    const Folder folder;
    const std::string foreign = "\x1b]0;owned\x07\xe2\x80\xae" + std::string(100000, 'x');
    const std::string tiny = SamplePath("tiny.json");
    const std::vector<std::string> cases[] = {
        {foreign},
        {"show", foreign},
        {"show", tiny, "--" + foreign},
        {"diff", tiny, foreign},
        {"export", tiny, "-o", "/" + foreign},
        {"set", tiny, foreign + "=1"},
        {"set", tiny, "CodeID=" + foreign},
        {"set", tiny, "StandardFormat.Header=<" + foreign + ">"},
        {"set", tiny, "Codes.Expression=" + foreign},
        {"apply", tiny, "--to", foreign},
        {"show", folder.Write("foreign.json", "\"" + foreign)},
    };
    for (const auto& arguments : cases) {
        const Result result = RunProgram(arguments);
        EXPECT_NE(result.status, 0);
        EXPECT_LT(result.err.size(), 1500U) << result.err.substr(0, 2000);
        EXPECT_EQ(result.err.find_first_of("\x1b\x07"), std::string::npos) << result.err;
        EXPECT_EQ(result.err.find("\xe2\x80\xae"), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
}

TEST(Failures, NameAnArrayThatIsTooShort) {
    const Folder folder;
    const struct {
        std::int32_t number;
        std::string reason;
    } cases[] = {{3002, "9 elements for 10 code slots"},
                 {327, "9 elements for 10 groups"},
                 {341, "3 elements for 4 formats"},
                 {368, "79 elements for 80 items"}};
    for (const auto& c : cases) {
        sim::SystemDescription system = sim::LoadDescription(SamplePath("conveyor.json"));
        auto& parameters = system.devices[0].parameters;
        const auto found = std::find_if(parameters.begin(), parameters.end(),
                                        [&](const auto& parameter) { return parameter.number == c.number; });
        found->details.elementCount -= 1;
        found->values.pop_back();
        const std::string file = folder.File(std::to_string(c.number) + ".json");
        sim::SaveDescription(system, file);
        const std::string place =
            "/devices/0/parameters/" + std::to_string(found - parameters.begin()) + "/elementCount: ";
        for (const char* command : {"show", "check", "plan"}) {
            const Result result = RunProgram({command, file});
            EXPECT_EQ(result.status, 3) << command << c.number;
            EXPECT_THAT(result.err, HasSubstr(place + c.reason));
        }
    }
}

TEST(Failures, OfStandardOutputGiveTheReason) {
    const std::string tiny = SamplePath("tiny.json");
    const std::vector<std::string> cases[] = {
        {"show", tiny},
        {"show", tiny, "--json"},
        {"check", tiny},
        {"plan", tiny},
        {"diff", tiny, SamplePath("conveyor.json")},
        {"export", SamplePath("conveyor.json"), "-o", "-"},
        {"set", SamplePath("conveyor.json"), "-o", "-"}, // more than the stream holds back
        {"--help"},
    };
    for (const std::vector<std::string>& arguments : cases) {
        OutputBuffer closed{platform::SystemFile()};
        std::ostream out(&closed);
        std::ostringstream err;
        EXPECT_EQ(cli::Run(arguments, {out, err, false, &closed.Failure()}), 3) << arguments[0];
        EXPECT_NE(closed.Failure(), "");
        EXPECT_EQ(err.str(), "outfmt: standard output cannot be written: " + closed.Failure() + "\n");
    }
}

TEST(Help, TellsTheExitStatusesForEachCommand) {
    for (const char* command : {"show", "check", "export", "plan", "diff", "set", "apply"}) {
        const Result help = RunProgram({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr("  3  a file cannot be read or written")) << command;
        EXPECT_EQ(help.err, "");
    }
    EXPECT_EQ(RunProgram({"--version"}).out, "outfmt " + std::to_string(text::kVersionMajor) + "." +
                                                 std::to_string(text::kVersionMinor) + "." +
                                                 std::to_string(text::kVersionRevision) + "\n");
}

} // namespace
} // namespace orv::cli::testing
