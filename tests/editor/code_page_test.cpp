#include "controls/number_box.h"
#include "controls/toolbar.h"
#include "fixture.h"
#include "tests/controls/fixture.h"

namespace orv::editor {
namespace {

using controls::CheckBox;
using controls::ComboBox;
using controls::NumberBox;
using controls::OptionButton;
using controls::Toolbar;

struct CodePageTest : test::EditorFixture {
    CodePageTest() { Click(L"Code1"); }
    explicit CodePageTest(const sim::SystemDescription& system) : EditorFixture(system) { Click(L"Code1"); }
    model::CodeDef& Slot() { return *root.Codes().Code(1); }
    Toolbar& Bar() { return Get<Toolbar>(L"tbrCodeType"); }
    NumberBox& Number(const wchar_t* name) { return Get<NumberBox>(name); }
    OptionButton& Option(const wchar_t* name) { return Get<OptionButton>(name); }
    void Press(const wchar_t* key) { Bar().Click(Bar().IndexOf(key)); }
    void Show(const std::function<void()>& change) {
        change();
        Click(L"Code1");
        editor->SetModified(false);
    }
    std::wstring Pressed() { return Bar().Pressed() ? Bar().Pressed()->key : L""; }
    std::wstring NodeText() { return Get<controls::Tree>(L"tvw").FindNode(L"Code1")->text; }
    std::wstring VisibleParts() {
        std::wstring all;
        for (const wchar_t* name : {L"fraLength", L"chkCheckDigit", L"fraChkDgtTypeIL", L"fraChkDgtType39", L"fraAddon",
                                    L"fraCodabar", L"fraDatamatrix", L"fraPostal", L"fraModuleSize", L"fraRss",
                                    L"fraMaxicode", L"fraCodeLocalNoRead", L"fraCodeLocalMultipleRead"})
            if (Visible(name))
                all += std::wstring(name).substr(3) + L" ";
        return all;
    }
    /// Types as a user who leaves the box by Tab; true when the focus went on.
    bool Type(const wchar_t* name, const wchar_t* text) {
        NumberBox& box = Number(name);
        editor->Form().SetFocus(box);
        box.Edit(text);
        editor->Form().RouteKey({.key = controls::Key::Tab});
        return !box.Focused();
    }
    int Beeps() { return bench.platform.boxes.beeps; }
};

TEST_F(CodePageTest, TheCodeTypeDecidesWhatIsShown) {
    struct Case {
        std::int32_t type;
        const wchar_t* parts;
    };
    Show([this] { root.Codes().Combination(2); });
    for (const Case& c :
         {Case{0, L"Length "}, Case{1, L"Length CheckDigit ChkDgtTypeIL "}, Case{2, L"Length CheckDigit ChkDgtType39 "},
          Case{3, L"Length "}, Case{4, L"Addon "}, Case{5, L"Addon "}, Case{8, L"Addon "},
          Case{9, L"Length CheckDigit Codabar "}, Case{12, L"Length Datamatrix "}, Case{14, L"Length Postal "},
          Case{15, L"Length ModuleSize "}, Case{16, L"Length Rss "}, Case{17, L"Length "},
          Case{18, L"Length Maxicode "}, Case{77, L"Length "}}) {
        SCOPED_TRACE(c.type);
        Show([&] {
            Slot().Enabled(true);
            Slot().CodeType(c.type);
        });
        EXPECT_EQ(VisibleParts(), c.parts);
        EXPECT_EQ(Pressed(), c.type == 77 ? L"" : std::to_wstring(c.type) + L"CodeType");
        EXPECT_EQ(Slot().CodeType(), c.type);
        Show([this] { Slot().Enabled(false); });
        EXPECT_EQ(VisibleParts(), L"");
        EXPECT_EQ(Pressed(), L"NONE");
    }
}

TEST_F(CodePageTest, AStringOfTheCodeIsShownByCombinationAndUsableByBothMessages) {
    for (std::int32_t combination : {0, 1, 2, 3})
        for (std::int32_t noRead : {0, 1, 2})
            for (std::int32_t multipleRead : {0, 1, 2}) {
                SCOPED_TRACE(std::to_string(combination) + std::to_string(noRead) + std::to_string(multipleRead));
                Show([&] {
                    root.Codes().Combination(combination);
                    root.Codes().NoReadMessage(noRead);
                    root.Codes().MultiReadMessage(multipleRead);
                });
                EXPECT_EQ(Visible(L"fraCodeLocalNoRead"), combination < 2);
                EXPECT_EQ(Visible(L"fraCodeLocalMultipleRead"), combination == 1);
                EXPECT_EQ(Visible(L"fraLocalStrings"), combination < 2);
                EXPECT_EQ(Box(L"mbeCodeLocalNoRead").Enabled(), noRead != 2);
                EXPECT_EQ(Box(L"mbeCodeLocalMultipleRead").Enabled(), noRead != 2 || multipleRead != 1);
            }
}

TEST_F(CodePageTest, TheToolbarStoresTheSymbologyAndRefreshesTheTitle) {
    EXPECT_EQ(Bar().Buttons().size(), 20u);
    EXPECT_EQ(Bar().Buttons()[0].tip, L"Disabled code");
    EXPECT_EQ(Caption(L"lblPage"), L"Code Definition: 1 - Code 128");
    Press(L"2CodeType");
    EXPECT_EQ(Slot().CodeType(), 2);
    EXPECT_EQ(Caption(L"lblPage"), L"Code Definition: 1 - Code 39");
    EXPECT_EQ(NodeText(), L"1 - Code 39");
    EXPECT_TRUE(Visible(L"fraChkDgtType39"));
    EXPECT_TRUE(editor->Modified());
    Press(L"NONE");
    EXPECT_FALSE(Slot().Enabled());
    EXPECT_EQ(Slot().CodeType(), 2) << "stays for the next time";
    EXPECT_EQ(Caption(L"lblPage"), L"Code Definition: 1 - (None)");
    EXPECT_EQ(NodeText(), L"1 - (None)");
    Press(L"0CodeType");
    EXPECT_TRUE(Slot().Enabled());
    EXPECT_EQ(Slot().CodeType(), 0);
}

struct FewSymbologiesTest : CodePageTest {
    FewSymbologiesTest()
        : CodePageTest(test::With(2, [](sim::ParameterDescription& p) {
              std::erase_if(p.details.choices, [](const device::Choice& choice) {
                  return choice.value != 1 && choice.value != 2 && choice.value != 9;
              });
          })) {}
};

TEST_F(FewSymbologiesTest, TheToolbarOffersWhatTheDeviceListsAndAnUnlistedTypePressesNone) {
    std::wstring all;
    for (const Toolbar::Button& button : Bar().Buttons())
        all +=
            button.key + L"/" + button.caption + L"/" + button.tip + L"/" + button.tag + L"/" + button.picture + L" ";
    EXPECT_EQ(all, L"NONE/None/Disabled code//None 1CodeType/ITF 2/5/Interleaved 2 of 5/1/Barcode "
                   L"2CodeType/Code 39/Code 39/2/Barcode 9CodeType/Codabar/Codabar/9/Barcode ");
    const test::FixedFont font;
    editor->Layout({800, 560}, font);
    EXPECT_EQ(Bar().PlaceOf(0).width, 105);
    EXPECT_EQ(Slot().CodeType(), 3);
    EXPECT_EQ(Pressed(), L"");
    EXPECT_EQ(VisibleParts(), L"Length CodeLocalNoRead ");
    Press(L"9CodeType");
    EXPECT_EQ(Slot().CodeType(), 9);
}

TEST_F(CodePageTest, ManySymbologiesTakeNarrowButtonsInAsManyColumnsAsFit) {
    const test::FixedFont font;
    editor->Layout({800, 560}, font);
    EXPECT_EQ(Bar().PlaceOf(0).width, 90);
    EXPECT_EQ(Bar().Columns(), 6);
    editor->Layout({640, 480}, font);
    EXPECT_EQ(Bar().Columns(), 4);
    EXPECT_FALSE(Get<controls::Frame>(L"fraCode").ScrollsAcross());
}

TEST_F(CodePageTest, SymbologiesLeaveNoEmptyRowsInANarrowView) {
    for (const int percent : {100, 150, 200}) {
        const test::FixedFont font(percent);
        editor->Layout({640, 480}, font);
        const controls::Rect last = Bar().PlaceOf(static_cast<int>(Bar().Buttons().size()) - 1);
        EXPECT_EQ(Bar().Bounds().height, last.Bottom()) << percent;
    }
}

TEST_F(CodePageTest, LengthOptionsStoreAsTheModelKeepsThem) {
    Show([this] {
        Slot().Length(12);
        Slot().MinLength(4);
        Slot().MaxLength(32);
    });
    EXPECT_TRUE(Option(L"optLengthFixed").Chosen());
    EXPECT_EQ(Number(L"txtLength").Text(), L"12");
    EXPECT_FALSE(Number(L"txtMinLength").Enabled());
    EXPECT_NE(Number(L"txtMinLength").ToolTip().find(L"variable length only"), std::wstring::npos);
    Option(L"optLengthVariable").Choose();
    EXPECT_EQ(Slot().Length(), 0);
    EXPECT_EQ(Slot().MinLength(), 4);
    EXPECT_EQ(Slot().MaxLength(), 32);
    EXPECT_FALSE(Number(L"txtLength").Enabled());
    EXPECT_TRUE(Number(L"txtMinLength").Enabled());
    EXPECT_TRUE(editor->Modified());
    Option(L"optLengthFixed").Choose();
    EXPECT_EQ(Slot().Length(), 0);
    EXPECT_EQ(Slot().MinLength(), 12);
    EXPECT_EQ(Slot().MaxLength(), 12);
    EXPECT_TRUE(Option(L"optLengthFixed").Chosen());
    EXPECT_EQ(Number(L"txtMaxLength").Text(), L"12");
    Click(L"Code1");
    EXPECT_TRUE(Option(L"optLengthVariable").Chosen()) << "a fixed length is minimum = maximum";
    Option(L"optLengthFixed").Choose();
    EXPECT_EQ(Slot().MinLength(), 12) << "no length was typed yet";
    EXPECT_TRUE(Type(L"txtLength", L"64"));
    EXPECT_EQ(Slot().Length(), 64);
    EXPECT_FALSE(Type(L"txtLength", L"65"));
    EXPECT_EQ(Slot().Length(), 64);
}

TEST_F(CodePageTest, AMinimumAboveTheMaximumTakesItAlongAndTheOtherWayRound) {
    ASSERT_EQ(Slot().MinLength(), 4);
    ASSERT_EQ(Slot().MaxLength(), 32);
    EXPECT_TRUE(Type(L"txtMinLength", L"32"));
    EXPECT_EQ(Slot().MinLength(), 32);
    EXPECT_EQ(Beeps(), 0) << "equal is no fault";
    EXPECT_FALSE(Type(L"txtMinLength", L"33"));
    EXPECT_EQ(Beeps(), 1);
    EXPECT_EQ(Number(L"txtMaxLength").Text(), L"33");
    EXPECT_EQ(Slot().MaxLength(), 33);
    EXPECT_EQ(Slot().MinLength(), 32) << "not before the box is left";
    editor->Form().RouteKey({.key = controls::Key::Tab});
    EXPECT_TRUE(Number(L"txtMaxLength").Focused());
    EXPECT_EQ(Slot().MinLength(), 33);
    EXPECT_FALSE(Type(L"txtMaxLength", L"32"));
    EXPECT_EQ(Beeps(), 2);
    EXPECT_EQ(Slot().MinLength(), 32);
    EXPECT_EQ(Number(L"txtMinLength").Text(), L"32");
    Click(L"FormatDef");
    EXPECT_EQ(Slot().MaxLength(), 32) << "a commit asks twice";
    EXPECT_EQ(Slot().Length(), 0);
}

TEST_F(CodePageTest, WhatTheOtherBoxDoesNotAllowIsNotTakenAlong) {
    Show([this] {
        Slot().MinLength(64);
        Slot().MaxLength(200);
    });
    EXPECT_TRUE(Type(L"txtMaxLength", L"65"));
    Show([this] { Slot().MinLength(100); });
    EXPECT_FALSE(Type(L"txtMaxLength", L"80"));
    EXPECT_EQ(Beeps(), 1);
    EXPECT_EQ(Slot().MinLength(), 100) << "80 is past the minimum's own limit";
    EXPECT_EQ(Slot().MaxLength(), 65);
    EXPECT_EQ(Caption(L"lblHint"), L"Minimum length must be 1 to 64");
}

TEST_F(CodePageTest, AWrongNumberThatAnotherSymbologyHidesBlocksNothing) {
    Show([this] { Slot().CodeType(12); });
    Number(L"txtDMRows").Edit(L"24");
    Number(L"txtDMCols").Edit(L"999");
    Press(L"3CodeType");
    EXPECT_EQ(Slot().DMRows(), 24) << "what may stand was stored";
    EXPECT_EQ(Slot().DMColumns(), 0);
    EXPECT_FALSE(Number(L"txtDMCols").Pending());
    EXPECT_TRUE(editor->CommitPending());
    Number(L"txtMinLength").Edit(L"999");
    Option(L"optLengthFixed").Choose();
    EXPECT_TRUE(editor->CommitPending()) << "the same for one that is switched off";
}

TEST_F(CodePageTest, TheTypeOfACheckDigitIsForOneInUse) {
    Show([this] { Slot().CodeType(1); });
    auto& check = Get<CheckBox>(L"chkCheckDigit");
    auto& type = Get<ComboBox>(L"cboChkDgtTypeIL");
    EXPECT_FALSE(type.Enabled());
    check.Toggle();
    EXPECT_TRUE(Slot().CheckDigit());
    EXPECT_TRUE(type.Enabled());
    type.Select(2);
    EXPECT_EQ(Slot().CheckDigitType25IL(), 2);
    EXPECT_EQ(Slot().CheckDigitType39(), 0);
    check.Toggle();
    EXPECT_FALSE(type.Enabled());
    EXPECT_NE(type.ToolTip().find(L"check digit is in use"), std::wstring::npos);
    Slot().CodeType(2);
    Slot().CheckDigit(true);
    Click(L"Code1");
    Get<ComboBox>(L"cboChkDgtType39").Select(1);
    EXPECT_EQ(Slot().CheckDigitType39(), 1);
}

TEST_F(CodePageTest, EachFieldStoresItsOwnPropertyAndShowsItAgain) {
    struct Case {
        std::int32_t type;
        const wchar_t* name;
        int value;
        std::function<int()> stored;
    };
    const std::vector<Case> cases = {{5, L"cboAddon", 2, [this] { return Slot().EANAddon(); }},
                                     {9, L"cboStartCharTx", 1, [this] { return Slot().StartCharTX(); }},
                                     {9, L"cboStopCharTx", 2, [this] { return Slot().StopCharTX(); }},
                                     {14, L"cboPostalSymbology", 1, [this] { return Slot().PostalSymbology(); }},
                                     {14, L"cboPostalDirection", 2, [this] { return Slot().PostalDirection(); }},
                                     {16, L"cboRSSType", 3, [this] { return Slot().RssType(); }},
                                     {12, L"txtDMCols", 144, [this] { return Slot().DMColumns(); }},
                                     {12, L"txtDMRows", 12, [this] { return Slot().DMRows(); }},
                                     {15, L"txtModuleSize", 100, [this] { return Slot().ModuleSize(); }},
                                     {14, L"txtPostalMinBarcount", 21, [this] { return Slot().PostalMinBarcount(); }},
                                     {14, L"txtPostalMaxBarcount", 120, [this] { return Slot().PostalMaxBarcount(); }},
                                     {14, L"txtPostalBarDistance", 500, [this] { return Slot().PostalBarDistance(); }},
                                     {12, L"chkDMRectangular", 1, [this] { return int{Slot().DMRectangular()}; }},
                                     {12, L"chkDMFastImprove", 1, [this] { return int{Slot().DMFastImprove()}; }}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name, c.name + std::wcslen(c.name)));
        Show([&] { Slot().CodeType(c.type); });
        controls::Widget& field = *editor->Root().Find(c.name);
        EXPECT_NE(c.stored(), c.value);
        if (auto* box = dynamic_cast<ComboBox*>(&field))
            box->Select(c.value);
        else if (auto* check = dynamic_cast<CheckBox*>(&field))
            check->Toggle();
        else
            EXPECT_TRUE(Type(c.name, std::to_wstring(c.value).c_str()));
        EXPECT_EQ(c.stored(), c.value);
        EXPECT_TRUE(editor->Modified());
    }
    Click(L"Code1");
    EXPECT_EQ(Number(L"txtDMCols").Text(), L"144");
    EXPECT_EQ(Get<ComboBox>(L"cboRSSType").SelectedData(), 3);
    EXPECT_TRUE(Get<CheckBox>(L"chkDMFastImprove").Checked());
}

