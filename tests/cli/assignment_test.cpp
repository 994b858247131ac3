#include "cli/assignment.h"

#include "cli/expression.h"
#include "cli/values.h"
#include "fixture.h"
#include "host/sim/utf8.h"

namespace orv::cli::testing {
namespace {

using ::testing::HasSubstr;

class AssignmentTest : public ::testing::Test {
  protected:
    /// "applied", or the line of the error. Whatever is refused must leave the model as it was.
    std::string Try(const std::string& text, bool force = false) {
        const auto before = Values();
        try {
            Apply(file_.Model(), file_.State(), ParseAssignment(sim::FromUtf8(text)), force);
            return "applied";
        } catch (const AssignmentError& error) {
            EXPECT_EQ(Values(), before) << text;
            return error.what();
        }
    }
    std::vector<std::wstring> Values() {
        device::ParameterAccess access(file_.State());
        std::vector<std::wstring> values;
        for (const Section& section : AllSections(file_.Model()))
            for (const FieldRef& field : section.fields)
                values.push_back(section.name + L"." + field.name + L"=" + FieldText(field, access));
        return values;
    }
    std::wstring Value(std::wstring_view name) {
        device::ParameterAccess access(file_.State());
        return FieldText(Resolve(file_.Model(), name), access);
    }

    DeviceFile file_{{SamplePath("conveyor.json"), {}, 0, {}}};
};

TEST_F(AssignmentTest, NamesLeadToTheirFieldInAnyCase) {
    const std::pair<const char*, const wchar_t*> cases[] = {
        {"StandardFormat.Header=<STX>", L"<STX>"},
        {"standardformat.terminator=x", L"x"},
        {"Codes(3).MinLength=4", L"4"},
        {"Codes(3).MaxicodeEnable(5)=1", L"1"},
        {"Codes.NoReadString=none", L"none"},
        {"groups(2).noreadstring=g2", L"g2"},
        {"AdvancedFormats(2).OutItems(1).FormatLength=3", L"3"},
        {"AdvancedFormats(2).Transports=&H80000005", L"-2147483643"},
        {"Advanced=0", L"0"},
        {"CustomCodeID(3)=<CR>", L"<CR>"},
        {"GLOBNOREADMSGTYPE=1", L"1"},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Try(text), "applied") << text;
        EXPECT_EQ(Value(ParseAssignment(sim::FromUtf8(text)).name), value) << text;
    }
    EXPECT_EQ(file_.Model().AdvancedFormats().Item(2).OutItems().Item(1).FormatLength(), 3);
    EXPECT_TRUE(file_.Model().Codes().Code(3)->MaxicodeEnable(5));
    EXPECT_FALSE(file_.Model().Codes().Code(3)->MaxicodeEnable(1));
}

TEST_F(AssignmentTest, WrongNamesAreAnsweredWithTheNearestOnes) {
    const std::pair<const char*, const char*> cases[] = {
        {"Codes(1).MinLenght=4", "Codes(1).MinLenght: Codes(1) has no field MinLenght; nearest: MinLength"},
        {"Heder=1", "Heder: there is no Heder; nearest: "},
        {"AdvancedFormat(1).Header=1", "nearest: AdvancedFormats"},
        {"AdvancedFormats(9).Header=1", "there is no AdvancedFormats(9); the index goes from 1 to 4"},
        {"AdvancedFormats(1).OutItems(99).LinkTo=1", "there is no OutItems(99); the index goes from 1 to 5"},
        {"AdvancedFormats(4).OutItems(1).LinkTo=1", "there are no OutItems"},
        {"AdvancedFormats.Header=1", "AdvancedFormats wants an index"},
        {"Codes(0).MinLength=1", "there is no Codes(0)"},
        {"Codes(1)=1", "a field is missing; there are Enabled, CodeType"},
        {"Codes(1).MaxicodeEnable=1", "MaxicodeEnable wants an index from 0 to 6"},
        {"Codes(1).MaxicodeEnable(7)=1", "MaxicodeEnable wants an index from 0 to 6"},
        {"Codes(1).MinLength(2)=1", "MinLength takes no index"},
        {"StandardFormat(1).Header=1", "StandardFormat takes no index"},
        {"StandardFormat.Header.X=1", "nothing goes behind Header"},
        {"CustomCodeID(19)=1", "CustomCodeID wants an index from 0 to 18"},
        {"Codes(x).MinLength=1", "index of Codes: \"x\" is no number"},
        {"Codes(1.MinLength=1", "an index ends with"},
        {"Codes..X=1", "a name is missing"},
        {"StandardFormat.Header", "an assignment is written NAME=VALUE"},
        {"=5", "the name before \"=\" is missing"},
    };
    for (const auto& [text, reason] : cases)
        EXPECT_THAT(Try(text, true), HasSubstr(reason)) << text;
}

TEST_F(AssignmentTest, LimitsOfTheDeviceHoldUnlessForced) {
    const std::pair<std::string, const char*> cases[] = {
        {"Codes(1).MinLength=65", "65 is outside 1 to 64"},
        {"Codes(1).CodeType=77", "77 is none of 0 Industrial 2 of 5, "},
        {"StandardFormat.Header=" + std::string(129, 'x'), "129 characters are more than 128"},
        {"CustomCodeID(0)=\xE4\xB8\xAD", "code page"},
        {"Expression=1&" + std::string(300, '2'), "302 characters are more than 256"},
    };
    for (const auto& [text, reason] : cases) {
        EXPECT_THAT(Try(text), HasSubstr(reason)) << text;
        EXPECT_EQ(Try(text, true), "applied") << text;
    }
    EXPECT_EQ(Value(L"CustomCodeID(0)"), L"?");
    EXPECT_EQ(Try("StandardFormat.Header=" + std::string(127, 'x') + "<CR>"), "applied");
}

TEST_F(AssignmentTest, NothingForcesAValueIntoATypeThatCannotHoldIt) {
    const std::pair<const char*, const char*> cases[] = {
        {"Codes(1).MinLength=40000", "40000 does not fit a 16-bit number (-32768 to 32767)"},
        {"Codes(1).DMRows=256", "256 does not fit a 8-bit number without sign"},
        {"Codes(1).Enabled=2", "\"2\" is neither 1 nor 0"},
        {"CodeID=abc", "\"abc\" is no number"},
        {"CodeID=", "a number is wanted"},
        {"StandardFormat.Header=<CRR>", "no character called <CRR>"},
    };
    for (const auto& [text, reason] : cases)
        EXPECT_THAT(Try(text, true), HasSubstr(reason)) << text;
}

TEST_F(AssignmentTest, AnExpressionIsRefusedAtThePlaceOfItsFault) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"1||2", L"character 3, \"|\""},
        {L"1|2^3", L"character 4, \"^\""},
        {L"1&", L"it ends too early"},
        {L"[1|2", L"it ends too early"},
        {L"&1", L"character 1, \"&\""},
        {L"1]", L"character 2, \"]\""},
        {L"[[1]]", L"character 2, \"[\""},
        {L"1&[2]3", L"character 6, \"3\""},
        {L"1|2&[3]", L""},
        {L"[1^2]&3", L""},
        {L"", L""},
    };
    for (const auto& [expression, fault] : cases)
        EXPECT_EQ(ExpressionFault(expression), fault) << sim::ToUtf8(expression);
    EXPECT_THAT(Try("Expression=1||2", true), HasSubstr("Expression: \"1||2\" is no expression: character 3"));
    EXPECT_THAT(Try("Expression=1&2&3&4&5&6&7&8&9&10&11", true), HasSubstr("11 groups are more than the device holds"));
}

