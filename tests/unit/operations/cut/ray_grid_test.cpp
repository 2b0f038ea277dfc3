#include "operations/cut/ray_grid.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/math/vectors.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

box3 random_box(cut_scenes_t& random) {
    const pos3 low = random.one_in(2) ? random.place(1) : random.lattice_place();
    const float size = std::pow(10.0F, random.between(-4, 0.3F));
    return {low, low + as_dir(random.place(size)) + dir3{size, size, size}};
}

TEST(RayGrid, GivesEveryBoxThatALineMeets) {
    constexpr float room = 0.01F;
    cut_scenes_t random(3);
    for (int round = 0; round < 8; ++round) {
        std::vector<box3> boxes(150);
        std::ranges::generate(boxes, [&] { return random_box(random); });
        ray_grid_t grid(boxes, room);
        for (int n = 0; n < 400; ++n) {
            const box3& near = boxes[random.below(150)];
            const float x = random.one_in(3) ? near.high.x + room : random.between(-2, 3);
            const float y = random.one_in(3) ? near.low.y - room : random.between(-2, 3);
            const std::span<const std::uint32_t> numbers = grid.numbers_at(x, y);
            EXPECT_TRUE(std::ranges::is_sorted(numbers));
            for (std::uint32_t k = 0; k < boxes.size(); ++k) {
                const auto& [low, high] = boxes[k];
                const bool is_met =
                    x >= low.x - room && x <= high.x + room && y >= low.y - room && y <= high.y + room;
                EXPECT_TRUE(!is_met || std::ranges::binary_search(numbers, k)) << n << " " << k;
            }
        }
    }
}

TEST(RayGrid, LeavesOutMostBoxesOfMany) {
    cut_scenes_t random(5);
    std::vector<box3> boxes;
    for (int n = 0; n < 2000; ++n) {
        const pos3 low = random.place(1);
        boxes.push_back({low, low + dir3{0.02F, 0.02F, 0.02F}});
    }
    ray_grid_t grid(boxes, 1e-5F);
    EXPECT_LT(grid.numbers_at(0.3F, 0.2F).size(), 40U);
}

TEST(RayGrid, BoxesOverAllCellsStandAmongTheOthersInOrder) {
    std::vector<box3> boxes;
    for (int n = 0; n < 1000; ++n) {
        const float x = static_cast<float>(n) / 1000;
        boxes.push_back(n % 100 == 50 ? box3{{0, 0, 0}, {1, 1, 1}} : box3{{x, x, 0}, {x, x, 1}});
    }
    ray_grid_t grid(boxes, 1e-5F);
    const std::span<const std::uint32_t> numbers = grid.numbers_at(0.7F, 0.7F);
    EXPECT_TRUE(std::ranges::is_sorted(numbers));
    for (std::uint32_t n = 50; n < 1000; n += 100)
        EXPECT_TRUE(std::ranges::binary_search(numbers, n)) << n;
    EXPECT_TRUE(std::ranges::binary_search(numbers, 700U));
    EXPECT_LT(numbers.size(), 100U);
}

TEST(RayGrid, WithoutBoxesGivesNone) {
    ray_grid_t grid({}, 1);
    EXPECT_TRUE(grid.numbers_at(0, 0).empty());
}

}  // namespace
