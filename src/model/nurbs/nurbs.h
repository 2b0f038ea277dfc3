#pragma once

#include <optional>

#include "model/matrix.h"
#include "model/modeling.h"
#include "model/vertex.h"
#include "render/gl/shared_holder.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

class polygon_t;
struct texture_t;

/// Rational B-spline surface in which every row of the net has its own knot vector along the row, and every
/// column its own along the column.
///
/// The control data is held on the host, where the surface is evaluated; `ctlpts` is its copy in a GL array,
/// for drawing and picking. The surface is evaluated at a fixed resolution, over parameters from 0 to 1, into
/// the polygon_t that the model is wired to, and drawn as that mesh. A GL context must be current except
/// where noted.
class nurbs_t : public modeling_t {
  public:
    /// `target_texture` and `target_polygon` are not owned and must outlive this object.
    nurbs_t(texture_t* target_texture, polygon_t* target_polygon);
    ~nurbs_t() override = default;

    /// Sets the dimensions and makes the tables for them, zeroed; old contents are lost and no point is
    /// selected. Makes no GL calls. False when the tables do not fit into memory
    /// (utils/memory/memory_budget.h), without a message. Throws std::bad_array_new_length when their size
    /// overflows. In both cases the model then has no tables.
    [[nodiscard]] bool allocate(std::uint64_t count1, std::uint64_t order1, std::uint64_t count2,
                                std::uint64_t order2);

    /// Makes an empty surface equal to `other`, in tables and buffers of its own; the textures and the
    /// polygon that it is wired to are left alone. False when GL has no memory, after the line
    /// "nurbs_t::copy() failed." on the standard error stream.
    [[nodiscard]] bool copy(const nurbs_t& other);
    /// Exchanges the contents of both but for what they are wired to. Never fails.
    void swap(nurbs_t& other) noexcept;

    /// Makes the GL arrays from the host tables, sets the name unless it is null, and unselects all points.
    /// False when an array can not be allocated or mapped; for the control points and their sizes this prints
    /// the line "makeCtlpts() error." on the standard error stream.
    bool afterload(const char* new_name);

    /// Sizes the polygon for the resolution, opens the textures and writes the polygon's strips: one for each
    /// two rows of samples. False, with the line "polygon.allocate() fail." on the standard error stream,
    /// when it can not be allocated, as with a resolution2 of 0. False, too, when its buffers can not be
    /// mapped.
    ///
    /// The polygon's `afterload` runs before the strips are written: a new polygon needs it once more.
    [[nodiscard]] bool makeVertices();

    /// Whether makeVertices can make a mesh of the resolution. Not so for a resolution2 of 0, nor for one
    /// that does not fit into memory.
    [[nodiscard]] bool mesh_fits() const;

    /// Evaluates the surface into the polygon's vertices, with the parameters as texture coordinates, then
    /// calls updateNormals. The work grows with the samples times the orders. False when a buffer can not be
    /// mapped.
    bool updateVertices();

    /// Fills the polygon's work records with the differences from which its tangent frames are made
    /// (model/nurbs/nurbs_normals.h). False, with nothing written, when a buffer can not be mapped.
    bool updateNormals();

    /// What has changed in a surface since its mesh was built.
    struct change_t {
        bool sizes = false;   ///< the resolutions, or there is no mesh yet
        bool points = false;  ///< any number in the tables
    };

    /// The one way to bring the mesh up to date, with its steps in the order that works: its buffers and
    /// strips and the model's maps (makeVertices), the numbers of its polygons, its vertices
    /// (updateVertices), and their frames, which `glpolygon` makes. A mesh of new sizes is flat until its
    /// points are rebuilt too. False, after the line of makeVertices, when the mesh can not be made, and when
    /// it can not be mapped.
    [[nodiscard]] bool rebuild(const change_t& change, glpolygon_t& glpolygon);

    /// Rebuilds what has changed since the last time; where nothing has, nothing is evaluated or printed. Of
    /// a surface that is local (model/nurbs/nurbs_grid.h), moved points have just the samples that they reach
    /// evaluated again. The maps are opened each time: when models share a picture, the last model decides
    /// its filters.
    void update(glpolygon_t& glpolygon) override;
    /// The same; false when the mesh could not be rebuilt.
    [[nodiscard]] bool bring_up_to_date(glpolygon_t& glpolygon);

    /// Reads record `element` of array 0 back into `points`; does nothing for other arrays and for records
    /// beyond the end.
    void elementchanged(std::uint32_t array, std::uint64_t element) override;

    /// Writes one record of `points` to the GL array; does nothing for a place outside the net.
    void uploadpoint(std::uint64_t column, std::uint64_t row);

    /// Squeezes the net like soft matter: the point at (column, row) moves by `delta`, and all others move
    /// the opposite way by up to a quarter of it, falling off towards the borders of its row and towards the
    /// first row. Writes the whole net to the GL array. Does nothing for a place outside the net.
    void dent(std::uint64_t column, std::uint64_t row, const dir3& delta);

    struct dims_t {
        std::uint32_t rows = 0, columns = 0;
    };
    /// Dimensions of option table `index`; 0, 0 where there is none.
    dims_t optiondims(std::uint32_t index) const;

    std::uint32_t optioncount() const override { return 3; }
    option_view_t option(
        std::uint32_t index) override;  ///< 0 knot1, 1 knot2, 2 weight: whole tables, row-major
    std::uint32_t arraycount() const override { return 1; }
    const array_t* array(std::uint32_t index) const override;  ///< 0 control points
    array_t* array(std::uint32_t index) override;

    bool drawpoints() override;
    void draw() override { static_cast<void>(drawpoints()); }

    /// Bounding box of the control points in the GL array; low and high are the origin when there are none.
    void bounds(pos3& low, pos3& high) const override;

    void clear() override;

    texture_t* texture;
    polygon_t* polygon;
    std::uint64_t count1 = 0;  ///< control points per row
    std::uint64_t order1 = 0;  ///< order along a row, degree plus one
    std::uint64_t count2 = 0;  ///< rows
    std::uint64_t order2 = 0;  ///< order along a column
    matrix_t<float> knot1;     ///< count2 rows of count1 + order1: row j is the knot vector of net row j
    matrix_t<float> knot2;     ///< count1 rows of count2 + order2: row i is the knot vector of net column i
    matrix_t<float> weight;    ///< count2 rows of count1
    matrix_t<control_point_t> points;          ///< count2 rows of count1
    array_t ctlpts;                            ///< control_point_t, record row * count1 + column
    std::uint32_t resolution1;                 ///< samples along a row
    std::uint32_t resolution2;                 ///< samples along a column
    shared_holder<vertex_array_t> pointarray;  ///< ctlpts at locations 0 and 1, point sizes at 2

  private:
    /// What the mesh was evaluated from.
    struct source_t {
        std::uint64_t order1, order2;
        matrix_t<float> knot1, knot2, weight;
        matrix_t<control_point_t> points;
        bool is_local;  ///< see evaluate_surface
    };

    change_t changes() const;
    bool has_other_points_only(const source_t& source) const;
    std::optional<bool> evaluate(const source_t* former);
    void release_tables();
    bool MakeCtlpts();
    void make_point_array();
    bool is_uploaded(std::uint64_t point) const;
    void uploadpoints();

    std::optional<dims_t> built_resolution;  ///< empty while there is no mesh
    std::optional<source_t> built_source;
};

}  // namespace ulk3d
