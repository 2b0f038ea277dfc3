#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/vertex.h"
#include "render/gl/array.h"
#include "render/gl/element_array.h"

namespace ulk3d {

/// The numbers of vertices, ascending, without those that a later one covers: one with the same position,
/// colour and point size, bit for bit. Drawn over each other in order, both lists of points give the same
/// pixels. In meshes whose triangles share no vertices, as in STL files, five of six points are covered.
///
/// Takes linear time and little memory, and so may keep points that are covered by a far later one. Empty
/// when that would leave more than half of the points: then it does not pay to tell them apart.
std::vector<std::uint32_t> uncovered_points(std::span<const vertex_t> vertices, std::span<const float> sizes);

/// The list of these in a GL buffer, made anew when vertices or point sizes have been written.
class distinct_points_t {
  public:
    /// Null when all points are to be drawn: when leaving some out does not pay, or, after the lines of
    /// `element_array_t::allocate`, when there is no memory for the list.
    const element_array_t* of(const array_t& vertices, const array_t& sizes);
    /// Forgets the list, for vertices in another buffer.
    void release();

  private:
    struct state_t {
        std::uint64_t vertex_writes = 0, size_writes = 0;
        std::int64_t vertex_count = 0;
        bool operator==(const state_t&) const = default;
    };
    [[nodiscard]] bool make_list(const array_t& vertices, const array_t& sizes);

    state_t examined;  ///< the state that `list` was made for
    bool has_list = false;
    element_array_t list;
};

}  // namespace ulk3d
