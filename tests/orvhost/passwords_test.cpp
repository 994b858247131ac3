// The passwords of a session go to the device and nowhere else.
#include <gtest/gtest.h>

#include "addon/add_on.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "host/app/orvhost/droppable_service.h"
#include "tests/support/bench.h"

namespace orv::tests {
namespace {

class StillContainer final : public addon::Container {
  public:
    void SetVisible(bool) override {}
    void SetEnabled(bool) override {}
    bool UserMode() override { return true; }
    device::WindowHandle Window() override { return 1; }
};

/// A whole session that saves to the device, with everything that anybody could read of it.
class Overheard {
  public:
    Overheard(std::int32_t level, sim::FaultPlan faults) : bench_("tiny.json", std::move(faults)) {
        const auto local = std::make_shared<sim::LocalMibSapService>(std::vector{bench_.device}, bench_.platform.pump);
        local->SetTraffic([this](std::wstring_view line) { traffic_.emplace_back(line); });
        bench_.host.SetService(std::make_shared<host::DroppableService>(local));
        bench_.host.SetAccessLevel(level);
        bench_.host.Gate().KeepLog(true);
        addOn_ = std::make_unique<addon::AddOn>(bench_.state, container_);
    }

    void Run() {
        addOn_->Register(bench_.host.Application());
        addOn_->CurrentClusterIndex(bench_.cluster);
        addOn_->Enable();
        addOn_->Show();
        addOn_->Activate();
        Widget<controls::Tree>(L"tvw").Click(L"FormatDef");
        auto& header = Widget<controls::MBEdit>(L"mbeHeader");
        addOn_->Editor().Form().SetFocus(header);
        header.TypeText(L"H");
        Widget<controls::Button>(L"cmdApply").Press();
    }

    /// What stands somewhere: debug lines, boxes, the host's log, the traffic, the progress display, the editor.
    std::vector<std::wstring> Everything() {
        std::vector<std::wstring> all = bench_.platform.debug.lines;
        all.insert(all.end(), traffic_.begin(), traffic_.end());
        const sim::ProgressLog& progress = bench_.host.Progress();
        all.insert(all.end(), progress.texts.begin(), progress.texts.end());
        all.insert(all.end(), {progress.title, bench_.host.Application()->caption});
        for (const platform::MessageBox& box : bench_.platform.boxes.shown)
            all.insert(all.end(), {box.text, box.title});
        for (const sim::CallGate::Call& call : bench_.host.Gate().Log())
            all.push_back(call.arguments);
        AddTexts(addOn_->Editor().Root(), all);
        return all;
    }
    const std::vector<std::wstring>& Traffic() const { return traffic_; }
    device::Value OnDevice() const { return bench_.device->Store().Get(6); }
    sim::CallGate& Gate() { return bench_.host.Gate(); }

  private:
    template <typename T>
    T& Widget(const wchar_t* name) {
        return dynamic_cast<T&>(*addOn_->Editor().Root().Find(name));
    }
    static void AddTexts(controls::Widget& widget, std::vector<std::wstring>& all) {
        all.push_back(widget.Caption());
        for (const auto& child : widget.Children())
            AddTexts(*child, all);
    }

    test::Bench bench_;
    StillContainer container_;
    std::vector<std::wstring> traffic_;
    std::unique_ptr<addon::AddOn> addOn_;
};

bool Saved(const device::Value& value) {
    const auto* bytes = std::get_if<Bytes>(&value);
    return bytes && *bytes == Bytes{'H'};
}

TEST(Passwords, AreSeenByTheDeviceAlone) {
    const std::wstring secrets[] = {L"VLPX", L"RRNN", L"QMVRTK4826", L"TRAVEN"};
    sim::FaultPlan refused;
    refused.failSession = true;
    sim::FaultPlan set;
    set.sets = {{L"*", 310, sim::kAlways}};
    sim::FaultPlan lost;
    lost.dropAfter = 1;
    const std::pair<const char*, sim::FaultPlan> courses[] = {
        {"all well", {}}, {"session refused", refused}, {"every value refused", set}, {"lost at the start", lost}};
    for (std::int32_t level = 0; level <= 3; ++level) {
        for (const auto& [course, faults] : courses) {
            SCOPED_TRACE(std::string(course) + ", level " + std::to_string(level));
            Overheard session(level, faults);
            session.Run();
            EXPECT_EQ(session.Gate().Count("MibSapService.StartSession"), level > 0 ? 1 : 0) << "no session was tried";
            // Without a level nothing may be written, and nobody is asked.
            EXPECT_EQ(session.Traffic().size() > 1, level > 0);
            EXPECT_EQ(Saved(session.OnDevice()), level > 0 && &faults == &courses[0].second);
            for (const std::wstring& text : session.Everything())
                for (const std::wstring& secret : secrets)
                    EXPECT_EQ(text.find(secret), std::wstring::npos) << testing::PrintToString(text);
        }
    }
}

} // namespace
} // namespace orv::tests
