// outfmt: output formats in description files, from the command line.
#include <iostream>

#include "cli/app/console.h"
#include "cli/command_line.h"
#include "cli/output_stream.h"

int main(int argc, char** argv) {
    orv::cli::SearchSystemLibrariesOnly();
    const bool terminal = orv::cli::PrepareStreams();
    orv::cli::OutputBuffer buffer(orv::platform::SystemFile::StandardOutput());
    std::ostream out(&buffer);
    // In the order in which they were said.
    std::cerr.tie(&out);
    const int status = orv::cli::Run(orv::cli::Arguments(argc, argv), {out, std::cerr, terminal, &buffer.Failure()});
    std::cerr.tie(nullptr);
    return status;
}
