// Whatever fails, the box names the handler that it failed in, and the editor goes on.
#include <set>

#include "controls/check_list.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/tab_strip.h"
#include "controls/toolbar.h"
#include "fixture.h"
#include "tests/controls/fixture.h"
#include "tests/editor/page_reading.h"
#include "text/error.h"

namespace orv::editor {
namespace {

using controls::Kind;
using controls::Widget;

struct FailingFont : test::FixedFont {
    int LineHeight() const override { throw Error(error_number::kOverflow); }
};

/// Every slot is in use, each with a symbology of its own, and the items between them show every field.
struct HandlerFaultsTest : test::EditorFixture {
    std::set<std::wstring> named;
    bool closingFails = false;

    HandlerFaultsTest() : EditorFixture(test::Sample("tunnel.json")) {
        for (model::CodeDef& code : root.Codes())
            code.Enabled(true);
        for (model::CodeDef& code : root.Codes())
            code.CheckDigit(true);
        root.Codes().Code(10)->CodeType(18);
        root.Codes().NoReadMessage(0);
        root.CodeID(2);
        int cut = 0;
        for (model::OutItem& item : root.AdvancedFormats().Item(1).OutItems()) {
            item.Alignment(1);
            item.CodeCut(1 + cut++ % 2);
            item.CodeNumber(1);
        }
        editor->BuildTree();
    }
    void CloseAddOn() override {
        if (closingFails)
            throw Error(error_number::kOverflow);
        EditorFixture::CloseAddOn();
    }

    /// `gesture` fails in that handler alone; afterwards the page is shown anew, and agrees with the model.
    template <typename Gesture>
    void Expect(const std::wstring& handler, const std::wstring& key, Gesture gesture) {
        SCOPED_TRACE(std::string(handler.begin(), handler.end()));
        bench.platform.boxes.shown.clear();
        gesture();
        bench.platform.pump.ProcessPending();
        rootFails = false;
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].text, handler + L"\n6: Overflow");
        named.insert(handler);
        bench.platform.boxes.shown.clear();
        Click(key.c_str());
        bench.platform.pump.ProcessPending();
        EXPECT_TRUE(Boxes().empty());
        const std::wstring differs = test::Disagreement(editor->Root(), root, bench.state);
        EXPECT_EQ(std::string(differs.begin(), differs.end()), "");
    }
    template <typename Gesture>
    void ExpectWithoutRoot(const std::wstring& handler, const std::wstring& key, Gesture gesture) {
        Expect(L"AddOnControl." + handler, key, [&] {
            rootFails = true;
            gesture();
        });
    }

    std::vector<Widget*> UsableBelow(Widget& below) {
        std::vector<Widget*> usable;
        for (const auto& child : below.Children()) {
            if (child->EffectivelyVisible() && child->EffectivelyEnabled())
                usable.push_back(child.get());
            for (Widget* deeper : UsableBelow(*child))
                usable.push_back(deeper);
        }
        return usable;
    }
    /// Each field of a page that stores one value.
    void ExpectOfFields(const std::wstring& key, const wchar_t* page) {
        for (Widget* widget : UsableBelow(*editor->Root().Find(page)))
            if (widget->EffectivelyVisible() && widget->EffectivelyEnabled())
                ExpectOf(*widget, key);
    }
    void ExpectOf(Widget& widget, const std::wstring& key) {
        const std::wstring name = widget.Name();
        if (auto* check = dynamic_cast<controls::CheckBox*>(&widget))
            ExpectWithoutRoot(name + L"_Click", key, [&] { check->Toggle(); });
        else if (auto* option = dynamic_cast<controls::OptionButton*>(&widget); option && !option->Chosen())
            ExpectWithoutRoot(name + L"_Click", key, [&] { option->Choose(); });
        else if (auto* combo = dynamic_cast<controls::ComboBox*>(&widget); combo && combo->Entries().size() > 1)
            ExpectWithoutRoot(name + L"_Click", key, [&] { combo->Select(combo->Selected() == 0 ? 1 : 0); });
        else if (auto* bytes = dynamic_cast<controls::MBEdit*>(&widget))
            ExpectOfBytes(*bytes, key);
        else if (auto* number = dynamic_cast<controls::NumberBox*>(&widget))
            ExpectOfNumber(*number, key);
    }
    void ExpectOfBytes(controls::MBEdit& box, const std::wstring& key) {
        // A box at its limit takes another character for those that are selected.
        editor->Form().SetFocus(box);
        box.SetSelection(0, box.TextLength());
        box.TypeText(box.Text() == L"z" ? L"y" : L"z");
        ExpectWithoutRoot(box.Name() + L"_Validate", key,
                          [&] { editor->Form().SetFocus(Get<controls::Tree>(L"tvw")); });
    }
    void ExpectOfNumber(controls::NumberBox& box, const std::wstring& key) {
        if (box.Least() == box.Greatest())
            return;
        const bool up = box.Value() < box.Greatest();
        ExpectWithoutRoot(L"ud" + box.Name().substr(3) + L"_Change", key, [&] { box.Step(up ? 1 : -1); });
        ExpectWithoutRoot(box.Name() + L"_Validate", key, [&] {
            box.Edit(std::to_wstring(box.Value() == box.Least() ? box.Greatest() : box.Least()));
            box.Commit();
        });
    }
};

