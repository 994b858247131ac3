#pragma once
// Requests against answers on one connection, counted where the bytes arrive. The lines carry no number: an answer is
// known by its turn alone, so one line too many would make each later answer pass for that of the request before it.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/sim/line_protocol.h"

namespace orv::sim {

enum class Breach { None, Unasked, TooLong };

/// For people.
std::wstring_view Describe(Breach breach);

class AnswerCount {
  public:
    struct Taken {
        std::vector<std::string> lines; ///< without line breaks; none of a batch with a breach, whose first may be
                                        ///< meant for nobody, too
        Breach breach = Breach::None;   ///< the connection is of no more use
    };

    /// A request goes out.
    void Ask() { ++open_; }
    /// Bytes in the order in which they came, in pieces of any size.
    Taken Take(std::string_view bytes);
    /// No request is without its answer, and nothing has begun to come behind the last one.
    bool Settled() const { return open_ == 0; }

  private:
    LineSplitter splitter_;
    std::size_t open_ = 0;
};

} // namespace orv::sim
