#pragma once

#include <cstdint>

namespace ulk3d {

class shader_t;

/// A GLSL source that is built into the executable. `name` is also the name of a file that may replace it.
struct shader_source_t {
    const char* name;
    const char* text;
};

/// The files of src/render/shaders, one constant each, named like the file with an underscore for the dot.
/// All are #version 330. Matrices are uploaded with transpose set to true, and multiply row vectors from the
/// right.
namespace shaders {

extern const shader_source_t shader_vsd;  ///< the solid program: surfaces, lit and mapped
extern const shader_source_t shader_fsd;
extern const shader_source_t feedback_vsd;  ///< the frame pass: tangent frames by transform feedback
extern const shader_source_t feedback_fsd;
extern const shader_source_t selection_vsd;  ///< points with their sizes; with feedback, the test of a pick
extern const shader_source_t selection_fsd;
extern const shader_source_t drawline_vsd;  ///< lines and bands of the overlays
extern const shader_source_t drawline_fsd;

}  // namespace shaders

/// Compiles a source for the stage `type` (GL_VERTEX_SHADER, ...). A file with the name of the source, in the
/// working directory or else in `base_directory` (null for none; ends with its separator), silently replaces
/// the built-in source. False when it does not compile; `shader` then has the log.
[[nodiscard]] bool compile_source(shader_t& shader, std::uint32_t type, const shader_source_t& source,
                                  const char* base_directory);

}  // namespace ulk3d
