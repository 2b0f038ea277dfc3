#include "operations/cut/box_tree.h"

#include <algorithm>

#include "model/math/vectors.h"
#include "operations/cut/cut_pair.h"
#include "operations/cut/unit_space.h"

namespace ulk3d {
namespace {

constexpr std::size_t fan_out = 4;

/// Ten bits with two zeros between each of them.
std::uint32_t spread(std::uint32_t bits) {
    bits = (bits | bits << 16) & 0x030000FF;
    bits = (bits | bits << 8) & 0x0300F00F;
    bits = (bits | bits << 4) & 0x030C30C3;
    return (bits | bits << 2) & 0x09249249;
}

/// The place of a box's middle along a curve in Z shapes through the cube (Morton order), in 30 bits.
std::uint32_t place_on_curve(const box3& box) {
    const auto cell = [](float low, float high) {
        return static_cast<std::uint32_t>(std::clamp((low + high) * 256 + 512, 0.0F, 1023.0F));
    };
    return spread(cell(box.low.x, box.high.x)) | spread(cell(box.low.y, box.high.y)) << 1 |
           spread(cell(box.low.z, box.high.z)) << 2;
}

/// The numbers of the boxes along the curve.
std::vector<std::uint32_t> order_of(std::span<const box3> boxes) {
    std::vector<std::uint64_t> keys(boxes.size());
    for (std::size_t n = 0; n < boxes.size(); ++n)
        keys[n] = std::uint64_t{place_on_curve(boxes[n])} << 32 | n;
    std::ranges::sort(keys);
    std::vector<std::uint32_t> order(keys.size());
    std::ranges::transform(keys, order.begin(),
                           [](std::uint64_t key) { return static_cast<std::uint32_t>(key); });
    return order;
}

std::vector<box3> level_above(const std::vector<box3>& level) {
    std::vector<box3> above;
    above.reserve(level.size() / fan_out + 1);
    for (std::size_t n = 0; n < level.size(); ++n) {
        if (n % fan_out == 0)
            above.push_back(level[n]);
        else
            above.back() = box_around(above.back(), level[n]);
    }
    return above;
}

}  // namespace

box_tree_t::box_tree_t(std::span<const box3> boxes) : numbers(order_of(boxes)) {
    std::vector<box3> level(boxes.size());
    std::ranges::transform(numbers, level.begin(), [&](std::uint32_t number) { return boxes[number]; });
    levels.push_back(std::move(level));
    while (levels.back().size() > 1)
        levels.push_back(level_above(levels.back()));
}

/// Goes down both trees at once wherever their boxes meet.
class box_tree_t::pair_walk_t {
  public:
    pair_walk_t(const box_tree_t& first, const box_tree_t& second, float gap)
        : a(first), b(second), room(gap) {}

    void visit(std::size_t level_a, std::size_t n_a, std::size_t level_b, std::size_t n_b) {
        if (are_apart(a.levels[level_a][n_a], b.levels[level_b][n_b], room))
            return;
        if (level_a == 0 && level_b == 0) {
            found.push_back({a.numbers[n_a], b.numbers[n_b]});
        } else if (level_a >= level_b) {
            const std::size_t end = std::min((n_a + 1) * fan_out, a.levels[level_a - 1].size());
            for (std::size_t n = n_a * fan_out; n < end; ++n)
                visit(level_a - 1, n, level_b, n_b);
        } else {
            const std::size_t end = std::min((n_b + 1) * fan_out, b.levels[level_b - 1].size());
            for (std::size_t n = n_b * fan_out; n < end; ++n)
                visit(level_a, n_a, level_b - 1, n);
        }
    }

    std::vector<pair_t> found;

  private:
    const box_tree_t& a;
    const box_tree_t& b;
    float room;
};

std::vector<box_tree_t::pair_t> box_tree_t::meeting(const box_tree_t& a, const box_tree_t& b, float room) {
    if (a.numbers.empty() || b.numbers.empty())
        return {};
    pair_walk_t walk(a, b, room);
    walk.visit(a.levels.size() - 1, 0, b.levels.size() - 1, 0);
    return std::move(walk.found);
}

}  // namespace ulk3d
