#pragma once
// Finding an entry of a list by typing the beginning of its text.
#include <chrono>
#include <functional>
#include <string>

namespace orv::controls {

class TypeAhead {
  public:
    using Clock = std::chrono::steady_clock;

    /// The entry to go to, -1 for none. Letters typed without a pause make one beginning; one letter again and again
    /// goes from entry to entry. A beginning is looked for from `selected` on and round.
    int Find(wchar_t letter, int selected, int count, const std::function<const std::wstring&(int)>& textOf,
             Clock::time_point now = Clock::now());
    /// Letters typed so far, none after a pause: then the space is no letter.
    bool Typing(Clock::time_point now = Clock::now()) const;
    void Reset() { typed_.clear(); }

  private:
    std::wstring typed_;
    Clock::time_point last_;
};

} // namespace orv::controls
