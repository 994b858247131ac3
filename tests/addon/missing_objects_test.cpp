// Each object of the host missing while each command runs: the host may unregister, or answer a call with nothing.
#include <gtest/gtest.h>

#include <algorithm>

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/picture_list.h"
#include "controls/toolbar.h"
#include "tests/addon/patchy_host.h"
#include "tests/controls/fixture.h"

namespace orv::addon {
namespace {

using test::Object;
using test::Session;

constexpr Object kObjects[] = {Object::Application, Object::Manager, Object::Support, Object::Configuration,
                               Object::Records,     Object::Record,  Object::Table,   Object::Service};
const char* const kNames[] = {"none",    "application", "manager", "support", "configuration",
                              "records", "record",      "table",   "service"};

template <typename T>
T& Get(Session& s, const wchar_t* name, int index = controls::Widget::kNoIndex) {
    return dynamic_cast<T&>(*s.addOn->Editor().Root().Find(name, index));
}
void Click(Session& s, const wchar_t* key) {
    auto& tree = Get<controls::Tree>(s, L"tvw");
    if (tree.FindNode(key))
        tree.Click(key);
}
void Choose(Session& s, const wchar_t* name, int entry) {
    auto& combo = Get<controls::ComboBox>(s, name);
    if (static_cast<std::size_t>(entry) < combo.Entries().size())
        combo.Select(entry);
}
void TypeAndLeave(Session& s, const wchar_t* name, int index = controls::Widget::kNoIndex) {
    auto& box = Get<controls::MBEdit>(s, name, index);
    s.addOn->Editor().Form().SetFocus(box);
    box.TypeText(L"z");
    s.addOn->Editor().Form().SetFocus(Get<controls::Tree>(s, L"tvw"));
}
void Drop(Session& s, const wchar_t* key) {
    auto& items = Get<controls::PictureList>(s, L"pls");
    if (items.EffectivelyVisible() && items.EffectivelyEnabled())
        items.onDrop(key, 0);
}
void Items(Session& s, controls::PictureList::Command command) {
    auto& items = Get<controls::PictureList>(s, L"pls");
    if (!items.Rows().empty())
        items.Do(command);
}

/// What the user or the host does, on the page of `node`. `told`: which objects must be missing for it to show `box`;
/// without any other it works, or has nothing to say.
struct Command {
    const char* name;
    const wchar_t* node;
    std::wstring box; ///< without its description
    std::vector<Object> told;
    void (*run)(Session& s);
};

std::wstring Of(const wchar_t* handler) {
    return std::wstring(L"AddOnControl.") + handler + L"\n91: ";
}

using enum Object;
using Do = controls::PictureList::Command;
/// A page that was not open before asks the device for limits and lists; texts of codes are asked for each time.
const std::vector<Object> kReads{Configuration, Records, Record, Table};

const Command kCommands[] = {
    {"Show",
     L"CodeDef",
     Of(L"UserControl_Show"),
     {Application, Configuration, Records, Record, Table},
     [](Session& s) { s.addOn->Show(); }},
    {"Activate", L"CodeDef", Of(L"IAddOnGUI_Activate"), {}, [](Session& s) { s.addOn->Activate(); }},
    {"a slave declined",
     L"CodeDef",
     Of(L"IAddOnGUI_Activate"),
     {Application},
     [](Session& s) {
         s.addOn->CurrentDeviceIndex(1);
         s.bench.platform.boxes.answers = {platform::Answer::No};
         s.addOn->Activate();
         s.addOn->CurrentDeviceIndex(0);
         s.container.visible = true; // stays hidden: the host is to close it
     }},
    {"RequestUnload", L"CodeDef", {}, {}, [](Session& s) { s.addOn->RequestUnload(); }},
    {"another device",
     L"CodeDef",
     {},
     {},
     [](Session& s) {
         s.addOn->CurrentDeviceIndex(1);
         s.addOn->CurrentDeviceIndex(0);
     }},
    {"codes", L"FormatDef", Of(L"tvw_NodeClick"), {}, [](Session& s) { Click(s, L"CodeDef"); }},
    {"a code", L"CodeDef", Of(L"tvw_NodeClick"), kReads, [](Session& s) { Click(s, L"Code1"); }},
    {"groups", L"CodeDef", Of(L"tvw_NodeClick"), kReads, [](Session& s) { Click(s, L"GroupDef"); }},
    {"a group", L"CodeDef", Of(L"tvw_NodeClick"), kReads, [](Session& s) { Click(s, L"Group1"); }},
    {"formats", L"CodeDef", Of(L"tvw_NodeClick"), {}, [](Session& s) { Click(s, L"FormatDef"); }},
    {"a format", L"CodeDef", Of(L"tvw_NodeClick"), kReads, [](Session& s) { Click(s, L"Format1"); }},
    {"number of groups", L"CodeDef", Of(L"cboSlotsCount_Click"), kReads,
     [](Session& s) { Choose(s, L"cboSlotsCount", 0); }},
    {"identifier",
     L"CodeDef",
     Of(L"mbeCustomCodeID_Validate"),
     {},
     [](Session& s) { TypeAndLeave(s, L"mbeCustomCodeID", 0); }},
    {"symbology", L"Code1", Of(L"tbrCodeType_ButtonClick"), kReads,
     [](Session& s) { Get<controls::Toolbar>(s, L"tbrCodeType").Click(3); }},
    {"a code of a group",
     L"Group1",
     Of(L"lvwCodes_ItemCheck"),
     {},
     [](Session& s) { Get<controls::CheckList>(s, L"lvwCodes").Toggle(0); }},
    {"header", L"FormatDef", Of(L"mbeHeader_Validate"), {}, [](Session& s) { TypeAndLeave(s, L"mbeHeader"); }},
    {"Export", L"FormatDef", Of(L"cmdExport_Click"), {Application}, [](Session& s) { s.Press(L"cmdExport"); }},
    {"drop", L"Format1", L"Error in pls_ItemDrop! ", {}, [](Session& s) { Drop(s, L"Length"); }},
    {"move", L"Format1", Of(L"pls_ItemMove"), {}, [](Session& s) { Items(s, Do::MoveDown); }},
    {"delete", L"Format1", Of(L"pls_ItemDelete"), {}, [](Session& s) { Items(s, Do::Delete); }},
    {"type of an item", L"Format1", Of(L"cboItemType_Click"), {}, [](Session& s) { Choose(s, L"cboItemType", 3); }},
    {"transports", L"Format1", Of(L"cmdTransports_Click"), {}, [](Session& s) { s.Press(L"cmdTransports"); }},
    {"About", L"CodeDef", Of(L"cmdAbout_Click"), {}, [](Session& s) { s.Press(L"cmdAbout"); }},
    {"Guide", L"CodeDef", L"Error in CheckHelpFile: ", {Application}, [](Session& s) { s.Press(L"cmdGuide"); }},
    {"Apply",
     L"CodeDef",
     Of(L"cmdApply_Click"),
     {Application, Configuration, Records, Record, Table, Service},
     [](Session& s) { s.Press(L"cmdApply"); }},
    {"OK",
     L"CodeDef",
     Of(L"cmdOK_Click"),
     {Application, Configuration, Records, Record, Table},
     [](Session& s) { s.Press(L"cmdOK"); }},
    {"Cancel", L"CodeDef", Of(L"cmdCancel_Click"), {Application}, [](Session& s) { s.Press(L"cmdCancel"); }},
    {"Resize",
     L"CodeDef",
     Of(L"UserControl_Resize"),
     {},
     [](Session& s) {
         static const test::FixedFont font; // kept by the editor
         s.addOn->Editor().Resize({900, 600}, font);
     }},
};

/// A component in a host that can lose each of its objects.
struct Life {
    Life()
        : session("tiny.json", {}, 0, [this](test::Bench& bench) {
              auto made = std::make_unique<test::PatchyHost>(bench);
              host = made.get();
              return made;
          }) {
        session.bench.platform.boxes.defaultAnswer = platform::Answer::Yes;
        session.bench.host.Windows().editGotFocus = [](device::WindowHandle) {};
        session.bench.platform.desktop.files = {L"C:\\OrvOutFormat\\OrvOutFormat_0409.chm"};
        session.Create();
        session.addOn->Editor().windowOf = [](const controls::Widget&) { return device::WindowHandle{7}; };
        session.addOn->Editor().runDialog = [](controls::Dialog& dialog) {
            dialog.Open();
            dialog.RouteKey({.key = controls::Key::Return});
            if (!dialog.Closed())
                dialog.Dismiss();
        };
    }
    void Begin(Object missing) {
        host->missing.what = missing;
        session.Begin();
    }
    /// With groups, formats and something to save.
    void BeginWhole() {
        Begin(None);
        session.addOn->Activate();
        session.Edit();
        session.state.root->Codes().Combination(2);
        session.state.root->Codes().Groups().Add().AddCode(L"1");
        session.state.root->Advanced(true);
        session.addOn->Editor().BuildTree();
        EXPECT_TRUE(session.Boxes().empty());
    }
    void Lose(Object missing) {
        host->missing.what = missing;
        if (missing == Application)
            session.addOn->Unregister();
        if (missing == Configuration)
            session.addOn->Show();
    }
    /// Runs it and answers whether it has shown its box.
    bool Tells(const Command& command) {
        session.Boxes().clear();
        command.run(session);
        session.bench.platform.pump.ProcessPending();
        int told = 0;
        for (const platform::MessageBox& box : session.Boxes())
            if (box.icon == platform::Icon::Critical) {
                EXPECT_EQ(box.text, command.box + L"Object variable not set");
                ++told;
            }
        EXPECT_LE(told, 1);
        return told != 0;
    }
    void CheckRestored() {
        EXPECT_EQ(session.bench.host.AccessLevel(), 3);
        EXPECT_TRUE(session.container.enabled);
        EXPECT_TRUE(session.container.visible);
        EXPECT_FALSE(session.bench.host.Progress().shown);
        EXPECT_FALSE(session.addOn->Busy());
        EXPECT_FALSE(session.addOn->Saving());
    }
    /// The host has everything again and shows the component anew.
    void CheckWorksAgain() {
        Begin(None);
        session.addOn->Activate();
        session.Boxes().clear();
        session.Edit();
        session.Press(L"cmdApply");
        EXPECT_FALSE(session.addOn->Editor().Modified());
        EXPECT_EQ(session.OnDevice(6), session.InHost(6));
        EXPECT_TRUE(session.Boxes().empty());
        session.addOn->Terminate();
        EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
    }

