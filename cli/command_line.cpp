#include "cli/command_line.h"

#include <algorithm>
#include <functional>
#include <new>
#include <ostream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "cli/assignment.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"
#include "text/version.h"

namespace orv::cli {
namespace {

constexpr const char* kStatuses = "Exit status:\n"
                                  "  0  done\n"
                                  "  1  check found concerns, diff found differences\n"
                                  "  2  wrong usage, wrong name or value\n"
                                  "  3  a file cannot be read or written, or is not valid\n"
                                  "  4  the device or a call of the host failed";

struct Options {
    DeviceChoice device;
    bool json = false;
    std::string output;
    std::string otherFile;
    std::vector<std::string> assignments;
    bool force = false;
    int timeout = 30;
    ApplyOptions apply;
};

Failure TooLarge(const std::string& name) {
    return {status::kFile, name + ": there is not enough memory for it"};
}

/// Runs a command over an opened file, whose name goes before every failure of the model.
int RunOnDevice(const DeviceChoice& choice, const std::function<int(DeviceFile&)>& run) {
    const std::string name = sim::Excerpt(choice.file);
    try {
        DeviceFile file(choice);
        return run(file);
    } catch (const AssignmentError& error) {
        throw Failure(status::kUsage, name + ": " + error.what());
    } catch (const Error& error) {
        if (error.Number() == error_number::kOutOfMemory)
            throw TooLarge(name);
        throw Failure(status::kDevice, name + ": " + sim::ToUtf8(text::Excerpt(error.Description())));
    } catch (const std::bad_alloc&) {
        throw TooLarge(name);
    } catch (const std::length_error&) {
        throw TooLarge(name);
    }
}

/// The command line and what each command runs.
class Program {
  public:
    explicit Program(const Streams& streams)
        : streams_(streams), app_("Output formats in description files", "outfmt") {
        using namespace orv::text;
        app_.set_version_flag("--version", std::string("outfmt ") + kVersion);
        app_.set_help_flag("-h,--help", "Print this and exit");
        app_.require_subcommand(1);
        app_.allow_windows_style_options(false);
        app_.footer(kStatuses);
        DeclareReaders();
        DeclareWriters();
    }

    int Run(std::vector<std::string> arguments) {
        RequireKnownCommand(arguments);
        try {
            std::reverse(arguments.begin(), arguments.end());
            app_.parse(std::move(arguments));
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0)
                return app_.exit(error, streams_.out, streams_.err);
            throw Failure(status::kUsage, sim::Excerpt(error.what()) + "; outfmt --help tells more");
        }
        return chosen_();
    }

  private:
    /// The library says of a wrong command only that there is none.
    void RequireKnownCommand(const std::vector<std::string>& arguments) const {
        if (arguments.empty() || arguments[0].starts_with('-'))
            return;
        const auto isMeant = [&](const CLI::App* command) { return command->check_name(arguments[0]); };
        if (!app_.get_subcommands(isMeant).empty())
            return;
        throw Failure(status::kUsage,
                      "there is no command " + sim::Excerpt(arguments[0]) + "; outfmt --help lists them");
    }

    int RunDiff() {
        try {
            return Diff(options_.device.file, options_.otherFile, streams_.out);
        } catch (const std::bad_alloc&) {
            throw TooLarge(sim::Excerpt(options_.device.file) + ", " + sim::Excerpt(options_.otherFile));
        }
    }

    CLI::App& Command(const char* name, const char* description, std::function<int()> run) {
        CLI::App& command = *app_.add_subcommand(name, description);
        command.allow_windows_style_options(false);
        command.footer(kStatuses);
        command.callback([this, run = std::move(run)] { chosen_ = run; });
        return command;
    }

