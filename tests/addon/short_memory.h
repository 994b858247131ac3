#pragma once
// Memory that runs out on demand. Part of the one test program that replaces the allocator.
#include <cstdint>

namespace orv::test::memory {

/// An allocation fails only while the component runs: the bench host and the tests have all they want.
class Inside {
  public:
    Inside() noexcept;
    ~Inside();
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

  private:
    bool before_;
};

class Outside {
  public:
    Outside() noexcept;
    ~Outside();
    Outside(const Outside&) = delete;
    Outside& operator=(const Outside&) = delete;

  private:
    bool before_;
};

enum class Shortage { None, One, FromThenOn };

/// The `k`-th allocation of the component from now (1 is the next) fails, alone or with all that follow until Relax.
void Fail(std::int64_t k, Shortage shortage) noexcept;
/// The outermost call has returned: there is memory again if it had run out.
void Relax() noexcept;
/// No failure is asked for any more.
void Forget() noexcept;
/// Allocations of the component since Fail or Forget, those that failed among them.
std::int64_t Count() noexcept;
bool Failed() noexcept;
/// Blocks that live at present, everybody's.
std::int64_t Live() noexcept;

} // namespace orv::test::memory
