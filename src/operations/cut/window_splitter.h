#pragma once

#include <cstdint>
#include <vector>

#include "operations/cut/cut_pair.h"
#include "operations/cut/unit_space.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

struct placed_cutter_t {
    cutter_triangle_t triangle;  ///< in unit coordinates
    std::uint64_t j;             ///< the element position at which it closes
};

/// A few elements of the victim's strips, with all that the surgery looks at: the two indices before the
/// first triangle that may be split, and two behind the last one.
struct split_window_t {
    std::uint32_t begin, end;             ///< positions in the victim's elements
    std::uint32_t run_before;             ///< indices of the strip before `begin`
    std::vector<std::uint32_t> elements;  ///< what was between these, and then what it has become
    std::vector<std::uint32_t> cutters;   ///< the numbers of the cutter's triangles that may split, ascending
};

/// Splits triangles of a mesh window by window, and numbers the new vertices in the end as if each triangle
/// of the cutter had gone through the whole mesh before the next one.
class window_splitter_t {
  public:
    window_splitter_t(strip_mesh_t& victim, const unit_space_t& space);

    /// Takes a window in hand, splits it for one triangle of the cutter after the other, in their order, and
    /// gives it back. New vertices have numbers behind all others.
    void take(const split_window_t& window);
    bool split_for(placed_cutter_t& cutter);  ///< returns whether anything was split
    void give_back(split_window_t& window);

    /// Gives the mesh its new vertices. Where two triangles share an edge, a crossing of it with one triangle
    /// of the cutter becomes one vertex. Returns the final number of each new vertex, less the count of the
    /// old ones.
    std::vector<std::uint32_t> finish();

  private:
    /// A vertex that a split has made.
    struct made_t {
        std::uint64_t j;     ///< of the cutter's triangle
        std::uint32_t a, b;  ///< the ends of the edge
        vertex_t vertex;
        frame_t frame;
    };

    std::uint32_t local_number(std::uint32_t index);
    bool split_triangle(std::uint32_t& i, std::uint32_t& run_count, placed_cutter_t& cutter);
    void place_new_vertex(std::uint64_t j, std::uint32_t a, std::uint32_t b, const pos3& unit_position);

    strip_mesh_t& victim;
    const unit_space_t& space;
    strip_mesh_t work;  ///< the window as a mesh of its own
    std::uint32_t run_before = 0;
    std::vector<pos3> unit_positions;    ///< of its vertices
    std::vector<std::uint32_t> numbers;  ///< of its vertices in the victim
    std::vector<std::uint32_t> local;    ///< by vertex of the victim: its number in the window
    std::vector<made_t> made;
};

}  // namespace ulk3d
