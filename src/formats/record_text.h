#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "model/attributes.h"

/// GL arrays as plain text, a line for each record, for people who edit them like a file. Numbers are written
/// as in scene files: six significant digits in every locale. The functions on arrays need a current
/// GL context.
namespace ulk3d {

/// The components of one attribute of every vertex, separated by "," and each line ended by a line feed.
/// `member` counts in the array's element list; empty text for one beyond it.
std::string member_text(const array_t& array, std::uint64_t member);

/// Reads such lines back: each component is a sum (utils/text/evalnumber.h, which tells what is wrong on the
/// standard error stream), and what a line lacks is 0. Lines beyond the vertices are ignored; vertices beyond
/// the last line stay as they are.
void store_member_text(array_t& array, std::uint64_t member, std::string text);

/// The same on words in memory; an incomplete vertex at their end is none. Need no GL.
std::string member_text(std::span<const float> words, const record_member_t& member);
void store_member_text(std::span<float> words, const record_member_t& member, std::string text);

/// One index on each line, the restart mark as "-1".
std::string index_text(const element_array_t& elements);

/// Reads such lines back: decimal, hexadecimal (0x) or octal (0) numbers, cut to 32 bits; what is no number
/// is 0.
void store_index_text(element_array_t& elements, std::string text);
/// The same on indices in memory. Needs no GL.
void store_index_text(std::span<std::uint32_t> indices, std::string text);

}  // namespace ulk3d
