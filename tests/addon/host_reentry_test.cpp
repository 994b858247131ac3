// Whatever the host does from inside a wait, a box or a dialog of the component, everywhere it can.
#include <gtest/gtest.h>

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/picture_list.h"
#include "editor/context.h"
#include "tests/addon/whole_life.h"

namespace orv::addon {
namespace {

using platform::Answer;
using test::Session;

/// Brings the component to a place where it waits; `there` is to be called from inside.
struct Place {
    const char* name;
    void (*go)(Session& session, const std::function<void()>& there);
};

void UnderBox(Session& session, const std::function<void()>& there) {
    session.bench.platform.boxes.defaultAnswer = Answer::Yes;
    session.bench.platform.boxes.whileOpen = [&session, there](const platform::MessageBox&) {
        session.bench.platform.boxes.whileOpen = nullptr;
        there();
    };
}

void InDialog(Session& session, const std::function<void()>& there) {
    session.addOn->Editor().runDialog = [&session, there](controls::Dialog& dialog) {
        dialog.Open();
        there();
        // As the window that shows it does.
        if (session.bench.platform.pump.PumpUntil([] { return true; }) == platform::Wait::Closing)
            throw platform::WaitAbandoned{};
        dialog.Dismiss();
    };
}

void AdvancedFormat(Session& session) {
    session.Select(L"FormatDef");
    dynamic_cast<controls::OptionButton&>(session.Widget(L"optAdvFormat")).Choose();
    session.Select(L"Format1");
}

const Place kPlaces[] = {
    {"a save that waits",
     [](Session& session, const std::function<void()>& there) {
         session.Edit();
         bool once = false;
         session.bench.host.Gate().Before("SupportObject.SetProgress", [&session, there, once]() mutable {
             if (!std::exchange(once, true))
                 session.bench.platform.pump.Post(there);
         });
         session.Press(L"cmdApply");
         session.bench.host.Gate().Before("SupportObject.SetProgress", {});
     }},
    {"the box of a handler that failed",
     [](Session& session, const std::function<void()>& there) {
         UnderBox(session, there);
         session.Edit();
         session.bench.host.Gate().FailNamed("ParameterTable.SetValue", 1, -9, L"read-only");
         session.Press(L"cmdOK");
     }},
    {"the question of a doubtful format",
     [](Session& session, const std::function<void()>& there) {
         session.state.root->Codes().Code(1)->CodeType(18);
         for (int mode = 0; mode < model::SevenFlags::kCount; ++mode)
             session.state.root->Codes().Code(1)->MaxicodeEnable(mode, false);
         session.Edit();
         UnderBox(session, there);
         session.Press(L"cmdApply");
     }},
    {"the question before an item is removed",
     [](Session& session, const std::function<void()>& there) {
         AdvancedFormat(session);
         auto& items = dynamic_cast<controls::PictureList&>(session.Widget(L"pls"));
         items.Select(0);
         UnderBox(session, there);
         items.Do(controls::PictureList::Command::Delete);
     }},
    {"the question before a group is removed",
     [](Session& session, const std::function<void()>& there) {
         session.state.root->Codes().Combination(2);
         session.state.root->Codes().Groups().Add().AddCode(L"1");
         model::OutItem& item = session.state.root->AdvancedFormats().Item(1).OutItems().Item(1);
         item.ItemCategory(0);
         item.CodeNumber(1);
         session.Select(L"CodeDef");
         UnderBox(session, there);
         dynamic_cast<controls::ComboBox&>(session.Widget(L"cboSlotsCount")).Select(0);
     }},
    {"the box after a failed transfer",
     [](Session& session, const std::function<void()>& there) {
         session.Edit();
         session.bench.device->Faults().failSession = true;
         UnderBox(session, there);
         session.Press(L"cmdApply");
         session.bench.device->Faults() = {};
     }},
    {"the transports",
     [](Session& session, const std::function<void()>& there) {
         AdvancedFormat(session);
         InDialog(session, there);
         session.Press(L"cmdTransports");
     }},
    {"About",
     [](Session& session, const std::function<void()>& there) {
         InDialog(session, there);
         session.Press(L"cmdAbout");
     }},
    {"the file dialog",
     [](Session& session, const std::function<void()>& there) {
         session.Select(L"FormatDef");
         session.bench.host.Gate().Before("HostApplication.ExportNameSecond", there);
         session.Press(L"cmdExport");
     }},
};

const struct Act {
    const char* name;
    void (*run)(Session& session);
} kActs[] = {
    {"Activate", [](Session& session) { session.addOn->Activate(); }},
    {"Terminate", [](Session& session) { session.addOn->Terminate(); }},
    {"Apply", [](Session& session) { session.Press(L"cmdApply"); }},
    {"OK", [](Session& session) { session.Press(L"cmdOK"); }},
    {"another device", [](Session& session) { session.addOn->CurrentDeviceIndex(9); }},
    {"another cluster", [](Session& session) { session.addOn->CurrentClusterIndex(9); }},
    {"Show", [](Session& session) { session.addOn->Show(); }},
    {"Unregister", [](Session& session) { session.addOn->Unregister(); }},
};

void CheckRestored(Session& session) {
    EXPECT_EQ(session.bench.host.AccessLevel(), 3);
    EXPECT_TRUE(session.bench.host.ConfigurationInteractive());
    EXPECT_TRUE(session.container.enabled);
    EXPECT_TRUE(session.container.visible);
    EXPECT_FALSE(session.bench.host.Progress().shown);
    EXPECT_FALSE(session.bench.device->InSession());
    EXPECT_EQ(session.state.cache, nullptr);
    EXPECT_EQ(session.bench.platform.pump.Depth(), 0);
    EXPECT_EQ(session.bench.platform.boxes.open, 0);
    EXPECT_FALSE(session.addOn->Busy());
    EXPECT_FALSE(session.addOn->Saving());
}

TEST(HostReentry, AnythingTheHostDoesFromAnywhereInside) {
    for (const Place& place : kPlaces)
        for (const Act& act : kActs) {
            SCOPED_TRACE(testing::Message() << act.name << " from inside " << place.name);
            Session session;
            session.bench.host.SetConfigurationInteractive(true);
            session.Start();
            bool been = false;
            place.go(session, [&] {
                been = true;
                act.run(session);
                EXPECT_FALSE(session.addOn->Terminated()) << "released under a running call";
            });
            EXPECT_TRUE(been);
            session.bench.platform.pump.ProcessPending();
            CheckRestored(session);
            if (act.run == kActs[1].run) {
                EXPECT_TRUE(session.addOn->Terminated()) << "put off and forgotten";
            }
            session.addOn->Terminate();
            EXPECT_TRUE(session.addOn->Terminated());
            EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
        }
}

TEST(HostReentry, OkFromInsideASaveDoesNotCloseWithoutSaving) {
    Session session;
    session.Start();
    session.Edit();
    session.bench.host.Gate().Before("SupportObject.SetProgress", [&] { session.Press(L"cmdOK"); });
    session.Press(L"cmdApply");
    EXPECT_EQ(session.bench.host.Application()->closeCount, 0);
    EXPECT_EQ(session.OnDevice(6), session.InHost(6));
}

/// Two components over one host, each with a state and services of its own.
struct Pair {
    Pair() {
        // Answers at once: there are two queues here, and a service that knows one.
        first.bench.host.SetService(std::make_shared<sim::LocalMibSapService>(std::vector{first.bench.device},
                                                                              sim::LocalMibSapService::Deliver()));
        other.platform.pump.SetLimit(std::chrono::seconds(20));
        other.state.current = first.bench.state.current;
        first.Start();
        two.Register(first.bench.host.Application());
        two.Enable();
        two.Show();
        two.Activate();
    }
    controls::MBEdit& Box(editor::Editor& editor, const wchar_t* name) {
        dynamic_cast<controls::Tree&>(*editor.Root().Find(L"tvw")).Click(L"FormatDef");
        auto& box = dynamic_cast<controls::MBEdit&>(*editor.Root().Find(name));
        editor.Form().SetFocus(box);
        return box;
    }
    void PressIn(editor::Editor& editor, const wchar_t* name) {
        dynamic_cast<controls::Button&>(*editor.Root().Find(name)).Press();
    }
    struct Other {
        Other(device::HostFactory& factory, std::shared_ptr<device::CommonState> common)
            : state(platform.services, factory, std::move(common)) {}
        sim::PortablePlatform platform;
        ProcessState state;
    };

