#include "tests/editor/page_reading.h"

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/simple_widgets.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"
#include "controls/tree.h"
#include "device/parameter_access.h"

namespace orv::test {
namespace {

using controls::Widget;

int NumberIn(const std::wstring& text, const std::wstring& prefix) {
    return text.starts_with(prefix) ? std::stoi(text.substr(prefix.size())) : 0;
}

class Reading {
  public:
    Reading(Widget& root, model::OutFormatConfig& config, device::DeviceState& state)
        : root_(root), config_(config), access_(state) {}

    std::wstring Run() {
        Tree();
        const controls::Frame* page = VisiblePage();
        if (!page)
            return L"not exactly one page";
        page_ = root_.Find(page->Name());
        if (page->Name() != PageOf(Selected()))
            Say(L"page of " + Selected());
        else if (page->Name() == L"fraCodeDef")
            AllCodes();
        else if (page->Name() == L"fraCode")
            OneCode(*config_.Codes().Code(NumberIn(Selected(), L"Code")));
        else if (page->Name() == L"fraGroupDef")
            Groups();
        else if (page->Name() == L"fraFormatDef")
            Formats();
        else
            OneFormat(config_.AdvancedFormats().Item(NumberIn(Selected(), L"Format")));
        return found_;
    }

  private:
    template <typename T>
    T& In(const wchar_t* name) {
        return dynamic_cast<T&>(*root_.Find(name));
    }
    template <typename T>
    T* Shown(const wchar_t* name, int index = Widget::kNoIndex) {
        auto* widget = dynamic_cast<T*>(page_->Find(name, index));
        if (!widget)
            Say(std::wstring(L"no ") + name);
        return widget && widget->EffectivelyVisible() ? widget : nullptr;
    }
    void Say(const std::wstring& what) {
        if (found_.empty())
            found_ = what;
    }
    void Expect(bool agrees, const wchar_t* name) {
        if (!agrees)
            Say(name);
    }

    std::wstring Selected() { return In<controls::Tree>(L"tvw").SelectedKey(); }
    static std::wstring PageOf(const std::wstring& key) {
        if (key == L"CodeDef")
            return L"fraCodeDef";
        if (key == L"FormatDef")
            return L"fraFormatDef";
        return key.starts_with(L"Group") ? L"fraGroupDef" : key.starts_with(L"Code") ? L"fraCode" : L"fraAdvFormat";
    }
    const controls::Frame* VisiblePage() {
        const controls::Frame* visible = nullptr;
        int count = 0;
        for (const auto& child : root_.Children())
            if (const auto* page = dynamic_cast<const controls::Frame*>(child.get());
                page && page->IsPage() && page->Visible() && ++count == 1)
                visible = page;
        return count == 1 ? visible : nullptr;
    }

    void Bytes(const wchar_t* name, const std::wstring& text, int index = Widget::kNoIndex) {
        if (auto* box = Shown<controls::MBEdit>(name, index); box && !box->Pending())
            Expect(box->Data() == access_.StringToBytes(text), name);
    }
    void Number(const wchar_t* name, std::int64_t value) {
        if (auto* box = Shown<controls::NumberBox>(name); box && box->Enabled() && !box->Pending())
            Expect(box->Value() == value, name);
    }
    void Choice(const wchar_t* name, std::int32_t value) {
        if (auto* box = Shown<controls::ComboBox>(name))
            Expect(box->Selected() >= 0 && box->SelectedData() == value, name);
    }
    void Check(const wchar_t* name, bool on, int index = Widget::kNoIndex) {
        if (auto* box = Shown<controls::CheckBox>(name, index))
            Expect(box->Checked() == on, name);
    }
    void Option(const wchar_t* name, bool chosen) {
        if (auto* option = Shown<controls::OptionButton>(name))
            Expect(option->Chosen() == chosen, name);
    }
    void Caption(const std::wstring& caption) { Expect(root_.Find(L"lblPage")->PlainCaption() == caption, L"lblPage"); }

    void Tree() {
        const auto& nodes = In<controls::Tree>(L"tvw").Nodes();
        std::size_t at = 0;
        const auto next = [&](const std::wstring& key, const std::wstring& text) {
            if (at >= nodes.size() || nodes[at].key != key || (!text.empty() && nodes[at].text != text))
                Say(L"node " + key);
            ++at;
        };
        next(L"CodeDef", {});
        for (const model::CodeDef& code : config_.Codes())
            next(L"Code" + std::to_wstring(code.Index()), code.Description());
        if (config_.Codes().Combination() == 2) {
            next(L"GroupDef", {});
            for (const model::Group& group : config_.Codes().Groups())
                next(L"Group" + std::to_wstring(group.Index()), Label(group));
        }
        next(L"FormatDef", {});
        for (const model::AdvancedFormat& format : config_.AdvancedFormats())
            if (const std::wstring index = std::to_wstring(format.Index()); config_.Advanced())
                next(L"Format" + index, index + L" - " + format.GetLabel());
        Expect(at == nodes.size(), L"nodes too many");
    }
    static std::wstring Label(const model::Group& group) {
        return std::to_wstring(group.Index()) + L" - " + group.Text(true);
    }

