#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "operations/cut/cut_pair.h"

namespace ulk3d {

/// Selects, from many triangles of the victim, those that need `cut_pair`. For all others the answer is
/// known: nothing is cut. Those are pairs in which two edges of the victim's triangle meet the cutter's plane
/// outside the triangle or on its outline, the line through the meeting points does not pass through the
/// triangle, and the cutter's triangle is on one side of the victim's plane. All values are computed as
/// `cut_pair` computes them, equal to the last bit, but for several pairs at once.
class pair_filter_t {
  public:
    /// Starts over with a triangle of the cutter.
    void start(cutter_triangle_t& cutter);

    /// Adds a triangle of the victim whose corner `lone` is strictly on one side of the cutter's plane and
    /// whose other two corners are strictly on the other side. `tag` identifies it in the result.
    void add(const corners_t& corners, std::uint32_t lone, std::uint32_t tag);

    /// Adds a triangle that needs `cut_pair` in any case.
    void ask(std::uint32_t tag) { asked.push_back(tag); }

    /// The tags of the triangles that need `cut_pair`, in ascending order. Valid until the next call.
    const std::vector<std::uint32_t>& finish();

    static constexpr std::size_t lanes = 16;

    struct corner_lanes_t {
        std::array<float, lanes> x{}, y{}, z{};
    };

    /// Triangles with the same lone corner.
    struct block_t {
        std::array<corner_lanes_t, 3> corners;
        std::array<std::uint32_t, lanes> tags{};
        std::size_t count = 0;
    };

    struct cutter_values_t {
        corners_t corners;
        dir3 normal;
        float d = 0;
        mtx3w flat;
        std::array<line2d, 3> edges;
        float reach = 0;  ///< lines whose constant reaches this can not be decided about
    };

  private:
    void decide(block_t& block, std::uint32_t lone);

    cutter_values_t cutter;
    std::array<block_t, 3> blocks;
    std::vector<std::uint32_t> asked;
};

}  // namespace ulk3d
