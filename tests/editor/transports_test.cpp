#include "controls/check_list.h"
#include "editor/transports_dialog.h"
#include "fixture.h"

namespace orv::editor {
namespace {

using controls::CheckList;
using controls::Dialog;
using controls::Key;

constexpr std::int32_t kBit31 = INT32_MIN;

/// A device that offers the transports of `mask`, hexadecimal, whatever its model.
sim::SystemDescription Offering(const std::wstring& mask, const std::wstring& names) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    for (sim::ParameterDescription& parameter : system.devices.front().parameters) {
        if (parameter.number == 601)
            parameter.values = {mask + L"," + mask + L"," + mask + L"," + mask};
        if (parameter.number == 603)
            parameter.values = {names};
    }
    return system;
}

struct Session : test::EditorFixture {
    explicit Session(const std::wstring& mask = L"800F", const std::wstring& names = L"One,Two,Three,Four")
        : EditorFixture(Offering(mask, names)) {}
    void TestBody() override {}

    Context context{.state = bench.state,
                    .commands = *this,
                    .root = [this]() -> model::OutFormatConfig& { return root; },
                    .catalogue = [this]() -> model::ToolItems& { return catalogue; },
                    .form = editor->Form(),
                    .changed = [] {},
                    .rebuildTree = [] {},
                    .refreshStrip = [] {},
                    .setNodeText = [](auto&, auto&) {},
                    .selectNode = [](auto&) {},
                    .setCaption = [](auto&) {},
                    .jumpTo = [](auto&) {},
                    .layOut = [] {},
                    .refuse = [](auto&) {},
                    .runDialog = [this](Dialog& dialog) { RunDialog(dialog); },
                    .windowOf = {}};

    void SetTransports(std::initializer_list<std::int32_t> transports) {
        std::int32_t format = 0;
        for (const std::int32_t bits : transports)
            root.AdvancedFormats().Item(++format).Transports(bits);
    }
    std::int32_t Transports(std::int32_t format) { return root.AdvancedFormats().Item(format).Transports(); }
    bool Choose(std::int32_t format, std::function<void(Dialog&)> act) {
        inDialog.push_back(std::move(act));
        return ChooseTransports(context, format);
    }
    int Beeps() const { return bench.platform.boxes.beeps; }
};

template <typename T>
T& In(Dialog& dialog, const wchar_t* name) {
    return dynamic_cast<T&>(*dialog.Form().Root().Find(name));
}
CheckList& List(Dialog& dialog) {
    return In<CheckList>(dialog, L"lvw");
}
controls::Button& OK(Dialog& dialog) {
    return In<controls::Button>(dialog, L"cmdOK");
}

TEST(TransportsTest, ListsWhatTheDeviceOffersAndGreysWhatOthersUse) {
    Session session;
    session.SetTransports({1, 4 | 2, 4, kBit31});
    EXPECT_FALSE(session.Choose(2, [](Dialog& dialog) {
        EXPECT_EQ(dialog.Title(), L"Transports of format 2");
        EXPECT_EQ(List(dialog).Rows(), (std::vector<CheckList::Row>{{L"One", 1, false, true},
                                                                    {L"Two", 2, true, false},
                                                                    {L"Three", 4, true, true},
                                                                    {L"Four", 8, false, false},
                                                                    {L"UserSocket3", 0x8000, false, false}}));
        EXPECT_EQ(In<controls::Label>(dialog, L"lblUsers").Caption(), L"Used by format 1");
        List(dialog).Select(3);
        EXPECT_EQ(In<controls::Label>(dialog, L"lblUsers").Caption(), L"");
        dialog.Dismiss();
    }));
}

TEST(TransportsTest, OnlyOKChangesTheFormat) {
    struct Case {
        const char* what;
        std::int32_t before;
        std::vector<int> toggled;
        Key end;
        std::int32_t after;
        int beeps;
    };
    // Rows: 0 is used by format 1; 1 to 3 are free; 4 is transport 15.
    for (const Case& c : {
             Case{"ticked and unticked", 2, {1, 2, 4}, Key::Return, 4 | 0x8000, 0},
             Case{"nothing touched", 2 | 8, {}, Key::Return, 2 | 8, 0},
             Case{"a bit that is no longer offered stays", kBit31 | 0x400 | 2, {1}, Key::Return, kBit31 | 0x400, 0},
             Case{"taken by another format", 2, {0, 3}, Key::Return, 2 | 8, 1},
             Case{"taken, but the device gave it to both", 3, {0}, Key::Return, 3, 1},
             Case{"cancelled", 2, {2, 3}, Key::Escape, 2, 0},
         }) {
        SCOPED_TRACE(c.what);
        Session session;
        session.SetTransports({1, c.before, 0, 0});
        const bool confirmed = session.Choose(2, [&](Dialog& dialog) {
            for (const int row : c.toggled)
                List(dialog).Toggle(row);
            EXPECT_FALSE(List(dialog).Rows()[0].checked && !c.toggled.empty() && c.toggled[0] == 0)
                << "a row that is taken is unticked again";
            dialog.RouteKey({.key = c.end});
        });
        EXPECT_EQ(confirmed, c.end == Key::Return);
        EXPECT_EQ(session.Transports(2), c.after);
        EXPECT_EQ(session.Transports(1), 1);
        EXPECT_EQ(session.Beeps(), c.beeps);
    }
}

TEST(TransportsTest, TheLastTransportIsTheSignBit) {
    Session session(L"80000001", std::wstring(31, L',') + L"Thirty-one");
    session.SetTransports({0, 0, 0, 0});
    EXPECT_TRUE(session.Choose(1, [](Dialog& dialog) {
        ASSERT_EQ(List(dialog).Rows().size(), 2u);
        EXPECT_EQ(List(dialog).Rows()[1], (CheckList::Row{L"Thirty-one", kBit31, false, false}));
        List(dialog).Toggle(1);
        dialog.RouteKey({.key = Key::Return});
    }));
    EXPECT_EQ(session.Transports(1), kBit31);
    session.Choose(2, [](Dialog& dialog) {
        EXPECT_TRUE(List(dialog).Rows()[1].greyed) << "used by format 1 now";
        dialog.Dismiss();
    });
}

TEST(TransportsTest, ADeviceWithoutTransportsLeavesNothingToConfirm) {
    Session session(L"0", L"");
    session.SetTransports({0, 7, 0, 0});
    EXPECT_FALSE(session.Choose(2, [](Dialog& dialog) {
        ASSERT_EQ(List(dialog).Rows().size(), 1u);
        EXPECT_EQ(List(dialog).Rows()[0].text, L"No transports available");
        List(dialog).Toggle(0);
        EXPECT_FALSE(List(dialog).Rows()[0].checked);
        EXPECT_FALSE(OK(dialog).Enabled());
        dialog.RouteKey({.key = Key::Return});
        EXPECT_FALSE(dialog.Closed());
        In<controls::Button>(dialog, L"cmdCancel").Press();
    }));
    EXPECT_EQ(session.Transports(2), 7);
}

TEST(TransportsTest, AFormatThatDoesNotExistIsAnErrorOfTheCaller) {
    Session session;
    EXPECT_THROW(ChooseTransports(session.context, 5), Error);
}

} // namespace
} // namespace orv::editor
