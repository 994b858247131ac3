#include <set>

#include "adv_format_fixture.h"
#include "editor/item_texts.h"
#include "tests/controls/fixture.h"

namespace orv::editor {
namespace {

using namespace model::item_category;
using controls::ComboBox;
using controls::NumberBox;

struct ItemPanelTest : test::AdvFormatFixture {
    static std::wstring Named(const std::vector<ComboBox::Entry>& entries) {
        std::wstring all;
        for (const ComboBox::Entry& entry : entries)
            all += (all.empty() ? L"" : L"|") + entry.text;
        return all;
    }
    void CheckKeys() {
        std::set<wchar_t> used;
        const std::function<void(const controls::Widget&)> collect = [&](const controls::Widget& widget) {
            const wchar_t letter = widget.AccessKey();
            if (letter != 0 && widget.EffectivelyVisible()) {
                EXPECT_TRUE(used.insert(letter).second) << "twice: " << static_cast<char>(letter);
            }
            for (const auto& child : widget.Children())
                collect(*child);
        };
        collect(editor->Root());
    }
    NumberBox& Length() { return Get<NumberBox>(L"txtFormatLen"); }
};

TEST_F(ItemPanelTest, EachKindOfItemShowsItsOwnControls) {
    const wchar_t* const kControls[] = {L"lblItemAlign",     L"cboItemAlign",      L"lblCodeSel",    L"cboCodeSel",
                                        L"cmdGoItemCode",    L"fraDataFormat",     L"fraMiscString", L"fraCodeCutting",
                                        L"fraDeviceSel",     L"lblScaleType",      L"cboScaleType",  L"fraItemAlign",
                                        L"fraCodeCutSimple", L"fraCodeCutPattern", L"fraDiagsEvent"};
    const std::wstring align = L"lblItemAlign cboItemAlign ";
    const std::wstring code = align + L"lblCodeSel cboCodeSel cmdGoItemCode ";
    struct Case {
        std::int32_t category;
        std::int32_t type;
        std::int32_t alignment;
        std::int32_t cut;
        std::wstring shown;
    };
    const Case cases[] = {
        {kCodeRelated, 0, 0, 0, code + L"fraCodeCutting "},
        {kCodeRelated, 0, 0, 1, code + L"fraCodeCutting fraCodeCutSimple "},
        {kCodeRelated, 0, 2, 2, code + L"fraCodeCutting fraItemAlign fraCodeCutPattern "},
        {kCodeRelated, 1, 0, 0, code + L"fraDataFormat "},
        {kCodeRelated, 1, 0, 1, code + L"fraDataFormat fraCodeCutSimple "}, // left over from a code, and seen
        {kCodeRelated, 4, 0, 0, code + L"fraDataFormat fraDeviceSel "},
        {kCodeRelated, 5, 1, 0, code + L"fraDataFormat lblScaleType cboScaleType fraItemAlign "},
        {kCodeRelated, 29, 0, 0, code},
        {kGlobal, 6, 0, 0, align + L"fraDataFormat "},
        {kGlobal, 2, 0, 0, align + L"fraDataFormat fraDeviceSel "},
        {kGlobal, 14, 0, 0, align + L"fraDataFormat lblScaleType cboScaleType "},
        {kGlobal, 29, 0, 0, align + L"fraDataFormat fraDeviceSel fraDiagsEvent "},
        {kGlobal, 31, 3, 0, align + L"fraItemAlign "},
        {kMiscellaneous, 29, 1, 1, L"fraMiscString "},
        {3, 0, 0, 2, align + L"fraCodeCutPattern "},
    };
    for (const Case& c : cases) {
        model::OutItem& item = ShowOnly(c.category, c.type);
        item.Alignment(c.alignment);
        item.CodeCut(c.cut);
        Click(L"Format4");
        std::wstring shown;
        for (const wchar_t* name : kControls)
            if (Visible(name))
                shown += std::wstring(name) + L" ";
        EXPECT_EQ(shown, c.shown) << c.category << " " << c.type << " cut " << c.cut;
        EXPECT_TRUE(Visible(L"cboItemType") && Visible(L"cboLinkTo"));
        EXPECT_FALSE(Visible(L"lblNoItem"));
    }
    Format(4).OutItems().Clear();
    Click(L"Format4");
    for (const wchar_t* name : kControls)
        EXPECT_FALSE(Visible(name));
    EXPECT_FALSE(Visible(L"cboItemType"));
    EXPECT_TRUE(Visible(L"lblNoItem"));
}

TEST_F(ItemPanelTest, ChoicesShowAndHideWhatDependsOnThem) {
    ShowOnly(kCodeRelated, 0);
    Choose(L"cboItemAlign", 2);
    EXPECT_TRUE(Visible(L"fraItemAlign"));
    Choose(L"cboItemAlign", 0);
    EXPECT_FALSE(Visible(L"fraItemAlign"));
    Choose(L"cboCodeCut", 1);
    EXPECT_TRUE(Visible(L"fraCodeCutSimple") && !Visible(L"fraCodeCutPattern"));
    Choose(L"cboCodeCut", 2);
    EXPECT_TRUE(!Visible(L"fraCodeCutSimple") && Visible(L"fraCodeCutPattern"));
    Choose(L"cboItemType", 256 + 29);
    EXPECT_TRUE(Visible(L"fraDiagsEvent") && !Visible(L"cboCodeSel") && !Visible(L"fraCodeCutting"));
}

TEST_F(ItemPanelTest, NoItemOfTheCatalogueShowsTwoThingsInOnePlaceOrUnderOneKey) {
    const test::FixedFont font;
    editor->Layout({800, 560}, font);
    const auto& page = Get<controls::Frame>(L"fraAdvFormat");
    EXPECT_FALSE(page.ScrollsDown() || page.ScrollsAcross());
    for (const model::CatalogueEntry& entry : model::Catalogue()) {
        for (const std::int32_t cut : {1, 2}) {
            model::OutItem& item = ShowOnly(entry.category, entry.type);
            item.Alignment(1);
            item.CodeCut(cut);
            Click(L"Format4");
            std::vector<const controls::Widget*> seen;
            for (const auto& child : editor->Root().Find(L"fraItem")->Children()) {
                if (!child->Visible())
                    continue;
                for (const controls::Widget* other : seen)
                    EXPECT_FALSE(child->Bounds().Overlaps(other->Bounds()))
                        << std::string(child->Name().begin(), child->Name().end()) << " in an item of type "
                        << entry.category << " " << int{entry.type};
                seen.push_back(child.get());
            }
            // A cut left over from another type is shown on top of all else, where letters are short.
            if (catalogue.Item(entry.key).IsCode())
                CheckKeys();
        }
        ShowOnly(entry.category, entry.type).Alignment(1);
        Click(L"Format4");
        CheckKeys();
    }
}

TEST_F(ItemPanelTest, EachFieldStoresItsOwnSetting) {
    using model::OutItem;
    model::OutItem& item = ShowOnly(kCodeRelated, 0);
    item.CodeCut(1);
    item.Alignment(1);
    Click(L"Format4");
    const struct {
        const wchar_t* name;
        NumberBox::Number value;
        std::function<NumberBox::Number()> stored;
    } numbers[] = {{L"txtItemAlignLength", 77, [&] { return item.AlignLength(); }},
                   {L"txtCutLeading", 5, [&] { return item.CodeCutLeading(); }},
                   {L"txtCutTrailing", 6, [&] { return item.CodeCutTrailing(); }}};
    for (const auto& number : numbers) {
        editor->SetModified(false);
        auto& box = Get<NumberBox>(number.name);
        editor->Form().SetFocus(box);
        box.Edit(std::to_wstring(number.value));
        EXPECT_TRUE(editor->CommitPending());
        EXPECT_EQ(number.stored(), number.value);
        EXPECT_TRUE(editor->Modified());
    }
    const struct {
        std::int32_t category;
        std::int32_t type;
        const wchar_t* name;
        std::int32_t value;
        std::function<std::int32_t(const OutItem&)> stored;
    } choices[] = {
        {kCodeRelated, 0, L"cboItemAlign", 2, [](auto& i) { return i.Alignment(); }},
        {kCodeRelated, 0, L"cboCodeCut", 2, [](auto& i) { return i.CodeCut(); }},
        {kCodeRelated, 0, L"cboCutPatternMode", 1, [](auto& i) { return i.CodeCutPatternMode(); }},
        {kCodeRelated, 0, L"cboLinkTo", 2, [](auto& i) { return i.LinkTo(); }},
        {kCodeRelated, 5, L"cboScaleType", 3, [](auto& i) { return i.ScaleType(); }},
        {kGlobal, 29, L"cboDiagsEvent", 3, [](auto& i) { return i.DiagnosticEvent(); }},
        {kGlobal, 29, L"cboDeviceSel", 2, [](auto& i) { return i.DeviceNumber(); }},
    };
    for (const auto& choice : choices) {
        OutItem& shown = ShowOnly(choice.category, choice.type);
        if (std::wstring(choice.name) == L"cboCutPatternMode") {
            shown.CodeCut(2);
            Click(L"Format4");
        }
        editor->SetModified(false);
        Choose(choice.name, choice.value);
        EXPECT_EQ(choice.stored(shown), choice.value) << std::string(choice.name, choice.name + 8);
        EXPECT_TRUE(editor->Modified());
    }
}

TEST_F(ItemPanelTest, TextsOfAnItemAreStoredWhenTheyAreLeft) {
    model::OutItem& item = ShowOnly(kCodeRelated, 0);
    item.CodeCut(2);
    item.Alignment(1);
    Click(L"Format4");
    Box(L"mbeItemAlignFiller").TypeText(L"0");
    Box(L"mbeCutPattern").TypeText(L"^?");
    EXPECT_EQ(item.CodeCutPattern(), L"");
    EXPECT_TRUE(editor->CommitPending());
    EXPECT_EQ(item.AlignFiller(), L"0");
    EXPECT_EQ(item.CodeCutPattern(), L"^?");
    model::OutItem& text = ShowOnly(kMiscellaneous, 0);
    Box(L"mbeUserString").TypeText(L"Line");
    EXPECT_EQ(Output(), L"Output: [\"Line\"]") << "as it is typed";
    EXPECT_EQ(List().Rows().front().caption, L"\"Line\"");
    EXPECT_EQ(text.StringText(), L"");
    editor->Form().SetFocus(Box(L"mbeUserString"));
    editor->Form().SetFocus(List());
    EXPECT_EQ(text.StringText(), L"Line");
}

TEST_F(ItemPanelTest, AnotherTypeKeepsFormatAndLengthThatItAllows) {
    struct Case {
        std::int32_t from;
        std::int32_t format;
        std::uint8_t length;
        std::int32_t to;
        std::int32_t newFormat;
        std::uint8_t newLength;
    };
    for (const Case& c : {Case{1, 0, 3, 3, 0, 3},               // 3 is one of 3 and 4
                          Case{12, 0, 9, 3, 0, 3},              // 9 is not
                          Case{12, 2, 7, 1, 0, 3},              // no such format
                          Case{2, 3, 20, 256 + 1, 3, 20},       // inside a range
                          Case{256 + 2, 2, 2, 256 + 6, 0, 2},   // the default of another format
                          Case{1, 0, 3, 512, 0, 3},             // not number-formatted
                          Case{256 + 5, 1, 200, 30, 1, 200}}) { // any length
        model::OutItem& item = ShowOnly(c.from / 256, c.from % 256);
        item.FormatType(c.format);
        item.FormatLength(c.length);
        Click(L"Format4");
        EXPECT_EQ(Combo(L"cboItemType").SelectedData(), c.from);
        Choose(L"cboItemType", c.to);
        EXPECT_EQ(item.ItemCategory(), c.to / 256);
        EXPECT_EQ(item.CodeRelType(), c.to % 256);
        EXPECT_EQ(item.GlobalType(), c.to % 256);
        EXPECT_EQ(item.FormatType(), c.newFormat) << c.from << " to " << c.to;
        EXPECT_EQ(item.FormatLength(), c.newLength) << c.from << " to " << c.to;
    }
    EXPECT_EQ(Named({Combo(L"cboItemType").Entries().back()}), L"User defined string");
    ShowOnly(kGlobal, 6);
    const ComboBox& types = Combo(L"cboItemType");
    EXPECT_EQ(types.Entries()[static_cast<std::size_t>(types.Selected())].text, L"(Global) Hours");
}

TEST_F(ItemPanelTest, TheLengthFollowsTheRuleOfTheFormat) {
    struct Case {
        std::int32_t category;
        std::int32_t type;
        std::wstring formats;
        std::int32_t format;
        NumberBox::Number least;
        NumberBox::Number greatest;
        std::vector<NumberBox::Number> allowed;
        int length; ///< after the format was chosen for a length of 9
    };
    const Case cases[] = {{kCodeRelated, 1, L"Dec", 0, 3, 3, {3}, 9},
                          {kCodeRelated, 2, L"Bin|Asc", 1, 0, 4, {}, 0},
                          {kCodeRelated, 2, L"Bin|Asc", 3, 0, 32, {}, 9},
                          {kCodeRelated, 3, L"Dec|Bin|Hex", 2, 2, 4, {2, 4}, 2},
                          {kGlobal, 12, L"Dec|Bin|Hex", 2, 0, 255, {}, 9}};
    for (const Case& c : cases) {
        model::OutItem& item = ShowOnly(c.category, c.type);
        // A format of another item: chosen away from where there is one to choose.
        item.FormatType(c.formats == L"Dec" ? 0 : c.format == 1 ? 3 : 1);
        item.FormatLength(9);
        Click(L"Format4");
        EXPECT_EQ(Length().Value(), 9) << "shown as it is stored";
        if (item.FormatType() != c.format)
            Choose(L"cboFormat", c.format);
        EXPECT_EQ(Named(Combo(L"cboFormat").Entries()), c.formats);
        EXPECT_EQ(item.FormatType(), c.format);
        EXPECT_EQ(Length().Least(), c.least);
        EXPECT_EQ(Length().Greatest(), c.greatest);
        EXPECT_EQ(Length().Allowed(), c.allowed);
        EXPECT_EQ(item.FormatLength(), c.length);
    }
    model::OutItem& item = ShowOnly(kCodeRelated, 3);
    item.FormatType(2);
    item.FormatLength(2);
    Click(L"Format4");
    editor->Form().SetFocus(Length());
    Length().Step(1);
    EXPECT_EQ(item.FormatLength(), 4) << "3 is not allowed";
    Length().Edit(L"3");
    editor->CommitPending();
    EXPECT_EQ(item.FormatLength(), 4);
    EXPECT_EQ(Caption(L"lblHint"), L"Length of the item's number must be 2, 4");
    item.FormatType(3);
    Click(L"Format4");
    EXPECT_EQ(Named(Combo(L"cboFormat").Entries()), L"Dec|Bin|Hex|Asc") << "a stored format is shown by its name";
}

TEST_F(ItemPanelTest, ACodeIsChosenFromTheEnabledOnesOrFromTheGroups) {
    root.Codes().Combination(1);
    ShowOnly(kCodeRelated, 0).CodeNumber(9);
    Click(L"Format4");
    const ComboBox& codes = Combo(L"cboCodeSel");
    ASSERT_EQ(codes.Entries().size(), 6u) << "any, the four enabled, and the stored one";
    EXPECT_EQ(codes.Entries()[0], (ComboBox::Entry{L"(Any)", 0}));
    EXPECT_EQ(codes.Entries()[2].text.substr(0, 4), L"2 - ");
    EXPECT_EQ(codes.Entries()[static_cast<std::size_t>(codes.Selected())].text, L"9");
    EXPECT_EQ(Item(4, 1).CodeNumber(), 9);
    EXPECT_FALSE(editor->Modified());
    Choose(L"cboCodeSel", 0);
    EXPECT_FALSE(Button(L"cmdGoItemCode").Enabled());
    EXPECT_NE(Button(L"cmdGoItemCode").ToolTip().find(L"no particular code"), std::wstring::npos);
    Choose(L"cboCodeSel", 2);
    EXPECT_EQ(Item(4, 1).CodeNumber(), 2);
    EXPECT_EQ(Output(), L"Output: [Code 2]");
    Button(L"cmdGoItemCode").Press();
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"Code2");
    EXPECT_TRUE(Visible(L"fraCode"));

