#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/math/records.h"
#include "render/gl/array.h"
#include "render/gl/element.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"

namespace ulk3d {

class glpolygon_t;

/// One table of floats that a model lets the user edit: `count` values, `stride` floats apart. Not owned.
struct option_view_t {
    float* data = nullptr;
    std::uint64_t stride = 1;
    std::uint64_t count = 0;
};

/// Point sizes make the selection visible: each point is drawn at its size.
inline constexpr float unselected_point_size = 3.0F;
inline constexpr float selected_point_size = 5.0F;

/// Element lists of the models' arrays, each built on first use.
const element_list_t& vertex_elements();         ///< Position, RGBA, TexCoord2: 9 floats
const element_list_t& frame_elements();          ///< Normal x 3 (tangent, binormal, normal): 9 floats
const element_list_t& work_frame_elements();     ///< Normal x 4 (difference vectors): 12 floats
const element_list_t& size_elements();           ///< PointSize: 1 float
const element_list_t& control_point_elements();  ///< Position, RGBA: 7 floats

/// What the view, the dialogs and the edit history see of a model: a name, GL arrays, and for each vertex or
/// control point a selection bit and a point size.
///
/// All coordinates are world coordinates and are stored in the GL buffers; contents are accessed by mapping.
/// A GL context must be current for every operation except construction.
class modeling_t {
  public:
    modeling_t() = default;
    virtual ~modeling_t() = default;
    modeling_t(const modeling_t&) = delete;
    modeling_t& operator=(const modeling_t&) = delete;

    /// The number of option tables, and the table at `index`: an empty view where there is none.
    virtual std::uint32_t optioncount() const { return 0; }
    virtual option_view_t option(std::uint32_t) { return {}; }

    /// The number of arrays that a user may edit, and the array at `index`; work arrays follow behind those
    /// counted. Null beyond.
    virtual std::uint32_t arraycount() const = 0;
    virtual const array_t* array(std::uint32_t index) const = 0;
    virtual array_t* array(std::uint32_t index) = 0;

    /// Notifies the model that record `element` of array `array` was written through `array()`.
    virtual void elementchanged(std::uint32_t /*array*/, std::uint64_t /*element*/) {}

    /// The strips of the model; null when it has none.
    virtual const element_array_t* elementarray() const { return nullptr; }
    virtual element_array_t* elementarray() { return nullptr; }

    /// Derives the drawn surface from the edited arrays again.
    virtual void update(glpolygon_t& /*glpolygon*/) {}

    /// Draws all points as GL_POINTS, each at its point size. False, after the lines of a mapping that fails,
    /// when there is no memory for what they are drawn from.
    virtual bool drawpoints() = 0;
    /// Draws what shows of the points when they are drawn one over the other, without blending and without a
    /// depth test: the pixels are those of `drawpoints`, with as few points as the model can tell.
    virtual bool showpoints() { return drawpoints(); }
    virtual void draw() = 0;

    /// The model's bounding box.
    virtual void bounds(pos3& low, pos3& high) const {
        low = {};
        high = {};
    }

    /// Returns to the empty state: no name, no points, no selection.
    virtual void clear();

    /// Unselects all points; the number of points stays. False when the point sizes can not be mapped; they
    /// then stay as they were.
    bool clearselection();
    /// Selects or unselects one point. False when it already is so, when there is no such point, or, after
    /// the lines of a mapping that fails, when there is no memory for the point sizes.
    bool select(std::uint64_t point);
    bool unselect(std::uint64_t point);

    std::string name;                     ///< the model's file name
    array_t pointsizes;                   ///< one float per point, kept equal to `selection`
    std::vector<bool> selection;          ///< one bit per point, set when selected
    feedback_buffer_t selectionfeedback;  ///< target of the selection pass, 10 words per point

  protected:
    /// Makes what is above equal to that of `other`, in buffers of its own. False when GL has no memory.
    [[nodiscard]] bool copy_points(const modeling_t& other);
    /// Exchanges what is above. Never fails.
    void swap_points(modeling_t& other) noexcept;

  private:
    bool mark(std::uint64_t point, bool selected, float size);
};

}  // namespace ulk3d