TEST_F(CodePageTest, EachReadingModeHasItsBox) {
    Show([this] { Slot().CodeType(18); });
    for (int mode = 0; mode < 7; ++mode) {
        const bool before = Slot().MaxicodeEnable(mode);
        EXPECT_EQ(Get<CheckBox>(L"chkMaxicodeEnable", mode).Checked(), before);
        Get<CheckBox>(L"chkMaxicodeEnable", mode).Toggle();
        EXPECT_EQ(Slot().MaxicodeEnable(mode), !before) << mode;
    }
    EXPECT_TRUE(editor->Modified());
    EXPECT_EQ(editor->Root().Find(L"chkMaxicodeEnable", 7), nullptr);
}

TEST_F(CodePageTest, StringsOfTheCodeAreStoredWhenThePageIsLeft) {
    Show([this] { root.Codes().Combination(1); });
    Box(L"mbeCodeLocalNoRead").TypeText(L"x");
    Box(L"mbeCodeLocalMultipleRead").TypeText(L"y");
    EXPECT_TRUE(editor->Modified());
    Click(L"CodeDef");
    EXPECT_EQ(Slot().NoReadString(), L"xN1\r");
    EXPECT_EQ(Slot().MultipleReadString(), L"yM1");
}

TEST_F(CodePageTest, AFailingHandlerIsShownUnderItsName) {
    Show([this] { Slot().CodeType(1); });
    root.Codes().Remove(1);
    Get<CheckBox>(L"chkCheckDigit").Toggle();
    Option(L"optLengthFixed").Choose();
    Press(L"3CodeType");
    Type(L"txtMinLength", L"5");
    bench.platform.pump.ProcessPending();
    std::wstring all;
    for (const platform::MessageBox& box : Boxes())
        all += box.text.substr(0, box.text.find(L':')) + L" ";
    EXPECT_EQ(all, L"AddOnControl.chkCheckDigit_Click\n91 AddOnControl.optLengthFixed_Click\n91 "
                   L"AddOnControl.tbrCodeType_ButtonClick\n91 AddOnControl.txtMinLength_Validate\n91 ");
}