    root.Codes().Combination(2);
    editor->BuildTree();
    Click(L"Format4");
    EXPECT_EQ(codes.Entries().size(), static_cast<std::size_t>(root.Codes().Groups().Count()) + 1);
    EXPECT_EQ(codes.Entries()[1].text, L"1 - " + root.Codes().Groups().Item(1).Text(true));
    EXPECT_EQ(Output(), L"Output: [Code, group 2]");
    Button(L"cmdGoItemCode").Press();
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"Group2");
}

TEST_F(ItemPanelTest, DevicesOfTheClusterStandInForAMissingList) {
    ShowOnly(kGlobal, 2).DeviceNumber(7);
    Click(L"Format4");
    EXPECT_EQ(Named(Combo(L"cboDeviceSel").Entries()), L"0 - Master|1 - Slave left|2 - Slave right|3 - Slave bottom|7");
    EXPECT_EQ(Combo(L"cboDeviceSel").SelectedData(), 7);
    EXPECT_EQ(Item(4, 1).DeviceNumber(), 7);
    const struct {
        bool hasRange;
        std::int32_t minimum;
        std::int32_t maximum;
        const wchar_t* offered;
    } ranges[] = {
        {false, 5, 5, L"0 - Master|1 - Slave left|2 - Slave right|3 - Slave bottom"},
        {true, 0, 1, L"0 - Master|1 - Slave left"},
        {true, -4, 0, L"0 - Master"},
        {true, 1, 2, L"1 - Slave left|2 - Slave right"},
        {true, 2, 31, L"2 - Slave right|3 - Slave bottom"},
        {true, -4, -1, L""},
    };
    for (const auto& range : ranges) {
        device::Description description;
        description.hasRange = range.hasRange;
        description.minimum = range.minimum;
        description.maximum = range.maximum;
        EXPECT_EQ(Named(DeviceEntries(device::ParameterAccess(bench.state), description)), range.offered);
    }
}

