// Anything a user may do, in the order that the input says: the editor shows what the model holds, and complains of
// nothing.
#include <filesystem>
#include <random>

#include "controls/dialog.h"
#include "fuzz/component.h"
#include "fuzz/fixed_font.h"
#include "fuzz/fuzz.h"
#include "fuzz/source.h"
#include "host/sim/local_service.h"
#include "host/sim/sim_device.h"
#include "tests/editor/page_reading.h"
#include "tests/editor/random_user.h"

namespace orv::fuzz {
namespace {

constexpr int kMostGestures = 150;
constexpr int kGesturesInDialog = 8;
constexpr int kSavesAmongPresses = 6;

/// A user for each two bytes of the input, who knows what to do from them alone: a change of one gesture leaves the
/// ones before it and behind it what they were.
class Play {
  public:
    explicit Play(Source& source)
        : source_(source), device_(std::make_shared<sim::SimDevice>(Tiny().devices.front())),
          file_(std::filesystem::temp_directory_path() / "orv_fuzz_events.txt") {
        component_.host.SetService(std::make_shared<sim::LocalMibSapService>(std::vector{device_}, component_.pump));
        component_.Editor().Layout({1000, 700}, font_);
        component_.Start();
        component_.Editor().runDialog = [this](controls::Dialog& dialog) { Use(dialog); };
    }

    void Run() {
        test::RandomUser user(component_.Editor().Form(), random_, kSavesAmongPresses);
        for (int i = 0; i < kMostGestures && !source_.Empty(); ++i) {
            Prepare();
            const std::string did = user.Act();
            component_.pump.ProcessPending();
            Look(did);
        }
        ++Accepted();
    }

  private:
    void Prepare() {
        random_.seed(source_.Word());
        component_.platform.boxes.shown.clear();
        component_.platform.boxes.defaultAnswer = random_() % 2 == 0 ? platform::Answer::Yes : platform::Answer::No;
        component_.platform.desktop.saveFileNames = {random_() % 2 == 0 ? file_.wstring() : std::wstring()};
        if (random_() % 32 == 0)
            component_.Editor().Resize(
                {640 + static_cast<int>(random_() % 900), 480 + static_cast<int>(random_() % 500)}, font_);
    }

    void Use(controls::Dialog& dialog) {
        dialog.Open();
        dialog.Form().FocusFirst();
        test::RandomUser guest(dialog.Form(), random_);
        for (int i = 0; i < kGesturesInDialog && !dialog.Closed(); ++i)
            guest.Act();
        if (!dialog.Closed())
            dialog.RouteKey({.key = random_() % 2 == 0 ? controls::Key::Return : controls::Key::Escape});
        if (!dialog.Closed())
            dialog.Dismiss();
    }

    void Look(const std::string& did) {
        for (const platform::MessageBox& box : component_.platform.boxes.shown)
            Expect(!IsFault(box), box.text, did);
        const controls::Widget* focused = component_.Editor().Form().Focused();
        Expect(!focused || focused->CanTakeFocus(), L"the focus is where it cannot be", did);
        Expect(component_.host.AccessLevel() == 3, L"the access level is not what it was", did);
        const std::wstring found = test::Disagreement(component_.Editor().Root(), component_.Root(), component_.state);
        Expect(found.empty(), found, did);
    }
    static void Expect(bool held, const std::wstring& what, const std::string& did) {
        Require(held, (Narrow(what) + " after " + did).c_str());
    }
    /// A jump to a code or group that the device does not have, and a guide that is not there, may fail.
    static bool IsFault(const platform::MessageBox& box) {
        return Component::TellsOfFailure(box) && !box.text.starts_with(L"AddOnControl.cmdGoItemCode_Click\n9:") &&
               !box.text.starts_with(L"Error in cmdGuide_Click: There is no guide ");
    }

    Source& source_;
    std::mt19937 random_;
    FixedFont font_;
    Component component_{Tiny()};
    std::shared_ptr<sim::SimDevice> device_;
    std::filesystem::path file_;
};

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Source source(data, size);
    orv::fuzz::Play(source).Run();
    return 0;
}
