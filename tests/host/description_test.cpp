#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/sim/description.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// A file with one device and these parameters.
std::string FileWith(const std::string& parameters) {
    return R"({"accessLevel":3,"clusters":[{"index":0,"description":"c"}],"devices":[{"cluster":0,"device":0,)"
           R"("description":"d","parameters":[)" +
           parameters + "]}]}";
}

std::string OneParameter(const std::string& type, const std::string& values, const std::string& more = "") {
    return R"({"number":5,"path":"/A","type":")" + type + R"(","level":0,"elementCount":1,)" + more + R"("values":[)" +
           values + "]}";
}

std::string LineOf(const std::string& text) {
    try {
        ParseDescription(text, "bad.json");
    } catch (const FileError& error) {
        return error.what();
    }
    return "accepted";
}

std::string WithPath(const std::string& path) {
    std::string parameter = OneParameter("int16", "1");
    return parameter.replace(parameter.find("/A"), 2, path);
}

std::string Repeated(const std::string& part, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += part;
    return all;
}

struct BadFile {
    std::string text;
    std::string pointer;
    std::string reason;
};

TEST(Description, NamesFilePlaceAndReasonOfABadFile) {
    const std::string a = OneParameter("int16", "1");
    const BadFile cases[] = {
        {"", ": /: ", "not JSON"},
        {"{\"accessLevel\":", ": /: ", "not JSON"},
        {"[]", ": /: ", "type"},
        {R"({"accessLevel":4,"clusters":[],"devices":[]})", "/accessLevel: ", ""},
        {R"({"accessLevel":3,"clusters":[]})", ": /: ", "devices"},
        {FileWith(a + "," + a), "/devices/0/parameters/1/number: ", "parameter 5"},
        {FileWith(a + R"(,{"number":6,"path":"/A","type":"byte","level":0,"elementCount":1,"values":[1]})"),
         "/devices/0/parameters/1/path: ", "/A"},
        {FileWith(WithPath("")), "/devices/0/parameters/0/path: ", "a path is"},
        {FileWith(WithPath("/")), "/devices/0/parameters/0/path: ", "a path is"},
        {FileWith(WithPath("A")), "/devices/0/parameters/0/path: ", "a path is"},
        {FileWith(WithPath("/A[0]")), "/devices/0/parameters/0/path: ", "a path is"},
        {FileWith(OneParameter("int8", "1")), "/devices/0/parameters/0/type: ", ""},
        {FileWith(OneParameter("int16", "32768")), "/devices/0/parameters/0/values/0: ", "does not fit"},
        {FileWith(OneParameter("int32", "18446744073709551615")), "/devices/0/parameters/0/values/0: ", "fit"},
        {FileWith(OneParameter("int32", "-2147483649")), "/devices/0/parameters/0/values/0: ", "does not fit"},
        {FileWith(OneParameter("byte", "-1")), "/devices/0/parameters/0/values/0: ", "does not fit"},
        {FileWith(OneParameter("byte", "\"1\"")), "/devices/0/parameters/0/values/0: ", "number"},
        {FileWith(OneParameter("text", "1")), "/devices/0/parameters/0/values/0: ", "text"},
        {FileWith(OneParameter("bytes", "\"0G\"")), "/devices/0/parameters/0/values/0: ", "hexadecimal"},
        {FileWith(OneParameter("bytes", "\"012\"")), "/devices/0/parameters/0/values/0: ", "hexadecimal"},
        {FileWith(OneParameter("int16", "1,2")), "/devices/0/parameters/0/values: ", "2 values for 1"},
        {FileWith(OneParameter("int16", "1", R"("minimum":3,)")), "/devices/0/parameters/0: ", "maximum"},
        {FileWith(OneParameter("int16", "1", R"("minimum":3,"maximum":2,)")), "/parameters/0/minimum: ", "above"},
        {FileWith(OneParameter("int16", "1", R"("colour":3,)")), "/devices/0/parameters/0: ", "colour"},
        {FileWith(OneParameter("int16", "1", R"("enumeration":[{"value":1}],)")),
         "/devices/0/parameters/0/enumeration/0: ", "label"},
        {R"({"accessLevel":3,"clusters":[],"devices":[{"cluster":0,"device":0,"description":"","parameters":[]}]})",
         "/devices/0/cluster: ", "no such cluster"},
        {std::string(1000000, '['), ": /0/0/", "deeper"},
        {FileWith(OneParameter("int16", std::string(1000000, '['))), "/devices/0/parameters/0/values/0/", "deeper"},
        {R"({"accessLevel":3,"x":[)" + Repeated("1,", 200000) + "1]}", ": /x/", "more than"},
        {FileWith(OneParameter("text", "\"" + std::string(1000001, 'x') + "\"")),
         "/devices/0/parameters/0/values/0: ", "longer than"},
        {FileWith(WithPath("A" + Repeated("\\u001b[2J", 100000))), "/devices/0/parameters/0/path: ", "a path is"},
        {FileWith(OneParameter("int16", "1", "\"\\u001b]0;" + Repeated("long", 20000) + "\":1,")),
         "/parameters/0: ", "<ESC>]0;long"},
    };
    for (const BadFile& bad : cases) {
        const std::string line = LineOf(bad.text);
        EXPECT_THAT(line, AllOf(StartsWith("bad.json: "), HasSubstr(bad.pointer), HasSubstr(bad.reason)))
            << bad.text.substr(0, 400);
        EXPECT_LT(line.size(), 600U);
        EXPECT_TRUE(std::none_of(line.begin(), line.end(), [](char c) { return c < ' ' && c >= 0; })) << line;
    }
}