    void AllCodes() {
        const model::Codes& codes = config_.Codes();
        Choice(L"cboCodeID", config_.CodeID());
        Choice(L"cboGlobNoRead", config_.GlobNoReadMsgType());
        Choice(L"cboNoReadMsg", codes.NoReadMessage());
        Choice(L"cboMultiReadMsg", codes.MultiReadMessage());
        if (codes.ExpressionIsRead())
            Choice(L"cboSlotsCount", codes.Groups().Count());
        else
            Expect(In<controls::ComboBox>(L"cboSlotsCount").Selected() < 0, L"cboSlotsCount");
        Bytes(L"mbeNoReadStr", codes.NoReadString());
        Bytes(L"mbeMultiReadStr", codes.MultiReadString());
        for (const auto& child : page_->Find(L"fraCodeCombOptions")->Children())
            if (const auto* option = dynamic_cast<const controls::OptionButton*>(child.get());
                option && option->EffectivelyVisible())
                Expect(option->Chosen() == (option->Index() == codes.Combination()), L"optCodeComb");
        for (int id = 0; id < model::kCustomCodeIDCount; ++id)
            if (id != 8)
                Bytes(L"mbeCustomCodeID", config_.CustomCodeID(id), id);
        Expect(root_.Find(L"fraCustomCodeID")->Enabled() == (config_.CodeID() == 2), L"fraCustomCodeID");
    }

    void OneCode(const model::CodeDef& code) {
        Caption(L"Code Definition: " + code.Description());
        const auto* pressed = In<controls::Toolbar>(L"tbrCodeType").Pressed();
        const std::wstring tag = pressed ? pressed->tag : L"?";
        Expect(!pressed || tag == (code.Enabled() ? std::to_wstring(code.CodeType()) : L""), L"tbrCodeType");
        Bytes(L"mbeCodeLocalNoRead", code.NoReadString());
        Bytes(L"mbeCodeLocalMultipleRead", code.MultipleReadString());
        // A fixed length is kept as both limits, and their boxes stand still meanwhile.
        Number(L"txtMinLength", code.MinLength());
        Number(L"txtMaxLength", code.MaxLength());
        Check(L"chkCheckDigit", code.CheckDigit());
        Choice(L"cboChkDgtType39", code.CheckDigitType39());
        Choice(L"cboChkDgtTypeIL", code.CheckDigitType25IL());
        Choice(L"cboStartCharTx", code.StartCharTX());
        Choice(L"cboStopCharTx", code.StopCharTX());
        Choice(L"cboAddon", code.EANAddon());
        Choice(L"cboRSSType", code.RssType());
        Number(L"txtModuleSize", code.ModuleSize());
        Number(L"txtDMCols", code.DMColumns());
        Number(L"txtDMRows", code.DMRows());
        Check(L"chkDMRectangular", code.DMRectangular());
        Check(L"chkDMFastImprove", code.DMFastImprove());
        Choice(L"cboPostalSymbology", code.PostalSymbology());
        Choice(L"cboPostalDirection", code.PostalDirection());
        Number(L"txtPostalMinBarcount", code.PostalMinBarcount());
        Number(L"txtPostalMaxBarcount", code.PostalMaxBarcount());
        Number(L"txtPostalBarDistance", code.PostalBarDistance());
        for (int mode = 0; mode < model::SevenFlags::kCount; ++mode)
            Check(L"chkMaxicodeEnable", code.MaxicodeEnable(mode), mode);
    }