/// Each handler that stores the value of one field.
const char kFieldHandlers[] =
    "cboAddon_Click cboAlign_Click cboChkDgtType39_Click cboChkDgtTypeIL_Click cboCodeCut_Click "
    "cboCodeID_Click cboCodeSel_Click cboCutPatternMode_Click cboDeviceSel_Click cboDiagsEvent_Click "
    "cboFormat_Click cboGlobNoRead_Click cboGlobalScaleType_Click cboItemAlign_Click cboItemType_Click "
    "cboLinkTo_Click cboMultiReadMsg_Click cboNoReadMsg_Click cboPostalDirection_Click "
    "cboPostalSymbology_Click cboRSSType_Click cboScaleType_Click cboSlotsCount_Click "
    "cboStartCharTx_Click cboStopCharTx_Click chkCheckDigit_Click chkDMFastImprove_Click "
    "chkDMRectangular_Click chkMaxicodeEnable_Click chkOptional_Click mbeAdvFmtHeader_Validate "
    "mbeAdvFmtTerminator_Validate mbeAlignFiller_Validate mbeCodeLocalMultipleRead_Validate "
    "mbeCodeLocalNoRead_Validate mbeCustomCodeID_Validate mbeCutPattern_Validate "
    "mbeGroupLocalMultipleReadStr_Validate mbeGroupLocalNoReadStr_Validate mbeHeader_Validate "
    "mbeItemAlignFiller_Validate mbeMultiReadStr_Validate mbeNoReadStr_Validate mbeSeparator_Validate "
    "mbeTerminator_Validate mbeUserString_Validate optAdvFormat_Click optCodeComb_Click "
    "optLengthFixed_Click optLengthVariable_Click optOR_Click optStdFormat_Click optXOR_Click "
    "txtAlignLength_Validate txtCutLeading_Validate txtCutTrailing_Validate txtDMCols_Validate "
    "txtDMRows_Validate txtFormatLen_Validate txtItemAlignLength_Validate txtLength_Validate "
    "txtMaxLength_Validate txtMinLength_Validate txtModuleSize_Validate txtPostalBarDistance_Validate "
    "txtPostalMaxBarcount_Validate txtPostalMinBarcount_Validate udAlignLength_Change udCutLeading_Change "
    "udCutTrailing_Change udDMCols_Change udDMRows_Change udFormatLen_Change udItemAlignLength_Change "
    "udLength_Change udMaxLength_Change udMinLength_Change udModuleSize_Change udPostalBarDistance_Change "
    "udPostalMaxBarcount_Change udPostalMinBarcount_Change ";

TEST_F(HandlerFaultsTest, OfEachFieldThatStoresAValue) {
    const auto showAndTry = [this](const std::wstring& key, const wchar_t* page) {
        Click(key.c_str());
        ExpectOfFields(key, page);
    };
    showAndTry(L"CodeDef", L"fraCodeDef");
    for (const wchar_t* group : {L"Group1", L"Group2"})
        showAndTry(group, L"fraGroupDef");
    for (const wchar_t* format : {L"Format1", L"Format2"})
        for (int item = 0; item < root.AdvancedFormats().Item(1).OutItems().Count(); ++item) {
            Click(format);
            Get<controls::PictureList>(L"pls").Select(item);
            ExpectOfFields(format, L"fraAdvFormat");
        }
    for (const bool advanced : {true, false}) {
        root.Advanced(advanced);
        editor->BuildTree();
        showAndTry(L"FormatDef", L"fraFormatDef");
    }
    root.Codes().Combination(1);
    editor->BuildTree();
    for (const model::CodeDef& code : root.Codes())
        showAndTry(L"Code" + std::to_wstring(code.Index()), L"fraCode");
    std::string all;
    for (const std::wstring& handler : named)
        all += std::string(handler.begin() + 13, handler.end()) + " ";
    EXPECT_EQ(all, kFieldHandlers);
}

