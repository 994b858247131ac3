#include "host/app/orvhost/system.h"

#include <shellapi.h>

#include <new>
#include <stdexcept>

#include "host/app/library_search.h"
#include "host/app/orvhost/host_app.h"
#include "host/app/orvhost/transcript.h"
#include "host/sim/bounded_file.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

constexpr int kUsage = 2; // nothing was begun, nothing was changed

std::vector<std::string> Arguments() {
    int count = 0;
    const Owned<LPWSTR*, &LocalFree> list(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(sim::ToUtf8(list.Get()[i]));
    return arguments;
}

std::vector<ScriptCommand> ReadScript(const std::filesystem::path& file) {
    if (file.empty())
        return {};
    try {
        return ParseScript(sim::ReadFile(file));
    } catch (const ScriptError& failure) {
        throw std::runtime_error(sim::NameOf(file) + ": " + failure.what());
    }
}

struct Ole {
    Ole() : started(SUCCEEDED(OleInitialize(nullptr))) {}
    Ole(const Ole&) = delete;
    Ole& operator=(const Ole&) = delete;
    ~Ole() {
        if (started)
            OleUninitialize();
    }
    bool started;
};

int RunProgram() {
    const Options options = ParseOptions(Arguments());
    if (options.status) {
        Transcript::Print(*options.status == 0 ? options.message : "");
        if (*options.status != 0)
            Transcript::Complain(options.message);
        return *options.status;
    }
    const Ole ole;
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    std::unique_ptr<HostApp> app;
    std::vector<ScriptCommand> script;
    try {
        script = ReadScript(options.script);
        app = std::make_unique<HostApp>(options);
    } catch (const std::bad_alloc&) {
        Transcript::Complain(sim::NameOf(options.file) + ": there is not enough memory for it");
        return kUsage;
    } catch (const std::exception& failure) {
        Transcript::Complain(failure.what());
        return kUsage;
    }
    return app->Run(std::move(script));
}

} // namespace
} // namespace orv::host

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    orv::host::SearchSystemLibrariesOnly();
    try {
        return orv::host::RunProgram();
    } catch (const std::exception& failure) {
        orv::host::Transcript::Complain(failure.what());
        return 1;
    }
}
