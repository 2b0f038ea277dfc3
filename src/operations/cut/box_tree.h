#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/math/records.h"

namespace ulk3d {

/// A hierarchy over boxes: they are sorted along a curve that fills space, and every four of them, or of the
/// nodes of the level below, have a node with the box around them.
class box_tree_t {
  public:
    /// The boxes lie within the cube of side 4 around the origin.
    explicit box_tree_t(std::span<const box3> boxes);

    struct pair_t {
        std::uint32_t in_a, in_b;  ///< numbers of boxes
    };

    /// All pairs of a box of `a` and one of `b` between which there is no gap of more than `room`, in no
    /// particular order.
    static std::vector<pair_t> meeting(const box_tree_t& a, const box_tree_t& b, float room);

  private:
    class pair_walk_t;

    std::vector<std::uint32_t> numbers;     ///< of the boxes, in the order of level 0
    std::vector<std::vector<box3>> levels;  ///< the boxes themselves, then a quarter as many at each level
};

}  // namespace ulk3d
