#pragma once
// The two classes that the component creates through COM, offered for as long as this object lives.
#include <windows.h>

#include <array>
#include <memory>

#include "host/sim/bench_host.h"

namespace orv::host {

class ClassObjects {
  public:
    /// Registers with COM for this process. Raises the host's error when COM refuses.
    explicit ClassObjects(std::shared_ptr<sim::BenchHost> bench);
    ~ClassObjects();
    ClassObjects(const ClassObjects&) = delete;
    ClassObjects& operator=(const ClassObjects&) = delete;

  private:
    std::array<DWORD, 2> cookies_{};
};

} // namespace orv::host