    CLI::App& DeviceCommand(const char* name, const char* description, std::function<int(DeviceFile&)> run) {
        CLI::App& command =
            Command(name, description, [this, run = std::move(run)] { return RunOnDevice(options_.device, run); });
        command.add_option("FILE", options_.device.file, "Description file")->required();
        command.add_option("--cluster", options_.device.cluster,
                           "Cluster of the device; default: that of the first one");
        command.add_option("--device", options_.device.device,
                           "Index of the device in its cluster; default: 0, the master");
        command.add_option("--level", options_.device.level, "Access level; default: the file's")
            ->check(CLI::Range(0, 3));
        return command;
    }

    void DeclareReaders() {
        DeviceCommand("show", "Print the definition tree with every field", [this](DeviceFile& file) {
            options_.json ? ShowJson(file, streams_.out) : ShowText(file, streams_.out);
            return status::kDone;
        }).add_flag("--json", options_.json, "As one JSON document");
        DeviceCommand("check", "Print what a save would ask about",
                      [this](DeviceFile& file) { return Check(file, streams_.out); });
        DeviceCommand("export", "Write the structure of the formats in use as text",
                      [this](DeviceFile& file) {
                          Export(file, options_.output, streams_.out);
                          return status::kDone;
                      })
            .add_option("-o,--output", options_.output, "File to write, - for standard output")
            ->required();
        DeviceCommand("plan", "Print what a save would write, in order", [this](DeviceFile& file) {
            PrintPlan(file, streams_.out, streams_.err);
            return status::kDone;
        });
        CLI::App& diff =
            Command("diff", "Print the values that differ between two description files", [this] { return RunDiff(); });
        diff.add_option("A", options_.device.file, "Description file")->required();
        diff.add_option("B", options_.otherFile, "The other one")->required();
    }

    void DeclareWriters() {
        CLI::App& set = DeviceCommand("set", "Change fields and write the description file", [this](DeviceFile& file) {
            SetFields(file, options_.assignments, options_.output, options_.force, streams_.out, streams_.err);
            return status::kDone;
        });
        set.add_option("NAME=VALUE", options_.assignments,
                       "Fields by the model's names, in order: Codes(3).MinLength=4");
        set.add_option("-o,--output", options_.output, "File to write, may be FILE; - for standard output")->required();
        set.add_flag("--force", options_.force, "Do not check ranges, enumerations, lengths and characters");

        CLI::App& apply = DeviceCommand("apply", "Save to a running device", [this](DeviceFile& file) {
            options_.apply.timeout = std::chrono::seconds(options_.timeout);
            options_.apply.progress = streams_.errIsTerminal && !options_.apply.quiet ? &streams_.err : nullptr;
            ApplyToDevice(file, options_.apply, streams_.out, streams_.err);
            return status::kDone;
        });
        apply.add_option("--to", options_.apply.to, "HOST:PORT; HOST is a numeric address or localhost")->required();
        apply.add_option("--timeout", options_.timeout, "Seconds to wait for any one answer, 0 for ever; default: 30")
            ->check(CLI::Range(0, 86400));
        apply.add_flag("--quiet", options_.apply.quiet, "Print nothing but failures");
    }

    const Streams& streams_;
    Options options_;
    CLI::App app_;
    std::function<int()> chosen_;
};

int Complain(const Streams& streams, int status, std::string line) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    streams.err << "outfmt: " << line << '\n';
    return status;
}

std::string Reason(const std::string* failure) {
    return failure == nullptr || failure->empty() ? std::string() : ": " + *failure;
}

} // namespace

int Run(std::vector<std::string> arguments, const Streams& streams) {
    try {
        const int result = Program(streams).Run(std::move(arguments));
        if (!streams.out.flush())
            throw Failure(status::kFile, "standard output cannot be written" + Reason(streams.outFailure));
        return result;
    } catch (const Failure& failure) {
        return Complain(streams, failure.Status(), failure.what());
    } catch (const sim::FileError& error) {
        return Complain(streams, status::kFile, error.what());
    } catch (const std::exception& error) {
        return Complain(streams, status::kDevice, sim::Excerpt(error.what()));
    } catch (...) {
        return Complain(streams, status::kDevice, "the wait for the device was given up");
    }
}

} // namespace orv::cli
