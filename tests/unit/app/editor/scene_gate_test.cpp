#include "app/editor/scene_gate.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using ulk3d::scene_gate_t;

TEST(SceneGate, LetsAChangeInAndGivesItsResult) {
    scene_gate_t gate;
    EXPECT_TRUE(gate.is_open());
    EXPECT_EQ(gate.pass([] { return 7; }), 7);
    EXPECT_TRUE(gate.is_open());
}

TEST(SceneGate, KeepsAChangeOutOfARunningOne) {
    scene_gate_t gate;
    bool ran = false;
    const bool outer = gate.pass([&] {
        EXPECT_FALSE(gate.is_open());
        EXPECT_FALSE(gate.pass([&] { return ran = true; }));
        return true;
    });
    EXPECT_TRUE(outer);
    EXPECT_FALSE(ran);
}

TEST(SceneGate, KeepsChangesWithoutAResultOutToo) {
    scene_gate_t gate;
    int runs = 0;
    gate.pass([&] {
        ++runs;
        gate.pass([&] { ++runs; });
    });
    EXPECT_EQ(runs, 1);
}

TEST(SceneGate, OpensAgainWhenAChangeThrows) {
    scene_gate_t gate;
    EXPECT_THROW(gate.pass([] { throw std::runtime_error("no memory"); }), std::runtime_error);
    EXPECT_TRUE(gate.is_open());
}

}  // namespace
