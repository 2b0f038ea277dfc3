#include "operations/cut/box_tree.h"

#include <gtest/gtest.h>

#include <set>

#include "model/math/vectors.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

std::vector<box3> random_boxes(cut_scenes_t& random, std::uint32_t count) {
    std::vector<box3> boxes;
    for (std::uint32_t n = 0; n < count; ++n) {
        const pos3 low = random.one_in(3) ? random.lattice_place() : random.place(1);
        const float size = random.one_in(4) ? 0 : std::pow(10.0F, random.between(-3, 0));
        boxes.push_back({low, low + dir3{size, random.between(0, size), size}});
    }
    return boxes;
}

bool have_gap(const box3& a, const box3& b, float room) {
    return b.low.x - a.high.x > room || a.low.x - b.high.x > room || b.low.y - a.high.y > room ||
           a.low.y - b.high.y > room || b.low.z - a.high.z > room || a.low.z - b.high.z > room;
}

TEST(BoxTree, FindsAllPairsThatMeetAndNoOthersOnce) {
    cut_scenes_t random(7);
    for (const std::uint32_t count_a : {0U, 1U, 3U, 4U, 5U, 17U, 200U})
        for (const std::uint32_t count_b : {0U, 1U, 4U, 16U, 90U})
            for (const float room : {0.0F, 0.05F}) {
                const std::vector<box3> a = random_boxes(random, count_a), b = random_boxes(random, count_b);
                std::multiset<std::pair<std::uint32_t, std::uint32_t>> found, expected;
                for (const auto& [in_a, in_b] : box_tree_t::meeting(box_tree_t(a), box_tree_t(b), room))
                    found.emplace(in_a, in_b);
                for (std::uint32_t n = 0; n < count_a; ++n)
                    for (std::uint32_t m = 0; m < count_b; ++m)
                        if (!have_gap(a[n], b[m], room))
                            expected.emplace(n, m);
                EXPECT_EQ(found, expected) << count_a << ' ' << count_b;
            }
}

}  // namespace
