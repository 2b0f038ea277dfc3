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

/// Plots the B-spline basis functions of one knot vector as grey curves, from t = 0 at the left border of the
/// picture to t = 1 at the right. The lower border is the value -1, the upper one 1, so values from 0 to 1
/// fill the upper half. No axes are drawn.
///
/// Can be constructed without a context; everything else needs a current one, always the same.
class knot_plot_t {
  public:
    knot_plot_t() = default;
    knot_plot_t(const knot_plot_t&) = delete;
    knot_plot_t& operator=(const knot_plot_t&) = delete;

    /// Sets the context's state and builds the selection program. A file with the name of a source, in the
    /// working directory or else in `base_directory` (null for none; ends with its separator), replaces the
    /// built-in source. A source that does not compile or link ends the process with exit status 1, after a
    /// line and GL's log on the standard error stream.
    void init(const char* base_directory);

    /// Samples the functions again for a picture of `width` by `height` device pixels, one sample per column
    /// of pixels. There are `count` functions of order `order` over `count + order` knots; with fewer knots,
    /// or when memory runs out, the plot is empty.
    void reshape(int width, int height, std::uint64_t count, std::uint64_t order,
                 std::span<const float> knots);

    /// Clears the framebuffer that is bound, and draws the curves.
    void draw() const;

    /// What is drawn: control_point_t records, function by function, `width` records each.
    const array_t& vertices() const { return array; }
    /// Line strips over these records, each ended by a restart mark.
    const element_array_t& strips() const { return elements; }

  private:
    array_t array;
    element_array_t elements;
    vertex_array_ref vertex_array;
    shader_t vertex;
    shader_t fragment;
    program_t program;
    /// Locations of the uniforms; -1, which GL ignores, for one that the program does not have.
    std::int32_t Modelview = -1;
    std::int32_t Projection = -1;
};

/// Samples `count` basis functions at t = x / width for each column x of a picture: one record per column,
/// function by function. `knots` has `count + order` numbers.
std::vector<control_point_t> knot_plot_samples(std::uint64_t width, std::uint64_t count, std::uint64_t order,
                                               std::span<const float> knots);

}  // namespace ulk3d