    Session first;
    Other other{first.bench.host, first.bench.state.common};
    test::RecordedContainer container;
    AddOn two{other.state, container};
};

TEST(TwoComponents, GoInEitherOrderAndTheOtherKeepsWhatWasTyped) {
    for (const bool firstGoesFirst : {true, false}) {
        SCOPED_TRACE(firstGoesFirst);
        Pair pair;
        AddOn& goes = firstGoesFirst ? *pair.first.addOn : pair.two;
        AddOn& stays = firstGoesFirst ? pair.two : *pair.first.addOn;
        pair.Box(goes.Editor(), L"mbeHeader").TypeText(L"a");
        pair.Box(stays.Editor(), L"mbeTerminator").TypeText(L"z");
        goes.Terminate();
        EXPECT_TRUE(goes.Terminated());
        EXPECT_EQ(pair.first.bench.host.OpenConfigurations(), 1);
        pair.PressIn(stays.Editor(), L"cmdApply");
        EXPECT_FALSE(stays.Editor().Modified());
        EXPECT_EQ(pair.first.OnDevice(7), pair.first.InHost(7));
        const auto terminator = std::get<Bytes>(pair.first.OnDevice(7));
        EXPECT_NE(std::find(terminator.begin(), terminator.end(), 'z'), terminator.end());
        EXPECT_TRUE(pair.first.Boxes().empty());
        EXPECT_TRUE(pair.other.platform.boxes.shown.empty());
    }
}

TEST(TwoComponents, ABoxThatOneNeverShowsKeepsNoneOfTheOthersBack) {
    sim::PortablePlatform goes;
    sim::PortablePlatform stays;
    editor::Context::LateBox lost;
    editor::Context::LateBox kept;
    editor::Context::LaterBoxes(goes.services, lost).ShowPlain(L"first", L"title");
    goes.pump.Close();
    editor::Context::LaterBoxes(stays.services, kept).ShowPlain(L"second", L"title");
    stays.pump.ProcessPending();
    ASSERT_EQ(stays.boxes.shown.size(), 1u);
    EXPECT_EQ(stays.boxes.shown[0].text, L"second");
    EXPECT_TRUE(goes.boxes.shown.empty());
}

TEST(TwoComponents, OneAppliesOrGoesWhileTheOtherWaits) {
    for (const bool goes : {true, false}) {
        SCOPED_TRACE(goes);
        Pair pair;
        pair.Box(pair.two.Editor(), L"mbeTerminator").TypeText(L"z");
        pair.PressIn(pair.two.Editor(), L"cmdApply"); // has had the service once
        pair.Box(pair.two.Editor(), L"mbeTerminator").TypeText(L"y");
        pair.Box(pair.first.addOn->Editor(), L"mbeHeader").TypeText(L"a");
        bool inside = false;
        pair.first.bench.host.Gate().Before("SupportObject.SetProgress", [&] {
            if (std::exchange(inside, true))
                return;
            if (goes)
                pair.two.Terminate();
            else
                pair.PressIn(pair.two.Editor(), L"cmdApply");
        });
        pair.PressIn(pair.first.addOn->Editor(), L"cmdApply");
        EXPECT_TRUE(inside);
        EXPECT_FALSE(pair.first.addOn->Editor().Modified());
        EXPECT_TRUE(pair.first.Boxes().empty());
        EXPECT_EQ(pair.first.OnDevice(6), pair.first.InHost(6));
        if (!goes) {
            EXPECT_TRUE(pair.two.Editor().Modified()) << "not saved, and not forgotten";
            EXPECT_EQ(pair.other.platform.boxes.beeps, 1);
            pair.PressIn(pair.two.Editor(), L"cmdApply");
            EXPECT_FALSE(pair.two.Editor().Modified());
        }
    }
}

} // namespace
} // namespace orv::addon
