#pragma once
// The host's progress display as one line of a terminal.
#include <iosfwd>
#include <string>

#include "host/sim/progress_log.h"

namespace orv::cli {

class ProgressBar {
  public:
    /// Follows `log` while it lives.
    ProgressBar(sim::ProgressLog& log, std::ostream& out);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

  private:
    void Follow();
    void Draw(const std::string& line);

    sim::ProgressLog& log_;
    std::ostream& out_;
    std::string drawn_;
};

} // namespace orv::cli
