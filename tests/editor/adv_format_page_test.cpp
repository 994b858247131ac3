#include "adv_format_fixture.h"
#include "controls/check_list.h"
#include "tests/controls/fixture.h"

namespace orv::editor {
namespace {

using namespace model::item_category;
using controls::Key;
using controls::PictureList;
using controls::Toolbar;

struct AdvFormatPageTest : test::AdvFormatFixture {
    int Selected() { return List().Selected() + 1; }
    void Activate(const wchar_t* bar, const wchar_t* key) {
        auto& buttons = Get<Toolbar>(bar);
        buttons.Activate(buttons.IndexOf(key));
    }
    void Fill(int format, int count) {
        while (Format(format).OutItems().Count() < count)
            Append(format, kGlobal, 6);
    }
};

TEST_F(AdvFormatPageTest, ShowsTheFormatAndItsItems) {
    EXPECT_EQ(Caption(L"lblPage"), L"Advanced format 1");
    EXPECT_EQ(Get<controls::TextBox>(L"txtTransports").Text(), Format(1).GetLabel());
    EXPECT_EQ(Box(L"mbeAdvFmtHeader").Text(), L"<STX>");
    EXPECT_EQ(Box(L"mbeAdvFmtTerminator").Text(), L"<ETX>");
    EXPECT_EQ(Combo(L"cboGlobalScaleType").SelectedData(), 2);
    EXPECT_EQ(Combo(L"cboAlign").SelectedData(), 1);
    EXPECT_EQ(Get<controls::NumberBox>(L"txtAlignLength").Value(), 40);
    EXPECT_EQ(Box(L"mbeAlignFiller").Text(), L".");
    EXPECT_EQ(Caption(L"lblItems"), L"Items 5 of 20");
    ASSERT_EQ(List().Rows().size(), 5u);
    EXPECT_EQ(List().Rows()[1].caption, L"\";<Space><GS>\"");
    EXPECT_EQ(List().Rows()[2].caption, catalogue.Item(L"Length").ItemText() + L" Dec 3, group 1");
    EXPECT_EQ(List().Rows()[2].picture, L"Length");
    EXPECT_EQ(Selected(), 1);
    EXPECT_FALSE(editor->Modified());
    Click(L"Format4");
    EXPECT_EQ(Caption(L"lblItems"), L"Items 0 of 20");
    EXPECT_EQ(Selected(), 0);
}

TEST_F(AdvFormatPageTest, FieldsOfTheFormatStoreTheirOwnSetting) {
    model::AdvancedFormat& format = Format(2);
    Click(L"Format2");
    Choose(L"cboGlobalScaleType", 3);
    Choose(L"cboAlign", 2);
    Get<controls::NumberBox>(L"txtAlignLength").Edit(L"66");
    Box(L"mbeAdvFmtHeader").SetText(L"");
    Box(L"mbeAdvFmtHeader").TypeText(L"H");
    Box(L"mbeAdvFmtTerminator").TypeText(L"T");
    EXPECT_EQ(format.Header(), L"<") << "not before it is left";
    EXPECT_EQ(Output().substr(0, 10), L"Output: H ");
    EXPECT_TRUE(editor->CommitPending());
    EXPECT_EQ(format.GlobalScaleType(), 3);
    EXPECT_EQ(format.Alignment(), 2);
    EXPECT_EQ(format.AlignLength(), 66);
    EXPECT_EQ(format.Header(), L"H");
    EXPECT_EQ(format.Terminator(), L"T>\r\n");
    EXPECT_EQ(Format(1).GlobalScaleType(), 2) << "another format";
    EXPECT_TRUE(editor->Modified());
}

TEST_F(AdvFormatPageTest, TheOutputIsHeaderItemsAndTerminator) {
    EXPECT_EQ(Output(),
              L"Output: <STX> [Code, group 1] [\";<Space><GS>\"] [Length Dec 3] [X position Dec 5] [Code, group 3] "
              L"<ETX>");
    Choose(L"cboItemType", 256 + 6);
    EXPECT_EQ(Output().substr(0, 28), L"Output: <STX> [Hours Dec 2] ");
    EXPECT_EQ(List().Rows()[0].caption, L"Hours Dec 2");
    EXPECT_EQ(Selected(), 1);
}

TEST_F(AdvFormatPageTest, AnItemIsDroppedWhereTheMarkIs) {
    Click(L"Format2");
    const std::wstring before = Keys(2);
    List().onDrop(L"Length", 0);
    EXPECT_EQ(Keys(2), L"Length " + before);
    EXPECT_EQ(Selected(), 1) << "the new item is selected";
    List().onDrop(L"Hours", 5);
    EXPECT_EQ(Keys(2), L"Length " + before + L" Hours");
    EXPECT_EQ(Selected(), 6);
    for (std::int16_t position = 1; position <= 6; ++position)
        EXPECT_EQ(Item(2, position).Index(), position);
    EXPECT_EQ(Caption(L"lblItem"), L"Item 6");
    EXPECT_TRUE(editor->Modified());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(AdvFormatPageTest, ADroppedItemStartsWithItsDefaults) {
    struct Case {
        const wchar_t* key;
        std::int32_t category;
        std::int32_t type;
        std::int32_t format;
        int length;
    };
    for (const Case& c : {Case{L"Length", kCodeRelated, 1, 0, 3}, Case{L"Code", kCodeRelated, 0, 0, 0},
                          Case{L"ReadingsMask", kCodeRelated, 2, 1, 0}, Case{L"ScannerStatus", kGlobal, 2, 1, 1},
                          Case{L"Diagnostics", kGlobal, 28, 3, 0}, Case{L"MiscString", kMiscellaneous, 0, 0, 0}}) {
        Format(4).OutItems().Clear();
        Click(L"Format4");
        List().onDrop(c.key, 0);
        const model::OutItem& item = Item(4, 1);
        EXPECT_EQ(item.ItemCategory(), c.category);
        EXPECT_EQ(item.CodeRelType(), c.type);
        EXPECT_EQ(item.GlobalType(), c.type);
        EXPECT_EQ(item.FormatType(), c.format);
        EXPECT_EQ(item.FormatLength(), c.length);
        EXPECT_EQ(item.AlignFiller(), L" ");
        EXPECT_EQ(item.ScaleType(), 1);
        EXPECT_EQ(item.CodeNumber(), 0) << "nothing was selected";
    }
    Click(L"Format1");
    List().Select(4);
    ASSERT_EQ(Combo(L"cboCodeSel").SelectedData(), 3);
    List().onDrop(L"Length", 1);
    EXPECT_EQ(Item(1, 2).CodeNumber(), 3) << "the code that was selected";
}

TEST_F(AdvFormatPageTest, AFullListTakesNoMore) {
    Fill(4, 20);
    Click(L"Format4");
    const std::wstring before = Keys(4);
    List().onDrop(L"Length", 0);
    EXPECT_EQ(Keys(4), before);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"Maximum number of items reached, no more items can be added!");
    EXPECT_EQ(Boxes()[0].title, L"Warning");
    EXPECT_EQ(Boxes()[0].icon, platform::Icon::Warning);
    EXPECT_EQ(Boxes()[0].buttons, platform::Buttons::Ok);
    EXPECT_FALSE(editor->Modified());
    Activate(L"tbrGlobal", L"Hours");
    EXPECT_EQ(Boxes().size(), 2u) << "nor from the keyboard";
}

TEST_F(AdvFormatPageTest, AFailedDropSaysSoInItsOwnWords) {
    List().onDrop(L"NoSuchType", 0);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"Error in pls_ItemDrop! Invalid procedure call or argument");
    EXPECT_EQ(Boxes()[0].title, L"Output Format Addon");
    EXPECT_FALSE(editor->Modified());
    EXPECT_EQ(List().Rows().size(), 5u);
}

TEST_F(AdvFormatPageTest, WhatWasTypedBelongsToTheItemThatItWasTypedFor) {
    const std::wstring before = Item(1, 4).AlignFiller();
    controls::MBEdit& filler = Box(L"mbeItemAlignFiller");
    editor->Form().SetFocus(filler);
    filler.SetSelection(0, filler.TextLength());
    filler.TypeText(L"*");
    editor->Form().SetFocus(Button(L"cmdAbout")); // lets go of the field without asking it
    ASSERT_TRUE(filler.Pending());
    List().Select(3);
    EXPECT_EQ(Item(1, 1).AlignFiller(), L"*");
    EXPECT_EQ(Item(1, 4).AlignFiller(), before);
    EXPECT_EQ(Selected(), 4);
}

TEST_F(AdvFormatPageTest, MovesRenumberAndKeepTheItemSelected) {
    struct Case {
        int item;
        int to;
        const wchar_t* order;
        int selected;
    };
    for (const Case& c : {Case{1, 4, L"Minutes Seconds Hours", 3}, Case{1, 3, L"Minutes Hours Seconds", 2},
                          Case{3, 1, L"Seconds Hours Minutes", 1}, Case{2, 1, L"Minutes Hours Seconds", 1},
                          Case{1, 9, L"Minutes Seconds Hours", 3}}) {
        Format(4).OutItems().Clear();
        for (const std::int32_t type : {6, 7, 8})
            Append(4, kGlobal, type);
        Click(L"Format4");
        editor->SetModified(false);
        List().onMove(c.item, c.to);
        EXPECT_EQ(Keys(4), c.order) << c.item << " to " << c.to;
        EXPECT_EQ(Selected(), c.selected);
        for (std::int16_t position = 1; position <= 3; ++position)
            EXPECT_EQ(Item(4, position).Index(), position);
        EXPECT_TRUE(editor->Modified());
    }
    editor->SetModified(false);
    for (const int gap : {1, 2})
        List().onMove(1, gap);
    EXPECT_FALSE(editor->Modified()) << "its own place is no move";
    editor->Form().SetFocus(List());
    List().Select(1);
    editor->Form().RouteKey({.key = Key::Up, .alt = true});
    EXPECT_EQ(Keys(4), L"Seconds Minutes Hours");
    editor->Form().RouteKey({.key = Key::Down, .alt = true});
    EXPECT_EQ(Keys(4), L"Minutes Seconds Hours");
    EXPECT_EQ(Selected(), 2);
}

TEST_F(AdvFormatPageTest, DeletingAsksFirst) {
    Click(L"Format2");
    List().Select(3);
    editor->Form().SetFocus(List());
    bench.platform.boxes.answers = {platform::Answer::No, platform::Answer::Yes};
    editor->Form().RouteKey({.key = Key::Delete});
    EXPECT_EQ(Format(2).OutItems().Count(), 4);
    EXPECT_FALSE(editor->Modified());
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"Remove selected item?");
    EXPECT_EQ(Boxes()[0].title, L"Warning");
    EXPECT_EQ(Boxes()[0].icon, platform::Icon::Warning);
    EXPECT_EQ(Boxes()[0].buttons, platform::Buttons::YesNo);
    EXPECT_EQ(Boxes()[0].preset, platform::Answer::No);
    editor->Form().RouteKey({.key = Key::Delete});
    EXPECT_EQ(Format(2).OutItems().Count(), 3);
    EXPECT_EQ(Selected(), 3) << "the last one left";
    EXPECT_EQ(Caption(L"lblItem"), L"Item 3");
    EXPECT_EQ(Caption(L"lblItems"), L"Items 3 of 20");
    EXPECT_TRUE(editor->Modified());
}

