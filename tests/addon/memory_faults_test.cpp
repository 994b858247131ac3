// Each allocation of a whole life refused in turn, alone and with all that follow until the call has returned. Nothing
// crashes or leaks, what must be restored is, the user is told, and an edit is done or not done but nothing between.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "controls/mb_edit_core.h"
#include "tests/addon/roomy_host.h"
#include "tests/addon/short_memory.h"
#include "tests/addon/whole_life.h"
#include "tests/editor/page_reading.h"
#include "tests/model/snapshot.h"

namespace orv::addon {
namespace {

namespace memory = test::memory;
using memory::Shortage;
using test::Session;

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

/// What an undisturbed life looks like.
struct Reference {
    std::vector<std::string> steps;
    std::vector<std::int64_t> counts;    ///< allocations up to the end of each step
    std::vector<std::wstring> snapshots; ///< of the model at the end of each step
    std::string leftOut;
};

std::wstring SnapshotOf(Session& session) {
    return session.state.root ? test::Snapshot(*session.state.root) : std::wstring();
}

Reference Undisturbed() {
    Reference reference;
    Session session("tiny.json", {}, 0, test::RoomyHost);
    test::WholeLife life(session);
    memory::Forget();
    life.after = [&](const std::string& step) {
        reference.steps.push_back(step);
        reference.counts.push_back(memory::Count());
        // Before the load there is nothing to compare.
        reference.snapshots.push_back(reference.steps.size() < 3 ? std::wstring() : SnapshotOf(session));
    };
    life.Run();
    session.around->Enter([&] { session.addOn->Terminate(); });
    reference.steps.emplace_back("Terminate");
    reference.counts.push_back(memory::Count());
    reference.snapshots.emplace_back();
    reference.leftOut = life.LeftOut();
    for (const platform::MessageBox& box : session.Boxes())
        EXPECT_NE(box.icon, platform::Icon::Critical) << Narrow(box.text);
    return reference;
}

/// One life with one shortage.
class ShortLife {
  public:
    ShortLife(const Reference& reference, std::int64_t k, Shortage shortage)
        : reference_(reference), session_("tiny.json", {}, 0, test::RoomyHost), life_(session_) {
        life_.before = [this](const std::string&) { boxesBefore_ = session_.Boxes().size(); };
        life_.after = [this](const std::string& step) {
            memory::Relax();
            if (memory::Failed() && hit_.empty())
                Hit(step);
            ++step_;
        };
        memory::Fail(k, shortage);
    }
    ShortLife(const ShortLife&) = delete;
    ShortLife& operator=(const ShortLife&) = delete;
    ~ShortLife() { memory::Forget(); }

    void Run() {
        life_.Run();
        if (session_.addOn)
            CheckRestored();
        boxesBefore_ = session_.Boxes().size();
        if (session_.addOn)
            session_.around->Enter([&] { session_.addOn->Terminate(); });
        memory::Relax();
        if (memory::Failed() && hit_.empty())
            hit_ = "Terminate";
        memory::Forget();
        CheckReleased();
    }
    const std::string& HitStep() const { return hit_; }
    bool Told() const { return told_; }

  private:
    void Hit(const std::string& step) {
        hit_ = step;
        for (std::size_t i = boxesBefore_; i < session_.Boxes().size(); ++i)
            told_ = told_ || session_.Boxes()[i].text.ends_with(L"\n7: Out of memory");
        if (step == "Initialize" || step == "Show" || !session_.state.root)
            return;
        if (step != "Activate")
            CheckDoneOrNotDone();
        CheckShown();
    }
    /// A step that failed left the model as it was, or as the step leaves it.
    void CheckDoneOrNotDone() {
        if (step_ == 0 || step_ >= reference_.steps.size() || reference_.steps[step_] != hit_)
            return;
        const std::wstring now = SnapshotOf(session_);
        EXPECT_TRUE(now == reference_.snapshots[step_ - 1] || now == reference_.snapshots[step_])
            << "half done: " << Narrow(Difference(now, reference_.snapshots[step_ - 1])) << " and "
            << Narrow(Difference(now, reference_.snapshots[step_]));
    }
    static std::wstring Difference(const std::wstring& a, const std::wstring& b) {
        std::size_t at = 0;
        while (at < a.size() && at < b.size() && a[at] == b[at])
            ++at;
        const std::size_t start = a.rfind(L'\n', at) == std::wstring::npos ? 0 : a.rfind(L'\n', at) + 1;
        return L"'" + a.substr(start, a.find(L'\n', at) - start) + L"' for '" +
               b.substr(start, b.find(L'\n', at) - start) + L"'";
    }
    /// What is shown differs from the model only where the user was told, and is right again after the next click.
    void CheckShown() {
        if (!session_.addOn->Editor().Root().Find(L"fraCodeDef")->Enabled())
            return;
        controls::Widget& root = session_.addOn->Editor().Root();
        const std::wstring differs = test::Disagreement(root, *session_.state.root, session_.state);
        EXPECT_TRUE(differs.empty() || told_) << "shown wrong without a word: " << Narrow(differs);
        auto& tree = dynamic_cast<controls::Tree&>(*root.Find(L"tvw"));
        const std::wstring key = tree.SelectedKey();
        if (differs.empty() || !tree.FindNode(key))
            return;
        tree.Click(key);
        EXPECT_EQ(Narrow(test::Disagreement(root, *session_.state.root, session_.state)), "") << "after a click";
    }
    void CheckRestored() {
        EXPECT_EQ(session_.bench.host.AccessLevel(), 3) << "access level";
        EXPECT_FALSE(session_.bench.host.ConfigurationInteractive()) << "interactive switch";
        EXPECT_TRUE(session_.container.enabled) << "control";
        EXPECT_TRUE(session_.container.visible) << "control";
        EXPECT_FALSE(session_.bench.host.Progress().shown);
        EXPECT_EQ(session_.state.cache, nullptr);
        EXPECT_EQ(session_.bench.platform.pump.Depth(), 0);
        EXPECT_FALSE(session_.addOn->Busy());
        EXPECT_FALSE(session_.addOn->Saving());
        EXPECT_FALSE(session_.bench.device->InSession()) << "session";
    }
    void CheckReleased() {
        EXPECT_EQ(session_.bench.host.OpenConfigurations(), 0);
        EXPECT_EQ(session_.state.root, nullptr);
        EXPECT_EQ(session_.state.catalogue, nullptr);
        if (session_.addOn) {
            EXPECT_TRUE(session_.addOn->Terminated());
        }
    }

