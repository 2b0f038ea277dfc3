#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "model/polygon/polygon.h"

namespace ulk_test {

/// The restart mark, under a name short enough for tables.
inline constexpr std::uint32_t mark = ulk3d::restart_mark;

/// A white vertex at a position.
ulk3d::vertex_t vertex_at(float x, float y, float z);

/// White vertices at the positions.
std::vector<ulk3d::vertex_t> vertices_at(const std::vector<ulk3d::pos3>& places);

/// Gives `polygon` these vertices and strips. All frames are zero when `afterload` is called, so every
/// triangle gets its default frame. Fails the test when the polygon can not be allocated.
void build_polygon(ulk3d::polygon_t& polygon, const std::vector<ulk3d::vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements);

/// The same with the given frames for the first vertices and zero frames for the others.
void build_polygon(ulk3d::polygon_t& polygon, const std::vector<ulk3d::vertex_t>& vertices,
                   const std::vector<std::uint32_t>& elements, const std::vector<ulk3d::frame_t>& frames);

/// Selects these polygons and no others.
void select_polygons(ulk3d::polygon_t& polygon, const std::set<std::uint32_t>& ids);

/// The records in use in the buffers.
std::vector<ulk3d::vertex_t> vertices_of(const ulk3d::polygon_t& polygon);
std::vector<ulk3d::pos3> positions_of(const ulk3d::polygon_t& polygon);
std::vector<ulk3d::frame_t> frames_of(const ulk3d::polygon_t& polygon);
std::vector<std::uint32_t> elements_of(const ulk3d::polygon_t& polygon);
std::vector<std::uint32_t> selectelems_of(const ulk3d::polygon_t& polygon);
std::vector<float> pointsizes_of(const ulk3d::modeling_t& model);

}  // namespace ulk_test
