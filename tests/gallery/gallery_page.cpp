#include "gallery_page.h"

#include "controls/output_strip.h"
#include "controls/text_box.h"
#include "model/catalogue.h"
#include "text/bytes.h"

namespace orv::gallery {

using namespace controls;

namespace {

constexpr int kPaletteButton = 165;
constexpr int kCodeTypeButton = 105;

Frame& AddGroup(Frame& parent, const std::wstring& name, const std::wstring& caption) {
    Frame& group = parent.Add<Frame>(name);
    group.SetGroupBox(true);
    group.SetCaption(caption);
    return group;
}

template <typename W>
W& AddNamed(Frame& parent, const std::wstring& name, const std::wstring& caption = L"") {
    W& made = parent.Add<W>(name);
    made.SetCaption(caption);
    return made;
}

PictureList::Row RowOf(const std::wstring& key) {
    for (const model::CatalogueEntry& entry : model::Catalogue())
        if (key == entry.key)
            return {key, key, text::Load(entry.caption), L"", false};
    return {key, key, key, L"", false};
}

} // namespace

GalleryPage::GalleryPage(Form& form, Say say) : form_(form), say_(std::move(say)) {
    Frame& root = form_.Root();
    // One by one: the order in which they are made is the order of the Tab key.
    std::vector<LayoutPtr> left;
    left.push_back(Fields(root));
    left.push_back(Numbers(root));
    left.push_back(Choices(root));
    left.push_back(Buttons(root));
    left.push_back(Lists(root));
    std::vector<LayoutPtr> right;
    right.push_back(Types(root));
    right.push_back(ItemsAndPalette(root));
    right.push_back(Strips(root));
    form_.onFocusChanged = [this](Widget* widget) {
        say_(L"focus " + (widget == nullptr ? L"nowhere" : widget->Name()));
    };
    content_ = Row(Boxed(Column(std::move(left)), Column(std::move(right))), 12);
}

Size GalleryPage::Layout(const TextMeasure& measure) {
    const int edge = measure.Scale(10);
    const Size least = content_->Minimum(measure);
    content_->Place({edge, edge, least.width, least.height}, measure);
    const Size whole{least.width + 2 * edge, least.height + 2 * edge};
    form_.Root().SetBounds({0, 0, whole.width, whole.height});
    return whole;
}

MBEdit& GalleryPage::AddEdit(Frame& frame, const std::wstring& name) {
    MBEdit& edit = frame.Add<MBEdit>(name);
    edit.SetAccessibleName(name);
    edit.onChange = [this, &edit, name] { say_(L"change " + name + L" " + text::Hex(edit.Data(), L" ")); };
    return edit;
}

LayoutPtr GalleryPage::EditRow(Frame& frame, MBEdit& edit) {
    DropButton& names = frame.Add<DropButton>(edit.Name() + L"Names");
    Label& count = frame.Add<Label>(edit.Name() + L"Count");
    edit.Attach(&names, &count);
    count.SetWidest(L"000");
    return Row(Boxed(Cell(edit, edit.Multiline() ? Grow::Both : Grow::Across), Cell(names), Cell(count)), 4);
}

LayoutPtr GalleryPage::Fields(Frame& parent) {
    Frame& frame = AddGroup(parent, L"fraEdits", L"Edit boxes");
    auto grid = std::make_unique<Grid>(2);
    grid->Add(Cell(AddNamed<Label>(frame, L"lblText", L"&Header:")));
    MBEdit& one = AddEdit(frame, L"mbeText");
    one.SetWidthInCharacters(24);
    grid->Add(EditRow(frame, one));
    grid->Add(Cell(AddNamed<Label>(frame, L"lblLines", L"&Lines:")));
    MBEdit& several = AddEdit(frame, L"mbeLines");
    several.SetMultiline(true);
    several.SetData(text::FromHex(L"024C696E65310D0A4C696E6520320D0A03"));
    grid->Add(EditRow(frame, several));
    grid->Add(Cell(AddNamed<Label>(frame, L"lblOff", L"Disabled:")));
    MBEdit& off = AddEdit(frame, L"mbeOff");
    off.SetData(text::FromHex(L"02414203"));
    LayoutPtr offRow = EditRow(frame, off);
    off.SetEnabled(false);
    frame.Find(L"mbeOffNames")->SetEnabled(false);
    grid->Add(std::move(offRow));
    grid->Add(Cell(AddNamed<Label>(frame, L"lblCopy", L"To &copy:")));
    TextBox& copy = AddNamed<TextBox>(frame, L"txtCopy");
    copy.SetText(L"Selected and copied, not changed");
    grid->Add(Cell(copy, Grow::Across));
    return Group(frame, std::move(grid));
}

LayoutPtr GalleryPage::Numbers(Frame& parent) {
    Frame& frame = AddGroup(parent, L"fraNumbers", L"Numbers and lists");
    auto grid = std::make_unique<Grid>(4);
    for (const bool enabled : {true, false}) {
        const std::wstring end = enabled ? L"" : L"Off";
        grid->Add(Cell(AddNamed<Label>(frame, L"lblNumber" + end, enabled ? L"L&ength:" : L"Disabled:")));
        NumberBox& number = AddNamed<NumberBox>(frame, L"numLength" + end);
        number.SetRange(0, 999);
        number.SetValue(12);
        number.onChange = [this, end](NumberBox::Number value) { say_(L"number " + std::to_wstring(value)); };
        grid->Add(Cell(number));
        grid->Add(Cell(AddNamed<Label>(frame, L"lblFormat" + end, enabled ? L"Fo&rmat:" : L"Disabled:")));
        ComboBox& combo = AddNamed<ComboBox>(frame, L"cboFormat" + end);
        combo.SetEntries({{L"Decimal", 0}, {L"Hexadecimal", 1}, {L"Left justified", 2}});
        combo.SetSelected(1);
        combo.onClick = [this, &combo] { Event(L"combo", combo.Selected()); };
        grid->Add(Cell(combo, Grow::Across));
        number.SetEnabled(enabled);
        combo.SetEnabled(enabled);
    }
    return Group(frame, std::move(grid));
}

LayoutPtr GalleryPage::Choices(Frame& parent) {
    Frame& frame = AddGroup(parent, L"fraChoices", L"Choices");
    auto grid = std::make_unique<Grid>(3, 16);
    const wchar_t* captions[] = {L"&Standard", L"&Advanced", L"Not on this device"};
    for (int i = 0; i < 3; ++i) {
        OptionButton& option = frame.Add<OptionButton>(L"optMode", i);
        option.SetCaption(captions[i]);
        option.SetEnabled(i != 2);
        option.onClick = [this, i] { Event(L"option", i); };
        option.SetChosen(i == 0);
        grid->Add(Cell(option));
    }
    for (int i = 0; i < 3; ++i) {
        CheckBox& box = frame.Add<CheckBox>(L"chkSend", i);
        box.SetCaption(i == 0 ? L"&Wait for the end" : i == 1 ? L"Checked, disabled" : L"Disabled");
        box.SetChecked(i != 2);
        box.SetEnabled(i == 0);
        box.onClick = [this, &box] { Event(L"check", box.Checked() ? 1 : 0); };
        grid->Add(Cell(box));
    }
    return Group(frame, std::move(grid));
}

LayoutPtr GalleryPage::Buttons(Frame& parent) {
    std::vector<LayoutPtr> row;
    for (int i = 0; i < 3; ++i) {
        controls::Button& button = parent.Add<controls::Button>(L"cmdDo", i);
        button.SetCaption(i == 0 ? L"&OK" : i == 1 ? L"&Default values..." : L"Disabled");
        button.SetEnabled(i != 2);
        button.onClick = [this, i] { Event(L"click", i); };
        row.push_back(Cell(button));
    }
    return Row(std::move(row));
}

LayoutPtr GalleryPage::Lists(Frame& parent) {
    TabStrip& tabs = AddNamed<TabStrip>(parent, L"tabs");
    tabs.SetTabs({{L"1", L"Code 39"}, {L"2", L"Interleaved 2/5"}, {L"3", L"EAN / UPC"}});
    tabs.onSelect = [this](int tab) { Event(L"tab", tab); };
    CheckList& list = AddNamed<CheckList>(parent, L"lvwCodes");
    list.SetRows({{L"1 - Code 39", 1, true},
                  {L"2 - EAN", 2},
                  {L"3 - not there any more", 3, false, true},
                  {L"4 - checked, greyed", 4, true, true},
                  {L"5 - Codabar", 5}});
    list.onCheck = [this](int row, bool checked) { Event(checked ? L"checked" : L"unchecked", row); };
    Tree& tree = AddNamed<Tree>(parent, L"trv");
    tree.AddNode(L"", L"root", L"Output format");
    tree.AddNode(L"root", L"std", L"Standard");
    tree.AddNode(L"root", L"adv", L"Advanced");
    tree.AddNode(L"adv", L"g1", L"Group 1");
    tree.AddNode(L"adv", L"g2", L"Group 2");
    tree.SetBold(L"adv", true);
    tree.SetSelectedKey(L"std");
    tree.onNodeClick = [this](const Tree::Node& node) { say_(L"node " + node.key); };
    return Column(Boxed(Cell(tabs, Grow::Across), Row(Boxed(Cell(list, Grow::Both), Cell(tree, Grow::Both)))));
}

LayoutPtr GalleryPage::Types(Frame& parent) {
    Label& heading = AddNamed<Label>(parent, L"lblTypes", L"Code types");
    heading.SetHeading(true);
    codeTypes_ = &AddNamed<Toolbar>(parent, L"tbrCodeType");
    codeTypes_->SetAccessibleName(L"Code types");
    codeTypes_->SetButtonWidth(kCodeTypeButton);
    codeTypes_->SetLeastColumns(6);
    std::vector<Toolbar::Button> buttons{{L"0", L"None", L"None", L"", L"", true, false, 1}};
    for (const wchar_t* caption : {L"Code 39", L"ITF 2/5", L"EAN / UPC", L"Codabar", L"Code 93", L"Code 128"})
        buttons.push_back(
            {std::to_wstring(buttons.size()), caption, L"Barcode", L"", L"", true, buttons.size() == 1, 1});
    buttons.back().enabled = false;
    codeTypes_->SetButtons(std::move(buttons));
    codeTypes_->onClick = [this](const Toolbar::Button& button) { say_(L"type " + button.key); };
    return Column(Boxed(Cell(heading), Cell(*codeTypes_, Grow::Across)), 4);
}

LayoutPtr GalleryPage::ItemsAndPalette(Frame& parent) {
    palette_ = &AddNamed<Toolbar>(parent, L"tbrItems");
    palette_->SetAccessibleName(L"Palette");
    palette_->SetPalette(true);
    palette_->SetButtonWidth(kPaletteButton);
    palette_->SetLeastColumns(3);
    std::vector<Toolbar::Button> buttons;
    for (const model::CatalogueEntry& entry : model::Catalogue())
        buttons.push_back({entry.key, text::Load(entry.caption), entry.key, L"", L""});
    buttons.back().enabled = false;
    palette_->SetButtons(std::move(buttons));
    palette_->onActivate = [this](const Toolbar::Button& button) { say_(L"take " + button.key); };
    items_ = &AddNamed<PictureList>(parent, L"pls");
    items_->SetAccessibleName(L"Items");
    for (const wchar_t* key : {L"Code", L"Length", L"CodeDir", L"Hours"})
        rows_.push_back(RowOf(key));
    rows_[2].greyed = true;
    FillItems();
    items_->SetSelected(0);
    items_->onDrop = [this](const std::wstring& key, int gap) { Insert(key, gap); };
    items_->onMove = [this](int item, int to) { Move(item, to); };
    items_->onDelete = [this](int item) { Delete(item); };
    PictureList& empty = AddNamed<PictureList>(parent, L"plsEmpty");
    empty.SetEmptyText(L"Drag items here.");
    empty.SetEnabled(false);
    return Row(Boxed(Cell(*palette_), Column(Boxed(Cell(*items_, Grow::Both), Cell(empty, Grow::Across)))));
}

LayoutPtr GalleryPage::Strips(Frame& parent) {
    Label& warning = parent.Add<Label>(Kind::WarningStrip, L"lblWarning");
    warning.SetCaption(L"The device does not know one of these items.");
    Label& hint = parent.Add<Label>(Kind::HintLine, L"lblHint");
    hint.SetCaption(L"A line that explains what has the focus.");
    OutputStrip& strip = AddNamed<OutputStrip>(parent, L"strip", L"Output:");
    using Segment = OutputStrip::SegmentKind;
    strip.SetSegments({{Segment::Token, L"STX"},
                       {Segment::Chip, L"Code"},
                       {Segment::Plain, L";"},
                       {Segment::Chip, L"Length"},
                       {Segment::Token, L"CR"},
                       {Segment::Token, L"LF"}});
    return Column(Boxed(Cell(warning, Grow::Across), Cell(strip, Grow::Across), Cell(hint, Grow::Across)));
}

void GalleryPage::FillItems() {
    items_->SetRows(rows_);
}

void GalleryPage::Insert(const std::wstring& key, int gap) {
    say_(L"drop " + key + L" " + std::to_wstring(gap));
    rows_.insert(rows_.begin() + gap, RowOf(key));
    FillItems();
}

void GalleryPage::Move(int item, int to) {
    say_(L"move " + std::to_wstring(item) + L" " + std::to_wstring(to));
    const PictureList::Row moved = rows_[static_cast<std::size_t>(item - 1)];
    rows_.erase(rows_.begin() + item - 1);
    rows_.insert(rows_.begin() + (to > item ? to - 2 : to - 1), moved);
    FillItems();
}

void GalleryPage::Delete(int item) {
    Event(L"delete", item);
    rows_.erase(rows_.begin() + item - 1);
    FillItems();
}

} // namespace orv::gallery
