#pragma once

#include <cstdint>
#include <span>

#include "model/math/records.h"
#include "render/gl/array.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Up to four lines drawn over the models: the crosshair band, or the line between the two vertices of a
/// fold.
///
/// Loaded by `band` or `line`, drawn by `draw`. Can be constructed without a context; everything else needs a
/// current one. All messages go to the standard error stream.
class drawline_t {
  public:
    drawline_t() = default;
    drawline_t(const drawline_t&) = delete;
    drawline_t& operator=(const drawline_t&) = delete;

    /// Compiles, links and allocates; call it once per context. A file with the name of a source, in the
    /// working directory or else in `base_directory` (null for none; ends with its separator), replaces the
    /// built-in source. False, after a line, when the vertices can not be allocated. A source that does not
    /// compile or link ends the process with exit status 1, after a line and GL's log.
    [[nodiscard]] bool init(const char* base_directory);

    /// Loads four green lines: eight points (x, y) in normalised device coordinates, two per line.
    void band(std::span<const float, 16> points);

    /// Loads one white line between two positions in the model space of `Modelview`.
    void line(const pos3& from, const pos3& to, const mtx3w& Projection, const mtx3w& Modelview);

    /// Draws what was loaded last.
    void draw() const;

    shader_t vertex;
    shader_t fragment;
    program_t program;
    array_t vertices;        ///< line_vertex_t records, room for eight
    vertex_array_ref array;  ///< `vertices` at locations 0 and 1
    /// Locations of the uniforms; -1, which GL ignores, for one that the program does not have.
    std::int32_t Modelview = -1;
    std::int32_t Projection = -1;

  private:
    /// Sets the count of vertices. False, after a line, before `init`.
    [[nodiscard]] bool take_vertices(std::int64_t count);
    void set_matrices(const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const;
};

}  // namespace ulk3d
