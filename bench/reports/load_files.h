#pragma once

#include <cstdint>
#include <string>

/// The files that load_report has loaded. They are written by plain code, which shares nothing with any of
/// the readers. Each function returns how many triangles it has written, which may be some less than asked
/// for.

/// Separate triangles in a binary STL file, at most 2^32 - 1. admesh reads no file of less than four.
std::uint64_t write_stl_file(const std::string& path, std::uint64_t triangles);

/// A wavy sheet that is about as wide as long, every vertex with position, texture coordinate and normal. The
/// scene file has a strip for each row, and tangents and binormals, as no scene file is without; an OBJ file
/// has the same triangles one by one, and a bare one nothing but them and the positions. At least two
/// triangles.
std::uint64_t write_sheet_as_scene(const std::string& path, std::uint64_t triangles);
std::uint64_t write_sheet_as_obj(const std::string& path, std::uint64_t triangles);
std::uint64_t write_bare_sheet_as_obj(const std::string& path, std::uint64_t triangles);
