// outfmt: output formats in description files, from the command line.
#include <iostream>

#include "cli/app/console.h"
#include "cli/command_line.h"

int main(int argc, char** argv) {
    orv::cli::SearchSystemLibrariesOnly();
    const bool terminal = orv::cli::PrepareStreams();
    return orv::cli::Run(orv::cli::Arguments(argc, argv), {std::cout, std::cerr, terminal});
}
