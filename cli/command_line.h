#pragma once
// The program behind its main function.
#include <iosfwd>
#include <string>
#include <vector>

namespace orv::cli {

struct Streams {
    std::ostream& out; ///< results, bytes as they are
    std::ostream& err; ///< one line for each failure
    bool errIsTerminal = false;
    const std::string* outFailure = nullptr; ///< why `out` failed, where that is known
};

/// `arguments` without the program's name, UTF-8. Answers the exit status and lets no exception out.
int Run(std::vector<std::string> arguments, const Streams& streams);

} // namespace orv::cli