TEST_F(AdvFormatPageTest, ThePaletteOffersTheCatalogueInThreeSections) {
    const struct {
        const wchar_t* name;
        std::int32_t category;
    } sections[] = {{L"tbrCodeRel", kCodeRelated}, {L"tbrGlobal", kGlobal}, {L"tbrMisc", kMiscellaneous}};
    std::size_t all = 0;
    for (const auto& section : sections) {
        for (const Toolbar::Button& button : Get<Toolbar>(section.name).Buttons()) {
            const model::ToolItem& entry = catalogue.Item(button.key);
            EXPECT_EQ(entry.ItemCategory(), section.category);
            EXPECT_EQ(button.caption, entry.ItemText());
            EXPECT_EQ(button.enabled, entry.Supported());
            EXPECT_EQ(button.tip.find(L"not offered") != std::wstring::npos, !entry.Supported());
        }
        all += Get<Toolbar>(section.name).Buttons().size();
    }
    EXPECT_EQ(all, static_cast<std::size_t>(catalogue.Count()));
    EXPECT_FALSE(catalogue.Item(L"StartSync").Supported());

    Click(L"Format2");
    List().Select(1);
    auto& bar = Get<Toolbar>(L"tbrMisc");
    editor->Form().SetFocus(bar);
    editor->Form().RouteKey({.key = Key::Return});
    EXPECT_EQ(Item(2, 3).GetItemTypeKey(), L"MiscString") << "behind the selected one";
    EXPECT_EQ(Selected(), 3);
    EXPECT_TRUE(bar.Focused()) << "for the next one";
    Click(L"Format4");
    Activate(L"tbrCodeRel", L"Code");
    Activate(L"tbrCodeRel", L"Length");
    Activate(L"tbrCodeRel", L"StartSync");
    EXPECT_EQ(Keys(4), L"Code Length");
}

