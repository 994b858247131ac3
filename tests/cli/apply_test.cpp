#include <chrono>
#include <thread>

#include "cli/progress_bar.h"
#include "fixture.h"
#include "host/sim/device_server.h"

namespace orv::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// A device that holds what tiny.json holds, behind a port.
class Served {
  public:
    explicit Served(sim::FaultPlan faults = {})
        : device_(std::make_shared<sim::SimDevice>(sim::LoadDescription(SamplePath("tiny.json")).devices[0],
                                                   std::move(faults))),
          server_(device_, 0), to_("localhost:" + std::to_string(server_.Port())), thread_([this] { server_.Run(); }) {}
    ~Served() { Stop(); }

    const std::string& To() const { return to_; }
    /// The device's contents; it serves no more then.
    const sim::ParameterStore& Stop() {
        if (thread_.joinable()) {
            server_.Stop();
            thread_.join();
        }
        return device_->Store();
    }

  private:
    std::shared_ptr<sim::SimDevice> device_;
    sim::DeviceServer server_;
    std::string to_;
    std::thread thread_;
};

class ApplyTest : public ::testing::Test {
  protected:
    ApplyTest() {
        EXPECT_EQ(RunProgram({"set", SamplePath("tiny.json"), "-o", file_, "StandardFormat.Header=<STX>H",
                              "StandardFormat.Terminator=", "Codes(1).MinLength=7", "CustomCodeID(0)=\xE2\x82\xAC"})
                      .status,
                  0);
        DeviceFile opened({file_, {}, 0, {}});
        total_ = std::to_string(opened.Model().Plan().writes.size());
    }
    Result Apply(const Served& served, std::vector<std::string> more = {}) {
        std::vector<std::string> arguments{"apply", file_, "--to", served.To()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunProgram(arguments);
    }

    Folder folder_;
    std::string file_ = folder_.File("wanted.json");
    std::string total_;
};

TEST_F(ApplyTest, WritesEveryParameterToTheDevice) {
    Served served;
    const Result result = Apply(served);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, total_ + " parameters written to " + served.To() + "\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Apply(served, {"--quiet"}).out, "");
    const sim::ParameterStore& device = served.Stop();
    EXPECT_EQ(device.Get(6), device::Value(Bytes{2, 'H'}));
    EXPECT_EQ(device.Get(7), device::Value(Bytes{}));
    EXPECT_EQ(device.Get(400), device::Value(Bytes{0x80}));
    EXPECT_EQ(device::ToInt32(device.Get(3)), 7);
}

TEST_F(ApplyTest, TellsWhereTheDeviceRefused) {
    sim::FaultPlan faults;
    faults.sets.push_back({L"/OutputFormat/Terminator", 310});
    Served served(faults);
    const Result result = Apply(served);
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err,
                StartsWith("outfmt: " + file_ + ": " + served.To() + ": stopped at /OutputFormat/Terminator, "));
    EXPECT_THAT(result.err, HasSubstr(" of " + total_ + " parameters written: the device answers 310"));
    EXPECT_THAT(result.err, HasSubstr("Couldn't save parameters to MIB! MIBSAP Error 310\n"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    const sim::ParameterStore& device = served.Stop();
    EXPECT_EQ(device.Get(6), device::Value(Bytes{2, 'H'})); // the one before
    EXPECT_EQ(device.Get(7), device::Value(Bytes{'\r', '\n'}));
}

TEST_F(ApplyTest, TellsHowFarItCameWhenThereIsNoSessionOrNoConnection) {
    struct Case {
        sim::FaultPlan faults;
        std::vector<std::string> options;
        const char* step;
        const char* reason;
    };
    sim::FaultPlan noSession;
    noSession.failSession = true;
    sim::FaultPlan dropped;
    dropped.dropAfter = 7;
    sim::FaultPlan silent;
    silent.silentAfter = 9;
    sim::FaultPlan deaf;
    deaf.silentAfter = 0;
    sim::FaultPlan refused;
    refused.failConnect = sim::kAlways;
    const Case cases[] = {
        {noSession, {}, "stopped at starting the session, 0 of ", "the device answers 409"},
        {refused, {}, "stopped at connecting, 0 of ", "the device answers 408"},
        {dropped, {}, "stopped at /", "MIBSAP Error 504"},
        {silent, {"--timeout", "1"}, "stopped at /", "no answer within 1 s"},
        {deaf, {"--timeout", "1"}, "stopped at connecting, 0 of ", "no answer within 1 s"},
    };
    for (const Case& c : cases) {
        Served served(c.faults);
        std::vector<std::string> arguments{"apply", file_, "--to", served.To()};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const auto begin = std::chrono::steady_clock::now();
        const Result result = RunProgram(arguments);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
        EXPECT_EQ(result.status, 4);
        EXPECT_THAT(result.err, HasSubstr(c.step));
        EXPECT_THAT(result.err, HasSubstr(c.reason));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
    }
}

TEST_F(ApplyTest, CountsWhatTheDeviceTookBeforeItFellSilent) {
    sim::FaultPlan faults;
    faults.silentAfter = 2 + 3; // connection, session, three sets
    Served served(faults);
    const Result result = Apply(served, {"--timeout", "1"});
    EXPECT_THAT(result.err, HasSubstr(", 3 of " + total_ + " parameters written: no answer"));
}

TEST_F(ApplyTest, TellsThatTheSessionDidNotEnd) {
    sim::FaultPlan faults;
    faults.dropAfter = 2 + std::stoi(total_);
    Served served(faults);
    const Result result = Apply(served);
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(result.err, HasSubstr("all parameters accepted, but the session did not end, so what the device holds is not known: "
                                      "transport error 504 the device closed the connection"));
}

TEST(ProgressBarTest, DrawsOneLineAndLeavesNoneBehind) {
    sim::ProgressLog log;
    std::ostringstream out;
    {
        const ProgressBar bar(log, out);
        log.shown = true;
        log.text = L"Saving";
        log.changed();
        log.percent = 50.4F;
        log.changed();
        const std::size_t drawn = out.str().size();
        log.percent = 50.9F; // nothing to be seen of it
        log.changed();
        EXPECT_EQ(out.str().size(), drawn);
        EXPECT_THAT(out.str(), ::testing::EndsWith("\r[###############...............]  50%  Saving"));
        log.shown = false;
        log.changed();
        EXPECT_THAT(out.str(), ::testing::EndsWith(std::string(45, ' ') + "\r"));
    }
    EXPECT_FALSE(log.changed);
}

} // namespace
} // namespace orv::cli::testing