TEST(Description, TakesAPathOfAnyLength) {
    EXPECT_EQ(LineOf(FileWith(WithPath("/" + std::string(500000, 'A')))), "accepted");
}

TEST(Description, NamesAFileThatIsNotThere) {
    EXPECT_THROW(
        {
            try {
                LoadDescription(Sample("no-such.json"));
            } catch (const FileError& error) {
                EXPECT_THAT(error.what(), HasSubstr("no-such.json: "));
                throw;
            }
        },
        FileError);
    EXPECT_THROW(LoadDescription(Sample("")), FileError) << "a folder";
}

/// A list of short values is where a description outgrows its file most.
TEST(Description, HoldsManyValuesInFewBytesAndEachAsItWas) {
    constexpr std::size_t kElements = 32767;
    const std::string head = R"({"number":5,"path":"/A","level":0,"elementCount":32767,"type":")";
    const struct {
        std::string type;
        std::vector<std::string> values;
        std::vector<device::Value> read;
    } cases[] = {
        {"byte", {"0", "255", "null"}, {std::uint8_t{0}, std::uint8_t{255}, {}}},
        {"int16", {"-32768", "7", "null"}, {std::int16_t{-32768}, std::int16_t{7}, {}}},
        {"int32", {"-2147483648", "2147483647", "0"}, {std::int32_t{INT32_MIN}, std::int32_t{INT32_MAX}, 0}},
        {"text", {R"("")", R"("\u20ac\n")", "null"}, {std::wstring(), std::wstring(L"\u20AC\n"), {}}},
        {"bytes", {R"("00FF")", R"("")", "null"}, {Bytes{0, 255}, Bytes(), {}}},
    };
    for (const auto& c : cases) {
        std::string values;
        for (std::size_t i = 0; i < kElements; ++i)
            values += (i == 0 ? "" : ",") + c.values[i % c.values.size()];
        SystemDescription system =
            ParseDescription(FileWith(head + c.type + R"(","values":[)" + values + "]}"), "many");
        ParameterValues& held = system.devices[0].parameters[0].values;
        EXPECT_LT(held.Memory(), 4 * values.size()) << c.type;
        const auto all = [&](const ParameterValues& list) {
            for (std::size_t i = 0; i < kElements; ++i)
                ASSERT_EQ(list.at(i), c.read[i % c.read.size()]) << c.type << i;
        };
        all(held);
        EXPECT_THROW(std::as_const(held).at(kElements), std::out_of_range);
        const ParameterValues before = held;
        held.at(1) = device::Value();
        EXPECT_FALSE(held == before) << c.type;
        held.at(1) = c.read[1];
        all(held);
        EXPECT_TRUE(held == before) << c.type;
        EXPECT_TRUE(before == held) << c.type;
    }
}

TEST(Description, ReadsUpToAStatedSizeAndNoFurther) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "orv-large.json";
    const auto reading = [&](std::uintmax_t size) {
        std::ofstream(file, std::ios::binary) << FileWith(OneParameter("int16", "1"));
        std::filesystem::resize_file(file, size);
        try {
            LoadDescription(file);
        } catch (const FileError& error) {
            return std::string(error.what());
        }
        return std::string("accepted");
    };
    // What was not written reads as zeros.
    EXPECT_THAT(reading(64U << 20), HasSubstr("not JSON"));
    EXPECT_THAT(reading((64U << 20) + 1), HasSubstr("larger than 64 MB"));
    std::filesystem::remove(file);
#ifndef _WIN32
    EXPECT_THAT([] { LoadDescription("/dev/zero"); },
                ::testing::ThrowsMessage<FileError>(HasSubstr("larger than 64 MB")));
#endif
}

TEST(Description, SamplesComeBackByteForByte) {
    for (const char* name : {"conveyor.json", "tunnel.json", "tiny.json"}) {
        const SystemDescription system = LoadDescription(Sample(name));
        EXPECT_EQ(FormatDescription(system), ReadFile(Sample(name))) << name;
        EXPECT_EQ(system.devices.at(0).parameters.size(), 100U) << name;
    }
}

TEST(Description, SavingReplacesTheFileAndLeavesNothingBeside) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "orv-description";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::filesystem::path file = folder / "system.json";
    std::ofstream(file) << "old";

    SystemDescription system = SmallSystem();
    // Each kind of character that a text file could spoil.
    system.devices[0].description = L"\u00FC \u20AC \"\\/ \t\n\x1d\x7f";
    system.devices[0].parameters[0].details.choices = {{-1, L"yes"}, {0, L""}};
    system.devices[0].parameters[0].details.hasRange = true;
    system.devices[0].parameters[0].details.minimum = INT32_MIN;
    SaveDescription(system, file);
    EXPECT_EQ(LoadDescription(file), system);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);

    try {
        SaveDescription(system, folder / "missing" / "x.json");
        ADD_FAILURE() << "there is no such folder";
    } catch (const FileError& error) {
        EXPECT_THAT(error.what(), ::testing::ContainsRegex("x\\.json: .*cannot be written: ."));
    }
    std::filesystem::create_directories(folder / "taken" / "inside");
    EXPECT_THROW(SaveDescription(system, folder / "taken"), FileError);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2)
        << "a failed save leaves nothing behind";
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace orv::sim::testing
