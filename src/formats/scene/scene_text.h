#pragma once

#include <cstdint>
#include <iosfwd>

#include "formats/scene/text_lines.h"
#include "formats/scene/text_output.h"

/// The blocks of the scene text format. A reader starts at the line that opens its block and returns behind
/// the line that ends it; scene_files.h walks the top level.
///
/// Lines are matched against keys by prefix, case-sensitive, from their first character; the value of a key
/// is what follows the first space of the line. Empty lines, lone CRs and lines that begin with '#' are
/// skipped. What the writers write, the readers read; the readers also know aliases, expressions and polar
/// points that are never written.
namespace ulk3d {

class glpolygon_t;
class nurbs_t;
class polygon_t;
struct environment_t;
struct texture_t;

/// Common to the readers: `path` is the scene file's path, under which textures are looked up and which the
/// models take as their name; `line_counter` is the zero-based number of the opening line and then of each
/// line read; `line` holds the opening line, and afterwards the line that was read last. Messages are lines
/// of `log`. A GL context must be current for the surface blocks.
///
/// A value that can not be used is a message, and the reading goes on; one entry more than the opening line
/// announces is a message and ends the block at once, false.

/// "begin environment". The block may also end with the file. False when the opening line is another one, or
/// when the cube map can not be loaded.
[[nodiscard]] bool read_environment(const char* path, environment_t& environment, std::uint64_t& line_counter,
                                    text_line_t& line, text_lines& input, std::ostream& log);

/// "begin nurbs_surface,<count1>,<order1>,<count2>,<order2>". `polygon` takes the evaluated surface, whose
/// tangent frames `glpolygon` makes. At "end" too few entries make the result false, but the surface is
/// built. A file that ends within the block builds the surface too, missing entries are zero, and is no
/// failure.
[[nodiscard]] bool read_nurbs_surface(const char* path, nurbs_t& nurbs, texture_t& texture,
                                      polygon_t& polygon, glpolygon_t& glpolygon, std::uint64_t& line_counter,
                                      text_line_t& line, text_lines& input, std::ostream& log);

/// "begin polygon_surface,<vertices>,<elements>". Every vertex needs its tangent, binormal and normal. Too
/// few entries at "end" are messages and false; a file that ends within the block is false without a message.
[[nodiscard]] bool read_polygon_surface(const char* path, texture_t& texture, polygon_t& polygon,
                                        std::uint64_t& line_counter, text_line_t& line, text_lines& input,
                                        std::ostream& log);

/// True when a block was written; without a cube map there is none. Only save_scene calls this.
bool write_environment(const environment_t& environment, text_output& output);

/// True when a block was written; a surface with a count or an order of zero has none. The tessellation is
/// not written, only its resolution.
bool write_nurbs_surface(const nurbs_t& nurbs, text_output& output);

/// Writes nothing for a model without vertices. The result is false in all cases and tells nothing.
bool write_polygon_surface(const texture_t& texture, const polygon_t& polygon, text_output& output);

/// The keys that both kinds of surface block share (shared_keys.h). The settings of a map are written only
/// beside its path. Always true.
bool write_texture_keys(const texture_t& texture, text_output& output);

}  // namespace ulk3d
