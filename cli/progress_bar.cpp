#include "cli/progress_bar.h"

#include <algorithm>
#include <ostream>

#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

constexpr int kWidth = 30;

std::string Line(const sim::ProgressLog& log) {
    const int percent = std::clamp(static_cast<int>(log.percent), 0, 100);
    const auto full = static_cast<std::size_t>(percent * kWidth / 100);
    const std::string number = std::to_string(percent);
    return "[" + std::string(full, '#') + std::string(kWidth - full, '.') + "] " + std::string(3 - number.size(), ' ') +
           number + "%  " + sim::ToUtf8(log.text);
}

} // namespace

ProgressBar::ProgressBar(sim::ProgressLog& log, std::ostream& out) : log_(log), out_(out) {
    log_.changed = [this] { Follow(); };
}

ProgressBar::~ProgressBar() {
    log_.changed = nullptr;
    Draw({});
}

void ProgressBar::Follow() {
    Draw(log_.shown ? Line(log_) : std::string());
}

/// Blanks cover what stood there: not every console knows a sequence for it.
void ProgressBar::Draw(const std::string& line) {
    if (line == drawn_)
        return;
    const std::size_t left = drawn_.size() > line.size() ? drawn_.size() - line.size() : 0;
    out_ << '\r' << line << std::string(left, ' ') << (line.empty() ? "\r" : "") << std::flush;
    drawn_ = line;
}

} // namespace orv::cli