struct SeveralCodesTest : CodePageTest {
    SeveralCodesTest() : CodePageTest(test::Sample("tunnel.json")) {}
};

TEST_F(SeveralCodesTest, AnotherCodeIsSeenFromItsTop) {
    const test::FixedFont font(150);
    editor->Layout({640, 480}, font);
    Show([this] { Slot().CodeType(2); }); // with a check digit, behind the length
    auto& page = Get<controls::Frame>(L"fraCode");
    Option(L"optLengthFixed").Choose();
    editor->Form().SetFocus(Number(L"txtLength"));
    Click(L"Code1");
    EXPECT_GT(page.Scroll().y, 0);
    root.Codes().Code(2)->Enabled(false); // all that could have the focus goes
    Click(L"Code2");
    EXPECT_EQ(page.Scroll().y, 0);
}

struct NoDataMatrixTest : CodePageTest {
    NoDataMatrixTest() : CodePageTest(test::With(3002, {})) {}
};

TEST_F(NoDataMatrixTest, AFieldThatTheDeviceLacksSaysSo) {
    Show([this] { Slot().CodeType(12); });
    EXPECT_FALSE(Number(L"txtDMCols").Enabled());
    EXPECT_NE(Number(L"txtDMCols").ToolTip().find(L"not on this device"), std::wstring::npos);
    EXPECT_TRUE(Number(L"txtDMRows").Enabled());
    EXPECT_EQ(Number(L"txtDMRows").Hint(), L"Rows, parameter 3003, 0 to 144");
    EXPECT_EQ(Get<CheckBox>(L"chkDMRectangular").Hint(), L"Rectangular, parameter 3005");
}

TEST(CodeLengthWithoutRange, AMaximumOf0LeavesBothBoxesWithWhatTheModelHolds) {
    sim::SystemDescription system = test::Sample("tiny.json");
    for (sim::ParameterDescription& parameter : system.devices.front().parameters)
        if (parameter.number == 3 || parameter.number == 4)
            parameter.details.hasRange = false;
    struct Opened : CodePageTest {
        using CodePageTest::CodePageTest;
        void TestBody() override {}
    } it(system);
    it.Show([&] {
        it.Slot().Enabled(true);
        it.Slot().CodeType(0);
        it.Slot().SetLength(0, 5, 9);
    });
    it.Type(L"txtMaxLength", L"0");
    it.Type(L"txtMaxLength", L"0");
    EXPECT_EQ(it.Number(L"txtMaxLength").Value(), it.Slot().MaxLength());
    EXPECT_EQ(it.Number(L"txtMinLength").Value(), it.Slot().MinLength());
}

} // namespace
} // namespace orv::editor
