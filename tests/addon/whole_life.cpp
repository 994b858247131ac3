#include "tests/addon/whole_life.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <new>

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/tab_strip.h"
#include "controls/toolbar.h"
#include "platform/guarded.h"

namespace orv::test {
namespace {

using controls::PictureList;

std::string Narrow(const wchar_t* text) {
    const std::wstring wide = text;
    return {wide.begin(), wide.end()};
}

} // namespace

WholeLife::WholeLife(Session& session)
    : session_(session),
      exported_(std::filesystem::path(testing::TempDir()) / ("orv_whole_life_" + std::to_string(::getpid()) + ".txt")) {
    session_.bench.platform.boxes.defaultAnswer = platform::Answer::Yes;
    session_.bench.platform.registry.values[{L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH"}] = L"C:\\tool.exe";
    session_.bench.platform.desktop.files.insert(L"C:\\OrvOutFormat\\OrvOutFormat_0409.chm");
    session_.bench.host.Windows().editGotFocus = [](device::WindowHandle) {};
}

WholeLife::~WholeLife() {
    std::error_code ignored;
    std::filesystem::remove(exported_, ignored);
}

void WholeLife::Run() {
    Begin();
    if (!session_.addOn)
        return;
    AllCodes();
    OneCode();
    Groups();
    Formats();
    OneFormat();
    Items();
    Dialogs();
    Saves();
}

void WholeLife::Begin() {
    Host("Initialize", [this] {
        // The class factory answers for a component that could not be made.
        try {
            if (!session_.addOn)
                session_.Create();
        } catch (const std::bad_alloc&) {
        }
    });
    if (!session_.addOn)
        return;
    session_.addOn->Editor().runDialog = [this](controls::Dialog& dialog) { RunDialog(dialog); };
    session_.addOn->Editor().windowOf = [](const controls::Widget&) { return device::WindowHandle{7}; };
    Host("Show", [this] { session_.Begin(); });
    Host("Activate", [this] { session_.addOn->Activate(); });
}

void WholeLife::AllCodes() {
    Select(L"CodeDef");
    Choose(L"cboCodeID", 2);
    Type(L"mbeCustomCodeID", L"q", 0);
    Type(L"mbeNoReadStr", L"none\x03");
    Option(L"optCodeComb", 2);
    Choose(L"cboSlotsCount", 1);
}

void WholeLife::OneCode() {
    Select(L"Code1");
    Use<controls::Toolbar>(L"tbrCodeType", "click", [](controls::Toolbar& bar) { bar.Click(3); });
    Option(L"optLengthVariable");
    Number(L"txtMinLength", 1);
    Toggle(L"chkCheckDigit");
}

void WholeLife::Groups() {
    Select(L"Group1");
    Use<controls::CheckList>(L"lvwCodes", "toggle", [](controls::CheckList& list) { list.Toggle(0); });
    Option(L"optOR");
    Toggle(L"chkOptional");
    Type(L"mbeGroupLocalNoReadStr", L"g");
    Use<controls::CheckList>(L"lvwCodes", "jump", [](controls::CheckList& list) { list.Activate(0); });
}

void WholeLife::Formats() {
    Select(L"FormatDef");
    Type(L"mbeHeader", L"\x02");
    Type(L"mbeTerminator", L"\r\n");
    Option(L"optAdvFormat");
    session_.bench.platform.desktop.saveFileNames = {exported_.wstring()};
    Press(L"cmdExport");
    Use<PictureList>(L"plsFormats", "open", [](PictureList& list) {
        list.Select(0);
        list.HandleKey({.key = controls::Key::Return});
    });
}

void WholeLife::OneFormat() {
    Type(L"mbeAdvFmtHeader", L"<");
    Use<controls::MBEdit>(L"mbeAdvFmtHeader", "undo", [](controls::MBEdit& box) { box.Undo(); });
    Use<controls::MBEdit>(L"mbeAdvFmtHeader", "copy", [](controls::MBEdit& box) {
        box.SetSelection(0, box.TextLength());
        box.Cut();
        box.Paste();
    });
    Choose(L"cboAlign", 1);
    Number(L"txtAlignLength", 2);
    Type(L"mbeAlignFiller", L"*");
}

void WholeLife::Items() {
    Use<PictureList>(L"pls", "select", [](PictureList& list) { list.Select(0); });
    Choose(L"cboItemAlign", 1);
    Number(L"txtItemAlignLength", 2);
    Choose(L"cboCodeCut", 1);
    Use<PictureList>(L"pls", "move", [](PictureList& list) { list.Do(PictureList::Command::MoveDown); });
    Use<PictureList>(L"pls", "delete", [](PictureList& list) { list.Do(PictureList::Command::Delete); });
    Use<controls::Toolbar>(L"tbrMisc", "add", [](controls::Toolbar& bar) { bar.Activate(0); });
    Type(L"mbeUserString", L"text");
    Choose(L"cboItemType", 1);
}

void WholeLife::Dialogs() {
    Press(L"cmdTransports");
    Press(L"cmdAbout");
    Press(L"cmdGuide");
}

void WholeLife::Saves() {
    Press(L"cmdApply");
    Select(L"FormatDef");
    Type(L"mbeTerminator", L"\n");
    Toggle(L"chkNoInteractive");
    Press(L"cmdApply");
    Host("CurrentDeviceIndex", [this] { session_.addOn->CurrentDeviceIndex(0); });
    Host("Activate", [this] { session_.addOn->Activate(); });
    Option(L"optStdFormat");
    Type(L"mbeSeparator", L"|");
    Press(L"cmdOK");
    Press(L"cmdCancel");
}

void WholeLife::RunDialog(controls::Dialog& dialog) {
    Gesture([&] {
        dialog.Open();
        dialog.Form().FocusFirst();
    });
    if (auto* list = dynamic_cast<controls::CheckList*>(dialog.Form().Root().Find(L"lvw")))
        Gesture([&] {
            list->Select(1);
            list->Toggle(1);
        });
    if (auto* tool = dynamic_cast<controls::Button*>(dialog.Form().Root().Find(L"cmdSysInfo")))
        Gesture([&] { tool->Press(); });
    Gesture([&] { dialog.RouteKey({.key = controls::Key::Return}); });
    // A confirmation that failed leaves the dialog open.
    if (!dialog.Closed())
        Gesture([&] { dialog.Dismiss(); });
}

void WholeLife::Step(const std::string& name, const std::function<void()>& action) {
    ++steps_;
    if (before)
        before(name);
    action();
    if (session_.addOn)
        Gesture([&] { session_.state.platform.pump.ProcessPending(); });
    if (after)
        after(name);
}

void WholeLife::Host(const std::string& name, const std::function<void()>& call) {
    Step(name, [&] {
        if (session_.around)
            session_.around->Enter(call);
        else
            call();
    });
}

void WholeLife::Gesture(const std::function<void()>& gesture) {
    const auto told = [&] {
        try {
            gesture();
        } catch (...) {
            platform::ReportCurrentException(session_.state.platform.boxes, L"AddOnControl.Window");
        }
    };
    if (session_.around)
        session_.around->Enter(told);
    else
        told();
}

template <typename T>
void WholeLife::Use(const wchar_t* name, const char* verb, const std::function<void(T&)>& gesture, int index) {
    const std::string what = Narrow(name) + " " + verb;
    auto* widget = dynamic_cast<T*>(session_.addOn->Editor().Root().Find(name, index));
    if (!widget || !widget->EffectivelyVisible() || !widget->EffectivelyEnabled()) {
        leftOut_ += what + "; ";
        return;
    }
    // The pointer brings the focus along, and what is left is stored.
    if (widget->CanTakeFocus() && !widget->Focused())
        Step(what + ": focus", [&] { Gesture([&] { session_.addOn->Editor().Form().SetFocus(*widget); }); });
    Step(what, [&] { Gesture([&] { gesture(*widget); }); });
}

void WholeLife::Select(const wchar_t* key) {
    Use<controls::Tree>(L"tvw", "click", [&](controls::Tree& tree) {
        if (tree.FindNode(key))
            tree.Click(key);
    });
}

void WholeLife::Press(const wchar_t* name) {
    Use<controls::Button>(name, "press", [](controls::Button& button) { button.Press(); });
}

void WholeLife::Choose(const wchar_t* combo, int entry) {
    Use<controls::ComboBox>(combo, "choose", [=](controls::ComboBox& box) { box.Select(entry); });
}

void WholeLife::Toggle(const wchar_t* check, int index) {
    Use<controls::CheckBox>(
        check, "toggle", [](controls::CheckBox& box) { box.Toggle(); }, index);
}

void WholeLife::Option(const wchar_t* name, int index) {
    Use<controls::OptionButton>(
        name, "choose", [](controls::OptionButton& option) { option.Choose(); }, index);
}

void WholeLife::Type(const wchar_t* name, const wchar_t* text, int index) {
    Use<controls::MBEdit>(
        name, "type", [=](controls::MBEdit& box) { box.TypeText(text); }, index);
}

void WholeLife::Number(const wchar_t* name, int by) {
    Use<controls::NumberBox>(name, "step", [=](controls::NumberBox& box) { box.Step(by); });
}

} // namespace orv::test
