#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "model/modeling.h"
#include "model/polygon/distinct_points.h"
#include "model/polygon/drawn_strips.h"
#include "model/polygon/polygon_places.h"
#include "model/vertex.h"
#include "render/gl/shared_holder.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Triangle mesh kept as triangle strips in GL buffers; also the drawn form of every NURBS surface.
///
/// `elements` holds vertex indices; an index at or above the vertex count ends a strip (writers use
/// `restart_mark`). strip_walk.h explains how strips become triangles and which ids these have.
///
/// The vertex data lives only in GL buffers: it is read and written through mappings. The host holds the
/// name, the selection bits, the ids of the selected polygons and the table from polygon id to strip place.
/// Every operation except the constructor requires a current GL context.
class polygon_t : public modeling_t {
  public:
    polygon_t() = default;
    ~polygon_t() override = default;

    /// Makes the arrays for `vertex_count` vertices and `element_count` indices, with vertices and frames
    /// zero and all indices restart marks; no point is selected, and the ids of the selected polygons stay.
    /// Counts of 0 are legal. GL makes the stores at their first use (render/gl/buffer.h); the memory for all
    /// of them is claimed here.
    ///
    /// False when an array can not be allocated or mapped, after a line on the standard error stream that
    /// names it
    /// ("vertices.allocate() failed.", and so on; without a line for the point sizes and the feedback
    /// buffers); the arrays before it stay allocated. Counts that are too large for one draw call, or do not
    /// fit into memory (utils/memory/memory_budget.h), fail in the same way before anything is changed.
    [[nodiscard]] bool allocate(std::uint64_t vertex_count, std::uint64_t element_count);

    /// Whether `allocate` can make arrays for these counts: they are not too large for a draw call, and fit
    /// into memory as far as the system tells. Makes nothing and prints nothing.
    [[nodiscard]] bool can_hold(std::uint64_t vertex_count, std::uint64_t element_count) const;

    /// Grows or shrinks to the new counts and keeps contents and selection; new points are unselected. What
    /// this call adds is zero vertices and restart marks; what an edit has already written into records that
    /// it added to an array itself stays as written. Every edit of the mesh calls this after writing. Fails
    /// as `allocate` does, and also for negative counts and before the first `allocate`.
    [[nodiscard]] bool extend(std::int64_t vertex_count, std::int64_t element_count);

    /// Makes an empty polygon equal to `other`, in buffers of its own. False when GL has no memory for them,
    /// after the line "polygon_t::copy() failed." on the standard error stream. An edit that must not stop
    /// halfway works on a copy and exchanges it with the mesh in the end.
    [[nodiscard]] bool copy(const polygon_t& other);
    /// Exchanges the contents of both. Never fails.
    void swap(polygon_t& other) noexcept;

    /// Gives back the memory on GL that only the frame pass needs, for a mesh whose frames it does not make
    /// any more. Another pass would take it anew.
    void give_back_frame_pass();

    /// Completes a load or an edit: sets the name unless it is null, numbers the polygons, renews
    /// `selectelems`, and gives a default frame to each triangle whose last vertex has a zero normal at that
    /// moment, after the triangles before it were handled: on shared vertices the later triangle wins. With
    /// fewer than three elements there are no polygons, and no frame is given. False when a buffer can not be
    /// mapped: then only the name is set.
    bool afterload(const char* new_name);

    /// Selects or unselects the polygon with an id: adds the id to `selectpolygons()` and its triangle to
    /// `selectelems`, or removes them. An id beyond `polyidvector` prints a line on the standard error
    /// stream; for it, and for an id that has no triangle, only the set changes. An id that can not be added
    /// to `selectelems`, after the lines of a mapping that fails, is not added to the set either.
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

    /// Draws the strips with primitive restart; an index at or above the vertex count restarts as the restart
    /// mark does.
    void draw() override;
    bool drawpoints() override;    ///< all vertices at their point sizes
    bool showpoints() override;    ///< those of them that are not covered by a later one at the same place
    void drawselected();           ///< the selected polygons as single triangles
    bool drawframes();             ///< GL_POINTS of vertices and work normals: the draw of the frame pass
    std::uint64_t drawvertices();  ///< GL_POINTS of vertices and frames; returns the vertex count

    /// Bounding box of the vertices that `elements` refers to; low and high stay as they are when there are
    /// none.
    void bounds(pos3& low, pos3& high) const override;

    void clear() override;

    std::uint64_t vertex_count() const;
    std::uint64_t element_count() const;

    array_t vertices;                          ///< vertex_t per vertex
    array_t normals;                           ///< frame_t per vertex
    array_t wknmls;                            ///< work_frame_t per vertex
    element_array_t elements;                  ///< triangle strips
    shared_holder<vertex_array_t> drawarray;   ///< vertices at locations 0 to 2, normals at 3 to 5
    shared_holder<vertex_array_t> workarray;   ///< vertices at 0 to 2, wknmls at 3 to 6
    shared_holder<vertex_array_t> pointarray;  ///< vertices at 0 to 2, then point sizes over location 2
    feedback_buffer_t normalfeedback;          ///< target of the frame pass, 9 floats per vertex
    polygon_places_t polyidvector;             ///< by polygon id
    element_array_t selectelems;  ///< three indices per polygon id, restart marks where not selected
    /// Which vertices were made in a dialog and have a frame that nobody has given them; those beyond the end
    /// have been given theirs. Whatever else allocates or extends the mesh gives all vertices their frames.
    std::vector<bool> unset_frames;

  private:
    void make_vertex_arrays();
    std::size_t id_count() const;

    std::set<std::uint32_t> selected_ids;

    drawn_strips_t drawn_strips;
    distinct_points_t distinct_points;
};

}  // namespace ulk3d
