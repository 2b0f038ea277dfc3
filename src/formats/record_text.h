#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "model/attributes.h"

/// GL arrays as plain text, one line per record, so that users can edit them like a file. Numbers are written
/// as in scene files, with six significant digits in every locale. The functions that take an array need a
/// current GL context.
namespace ulk3d {

/// The components of one attribute of every vertex, separated by ",", one vertex per line; each line ends in
/// a line feed. `member` is an index into the array's element list; one beyond its end gives an empty text.
std::string member_text(const array_t& array, std::uint64_t member);

/// Reads such lines back. Each component is an expression (utils/text/evalnumber.h, which prints its errors
/// to the standard error stream); components missing from a line become 0. Surplus lines are ignored;
/// vertices without a line keep their values. False, with nothing stored, when the array can not be mapped;
/// no caller needs to look at that.
bool store_member_text(array_t& array, std::uint64_t member, std::string text);

/// The same on words in memory, without GL; an incomplete vertex at the end is ignored.
std::string member_text(std::span<const float> words, const record_member_t& member);
void store_member_text(std::span<float> words, const record_member_t& member, std::string text);

/// One index per line, the restart mark as "-1".
std::string index_text(const element_array_t& elements);

/// Reads such lines back: decimal, hexadecimal (0x) or octal (0) numbers, truncated to 32 bits; anything else
/// becomes 0. Surplus lines are ignored; indices without a line keep their values. False as above.
bool store_index_text(element_array_t& elements, std::string text);
/// The same on indices in memory, without GL.
void store_index_text(std::span<std::uint32_t> indices, std::string text);

}  // namespace ulk3d