    test::PatchyHost* host = nullptr;
    Session session;
};

bool Has(const std::vector<Object>& objects, Object object) {
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

TEST(MissingObjects, EachWhileEachCommandRuns) {
    for (const Command& command : kCommands)
        for (const Object missing : kObjects) {
            SCOPED_TRACE(testing::Message() << command.name << " without " << kNames[static_cast<int>(missing)]);
            Life life;
            life.BeginWhole();
            Click(life.session, command.node);
            life.Lose(missing);
            EXPECT_EQ(life.Tells(command), Has(command.told, missing));
            life.CheckRestored();
            life.CheckWorksAgain();
        }
}

TEST(MissingObjects, EachFromTheBeginning) {
    const Command show{
        "Show", {}, Of(L"UserControl_Show"), {Application, Manager, Configuration}, [](Session& s) { s.Begin(); }};
    const Command activate{"Activate",
                           {},
                           Of(L"IAddOnGUI_Activate"),
                           {Manager, Support, Configuration, Records, Record, Table},
                           [](Session& s) { s.addOn->Activate(); }};
    for (const Object missing : kObjects) {
        Life life;
        life.host->missing.what = missing;
        for (const Command* first : {&show, &activate}) {
            SCOPED_TRACE(testing::Message() << first->name << " without " << kNames[static_cast<int>(missing)]);
            EXPECT_EQ(life.Tells(*first), Has(first->told, missing));
        }
        for (const Command& command : kCommands) {
            SCOPED_TRACE(testing::Message() << command.name << " without " << kNames[static_cast<int>(missing)]);
            Click(life.session, command.node);
            life.Tells(command);
            life.CheckRestored();
        }
        life.CheckWorksAgain();
    }
}

TEST(MissingObjects, TheComponentGoesWithoutThem) {
    for (const Object missing : kObjects)
        for (const bool whole : {true, false}) {
            SCOPED_TRACE(testing::Message() << kNames[static_cast<int>(missing)] << " " << whole);
            Life life;
            if (whole)
                life.BeginWhole();
            life.Lose(missing);
            life.session.Begin();
            life.session.addOn->Terminate();
            EXPECT_TRUE(life.session.addOn->Terminated());
            EXPECT_EQ(life.session.bench.host.OpenConfigurations(), 0);
        }
}

} // namespace
} // namespace orv::addon
