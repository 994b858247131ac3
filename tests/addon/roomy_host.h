#pragma once
// The bench host behind doors at which the shortage of memory ends: what the component calls outside has all it wants,
// what is called back into the component has not.
#include <memory>

#include "tests/addon/session.h"

namespace orv::test {

std::unique_ptr<Surroundings> RoomyHost(Bench& bench);

} // namespace orv::test
