#pragma once
// What the operating system knows of the command line and the standard streams.
#include <string>
#include <vector>

namespace orv::cli {

/// Without the program's name, UTF-8.
std::vector<std::string> Arguments(int argc, char** argv);

/// Libraries without a path come from the system's folder. For the start, before anything is loaded.
void SearchSystemLibrariesOnly();

/// Bytes go out as they are written; a console shows them as UTF-8. True when standard error is a terminal.
bool PrepareStreams();

} // namespace orv::cli