TEST_F(AssignmentTest, GroupsThatStayKeepTheirStrings) {
    ASSERT_EQ(Try("Groups(1).NoReadString=first"), "applied");
    ASSERT_EQ(Try("Groups(2).NoReadString=second"), "applied");
    ASSERT_EQ(Try("Groups(2).MultipleReadString=many"), "applied");
    ASSERT_EQ(Try("Expression=4&[3]&5"), "applied");
    EXPECT_EQ(Value(L"Groups(1).NoReadString"), L"first"); // 1|2 became 4
    EXPECT_EQ(Value(L"Groups(2).NoReadString"), L"second");
    EXPECT_EQ(Value(L"Groups(3).NoReadString"), L"");
    ASSERT_EQ(Try("Codes.Expression=[3]"), "applied"); // moved to the front
    EXPECT_EQ(Value(L"Groups(1).NoReadString"), L"second");
    EXPECT_EQ(Value(L"Groups(1).MultipleReadString"), L"many");
}

TEST(AssignmentLevel, WhatWouldNotBeWrittenIsRefusedWithItsReason) {
    sim::SystemDescription system = sim::LoadDescription(SamplePath("tiny.json"));
    auto& parameters = system.devices[0].parameters;
    for (auto& parameter : parameters)
        if (parameter.number == 15)
            parameter.level = 2;
    std::erase_if(parameters, [](const auto& parameter) { return parameter.number == 82; });
    const Folder folder;
    const std::string path = folder.File("less.json");
    sim::SaveDescription(system, std::filesystem::u8path(path));
    DeviceFile file({path, {}, 0, 1});
    const auto attempt = [&](const wchar_t* text) -> std::string {
        try {
            Apply(file.Model(), file.State(), ParseAssignment(text), true);
            return "applied";
        } catch (const AssignmentError& error) {
            return error.what();
        }
    };
    EXPECT_THAT(attempt(L"StandardFormat.CodeSeparator=x"), HasSubstr("the device has no parameter 82"));
    EXPECT_THAT(attempt(L"Codes(1).MinLength=5"), HasSubstr("parameter 3 is above the current access level"));
    EXPECT_THAT(attempt(L"Codes.MultiReadMessage=1"), HasSubstr("parameter 15 is above the current access level"));
    EXPECT_THAT(attempt(L"CustomCodeID(0)=x"), HasSubstr("parameter 400 is above the current access level"));
    EXPECT_EQ(attempt(L"StandardFormat.Header=x"), "applied");
}

} // namespace
} // namespace orv::cli::testing