TEST_F(HandlerFaultsTest, OfTheShell) {
    const auto press = [this](const wchar_t* name) { Button(name).Press(); };
    ExpectWithoutRoot(L"tvw_NodeClick", L"CodeDef", [this] { Click(L"Code2"); });
    editor->SetModified(true);
    ExpectWithoutRoot(L"cmdApply_Click", L"CodeDef", [&] { press(L"cmdApply"); });
    ExpectWithoutRoot(L"cmdOK_Click", L"CodeDef", [&] { press(L"cmdOK"); });
    EXPECT_TRUE(saves.empty());
    EXPECT_EQ(closes, 0);
    closingFails = true;
    Expect(L"AddOnControl.cmdCancel_Click", L"CodeDef", [&] { press(L"cmdCancel"); });
    closingFails = false;
    press(L"cmdCancel");
    EXPECT_EQ(closes, 1);
    const FailingFont failing;
    const test::FixedFont font;
    Expect(L"AddOnControl.UserControl_Resize", L"CodeDef", [&] {
        editor->Resize({800, 560}, failing);
        editor->Layout({800, 560}, font);
    });
    editor->windowOf = [](const Widget&) { return device::WindowHandle{7}; };
    Click(L"FormatDef");
    Expect(L"AddOnControl.mbeHeader_GotFocus", L"FormatDef", [&] {
        bench.host.Gate().FailNamed("SupportObject.EditGotFocus", 1, 6, L"Overflow");
        editor->Form().SetFocus(Box(L"mbeHeader"));
    });
}

TEST_F(HandlerFaultsTest, OfListsTabsAndJumps) {
    Click(L"Group1");
    auto& codes = Get<controls::CheckList>(L"lvwCodes");
    codes.Select(1);
    ExpectWithoutRoot(L"lvwCodes_ItemCheck", L"Group1", [&] { codes.Toggle(2); });
    ExpectWithoutRoot(L"lvwCodes_DblClick", L"Group1", [&] { codes.Activate(1); });
    ExpectWithoutRoot(L"cmdGoGrpCode_Click", L"Group1", [&] { Button(L"cmdGoGrpCode").Press(); });
    ExpectWithoutRoot(L"tbs_Click", L"Group1", [&] { Get<controls::TabStrip>(L"tbs").Select(1); });
    Click(L"Code1");
    ExpectWithoutRoot(L"tbrCodeType_ButtonClick", L"Code1", [&] { Get<controls::Toolbar>(L"tbrCodeType").Click(0); });
    Click(L"FormatDef");
    auto& formats = Get<controls::PictureList>(L"plsFormats");
    formats.Select(0);
    ExpectWithoutRoot(L"plsFormats_DblClick", L"FormatDef", [&] {
        editor->Form().SetFocus(formats);
        editor->Form().RouteKey({.key = controls::Key::Return});
    });
    bench.platform.desktop.saveFileNames = {L"never written.txt"};
    ExpectWithoutRoot(L"cmdExport_Click", L"FormatDef", [&] { Button(L"cmdExport").Press(); });
}

TEST_F(HandlerFaultsTest, OfTheItemsOfAFormat) {
    Click(L"Format1");
    auto& items = Get<controls::PictureList>(L"pls");
    using Command = controls::PictureList::Command;
    bench.platform.boxes.defaultAnswer = platform::Answer::Yes;
    items.Select(0);
    ExpectWithoutRoot(L"pls_ItemSelect", L"Format1", [&] { items.Select(1); });
    items.Select(0);
    ExpectWithoutRoot(L"pls_ItemMove", L"Format1", [&] { items.Do(Command::MoveDown); });
    ExpectWithoutRoot(L"cmdTransports_Click", L"Format1", [&] { Button(L"cmdTransports").Press(); });
    items.Select(0);
    ExpectWithoutRoot(L"cmdGoItemCode_Click", L"Format1", [&] { Button(L"cmdGoItemCode").Press(); });
    const std::int32_t count = root.AdvancedFormats().Item(1).OutItems().Count();
    rootFails = true;
    items.Do(Command::Delete);
    Get<controls::Toolbar>(L"tbrMisc").Activate(0);
    rootFails = false;
    ASSERT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.pls_ItemDelete\n6: Overflow");
    EXPECT_EQ(Boxes()[1].text, L"Error in pls_ItemDrop! Overflow") << "the one message that has a form of its own";
    EXPECT_EQ(root.AdvancedFormats().Item(1).OutItems().Count(), count);
}

TEST_F(HandlerFaultsTest, OfTheTransports) {
    Click(L"Format1");
    inDialog.push_back([this](controls::Dialog& dialog) {
        auto& list = dynamic_cast<controls::CheckList&>(*dialog.Form().Root().Find(L"lvw"));
        rootFails = true;
        list.Select(1);
        dynamic_cast<controls::Button&>(*dialog.Form().Root().Find(L"cmdOK")).Press();
        rootFails = false;
        EXPECT_FALSE(dialog.Closed());
        dialog.Dismiss();
    });
    Button(L"cmdTransports").Press();
    ASSERT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(Boxes()[0].text, L"frmTransports.lvw_ItemClick\n6: Overflow");
    EXPECT_EQ(Boxes()[1].text, L"frmTransports.cmdOK_Click\n6: Overflow");
}

} // namespace
} // namespace orv::editor
