// Names and values of assignments from the command line: applied and read back as the same, or refused with the one
// documented error and without a trace.
#include <algorithm>
#include <string_view>
#include <vector>

#include "cli/assignment.h"
#include "cli/fields.h"
#include "cli/values.h"
#include "fuzz/fuzz.h"
#include "host/sim/bench_host.h"
#include "host/sim/portable_platform.h"
#include "host/sim/utf8.h"

namespace orv::fuzz {
namespace {

class Subject {
  public:
    Subject() {
        state_.application = host_.Application();
        state_.manager = host_.CreateConfigurationManager();
        state_.configuration = state_.manager->GetConfiguration();
        state_.current = {host_.Contents().devices.front().cluster, 0, 3};
    }

    /// Every input begins with the model as the device has it, or a crash could not be repeated.
    void Begin() {
        model_ = std::make_unique<model::OutFormatConfig>(state_);
        model_->Reload();
    }

    void Assign(std::wstring_view text, bool force) {
        const auto before = Values();
        cli::Assignment assignment;
        try {
            assignment = cli::ParseAssignment(text);
            cli::Apply(*model_, state_, assignment, force);
        } catch (const cli::AssignmentError& error) {
            Require(std::string_view(error.what()).find('\n') == std::string_view::npos, "a message is one line");
            Require(Values() == before, "a refused assignment changes nothing");
            return;
        }
        CheckReadBack(assignment.name);
        ++Accepted();
    }

  private:
    /// What is shown of a field can be typed again.
    void CheckReadBack(const std::wstring& name) {
        const std::wstring shown = Shown(name);
        try {
            cli::Apply(*model_, state_, {name, shown}, true);
        } catch (const cli::AssignmentError& error) {
            Require(false, error.what());
        }
        Require(Shown(name) == shown, "a value that is shown and typed again stays");
    }
    std::wstring Shown(const std::wstring& name) { return cli::FieldText(cli::Resolve(*model_, name), access_); }
    std::vector<std::wstring> Values() {
        std::vector<std::wstring> values;
        for (const cli::Section& section : cli::AllSections(*model_))
            for (const cli::FieldRef& field : section.fields)
                values.push_back(cli::FieldText(field, access_));
        return values;
    }

    sim::PortablePlatform platform_;
    sim::BenchHost host_{sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json")};
    device::DeviceState state_{platform_.services, host_};
    device::ParameterAccess access_{state_};
    std::unique_ptr<model::OutFormatConfig> model_;
};

/// A line is an assignment; one that begins with "!" is forced. Later ones meet what earlier ones left.
void Check(std::string_view text) {
    static Subject subject;
    subject.Begin();
    for (int line = 0; line < 8 && !text.empty(); ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const bool force = text.front() == '!';
        subject.Assign(sim::FromUtf8(text.substr(0, end).substr(force ? 1 : 0)), force);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Check(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