TEST_F(AdvFormatPageTest, AnItemIsDraggedFromThePalette) {
    const test::FixedFont font;
    Click(L"Format2");
    editor->Layout({1600, 1000}, font);
    List().SetGeometry({{0, 0, List().Bounds().width, List().Bounds().height}, 22, 4});
    auto& bar = Get<Toolbar>(L"tbrCodeRel");
    const controls::Rect button = bar.PlaceOf(bar.IndexOf(L"Length"));
    bar.Press({button.x + 5, button.y + 5});
    const controls::Point target = controls::InWidget(bar, controls::InForm(List(), {20, 2 * 22 + 2}));
    bar.PointTo(target, {4, 4});
    bar.Release(target);
    EXPECT_EQ(Item(2, 3).GetItemTypeKey(), L"Length") << "at the gap behind the second row";
    EXPECT_EQ(Format(2).OutItems().Count(), 5);
}

TEST_F(AdvFormatPageTest, EachFormatHasASelectionOfItsOwn) {
    List().Select(3);
    Click(L"Format2");
    EXPECT_EQ(Selected(), 1);
    List().Select(1);
    Click(L"Format1");
    EXPECT_EQ(Selected(), 4);
    EXPECT_EQ(Caption(L"lblItem"), L"Item 4");
    Format(2).OutItems().Clear();
    Append(2, kGlobal, 6);
    Click(L"Format2");
    EXPECT_EQ(Selected(), 1) << "the one it had is gone";
}

