#pragma once

#include <cstdint>
#include <iosfwd>

#include "formats/scene/text_lines.h"
#include "formats/scene/text_output.h"

/// The blocks of the scene text format. A reader starts at the line that opens its block and returns after
/// the line that ends it; scene_files.cpp walks the top level.
///
/// Lines are matched against keys by prefix, case-sensitive, from their first character; the value of a key
/// is everything after the first space of the line. Empty lines, lone CRs and lines that begin with '#' are
/// skipped. The readers accept all that the writers produce, and also aliases, expressions and polar points,
/// which are never written.
namespace ulk3d {

class glpolygon_t;
class nurbs_t;
class polygon_t;
struct environment_t;
struct texture_t;

/// Common to all readers: `path` is the path of the scene file; textures are looked up in its folder, and
/// models take it as their name. `line_counter` is the zero-based number of the opening line, and is advanced
/// with each line read. `line` is the opening line, and afterwards the line read last. Messages are written
/// to `log`, one line each. The surface blocks need a current GL context.
///
/// A line that does not fit into memory ends a block as the end of the file does, and a NURBS block with the
/// result false. The caller asks the lines for it, and tells.
///
/// An unknown key gives a message, and for most keys a missing value does; reading then goes on. One entry
/// more than the opening line announces gives a message and ends the block at once with the result false.

/// "begin environment". The end of the file ends the block as well as "end" does. False, with a message, when
/// the opening line is a different one or the cube map can not be loaded.
[[nodiscard]] bool read_environment(const char* path, environment_t& environment, std::uint64_t& line_counter,
                                    text_line_t& line, text_lines& input, std::ostream& log);

/// "begin nurbs_surface,<count1>,<order1>,<count2>,<order2>". `polygon`, which must be the mesh of `nurbs`,
/// receives the evaluated surface; `glpolygon` computes its tangent frames. With too few entries at "end" the
/// surface is built, but the result is false, with a message. When the file ends within the block the surface
/// is built too, with missing entries zero, and the result is true. False also, with a message, when the
/// tables or the surface can not be allocated, and, silently, for an opening line without a comma.
[[nodiscard]] bool read_nurbs_surface(const char* path, nurbs_t& nurbs, texture_t& texture,
                                      polygon_t& polygon, glpolygon_t& glpolygon, std::uint64_t& line_counter,
                                      text_line_t& line, text_lines& input, std::ostream& log);

/// "begin polygon_surface,<vertices>,<elements>". Every vertex needs its tangent, binormal and normal. False
/// with a message for too few entries at "end" and when the arrays can not be allocated; false without one
/// when the file ends within the block and for an opening line without a comma.
[[nodiscard]] bool read_polygon_surface(const char* path, texture_t& texture, polygon_t& polygon,
                                        std::uint64_t& line_counter, text_line_t& line, text_lines& input,
                                        std::ostream& log);

/// Writes nothing and returns false when the environment has no cube map; returns true otherwise. Only
/// save_scene calls this.
bool write_environment(const environment_t& environment, text_output& output);

/// Writes nothing and returns false for a surface with a count or an order of zero; returns true otherwise.
/// Of the tessellation only the resolution is written.
bool write_nurbs_surface(const nurbs_t& nurbs, text_output& output);

/// Writes nothing for a model without vertices, and marks `output` as failed when an array can not be mapped.
/// The result is always false and means nothing.
bool write_polygon_surface(const texture_t& texture, const polygon_t& polygon, text_output& output);

/// Writes the keys that both kinds of surface block share (shared_keys.h). The settings of a map are written
/// only if the map has a path. Always returns true.
bool write_texture_keys(const texture_t& texture, text_output& output);

}  // namespace ulk3d
