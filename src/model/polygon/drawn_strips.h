#pragma once

#include <cstdint>

#include "render/gl/element_array.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// How the strips of a mesh are handed to GL, so that it draws the triangles of strip_walk.h, in their order.
/// They are examined when they have changed, not at each draw.
class drawn_strips_t {
  public:
    /// Draws the strips of `elements`, with primitive restart enabled for `restart_mark`. Nothing when there
    /// are none, or they can not be examined: an index beyond the vertices must not get to GL.
    void draw(const element_array_t& elements, std::uint64_t vertex_count,
              const vertex_array_ref& vertex_array);
    /// Forgets what was found, for strips in another buffer.
    void release();

  private:
    enum class form_t {
        as_they_are,
        /// GL knows only one restart index: strips with other indices at or above the vertex count are drawn
        /// through a copy in which those are restart marks.
        cleaned,
        /// Strips of one triangle each, whose corners are the vertices in order, as in STL files: GL draws
        /// them without indices. A software driver takes several times as long for so many strips.
        without_indices,
    };
    /// What the form depends on: as long as this stays the same, so does that.
    struct state_t {
        std::uint64_t writes = 0, vertex_count = 0, element_count = 0;
        bool operator==(const state_t&) const = default;
    };

    [[nodiscard]] bool examine(const element_array_t& elements, std::uint64_t vertex_count);

    state_t examined;  ///< the state that what follows was made for
    form_t form = form_t::as_they_are;
    std::int64_t ordered_vertices = 0;  ///< drawn without indices
    element_array_t clean;
};

}  // namespace ulk3d
