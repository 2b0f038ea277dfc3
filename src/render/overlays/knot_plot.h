#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/vertex.h"
#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// The B-spline basis functions of one knot vector, as grey curves from t = 0 at the left border of the
/// picture to 1 at the right. The lower border is the value -1, the upper one 1, so that values from 0 to 1
/// fill the upper half. No axes are drawn.
///
/// Can be constructed without a context; everything else needs it current, and the same one each time.
class knot_plot_t {
  public:
    knot_plot_t() = default;
    knot_plot_t(const knot_plot_t&) = delete;
    knot_plot_t& operator=(const knot_plot_t&) = delete;

    /// Sets the context's state and compiles the selection program, whose sources files in the working
    /// directory or in `base_directory` (null for none; ends with its separator) replace. Sources that do not
    /// compile or link end the process with exit status 1, after a line and GL's log on the standard error
    /// stream.
    void init(const char* base_directory);

    /// Samples the functions anew for a picture of `width` by `height` device pixels, one sample for each
    /// column of pixels. There are `count` functions of `order`, over `count + order` knots; with fewer knots
    /// there are none. A plot that memory can not hold is empty.
    void reshape(int width, int height, std::uint64_t count, std::uint64_t order,
                 std::span<const float> knots);

    /// Clears the framebuffer that is bound and draws the curves.
    void draw() const;

    /// What is drawn: control_point_t records, function by function, `width` to each.
    const array_t& vertices() const { return array; }
    /// Line strips over them, each ended by a restart mark.
    const element_array_t& strips() const { return elements; }

  private:
    array_t array;
    element_array_t elements;
    vertex_array_ref vertex_array;
    shader_t vertex;
    shader_t fragment;
    program_t program;
    /// Locations of the uniforms, -1 for one that the program lacks: GL ignores it.
    std::int32_t Modelview = -1;
    std::int32_t Projection = -1;
};

/// Samples `count` basis functions at t = x / width for the columns x of a picture: one record for each
/// column, function by function. The knots are `count + order` numbers.
std::vector<control_point_t> knot_plot_samples(std::uint64_t width, std::uint64_t count, std::uint64_t order,
                                               std::span<const float> knots);

}  // namespace ulk3d