TEST_F(ItemPanelTest, AnUnknownTypeIsShownAndKept) {
    const auto planned = [this] {
        std::vector<std::pair<std::wstring, device::Value>> plan;
        for (const device::MIBParameter& parameter : root.Plan().writes)
            plan.emplace_back(parameter.entry, parameter.value);
        return plan;
    };
    Format(4).OutItems().Clear();
    Append(4, kCodeRelated, 29).FormatLength(6);
    const auto before = planned();
    Click(L"Format4");
    EXPECT_TRUE(List().Rows().front().greyed);
    EXPECT_EQ(List().Rows().front().caption, L"Unknown type 29");
    EXPECT_EQ(List().Rows().front().picture, L"CheckDigitID");
    const ComboBox& types = Combo(L"cboItemType");
    EXPECT_EQ(types.Entries()[static_cast<std::size_t>(types.Selected())], (ComboBox::Entry{L"Unknown type 29", 29}));
    EXPECT_EQ(Output(), L"Output: [Unknown type 29]");
    EXPECT_TRUE(editor->CommitPending());
    EXPECT_FALSE(editor->Modified());
    EXPECT_EQ(planned(), before) << "saved as it was read";
    const int entries = static_cast<int>(types.Entries().size());
    Choose(L"cboItemType", 1);
    EXPECT_EQ(static_cast<int>(types.Entries().size()), entries - 1) << "gone once it is no longer there";
    EXPECT_FALSE(List().Rows().front().greyed);
}

} // namespace
} // namespace orv::editor