    const Reference& reference_;
    Session session_;
    test::WholeLife life_;
    std::size_t step_ = 0;
    std::size_t boxesBefore_ = 0;
    std::string hit_;
    bool told_ = false;
};

/// The first allocations of each step, and of the rest every so-many-th, unless ORV_EXHAUSTIVE is set; ORV_FROM leaves
/// out those before it. ORV_ALLOCATION names the one of a failure that is to be seen again.
std::vector<std::int64_t> Picked(const Reference& reference, std::int64_t ofEachStep, std::int64_t lives) {
    if (const char* one = std::getenv("ORV_ALLOCATION"))
        return {std::atoll(one)};
    const char* const from = std::getenv("ORV_FROM");
    const std::int64_t first = from ? std::atoll(from) : 1;
    std::vector<std::int64_t> picked;
    const std::int64_t all = reference.counts.back();
    const std::int64_t stride = std::getenv("ORV_EXHAUSTIVE") ? 1 : std::max<std::int64_t>(1, all / lives);
    std::int64_t start = 0;
    for (const std::int64_t end : reference.counts) {
        for (std::int64_t k = start + 1; k <= end; ++k)
            if (k >= first && (k <= start + ofEachStep || k % stride == 0))
                picked.push_back(k);
        start = end;
    }
    return picked;
}

constexpr std::size_t kLongestStep = 64;

class MemoryFaults : public testing::TestWithParam<Shortage> {};

TEST_P(MemoryFaults, EachAllocationOfALifeInTurn) {
    controls::MBEditCore::Parse(L"<"); // its names are kept for the process, as is what a first life fills
    Undisturbed();
    const Reference reference = Undisturbed();
    EXPECT_EQ(reference.leftOut, "");
    const std::vector<std::int64_t> picked = Picked(reference, 1, 60);
    std::map<std::string, int> silent;
    int told = 0;
    int hit = 0;
    for (const std::int64_t k : picked) {
        SCOPED_TRACE(testing::Message() << "allocation " << k);
        std::string step;
        step.reserve(kLongestStep);
        bool wasTold = false;
        const std::int64_t before = memory::Live();
        {
            ShortLife life(reference, k, GetParam());
            life.Run();
            step = life.HitStep();
            wasTold = life.Told();
        }
        // What is said about a failure takes memory, too.
        if (!testing::Test::HasFailure()) {
            EXPECT_EQ(memory::Live(), before) << "leaked";
        }
        hit += step.empty() ? 0 : 1;
        told += wasTold ? 1 : 0;
        if (!wasTold)
            ++silent[step];
        ASSERT_FALSE(testing::Test::HasFailure() && !std::getenv("ORV_KEEP_GOING")) << "in " << step;
    }
    std::string untold;
    for (const auto& [step, count] : silent)
        untold += "\n  " + step + " " + std::to_string(count);
    std::printf("%lld allocations in %zu steps, %zu refused, %d told, silent:%s\n",
                static_cast<long long>(reference.counts.back()), reference.steps.size(), picked.size(), told,
                untold.c_str());
    EXPECT_EQ(hit, static_cast<int>(picked.size())) << "a life took another way before the failure";
    EXPECT_GT(told, static_cast<int>(picked.size()) * 3 / 4);
}

INSTANTIATE_TEST_SUITE_P(Shortages, MemoryFaults, testing::Values(Shortage::One, Shortage::FromThenOn));

} // namespace
} // namespace orv::addon
