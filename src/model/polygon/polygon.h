#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "model/modeling.h"
#include "model/vertex.h"
#include "render/gl/shared_holder.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Triangle mesh kept as triangle strips in GL buffers; also the drawn form of every NURBS surface.
///
/// `elements` holds vertex indices; an index at or above the vertex count ends a strip (writers use
/// `restart_mark`). How strips become triangles, and their ids, is told in strip_walk.h.
///
/// The vertex data lives only in GL buffers: it is read and written through mappings. On the host stand the
/// name, the selection bits, the ids of the selected polygons and the table from polygon id to strip place.
/// A current GL context is required by every operation but the constructor.
class polygon_t : public modeling_t {
  public:
    polygon_t() = default;
    ~polygon_t() override = default;

    /// Makes the model one of `vertex_count` vertices and `element_count` indices, zero vertices and frames
    /// and only restart marks, with all points unselected; the selected ids stay. Counts of 0 are legal.
    ///
    /// False, after a line on the standard error stream that names the array ("vertices.allocate() failed.",
    /// and so on; none for the point sizes and the feedback buffers), when one of them can not be allocated:
    /// the arrays before it stay allocated. Counts that one draw call can not take or that do not fit into
    /// memory (model/memory_budget.h) fail so before anything is touched.
    [[nodiscard]] bool allocate(std::uint64_t vertex_count, std::uint64_t element_count);

    /// Grows or shrinks to the new counts and keeps contents and selection; new points are unselected. What
    /// this call adds is zero vertices and restart marks; what its array was extended by before, for an edit
    /// to write there, stays as written. Every edit of the mesh calls it after writing.
    /// Failures as in `allocate`, also for negative counts and before the first `allocate`.
    [[nodiscard]] bool extend(std::int64_t vertex_count, std::int64_t element_count);

    /// Completes a load or an edit: takes the name unless null, numbers the polygons, renews `selectelems`,
    /// and gives each triangle whose last vertex has a zero normal a default frame, as the normals stand
    /// after the triangles before it: on shared vertices the later triangle wins. With fewer than three
    /// elements only the name is taken.
    void afterload(const char* new_name);

    /// Selects the polygon of an id, or unselects it: the id goes into `selectpolygons()` or out of it, its
    /// triangle into `selectelems` or out of them. An id beyond `polyidvector` prints a line on the standard
    /// error stream; it, and an id that has no triangle, changes the set alone.
    void selectpolygon(std::uint64_t polyid);
    void unselectpolygon(std::uint64_t polyid);
    /// Unselects all polygons.
    void clearpolygons();
    /// The ids of the selected polygons.
    const std::set<std::uint32_t>& selectpolygons() const { return selected_ids; }

    std::uint32_t arraycount() const override { return 2; }
    const array_t* array(std::uint32_t index) const override;  ///< 0 vertices, 1 normals, 2 work normals
    array_t* array(std::uint32_t index) override;
    const element_array_t* elementarray() const override { return &elements; }
    element_array_t* elementarray() override { return &elements; }

    /// The strips, with primitive restart; an index at or above the vertex count restarts as the mark does.
    void draw() override;
    void drawpoints() override;    ///< all vertices at their point sizes
    void drawselected();           ///< the selected polygons as single triangles
    void drawframes();             ///< GL_POINTS of vertices and work normals: the draw of the frame pass
    std::uint64_t drawvertices();  ///< GL_POINTS of vertices and frames; returns the vertex count

    /// Box of the vertices that `elements` refers to; low and high stay as they are when there is none.
    void bounds(pos3& low, pos3& high) const override;

    void clear() override;

    std::uint64_t vertex_count() const;
    std::uint64_t element_count() const;

    /// Place of a polygon in the strips.
    struct polygon_place_t {
        std::uint32_t position = restart_mark;  ///< index into `elements` of the triangle's first element
        bool flipped = false;                   ///< an even triangle of its strip: first two vertices swapped
    };

    array_t vertices;                           ///< vertex_t per vertex
    array_t normals;                            ///< frame_t per vertex
    array_t wknmls;                             ///< work_frame_t per vertex
    element_array_t elements;                   ///< triangle strips
    shared_holder<vertex_array_t> drawarray;    ///< vertices at locations 0 to 2, normals at 3 to 5
    shared_holder<vertex_array_t> workarray;    ///< vertices at 0 to 2, wknmls at 3 to 6
    shared_holder<vertex_array_t> pointarray;   ///< vertices at 0 to 2, then point sizes over location 2
    feedback_buffer_t normalfeedback;           ///< target of the frame pass, 9 floats per vertex
    std::vector<polygon_place_t> polyidvector;  ///< by polygon id
    element_array_t selectelems;  ///< three indices per polygon id, restart marks where not selected

  private:
    const element_array_t& strips_to_draw();

    std::set<std::uint32_t> selected_ids;

    /// GL knows one restart index only. When `elements` holds other indices at or above the vertex count,
    /// they are drawn through this copy, in which these are restart marks.
    element_array_t cleanelems;
    bool draws_cleanelems = false;
    /// What foreign indices depend on: as long as this stays, so do they.
    struct strips_state_t {
        std::uint64_t writable_mappings = 0, vertex_count = 0, element_count = 0;
        bool operator==(const strips_state_t&) const = default;
    };
    strips_state_t strips_state() const;
    strips_state_t examined;  ///< the state that `draws_cleanelems` and `cleanelems` were made for
};

}  // namespace ulk3d
