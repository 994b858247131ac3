#include "host/sim/answer_count.h"

#include <algorithm>
#include <utility>

namespace orv::sim {

std::wstring_view Describe(Breach breach) {
    switch (breach) {
    case Breach::Unasked:
        return L"the device sent a line that nothing asked for";
    case Breach::TooLong:
        return L"the device sent a line that is too long";
    case Breach::None:
        break;
    }
    return {};
}

AnswerCount::Taken AnswerCount::Take(std::string_view bytes) {
    Taken taken;
    // The beginning of a line is as much as the whole of it.
    const bool begun = !bytes.empty() && !bytes.ends_with('\n');
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + (begun ? 1 : 0);
    if (lines > open_) {
        taken.breach = Breach::Unasked;
        return taken;
    }
    for (LineSplitter::Line& line : splitter_.Feed(bytes)) {
        if (line.oversized)
            taken.breach = Breach::TooLong;
        else
            taken.lines.push_back(std::move(line.text));
        --open_;
    }
    if (taken.breach != Breach::None)
        taken.lines.clear();
    return taken;
}

} // namespace orv::sim
