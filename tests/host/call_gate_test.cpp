#include <gtest/gtest.h>

#include "host/sim/call_gate.h"
#include "text/error.h"

namespace orv::sim {
namespace {

/// Number of the error that a call raises, 0 for none.
std::int32_t Enter(CallGate& gate, std::string_view name) {
    try {
        gate.Enter(name);
        return 0;
    } catch (const Error& error) {
        return error.Number();
    }
}

TEST(CallGate, FailsTheCallsThatWereAskedForAndNoOthers) {
    CallGate gate;
    Enter(gate, "A");
    gate.FailCall(2, 77, L"second from now");
    gate.FailNamed("B", 2, 88, L"second and third B", 2);
    EXPECT_EQ(Enter(gate, "B"), 0);
    EXPECT_EQ(Enter(gate, "A"), 77);
    EXPECT_EQ(Enter(gate, "B"), 88);
    EXPECT_TRUE(gate.FailurePending());
    EXPECT_EQ(Enter(gate, "A"), 0);
    EXPECT_EQ(Enter(gate, "B"), 88);
    EXPECT_EQ(Enter(gate, "B"), 0);
    EXPECT_FALSE(gate.FailurePending());
    EXPECT_EQ(gate.Count(), 7);
}

TEST(CallGate, AsksForArgumentsOnlyWhileItKeepsALog) {
    CallGate gate;
    int asked = 0;
    const auto arguments = [&] { return std::to_wstring(++asked); };
    gate.Enter("A", arguments);
    gate.FailNamed("other", 1, 1, L"");
    gate.Enter("A", arguments);
    EXPECT_EQ(asked, 0);
    gate.KeepLog(true);
    gate.Enter("A", arguments);
    ASSERT_EQ(gate.Log().size(), 1U);
    EXPECT_EQ(gate.Log()[0].arguments, L"1");
    EXPECT_EQ(gate.Count("A"), 1);
}

TEST(CallGate, HookMayCallTheSameMethodAndTakeItselfAway) {
    CallGate gate;
    int runs = 0;
    gate.Before("A", [&] {
        ++runs;
        gate.Enter("A");
        if (runs == 2)
            gate.Before("A", {});
    });
    for (int call = 0; call < 4; ++call)
        gate.Enter("A");
    EXPECT_EQ(runs, 2);
    gate.Before("A", [] { throw Error(5); });
    EXPECT_EQ(Enter(gate, "A"), 5);
    EXPECT_EQ(Enter(gate, "A"), 5) << "a hook that raised runs again";
}

} // namespace
} // namespace orv::sim
