#include <gtest/gtest.h>

#include <iostream>

#include "operations/cut/mesh_cut.h"
#include "support/captured_stream.h"
#include "support/cut_scenes.h"
#include "support/plain_mesh_cut.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct outcome_t {
    strip_mesh_t mesh;
    std::vector<double> progress;
    std::string messages;
};

outcome_t plain_outcome(const cut_scene_t& scene) {
    const captured_stream messages(std::cerr);
    outcome_t outcome{scene.victim, {}, {}};
    plain_mesh_cut(outcome.mesh, scene.cutter, [&](double f) { outcome.progress.push_back(f); });
    outcome.messages = messages.text();
    return outcome;
}

/// Also that the phases tell rightly whether they changed anything.
outcome_t fast_outcome(const cut_scene_t& scene) {
    const captured_stream messages(std::cerr);
    outcome_t outcome{scene.victim, {}, {}};
    progress_signal_t progress;
    progress.connect([&](double f) { outcome.progress.push_back(f); });
    const bool split = split_by(outcome.mesh, scene.cutter, progress);
    EXPECT_EQ(split, !is_same(outcome.mesh, scene.victim));
    const strip_mesh_t before = outcome.mesh;
    const bool removed = remove_inside(outcome.mesh, scene.cutter, progress);
    EXPECT_EQ(removed, !is_same(outcome.mesh, before));
    outcome.messages = messages.text();
    return outcome;
}

class MeshCutScenes : public testing::TestWithParam<std::uint32_t> {};

TEST_P(MeshCutScenes, FastCutIsThePlainOneToTheLastBit) {
    cut_scenes_t scenes(GetParam() + 1);
    for (int n = 0; n < 15; ++n) {
        const cut_scene_t scene = scenes.scene(GetParam());
        const outcome_t plain = plain_outcome(scene);
        const outcome_t fast = fast_outcome(scene);
        ASSERT_TRUE(is_same(plain.mesh, fast.mesh)) << n;
        ASSERT_EQ(plain.progress, fast.progress) << n;
        ASSERT_EQ(plain.messages, fast.messages) << n;
    }
}

INSTANTIATE_TEST_SUITE_P(OfKind, MeshCutScenes, testing::Range(0U, cut_scenes_t::kinds));

}  // namespace
