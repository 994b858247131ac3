// Anything at all, in any order, on any device: the editor never shows what the model does not hold.
#include <algorithm>
#include <cstdlib>
#include <deque>
#include <filesystem>

#include "fixture.h"
#include "tests/controls/fixture.h"
#include "tests/editor/page_reading.h"
#include "tests/editor/random_user.h"
#include "tests/model/random_device.h"

namespace orv::editor {
namespace {

constexpr std::uint32_t kSeed = 20240712;
constexpr int kEvents = 20000;
constexpr int kEventsADevice = 400;
constexpr int kSavesAmongPresses = 12;
constexpr std::size_t kRemembered = 12;

int FromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

/// The contents are at random; lists of choices are those of the sample, symbologies what a tree can show, and a
/// format takes no more items than the device has slots for.
sim::SystemDescription RandomSystem(std::mt19937& random) {
    sim::SystemDescription system = test::MakeRandomDevice(random).system;
    auto& parameters = system.devices.front().parameters;
    std::int16_t itemSlots = 0;
    for (sim::ParameterDescription& parameter : parameters) {
        for (const sim::ParameterDescription& other : test::Sample("tiny.json").devices.front().parameters)
            if (other.number == parameter.number && parameter.details.choices.empty())
                parameter.details.choices = other.details.choices;
        if (parameter.number == 2)
            for (device::Value& value : parameter.values)
                value = static_cast<std::int32_t>(random() % 24);
        if (parameter.number == 349 && !parameter.values.empty())
            for (const sim::ParameterDescription& items : parameters)
                if (items.number == 351)
                    itemSlots = static_cast<std::int16_t>(items.values.size() / parameter.values.size());
    }
    for (sim::ParameterDescription& parameter : parameters)
        if (parameter.number == 350)
            parameter.values = {std::min(itemSlots, std::get<std::int16_t>(parameter.values.front()))};
    return system;
}

sim::SystemDescription AnySystem(std::mt19937& random) {
    switch (random() % 6) {
    case 0:
        return test::Sample("tunnel.json");
    case 1:
        return test::Sample("conveyor.json");
    default:
        return RandomSystem(random);
    }
}

/// One device in the editor, saved as the component saves it.
struct Session : test::EditorFixture {
    std::mt19937& random;
    test::FixedFont font;
    test::RandomUser user{editor->Form(), random, kSavesAmongPresses};
    std::filesystem::path file;

    Session(const sim::SystemDescription& system, std::mt19937& source)
        : EditorFixture(system), random(source),
          file(std::filesystem::path(testing::TempDir()) / "orv_random_events.txt") {
        editor->runDialog = [this](controls::Dialog& dialog) { UseDialog(dialog); };
        editor->Layout({1000, 700}, font);
    }
    ~Session() override { std::filesystem::remove(file); }
    void TestBody() override {}

    void Save(bool interactive) override {
        const bool saved = root.Save(interactive && !editor->NoInteractive());
        if (saved)
            editor->SetModified(false);
        EXPECT_TRUE(saved);
    }
    void UseDialog(controls::Dialog& dialog) {
        dialog.Open();
        dialog.Form().FocusFirst();
        test::RandomUser guest(dialog.Form(), random);
        for (int i = 0; i < 12 && !dialog.Closed(); ++i)
            guest.Act();
        if (!dialog.Closed())
            dialog.RouteKey({.key = random() % 2 == 0 ? controls::Key::Return : controls::Key::Escape});
        if (!dialog.Closed())
            dialog.Dismiss();
    }
    std::string Act() {
        bench.platform.boxes.shown.clear();
        bench.platform.boxes.defaultAnswer = random() % 2 == 0 ? platform::Answer::Yes : platform::Answer::No;
        bench.platform.desktop.saveFileNames = {random() % 2 == 0 ? file.wstring() : std::wstring()};
        std::string did = user.Act();
        if (random() % 64 == 0)
            editor->Resize({640 + static_cast<int>(random() % 900), 480 + static_cast<int>(random() % 500)}, font);
        bench.platform.pump.ProcessPending();
        return did;
    }
    /// A jump to a code or group that the device does not have, and a guide that is not there, may fail.
    static bool IsFault(const platform::MessageBox& box) {
        return box.icon == platform::Icon::Critical && !box.text.starts_with(L"AddOnControl.cmdGoItemCode_Click\n9:") &&
               !box.text.starts_with(L"Error in cmdGuide_Click: There is no guide ");
    }
    std::wstring Fault() {
        for (const platform::MessageBox& box : Boxes())
            if (IsFault(box))
                return box.text;
        const controls::Widget* focused = editor->Form().Focused();
        if (focused && !focused->CanTakeFocus())
            return L"focus on " + focused->Name();
        if (Button(L"cmdOK").Enabled() != editor->Modified() || Button(L"cmdApply").Enabled() != editor->Modified())
            return L"buttons";
        if (bench.host.AccessLevel() != 3)
            return L"access level";
        return test::Disagreement(editor->Root(), root, bench.state);
    }
};

TEST(RandomEvents, TheEditorShowsWhatTheModelHolds) {
    const int events = FromEnvironment("ORV_RANDOM_EVENTS", kEvents);
    const auto seed = static_cast<std::uint32_t>(FromEnvironment("ORV_RANDOM_SEED", kSeed));
    for (int done = 0, device = 0; done < events && !testing::Test::HasFailure(); ++device) {
        // Each device can be had again without the ones before it.
        std::mt19937 random(seed + static_cast<std::uint32_t>(device));
        Session session(AnySystem(random), random);
        std::deque<std::string> last{"load"};
        std::wstring fault = session.Fault();
        for (int i = 0; i < kEventsADevice && fault.empty() && !testing::Test::HasFailure(); ++i, ++done) {
            last.push_back(session.Act());
            if (last.size() > kRemembered)
                last.pop_front();
            fault = session.Fault();
        }
        std::string story;
        for (const std::string& event : last)
            story += "\n  " + event;
        EXPECT_TRUE(fault.empty()) << "ORV_RANDOM_SEED=" << seed + static_cast<std::uint32_t>(device) << ": "
                                   << std::string(fault.begin(), fault.end()) << story;
    }
}

} // namespace
} // namespace orv::editor