    void Groups() {
        model::Groups& groups = config_.Codes().Groups();
        const std::wstring key = In<controls::TabStrip>(L"tbs").SelectedKey();
        Expect(Selected() == L"GroupDef" || Selected() == key, L"tbs");
        Expect(page_->Enabled() == (groups.Count() > 0), L"fraGroupDef");
        if (groups.Count() == 0)
            return Caption(L"Groups: none defined!");
        const model::Group& group = groups.Item(NumberIn(key, L"Group"));
        Caption(L"Group Definition: " + Label(group));
        Expect(In<controls::TextBox>(L"txtExpression").Text() == groups.GetExpression(true), L"txtExpression");
        Option(L"optOR", group.Multiple() == -1);
        Option(L"optXOR", group.Multiple() == 0);
        Check(L"chkOptional", group.IsOptional());
        Bytes(L"mbeGroupLocalNoReadStr", group.NoReadString());
        Bytes(L"mbeGroupLocalMultipleReadStr", group.MultipleReadString());
        for (const auto& row : In<controls::CheckList>(L"lvwCodes").Rows()) {
            bool refers = false;
            for (const std::wstring& reference : group.Codes())
                refers = refers || reference == std::to_wstring(row.data);
            Expect(row.checked == refers && config_.Codes().Code(row.data)->Enabled(), L"lvwCodes");
        }
    }

    void Formats() {
        const model::StandardFormat& format = config_.StandardFormat();
        Option(L"optStdFormat", !config_.Advanced());
        Option(L"optAdvFormat", config_.Advanced());
        Bytes(L"mbeHeader", format.Header());
        Bytes(L"mbeTerminator", format.Terminator());
        Bytes(L"mbeSeparator", format.CodeSeparator());
        const auto& rows = In<controls::PictureList>(L"plsFormats").Rows();
        Expect(static_cast<int>(rows.size()) == config_.AdvancedFormats().Count(), L"plsFormats");
        for (const auto& row : rows) {
            const auto& shown = config_.AdvancedFormats().Item(row.key);
            const std::wstring start = shown.GetLabel() + L"   " + std::to_wstring(shown.OutItems().Count()) + L" ";
            Expect(row.caption.starts_with(start) && row.greyed != config_.Advanced(), L"plsFormats");
        }
    }

    void OneFormat(model::AdvancedFormat& format) {
        Caption(L"Advanced format " + std::to_wstring(format.Index()));
        Expect(In<controls::TextBox>(L"txtTransports").Text() == format.GetLabel(), L"txtTransports");
        Choice(L"cboGlobalScaleType", format.GlobalScaleType());
        Choice(L"cboAlign", format.Alignment());
        Number(L"txtAlignLength", format.AlignLength());
        Bytes(L"mbeAlignFiller", format.AlignFiller());
        Bytes(L"mbeAdvFmtHeader", format.Header());
        Bytes(L"mbeAdvFmtTerminator", format.Terminator());
        const auto& list = In<controls::PictureList>(L"pls");
        Expect(static_cast<int>(list.Rows().size()) == format.OutItems().Count(), L"pls");
        std::int16_t position = 0;
        for (const model::OutItem& item : format.OutItems())
            Expect(item.Index() == ++position, L"Index");
        if (list.Selected() >= 0 && list.Selected() < format.OutItems().Count())
            OneItem(format.OutItems().Item(list.Selected() + 1));
    }

    void OneItem(const model::OutItem& item) {
        const std::int32_t type = item.ItemCategory() == 0 ? item.CodeRelType() : item.GlobalType();
        if (item.ItemCategory() >= 0 && item.ItemCategory() < 2 && type >= 0 && type < 256)
            Choice(L"cboItemType", item.ItemCategory() * 256 + type);
        Choice(L"cboLinkTo", item.LinkTo());
        Choice(L"cboItemAlign", item.Alignment());
        Number(L"txtItemAlignLength", item.AlignLength());
        Bytes(L"mbeItemAlignFiller", item.AlignFiller());
        Choice(L"cboCodeSel", item.CodeNumber());
        Choice(L"cboDiagsEvent", item.DiagnosticEvent());
        Bytes(L"mbeUserString", item.StringText());
        Choice(L"cboFormat", item.FormatType());
        Number(L"txtFormatLen", item.FormatLength());
        Choice(L"cboCodeCut", item.CodeCut());
        Number(L"txtCutLeading", item.CodeCutLeading());
        Number(L"txtCutTrailing", item.CodeCutTrailing());
        Bytes(L"mbeCutPattern", item.CodeCutPattern());
        Choice(L"cboCutPatternMode", item.CodeCutPatternMode());
        Choice(L"cboDeviceSel", item.DeviceNumber());
        Choice(L"cboScaleType", item.ScaleType());
    }

    Widget& root_;
    model::OutFormatConfig& config_;
    device::ParameterAccess access_;
    Widget* page_ = nullptr;
    std::wstring found_;
};

} // namespace

std::wstring Disagreement(controls::Widget& root, model::OutFormatConfig& config, device::DeviceState& state) {
    return Reading(root, config, state).Run();
}

} // namespace orv::test