TEST_F(AdvFormatPageTest, ANumberThatMayNotStandKeepsTheSelection) {
    List().Select(3);
    editor->Form().SetFocus(Get<controls::NumberBox>(L"txtFormatLen"));
    Get<controls::NumberBox>(L"txtFormatLen").Edit(L"9");
    List().Select(0);
    EXPECT_EQ(Selected(), 4);
    List().onDrop(L"Hours", 0);
    List().onMove(4, 1);
    EXPECT_EQ(Format(1).OutItems().Count(), 5);
    EXPECT_EQ(Item(1, 4).GetItemTypeKey(), L"XPos");
    Get<controls::NumberBox>(L"txtFormatLen").Edit(L"5");
    List().Select(0);
    EXPECT_EQ(Selected(), 1);
}

TEST_F(AdvFormatPageTest, ChosenTransportsAreShownEverywhere) {
    auto& tree = Get<controls::Tree>(L"tvw");
    Click(L"Format4");
    const auto chooseFirst = [](controls::Dialog& dialog) {
        auto* list = dynamic_cast<controls::CheckList*>(dialog.Form().Root().Find(L"lvw"));
        for (int row = 0; row < static_cast<int>(list->Rows().size()); ++row)
            if (!list->Rows()[static_cast<std::size_t>(row)].greyed) {
                list->Toggle(row);
                break;
            }
        dynamic_cast<controls::Button*>(dialog.Form().Root().Find(L"cmdOK"))->Press();
    };
    Button(L"cmdTransports").Press(); // dismissed
    EXPECT_EQ(Format(4).Transports(), 0);
    EXPECT_FALSE(editor->Modified());
    inDialog.push_back(chooseFirst);
    Button(L"cmdTransports").Press();
    EXPECT_NE(Format(4).Transports(), 0);
    EXPECT_EQ(Get<controls::TextBox>(L"txtTransports").Text(), Format(4).GetLabel());
    EXPECT_NE(Format(4).GetLabel(), L"(None)");
    EXPECT_EQ(tree.FindNode(L"Format4")->text, L"4 - " + Format(4).GetLabel());
    EXPECT_TRUE(editor->Modified());
}

struct LackingTest : test::AdvFormatFixture {
    LackingTest() : AdvFormatFixture(test::With(344, {})) {}
};

TEST_F(LackingTest, AFieldThatTheDeviceLacksSaysSo) {
    EXPECT_FALSE(Box(L"mbeAlignFiller").Enabled());
    EXPECT_NE(Box(L"mbeAlignFiller").ToolTip().find(L"not on this device"), std::wstring::npos);
    EXPECT_TRUE(Combo(L"cboAlign").Enabled());
}

} // namespace
} // namespace orv::editor
